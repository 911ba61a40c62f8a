// The interpreter that runs this process, if any.
#pragma once

#include <Python.h>

#include <string>
#include <utility>

namespace hyxPython {

/// Owns one reference to a script's object.
class ScriptObject {
public:
    ScriptObject() = default;

    /// Takes the reference over.
    explicit ScriptObject(PyObject* object) : m_object(object) {}

    ScriptObject(ScriptObject&& other) noexcept : m_object(std::exchange(other.m_object, nullptr)) {}

    ScriptObject& operator=(ScriptObject other) noexcept {
        std::swap(m_object, other.m_object);
        return *this;
    }

    ~ScriptObject() { Py_XDECREF(m_object); }

    static ScriptObject borrow(PyObject* object) {
        Py_XINCREF(object);
        return ScriptObject(object);
    }

    PyObject* get() const { return m_object; }

    PyObject* release() { return std::exchange(m_object, nullptr); }

    explicit operator bool() const { return m_object != nullptr; }

private:
    PyObject* m_object = nullptr;
};

/// Whether this thread may call the interpreter.
bool interpreterAnswers();

/// Whether the interpreter wants the caller to return to it: an error is pending, or a signal's handler raised one now
/// (Ctrl-C).
bool interpreterInterrupts();

/// The program that runs scripts, to start more of it; "" where this process is none and names none.
std::string interpreterProgram();

/// An error's type and text, such as "ValueError: no such body". No error may be pending.
std::string describeError(PyObject* type, PyObject* value);

/// The whole report of an error as the interpreter prints it. No error may be pending.
std::string describeTraceback(PyObject* type, PyObject* value, PyObject* traceback);

} // namespace hyxPython
