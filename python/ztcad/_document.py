"""Documents: loading, saving, content, elements by path and name."""

from __future__ import annotations

import os
import weakref
from collections.abc import Iterator
from pathlib import Path
from types import TracebackType
from typing import TYPE_CHECKING, Any, NamedTuple

from ztcad import _elements as e
from ztcad._containers import Elements, Lines, MassElements, Points, Solids
from ztcad._errors import Error, LoadError, SaveError, error_of
from ztcad._holders import (
    Details,
    StructureContainers,
    Structures,
    TemplateDetail,
    TemplateStructure,
)
from ztcad._library import NULL, WRITE_BYTES, Handle, ffi, from_text, lib, lock, read_text, to_text
from ztcad._node import Content, Element, HolderNode

if TYPE_CHECKING:
    from ztcad._findings import Findings
    from ztcad._mass import MassTable
    from ztcad._scene import Scene


class Outcome(NamedTuple):
    """How a load ended."""

    #: 0 loaded, 120 the document does not pass the check that loading makes
    code: int
    #: whether an element failed to read itself; it is in the document nevertheless
    fault: bool
    #: why the code is not 0
    message: str


class Header:
    """The header of a document. A field that is absent is ``None``; set it to ``None`` to clear it."""

    __slots__ = ("_content",)

    def __init__(self, content: Content) -> None:
        self._content = content

    def _number(self, field: int) -> int | None:
        value = ffi.new("uint32_t*")
        with lock:
            header = lib.ztCAD_getHeader(self._content.pointer)
            return value[0] if lib.ztCAD_getHeaderNumber(header, field, value) else None

    def _text(self, field: int) -> str | None:
        with lock:
            return read_text(lib.ztCAD_getHeaderText, lib.ztCAD_getHeader(self._content.pointer), field)

    def _change(self, setter: Any, field: int, value: Any) -> None:
        with lock:
            pointer = self._content.pointer
            header = ffi.cast("ztCAD_HeaderNode*", lib.ztCAD_getHeader(pointer))
            setter(header, field, value)

    def _set_number(self, field: int, value: int | None) -> None:
        c_value = NULL if value is None else ffi.new("uint32_t*", value)
        self._change(lib.ztCAD_setHeaderNumber, field, c_value)

    def _set_text(self, field: int, value: str | None) -> None:
        self._change(lib.ztCAD_setHeaderText, field, NULL if value is None else to_text(value))

    @property
    def major_version(self) -> int | None:
        """Major version of the format."""
        return self._number(lib.ztCAD_HeaderMajorVersion)

    @major_version.setter
    def major_version(self, value: int | None) -> None:
        self._set_number(lib.ztCAD_HeaderMajorVersion, value)

    @property
    def minor_version(self) -> int | None:
        """Minor version of the format."""
        return self._number(lib.ztCAD_HeaderMinorVersion)

    @minor_version.setter
    def minor_version(self, value: int | None) -> None:
        self._set_number(lib.ztCAD_HeaderMinorVersion, value)

    @property
    def state(self) -> int | None:
        """0 ok, 1 unknown, 2 warning, 3 error: a version was missing. Not stored in files."""
        return self._number(lib.ztCAD_HeaderState)

    @property
    def inform(self) -> str | None:
        """Free text about the document."""
        return self._text(lib.ztCAD_HeaderInform)

    @inform.setter
    def inform(self, value: str | None) -> None:
        self._set_text(lib.ztCAD_HeaderInform, value)

    @property
    def producer_name(self) -> str | None:
        """The program that writes the document. It is written and not read: every writer sets its own."""
        return self._text(lib.ztCAD_HeaderProducerName)

    @producer_name.setter
    def producer_name(self, value: str | None) -> None:
        self._set_text(lib.ztCAD_HeaderProducerName, value)

    @property
    def producer_version(self) -> str | None:
        """Its version; written and not read."""
        return self._text(lib.ztCAD_HeaderProducerVersion)

    @producer_version.setter
    def producer_version(self, value: str | None) -> None:
        self._set_text(lib.ztCAD_HeaderProducerVersion, value)

    @property
    def producer_platform(self) -> str | None:
        """Its platform; written and not read."""
        return self._text(lib.ztCAD_HeaderProducerPlatform)

    @producer_platform.setter
    def producer_platform(self, value: str | None) -> None:
        self._set_text(lib.ztCAD_HeaderProducerPlatform, value)

    def __repr__(self) -> str:
        return f"<Header version {self.major_version}.{self.minor_version}, inform {self.inform!r}>"


