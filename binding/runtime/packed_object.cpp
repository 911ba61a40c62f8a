// The type of the objects that carry a few native bytes.
#include "binding/runtime/packed_object.h"

#include <cstdlib>
#include <cstring>

namespace {

constexpr char type_name[] = "swig_runtime_data4.SwigPyPacked";
// Longer encodings are left out of the texts.
constexpr std::size_t longest_encoding = 1024;

SwigPyPacked* as_packed(PyObject* object) noexcept {
    return reinterpret_cast<SwigPyPacked*>(object);
}

// The encoded bytes, zero-terminated, or an empty text when they are too long.
struct Encoding {
    explicit Encoding(SwigPyPacked const& packed) noexcept {
        if (2 * packed.size + 2 <= longest_encoding)
            *runtime::encode_bytes(text, packed.pack, packed.size) = '\0';
    }

    bool fits() const noexcept { return text[0] != '\0'; }

    char text[longest_encoding] = "";
};

// Objects that a script makes by calling the type are empty.
char const* type_name_of(SwigPyPacked const& packed) noexcept {
    return packed.ty ? packed.ty->name : "unknown";
}

PyObject* represent(PyObject* self) noexcept {
    SwigPyPacked& packed = *as_packed(self);
    Encoding const encoding(packed);
    return encoding.fits() ? PyUnicode_FromFormat("<Swig Packed at %s%s>", encoding.text, type_name_of(packed))
                           : PyUnicode_FromFormat("<Swig Packed %s>", type_name_of(packed));
}

PyObject* to_text(PyObject* self) noexcept {
    SwigPyPacked& packed = *as_packed(self);
    Encoding const encoding(packed);
    return PyUnicode_FromFormat("%s%s", encoding.text, type_name_of(packed));
}

PyTypeObject* make_type() noexcept;

// The fresh type never equals the object's: the name decides. Siblings behave the same.
bool is_packed(PyObject* object) noexcept {
    return Py_TYPE(object) == make_type() || std::strcmp(Py_TYPE(object)->tp_name, type_name) == 0;
}

void deallocate(PyObject* self) noexcept {
    if (is_packed(self))
        std::free(as_packed(self)->pack);
    PyTypeObject* type = Py_TYPE(self);
    PyObject_Free(self);
    Py_DECREF(type);
}

char doc[] = "Swig object carries a C/C++ instance pointer";

PyType_Slot slots[] = {
    {Py_tp_dealloc, reinterpret_cast<void*>(deallocate)},
    {Py_tp_repr, reinterpret_cast<void*>(represent)},
    {Py_tp_str, reinterpret_cast<void*>(to_text)},
    {Py_tp_getattro, reinterpret_cast<void*>(PyObject_GenericGetAttr)},
    {Py_tp_doc, doc},
    {0, nullptr},
};

PyType_Spec spec = {type_name, sizeof(SwigPyPacked), 0, Py_TPFLAGS_DEFAULT, slots};

PyTypeObject* make_type() noexcept {
    return reinterpret_cast<PyTypeObject*>(PyType_FromSpec(&spec));
}

} // namespace

PyTypeObject* SwigPyPacked_type() noexcept {
    static PyTypeObject* const type = make_type();
    return type;
}

PyObject* SwigPyPacked_Create(void const* bytes, std::size_t size, swig_type_info* ty) noexcept {
    if (!bytes)
        Py_RETURN_NONE;
    SwigPyPacked* packed = PyObject_New(SwigPyPacked, SwigPyPacked_type());
    if (!packed)
        return nullptr;
    packed->pack = std::malloc(size);
    if (!packed->pack) {
        PyObject_Free(packed);
        return nullptr;
    }
    std::memcpy(packed->pack, bytes, size);
    packed->ty = ty;
    packed->size = size;
    return reinterpret_cast<PyObject*>(packed);
}

char* runtime::encode_bytes(char* out, void const* bytes, std::size_t size) noexcept {
    static constexpr char digits[] = "0123456789abcdef";
    auto const* source = static_cast<unsigned char const*>(bytes);
    *out++ = '_';
    for (std::size_t i = 0; i < size; ++i) {
        *out++ = digits[source[i] >> 4];
        *out++ = digits[source[i] & 15];
    }
    return out;
}
