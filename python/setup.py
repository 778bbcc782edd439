"""Builds the extension module for the installed libraries; everything else is in pyproject.toml."""

import re
from pathlib import Path

from setuptools import setup

HERE = Path(__file__).resolve().parent


def version() -> str:
    """The version of the project, which a source archive keeps in PKG-INFO."""
    for file, pattern in (
        (HERE.parent / "CMakeLists.txt", r"project\(ztCAD VERSION (\S+)"),
        (HERE / "PKG-INFO", r"(?m)^Version: (\S+)$"),
    ):
        found = re.search(pattern, file.read_text(encoding="utf-8")) if file.exists() else None
        if found:
            return found[1]
    raise SystemExit("setup.py: the version of the project is unknown")


setup(
    version=version(),
    cffi_modules=["native.py:installed"],
    options={"bdist_wheel": {"py_limited_api": "cp39"}},
)
