/* A member of the family written against the shared records alone, as a module built elsewhere would be.
   It knows sample::Base and hyx::Vec3 by name, and adds a type of its own that converts to sample::Base. To it the
   colours osg::Vec4 and osg::Vec4f are two types. */
#include <Python.h>
#include <stddef.h>
#include <stdint.h>
#include <string.h>

struct type_info;

struct cast_info {
    struct type_info* type;
    void* (*converter)(void*, int*);
    struct cast_info *next, *prev;
};

struct type_info {
    char const *name, *str;
    struct type_info* (*dcast)(void**);
    struct cast_info* cast;
    void* clientdata;
    int32_t owndata;
};

struct module_info {
    struct type_info** types;
    uint64_t size;
    struct module_info* next;
    struct type_info** type_initial;
    struct cast_info** cast_initial;
    void* clientdata;
};

typedef struct {
    PyObject_HEAD void* ptr;
    struct type_info* ty;
    int32_t own;
    PyObject* next;
} Handle;

static char const capsule_name[] = "swig_runtime_data4.type_pointer_capsule";

/* ---- types, sorted by name ---- */
enum { VEC3, VEC4, VEC4F, SPECIAL, BASE, TYPES };
static struct type_info initial[TYPES] = {
    {"_p_hyx__Vec3", "hyx::Vec3 *", NULL, NULL, NULL, 0},
    {"_p_osg__Vec4", "osg::Vec4 *", NULL, NULL, NULL, 0},
    {"_p_osg__Vec4f", "osg::Vec4f *", NULL, NULL, NULL, 0},
    {"_p_plain__Special", "plain::Special *", NULL, NULL, NULL, 0},
    {"_p_sample__Base", "sample::Base *", NULL, NULL, NULL, 0},
};
static struct type_info* type_initial[TYPES] = {&initial[VEC3], &initial[VEC4], &initial[VEC4F], &initial[SPECIAL],
                                                &initial[BASE]};
static struct type_info* types[TYPES + 1];

/* A Special holds a Base (virtual table pointer, then the value) behind two words of its own. */
struct special {
    int64_t own_words[2];
    void* base_table;
    int base_value;
};

static void* special_to_base(void* p, int* newmemory) {
    (void)newmemory;
    return (char*)p + offsetof(struct special, base_table);
}

static struct cast_info vec3_casts[] = {{&initial[VEC3], NULL, NULL, NULL}, {NULL, NULL, NULL, NULL}};
static struct cast_info vec4_casts[] = {{&initial[VEC4], NULL, NULL, NULL}, {NULL, NULL, NULL, NULL}};
static struct cast_info vec4f_casts[] = {{&initial[VEC4F], NULL, NULL, NULL}, {NULL, NULL, NULL, NULL}};
static struct cast_info special_casts[] = {{&initial[SPECIAL], NULL, NULL, NULL}, {NULL, NULL, NULL, NULL}};
static struct cast_info base_casts[] = {
    {&initial[BASE], NULL, NULL, NULL}, {&initial[SPECIAL], special_to_base, NULL, NULL}, {NULL, NULL, NULL, NULL}};
static struct cast_info* cast_initial[TYPES] = {vec3_casts, vec4_casts, vec4f_casts, special_casts, base_casts};
static struct module_info module = {types, TYPES, NULL, type_initial, cast_initial, NULL};

static struct type_info* query(struct module_info* start, struct module_info* end, char const* name) {
    struct module_info* m = start;
    do {
        for (uint64_t i = 0; i < m->size; ++i)
            if (m->types[i] && strcmp(m->types[i]->name, name) == 0)
                return m->types[i];
        m = m->next;
    } while (m != end);
    return NULL;
}

static int has_cast(struct type_info* target, char const* source) {
    for (struct cast_info* c = target->cast; c; c = c->next)
        if (strcmp(c->type->name, source) == 0)
            return 1;
    return 0;
}

static void push(struct type_info* target, struct cast_info* c) {
    c->prev = NULL;
    c->next = target->cast;
    if (target->cast)
        target->cast->prev = c;
    target->cast = c;
}

