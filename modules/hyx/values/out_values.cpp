// Holders that native functions write results into: a truth value and a text.
#include "binding/vocabulary/rows.h"

#include <sstream>

namespace {

bool* make_flag(bool value) {
    return new bool(value);
}

bool get_flag(bool const& self) {
    return self;
}

void set_flag(bool& self, bool value) {
    self = value;
}

std::stringstream* make_stream(std::string const& text) {
    return new std::stringstream(text);
}

std::string get_text(std::stringstream const& self) {
    return self.str();
}

void set_text(std::stringstream& self, std::string const& text) {
    self.str(text);
}

constexpr Declared out_values_rows[] = {
    FUNCTION(new_Flag, MAKE(bool, make_flag, (bool), false)),
    FUNCTION(delete_Flag, DELETE(bool)),
    FUNCTION(Flag_get, ADAPTER(bool, get, get_flag, () const)),
    FUNCTION(Flag_set, ADAPTER(bool, set, set_flag, (bool))),
    REGISTER(bool, Flag),
    INIT(Flag),
    FUNCTION(new_StringStream, MAKE(std::stringstream, make_stream, (std::string const&), std::string())),
    FUNCTION(delete_StringStream, DELETE(std::stringstream)),
    FUNCTION(StringStream_str, ADAPTER(std::stringstream, str, get_text, () const)),
    FUNCTION(StringStream_setStr, ADAPTER(std::stringstream, setStr, set_text, (std::string const&))),
    REGISTER(std::stringstream, StringStream),
    INIT(StringStream),
};

} // namespace

ROWS(out_values_rows);
