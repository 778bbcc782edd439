"""Batches on this machine."""

from __future__ import annotations

import inspect
import itertools
import json
import os
import re
import subprocess
import sys
from collections.abc import Iterator
from pathlib import Path
from typing import Any

import jsonschema
import pytest
from batches import is_running, looked_at, make_documents, make_fake_program, real_program, wait_until

import ztcad
from ztcad import batch
from ztcad._finding import Severity
from ztcad.batch import DocumentReport, Finding, _chunks
from ztcad.batch.__main__ import _parser, main
from ztcad.batch._chunks import Document, chunks, find_documents
from ztcad.batch._program import Options, _ReportReader, _Rubbish, check_chunk

ROOT = Path(__file__).parents[2]
GOLDEN = ROOT / "tests" / "golden"


@pytest.fixture(scope="session")
def fake(tmp_path_factory: pytest.TempPathFactory) -> str:
    return make_fake_program(tmp_path_factory.mktemp("program"))


@pytest.fixture(autouse=True)
def no_ramp(monkeypatch: pytest.MonkeyPatch) -> None:
    """All chunks have the full size."""
    monkeypatch.setattr(_chunks, "RAMP", 1)


def by_file(reports: Iterator[DocumentReport]) -> dict[str, DocumentReport]:
    """The reports by the names of their files without folder and extension; each must be there once."""
    found: dict[str, DocumentReport] = {}
    for report in reports:
        assert found.setdefault(Path(report.file).stem, report) is report
    return found


def program_report(*arguments: str) -> dict[str, Any]:
    run = subprocess.run([real_program(), "check", "--format", "json", *arguments], stdout=subprocess.PIPE)
    report: dict[str, Any] = json.loads(run.stdout)
    return report


# ------------------------------------------------------------------------------------------------ the program
@pytest.mark.parametrize("level", ["warning", "note"])
def test_reports_are_those_of_the_program(level: Severity) -> None:
    expected = program_report("--level", level, str(GOLDEN))["documents"]
    reports = list(batch.check(GOLDEN, level=level, jobs=2, chunk_megabytes=0.02, program=real_program()))
    assert sorted((r.to_json() for r in reports), key=lambda r: str(r["file"])) == expected
    assert len(expected) > 100


def test_rules_can_be_selected() -> None:
    only = by_file(batch.check(GOLDEN, only=["missing-centre"]))
    assert {f.rule for report in only.values() for f in report.findings} == {"missing-centre"}
    rest = by_file(batch.check(GOLDEN, ignore="missing-centre"))
    assert "missing-centre" not in {f.rule for report in rest.values() for f in report.findings}


def test_inspection_can_be_left_out(tmp_path: Path) -> None:
    document = tmp_path / "mesh.xml"
    document.write_text(
        '<GMD><header majorVersion="2" minorVersion="1" inform=""/><solid name="a" method="triangulation">'
        "<vertices>0,0,0;1,0,0;0,1,0;</vertices><faces>0,1,9;</faces></solid></GMD>"
    )
    assert "index-out-of-range" in [f.rule for r in batch.check(document) for f in r.findings]
    assert "index-out-of-range" not in [
        f.rule for r in batch.check(document, inspect=False) for f in r.findings
    ]


def test_a_missing_document_has_a_problem(tmp_path: Path) -> None:
    (report,) = batch.check(str(tmp_path / "none.xml"))
    assert report.code is None and report.problem and not report.findings


def test_names_may_hold_anything(tmp_path: Path) -> None:
    text = (GOLDEN / "N_110_not_xml.xml").read_bytes()
    names = ["-", "--level", "имя.xml", "a b.xml", 'quote".xml', os.fsdecode(b"latin-\xe9.xml")]
    for name in names:
        (tmp_path / name).write_bytes(text)
    previous = os.getcwd()
    os.chdir(tmp_path)
    try:
        reports = list(batch.check([*names, "./a b.xml", "a b.xml"], jobs=1))
    finally:
        os.chdir(previous)
    assert [report.file for report in reports] == [*names, "./a b.xml", "a b.xml"]
    assert {report.code for report in reports} == {110}
    assert [json.loads(batch.json_line(r))["file"] for r in reports][5] == "latin-\ufffd.xml"


