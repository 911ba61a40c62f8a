// Rows over the sample classes: every form and policy once.
#include "binding/vocabulary/rows.h"
#include "tests/binding/sample/sample.h"

namespace {

using namespace sample;

int live_bases() {
    return Base::alive;
}

int live_counted() {
    return Counted::alive;
}

int doubled(int value) {
    return 2 * value;
}

using Function = int (*)(int);

Function doubling() {
    return doubled;
}

std::string greeting(Base const& self, std::string const& name) {
    return self.name() + " greets " + name;
}

constexpr Declared functions[] = {
    FUNCTION(new_Base, NEW(sample::Base, ())),
    FUNCTION(delete_Base, DELETE(sample::Base)),
    REGISTER(sample::Base, Base),
    INIT(Base),
    FUNCTION(Base_name, METHOD(sample::Base, name, () const)),
    FUNCTION(Base_self, METHOD(sample::Base, self, ())),
    FUNCTION(Base_copy, METHOD(sample::Base, copy, () const)),
    FUNCTION(Base_greeting, ADAPTER(sample::Base, greeting, greeting, (std::string const&) const)),
    FUNCTION(new_Derived, NEW(sample::Derived, ())),
    FUNCTION(new_Both, NEW(sample::Both, ())),
    FUNCTION(delete_Both, DELETE(sample::Both)),
    FUNCTION(new_Virtual, NEW(sample::Virtual, ())),
    FUNCTION(new_Unrelated, NEW(sample::Unrelated, ())),
    FUNCTION(new_Counted, NEW(sample::Counted, ())),
    FUNCTION(delete_Counted, DELETE(sample::Counted)),
    REGISTER(sample::Counted, Counted),
    FUNCTION(Counted_references, METHOD(sample::Counted, getReferenceCount, () const)),
    FUNCTION(Counted_reference, METHOD(sample::Counted, reference, () const)),
    FUNCTION(Counted_unreference, METHOD(sample::Counted, unreference, () const)),
    FUNCTION(new_Settings, NEW(sample::Settings, ())),
    FUNCTION(delete_Settings, DELETE(sample::Settings)),
    REGISTER(sample::Settings, Settings),
    FUNCTION(Settings_size_get, GET(sample::Settings, size)),
    FUNCTION(Settings_size_set, SET(sample::Settings, size, (double))),
    FUNCTION(Settings_title_get, GET(sample::Settings, title)),
    FUNCTION(Settings_title_set, SET(sample::Settings, title, (std::string const&))),
    FUNCTION(Settings_origin_get, GET(sample::Settings, origin)),
    FUNCTION(Settings_origin_borrow, GET_BORROWED(sample::Settings, origin)),
    FUNCTION(Settings_origin_set, SET(sample::Settings, origin, (sample::Base const&))),
    FUNCTION(live_bases, FREE(live_bases, ())),
    FUNCTION(live_counted, FREE(live_counted, ())),
    FUNCTION(base_value, FREE(sample::base_value, (sample::Base const&))),
    FUNCTION(other_value, FREE(sample::other_value, (sample::Other const*))),
    FUNCTION(root_base_value, FREE(sample::root_base_value, (sample::RootBase const*))),
    FUNCTION(which, FREE(sample::which, (sample::Base*)), FREE(sample::which, (sample::Derived*)),
             FREE(sample::which, (std::string const&)), FREE(sample::which, (double)), FREE(sample::which, (int)),
             FREE(sample::which, (bool)), FREE(sample::which, (int, float)),
             FREE(sample::which, (unsigned int, sample::Base const&))),
    FUNCTION(with_defaults, FREE(sample::with_defaults, (int, std::string const&, sample::Base const&, bool),
                                 std::string("b"), sample::Base(), true)),
    FUNCTION(throw_standard, FREE(sample::throw_standard, (std::string const&))),
    FUNCTION(throw_other, FREE(sample::throw_other, ())),
    FUNCTION(throw_out_of_range, FREE(sample::throw_out_of_range, ())),
    FUNCTION(throw_from_container, CONTAINER(FREE(sample::throw_out_of_range, ()))),
    FUNCTION(Caller_listen, LISTENER(FREE(sample::throw_standard, (std::string const&)), 42, "sample/interface")),
    FUNCTION(take_long, FREE(sample::take_long, (long))),
    FUNCTION(take_unsigned, FREE(sample::take_unsigned, (unsigned int))),
    FUNCTION(take_unsigned_long, FREE(sample::take_unsigned_long, (unsigned long))),
    FUNCTION(take_float, FREE(sample::take_float, (float))),
    FUNCTION(take_double, FREE(sample::take_double, (double))),
    FUNCTION(take_bool, FREE(sample::take_bool, (bool))),
    FUNCTION(take_int, FREE(sample::take_int, (int))),
    FUNCTION(take_string, FREE(sample::take_string, (std::string))),
    FUNCTION(string_size, FREE(sample::string_size, (std::string const&))),
    FUNCTION(take_hyx_string, FREE(sample::take_hyx_string, (hyx::String const&))),
    FUNCTION(take_text, FREE(sample::take_text, (char const*))),
    FUNCTION(give_text, FREE(sample::give_text, (bool))),
    FUNCTION(doubling, FREE(doubling, ())),
    FUNCTION(call_function, FREE(sample::call_function, (int (*)(int), int))),
    FUNCTION(nine, FREE(sample::nine, (int, int, int, int, int, int, int, int, int))),
    OPERATOR(add, FREE(sample::which, (int, float)), FREE(sample::which, (unsigned int, sample::Base const&))),
};

} // namespace

ROWS(functions);
