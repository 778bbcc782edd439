"""The program ``ztcad``: conversion, and the page of the viewer."""

from __future__ import annotations

import html
import os
import shutil
import subprocess
import sys
import tempfile
from collections.abc import Sequence
from pathlib import Path
from typing import TYPE_CHECKING

from ztcad._errors import ProgramError

if TYPE_CHECKING:
    from ztcad._document import Document


def find_program(program: str | None = None) -> str:
    """The path of the program ``ztcad`` on this machine.

    The first of: ``program``, a path or a name to look for in PATH; the environment variable ZTCAD_PROGRAM,
    likewise; the program in the package, as a wheel has it; the program beside the Python interpreter; the
    one in PATH. Raises ``ProgramError`` if there is none.
    """
    name = "ztcad.exe" if os.name == "nt" else "ztcad"
    wanted = program or os.environ.get("ZTCAD_PROGRAM")
    inside = os.fspath(Path(__file__).parent / "bin" / name)
    beside = os.fspath(Path(sys.executable).parent / name)
    for candidate in [wanted] if wanted else [inside, beside, name]:
        found = shutil.which(candidate)
        if found:
            return os.path.abspath(found)
    where = f"{wanted!r} is no program" if wanted else "it is neither in the package nor in PATH"
    raise ProgramError(
        f"the program ztcad is missing: {where}. Install it, or set ZTCAD_PROGRAM to its path."
    )


def run(
    arguments: Sequence[str | os.PathLike[str]],
    document: Document | None = None,
    *,
    timeout: float | None = None,
) -> list[str]:
    """Runs the program and returns its messages, which say what is wrong with what it worked on.

    Raises ``ProgramError`` if it could not do its work. A document becomes the program's standard input, and
    its folder the current one, to which the references of standard input are relative.
    """
    command = [find_program(), *(os.fspath(argument) for argument in arguments)]
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
    message = done.stderr.decode(errors="replace").strip()
    if done.returncode not in (0, 1):  # 1: the work is done, and something is wrong with the document
        if done.returncode < 0:
            message = message or f"the program ztcad ended by signal {-done.returncode}"
        raise ProgramError(message or "the program ztcad failed", code=done.returncode)
    return message.splitlines()


def convert(
    source: str | os.PathLike[str] | Document,
    target: str | os.PathLike[str],
    *,
    from_format: str | None = None,
    to_format: str | None = None,
    scale: float | None = None,
    name: str | None = None,
    density: float | None = None,
) -> list[str]:
    """Converts between documents and meshes: STL, OBJ, PLY, GLB, 3MF, as ``ztcad convert`` does.

    Formats are known by the names' extensions. ``scale`` multiplies lengths, ``name`` names the solid that is
    made of a mesh, ``density`` gives closed solids their mass-inertia data. An earlier ``target`` is
    replaced.

    Returns a line for each thing that was left out, such as facets with invalid indices; usually none.
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
        return run(["convert", "--from=xml", *options, "--", "-", output], source)
    return run(["convert", *options, "--", Path(source).absolute(), output])


def view(source: str | os.PathLike[str] | Document, output: str | os.PathLike[str]) -> None:
    """Writes a page that shows a document, one file that needs no network, as ``ztcad view`` does.

    The page of a document with errors shows them; only what cannot be read or written is an exception.
    """
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