def test_findings_beyond_the_limit_are_counted() -> None:
    every = by_file(batch.check(GOLDEN, level="note", max_findings=None))
    first = by_file(batch.check(GOLDEN, level="note", max_findings=1))
    assert max(len(report.findings) for report in every.values()) > 1
    for name, report in every.items():
        assert report.omitted == 0
        assert first[name].findings == report.findings[:1]
        assert first[name].omitted == max(0, len(report.findings) - 1)
        assert (first[name].errors, first[name].count_from("note")) == (report.errors, len(report.findings))


def test_findings_are_those_of_the_library() -> None:
    reports = list(batch.check(GOLDEN, level="note", max_findings=None))
    for report in reports:
        findings = ztcad.check(report.file)
        assert report.findings == tuple(findings)
        assert report.to_json()["findings"] == [finding.to_dict() for finding in findings]
        assert (report.code, report.fault) == (findings.outcome.code, findings.outcome.fault)
    assert sum(len(report.findings) for report in reports) > 100


# ----------------------------------------------------------------------------------- documents that misbehave
@pytest.mark.parametrize(
    ("what", "problem"),
    [
        ("crash", "the check ended its process: signal 11 (Segmentation fault)"),
        ("exit", "the check ended its process: exit code 1 (half of the program is missing)"),
        ("half", "the check ended its process: exit code 1"),
        ("rubbish", "the check printed something else than its report"),
        ("other", "the check printed something else than its report"),
        ("hang", "the check took more than 6 s"),
        ("endless", "the check took more than 6 s"),
    ],
)
def test_a_document_that_misbehaves_has_a_problem_and_others_are_checked(
    fake: str, tmp_path: Path, what: str, problem: str
) -> None:
    names = ["good-1", "bad-1", f"{what}-1", "good-2", "bad-2"]
    if what not in ("hang", "endless"):
        names += [f"{what}-2", f"{what}-3", "good-3"]
    paths = make_documents(tmp_path, *names)
    found = by_file(batch.check(paths, program=fake, jobs=1, timeout=4))
    assert list(found) == names  # a chunk keeps its order
    for name, report in found.items():
        if name.startswith(what):
            assert (report.problem, report.code, report.findings) == (problem, None, ())
        else:
            assert (report.problem, report.errors) == (None, name.startswith("bad"))
    looks = [name for name, _, text in looked_at(tmp_path) if not text]
    assert looks.count("good-1.xml") == 1  # what is known is not checked again
    assert looks.count(f"{what}-1.xml") == 2  # with others, and alone


def test_a_process_that_hangs_is_killed_with_all_that_it_started(fake: str, tmp_path: Path) -> None:
    paths = make_documents(tmp_path, "hang-1")
    list(batch.check(paths, program=fake, timeout=0.1))
    (child,) = (int(text.partition("=")[2]) for *_, text in looked_at(tmp_path) if text)
    wait_until(lambda: not is_running(child))


def test_closing_the_generator_ends_the_processes(fake: str, tmp_path: Path) -> None:
    paths = make_documents(tmp_path, "good-1", "hang-1", size=10)
    reports = batch.check(paths, program=fake, jobs=2, chunk_megabytes=1e-5)
    assert next(reports).file == paths[0]
    wait_until(lambda: any(text for *_, text in looked_at(tmp_path)))
    reports.close()  # does not wait for the document
    (child,) = (int(text.partition("=")[2]) for *_, text in looked_at(tmp_path) if text)
    wait_until(lambda: not is_running(child))


def test_a_name_without_a_program_ends_the_batch(tmp_path: Path) -> None:
    paths = make_documents(tmp_path, "good-1")
    with pytest.raises(batch.ProgramError, match="/no/program' is no program"):
        list(batch.check(paths, program="/no/program"))


def test_a_program_that_does_not_start_ends_the_batch(tmp_path: Path) -> None:
    program = tmp_path / "broken"
    program.write_text("#!/bin/sh\necho no library >&2\nexit 127\n")
    program.chmod(0o700)
    with pytest.raises(batch.ProgramError, match="no library"):
        list(batch.check(make_documents(tmp_path, "good-1"), program=program))
    program.write_text("#!/no/interpreter\n")
    with pytest.raises(batch.ProgramError, match="broken"):
        list(batch.check(make_documents(tmp_path, "good-1"), program=program))


