"""Examples: those of the docstrings, of the README and of the guide, and the notebooks."""

from __future__ import annotations

import doctest
import importlib
import os
import pkgutil
import runpy
import shutil
from pathlib import Path

import pytest
from conftest import RIG, ROOT

import ztcad

MODULES = [m.name for m in pkgutil.iter_modules(ztcad.__path__) if m.name not in {"_native", "batch"}]
NOTEBOOKS = sorted((ROOT / "python" / "notebooks").glob("*.py"))


@pytest.mark.parametrize("name", ["", *MODULES])
def test_docstrings(name: str) -> None:
    module = importlib.import_module(f"ztcad.{name}" if name else "ztcad")
    assert doctest.testmod(module).failed == 0


def test_docstrings_have_examples() -> None:
    modules = [importlib.import_module(f"ztcad.{name}") for name in MODULES]
    found = [t for m in modules for t in doctest.DocTestFinder().find(m) if t.examples]
    assert len(found) >= 6


def test_everything_public_is_documented() -> None:
    for name in ztcad.__all__:
        thing = getattr(ztcad, name)
        if not isinstance(thing, str):
            assert thing.__doc__, name
        for member, value in vars(thing).items() if isinstance(thing, type) else ():
            if not member.startswith("_") and (callable(value) or isinstance(value, property)):
                assert getattr(value, "__doc__", None), f"{name}.{member}"


@pytest.mark.parametrize("page", ["docs/python.md", "python/README.md"])
def test_pages(page: str, tmp_path: Path, monkeypatch: pytest.MonkeyPatch) -> None:
    shutil.copy(RIG, tmp_path / "rig.xml")
    monkeypatch.chdir(tmp_path)
    blocks = (ROOT / page).read_text(encoding="utf-8").split("```python\n")[1:]
    assert blocks
    names: dict[str, object] = {}
    for block in blocks:
        code = block.split("```")[0]
        if code.startswith(">>> "):
            example = doctest.DocTestParser().get_doctest(code, names, page, page, 0)
            assert doctest.DocTestRunner().run(example, clear_globs=False).failed == 0
            names.update(example.globs)
        else:
            exec(compile(code, page, "exec"), names)


@pytest.mark.parametrize("notebook", NOTEBOOKS, ids=[path.stem for path in NOTEBOOKS])
def test_notebooks(
    notebook: Path, tmp_path: Path, monkeypatch: pytest.MonkeyPatch, capsys: pytest.CaptureFixture[str]
) -> None:
    monkeypatch.chdir(tmp_path)
    runpy.run_path(os.fspath(notebook), run_name="__main__")
    assert capsys.readouterr().out


def test_there_are_three_notebooks() -> None:
    assert len(NOTEBOOKS) >= 3
