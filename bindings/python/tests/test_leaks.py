"""Memory stays as it is, however many messages there were. BOUNCECHECK_LEAK_CALLS=1000000 makes
the test thorough; it takes some minutes then."""

from __future__ import annotations

import gc
import io
import os
import resource
from pathlib import Path
from typing import Any

import pytest

from bouncecheck import VerpPattern, classify, classify_many, mailbox

CALLS = int(os.environ.get("BOUNCECHECK_LEAK_CALLS", "20000"))
MAIL = Path("samples/arf-abuse-complaint.eml").read_bytes()


def resident() -> int:
    with open("/proc/self/statm") as file:
        return int(file.read().split()[1]) * resource.getpagesize()


def call(times: int) -> None:
    for _ in range(times):
        classify(MAIL)
    for _ in range(times // 20):
        classify(MAIL, trace=True, verp="b-{tag}@x.example").trace_tree()
        with pytest.raises(ValueError):
            VerpPattern("x")
    for _ in classify_many((MAIL for _ in range(times // 2)), threads=2):
        pass


tells_memory = pytest.mark.skipif(
    not os.path.exists("/proc/self/statm"), reason="Linux tells the memory in use"
)


@tells_memory
def test_no_call_keeps_memory() -> None:
    call(2000)
    before = resident()
    call(CALLS)
    grown = resident() - before
    # A single object of 64 bytes a call would be 1.2 MiB and more.
    assert grown < 1 << 20, f"{CALLS} calls took {grown} bytes"


class FailsAtItsEnd(io.BytesIO):
    def read(self, size: Any = -1) -> bytes:
        found = super().read(size)
        if not found:
            raise OSError(5, "Input/output error")
        return found


@tells_memory
def test_no_read_that_fails_keeps_memory(monkeypatch: pytest.MonkeyPatch, tmp_path: Path) -> None:
    message = b"From a Thu Sep 18 17:54:04 2008\nSubject: x\n\n" + b"text\n" * 20000 + b"\n"
    monkeypatch.setattr(
        "bouncecheck._mailbox.open", lambda path, mode: FailsAtItsEnd(message * 3), raising=False
    )

    def read(times: int) -> None:
        for _ in range(times):
            with pytest.raises(OSError, match="Input/output"):
                list(mailbox(tmp_path / "mbox"))
            # Whoever reads no further never hears of the failure.
            messages = mailbox(tmp_path / "mbox")
            assert [next(messages).index for _ in range(3)] == [1, 2, 3]
        gc.collect()

    (tmp_path / "mbox").touch()
    read(10)
    before = resident()
    read(100)
    grown = resident() - before
    assert grown < 8 << 20, f"100 failures took {grown} bytes"
