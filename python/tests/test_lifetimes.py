"""Views of the library's memory: nothing dangles, whatever is dropped first, and nothing stays."""

from __future__ import annotations

import copy
import gc
import itertools
import pickle
import threading
import weakref
from collections.abc import Callable
from typing import Any

import numpy as np
import pytest
from conftest import CORNERS, FACES, MASS

import ztcad
from ztcad import _library


@pytest.fixture
def ended(monkeypatch: pytest.MonkeyPatch) -> list[Any]:
    """The documents that the library has ended, as they end."""
    log: list[Any] = []
    end = _library.lib.ztCAD_endDocument

    def recording(pointer: Any) -> None:
        log.append(pointer)
        end(pointer)

    monkeypatch.setattr(_library.lib, "ztCAD_endDocument", recording)
    return log


def make() -> dict[str, Any]:
    """A document, and all that can refer to it."""
    document = ztcad.Document()
    detail = document.details.add("d", mass_data=MASS)
    solid = detail.solids.add("s", vertices=CORNERS, faces=FACES)
    return {
        "document": document,
        "container": document.details,
        "detail": detail,
        "solid": solid,
        "vertices": solid.vertices,
        "part": solid.vertices[1:, ::2],
        "faces": solid.faces,
    }


@pytest.mark.parametrize("last", ["document", "container", "detail", "solid", "vertices", "part", "faces"])
def test_the_last_reference_of_any_sort_keeps_the_document(
    last: str, ended: list[Any], no_collector: None
) -> None:
    objects = make()
    kept = objects.pop(last)
    objects.clear()
    assert ended == []
    if isinstance(kept, np.ndarray):
        assert kept.sum() == {"vertices": 3, "part": 2, "faces": FACES.sum()}[last]
    del kept
    assert len(ended) == 1


def test_references_may_be_dropped_in_any_order(ended: list[Any], no_collector: None) -> None:
    names = ["document", "solid", "vertices", "part", "faces"]
    for count, order in enumerate(itertools.permutations(names), 1):
        objects = make()
        del objects["container"], objects["detail"]
        for name in order:
            assert len(ended) == count - 1
            array = objects.get("vertices")
            assert array is None or array[3, 2] == 1
            del array, objects[name]
        assert len(ended) == count


def test_close_with_a_live_view_frees_with_the_last_view(ended: list[Any], no_collector: None) -> None:
    objects = make()
    view, part = objects["vertices"], objects["part"]
    objects["document"].close()
    del objects
    assert ended == []
    assert np.array_equal(view, CORNERS)
    del view
    assert ended == []
    assert part.shape == (3, 2)
    del part
    assert len(ended) == 1


def test_close_without_views_frees_at_once(ended: list[Any]) -> None:
    document = ztcad.Document()
    point = document.points.add("p")
    document.close()
    assert len(ended) == 1
    del point


def test_documents_in_cycles_are_collected(ended: list[Any]) -> None:
    cycle: list[Any] = [make()]
    cycle.append(cycle)
    del cycle
    gc.collect()
    assert len(ended) == 1


@pytest.mark.parametrize(
    "change",
    [
        lambda s: setattr(s, "vertices", CORNERS),
        lambda s: s.extend_vertices(CORNERS),
        lambda s: s.remove(),
        lambda s: s.holder.remove(),
        lambda s: s.holder.solids.clear(),
        lambda s: s.holder.solids.remove(s),
        lambda s: s.document.details.clear(),
        lambda s: s.document.details.__delitem__(0),
    ],
)
def test_memory_does_not_change_under_a_live_view(change: Callable[[Any], None]) -> None:
    objects = make()
    solid, view = objects["solid"], objects["vertices"]
    objects.clear()
    before = view.copy()
    with pytest.raises(BufferError, match="drop"):
        change(solid)
    assert np.array_equal(view, before)
    assert solid.name == "s"
    del view
    change(solid)


@pytest.mark.parametrize(
    "change",
    [
        lambda d: setattr(d.details[0].solids[0], "vertices", CORNERS),
        lambda d: d.details[0].solids[0].extend_vertices(CORNERS),
        lambda d: d.details[0].solids.clear(),
        lambda d: d.details[0].remove(),
        lambda d: d.details.clear(),
    ],
)
def test_a_view_protects_its_memory_when_only_the_document_is_referred_to(
    change: Callable[[Any], None], no_collector: None
) -> None:
    objects = make()
    document, view = objects["document"], objects["vertices"]
    objects.clear()
    with pytest.raises(BufferError):
        change(document)
    assert np.array_equal(view, CORNERS)
    del view
    change(document)


