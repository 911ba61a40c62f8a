// Texts by number, such as the encoder names of the video codecs: a Python mapping.
#include "binding/vocabulary/python_values.h"
#include "binding/vocabulary/rows.h"
#include "platform/hyx/values/hash_table.h"
#include "platform/hyx/values/string.h"

#include <algorithm>
#include <string>
#include <vector>

// A name without a comma, which a row's text would be cut at.
namespace hyx {
using StringTable = HashTable<int, String>;
} // namespace hyx

namespace {

// Raises KeyError, as a mapping does.
hyx::StringTable::iterator entry(hyx::StringTable& self, int key) {
    auto const found = self.find(key);
    if (found == self.end()) {
        PyErr_SetObject(PyExc_KeyError, runtime::Reference::take(PyLong_FromLong(key)).get());
        throw vocabulary::PythonError();
    }
    return found;
}

unsigned long length_of(hyx::StringTable const& self) {
    return self.size();
}

bool contains(hyx::StringTable const& self, int key) {
    return self.find(key) != self.end();
}

hyx::String string_table_get_item(hyx::StringTable& self, int key) {
    return entry(self, key)->second;
}

void string_table_set_item(hyx::StringTable& self, int key, hyx::String const& text) {
    self[key] = text;
}

void delete_item(hyx::StringTable& self, int key) {
    self.erase(entry(self, key));
}

// In ascending order, so that a table looks the same each time.
PyObject* keys(hyx::StringTable const& self) {
    std::vector<int> sorted;
    for (auto const& item : self)
        sorted.push_back(item.first);
    std::sort(sorted.begin(), sorted.end());
    runtime::Reference list = runtime::Reference::take(PyList_New(static_cast<Py_ssize_t>(sorted.size())));
    if (!list.get())
        throw vocabulary::PythonError();
    for (std::size_t i = 0; i < sorted.size(); ++i)
        PyList_SET_ITEM(list.get(), static_cast<Py_ssize_t>(i), PyLong_FromLong(sorted[i]));
    return list.release();
}

constexpr Declared string_table_rows[] = {
    FUNCTION(new_StringTable, NEW(hyx::StringTable, ()), NEW(hyx::StringTable, (hyx::StringTable const&))),
    FUNCTION(delete_StringTable, DELETE(hyx::StringTable)),
    FUNCTION(StringTable___len__, ADAPTER(hyx::StringTable, __len__, length_of, () const)),
    FUNCTION(StringTable___contains__, ADAPTER(hyx::StringTable, __contains__, contains, (int) const)),
    FUNCTION(StringTable___getitem__, ADAPTER(hyx::StringTable, __getitem__, string_table_get_item, (int))),
    FUNCTION(StringTable___setitem__,
             ADAPTER(hyx::StringTable, __setitem__, string_table_set_item, (int, hyx::String const&))),
    FUNCTION(StringTable___delitem__, ADAPTER(hyx::StringTable, __delitem__, delete_item, (int))),
    FUNCTION(StringTable_keys, ADAPTER(hyx::StringTable, keys, keys, () const)),
    REGISTER(hyx::StringTable, StringTable),
    INIT(StringTable),
};

} // namespace

ROWS(string_table_rows);
