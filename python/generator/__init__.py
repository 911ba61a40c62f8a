"""Makes the Python packages from the built extension modules and the description of the headers.

interface.py      what the modules offer: classes and operations, sorted into packages
natives.py        bases and spellings of the native classes
documentation.py  gives the operations their parameter names, defaults and texts
defaults.py       native default values as Python writes them
python_types.py   native types as Python type hints
signature.py      signatures and docstrings
package_text.py   the text of a package
stub_text.py      the text of its stub
extras.py         what is written by hand for a class or a package
"""