def test_a_program_that_breaks_during_the_batch_ends_it(tmp_path: Path) -> None:
    program = tmp_path / "ztcad"
    program.write_text(f'#!/bin/sh\necho ztcad 1.0.0\necho "exit 127" > "{program}"\n')
    program.chmod(0o700)
    with pytest.raises(batch.ProgramError, match="ztcad"):
        list(batch.check(make_documents(tmp_path, "good-1", "good-2"), program=program))


def test_arguments_that_the_program_refuses_end_the_batch(tmp_path: Path) -> None:
    with pytest.raises(batch.ProgramError, match='there is no rule "no-such-rule"'):
        list(batch.check(make_documents(tmp_path, "good-1"), only=["no-such-rule"], program=real_program()))


def test_another_schema_ends_the_batch(tmp_path: Path) -> None:
    program = tmp_path / "later"
    program.write_text("""#!/bin/sh\nprintf '{\\n  "schema": 2,\\n  "tool": {},\\n  "documents": ['\n""")
    program.chmod(0o700)
    with pytest.raises(batch.ProgramError, match="schema 2"):
        list(batch.check(make_documents(tmp_path, "good-1"), program=program))


def test_the_program_is_found(fake: str, tmp_path: Path, monkeypatch: pytest.MonkeyPatch) -> None:
    monkeypatch.delenv("ZTCAD_PROGRAM", raising=False)
    monkeypatch.setenv("PATH", str(Path(fake).parent))
    assert batch.find_program() == fake
    assert batch.find_program("ztcad") == fake
    monkeypatch.setenv("PATH", str(tmp_path))
    with pytest.raises(batch.ProgramError, match="neither in the package nor in PATH"):
        batch.find_program()
    monkeypatch.setenv("ZTCAD_PROGRAM", fake)
    assert batch.find_program() == fake


@pytest.mark.parametrize(
    "wrong",
    [
        {"level": "fatal"},
        {"timeout": 0},
        {"jobs": 0},
        {"worker_timeout": -1},
        {"max_findings": -1},
    ],
)
def test_wrong_arguments_are_refused_at_once(wrong: dict[str, Any]) -> None:
    with pytest.raises(ValueError):
        batch.check([], **wrong)


# ----------------------------------------------------------------------------------------- reading the output
def report_text(*names: str) -> bytes:
    """As the program prints it."""
    place = {"line": 1, "column": 1, "offset": 0}
    finding: dict[str, Any] = {
        "severity": "note",
        "rule": "a-rule",
        "message": "]}, \n    {é",
        **place,
        "path": "",
    }
    finding = {**finding, "count": 2, "places": [place]}
    documents = ",".join(
        f'\n    {{"file":"{name}","code":0,"fault":false,"omitted":0,"findings":['
        + ",".join("\n      " + json.dumps(finding, ensure_ascii=False, separators=(",", ":")) for _ in name)
        + "]}"
        for name in names
    )
    head = '{\n  "schema": 1,\n  "tool": {"name":"ztcad","version":"1.0.0"},\n  "documents": ['
    return f'{head}{documents}\n  ],\n  "summary": {{"documents":{len(names)}}}\n}}\n'.encode()


@pytest.mark.parametrize("size", [1, 2, 3, 7, 64, 100_000])
def test_output_may_arrive_in_any_pieces(size: int) -> None:
    names = ["a", "bb", "имя", ""]
    text = report_text(*names)
    reader = _ReportReader(names)
    for start in range(0, len(text), size):
        reader.feed(text[start : start + size])
    reader.finish()
    assert [record["file"] for record in reader.records] == names
    assert [len(record["findings"]) for record in reader.records] == [1, 2, 3, 0]


def test_a_document_is_known_as_soon_as_its_last_byte_has_arrived() -> None:
    names = ["a", "", "bb"]
    text = report_text(*names)
    ends = [text.index(b',\n    {"file":""'), text.index(b',\n    {"file":"bb"'), text.index(b"\n  ],")]
    for known, end in enumerate(ends):
        reader = _ReportReader(names)
        reader.feed(text[: end - 1])
        assert len(reader.records) <= known
        reader.feed(text[end - 1 : end])
        assert len(reader.records) == known + 1