def test_nothing_can_be_copied_or_pickled(full: ztcad.Document) -> None:
    things: list[Any] = [full, full.points[0], full.structures[0]]
    for thing in things:
        copies: list[Callable[..., Any]] = [copy.copy, copy.deepcopy, pickle.dumps]
        for copied in copies:
            with pytest.raises(TypeError, match="cannot be copied or pickled"):
                copied(thing)


def test_views_of_one_list_do_not_block_the_other() -> None:
    solid = ztcad.Document().solids.add("s", vertices=CORNERS, faces=FACES)
    vertices = solid.vertices
    solid.faces = FACES[:2]
    solid.extend_faces(FACES[2:])
    faces = solid.faces
    with pytest.raises(BufferError, match="2 arrays use these faces"):
        second = solid.faces
        solid.faces = FACES
    del vertices, second
    solid.vertices = CORNERS
    with pytest.raises(BufferError, match="an array uses these faces"):
        solid.extend_faces(FACES)
    assert np.array_equal(faces, FACES)


def test_other_elements_may_change_and_go() -> None:
    document = ztcad.Document()
    solid = document.solids.add("s", vertices=CORNERS, faces=FACES)
    view = solid.vertices
    other = document.solids.add("o", vertices=CORNERS)
    other.vertices = CORNERS * 2
    other.remove()
    document.points.add_many(np.zeros((1000, 3)))
    document.points.clear()
    solid.name = "renamed"
    document.to_bytes()
    assert np.array_equal(view, CORNERS)


def test_views_are_read_only_and_share_memory() -> None:
    solid = ztcad.Document().solids.add("s", vertices=CORNERS, faces=FACES)
    assert np.shares_memory(solid.vertices, solid.vertices)
    views: list[Any] = [solid.vertices, solid.faces]
    for view in views:
        with pytest.raises(ValueError, match="read-only"):
            view[0, 0] = 1
        with pytest.raises(ValueError, match="WRITEABLE"):
            view.flags.writeable = True


def test_an_empty_list_has_a_view_that_blocks_nothing() -> None:
    solid = ztcad.Document().solids.add("s")
    empty = solid.vertices
    assert empty.shape == (0, 3)
    solid.vertices = CORNERS


def test_nested_structures_are_protected_too() -> None:
    document = ztcad.Document()
    outer = document.structures.add("outer")
    line = outer.structures.add("inner").lines.add("l", vertices=CORNERS)
    view = line.vertices
    with pytest.raises(BufferError):
        outer.structures[0].remove()
    # the nested structure outlives its holder: it belongs to the document
    outer.remove()
    assert np.array_equal(view, CORNERS)


def test_elements_are_not_kept_by_their_holders(no_collector: None) -> None:
    document = ztcad.Document()
    reference = weakref.ref(document.points.add("p"))
    assert reference() is None
    assert document.points[0].name == "p"


def test_a_finalizer_never_waits_for_the_lock(ended: list[Any]) -> None:
    document = ztcad.Document()
    locked, release = threading.Event(), threading.Event()

    def hold() -> None:
        with _library.lock:
            locked.set()
            release.wait(60)

    thread = threading.Thread(target=hold)
    thread.start()
    locked.wait(60)
    del document  # would hang here if it waited
    assert ended == []
    release.set()
    thread.join()
    ztcad.Document()
    assert len(ended) == 2  # the deferred one, and the one that was just made


def test_a_document_that_goes_during_a_save_ends_after_it(
    ended: list[Any], monkeypatch: pytest.MonkeyPatch
) -> None:
    documents = [ztcad.Document()]
    document = ztcad.Document()
    inside: list[int] = []

    class Pieces(list[bytes]):
        def append(self, piece: bytes) -> None:
            documents.clear()
            inside.append(len(ended))
            super().append(piece)

    _write_to(document, Pieces())
    assert inside == [0]
    ztcad.Document()
    assert len(ended) >= 1


def _write_to(document: ztcad.Document, pieces: list[bytes]) -> None:
    context = _library.ffi.new_handle(pieces.append)
    outcome = _library.ffi.new("ztCAD_Outcome*")
    write, pointer = _library.WRITE_BYTES, document._content.pointer
    assert _library.lib.ztCAD_saveDocumentTo(pointer, write, context, outcome)


def test_running_out_of_memory_is_an_exception(monkeypatch: pytest.MonkeyPatch) -> None:
    monkeypatch.setattr(_library.lib, "crtGMDDocument_nostl", lambda text: _library.NULL)
    with pytest.raises(MemoryError):
        ztcad.Document()
