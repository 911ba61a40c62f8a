"""Checks how native code names things: one dialect for the libraries, one for the binding.

platform/ and reference/ say camelCase for functions, variables and fields; private fields of classes start with m_.
All other native code says snake_case. Types are PascalCase (in C snake_case) and macros UPPER_CASE, enumerators and
constants UPPER_CASE or like variables. Names that an interface fixes are taken from where it stands: what platform/
declares, what the rows present, and the prefixes of the shared records.
"""

import pathlib
import re
from collections.abc import Iterator

import tree_sitter
from sources import native_files, parse, place, report, text

CAMEL = re.compile(r"[a-z][A-Za-z0-9]*")
SNAKE = re.compile(r"[a-z][a-z0-9]*(_[a-z0-9]+)*_?")
PASCAL = re.compile(r"[A-Z][A-Za-z0-9]*")
UPPER = re.compile(r"[A-Z][A-Z0-9]*(_[A-Z0-9]+)*")
# The records, routines and classes that all modules of the family share, the entry points that the interpreter looks
# for, sections that the linker names, and methods of Python.
SHARED = re.compile(r"(SWIG_|Swig|swig_|PyInit_|__)\w+")
# Members by which the standard library and holders know each other, and a container its traits.
PROTOCOL = re.compile(r"\w+_type|iterator|ref_ptr|stop_iteration|from_oper|as_val|traits_\w+|GCItem_var")
# References that scripts take and give back, by function.
COUNTING = re.compile(r"[A-Z]\w+_(un)?reference")
HIDDEN = re.compile(r"P?[Ii]mpl|State|Data|Private")

CLASSES = ("class_specifier", "struct_specifier", "union_specifier")
DECLARING = ("declaration", "field_declaration", "function_definition", "for_range_loop")
PARAMETERS = ("parameter_declaration", "optional_parameter_declaration")
ROW = re.compile(r"\bFUNCTION\(\s*(\w+)")
ROW_WORD = re.compile(r"\w+")


def walk(node: tree_sitter.Node) -> Iterator[tree_sitter.Node]:
    waiting = [node]
    while waiting:
        node = waiting.pop()
        yield node
        waiting += reversed(node.children)


def chain(node: tree_sitter.Node | None) -> Iterator[tree_sitter.Node]:
    """A declarator and those inside it, down to the name."""
    while node is not None:
        yield node
        inner = [child for child in node.named_children if child.type.endswith(("declarator", "identifier"))]
        node = node.child_by_field_name("declarator") or (inner[0] if inner else None)


def declared(node: tree_sitter.Node) -> Iterator[tuple[str, tree_sitter.Node, bool]]:
    """What a declaration declares here: the name, its node, and whether it is a function."""
    if node.child_by_field_name("type") is None or node.has_error and node.type == "field_declaration":
        return  # a constructor, or a macro
    for declarator in node.children_by_field_name("declarator"):
        links = list(chain(declarator))
        if any(link.type == "qualified_identifier" for link in links):
            continue  # a member of a class, judged where the class is
        if links[-1].type in ("identifier", "field_identifier"):
            kinds = [link.type for link in links]
            function = "function_declarator" in kinds and "parenthesized_declarator" not in kinds
            yield text(links[-1]), links[-1], function


def owner(node: tree_sitter.Node) -> tree_sitter.Node | None:
    """The class that a field is declared in."""
    return node.parent.parent if node.parent and node.parent.parent and node.parent.parent.type in CLASSES else None


def access_of(node: tree_sitter.Node, of: tree_sitter.Node) -> str:
    access = "private" if of.type == "class_specifier" else "public"
    for sibling in node.parent.children if node.parent else []:
        if sibling == node:
            break
        if sibling.type == "access_specifier":
            access = text(sibling)
    return access


