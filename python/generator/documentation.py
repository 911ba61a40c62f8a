"""Gives classes and operations the texts, parameter names and defaults of the public headers."""

from __future__ import annotations

import re
from collections.abc import Iterable

from binding.catalogue.declarations import Declaration, Description, without_arguments

from .defaults import Defaults, same
from .interface import Form, Interface, Member, Operation, Parameter, ProxyClass, constant_owners
from .library_texts import LibraryTexts
from .natives import Natives
from .python_types import plain_type

RAISED = re.compile(r"`?std::(runtime_error|logic_error|domain_error|length_error)`?")
RAISED_BY_VALUE = re.compile(r"`?std::invalid_argument`?")
RAISED_BY_SYSTEM = re.compile(r"`?std::(filesystem::filesystem_error|system_error)`?")
RAISED_RANGE = re.compile(r"`?std::out_of_range`?")
PARAMETER_LINE = re.compile(r"^[\\@]param(?:\[\w+\])?\s+(\w+)\s*", re.MULTILINE)
THROWS_LINE = re.compile(r"^[\\@](?:throws?|exception)\s+(\S+)\s*", re.MULTILINE)
RETURN_LINE = re.compile(r"^[\\@]returns?\s+", re.MULTILINE)
# What gives a new object, or one that its owner always has; the texts are those of the headers.
NEVER_NONE = re.compile(
    r"clone(Type)?|getOrCreate\w+|begin|end|rbegin|rend|iterator|copy|incr|decr|advance|erase|insert|__(add|sub|getslice)__"
    r"|get(Motor1D|Range1D|Lock1D|Space|FrameMutex)"
)
NEVER_NONE_TEXT = re.compile(
    r"made on first use|owned by the (target|application|window)|emptied with the scene|^The root of all"
    r"|^The decoration of the|^A frame that follows the body|sides a tube has|where the red shift is 0|of the stations"
)
KEYWORDS = {
    "from",
    "in",
    "is",
    "lambda",
    "None",
    "True",
    "False",
    "import",
    "class",
    "def",
    "pass",
    "with",
    "as",
    "global",
    "not",
    "and",
    "or",
    "async",
    "await",
    "del",
    "raise",
    "print",
    "self",
}


class Documentation:
    """The texts of the headers, as Python's readers want them."""

    def __init__(self, description: Description, natives: Natives, interface: Interface) -> None:
        self.find = description.find
        self.natives = natives
        self.defaults = Defaults(interface, description)
        self.library = LibraryTexts()

    def class_text(self, native: str) -> str:
        return _first_text(self.find(without_arguments(native), "class"))

    def enumeration(self, native: str, name: str) -> str:
        """The native name of the enumeration that a class's or a namespace's constant belongs to; empty for none."""
        for scope in self.lineage(native):
            for declaration in self.find(f"{scope}::{name}", "enumerator"):
                return declaration.enumeration
        return ""

    def enumerator_text(self, native: str, name: str) -> str:
        return _first_text(self.find(f"{without_arguments(native)}::{name}", "enumerator"))

    def lineage(self, native: str) -> list[str]:
        """The names under which a class and its bases declare their members."""
        return list(dict.fromkeys(without_arguments(name) for name in self.natives.lineage(native)))


def _first_text(declarations: list[Declaration]) -> str:
    return next((readable(d.doc) for d in declarations if d.doc), "")


def document(interface: Interface, documentation: Documentation) -> None:
    for package in interface.packages.values():
        for operation in package.functions.values():
            _document_operation(operation, [], documentation)
            documentation.library.complete_named(f"{operation.module[1:]}.{operation.name}", operation)
        for proxy in package.classes:
            _document_class(proxy, documentation)
            taken = {*proxy.methods, *proxy.members, *proxy.constants}
            _sort_constants(
                interface, proxy.native, proxy.qualified, proxy.enumerations, proxy.constants, taken, documentation
            )
        owned = constant_owners(package)
        free = [name for name in package.constants if name not in owned]
        taken = {c.name for c in package.classes} | {*package.functions, *package.constants, *package.aliases}
        _sort_constants(interface, package.name, package.name, package.enumerations, free, taken, documentation)