class Document(StructureContainers):
    """A geometry document.

    >>> import ztcad
    >>> with ztcad.Document("a hinge") as document:
    ...     point = document.points.add("hinge", center=(0, 0, 12.5), color=(255, 128, 0))
    ...     print(document.points.centers)
    [[ 0.   0.  12.5]]

    A document is freed with the last reference to it, or by ``close``. Elements and arrays keep it alive.
    """

    def __init__(self, inform: str = "") -> None:
        """A new empty document; ``inform`` is a free text for its header."""
        text = to_text(inform, "inform")
        self._attach(Content(Handle(lib.crtGMDDocument_nostl(text), lib.ztCAD_endDocument)))

    def __reduce_ex__(self, protocol: Any) -> Any:
        """Refuses copies and pickles, which would not own the document."""
        raise TypeError("a Document cannot be copied or pickled: pass to_bytes() to ztcad.loads")

    def _attach(self, content: Content) -> None:
        self._content = content
        content.document = weakref.ref(self)
        self.path: Path | None = None  #: the file it was loaded from or saved to last
        self.outcome = Outcome(0, False, "")  #: how its last load ended

    @classmethod
    def _of(cls, content: Content) -> Document:
        """Another object for a document."""
        document = cls.__new__(cls)
        document._attach(content)
        return document

    def _holder_node(self) -> HolderNode:
        return self._content

    def _remove(self, element: Element) -> None:
        self._content._remove(element)

    # -------------------------------------------------------------------------------------- load, save, close

    def reload(self, path: str | os.PathLike[str] | None = None, *, strict: bool = True) -> None:
        """Replaces the content by that of a file: ``path``, or the one that it was loaded from.

        Elements of the earlier content raise ``RemovedError`` afterwards. Raises ``BufferError`` while arrays
        use them, and otherwise as ``load`` does: if the file cannot be read, nothing has changed; if it does
        not pass the check, it has replaced the content.
        """
        source = self._target_of(path, "load it from")
        outcome = ffi.new("ztCAD_Outcome*")
        with lock:
            handle = self._content.handle
            pointer = self._content.pointer
            self._content._require_no_views()
            replaced = lib.ztCAD_reloadDocument(pointer, os.fsencode(source), outcome)
            if not replaced:
                raise error_of(outcome, source)
            assert handle is not None
            self._content.end(closed=False)
            self._attach(Content(handle))
            self.path = source
            self._take(outcome, strict)

    def _take(self, outcome: Any, strict: bool) -> None:
        self.outcome = Outcome(outcome.code, bool(outcome.fault), from_text(outcome.message))
        if strict and outcome.code:
            raise error_of(outcome, self.path)

    def _target_of(self, path: str | os.PathLike[str] | None, purpose: str) -> Path:
        if path is not None:
            return Path(path)
        if self.path is None:
            raise ValueError(f"the document has no file yet: give a path to {purpose}")
        return self.path

    def save(self, path: str | os.PathLike[str] | None = None) -> None:
        """Writes the document: to ``path``, or to the file that it was loaded from or saved to.

        Names are made unique, in memory too. Numbers are written with six significant digits. A save that
        fails raises ``SaveError`` and leaves an earlier file unchanged.
        """
        target = self._target_of(path, "save it to")
        outcome = ffi.new("ztCAD_Outcome*")
        with lock:
            saved = lib.ztCAD_saveDocument(self._content.pointer, os.fsencode(target), outcome)
        if not saved:
            raise error_of(outcome, target, SaveError)
        self.path = target

    def to_bytes(self) -> bytes:
        """What ``save`` writes: XML in windows-1251."""
        pieces: list[bytes] = []
        context = ffi.new_handle(pieces.append)
        outcome = ffi.new("ztCAD_Outcome*")
        with lock:
            write = WRITE_BYTES
            saved = lib.ztCAD_saveDocumentTo(self._content.pointer, write, context, outcome)
        if not saved:
            raise error_of(outcome, None, SaveError)
        return b"".join(pieces)

    def to_text(self) -> str:
        """The header and the elements in the diagnostic form."""
        with lock:
            return read_text(lib.GMDDocumentToString_nostl, self._content.pointer, True) or ""

    def close(self) -> None:
        """Closes the document. Its memory is freed when no array uses it any more."""
        with lock:
            self._content.end(closed=True)

    @property
    def closed(self) -> bool:
        """Whether the document is closed."""
        return self._content.handle is None

    def __enter__(self) -> Document:
        self._content._check()
        return self

    def __exit__(
        self, kind: type[BaseException] | None, error: BaseException | None, trace: TracebackType | None
    ) -> None:
        self.close()

    # --------------------------------------------------------------------------------------------- content

    @property
    def header(self) -> Header:
        """The header: version, producer, free text."""
        return Header(self._content)

    @property
    def inform(self) -> str:
        """The free text of the header; empty if there is none."""
        return self.header.inform or ""

    @inform.setter
    def inform(self, value: str) -> None:
        self.header.inform = value

    @property
    def template_points(self) -> Points[e.TemplatePoint]:
        """The template points."""
        return Points(self._content, e.TemplatePoint)

    @property
    def template_lines(self) -> Lines[e.TemplateLine]:
        """The template polylines."""
        return Lines(self._content, e.TemplateLine)

    @property
    def template_solids(self) -> Solids[e.TemplateSolid]:
        """The template solids."""
        return Solids(self._content, e.TemplateSolid)

    @property
    def template_mass_elements(self) -> MassElements[e.TemplateMassElement]:
        """The template mass-inertia elements."""
        return MassElements(self._content, e.TemplateMassElement)

    @property
    def template_details(self) -> Details[TemplateDetail]:
        """The template details."""
        return Details(self._content, TemplateDetail)

    @property
    def template_structures(self) -> Structures[TemplateStructure]:
        """The template structures."""
        return Structures(self._content, TemplateStructure)

    def _containers(self) -> Iterator[Elements[Any]]:
        yield from super()._containers()
        yield self.template_points
        yield self.template_lines
        yield self.template_solids
        yield self.template_mass_elements
        yield self.template_details
        yield self.template_structures

    @property
    def is_sound(self) -> bool:
        """Whether the document passes the check that loading makes.

        Names of templates are unique within their kind, and every structure is sound.
        """
        with lock:
            return bool(lib.checkGMDDocument(self._content.pointer))

    # -------------------------------------------------------------------------------------- looking things up

    def find(self, path: str) -> Element | None:
        """The element at a path such as ``"/GMD/structure[1]/point[2]"``; ``None`` if there is none.

        Numbers count siblings of a tag from 1, in the order in which a save writes them.
        """
        from ztcad import _index

        return _index.find_path(self._content, path)

    def find_all(self, name: str) -> list[Element]:
        """All elements of a name, at any depth, in the order in which a save writes them."""
        from ztcad import _index

        return _index.find_name(self._content, name)

    def path_of(self, element: Element) -> str:
        """The path of an element of this document; ``find`` finds it there."""
        from ztcad import _index

        return _index.path_of(self._content, element)

    # -------------------------------------------------------------------------------------- interpretation

    def check(self, **options: Any) -> Findings:
        """The findings about geometry, references and mass data. See ``ztcad.check``."""
        from ztcad import _findings

        return _findings.check_document(self, options)

    def scene(self, **options: Any) -> Scene:
        """The document flattened into placed items, references resolved. See ``ztcad.Scene``."""
        from ztcad import _scene

        return _scene.open_scene(self, options)

    def mass_table(self, density: float | None = None, **options: Any) -> MassTable:
        """Declared and computed mass properties of each element and of the whole."""
        from ztcad import _mass

        return _mass.table(self, density, options)

    # ------------------------------------------------------------------------------------------------- object

    def __repr__(self) -> str:
        if self.closed:
            return "<Document, closed>"
        counts = [
            f"{len(c)} {c._type.__name__}{'s' * (len(c) != 1)}" for c in self._containers() if len(c)
        ]
        source = f" {str(self.path)!r}" if self.path else ""
        return f"<Document{source}: {', '.join(counts) or 'empty'}>"

    def _repr_html_(self) -> str:
        """The page of the viewer, for notebooks; text if the program ``ztcad`` is missing."""
        from ztcad import _program

        return _program.notebook_page(self)


