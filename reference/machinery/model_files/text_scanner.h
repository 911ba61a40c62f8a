// Goes through the lines of a model file of words and numbers.
#pragma once

#include <charconv>
#include <stdexcept>
#include <string_view>

namespace hyxOSG {

/// What is wrong with a model file.
struct ModelFault : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// A place in a text of lines. A backslash before the end of a line joins it with the next.
class TextScanner {
public:
    explicit TextScanner(std::string_view text) : m_rest(text) {}

    bool atEnd() const { return m_rest.empty(); }

    /// Whether the line has no further word.
    bool lineEnds() {
        skipBlanks();
        return m_rest.empty() || m_rest.front() == '\n' || m_rest.front() == '#';
    }

    /// The next word of the line; empty at its end.
    std::string_view word() {
        if (lineEnds())
            return {};
        std::string_view const word = m_rest.substr(0, m_rest.find_first_of(" \t\r\n"));
        m_rest.remove_prefix(word.size());
        return word;
    }

    /// The rest of the line, without blanks around it.
    std::string_view restOfLine() {
        skipBlanks();
        std::string_view line = m_rest.substr(0, m_rest.find('\n'));
        m_rest.remove_prefix(line.size());
        while (!line.empty() && (line.back() == ' ' || line.back() == '\t' || line.back() == '\r'))
            line.remove_suffix(1);
        return line;
    }

    void nextLine() {
        std::size_t const end = m_rest.find('\n');
        m_rest.remove_prefix(end == std::string_view::npos ? m_rest.size() : end + 1);
    }

    template <class Number>
    Number number() {
        skipBlanks();
        skip('+');
        Number value{};
        auto const [end, error] = std::from_chars(m_rest.data(), m_rest.data() + m_rest.size(), value);
        if (error != std::errc())
            throw ModelFault("there is no number where one should be");
        m_rest.remove_prefix(static_cast<std::size_t>(end - m_rest.data()));
        return value;
    }

    /// Whether `character` comes next; it is passed then.
    bool skip(char character) {
        if (m_rest.empty() || m_rest.front() != character)
            return false;
        m_rest.remove_prefix(1);
        return true;
    }

    char front() const { return m_rest.empty() ? '\n' : m_rest.front(); }

private:
    void skipBlanks() {
        for (;;) {
            std::size_t const start = m_rest.find_first_not_of(" \t\r");
            m_rest.remove_prefix(start == std::string_view::npos ? m_rest.size() : start);
            if (!m_rest.starts_with("\\\n") && !m_rest.starts_with("\\\r\n"))
                return;
            nextLine();
        }
    }

    std::string_view m_rest;
};

} // namespace hyxOSG
