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
// Policies around a form: OWNED(form), CONTAINER(form), LISTENER(form, line, source),
// GUARDED(translator, form), FINISHED(function, form).
// Variants of FUNCTION: FUNCTION_BY_COUNT, OPERATOR. Rows without forms: REGISTER, INIT, STATIC_GET, STATIC_SET.
#pragma once

#include "runtime/errors.h"
#include "wrappers/vocabulary/functions.h"

using wrappers::Declared;

#define HYX_TEXT(text_) decltype([] { return std::string_view(text_); })
#define HYX_ROW(class_, name_, list_, ...) \
    ::wrappers::RowText<HYX_TEXT(class_), HYX_TEXT(name_), HYX_TEXT(list_), HYX_TEXT("" #__VA_ARGS__)>
#define HYX_DEFAULTS(...) decltype([] { return std::make_tuple(__VA_ARGS__); })

#define FREE(function_, list_, ...)                                                                                  \
    ::wrappers::FreeForm<::wrappers::Select<void list_>::free(&function_), HYX_ROW("", #function_, #list_, __VA_ARGS__), \
                         void list_, HYX_DEFAULTS(__VA_ARGS__), false>
#define STATIC(class_, method_, list_, ...)                                                    \
    ::wrappers::FreeForm<::wrappers::Select<void list_>::free(&class_::method_),               \
                         HYX_ROW(#class_, #method_, #list_, __VA_ARGS__), void list_, HYX_DEFAULTS(__VA_ARGS__), true>
#define METHOD(class_, method_, list_, ...)                                                       \
    ::wrappers::MethodForm<class_, ::wrappers::Select<void list_>::method(&class_::method_),      \
                           HYX_ROW(#class_, #method_, #list_, __VA_ARGS__), void list_, HYX_DEFAULTS(__VA_ARGS__)>
#define VIRTUAL(class_, method_, list_, ...)                                                     \
    ::wrappers::VirtualForm<class_, ::wrappers::Select<void list_>::method(&class_::method_),    \
                            decltype([](class_ &self_, auto &&...a_) -> decltype(auto) {         \
                                return self_.class_::method_(std::forward<decltype(a_)>(a_)...); \
                            }),                                                                  \
                            HYX_ROW(#class_, #method_, #list_, __VA_ARGS__), void list_, HYX_DEFAULTS(__VA_ARGS__)>
#define ADAPTER(class_, name_, function_, list_, ...) \
    ::wrappers::AdapterForm<class_, &function_, HYX_ROW(#class_, #name_, #list_, __VA_ARGS__), void list_, HYX_DEFAULTS(__VA_ARGS__)>
#define NEW(class_, list_, ...)                                                                                        \
    ::wrappers::NewForm<class_, HYX_ROW(#class_, ::wrappers::last_name(#class_), #list_, __VA_ARGS__), void list_, \
                        HYX_DEFAULTS(__VA_ARGS__)>
#define MAKE(class_, function_, list_, ...)                                                                         \
    ::wrappers::MakeForm<class_, &function_, HYX_ROW(#class_, ::wrappers::last_name(#class_), #list_, __VA_ARGS__), \
                         void list_, HYX_DEFAULTS(__VA_ARGS__)>
#define NEW_DIRECTOR(class_, director_, list_, ...)                                                      \
    ::wrappers::NewDirectorForm<class_, director_,                                                       \
                                HYX_ROW(#class_, ::wrappers::last_name(#class_), #list_, __VA_ARGS__), void list_, \
                                HYX_DEFAULTS(__VA_ARGS__)>
#define DELETE(class_) ::wrappers::DeleteForm<class_, HYX_ROW(#class_, "~", "()", )>
#define DISOWN(class_) ::wrappers::DisownForm<class_, HYX_ROW(#class_, "disown", "()", )>
#define GET(class_, member_) ::wrappers::GetForm<class_, &class_::member_, HYX_ROW(#class_, #member_, "()", ), false>
#define GET_BORROWED(class_, member_) ::wrappers::GetForm<class_, &class_::member_, HYX_ROW(#class_, #member_, "()", ), true>
#define SET(class_, member_, list_) \
    ::wrappers::SetForm<class_, &class_::member_, HYX_ROW(#class_, #member_, #list_, ), void list_>

#define OWNED(...) ::wrappers::OwnedForm<__VA_ARGS__>
#define GUARDED(translate_, ...) ::wrappers::GuardedForm<__VA_ARGS__, translate_>
#define CONTAINER(...) GUARDED(::wrappers::translate_container_exception, __VA_ARGS__)
#define FINISHED(finish_, ...) ::wrappers::FinishedForm<__VA_ARGS__, finish_>
#define LISTENER(form_, line_, source_) ::wrappers::ListenerForm<form_, line_, HYX_TEXT(source_)>

#define FUNCTION(name_, ...) \
    Declared { &::wrappers::FunctionOf<HYX_TEXT(#name_), ::wrappers::Choice::by_arguments, __VA_ARGS__>::function }
#define FUNCTION_BY_COUNT(name_, ...) \
    Declared { &::wrappers::FunctionOf<HYX_TEXT(#name_), ::wrappers::Choice::by_count, __VA_ARGS__>::function }
#define OPERATOR(name_, ...) \
    Declared { &::wrappers::FunctionOf<HYX_TEXT(#name_), ::wrappers::Choice::binary_operator, __VA_ARGS__>::function }
#define REGISTER(class_, python_) \
    Declared { &::wrappers::RegisterOf<class_, HYX_TEXT(#python_ "_swigregister"), HYX_TEXT(#class_)>::function }
#define INIT(python_) Declared { &::wrappers::InitOf<HYX_TEXT(#python_ "_swiginit")>::function }
#define STATIC_GET(name_, get_) Declared { &::wrappers::StaticGetOf<HYX_TEXT(#name_), get_>::function }
#define STATIC_SET(name_, set_) Declared { &::wrappers::StaticSetOf<HYX_TEXT(#name_), set_>::function }

// HYX_AREA is the file's own name, given by the build.
#define ROWS(functions_)                           \
    extern const ::wrappers::Rows HYX_AREA;        \
    const ::wrappers::Rows HYX_AREA = {functions_, std::size(functions_)}
