// Texts that the compiler composes from the stringized rows: every message ends as a read-only literal.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace vocabulary {

// Counts what a composer writes.
struct Counter {
    std::size_t size = 0;

    constexpr void put(std::string_view text) { size += text.size(); }

    constexpr void put(char) { ++size; }
};

// Stores what a composer writes.
struct Writer {
    char* out;

    constexpr void put(std::string_view text) {
        for (char c : text)
            *out++ = c;
    }

    constexpr void put(char c) { *out++ = c; }
};

// The zero-terminated literal that Composer::write(sink) composes.
template <class Composer>
struct Literal {
    static constexpr std::size_t size = [] {
        Counter counter;
        Composer::write(counter);
        return counter.size;
    }();
    static constexpr std::array<char, size + 1> text = [] {
        std::array<char, size + 1> characters{};
        Writer writer{characters.data()};
        Composer::write(writer);
        return characters;
    }();
};

// Whether a `*` or `&` behind this letter stands apart from it.
constexpr bool ends_name(char letter) {
    return letter == '_' || letter == '>' || (letter >= '0' && letter <= '9') || (letter >= 'a' && letter <= 'z') ||
           (letter >= 'A' && letter <= 'Z');
}

// Writes a native type or list of types as the messages have them: no blank after a comma, one before `*` and `&`, one
// inside the brackets of template arguments.
template <class Sink>
constexpr void put_type(Sink& sink, std::string_view type) {
    char last = ',';
    for (char const letter : type) {
        if (letter == ' ' && (last == ',' || last == ' '))
            continue;
        bool const apart = letter == '>' || last == '<' || ((letter == '*' || letter == '&') && ends_name(last));
        if (apart && letter != ' ' && last != ' ')
            sink.put(' ');
        sink.put(letter);
        last = letter;
    }
}

// A positive number below 100.
template <class Sink>
constexpr void put_number(Sink& sink, std::size_t number) {
    if (number >= 10)
        sink.put(char('0' + number / 10));
    sink.put(char('0' + number % 10));
}

constexpr std::string_view trimmed(std::string_view text) {
    while (!text.empty() && text.front() == ' ')
        text.remove_prefix(1);
    while (!text.empty() && text.back() == ' ')
        text.remove_suffix(1);
    return text;
}

// The position after the list that starts at text[0] == '(', that is after its closing parenthesis.
constexpr std::size_t list_end(std::string_view text) {
    int depth = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '(')
            ++depth;
        if (text[i] == ')' && --depth == 0)
            return i + 1;
    }
    return text.size();
}

// Item number `index` of "(a, b<c, d>)" and whatever follows the list: commas inside brackets do not separate.
constexpr std::string_view list_item(std::string_view text, std::size_t index) {
    std::string_view list = text.substr(1, list_end(text) - 2);
    int depth = 0;
    std::size_t start = 0;
    for (std::size_t i = 0; i <= list.size(); ++i) {
        bool const end = i == list.size();
        if (!end && (list[i] == '(' || list[i] == '<'))
            ++depth;
        if (!end && (list[i] == ')' || list[i] == '>'))
            --depth;
        if (!end && (list[i] != ',' || depth > 0))
            continue;
        if (index-- == 0)
            return trimmed(list.substr(start, i - start));
        start = i + 1;
    }
    return {};
}

// Number of items in a parenthesised list.
constexpr std::size_t list_size(std::string_view text) {
    std::size_t items = 0;
    while (!list_item(text, items).empty())
        ++items;
    return items;
}

// A class's own name, as its constructors have it: after the last "::", without template arguments.
constexpr std::string_view last_name(std::string_view name) {
    name = name.substr(0, name.find('<'));
    std::size_t const separator = name.rfind("::");
    return separator == std::string_view::npos ? name : name.substr(separator + 2);
}

} // namespace vocabulary
