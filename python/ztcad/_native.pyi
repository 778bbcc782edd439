"""The extension module, made by cffi. Its functions are typed by the C headers alone."""

from typing import Any

lib: Any
ffi: Any