def load(path: str | os.PathLike[str], *, strict: bool = True) -> Document:
    """Loads a file.

    Raises ``MissingFileError`` (a ``FileNotFoundError``) or ``LoadError``, which say why, with code, line and
    column. With ``strict=False`` a document that was read but does not pass the check is returned too;
    ``document.outcome`` has the code. Errors of single elements do not raise: ``document.outcome.fault`` is
    true if there are any, and ``ztcad.check`` lists them.
    """
    outcome = ffi.new("ztCAD_Outcome*")
    return _loaded(lib.ztCAD_loadDocument(os.fsencode(path), outcome), outcome, Path(path), strict)


def loads(text: str | bytes, *, strict: bool = True) -> Document:
    """Loads a document from a text, as ``load`` does.

    Bytes that are valid UTF-8 are read as UTF-8, whatever encoding they declare; others as declared.

    >>> import ztcad
    >>> ztcad.loads('<GMD><header majorVersion="1" minorVersion="0"/></GMD>')
    <Document: empty>
    """
    data = text.encode() if isinstance(text, str) else bytes(text)
    outcome = ffi.new("ztCAD_Outcome*")
    return _loaded(lib.ztCAD_loadDocumentFromText(data, len(data), outcome), outcome, None, strict)


def _loaded(pointer: Any, outcome: Any, path: Path | None, strict: bool) -> Document:
    if pointer == NULL:
        raise error_of(outcome, path)
    document = Document._of(Content(Handle(pointer, lib.ztCAD_endDocument)))
    document.path = path
    document._take(outcome, strict)
    return document


__all__ = ["Document", "Error", "Header", "LoadError", "Outcome", "load", "loads"]
