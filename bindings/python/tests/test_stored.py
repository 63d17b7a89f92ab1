"""Files give the same messages, read whole or by stretches of any size."""

from __future__ import annotations

import bz2
import gzip
import io
import lzma
import os
import random
from pathlib import Path
from typing import IO, Any, Dict, List, Optional, Tuple

import pytest
from conftest import SAMPLES, Tool

pa = pytest.importorskip("pyarrow")
from bouncecheck import _stored, arrow  # noqa: E402

ENVELOPE = b"From MAILER-DAEMON Thu Sep 18 17:54:04 2008\n"
TRAPS = (
    ENVELOPE + b"Subject: a\n\nText.\n\nFrom here on it is text.\nFrom now.\n"
    + ENVELOPE + b"\n>From quoted\n>>From twice\n\n\n"
    + ENVELOPE + b"\n" + ENVELOPE + b"\n" + ENVELOPE
    + b"\n\r\n" + ENVELOPE + b"Subject: b\n\n\r\n" + ENVELOPE.replace(b"\n", b"\r\n")
    + b"\r\r\n" + ENVELOPE + b"end\n \n" + ENVELOPE + b"\n\n"
)
Rows = List[Tuple[int, Any, Any]]


def inbox() -> bytes:
    mails = [Path(sample).read_bytes().rstrip() + b"\n\n" for sample in SAMPLES]
    return b"".join(ENVELOPE + mail for mail in mails if b"\nFrom " not in mail)


def opening(content: bytes) -> Any:
    return lambda path: io.BytesIO(content)


def rows_of(batches: Any) -> Rows:
    rows: Rows = []
    for batch in batches:
        assert batch.schema == _stored.SCHEMA
        rows += [(row["offset"], row["message"], row["problem"]) for row in batch.to_pylist()]
    return rows


def stretched(content: bytes, stretch: int, path: str = "/a.mbox", most: int = 1 << 20) -> Rows:
    rows: Rows = []
    for begin in range(0, max(len(content), 1), stretch):
        rows += rows_of(_stored.of_stretch(
            path, begin, begin + stretch, len(content), opening(content), most
        ))
    return rows


