"""Geometry documents of engineering models: build, read, write and check them."""

from ztcad._library import VERSION as __version__

__all__ = ["__version__"]
