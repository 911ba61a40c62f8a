"""Native types as Python type hints."""

from __future__ import annotations

import re

from binding.catalogue.class_lists import plain_name

from .interface import Form, Interface, ProxyClass

INTEGERS = {
    "int",
    "unsigned int",
    "unsigned",
    "long",
    "unsigned long",
    "long long",
    "unsigned long long",
    "short",
    "unsigned short",
    "size_t",
    "std::size_t",
    "char",
    "unsigned char",
    "signed char",
    "hyx::UInt",
    "UInt",
    "hyx::Index",
    "hyx::Int",
    "ptrdiff_t",
    "std::ptrdiff_t",
    "uint32_t",
    "int32_t",
    "std::uint32_t",
    "std::int32_t",
    "std::uint64_t",
    "std::int64_t",
    "hyx::UInt32",
    "hyx::Int32",
    "GLenum",
    "GLint",
    "GLuint",
}
FLOATS = {"float", "double", "hyx::Real", "Real", "hyx::TimeStamp", "GLfloat"}
STRINGS = {"std::string", "hyx::String", "hyx::Name", "std::string_view"}
ROW = "Sequence[float]"
PYTHON = "python:"  # before a type that is Python's own already
NUMBERS = re.compile(r"^std::vector<\s*(.+?)\s*(?:,\s*std::allocator<.*>\s*)?>$")
LIST = re.compile(r"^(?:std::vector|hyx::Vector|hyx::VectorPOD)<\s*(.+?)\s*(?:,\s*std::allocator<.*>\s*)?>$")
HOLDER = re.compile(r"^(?:osg|hyx)::ref_ptr<\s*(.+?)\s*>$")
# What the native lists call their parts.
PARTS = re.compile(r"^(.+)::(size_type|difference_type|value_type|iterator|const_iterator)$")


class TypeHints:
    def __init__(self, interface: Interface) -> None:
        self.interface = interface

    def parameter(self, native: str) -> str:
        if native.startswith(PYTHON):
            return native.removeprefix(PYTHON)
        kind, marks = _core(native)
        if part := PARTS.match(kind):
            return self._part(part.group(1), part.group(2))
        simple = self._simple(kind, marks)
        if simple:
            return simple
        if vector := NUMBERS.match(kind):
            element = self.parameter(vector.group(1))
            proxy = self.find(kind)
            return f"{proxy.qualified} | Iterable[{element}]" if proxy else f"Iterable[{element}]"
        proxy = self.find(kind)
        if proxy:
            read = not marks or "const" in marks
            given = f"{proxy.qualified} | {proxy.substitute}" if proxy.substitute and read else proxy.qualified
            return f"{given} | None" if "*" in marks else given
        if kind in ("void", "SWIGPY_SLICEOBJECT"):
            return {"void": "Handle | None", "SWIGPY_SLICEOBJECT": "slice"}[kind]
        if kind in self.interface.enumerations and not marks:
            return f"{self.interface.enumerations[kind]} | int"
        return self._unknown(kind, marks)

    def result_of(self, form: Form) -> str:
        return self.result(form.result).removesuffix(" | None" if form.never_none else "")

    def result(self, native: str) -> str:
        if native.startswith(PYTHON):
            return native.removeprefix(PYTHON)
        kind, marks = _core(native)
        if kind == "void" and not marks:
            return "None"
        simple = self._simple(kind, marks)
        if simple:
            return simple
        proxy = self.find(kind)
        if proxy:
            return f"{proxy.qualified} | None" if "*" in marks else proxy.qualified
        if vector := NUMBERS.match(kind):
            return f"tuple[{self.result(vector.group(1))}, ...]"
        return self._unknown(kind, marks)

    def describe_lists(self) -> None:
        """Tells the classes of lists and of values what Python may give for them, and what is in them."""
        for proxy in {id(p): p for p in self.interface.classes.values()}.values():
            made = proxy.machinery.get("constructor")
            if made and made.forms:  # its result spells the class as the compiler does
                self.interface.classes.setdefault(plain_name(_core(made.forms[0].result)[0]), proxy)
        for spelling, proxy in self.interface.classes.items():
            if "Numbers" in proxy.written_bases:
                proxy.substitute = ROW
            elif not proxy.item and (found := LIST.match(spelling)):
                kind = found.group(1)
                holder = HOLDER.match(kind)
                proxy.item = self.result(f"{holder.group(1)} *" if holder else kind)
                proxy.element = self.parameter(f"{holder.group(1)} *" if holder else f"{kind} const &")
                proxy.substitute = f"Iterable[{proxy.element}]" if proxy.written_bases else ""

    def _part(self, container: str, part: str) -> str:
        if part in ("size_type", "difference_type"):
            return "int"
        found = LIST.match(container)
        return self.parameter(found.group(1)) if part == "value_type" and found else "hyxOSG.SwigPyIterator"

    def find(self, kind: str) -> ProxyClass | None:
        return self.interface.classes.get(plain_name(kind))

    def _simple(self, kind: str, marks: str) -> str | None:
        if "*" in marks and not (kind == "char" and marks == "*"):
            return None
        if kind == "char" and marks == "*":
            return "str"
        if kind in STRINGS:
            return "str"
        if marks and "const" not in marks:
            return None  # a number that the call writes crosses as a wrapped pointer
        if kind == "bool":
            return "bool"
        return "int" if kind in INTEGERS else "float" if kind in FLOATS else None

    def _unknown(self, kind: str, marks: str) -> str:
        # A class without a proxy crosses as a bare pointer; by value and unknown is an enumeration.
        return "Pointer" + " | None" * ("*" in marks) if marks or "<" in kind else "int"


def _core(native: str) -> tuple[str, str]:
    """The type without its marks, and the marks: `*`, `&`, and `const` when it stands beside a reference."""
    text = native.strip().replace("std::__cxx11::", "std::")
    text = re.sub(r"std::basic_string<char(?:, std::char_traits<char>, std::allocator<char> ?)?>", "std::string", text)
    constant = bool(re.search(r"\bconst\b", re.sub(r"<.*>", "", text)))
    text = re.sub(r"\bconst\b(?![^<]*>)", " ", text)
    marks = "".join(re.findall(r"[*&]", re.sub(r"<.*>", "", text)))
    kind = re.sub(r"[*&\s]+$", "", text).strip()
    return re.sub(r"\s+", " ", kind), marks + ("const" if constant and marks == "&" else "")


def plain_type(native: str) -> str:
    """A spelling of a native type for comparing: no `const`, no namespaces, no blanks beside marks."""
    text = re.sub(r"\b(?:const|class|struct|enum|typename)\b", " ", native)
    text = re.sub(r"\w+::", "", text)
    text = re.sub(r"\s*([*&<>,])\s*", r"\1", text)
    text = re.sub(r"\s+", " ", text).strip()
    return {"unsigned": "unsigned int", "long unsigned int": "unsigned long"}.get(text, text)
