"""Finds documents under paths and puts them into chunks. All is lazy: the paths may be endless."""

from __future__ import annotations

import os
from collections.abc import Iterable, Iterator
from typing import NamedTuple

# Besides the size. Starting a process costs as much as checking 200 small documents; systems limit arguments.
MOST_DOCUMENTS = 1000
MOST_CHARACTERS = 30_000 if os.name == "nt" else 100_000
# The first chunks are smaller, so that few documents keep many processors busy too.
RAMP = 16


class Document(NamedTuple):
    """A document: its path as given, its absolute path, and its size in bytes, 0 if unknown."""

    name: str
    path: str
    size: int


def find_documents(paths: Iterable[str | os.PathLike[str]]) -> Iterator[Document]:
    """The documents that the paths name; a folder means all ``*.xml`` in it, at any depth.

    Links to folders are not followed. A path that does not exist, and a folder that cannot be read or has no
    documents, is yielded like a document: the program reports what is wrong with it.
    """
    base = os.getcwd()
    for given in paths:
        name = os.fspath(given)
        path = os.path.join(base, name)
        try:
            state = os.stat(path)
        except (OSError, ValueError):
            yield Document(name, path, 0)
            continue
        if not os.path.isdir(path):
            yield Document(name, path, state.st_size)
            continue
        empty = True
        for document in _in_folder(name, base):
            empty = False
            yield document
        if empty:
            yield Document(name, path, 0)


def _in_folder(name: str, base: str) -> Iterator[Document]:
    """In the order of the file system: sorting needs all names of a folder in memory."""
    folders = [name]
    while folders:
        folder = folders.pop()
        try:
            with os.scandir(os.path.join(base, folder)) as entries:
                for entry in entries:
                    found = os.path.join(folder, entry.name)
                    if entry.is_dir(follow_symlinks=False):
                        folders.append(found)
                    elif os.path.splitext(entry.name)[1].lower() == ".xml" and not entry.is_dir():
                        yield Document(found, os.path.join(base, found), _size_of(entry))
        except OSError:
            yield Document(folder, os.path.join(base, folder), 0)


def _size_of(entry: os.DirEntry[str]) -> int:
    try:
        return entry.stat().st_size
    except OSError:
        return 0  # a link to nothing, or deleted meanwhile


def chunks(documents: Iterable[Document], most_bytes: float) -> Iterator[list[Document]]:
    """Documents in chunks of at most so many bytes; a larger document is a chunk. No path is twice in one.

    The first ``RAMP`` chunks grow to the full size.
    """
    chunk: list[Document] = []
    paths: set[str] = set()
    size = characters = finished = 0
    for document in documents:
        size += document.size
        characters += len(document.path) + 3
        share = min(1, (finished + 1) / RAMP)
        if chunk and (
            size > most_bytes * share
            or characters > MOST_CHARACTERS
            or len(chunk) >= MOST_DOCUMENTS * share
            or document.path in paths
        ):
            yield chunk
            finished += 1
            chunk, paths = [], set()
            size, characters = document.size, len(document.path) + 3
        chunk.append(document)
        paths.add(document.path)
    if chunk:
        yield chunk
