"""Measures what a message costs in Python and in the tool, over the samples, all in one run:

    python bindings/python/bench.py TOOL

prints microseconds for each message: of processor time, the least of five runs, and of elapsed
time for the threads. The tool reads the same messages from one mbox, by one thread, and prints
JSON.
"""

from __future__ import annotations

import json
import os
import subprocess
import sys
import tempfile
import time
from pathlib import Path
from typing import Callable

from bouncecheck import classify, classify_many

SAMPLES = Path(__file__).resolve().parents[2] / "samples"
MAILS = [path.read_bytes() for path in sorted(SAMPLES.glob("*.eml"))] * 20


def processor_time() -> float:
    spent = os.times()
    return spent.user + spent.system + spent.children_user + spent.children_system


def measure(name: str, clock: Callable[[], float], run: Callable[[], object]) -> None:
    best = float("inf")
    for _ in range(5):
        begin = clock()
        run()
        best = min(best, clock() - begin)
    print(f"{name:<36}{best / len(MAILS) * 1e6:8.1f}")


def consume(threads: int) -> None:
    for _ in classify_many(MAILS, threads=threads):
        pass


with tempfile.NamedTemporaryFile(suffix=".mbox") as mbox:
    for mail in MAILS:
        mbox.write(b"From a Thu Sep 18 17:54:04 2008\n" + mail.rstrip() + b"\n\n")
    mbox.flush()
    tool = [sys.argv[1], "--format", "json", "-j", "1", mbox.name]
    print(f"{len(MAILS)} messages of {sum(map(len, MAILS)) // len(MAILS)} bytes, us each")
    measure(
        "tool, from mbox to JSON", processor_time,
        lambda: subprocess.run(tool, stdout=subprocess.DEVNULL, check=True),
    )
    measure("classify", processor_time, lambda: [classify(mail) for mail in MAILS])
    measure(
        "classify, asdict, json.dumps", processor_time,
        lambda: [json.dumps(classify(mail).asdict()) for mail in MAILS],
    )
    for count in (1, 2):
        measure(f"classify_many, {count} threads, processor", processor_time, lambda: consume(count))
        measure(f"classify_many, {count} threads, elapsed", time.perf_counter, lambda: consume(count))
