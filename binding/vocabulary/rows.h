// The words in which wrapped operations are declared. Included by row files only: the short names are macros.
//
//     constexpr Declared functions[] = {
//         FUNCTION(setTexture,                                       one Python name, its native forms in the
//             FREE(hyxOSG::setTexture, (osg::Node *, ...), false)),  order in which messages list them
//     };
//     ROWS(functions);
//
// The parameter list selects the one native function with exactly these parameters; its text becomes the messages.
// Values after the list are the defaults of the last parameters; each makes one more, shorter form.
//
//     FREE(function, (P...), defaults...)                a free function
//     STATIC(Class, method, (P...), defaults...)         a static method
//     METHOD(Class, method, (P...) [const], defaults...)
//     VIRTUAL(Class, method, (P...) [const], defaults...) a virtual method of a class with a director
//     ADAPTER(Class, name, function, (P...) [const], defaults...)  function(Class &, P...) of the row file, as a method
//     NEW(Class, (P...), defaults...)                    a constructor
//     MAKE(Class, function, (P...), defaults...)         function(P...) of the row file, as a constructor
//     NEW_DIRECTOR(Class, Director, (P...), defaults...) a constructor of a class with a director
//     DELETE(Class)  DISOWN(Class)
//     GET(Class, member)  GET_BORROWED(Class, member)  SET(Class, member, (P))
// Policies around a form: OWNED(form), SHARED(form), CONTAINER(form), LISTENER(form, line, source),
// GUARDED(translator, form), FINISHED(function, form).
// Variants of FUNCTION: FUNCTION_BY_COUNT, OPERATOR. Rows without forms: REGISTER, INIT, STATIC_GET, STATIC_SET.
#pragma once

#include "binding/runtime/errors.h"
#include "binding/vocabulary/functions.h"

using vocabulary::Declared;