def test_output_that_ends_too_early_leaves_complete_documents() -> None:
    text = report_text("a", "bb", "ccc")
    ends = [text.index(mark) for mark in (b',\n    {"file":"bb"', b',\n    {"file":"ccc"', b"\n  ],")]
    for length in range(len(text)):
        reader = _ReportReader(["a", "bb", "ccc"])
        reader.feed(text[:length])
        reader.finish()
        assert len(reader.records) == sum(length >= end for end in ends)


@pytest.mark.parametrize(
    "text",
    [
        b"Segmentation fault",
        b"[]",
        b'{\n  "schema": one, "documents": [',
        b'{\n  "schema": ' + b" " * 5000,
        report_text("b"),  # of another document
        report_text("a", "a"),  # of more than were asked for
        report_text("a").replace(b"note", b"oops"),
        report_text("a").replace(b'"code":0', b'"code":null'),
        report_text("a").replace(b'"code":0,', b""),
        report_text("a").replace("é".encode(), b"\xff"),
        report_text("a").replace(b'\n    {"file"', b'\n    nonsense {"file"'),
    ],
)
def test_other_output_is_recognised(text: bytes) -> None:
    reader = _ReportReader(["a"])
    with pytest.raises(_Rubbish):
        reader.feed(text)
        reader.finish()


# --------------------------------------------------------------------------------------- documents and chunks
def test_a_folder_stands_for_what_it_does_in_the_program(tmp_path: Path) -> None:
    make_documents(tmp_path, "a", "b")
    make_documents(tmp_path / "deep", "c")
    make_documents(tmp_path / "deep" / "er", "d")
    (tmp_path / "UPPER.XML").touch()
    (tmp_path / ".xml").touch()
    (tmp_path / "other.txt").touch()
    (tmp_path / "folder.xml").mkdir()
    (tmp_path / "link.xml").symlink_to(tmp_path / "a.xml")
    (tmp_path / "dead.xml").symlink_to(tmp_path / "nothing")
    (tmp_path / "round").symlink_to(tmp_path)
    expected = [document["file"] for document in program_report(str(tmp_path))["documents"]]
    assert sorted(document.name for document in find_documents([tmp_path])) == expected
    assert len(expected) == 7


def test_an_empty_folder_has_a_problem(tmp_path: Path) -> None:
    (report,) = batch.check([tmp_path])
    assert (report.file, report.problem) == (str(tmp_path), "the folder has no documents (*.xml)")


def test_a_folder_that_cannot_be_read_is_left_to_the_program(
    tmp_path: Path, monkeypatch: pytest.MonkeyPatch
) -> None:
    make_documents(tmp_path, "a")
    make_documents(tmp_path / "closed", "b")
    scandir = os.scandir

    def refuse(path: str) -> Any:
        if path == str(tmp_path / "closed"):
            raise PermissionError(path)
        return scandir(path)

    monkeypatch.setattr(os, "scandir", refuse)
    found = sorted(document.path for document in find_documents([tmp_path]))
    assert found == [str(tmp_path / "a.xml"), str(tmp_path / "closed")]


def sizes(*bytes_of_documents: int) -> list[Document]:
    return [Document(f"{i}", f"/{i}", size) for i, size in enumerate(bytes_of_documents)]


@pytest.mark.parametrize(
    ("documents", "expected"),
    [
        (sizes(), []),
        (sizes(5), [1]),
        (sizes(50), [1]),
        (sizes(4, 4, 4), [2, 1]),
        (sizes(10, 1, 10), [1, 1, 1]),
        (sizes(*[0] * 2500), [1000, 1000, 500]),
        ([Document("a", "/a", 1)] * 3, [1, 1, 1]),
        ([Document("a", f"/{i}{'x' * (_chunks.MOST_CHARACTERS // 4)}", 0) for i in range(4)], [3, 1]),
    ],
)
def test_chunks_are_limited(documents: list[Document], expected: list[int]) -> None:
    found = list(chunks(documents, 10))
    assert [len(chunk) for chunk in found] == expected
    assert list(itertools.chain.from_iterable(found)) == documents


