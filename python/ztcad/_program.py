"""The program ``ztcad``: conversion, and the page of the viewer."""

from __future__ import annotations

import html
import os
import shutil
import subprocess
import tempfile
from collections.abc import Sequence
from pathlib import Path
from typing import TYPE_CHECKING

from ztcad._errors import ProgramError

if TYPE_CHECKING:
    from ztcad._document import Document


def program() -> str:
    """The path of the program ``ztcad``.

    It is the one that the environment variable ``ZTCAD_PROGRAM`` names, else the one inside the package, as a
    wheel has it, else the one in the path. Raises ``ProgramError`` if there is none.
    """
    named = os.environ.get("ZTCAD_PROGRAM")
    if named:
        return named
    inside = Path(__file__).parent / "bin" / "ztcad"
    found = os.fspath(inside) if inside.exists() else shutil.which("ztcad")
    if found is None:
        raise ProgramError(
            "the program ztcad was not found: install it, or name it in the variable ZTCAD_PROGRAM"
        )
    return found


def run(
    arguments: Sequence[str | os.PathLike[str]],
    document: Document | None = None,
    *,
    timeout: float | None = None,
) -> str:
    """Runs the program and returns its output; ``ProgramError`` if it could not do its work.

    A document becomes the program's standard input, and its folder the current one, to which the references
    of standard input are relative.
    """
    command = [program(), *(os.fspath(argument) for argument in arguments)]
    data = b"" if document is None else document.to_bytes()
    folder = document.path.parent if document is not None and document.path is not None else None
    try:
        done = subprocess.run(
            command, check=False, capture_output=True, input=data, cwd=folder, timeout=timeout
        )
    except OSError as error:
        raise ProgramError(f"the program ztcad could not be started: {error}") from error
    except subprocess.TimeoutExpired as error:
        raise ProgramError(f"the program ztcad took longer than {timeout} s") from error
    if done.returncode != 0:
        message = done.stderr.decode(errors="replace").strip()
        if done.returncode < 0:
            message = message or f"the program ztcad ended by signal {-done.returncode}"
        raise ProgramError(message or "the program ztcad failed", code=done.returncode)
    return done.stdout.decode(errors="replace")


def convert(
    source: str | os.PathLike[str] | Document,
    target: str | os.PathLike[str],
    *,
    from_format: str | None = None,
    to_format: str | None = None,
    scale: float | None = None,
    name: str | None = None,
    density: float | None = None,
) -> None:
    """Converts between documents and meshes: STL, OBJ, PLY, GLB, 3MF, as ``ztcad convert`` does.

    Formats are known by the names' extensions. ``scale`` multiplies lengths, ``name`` names the solid that is
    made of a mesh, ``density`` gives closed solids their mass-inertia data. An earlier ``target`` is
    replaced.
    """
    from ztcad._document import Document

    options: list[str] = []
    for option, value in (
        ("--from", from_format),
        ("--to", to_format),
        ("--scale", scale),
        ("--name", name),
        ("--density", density),
    ):
        if value is not None and not (option == "--from" and isinstance(source, Document)):
            options.append(f"{option}={value}")
    output = Path(target).absolute()
    if isinstance(source, Document):
        run(["convert", "--from=xml", *options, "--", "-", output], source)
    else:
        run(["convert", *options, "--", Path(source).absolute(), output])


def view(source: str | os.PathLike[str] | Document, output: str | os.PathLike[str]) -> None:
    """Writes a page that shows a document, one file that needs no network, as ``ztcad view`` does."""
    from ztcad._document import Document

    page = Path(output).absolute()
    if isinstance(source, Document):
        run(["view", "-o", page, "--", "-"], source)
    else:
        run(["view", "-o", page, "--", Path(source).absolute()])


def notebook_page(document: Document) -> str:
    """HTML for a notebook: the page in a frame, or text without the program or its viewer."""
    text = f"<pre>{html.escape(repr(document))}</pre>"
    if document.closed:
        return text
    try:
        with tempfile.TemporaryDirectory() as folder:
            page = Path(folder, "page.html")
            view(document, page)
            content = page.read_text(encoding="utf-8")
    except ProgramError:
        return text
    frame = 'style="width: 100%; height: 480px; border: 0" sandbox="allow-scripts allow-downloads"'
    return f'<iframe {frame} srcdoc="{html.escape(content)}"></iframe>'