def _sort_constants(
    interface: Interface,
    native: str,
    qualified: str,
    enumerations: dict[str, list[str]],
    constants: Iterable[str],
    taken: set[str],
    documentation: Documentation,
) -> None:
    """Sorts constants into their enumerations, as far as Python has a place for their names."""
    for constant in constants:
        enumeration = documentation.enumeration(native, constant)
        name = enumeration.rpartition("::")[2]
        if name and name not in taken:
            enumerations.setdefault(name, []).append(constant)
            interface.enumerations[enumeration] = f"{qualified}.{name}"


def _document_class(proxy: ProxyClass, documentation: Documentation) -> None:
    proxy.doc = documentation.class_text(proxy.native)
    lineage = documentation.lineage(proxy.native)
    for kind, operation in proxy.machinery.items():
        if kind == "constructor":
            _document_operation(operation, [f"{lineage[0]}::{lineage[0].rpartition('::')[2]}"], documentation)
    for operation in proxy.methods.values():
        names = [f"{native}::{operation.name}" for native in lineage]
        _document_operation(operation, names, documentation)
        documentation.library.complete(proxy, operation)
    for operation in proxy.methods.values():
        _tell_by_counterpart(proxy, operation)
    for member in proxy.members.values():
        _document_member(member, lineage, documentation)
        member.doc = member.doc or documentation.library.text(f"{proxy.package}.{proxy.name}.{member.name}")


def _tell_by_counterpart(proxy: ProxyClass, operation: Operation) -> None:
    """What one sets and gets is told once in the headers, at either of the two."""
    found = re.fullmatch(r"(get|is|has|set)(Enable)?([A-Z]\w*)?", operation.name)
    if not found or any(form.doc for form in operation.forms):
        return
    what, reads = found[3] or "", found[1] != "set"
    named = what.removesuffix("d") if what == "Enabled" else what
    others = (
        (f"set{named}", f"setEnable{named}", "setEnable") if reads else (f"get{what}", f"is{what}", f"getEnable{what}")
    )
    for name in (f"set{found[2] or ''}{what}" if reads else f"is{found[2] or ''}{what}", *others):
        other = proxy.methods.get(name)
        text = next((form.doc for form in other.forms if form.doc), "") if other else ""
        if text:
            head = f"What `{name}` has set." if reads else f"Sets what `{name}` tells."
            for form in operation.forms:
                form.doc = f"{head} {_first_sentences(text)}"
            return


def _first_sentences(text: str) -> str:
    """Without what is said of errors."""
    return re.split(r"(?:^|(?<=[.;])\s+|\n)(?=Raises|Throws|\w+: )", text.strip())[0].strip() or text


def _document_member(member: Member, lineage: list[str], documentation: Documentation) -> None:
    for native in lineage:
        for declaration in documentation.find(f"{native}::{member.name}", "variable"):
            if declaration.doc:
                member.doc = readable(declaration.doc)
                return


def _document_operation(operation: Operation, names: list[str], documentation: Documentation) -> None:
    for form in operation.forms:
        declarations: list[Declaration] = []
        for name in dict.fromkeys([form.native, *names]):
            declarations += documentation.find(name, "function")
        best = _match(form, declarations)
        _name_parameters(form, best)
        _translate_defaults(form, best, documentation.defaults)
        # An override without a comment of its own has its base's.
        inherited = [d for d in declarations if best and d.scope != best.scope and _types(d) == _types(best)]
        texts = [d.doc for d in (best, *inherited) if d and d.doc]
        form.doc = readable(texts[0]) if texts else ""
        told = NEVER_NONE_TEXT.search(form.doc) and not any("*" in p.type for p in form.parameters)
        always = bool(NEVER_NONE.fullmatch(operation.name) or told) and "None" not in form.doc
        form.never_none = always or "Never None" in form.doc