def test_the_first_chunks_are_smaller(monkeypatch: pytest.MonkeyPatch) -> None:
    monkeypatch.setattr(_chunks, "RAMP", 4)
    found = [len(chunk) for chunk in chunks(sizes(*[1] * 30), 8)]
    assert found == [2, 4, 6, 8, 8, 2]
    monkeypatch.setattr(_chunks, "MOST_DOCUMENTS", 4)
    found = [len(chunk) for chunk in chunks(sizes(*[0] * 16), 8)]
    assert found == [1, 2, 3, 4, 4, 2]


def test_paths_are_taken_while_the_work_goes_on(
    fake: str, tmp_path: Path, monkeypatch: pytest.MonkeyPatch
) -> None:
    monkeypatch.setattr(_chunks, "MOST_DOCUMENTS", 50)
    taken = 0

    def endless() -> Iterator[str]:
        nonlocal taken
        for taken in itertools.count(1):
            yield str(tmp_path / f"good-{taken}.xml")

    reports = batch.check(endless(), program=fake, jobs=2, chunk_megabytes=1)
    first = list(itertools.islice(reports, 300))
    reports.close()
    assert len(first) == 300
    assert taken <= 300 + 50 * (2 * 2 + 3)  # two chunks for each job, two yielded at once, one begun


def test_documents_can_be_skipped(fake: str, tmp_path: Path) -> None:
    paths = make_documents(tmp_path, "good-1", "bad-1", "good-2")
    found = by_file(batch.check(tmp_path, program=fake, skip=lambda name: "bad" in name))
    assert sorted(found) == ["good-1", "good-2"] and len(paths) == 3


def test_a_generator_that_fails_ends_the_batch(fake: str, tmp_path: Path) -> None:
    def failing() -> Iterator[str]:
        yield from make_documents(tmp_path, "good-1")
        raise RuntimeError("no more paths")

    with pytest.raises(RuntimeError, match="no more paths"):
        list(batch.check(failing(), program=fake))


def test_different_versions_are_not_mixed(fake: str, tmp_path: Path, monkeypatch: pytest.MonkeyPatch) -> None:
    results = iter(["1.0", "1.1"])
    monkeypatch.setattr(batch._program, "version_of", lambda program: next(results))
    paths = make_documents(tmp_path, "good-1", "good-2", size=10)
    reports = batch.check(paths, program=fake, jobs=1, chunk_megabytes=1e-5)
    assert next(reports).problem is None
    with pytest.raises(batch.ProgramError, match="'1.0' on .*, '1.1' on"):
        next(reports)


def test_progress_is_reported(fake: str, tmp_path: Path) -> None:
    seen: list[batch.Progress] = []
    paths = make_documents(tmp_path, "good-1", "bad-1", "exit-1", size=10)
    list(batch.check(paths, program=fake, jobs=1, chunk_megabytes=1e-5, progress=seen.append))
    assert [(p.documents, p.with_errors, p.with_problems) for p in seen] == [(1, 0, 0), (2, 1, 0), (3, 1, 1)]
    assert all(p.workers == 1 and p.seconds > 0 for p in seen)


# ------------------------------------------------------------------------------------------- forms of reports
def test_lines_have_the_form_of_a_document_in_a_report(fake: str, tmp_path: Path) -> None:
    schema = json.loads((ROOT / "docs" / "check.schema.json").read_text())
    validator = jsonschema.Draft7Validator(
        {**schema["definitions"]["document"], "definitions": schema["definitions"]}
    )
    paths = make_documents(tmp_path, "good-1", "bad-1", "exit-1")
    reports = [*batch.check(paths, program=fake), *batch.check(GOLDEN, level="note")]
    lines = [batch.json_line(report) for report in reports]
    for line in lines:
        validator.validate(json.loads(line))
        assert line.endswith("\n") and line.count("\n") == 1
    assert list(batch.read_json_lines(lines)) == reports


