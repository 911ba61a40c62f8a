"""What classes that are written by hand ask of the application that they are given."""

from __future__ import annotations


def require_application(application: object) -> None:
    """TypeError, as calls of its own give, for what is no application or one that has ended."""
    import hyxOSG

    if not isinstance(application, hyxOSG.ExampleApplication):
        raise TypeError(f"expected a hyxOSG.ExampleApplication, not {type(application).__name__}")
    if not hasattr(application, "this"):
        raise TypeError("the application has been closed: make another one")
