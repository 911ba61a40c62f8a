"""Reads the declarations of a C++ header with their comments: names, parameters, defaults.

Not a compiler: it understands the declarations that public headers are made of, skips what it does not
understand, and never fails on it. What the rows say about types decides; this adds names and texts.
"""

from __future__ import annotations

import re
from dataclasses import dataclass, field


@dataclass(frozen=True)
class Parameter:
    type: str
    name: str
    default: str | None


@dataclass
class Declaration:
    """A function, variable, class or enumerator; `scope` holds namespaces and classes, outermost first."""

    kind: str  # "function", "variable", "class", "enumerator"
    scope: tuple[str, ...]
    name: str
    doc: str
    parameters: list[Parameter] = field(default_factory=list)
    enumeration: str = ""
    bases: list[str] = field(default_factory=list)  # as written, without template arguments

    @property
    def qualified(self) -> str:
        return "::".join((*self.scope, self.name))


TOKEN = re.compile(
    r"""(?P<trailing>///<[^\n]*|/\*\*<.*?\*/)
      | (?P<doc>///[^\n]*|/\*\*(?!/).*?\*/)
      | (?P<comment>//[^\n]*|/\*.*?\*/)
      | (?P<directive>^[ \t]*\#(?:[^\n\\]|\\.|\\\n)*)
      | (?P<string>R"\((?:.*?)\)"|"(?:\\.|[^"\\\n])*"|'(?:\\.|[^'\\\n])+')
      | (?P<blank>\n[ \t]*\n)
      | (?P<mark>[{};])
      | (?P<text>[^/{};"'\#\n]+|.|\n)""",
    re.VERBOSE | re.DOTALL | re.MULTILINE,
)
ACCESS = re.compile(r"^(?:(?:public|protected|private)\s*:(?!:)\s*)+")
META_MACRO = re.compile(r"^(?:META_\w+|OSG_\w+)\s*\([^()]*\)\s*(?=\S)")
TEMPLATE = re.compile(r"^template\s*<")
CLASS_HEAD = re.compile(r"^(?:class|struct|union)\s+(?:\w+_EXPORT\w*\s+|alignas\([^)]*\)\s+)?(\w+)")
ENUM_HEAD = re.compile(r"^(?:typedef\s+)?enum\s*(?:class\s+|struct\s+)?(\w*)")
NAMESPACE_HEAD = re.compile(r"^(?:inline\s+)?namespace\s*([\w:]*)")
SKIPPED = re.compile(r"^(?:typedef|using|friend|static_assert|extern\s+template|requires|concept)\b")
FUNCTION_NAME = re.compile(r"(operator\s*(?:\(\)|\[\]|[^\s\w(]{1,3}|\w[\w:<>\s*&]*?)|~?\w+)\s*$")
NO_NAMES = {"const", "int", "unsigned", "long", "short", "char", "float", "double", "bool", "void", "volatile"}


class _Scanner:
    def __init__(self, text: str) -> None:
        self.tokens = [(m.lastgroup or "", m.group()) for m in TOKEN.finditer(text)]
        self.position = 0
        self.scope: list[str] = []
        self.doc = ""
        self.doc_open = False  # whether the next doc line continues the block
        self.declarations: list[Declaration] = []

    def run(self) -> list[Declaration]:
        statement = ""
        while self.position < len(self.tokens):
            kind, text = self.tokens[self.position]
            self.position += 1
            if kind == "doc":
                self._add_doc(text)
            elif kind == "trailing":
                self._document_last(text)
            elif kind in ("comment", "blank", "directive"):
                self.doc_open = False
                statement += " "
                if kind != "comment" and not statement.strip():
                    self.doc = ""
            elif kind == "mark":
                statement = self._on_mark(text, statement)
            else:
                if text.strip() and not statement.strip():
                    self.doc_open = False
                statement += text
        return self.declarations

    def _add_doc(self, text: str) -> None:
        words = _comment_text(text)
        self.doc = f"{self.doc}\n{words}" if self.doc_open and self.doc else words
        self.doc_open = True

    def _document_last(self, text: str) -> None:
        words = _comment_text(text.replace("<", "", 1))
        if self.declarations and not self.declarations[-1].doc:
            self.declarations[-1].doc = words
        elif self.declarations:
            self.declarations[-1].doc += "\n" + words

    def _take_doc(self) -> str:
        doc, self.doc = self.doc.strip(), ""
        return doc

    def _on_mark(self, mark: str, statement: str) -> str:
        """Handles `;`, `{` or `}`; returns what the statement goes on with."""
        text = _clean(statement)
        if mark == ";":
            self._declare(text)
        elif mark == "}":
            if self.scope:
                self.scope.pop()
            self.doc = ""
        elif match := NAMESPACE_HEAD.match(text):
            self.scope.append(match.group(1))
            self.doc = ""
        elif match := ENUM_HEAD.match(text):
            self._read_enumerators(match.group(1))
        elif match := CLASS_HEAD.match(text):
            bases = [
                re.sub(r"<.*|\b(?:public|protected|private|virtual)\b", "", part).strip()
                for part in _split(text[match.end() :].partition(":")[2])
            ]
            self._record(Declaration("class", self._scope(), match.group(1), self._take_doc(), bases=bases))
            self.scope.append(match.group(1))
        elif text.startswith("extern"):
            self.scope.append("")
        else:
            self._skip_block()
            if "(" not in text.split("=")[0]:
                return statement + " "  # a variable with a brace initialiser: goes on to its `;`
            self._declare(text)
        return ""

    def _scope(self) -> tuple[str, ...]:
        return tuple(part for name in self.scope if name for part in name.split("::"))

    def _record(self, declaration: Declaration) -> None:
        self.declarations.append(declaration)

    def _skip_block(self) -> None:
        depth = 1
        while depth and self.position < len(self.tokens):
            kind, text = self.tokens[self.position]
            self.position += 1
            if kind == "mark":
                depth += (text == "{") - (text == "}")

    def _read_enumerators(self, enumeration: str) -> None:
        self._take_doc()
        body, doc = "", ""
        while self.position < len(self.tokens):
            kind, text = self.tokens[self.position]
            self.position += 1
            if kind == "mark" and text == "}":
                break
            if kind == "trailing":
                if "," in body or body.strip():
                    doc = _comment_text(text.replace("<", "", 1))
                    body = self._end_enumerators(body, enumeration, doc)
                    doc = ""
            elif kind == "doc":
                body = self._end_enumerators(body, enumeration, doc)
                doc = _comment_text(text)
            elif kind in ("text", "string"):
                body += text
        self._end_enumerators(body, enumeration, doc)

    def _end_enumerators(self, body: str, enumeration: str, doc: str) -> str:
        names = [part.split("=")[0].strip() for part in _split(body)]
        names = [name for name in names if re.fullmatch(r"\w+", name)]
        for name in names:
            last = name == names[-1]
            self._record(Declaration("enumerator", self._scope(), name, doc if last else "", enumeration=enumeration))
        return ""

    def _declare(self, text: str) -> None:
        doc = self._take_doc()
        if not text or SKIPPED.match(text) or CLASS_HEAD.match(text) and "(" not in text:
            return
        opening = _parameter_list(text)
        if opening is None:
            self._declare_variable(text, doc)
            return
        name = FUNCTION_NAME.search(text[:opening])
        if name:
            closing = _closing(text, opening)
            parameters = [_parameter(part) for part in _split(text[opening + 1 : closing])]
            if [p.type for p in parameters] == ["void"]:
                parameters = []
            self._record(Declaration("function", self._scope(), name.group(1).replace(" ", ""), doc, parameters))

    def _declare_variable(self, text: str, doc: str) -> None:
        head = text.split("=")[0].split("{")[0].strip()
        match = re.search(r"[\s*&>](\w+)\s*(?:\[[^\]]*\])*$", head)
        if match:
            self._record(Declaration("variable", self._scope(), match.group(1), doc))


