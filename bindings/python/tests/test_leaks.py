"""Memory stays as it is, however many messages there were. BOUNCECHECK_LEAK_CALLS=1000000 makes
the test thorough; it takes some minutes then."""

from __future__ import annotations

import os
import resource
from pathlib import Path

import pytest

from bouncecheck import VerpPattern, classify, classify_many

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


@pytest.mark.skipif(not os.path.exists("/proc/self/statm"), reason="Linux tells the memory in use")
def test_no_call_keeps_memory() -> None:
    call(2000)
    before = resident()
    call(CALLS)
    grown = resident() - before
    # A single object of 64 bytes a call would be 1.2 MiB and more.
    assert grown < 1 << 20, f"{CALLS} calls took {grown} bytes"