def test_a_report_prints_as_the_program_does(fake: str, tmp_path: Path) -> None:
    paths = make_documents(tmp_path, "bad-1", "exit-1", "good-1")
    bad, ended, good = batch.check(paths, program=fake)
    assert str(bad).splitlines() == [
        f"{paths[0]}:2:3: error: A message. [missing-centre]",
        f"{paths[0]}:2:3: warning: A message. [empty-name]",
    ]
    assert str(ended).startswith(f"{paths[1]}: the check ended its process")
    assert str(good) == ""


def test_findings_are_counted_by_severity(fake: str, tmp_path: Path) -> None:
    (bad,) = batch.check(make_documents(tmp_path, "bad-1"), program=fake)
    assert (bad.errors, bad.warnings, bad.notes) == (1, 1, 0)
    assert [bad.count_from("error"), bad.count_from("warning"), bad.count_from("note")] == [1, 2, 2]
    assert bad.findings[0] == Finding(
        "error", "missing-centre", "A message.", "/GMD/point[1]", batch.Place(2, 3, 40), None, "point",
        "hinge", 2, (batch.Place(2, 3, 40),), bad.file,
    )  # fmt: skip


def test_a_table_has_a_row_for_each_finding_and_problem(fake: str, tmp_path: Path) -> None:
    pandas = pytest.importorskip("pandas")
    paths = make_documents(tmp_path, "bad-1", "exit-1", "good-1")
    table = batch.table(batch.check(paths, program=fake))
    assert list(table["file"]) == [paths[0], paths[0], paths[1]]
    assert list(table["severity"]) == ["error", "warning", "error"]
    assert list(table["rule"])[:2] == ["missing-centre", "empty-name"] and pandas.isna(table["rule"][2])
    assert list(table["line"])[:2] == [2, 2] and pandas.isna(table["line"][2])
    assert table["name"][0] == "hinge" and table["count"][0] == 2
    assert table["message"][2].startswith("the check ended its process")
    assert len(batch.table([])) == 0
    assert dict(batch.table([]).dtypes) == dict(table.dtypes) | {
        name: batch.table([]).dtypes[name] for name in ("severity", "rule", "kind")
    }


# ----------------------------------------------------------------------------------------------- from a shell
class Shell:
    """Runs the command in this process: starting another one takes longer than most batches here."""

    def __init__(self, capture: pytest.CaptureFixture[str]) -> None:
        self._capture = capture

    def __call__(self, *arguments: str) -> tuple[int, str, str]:
        self._capture.readouterr()
        try:
            code = main(arguments)
        except SystemExit as end:
            code = int(end.code or 0)
        printed = self._capture.readouterr()
        return code, printed.out, printed.err


@pytest.fixture
def shell(capfd: pytest.CaptureFixture[str]) -> Shell:
    return Shell(capfd)


def files_in(text: str) -> list[str]:
    return [json.loads(line)["file"] for line in text.splitlines()]


@pytest.mark.parametrize(
    ("names", "arguments", "code"),
    [
        (["good-1"], [], 0),
        (["good-1", "poor-1"], [], 0),
        (["good-1", "poor-1"], ["--fail-on", "warning"], 1),
        (["bad-1", "good-1"], [], 1),
        (["bad-1", "exit-1"], [], 2),
    ],
)
def test_exit_codes_are_those_of_the_program(
    shell: Shell, fake: str, tmp_path: Path, names: list[str], arguments: list[str], code: int
) -> None:
    paths = make_documents(tmp_path, *names)
    result, out, err = shell(str(tmp_path), "--program", fake, *arguments)
    assert result == code
    assert sorted(files_in(out)) == sorted(paths)
    ended = [path for path in paths if Path(path).name.startswith("exit")]
    assert [line.partition(": the check ended")[0] for line in err.splitlines()] == [
        f"ztcad.batch: {path}" for path in ended
    ]


@pytest.mark.parametrize(
    ("arguments", "message"),
    [
        ([], "a PATH or --files-from is required"),
        (["x.xml", "--resume"], "--resume needs --output"),
        (["x.xml", "--jobs", "0"], "less than 1"),
        (["x.xml", "--max", "-1"], "negative"),
        (["x.xml", "--timeout", "nan"], "not positive"),
        (["x.xml", "--program", "/no/program"], "the program ztcad is missing"),
        (["--files-from", "/no/list"], "/no/list"),
    ],
)
def test_usage_errors_have_exit_code_2(shell: Shell, arguments: list[str], message: str) -> None:
    code, out, err = shell(*arguments)
    assert (code, out) == (2, "")
    assert message in err and "Traceback" not in err


