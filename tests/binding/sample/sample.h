// Classes for the tests of casts, ownership, overloads and exceptions.
#pragma once

#include "platform/hyx/objects/referenced.h"
#include "platform/hyx/values/string.h"

#include <string>

namespace sample {

struct Base {
    virtual ~Base() { --alive; }

    Base() { ++alive; }

    Base(Base const& other) : value(other.value) { ++alive; }

    Base& operator=(Base const& other) = default;

    virtual std::string name() const { return "Base"; }

    Base* self() { return this; }

    Base copy() const { return *this; }

    int value = 1;
    static int alive;
};

struct Derived : Base {
    std::string name() const override { return "Derived"; }
};

struct Other {
    virtual ~Other() = default;
    int other_value = 2;
};

// Other is at an offset.
struct Both : Base, Other {
    int both_value = 3;
};

struct RootBase {
    virtual ~RootBase() = default;
    int root_base_value = 4;
};

struct Root : Other, RootBase {
    int root_value = 5;
};

// Root is a virtual base; RootBase is at an offset inside it.
struct Virtual : virtual Root {
    int virtual_value = 6;
};

struct Unrelated {};

struct Renamed {};

using OtherName = Renamed;
using ThirdName = Renamed;

// Classes that only shared pointers are about.
struct Top {};

struct Middle : Top {};

struct Leaf : Middle {};

struct Counted : hyx::Referenced {
    Counted() { ++alive; }

    static int alive;

protected:
    ~Counted() override { --alive; }
};

struct Settings {
    double size = 1.5;
    std::string title = "none";
    Base origin;
};

int base_value(Base const& object);
int other_value(Other const* object); // -1 for null
int root_base_value(RootBase const* object);

// One overload for each kind of parameter; each names itself.
std::string which(bool);
std::string which(int);
std::string which(double);
std::string which(std::string const&);
std::string which(Base*);
std::string which(Derived*);
std::string which(int, float);
std::string which(unsigned int, Base const&);
std::string with_defaults(int a, std::string const& b, Base const& c, bool d);

void throw_standard(std::string const& text);
void throw_other();
void throw_out_of_range();

// Values as they come.
long take_long(long v);
unsigned int take_unsigned(unsigned int v);
unsigned long take_unsigned_long(unsigned long v);
float take_float(float v);
double take_double(double v);
bool take_bool(bool v);
int take_int(int v);
std::string take_string(std::string v);
std::size_t string_size(std::string const& v);
hyx::String take_hyx_string(hyx::String const& v);
std::string take_text(char const* v); // "null" for null
char const* give_text(bool null);
int call_function(int (*function)(int), int argument);
std::string nine(int, int, int, int, int, int, int, int, int);

} // namespace sample
