"""The extension module ``ztcad._native``: everything that <ztCAD/ztCAD_c.h> and <ztCAD/inspect.h> declare.

The declarations are what the C preprocessor makes of the headers, so that each signature is written once.
Used by CMake (``python3 native.py --include DIR... --output FILE.c``) and by setup.py (``ffibuilder``).
"""

from __future__ import annotations

import argparse
import os
import shlex
import subprocess
import tempfile
from collections.abc import Sequence
from pathlib import Path

import cffi

HEADER = "#include <ztCAD/inspect.h>\n"  # includes <ztCAD/ztCAD_c.h>

# What the libraries call back. cffi makes the functions, ztcad._library defines them.
CALLBACKS = """
extern "Python" {
    bool ztcad_write_bytes(const char* bytes, int64_t size, void* context);
    void ztcad_write_log(const char* line, void* context);
}
"""


def declarations(include: Sequence[str | Path]) -> str:
    """The C declarations of both interfaces, preprocessed, for ``cffi.FFI.cdef``."""
    compiler = shlex.split(os.environ.get("CC", "cc"))
    with tempfile.TemporaryDirectory() as known:
        for name in ("stdint.h", "stdbool.h"):
            Path(known, name).touch()  # cffi defines these types; it cannot parse the system's headers
        folders = [f"-I{folder}" for folder in (known, *include)]
        # attributes say how a function is exported, which a caller need not know
        command = [*compiler, "-E", "-P", "-nostdinc", "-D__attribute__(x)=", *folders, "-x", "c", "-"]
        return subprocess.run(command, input=HEADER, text=True, check=True, stdout=subprocess.PIPE).stdout


def builder(include: Sequence[str | Path], **libraries: Sequence[str]) -> cffi.FFI:
    """The module as cffi builds it; ``libraries`` are arguments of a setuptools extension."""
    ffi = cffi.FFI()
    ffi.cdef(declarations(include))
    ffi.cdef(CALLBACKS)
    ffi.set_source("ztcad._native", HEADER, include_dirs=[os.fspath(f) for f in include], **libraries)
    return ffi


def installed() -> cffi.FFI:
    """The module for the libraries that pkg-config finds."""

    def ask(option: str) -> list[str]:
        command = ["pkg-config", option, "ztCAD_inspect"]
        words = subprocess.run(command, check=True, text=True, stdout=subprocess.PIPE).stdout
        return [word.removeprefix("-l").removeprefix("-L") for word in shlex.split(words)]

    # pkg-config does not print -I for folders of the system, which are needed here too
    include = ask("--variable=includedir")
    return builder(include, libraries=ask("--libs-only-l"), library_dirs=ask("--libs-only-L"))


def main() -> None:
    parser = argparse.ArgumentParser(description="Writes the C source of the extension module.")
    parser.add_argument("--include", action="append", default=[], help="folder that contains ztCAD/")
    parser.add_argument("--output", required=True, help="the file to write")
    arguments = parser.parse_args()
    builder(arguments.include).emit_c_code(arguments.output)


if __name__ == "__main__":
    main()
