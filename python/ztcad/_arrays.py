"""Arrays that go to the libraries, and arrays that come from them."""

from __future__ import annotations

from typing import Any

import numpy as np
import numpy.typing as npt

from ztcad._library import ffi

Reals = npt.NDArray[np.float64]
Indices = npt.NDArray[np.uint32]

MOST = 2**31 - 1  # elements, vertices or facets that one call takes


def reals(values: npt.ArrayLike, width: int, what: str) -> Reals:
    """Contiguous reals of shape (n, width); raises ``ValueError`` for another shape."""
    array = np.asarray(values, np.float64)
    if array.size == 0:
        array = array.reshape(0, width)
    return _rows(np.ascontiguousarray(array), width, what)


def indices(values: npt.ArrayLike, what: str) -> Indices:
    """Contiguous indices of shape (n, 3); raises ``ValueError`` for one that 32 bits cannot hold."""
    array = np.asarray(values)
    if array.size == 0:
        return np.empty((0, 3), np.uint32)
    return _rows(unsigned(array, what), 3, what)


def unsigned(values: npt.ArrayLike, what: str) -> Indices:
    """Contiguous numbers of 32 bits; raises for fractions, negative and greater ones."""
    array = np.asarray(values)
    if array.dtype.kind not in "iu":
        raise TypeError(f"{what} must be integers, not {array.dtype}")
    if array.dtype != np.uint32 and array.size and (array.min() < 0 or array.max() > 2**32 - 1):
        raise ValueError(f"{what} must be from 0 to {2**32 - 1}")
    return np.ascontiguousarray(array, np.uint32)


def colors(values: npt.ArrayLike) -> tuple[Indices, npt.NDArray[np.uint8]]:
    """Contiguous colours of shape (n, 3) and, for each, whether there is one: -1, -1, -1 means none."""
    array = np.asarray(values)
    if array.size == 0:
        array = np.empty((0, 3), np.uint32)
    if array.ndim != 2 or array.shape[1] != 3:
        raise ValueError(f"colours must have the shape (n, 3), not {array.shape}")
    present = np.ascontiguousarray((array != -1).any(axis=1), np.uint8)
    return unsigned(np.where(present[:, np.newaxis] == 1, array, 0), "colours"), present


def _rows(array: npt.NDArray[Any], width: int, what: str) -> npt.NDArray[Any]:
    if array.ndim != 2 or array.shape[1] != width:
        raise ValueError(f"{what} must have the shape (n, {width}), not {array.shape}")
    if len(array) > MOST:
        raise ValueError(f"{what} must have at most {MOST} rows")
    return array


def triple(values: npt.ArrayLike, what: str) -> Reals:
    """Three reals."""
    array = np.ascontiguousarray(values, np.float64)
    if array.shape != (3,):
        raise ValueError(f"{what} must have the shape (3,), not {array.shape}")
    return array


def system(values: npt.ArrayLike, what: str) -> Reals:
    """Twelve reals, given as (4, 3) or (12,): origin, x axis, y axis, z axis."""
    array = np.ascontiguousarray(values, np.float64)
    if array.shape not in ((4, 3), (12,)):
        raise ValueError(f"{what} must have the shape (4, 3) or (12,), not {array.shape}")
    return array.reshape(12)


def read_only(array: npt.NDArray[Any]) -> npt.NDArray[Any]:
    """A copy of values of the document: writing to it would not change the document, so it is refused."""
    array.flags.writeable = False
    return array


def require_no_views(views: set[int], what: str) -> None:
    """Raises ``BufferError`` if there are views: memory that an array uses must not move."""
    if views:
        few = len(views) == 1
        users = "an array uses" if few else f"{len(views)} arrays use"
        raise BufferError(f"{users} {what}: copy or drop {'it' if few else 'them'} first")


def address(array: npt.NDArray[Any], kind: str) -> Any:
    """The memory of a contiguous array as a C pointer; the array must outlive its use."""
    return ffi.cast(kind, array.ctypes.data)
