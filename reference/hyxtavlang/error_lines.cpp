// Looks for names in files.
#include "reference/hyxtavlang/error_lines.h"

#include <algorithm>
#include <fstream>

namespace hyxtavlang {

int lineOfName(std::string const& message, std::string const& path) {
    auto const end = message.find_last_of("]'\"");
    auto const begin = end == std::string::npos || !end ? std::string::npos : message.find_last_of("['\"", end - 1);
    std::string name = begin == std::string::npos ? "" : message.substr(begin + 1, end - begin - 1);
    constexpr char const* named = " named ";
    if (auto const place = message.find(named); name.empty() && place != std::string::npos) {
        name = message.substr(place + 7);
        name = name.substr(0, name.find(' '));
    }
    std::ifstream file(path);
    int number = 0;
    for (std::string text; !name.empty() && std::getline(file, text);) {
        ++number;
        for (auto place = text.find(name); place != std::string::npos; place = text.find(name, place + 1)) {
            char const before = place ? text[place - 1] : ' ', after = text[std::min(place + name.size(), text.size())];
            if ((before == after && (before == '"' || before == '\'')) || (before == '>' && after == '<'))
                return number;
        }
    }
    return 1;
}

} // namespace hyxtavlang