def test_paths_come_from_a_file_too(shell: Shell, fake: str, tmp_path: Path) -> None:
    paths = make_documents(tmp_path, "good-1", "good-2", "good-имя")
    (tmp_path / "list").write_text("\n".join(paths[1:]) + "\n\n")
    code, out, _ = shell(paths[0], "--files-from", str(tmp_path / "list"), "--program", fake)
    assert (code, files_in(out)) == (0, paths)


def test_the_command_runs_as_a_module(fake: str, tmp_path: Path) -> None:
    paths = make_documents(tmp_path, "bad-1", "good-имя")
    command = [sys.executable, "-m", "ztcad.batch", "--files-from", "-", "--program", fake]
    environment = {**os.environ, "LC_ALL": "C", "PYTHONUTF8": "0", "PYTHONCOERCECLOCALE": "0"}
    run = subprocess.run(
        command, input="\n".join(paths).encode(), env=environment, capture_output=True, timeout=60
    )
    assert (run.returncode, files_in(run.stdout.decode()), run.stderr) == (1, paths, b"")


def test_a_run_can_be_resumed(shell: Shell, fake: str, tmp_path: Path) -> None:
    make_documents(tmp_path / "in", "good-1", "good-2", "bad-1")
    output = tmp_path / "report.jsonl"
    arguments = [str(tmp_path / "in"), "--program", fake, "--output", str(output)]
    assert shell(*arguments)[0] == 1
    complete = output.read_text().splitlines()
    kept = next(line for line in complete if "bad-1" in line)
    output.write_text(kept + "\n" + complete[0][:-20])  # as when the machine stopped
    (tmp_path / "in" / "looked_at.txt").unlink()
    assert shell(*arguments, "--resume")[0] == 1  # the kept line counts
    assert sorted(output.read_text().splitlines()) == sorted(complete)
    assert sorted(name for name, *_ in looked_at(tmp_path / "in")) == ["good-1.xml", "good-2.xml"]
    assert shell(*arguments)[0] == 1
    assert len(output.read_text().splitlines()) == 3  # without --resume it begins anew


def test_a_reader_that_goes_away_ends_the_run(fake: str, tmp_path: Path) -> None:
    make_documents(tmp_path, *(f"bad-{i}" for i in range(600)))
    command = f"'{sys.executable}' -m ztcad.batch '{tmp_path}' --program '{fake}' | head -n 1"
    run = subprocess.run(
        ["bash", "-o", "pipefail", "-c", command], capture_output=True, text=True, timeout=60
    )
    assert (run.returncode, run.stderr) == (2, "")
    assert len(files_in(run.stdout)) == 1


def test_the_page_describes_all_arguments_and_options() -> None:
    page = (ROOT / "docs" / "batch.md").read_text(encoding="utf-8")
    options = {option for action in _parser()._actions for option in action.option_strings} - {"-h", "--help"}
    assert options <= set(re.findall(r"(?<=`)--?[a-z-]+", page))
    arguments = set(inspect.signature(batch.check).parameters) - {"paths"}
    assert arguments <= set(re.findall(r"`([a-z_]+)`", page))


def test_optional_packages_are_not_imported() -> None:
    others = {"dask", "distributed", "meshio", "pandas", "trimesh"}
    script = f"import sys, ztcad.batch; print('ztcad.batch' in sys.modules, set(sys.modules) & {others})"
    run = subprocess.run([sys.executable, "-c", script], capture_output=True, text=True)
    assert (run.stdout, run.stderr) == ("True set()\n", "")


def test_a_chunk_can_be_checked_directly(fake: str, tmp_path: Path) -> None:
    paths = make_documents(tmp_path, "good-1", "bad-1")
    result = check_chunk(paths, Options(program=fake))
    assert [record["file"] for record in result.records] == paths
    assert result.version == "ztcad 9.9.9"
