"""Folders that are full, small or read-only; tests skip where mounting is not allowed."""

import contextlib
import subprocess

import pytest


def mount(*arguments):
    if subprocess.run(["mount", *arguments], capture_output=True).returncode:
        pytest.skip("mounting a folder needs more rights")


@contextlib.contextmanager
def mounted(folder, *arguments):
    mount(*arguments, str(folder))
    try:
        yield
    finally:
        subprocess.run(["umount", str(folder)], check=True)
