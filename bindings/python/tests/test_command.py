from __future__ import annotations

import errno
import json
import os
import subprocess
import sys
from pathlib import Path

import pytest

from bouncecheck import classify, mailbox
from bouncecheck.__main__ import main

FAILED = "samples/several-recipients-first-failed.eml"


def test_a_line_for_each_recipient(tmp_path: Path, capsys: pytest.CaptureFixture[str]) -> None:
    hostile = tmp_path / "a\tb.eml"
    hostile.write_bytes(b"X-Failed-Recipients: a\xe2\x80\xaeb@x.example\n\nuser unknown\n")
    assert main([FAILED, "no/such/file", str(hostile)]) == 1
    printed = capsys.readouterr()
    lines = [line.split("\t") for line in printed.out.splitlines()]
    assert lines[:2] == [
        ["anna@example.org", "failed", "unknown-mailbox", "suppress", "hard", FAILED],
        ["bert@example.org", "delayed", "policy", "fix", "hard", FAILED],
    ]
    # What holds a control character is no address.
    assert lines[-1][0] == "-" and lines[-1][-1].endswith(r"a\tb.eml")
    assert "no/such/file" in printed.err


def test_json(capsys: pytest.CaptureFixture[str]) -> None:
    assert main(["--json", "--verp", "b-{tag}@x.example", FAILED]) == 0
    assert json.loads(capsys.readouterr().out) == classify(FAILED).asdict()


def test_wrong_usage(capsys: pytest.CaptureFixture[str]) -> None:
    for arguments in [[], ["--verp", "x", FAILED]]:
        with pytest.raises(SystemExit, match="2"):
            main(arguments)


def test_as_a_program() -> None:
    command = [sys.executable, "-m", "bouncecheck"]
    mail = Path(FAILED).read_bytes()
    run = subprocess.run([*command, "-"], input=mail, stdout=subprocess.PIPE, check=True)
    assert run.stdout.splitlines()[0].endswith(b"\thard\t-")
    # A reader that goes away is no traceback.
    reader, writer = os.pipe()
    os.close(reader)
    broken = subprocess.run([*command, FAILED], stdout=writer, stderr=subprocess.PIPE)
    os.close(writer)
    assert (broken.returncode, broken.stderr) == (1, b"")


@pytest.mark.skipif(
    not os.path.exists("/dev/full") or not os.path.exists("/proc/self/mem"),
    reason="only Linux has files that fail for everybody",
)
def test_files_that_fail() -> None:
    def run(path: str, given: str, out: str) -> tuple[int, bytes]:
        command = [sys.executable, "-m", "bouncecheck", path]
        with open(given, "rb") as stdin, open(out, "wb") as stdout:
            done = subprocess.run(command, stdin=stdin, stdout=stdout, stderr=subprocess.PIPE)
        return done.returncode, done.stderr

    cannot_read = b"bouncecheck: [Errno 5] Input/output error: '%s'\n"
    disk_is_full = b"bouncecheck: standard output: No space left on device\n"
    for path, given, out, said in [
        (FAILED, os.devnull, "/dev/full", disk_is_full),
        ("samples", os.devnull, "/dev/full", disk_is_full),
        ("/proc/self/mem", os.devnull, os.devnull, cannot_read % b"/proc/self/mem"),
        ("-", "/proc/self/mem", os.devnull, cannot_read % b"-"),
    ]:
        assert run(path, given, out) == (1, said)


def test_problems_of_mailboxes(tmp_path: Path) -> None:
    with pytest.raises(FileNotFoundError):
        mailbox(tmp_path / "absent")
    (tmp_path / "0").symlink_to("0")
    (tmp_path / "1").symlink_to("absent")
    os.mkfifo(tmp_path / "3")
    (tmp_path / "2").write_bytes(b"Subject: x\n\n")
    problems: list[OSError] = []
    assert [m.source for m in mailbox(tmp_path, onerror=problems.append)] == [str(tmp_path / "2")]
    assert [Path(problem.filename).name for problem in problems] == ["0", "1", "3"]
    with pytest.raises(OSError):
        list(mailbox(tmp_path))


def test_large_messages_of_mailboxes(tmp_path: Path, monkeypatch: pytest.MonkeyPatch) -> None:
    monkeypatch.setattr("bouncecheck._mailbox.MOST_BYTES", 1000)
    envelope = b"From a Thu Sep 18 17:54:04 2008\nSubject: x\n\n"
    (tmp_path / "mbox").write_bytes(envelope + b"a\n\n" + envelope + b"b" * 2000 + b"\n\n" + envelope)
    problems: list[OSError] = []
    assert [m.index for m in mailbox(tmp_path / "mbox", onerror=problems.append)] == [1, 3]
    assert [problem.errno for problem in problems] == [errno.EFBIG]
