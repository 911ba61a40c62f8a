// Makes and compares tokens.
#include "reference/hyxNet/access_token.h"

#include <sys/random.h>

#include <iomanip>
#include <sstream>
#include <stdexcept>

namespace hyxNet {

std::string makeAccessToken() {
    unsigned char bytes[16];
    if (getrandom(bytes, sizeof bytes, 0) != sizeof bytes)
        throw std::runtime_error("the system gives no random numbers");
    std::ostringstream token;
    token << std::hex << std::setfill('0');
    for (unsigned char const byte : bytes)
        token << std::setw(2) << unsigned(byte);
    return token.str();
}

bool sameToken(std::string const& one, std::string const& other) {
    if (one.size() != other.size())
        return false;
    unsigned char difference = 0;
    for (size_t i = 0; i < one.size(); ++i)
        difference |= static_cast<unsigned char>(one[i] ^ other[i]);
    return difference == 0;
}

} // namespace hyxNet