class Judge:
    """Judges one file."""

    def __init__(self, path: pathlib.Path, root: pathlib.Path, fixed: set[str]) -> None:
        self.path, self.root, self.fixed = path, root, fixed
        self.camel = path.relative_to(root).parts[0] in ("platform", "reference")
        self.style = CAMEL if self.camel else SNAKE

    def faults(self) -> Iterator[str]:
        for node in walk(parse(self.path)):
            for name, kind, at in self._misnamed(node):
                yield f"{place(self.path, self.root, at.start_point[0] + 1)}: {kind} {name}"

    def _misnamed(self, node: tree_sitter.Node) -> Iterator[tuple[str, str, tree_sitter.Node]]:
        name = text(node.child_by_field_name("name"))
        if node.type in (*CLASSES, "enum_specifier", "alias_declaration"):
            yield from self._misnamed_type(node, name)
        elif node.type == "enumerator":
            if not (UPPER.fullmatch(name) or self._fits(name)):
                yield name, "no enumerator is called", node
        elif node.type in ("preproc_def", "preproc_function_def"):
            if not UPPER.fullmatch(name):
                yield name, "no macro is called", node
        elif node.type in (*DECLARING, *PARAMETERS):
            yield from self._misnamed_declared(node)

    def _fits(self, name: str) -> bool:
        known = self.style.fullmatch(name) or COUNTING.fullmatch(name) or SHARED.fullmatch(name)
        return bool(known) or name in self.fixed

    def _misnamed_type(self, node: tree_sitter.Node, name: str) -> Iterator[tuple[str, str, tree_sitter.Node]]:
        nested = owner(node) or (node.parent and owner(node.parent))
        has_body = node.child_by_field_name("body") is not None
        if nested and not has_body and HIDDEN.fullmatch(name):
            yield name, "hidden state is called Implementation, not", node
        if (has_body or node.type == "alias_declaration") and "::" not in name and "<" not in name:
            styles = (PASCAL, PROTOCOL, SHARED, *([SNAKE] if self.path.suffix == ".c" else []))
            if name and not any(style.fullmatch(name) for style in styles):
                yield name, "no type is called", node

    def _misnamed_declared(self, node: tree_sitter.Node) -> Iterator[tuple[str, str, tree_sitter.Node]]:
        of_template = node.parent is not None and node.parent.type == "template_parameter_list"
        constant = of_template or any(text(child) == "constexpr" for child in node.children)
        of = owner(node)
        overriding = any(child.type == "virtual_specifier" for inner in walk(node) for child in inner.children)
        for name, at, function in declared(node):
            if function and overriding:
                continue  # named where it is declared first, which may be in another library
            if of_template and PASCAL.fullmatch(name) or constant and UPPER.fullmatch(name):
                continue
            if of and not function and self.camel and not self._is_static(node):
                yield from self._misnamed_field(node, of, name, at)
            elif not self._fits(name):
                yield name, f"no {'function' if function else 'variable'} is called", at

    @staticmethod
    def _is_static(node: tree_sitter.Node) -> bool:
        return any(child.type == "storage_class_specifier" and text(child) == "static" for child in node.children)

    def _misnamed_field(
        self, node: tree_sitter.Node, of: tree_sitter.Node, name: str, at: tree_sitter.Node
    ) -> Iterator[tuple[str, str, tree_sitter.Node]]:
        if "<Implementation>" in text(node) and name != "m_implementation":
            yield name, "the hidden state is held by m_implementation, not", at
        access = access_of(node, of)
        if access == "private" and not name.startswith("m_"):
            yield name, "a private field starts with m_, unlike", at
        elif not self._fits(name if access == "public" else name.removeprefix("m_")):
            yield name, "no field is called", at


def of_libraries(root: pathlib.Path) -> set[str]:
    """Names that platform/ declares."""
    nodes = (node for path in native_files(root) if room(path, root) == "platform" for node in walk(parse(path)))
    return {name for node in nodes if node.type in (*DECLARING, *PARAMETERS) for name, _, _ in declared(node)}


def of_scripts(root: pathlib.Path) -> set[str]:
    """Names that scripts see: the words of the rows and constants, without their classes, too."""
    paths = (path for path in native_files(root) if room(path, root) == "modules")
    words = {word for path in paths for word in ROW_WORD.findall(path.read_text())}
    return words | {word.partition("_")[2] for word in words}


def room(path: pathlib.Path, root: pathlib.Path) -> str:
    return path.relative_to(root).parts[0]


def faults(root: pathlib.Path) -> Iterator[str]:
    libraries, scripts = of_libraries(root), of_scripts(root)
    for path in native_files(root):
        if room(path, root) in ("platform", "reference"):
            yield from Judge(path, root, scripts).faults()
        else:
            yield from Judge(path, root, libraries | presented(path)).faults()


def presented(path: pathlib.Path) -> set[str]:
    """The names under which a file's own functions appear to scripts."""
    names = (row.removesuffix("_get").removesuffix("_set") for row in ROW.findall(path.read_text()))
    return {part for name in names for part in (name, name.rpartition("_")[2])}


if __name__ == "__main__":
    report(faults)