def _types(declaration: Declaration) -> list[str]:
    return [plain_type(p.type) for p in declaration.parameters]


def _match(form: Form, declarations: list[Declaration]) -> Declaration | None:
    wanted = [plain_type(p.type) for p in form.parameters]

    def score(declaration: Declaration) -> tuple[int, int]:
        types = _types(declaration)
        return sum(a == b for a, b in zip(wanted, types)), -len(types)

    # A form that leaves defaults out is shorter than its declaration.
    fitting = [d for d in declarations if len(d.parameters) >= len(wanted)]
    exact = [d for d in fitting if score(d)[0] == len(wanted)]
    return max(exact or fitting, key=score, default=None)


def _name_parameters(form: Form, declaration: Declaration | None) -> None:
    taken: set[str] = set()
    for index, parameter in enumerate(form.parameters):
        declared = declaration.parameters[index] if declaration and index < len(declaration.parameters) else None
        parameter.name = _free_name(declared.name if declared and declared.name else _name_from_type(parameter), taken)


def _translate_defaults(form: Form, declaration: Declaration | None, defaults: Defaults) -> None:
    """Rows decide whether an argument may be left out; in the project's own headers the same value must stand."""
    scope = form.native.rpartition("::")[0]
    for index, parameter in enumerate(form.parameters):
        if parameter.default is None:
            continue
        parameter.default = defaults.text(parameter.default, scope)
        written = declaration.parameters[index].default if declaration else None
        declared = defaults.text(written, declaration.scope) if declaration and written else "..."
        if form.native.startswith("hyx") and not same(parameter.default, declared):
            raise SystemExit(
                f"{form.native}: its row has {parameter.default} as default of `{parameter.name}`, "
                f"its declaration {declared}"
            )


def _name_from_type(parameter: Parameter) -> str:
    word = re.sub(r"<.*>", "", plain_type(parameter.type)).strip("*& ")
    word = re.sub(r"\W+", "_", word).strip("_").removeprefix("vector_") or "value"
    simple = {
        "bool": "flag",
        "int": "number",
        "unsigned_int": "number",
        "unsigned_long": "number",
        "long": "number",
        "float": "value",
        "double": "value",
        "Real": "value",
        "UInt": "number",
        "string": "text",
        "String": "text",
        "char": "text",
        "void": "object",
        "PyObject": "object",
        "SWIGPY_SLICEOBJECT": "part",
        "ptrdiff_t": "offset",
        "size_type": "size",
        "difference_type": "offset",
        "value_type": "value",
    }
    return simple.get(word, word[0].lower() + word[1:])


def _free_name(name: str, taken: set[str]) -> str:
    name = name + "_" if name in KEYWORDS else name
    candidate, number = name, 2
    while candidate in taken:
        candidate, number = f"{name}{number}", number + 1
    taken.add(candidate)
    return candidate


def readable(comment: str) -> str:
    """A header comment as a docstring: no markup commands, and the exceptions that Python sees."""
    text = PARAMETER_LINE.sub(r"\1: ", comment)
    text = THROWS_LINE.sub(r"Raises \1 ", text)
    text = RETURN_LINE.sub("Returns ", text)
    text = RAISED.sub("RuntimeError", text)
    text = RAISED_BY_VALUE.sub("ValueError", text)
    text = RAISED_BY_SYSTEM.sub("OSError", text)
    text = RAISED_RANGE.sub("IndexError", text)
    text = re.sub(r"\b([Tt])hrows\b", lambda found: "Raises" if found[1] == "T" else "raises", text)
    text = re.sub(r"\bnullptr\b|\b[Nn]ull\b", "None", text)
    text = re.sub(r"[\\@](?:brief|ref|c|p|a|e|b|note|see|sa|deprecated)\s+", "", text)
    return text.replace("::", ".").replace("\\", "").strip()
