"""Settings of the documentation's site."""

project = "hyxOSG"
author = "The hyxOSG authors"
extensions = ["myst_parser"]
html_theme = "furo"
html_title = "hyxOSG for Python"
default_role = "literal"
myst_heading_anchors = 3
highlight_language = "python"
add_module_names = False
toc_object_entries = False
maximum_signature_line_length = 100
# Links out of the pages into the sources, and types of Python itself, have no page here.
suppress_warnings = ["myst.xref_missing"]
nitpick_ignore_regex = [
    (r"py:.*", r"(builtins\.)?(int|float|str|bool|None|bytes|object|slice|tuple|list|dict|type|memoryview|property)"),
    (r"py:.*", r"(Any|Callable|Iterable|Iterator|Sequence|MutableSequence|Buffer|IntEnum|TracebackType|Self)"),
    (r"py:.*", r"(typing|collections|enum|types|numpy|_hyx_extras|os)\..*"),
    (r"py:.*", r"(Handle|Items|Numbers|NumberList|_hyx_proxy\..*|.*\._\w+|ArrayLike)"),
]