def _comment_text(comment: str) -> str:
    if comment.startswith("///"):
        return comment[3:].strip()
    lines = (re.sub(r"^\s*\*\s?", "", line) for line in comment[3:-2].split("\n"))
    return "\n".join(line.strip() for line in lines).strip()


def _clean(statement: str) -> str:
    text = re.sub(r"\s+", " ", statement).strip()
    while True:
        before = text
        text = META_MACRO.sub("", ACCESS.sub("", text)).strip()
        text = re.sub(r"^\[\[[^\]]*\]\]\s*", "", text)
        if TEMPLATE.match(text):
            text = text[_closing(text, text.index("<")) + 1 :].strip()
        if text == before:
            return text


def _closing(text: str, opening: int) -> int:
    """Index of the bracket that closes the one at `opening`; the end of the text when there is none."""
    pairs = {"(": ")", "<": ">", "[": "]", "{": "}"}
    close = pairs[text[opening]]
    depth = 0
    for index in range(opening, len(text)):
        depth += (text[index] == text[opening]) - (text[index] == close)
        if depth == 0:
            return index
    return len(text)


def _parameter_list(text: str) -> int | None:
    """Index of the `(` that opens the parameters of a function; None for what is no function."""
    depth = 0
    for index, letter in enumerate(text):
        if letter == "<" and not text[:index].rstrip().endswith("operator"):
            depth += 1
        elif letter == ">" and depth:
            depth -= 1
        elif letter == "=" and depth == 0 and "operator" not in text[:index]:
            return None
        elif letter == "(" and depth == 0:
            if text[:index].rstrip().endswith("operator"):
                continue
            return index if FUNCTION_NAME.search(text[:index]) else None
    return None


def _split(text: str) -> list[str]:
    """The parts between commas that are in no bracket and no string."""
    parts, depth, start, quote = [], 0, 0, ""
    for index, letter in enumerate(text):
        if quote:
            quote = "" if letter == quote and text[index - 1] != "\\" else quote
        elif letter in "\"'":
            quote = letter
        elif letter in "(<[{":
            depth += 1
        elif letter in ")>]}":
            depth -= 1
        elif letter == "," and depth == 0:
            parts.append(text[start:index])
            start = index + 1
    return [part.strip() for part in (*parts, text[start:]) if part.strip()]


def _parameter(text: str) -> Parameter:
    declared, _, default = text.partition("=")
    declared = declared.strip()
    match = re.search(r"^(.*[\s*&>])(\w+)(\s*\[[^\]]*\])?$", declared)
    if match and match.group(2) not in NO_NAMES:
        return Parameter(match.group(1).strip(), match.group(2), default.strip() or None)
    return Parameter(declared, "", default.strip() or None)


def read_header(text: str) -> list[Declaration]:
    """The declarations of a header, in order."""
    return _Scanner(text).run()


def plain_type(native: str) -> str:
    """A spelling of a native type for comparing: no `const`, no namespaces, no blanks beside marks."""
    text = re.sub(r"\b(?:const|class|struct|enum|typename)\b", " ", native)
    text = re.sub(r"\w+::", "", text)
    text = re.sub(r"\s*([*&<>,])\s*", r"\1", text)
    text = re.sub(r"\s+", " ", text).strip()
    return {"unsigned": "unsigned int", "long unsigned int": "unsigned long"}.get(text, text)
