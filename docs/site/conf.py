"""Settings of the documentation's site."""

import gallery

project = "hyxOSG"
exclude_patterns = ["gallery_scripts"]
author = "The hyxOSG authors"
extensions = ["myst_parser", "sphinx_gallery.gen_gallery"]
html_theme = "furo"
html_title = "hyxOSG for Python"
default_role = "literal"
myst_heading_anchors = 3
highlight_language = "python"
add_module_names = False
toc_object_entries = False
maximum_signature_line_length = 100
sphinx_gallery_conf = {
    "examples_dirs": "gallery_scripts",
    "gallery_dirs": "gallery",
    "filename_pattern": ".py$",
    "image_scrapers": ("gallery.scrape",),
    "reset_modules": (),
    "subsection_order": [f"gallery_scripts/{part}" for part in gallery.PARTS],
    "within_subsection_order": "FileNameSortKey",
    "abort_on_example_error": True,
    "download_all_examples": False,
    "show_memory": False,
    "min_reported_time": 1e9,
}
# Links out of the pages into the sources, and types of Python itself, have no page here.
suppress_warnings = ["myst.xref_missing"]
nitpick_ignore_regex = [
    (r"py:.*", r"(builtins\.)?(int|float|str|bool|None|bytes|object|slice|tuple|list|dict|type|memoryview|property)"),
    (r"py:.*", r"(Any|Callable|Iterable|Iterator|Sequence|MutableSequence|Buffer|IntEnum|TracebackType|Self)"),
    (r"py:.*", r"(typing|collections|enum|types|numpy|_hyx_extras|os|xarray|random|pandas)\..*"),
    (r"py:.*", r"(Array|Row|Rows|Values|Pointer|Doubles|Floats|Bytes|Indices|Table|AbstractContextManager)"),
    (
        r"py:.*",
        r"(SensorCamera|Imu|Path|Outcome|Task|Run|Parameters|Design|Handle|Items|Numbers|NumberList|_hyx_proxy\..*|.*\._\w+|ArrayLike)",
    ),
]
