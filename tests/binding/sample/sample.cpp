// The sample library's functions, which record what was called and count what lives.
#include "tests/binding/sample/sample.h"

#include <stdexcept>

namespace sample {

int Base::alive = 0;
int Counted::alive = 0;

// A sibling in plain C gives memory of the same layout.
[[gnu::no_sanitize("vptr")]] int base_value(Base const& object) {
    return object.value;
}

int other_value(Other const* object) {
    return object ? object->other_value : -1;
}

int root_base_value(RootBase const* object) {
    return object ? object->root_base_value : -1;
}

std::string which(bool) {
    return "bool";
}

std::string which(int) {
    return "int";
}

std::string which(double) {
    return "double";
}

std::string which(std::string const&) {
    return "string";
}

std::string which(Base*) {
    return "Base";
}

std::string which(Derived*) {
    return "Derived";
}

std::string which(int, float) {
    return "int, float";
}

std::string which(unsigned int, Base const&) {
    return "unsigned, Base";
}

std::string with_defaults(int a, std::string const& b, Base const& c, bool d) {
    return std::to_string(a) + b + std::to_string(c.value) + (d ? "yes" : "no");
}

void throw_standard(std::string const& text) {
    throw std::runtime_error(text);
}

void throw_other() {
    throw 7;
}

void throw_out_of_range() {
    throw std::out_of_range("beyond");
}

long take_long(long v) {
    return v;
}

unsigned int take_unsigned(unsigned int v) {
    return v;
}

unsigned long take_unsigned_long(unsigned long v) {
    return v;
}

float take_float(float v) {
    return v;
}

double take_double(double v) {
    return v;
}

bool take_bool(bool v) {
    return v;
}

int take_int(int v) {
    return v;
}

std::string take_string(std::string v) {
    return v;
}

std::size_t string_size(std::string const& v) {
    return v.size();
}

hyx::String take_hyx_string(hyx::String const& v) {
    return v;
}

std::string take_text(char const* v) {
    return v ? v : "null";
}

char const* give_text(bool null) {
    return null ? nullptr : "text \xff";
}

int call_function(int (*function)(int), int argument) {
    return function(argument);
}

std::string nine(int, int, int, int, int, int, int, int, int) {
    return "nine";
}

} // namespace sample