def test_reads_what_lies_in_a_stretch_and_little_more() -> None:
    content = ENVELOPE + b"\n" + b"text\n" * ((32 << 20) // 5)
    size, count = 4 << 20, 0

    class Counting(io.BytesIO):
        def read1(self, size: Optional[int] = -1, /) -> bytes:
            nonlocal count
            data = super().read1(size)
            count += len(data)
            return data

    rows: Rows = []
    for begin in range(0, len(content), size):
        rows += rows_of(_stored.of_stretch(
            "/a.mbox", begin, begin + size, len(content), lambda _: Counting(content), 1 << 20
        ))
    assert [(row[0], row[2]) for row in rows] == [(0, "the message is larger than the limit")]
    assert count < 3 * len(content)


def whole(content: bytes, path: str = "/a.mbox", most: int = 1 << 20) -> Rows:
    return rows_of(_stored.of_content(path, content, most))


@pytest.mark.parametrize("stretch", [1, 2, 3, 7, 45, 46, 100])
@pytest.mark.parametrize("lines", [b"\n", b"\r\n"])
def test_a_message_counts_once_wherever_stretches_end(stretch: int, lines: bytes) -> None:
    for before in (b"", b"\n", b"\n\n", b"Subject: no envelope\n\n", b"\r\n"):
        content = (before + TRAPS).replace(b"\n", lines)
        assert len(whole(content)) >= 4
        assert stretched(content, stretch) == whole(content)


@pytest.mark.parametrize("seed", range(30))
def test_damaged_mailboxes(seed: int) -> None:
    chance = random.Random(seed)
    pieces = [ENVELOPE, b"\n", b"\r\n", b"From ", b"x", b"\r", b">From a\n", b"Subject: b\n", b"\n\n"]
    content = ENVELOPE + b"".join(chance.choices(pieces, k=chance.randrange(200)))
    for stretch in (1, chance.randrange(2, 300)):
        assert stretched(content, stretch) == whole(content)


def test_mailboxes_are_those_of_the_tool(tool: Tool, tmp_path: Path) -> None:
    files: Dict[str, bytes] = {
        "inbox": inbox(),
        "crlf.mbox": inbox().replace(b"\r", b"").replace(b"\n", b"\r\n"),
        "cr": inbox().replace(b"\r", b"").replace(b"\n", b"\r"),
        "traps": TRAPS,
        "empty": b"",
        "empty.eml": b"",
        "one": Path(SAMPLES[0]).read_bytes(),
        "one.eml": ENVELOPE + b"Subject: x\n\n\n" + TRAPS,
        "packed.mbox.gz": gzip.compress(inbox()) + gzip.compress(TRAPS),
        "packed.bz2": bz2.compress(inbox()),
        "packed.xz": lzma.compress(inbox()),
    }
    for name, content in files.items():
        path = tmp_path / name
        path.write_bytes(content)
        printed = tool(str(path))
        for stretch in (len(content) + 1, 1000, 65536):
            rows = stretched(content, stretch, str(path))
            assert not any(problem for _, _, problem in rows), name
            mails = pa.array([mail for _, mail, _ in rows], pa.binary())
            results = arrow.classify(mails).to_pylist()
            assert [(row["verdict"], row["rule"], row["address"]) for row in results] == [
                (line["name"], line["label"], line["address"]) for line in printed
            ], name


def test_lengths_count_where_a_mailbox_is_read_whole() -> None:
    body = b"a\n\n" + ENVELOPE + b"b\n"
    content = (ENVELOPE + b"Content-Length: %d\n\n" % len(body) + body + b"\n") * 2
    assert len(whole(content)) == 2 and len(stretched(content, len(content))) == 2
    assert len(stretched(content, 10)) == 4 == len(stretched(content, 100))


@pytest.mark.parametrize(
    "content, words",
    [
        (gzip.compress(inbox())[:5000], "ended before the end"),
        (gzip.compress(inbox())[:-8] + b"12345678", "CRC"),
        (bz2.compress(inbox())[:9000], "ended before"),
        (b"%PDF-1.7\n%\xe2\xe3", "is a PDF document, not mail"),
        (gzip.compress(b"%PDF-1.7\n%\xe2\xe3"), "PDF"),
        (gzip.compress(gzip.compress(b"a: b\n")), "is a gzip file, which is not unpacked here"),
        (b"\x28\xb5\x2f\xfd\x24", "is a zstd file, which is not unpacked here"),
        (b"PK\3\4" + b"\0" * 100, "zip"),
    ],
    ids=["cut", "wrong sum", "cut bzip2", "PDF", "packed PDF", "packed twice", "zstd", "zip"],
)
def test_what_cannot_be_read_is_a_problem(content: bytes, words: str) -> None:
    rows = whole(content, "/a")
    assert rows[-1][1] is None and words in rows[-1][2]
    # All that comes before the damage is read.
    mails = [mail for _, mail, _ in rows[:-1]]
    assert mails[:-1] == [mail for _, mail, _ in whole(inbox(), "/a")][: len(mails[:-1])]
    assert (words == "CRC") == (len(mails) > 100)


def test_large_messages_are_a_problem() -> None:
    large = ENVELOPE + b"Subject: large\n\n" + b"x" * 300_000 + b"\n\n"
    content = inbox()[:3000] + b"\n\n" + large + ENVELOPE + b"Subject: last\n"
    rows = whole(content, most=100_000)
    assert [problem for _, _, problem in rows if problem] == ["the message is larger than the limit"]
    assert rows[-1][1] == b"Subject: last\n"
    for stretch in (1000, 200_000):
        assert stretched(content, stretch, most=100_000) == rows


class Failing(io.BytesIO):
    def read(self, size: Any = -1) -> bytes:
        raise OSError(5, "Input/output error")

    read1 = read


def test_storage_that_fails() -> None:
    def absent(path: str) -> IO[bytes]:
        raise FileNotFoundError(2, "No such file or directory", path)

    for opened, words in ((absent, "No such file"), (lambda _: Failing(b"x"), "Input/output")):
        for begin in (0, 100):
            rows = rows_of(_stored.of_stretch("/a.mbox", begin, begin + 100, 300, opened, 1000))
            assert [(offset, mail) for offset, mail, _ in rows] == [(begin, None)]
            assert words in rows[0][2]


def test_files_are_opened_by_their_names(tmp_path: Path) -> None:
    for name in ("a b", "%20", "é:#?"):
        path = tmp_path / name
        path.write_bytes(name.encode())
        for uri in (str(path), f"file:{path}", f"file://{path}"):
            with _stored.open_uri(uri) as file:
                assert file.read() == name.encode()
    rows = rows_of(_stored.of_stretch(os.fspath(path), 0, 9, 9, _stored.open_uri, 1000))
    assert rows == [(0, "é:#?".encode(), None)]


def test_small_batches_are_put_together() -> None:
    many = [batch for _ in range(700) for batch in _stored.of_content("/a", TRAPS, 1000)]
    joined = list(_stored.together(many))
    assert len(joined) < 10 and rows_of(joined) == rows_of(many)