static void link_types(void) {
    int const alone = module.next == &module;
    for (int i = 0; i < TYPES; ++i) {
        struct type_info* own = type_initial[i];
        struct type_info* found = alone ? NULL : query(module.next, &module, own->name);
        struct type_info* target = found ? found : own;
        for (struct cast_info* c = cast_initial[i]; c->type; ++c) {
            struct type_info* source = alone ? NULL : query(module.next, &module, c->type->name);
            if (source && target == own)
                c->type = source;
            else if (source && has_cast(target, source->name))
                continue;
            push(target, c);
        }
        types[i] = target;
    }
    types[TYPES] = NULL;
}

static void link_module(void) {
    module.next = &module;
    struct module_info* head = PyCapsule_Import(capsule_name, 0);
    if (head) {
        module.next = head->next;
        head->next = &module;
    } else {
        PyErr_Clear();
        PyObject* holder = PyImport_AddModule("swig_runtime_data4");
        PyModule_AddObject(holder, "type_pointer_capsule", PyCapsule_New(&module, capsule_name, NULL));
    }
    link_types();
}

/* ---- handles ---- */
static void handle_dealloc(PyObject* self) {
    PyTypeObject* type = Py_TYPE(self);
    Py_XDECREF(((Handle*)self)->next);
    PyObject_Free(self);
    Py_DECREF(type);
}

static PyType_Slot slots[] = {{Py_tp_dealloc, handle_dealloc}, {0, NULL}};
static PyType_Spec spec = {"swig_runtime_data4.SwigPyObject", sizeof(Handle), 0, Py_TPFLAGS_DEFAULT, slots};
static PyTypeObject* handle_type;

static PyObject* new_handle(void* ptr, struct type_info* ty) {
    Handle* h = PyObject_New(Handle, handle_type);
    h->ptr = ptr;
    h->ty = ty;
    h->own = 0;
    h->next = NULL;
    return (PyObject*)h;
}

static PyObject* new_vec3(PyObject* self, PyObject* args) {
    (void)self;
    static double values[3];
    if (!PyArg_ParseTuple(args, "ddd", &values[0], &values[1], &values[2]))
        return NULL;
    return new_handle(values, types[VEC3]);
}

static PyObject* new_special(PyObject* self, PyObject* value) {
    (void)self;
    static struct special object;
    object.base_value = (int)PyLong_AsLong(value);
    return new_handle(&object, types[SPECIAL]);
}

/* The value of a sample::Base that another module made, found through the shared records. */
static PyObject* read_base(PyObject* self, PyObject* object) {
    (void)self;
    if (strcmp(Py_TYPE(object)->tp_name, "swig_runtime_data4.SwigPyObject") != 0)
        return PyErr_Format(PyExc_TypeError, "not a pointer object");
    Handle* h = (Handle*)object;
    void* p = h->ptr;
    if (h->ty != types[BASE]) {
        struct cast_info* c = types[BASE]->cast;
        while (c && strcmp(c->type->name, h->ty->name) != 0)
            c = c->next;
        if (!c)
            return PyErr_Format(PyExc_TypeError, "no sample::Base");
        int newmemory = 0;
        p = c->converter ? c->converter(p, &newmemory) : p;
    }
    return PyLong_FromLong(*(int*)((char*)p + sizeof(void*)));
}

static PyMethodDef methods[] = {
    {"new_vec3", new_vec3, METH_VARARGS, NULL},
    {"new_special", new_special, METH_O, NULL},
    {"read_base", read_base, METH_O, NULL},
    {NULL, NULL, 0, NULL},
};
static struct PyModuleDef definition = {
    PyModuleDef_HEAD_INIT, "plain_sibling", NULL, -1, methods, NULL, NULL, NULL, NULL};

PyMODINIT_FUNC PyInit_plain_sibling(void) {
    handle_type = (PyTypeObject*)PyType_FromSpec(&spec);
    PyObject* m = PyModule_Create(&definition);
    link_module();
    return m;
}
