"""What the command line does beyond its native operations."""

from __future__ import annotations

import sys

TYPE_CHECKING = False
if TYPE_CHECKING:
    from collections.abc import Sequence


class ArgumentParser:
    def __init__(self, arguments: Sequence[str] | None = None) -> None:
        """Declares the known options and parses the arguments, the program's name not among them. What is wrong with
        the program's own arguments, `sys.argv[1:]`, ends it with a line that says so.
        """
        self._native___init__()  # type: ignore[attr-defined]
        if arguments is not None:
            self.parse(arguments)

    def parse(self, arguments: Sequence[str]) -> None:
        """Reads arguments; what is no option is kept as a positional one, in order. Raises for an unknown option, a
        missing or malformed value; what is wrong with the program's own arguments, `sys.argv[1:]`, ends it with a line
        that says so. "--help" prints the help text to standard output, and `isHelpRequested` says so.
        """
        try:
            self._native_parse(arguments)  # type: ignore[attr-defined]
        except (RuntimeError, ValueError) as error:
            if list(arguments) != sys.argv[1:]:
                raise
            print(f"{sys.argv[0]}: {error}\n(--help lists the options)", file=sys.stderr)
            raise SystemExit(2) from error
