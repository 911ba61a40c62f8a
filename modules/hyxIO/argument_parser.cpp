// The command line.
#include "platform/hyxIO/argument_parser.h"

#include "binding/vocabulary/python_values.h"
#include "binding/vocabulary/rows.h"

namespace {

using hyxIO::ArgumentParser;

hyx::Vector<hyx::String> read_texts(PyObject* iterable) {
    auto const items = vocabulary::read_items(iterable, "expected a sequence of str");
    hyx::Vector<hyx::String> texts;
    for (Py_ssize_t i = 0; i < PyTuple_GET_SIZE(items.get()); ++i) {
        char const* text = PyUnicode_AsUTF8(PyTuple_GET_ITEM(items.get(), i));
        if (!text)
            throw vocabulary::PythonError();
        texts.push_back(text);
    }
    return texts;
}

ArgumentParser* from_arguments(PyObject* arguments) {
    return new ArgumentParser(read_texts(arguments));
}

void parse(ArgumentParser& self, PyObject* arguments) {
    self.parse(read_texts(arguments));
}

PyObject* positional(ArgumentParser const& self) {
    return vocabulary::to_list(self.getPositional());
}

PyObject* arguments(ArgumentParser const& self) {
    return vocabulary::to_list(self.getArguments());
}

PyObject* size_of(ArgumentParser const& self, hyx::String const& name) {
    long width = 0;
    long height = 0;
    self.getSize(name, width, height);
    return Py_BuildValue("(ll)", width, height);
}

constexpr Declared argument_parser_rows[] = {
    FUNCTION(new_ArgumentParser, NEW(hyxIO::ArgumentParser, ()),
             CONTAINER(MAKE(hyxIO::ArgumentParser, from_arguments, (PyObject*)))),
    FUNCTION(delete_ArgumentParser, DELETE(hyxIO::ArgumentParser)),
    FUNCTION(ArgumentParser_addOption,
             METHOD(hyxIO::ArgumentParser, addOption, (hyx::String const&, hyx::String const&, hyx::String const&),
                    hyx::String())),
    FUNCTION(ArgumentParser_addFlag, METHOD(hyxIO::ArgumentParser, addFlag, (hyx::String const&, hyx::String const&))),
    FUNCTION(ArgumentParser_parse, CONTAINER(ADAPTER(hyxIO::ArgumentParser, parse, parse, (PyObject*)))),
    FUNCTION(ArgumentParser_isHelpRequested, METHOD(hyxIO::ArgumentParser, isHelpRequested, () const)),
    FUNCTION(ArgumentParser_getHelp, METHOD(hyxIO::ArgumentParser, getHelp, () const)),
    FUNCTION(ArgumentParser_has, CONTAINER(METHOD(hyxIO::ArgumentParser, has, (hyx::String const&) const))),
    FUNCTION(ArgumentParser_getString, CONTAINER(METHOD(hyxIO::ArgumentParser, getString, (hyx::String const&) const))),
    FUNCTION(ArgumentParser_getReal, CONTAINER(METHOD(hyxIO::ArgumentParser, getReal, (hyx::String const&) const))),
    FUNCTION(ArgumentParser_getInteger,
             CONTAINER(METHOD(hyxIO::ArgumentParser, getInteger, (hyx::String const&) const))),
    FUNCTION(ArgumentParser_getSize,
             CONTAINER(ADAPTER(hyxIO::ArgumentParser, getSize, size_of, (hyx::String const&) const))),
    FUNCTION(ArgumentParser_getPositional, ADAPTER(hyxIO::ArgumentParser, getPositional, positional, () const)),
    FUNCTION(ArgumentParser_getArguments, ADAPTER(hyxIO::ArgumentParser, getArguments, arguments, () const)),
    REGISTER(hyxIO::ArgumentParser, ArgumentParser),
    INIT(ArgumentParser),
};

} // namespace

ROWS(argument_parser_rows);
