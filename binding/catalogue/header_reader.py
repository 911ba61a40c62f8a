"""Takes declarations, comments and bases from a parsed translation unit."""

from __future__ import annotations

import re
from pathlib import Path

from clang.cindex import AccessSpecifier, Cursor, CursorKind, SourceLocation, SourceRange, TranslationUnit, conf

from .class_lists import ROOT, Type
from .declarations import Declaration, Described, Description, Parameter

CLASSES = {CursorKind.CLASS_DECL, CursorKind.STRUCT_DECL, CursorKind.UNION_DECL, CursorKind.CLASS_TEMPLATE}
FUNCTIONS = {
    CursorKind.FUNCTION_DECL,
    CursorKind.CXX_METHOD,
    CursorKind.CONSTRUCTOR,
    CursorKind.FUNCTION_TEMPLATE,
}
VARIABLES = {CursorKind.VAR_DECL, CursorKind.FIELD_DECL}
ROOMS = {CursorKind.NAMESPACE, CursorKind.LINKAGE_SPEC}

# What the package declares no function for.
COMMENT_RANGE = conf.lib.clang_Cursor_getCommentRange
COMMENT_RANGE.argtypes, COMMENT_RANGE.restype = [Cursor], SourceRange


class HeaderReader:
    """Reads the given headers, and those in the folders of the libraries' listed headers."""

    def __init__(self, headers: list[Path], types: dict[str, Type]) -> None:
        self.headers = {path.resolve() for path in headers}
        self.types = types  # by the namespace that names it `type`
        self.folders = {t.header.split("/")[0] for t in types.values() if re.fullmatch(r"\w+/\w+", t.header)}
        self.wanted: dict[str, bool] = {}
        self.sources: dict[str, bytes] = {}
        self.description = Description()

    def read(self, unit: TranslationUnit) -> Description:
        for cursor in unit.cursor.get_children():
            listed = self.types.get(cursor.spelling) if cursor.kind == CursorKind.NAMESPACE else None
            if listed:
                self._read_listed(listed, cursor)
            elif cursor.location.file and self._is_wanted(cursor.location.file.name):
                self._read(cursor, "")
        return self.description

    def _is_wanted(self, file: str) -> bool:
        if file not in self.wanted:
            path = Path(file)
            self.wanted[file] = path in self.headers or path.parent.name in self.folders
        return self.wanted[file]

    def _read_listed(self, listed: Type, room: Cursor) -> None:
        alias = next(c for c in room.get_children() if c.kind == CursorKind.TYPE_ALIAS_DECL)
        declared = alias.underlying_typedef_type.get_canonical().get_declaration()
        if declared.kind in CLASSES:
            self._describe(listed.native, declared)
            if listed.header:
                self.description.types[listed.native].header = listed.header

    def _describe(self, name: str, cursor: Cursor) -> None:
        """Notes a class and, where that is new, its bases."""
        if name in self.description.types:
            return
        # The bases of a template's instance stand with the template.
        template = conf.lib.clang_getSpecializedCursorTemplate(cursor)
        definition = (template or cursor).get_definition() or cursor
        described = self.description.types[name] = Described([], _project_path(definition.location.file.name))
        for base in definition.get_children():
            if base.kind == CursorKind.CXX_BASE_SPECIFIER and base.access_specifier == AccessSpecifier.PUBLIC:
                canonical = base.type.get_canonical()
                described.bases.append(canonical.spelling)
                if canonical.get_declaration().location.file:
                    self._describe(canonical.spelling, canonical.get_declaration())

    def _read(self, cursor: Cursor, scope: str) -> None:
        kind = cursor.kind
        if cursor.access_specifier == AccessSpecifier.PRIVATE:
            return
        name = f"{scope}::{cursor.spelling}".removeprefix("::")
        if kind in ROOMS:
            for child in cursor.get_children():
                self._read(child, name if kind == CursorKind.NAMESPACE else scope)
        elif kind in CLASSES and cursor.is_definition():
            self._add("class", name, cursor)
            if kind != CursorKind.CLASS_TEMPLATE:
                self._describe(name, cursor)
            for child in cursor.get_children():
                self._read(child, name)
        elif kind == CursorKind.ENUM_DECL:
            self._read_enumeration(cursor, scope)
        elif kind in FUNCTIONS:
            self._read_function(cursor, scope)
        elif kind in VARIABLES:
            self._add("variable", name, cursor)

    def _add(self, kind: str, name: str, cursor: Cursor) -> Declaration:
        declaration = Declaration(kind, name, comment_text(cursor.raw_comment))
        self.description.declarations.append(declaration)
        return declaration

    def _read_enumeration(self, cursor: Cursor, scope: str) -> None:
        named = re.fullmatch(r"\w+", cursor.spelling)  # what has no name is described by its place
        enumeration = f"{scope}::{cursor.spelling}".removeprefix("::") if named else ""
        scope = enumeration if cursor.is_scoped_enum() else scope
        for child in cursor.get_children():
            if child.kind == CursorKind.ENUM_CONSTANT_DECL:
                added = self._add("enumerator", f"{scope}::{child.spelling}".removeprefix("::"), child)
                added.value, added.enumeration = child.enum_value, enumeration
                if added.doc and self._text(COMMENT_RANGE(child).end, child.extent.start).strip():
                    added.doc = ""  # of the enumerator before

    def _read_function(self, cursor: Cursor, scope: str) -> None:
        name = re.sub(r"<.*", "", cursor.spelling) if cursor.kind == CursorKind.CONSTRUCTOR else cursor.spelling
        parent = cursor.semantic_parent  # differs from the scope where a header defines a member outside its class
        if parent.kind in CLASSES and parent.spelling != scope.rpartition("::")[2]:
            scope = f"{scope}::{parent.spelling}".removeprefix("::")
        declaration = self._add("function", f"{scope}::{name}".removeprefix("::"), cursor)
        for child in cursor.get_children():
            if child.kind == CursorKind.PARM_DECL:
                declaration.parameters.append(Parameter(child.type.spelling, child.spelling, self._default(child)))

    def _default(self, parameter: Cursor) -> str | None:
        """What stands behind the parameter's `=`, as it is written."""
        default = self._text(parameter.extent.start, parameter.extent.end).partition("=")[2]
        return re.sub(r"\s+", " ", default).strip() or None

    def _text(self, start: SourceLocation, end: SourceLocation) -> str:
        file = start.file.name
        if file not in self.sources:
            self.sources[file] = Path(file).read_bytes()
        return self.sources[file][start.offset : end.offset].decode(errors="replace")


def _project_path(file: str) -> str:
    path = Path(file)
    return str(path.relative_to(ROOT) if path.is_relative_to(ROOT) else path)


def comment_text(comment: str | None) -> str:
    """The words of a comment, without its marks."""
    if not comment:
        return ""
    text = re.sub(r"^\s*/{4,}$|\*+/$", "", comment.strip(), flags=re.MULTILINE)
    lines = (re.sub(r"^\s*(?://[/!]<?|/\*[*!]<?|\*(?!\*))", "", line).strip() for line in text.split("\n"))
    return "\n".join(lines).strip()
