"""Runs the examples as an operator does, by spark-submit, and kills what is to be killed."""

from __future__ import annotations

import os
import pathlib
import re
import signal
import subprocess
import sys
import time
from typing import Callable, List, Optional

EXAMPLES = pathlib.Path(__file__).resolve().parents[1]
SUBMIT = pathlib.Path(sys.executable).with_name("spark-submit")
FINISHED = re.compile(r"Finished task .*\((\d+)/(\d+)\)$")


class Failed(Exception):
    """What was tried does not hold."""


class Job:
    """An example that runs in a cluster of two workers with one core and 1 GB each."""

    def __init__(self, log: pathlib.Path, program: str, *arguments: object, jars: str = "") -> None:
        self._log = log
        command: List[str] = [
            str(SUBMIT), "--master", "local-cluster[2,1,1024]", "--driver-memory", "768m",
            *(("--jars", jars) if jars else ()),
        ]
        for setting in (
            "spark.executor.memory=768m", "spark.ui.enabled=false",
            "spark.ui.showConsoleProgress=false", "spark.sql.shuffle.partitions=4",
        ):
            command += ["--conf", setting]
        with log.open("wb") as file:
            self._process = subprocess.Popen(
                [*command, str(EXAMPLES / program), *map(str, arguments)],
                stdout=file, stderr=subprocess.STDOUT, stdin=subprocess.DEVNULL,
            )

    def printed(self) -> str:
        return self._log.read_text(encoding="utf-8", errors="replace")

    def wait_until(self, holds: Callable[[], bool], what: str) -> None:
        while not holds():
            if self._process.poll() is not None:
                raise Failed(f"{self._log}: the job ended before {what}")
            time.sleep(0.05)

    def wait(self) -> None:
        if self._process.wait() != 0:
            raise Failed(f"{self._log}: the job failed")

    def finished_tasks(self, tasks: int) -> int:
        """How many tasks of the stage that has so many are finished."""
        found = [
            int(match[1])
            for match in map(FINISHED.search, self.printed().splitlines())
            if match and int(match[2]) == tasks
        ]
        return max(found, default=0)

    def kill_worker(self) -> None:
        """One of the processes that the driver has started, as a machine that fails."""
        worker = next(
            pid for pid in children_of(self._process.pid)
            if b"CoarseGrainedExecutorBackend" in pathlib.Path(f"/proc/{pid}/cmdline").read_bytes()
        )
        os.kill(worker, signal.SIGKILL)

    def kill_driver(self) -> None:
        workers = children_of(self._process.pid)
        self._process.kill()
        self._process.wait()
        # They end by themselves, once they have lost their driver.
        while any(pathlib.Path(f"/proc/{pid}").exists() for pid in workers):
            time.sleep(0.1)


def children_of(parent: int) -> List[int]:
    found = []
    for entry in pathlib.Path("/proc").iterdir():
        if not entry.name.isdigit():
            continue
        try:
            stat = (entry / "stat").read_text()
        except OSError:
            continue
        if int(stat.rpartition(")")[2].split()[1]) == parent:
            found.append(int(entry.name))
    return found


def commits(checkpoint: pathlib.Path) -> int:
    """How many batches a stream has finished."""
    folder = checkpoint / "commits"
    return sum(name.name.isdigit() for name in folder.iterdir()) if folder.is_dir() else 0


def run(log: pathlib.Path, program: str, *arguments: object, jars: str = "") -> str:
    job = Job(log, program, *arguments, jars=jars)
    job.wait()
    return job.printed()
