"""The two C libraries: calls under one lock, ownership of their objects, texts.

The libraries take one thread at a time. ``lib`` holds the lock in every call, and cffi releases the
interpreter lock meanwhile, so that other Python threads run during a long load. Code that makes several calls
which belong together holds ``lock`` itself; it is recursive.
"""

from __future__ import annotations

import logging
import os
import threading
from collections import deque
from collections.abc import Callable
from typing import Any

from ztcad import _native

ffi = _native.ffi
NULL = ffi.NULL

lock = threading.RLock()

# A child process starts with a copy of its parent's memory: no call may be under way during the fork.
if hasattr(os, "register_at_fork"):
    os.register_at_fork(before=lock.acquire, after_in_parent=lock.release, after_in_child=lock.release)


class _Functions:
    """Functions and constants of the libraries by their C names. Each call holds the lock."""

    def __getattr__(self, name: str) -> Any:
        found = getattr(_native.lib, name)
        if callable(found):
            found = _locked(found)
        setattr(self, name, found)  # found directly from now on
        return found


def _locked(function: Callable[..., Any]) -> Callable[..., Any]:
    acquire, release = lock.acquire, lock.release

    def call(*arguments: Any) -> Any:
        acquire()
        try:
            return function(*arguments)
        finally:
            release()

    return call


lib = _Functions()


# ------------------------------------------------------------------------------------------------ ownership

# Objects without references that the library has not ended yet. A finalizer may run at any time, in any
# thread: it must neither wait for the lock, nor call the library from a callback of the library.
_unreferenced: deque[tuple[Callable[[Any], None], Any]] = deque()
_callbacks = 0  # under way, by the thread that holds the lock


def _end_unreferenced() -> None:
    if not lock.acquire(blocking=False):
        return  # ended when the next handle is made or dropped
    try:
        while _unreferenced and _callbacks == 0:
            end, pointer = _unreferenced.popleft()
            end(pointer)
    finally:
        lock.release()


class Handle:
    """Owns an object of the libraries, which ends with the last reference to the handle."""

    __slots__ = ("__weakref__", "_end", "pointer")

    def __init__(self, pointer: Any, end: Callable[[Any], None]) -> None:
        self.pointer = pointer
        self._end = end
        if pointer == NULL:
            raise MemoryError
        _end_unreferenced()

    def __del__(self) -> None:
        if self.pointer != NULL:
            _unreferenced.append((self._end, self.pointer))
            _end_unreferenced()


# ---------------------------------------------------------------------------------------------------- texts


def to_text(value: str, what: str = "text") -> bytes:
    """A text as the libraries take it: UTF-8 without a zero character."""
    if not isinstance(value, str):
        raise TypeError(f"{what} must be a str, not {type(value).__name__}")
    if "\0" in value:
        raise ValueError(f"{what} must not contain a null character")
    return value.encode()


def from_text(pointer: Any) -> str:
    """A zero-terminated text of the libraries; empty for null."""
    return "" if pointer == NULL else str(ffi.string(pointer), "utf-8", "replace")


def optional_text(pointer: Any) -> str | None:
    """The same; ``None`` for null."""
    return None if pointer == NULL else from_text(pointer)


_SHORT = 128


def read_text(function: Callable[..., int], *arguments: Any) -> str | None:
    """The text that ``function(*arguments, buffer, size)`` writes; ``None`` if there is none."""
    with lock:
        buffer = ffi.new("char[]", _SHORT)  # fits nearly every name in one call
        length = function(*arguments, buffer, _SHORT)
        if length >= _SHORT:
            buffer = ffi.new("char[]", length + 1)
            length = function(*arguments, buffer, length + 1)
    if length < 0:
        return None
    return bytes(ffi.buffer(buffer, length)).decode(errors="replace")


# ------------------------------------------------------------------------------------------------ callbacks


class _Callback:
    """Marks that Python code runs inside a call of the library."""

    def __enter__(self) -> None:
        global _callbacks
        _callbacks += 1

    def __exit__(self, *exception: object) -> None:
        global _callbacks
        _callbacks -= 1


@ffi.def_extern(error=False)  # type: ignore[misc]
def ztcad_write_bytes(data: Any, size: int, context: Any) -> bool:
    """Receives a piece of a saved document; ``context`` is a handle of the function that takes it."""
    with _Callback():
        ffi.from_handle(context)(bytes(ffi.buffer(data, size)))
    return True


@ffi.def_extern()  # type: ignore[misc]
def ztcad_write_log(line: Any, context: Any) -> None:
    """Reports of the library's consistency checks go to the logger ``ztcad``."""
    with _Callback():
        logging.getLogger("ztcad").error("%s", from_text(line).rstrip())


#: Passed to ``ztCAD_saveDocumentTo``, with a handle of a function that takes bytes.
WRITE_BYTES = _native.lib.ztcad_write_bytes

lib.ztCAD_setAssertionWriter(_native.lib.ztcad_write_log, NULL)

#: Version of the loaded library, "major.minor.patch".
VERSION = from_text(lib.ztCADVersion())