#define HYX_TEXT(text_) decltype([] { return std::string_view(text_); })
#define HYX_ROW(class_, name_, list_, ...) \
    ::vocabulary::RowText<HYX_TEXT(class_), HYX_TEXT(name_), HYX_TEXT(list_), HYX_TEXT("" #__VA_ARGS__)>
#define HYX_DEFAULTS(...) decltype([] { return std::make_tuple(__VA_ARGS__); })

#define FREE(function_, list_, ...)                                            \
    ::vocabulary::FreeForm<::vocabulary::Select<void list_>::free(&function_), \
                           HYX_ROW("", #function_, #list_, __VA_ARGS__), void list_, HYX_DEFAULTS(__VA_ARGS__), false>
#define STATIC(class_, method_, list_, ...)                                                                        \
    ::vocabulary::FreeForm<::vocabulary::Select<void list_>::free(&class_::method_),                               \
                           HYX_ROW(#class_, #method_, #list_, __VA_ARGS__), void list_, HYX_DEFAULTS(__VA_ARGS__), \
                           true>
#define METHOD(class_, method_, list_, ...)                                                      \
    ::vocabulary::MethodForm<class_, ::vocabulary::Select<void list_>::method(&class_::method_), \
                             HYX_ROW(#class_, #method_, #list_, __VA_ARGS__), void list_, HYX_DEFAULTS(__VA_ARGS__)>
#define VIRTUAL(class_, method_, list_, ...)                                                       \
    ::vocabulary::VirtualForm<class_, ::vocabulary::Select<void list_>::method(&class_::method_),  \
                              decltype([](class_& self_, auto&&... a_) -> decltype(auto) {         \
                                  return self_.class_::method_(std::forward<decltype(a_)>(a_)...); \
                              }),                                                                  \
                              HYX_ROW(#class_, #method_, #list_, __VA_ARGS__), void list_, HYX_DEFAULTS(__VA_ARGS__)>
#define ADAPTER(class_, name_, function_, list_, ...)                                                        \
    ::vocabulary::AdapterForm<class_, &function_, HYX_ROW(#class_, #name_, #list_, __VA_ARGS__), void list_, \
                              HYX_DEFAULTS(__VA_ARGS__)>
#define NEW(class_, list_, ...)                                                                                        \
    ::vocabulary::NewForm<class_, HYX_ROW(#class_, ::vocabulary::last_name(#class_), #list_, __VA_ARGS__), void list_, \
                          HYX_DEFAULTS(__VA_ARGS__)>
#define MAKE(class_, function_, list_, ...)                                                                     \
    ::vocabulary::MakeForm<class_, &function_,                                                                  \
                           HYX_ROW(#class_, ::vocabulary::last_name(#class_), #list_, __VA_ARGS__), void list_, \
                           HYX_DEFAULTS(__VA_ARGS__)>
#define NEW_DIRECTOR(class_, director_, list_, ...)                                                                    \
    ::vocabulary::NewDirectorForm<class_, director_,                                                                   \
                                  HYX_ROW(#class_, ::vocabulary::last_name(#class_), #list_, __VA_ARGS__), void list_, \
                                  HYX_DEFAULTS(__VA_ARGS__)>
#define DELETE(class_) ::vocabulary::DeleteForm<class_, HYX_ROW(#class_, "~", "()", )>
#define DISOWN(class_) ::vocabulary::DisownForm<class_, HYX_ROW(#class_, "disown", "()", )>
#define GET(class_, member_) ::vocabulary::GetForm<class_, &class_::member_, HYX_ROW(#class_, #member_, "()", ), false>
#define GET_BORROWED(class_, member_) \
    ::vocabulary::GetForm<class_, &class_::member_, HYX_ROW(#class_, #member_, "()", ), true>
#define SET(class_, member_, list_) \
    ::vocabulary::SetForm<class_, &class_::member_, HYX_ROW(#class_, #member_, #list_, ), void list_>

#define OWNED(...) ::vocabulary::OwnedForm<__VA_ARGS__>
// A pointer to a reference-counted object, which the Python object then keeps alive.
#define SHARED(...) ::vocabulary::SharedForm<__VA_ARGS__>
#define GUARDED(translate_, ...) ::vocabulary::GuardedForm<__VA_ARGS__, translate_>
#define CONTAINER(...) GUARDED(::vocabulary::translate_container_exception, __VA_ARGS__)
#define FINISHED(finish_, ...) ::vocabulary::FinishedForm<__VA_ARGS__, finish_>
#define LISTENER(form_, line_, source_) ::vocabulary::ListenerForm<form_, line_, HYX_TEXT(source_)>

#define FUNCTION(name_, ...)                                                                                   \
    Declared {                                                                                                 \
        &::vocabulary::FunctionOf<HYX_TEXT(#name_), ::vocabulary::Choice::by_arguments, __VA_ARGS__>::function \
    }
#define FUNCTION_BY_COUNT(name_, ...)                                                                      \
    Declared {                                                                                             \
        &::vocabulary::FunctionOf<HYX_TEXT(#name_), ::vocabulary::Choice::by_count, __VA_ARGS__>::function \
    }
#define OPERATOR(name_, ...)                                                                                      \
    Declared {                                                                                                    \
        &::vocabulary::FunctionOf<HYX_TEXT(#name_), ::vocabulary::Choice::binary_operator, __VA_ARGS__>::function \
    }
#define REGISTER(class_, python_)                                                                          \
    Declared {                                                                                             \
        &::vocabulary::RegisterOf<class_, HYX_TEXT(#python_ "_swigregister"), HYX_TEXT(#class_)>::function \
    }
#define INIT(python_)                                                   \
    Declared {                                                          \
        &::vocabulary::InitOf<HYX_TEXT(#python_ "_swiginit")>::function \
    }
#define STATIC_GET(name_, get_)                                      \
    Declared {                                                       \
        &::vocabulary::StaticGetOf<HYX_TEXT(#name_), get_>::function \
    }
#define STATIC_SET(name_, set_)                                      \
    Declared {                                                       \
        &::vocabulary::StaticSetOf<HYX_TEXT(#name_), set_>::function \
    }

// Publishes a table: the linker gathers those of a module into one array, which the module's entry joins.
#define ROWS(functions_)                                                                                  \
    [[gnu::used, gnu::section("hyx_rows")]] constinit const ::vocabulary::Rows functions_##_published = { \
        functions_, std::size(functions_)}
