"""What examples/spark/try runs."""

from __future__ import annotations

import argparse
import csv
import gzip
import json
import pathlib
import shutil
import subprocess
import sys
import time
from typing import Any, Callable, Dict, Iterator, List, Optional

import make_mail
from broker import Broker
from driver import EXAMPLES, Failed, Job, commits, run
from expected import Expected

TASKS = 24
LISTED = ("address", "cause", "reason", "since", "first_seen", "last_seen", "count", "evidence")


class Trial:
    def __init__(self, options: argparse.Namespace) -> None:
        self.tool: str = options.tool
        self.options = options
        self.work = pathlib.Path(options.work)
        shutil.rmtree(self.work, ignore_errors=True)
        self.work.mkdir(parents=True)
        self.mail = self.work / "mail"
        self.checked = 0
        make_mail.main(options.samples, str(options.messages), str(self.mail))
        self.expected = Expected(self.tool, self.mail)

    def check(self, name: str, action: Callable[[], str]) -> None:
        begin = time.monotonic()
        what = action()
        self.checked += 1
        print(f"works    {name}: {what} ({time.monotonic() - begin:.0f} s)", flush=True)

    def rows(self, table: pathlib.Path) -> Iterator[Dict[str, Any]]:
        folder = self.work / "exported"
        run(self.work / "export.log", "trial/export.py", table, folder)
        for path in sorted(folder.glob("*.json")):
            for line in path.open(encoding="utf-8"):
                row = json.loads(line)
                row["source"] = row["source"].partition(":")[2] or row["source"]
                yield row

    def batch(self) -> str:
        size = sum(path.stat().st_size for path in self.mail.rglob("*") if path.is_file())
        job = Job(
            self.work / "batch.log", "batch.py", self.mail, self.work / "table",
            "--suppressed", self.work / "suppressed", "--stretch", -(-size // TASKS),
        )
        job.wait_until(lambda: job.finished_tasks(TASKS) >= 3, "any mail was classified")
        job.kill_worker()
        job.wait()
        printed = job.printed()
        if "Command exited with code 137" not in printed:
            raise Failed("no worker was killed")
        again = printed.count("Lost task")
        same = self.expected.compare_by_place(self.rows(self.work / "table"))
        return f"{same}, each row as the tool has it, with a worker killed and {again} tasks lost"

    def list_of_ledger(self, ledger: pathlib.Path) -> List[List[str]]:
        printed = subprocess.run(
            [self.tool, "list", "--ledger", ledger, "--format", "csv"],
            check=True, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True,
        ).stdout
        return sorted([row[name] for name in LISTED] for row in csv.DictReader(printed.splitlines()))

    def list_of_views(self, folder: pathlib.Path) -> List[List[str]]:
        rows: List[List[str]] = []
        for path in folder.glob("*.csv"):
            with path.open(encoding="utf-8", newline="") as file:
                rows += [[row[name].replace(".000Z", "Z") for name in LISTED]
                         for row in csv.DictReader(file)]
        return sorted(rows)

    def same_list(self, ledger: pathlib.Path, folder: pathlib.Path) -> str:
        ours, theirs = self.list_of_views(folder), self.list_of_ledger(ledger)
        for one, other in zip(ours, theirs):
            if one != other:
                raise Failed(f"the lists differ:\n  {one}\n  {other}")
        if len(ours) != len(theirs) or not ours:
            raise Failed(f"{len(ours)} addresses are suppressed, {len(theirs)} by the ledger")
        return f"{len(ours)} addresses, each row as a ledger lists it"

    def suppressed(self) -> str:
        ledger = self.work / "ledger.db"
        subprocess.run([self.tool, "scan", "--ledger", ledger, self.mail], check=True)
        return self.same_list(ledger, self.work / "suppressed")

    def decisions(self) -> str:
        """The week of docs/ledger.md, with what its operator decides, and other mail beside it."""
        folder, ledger = self.work / "week", self.work / "week.db"
        (folder / "samples").mkdir(parents=True)
        shutil.copy(EXAMPLES.parent / "ledger" / "week.mbox", folder)
        for path in pathlib.Path(self.options.samples).glob("*.eml"):
            if b"\nDate:" in path.read_bytes():
                shutil.copy(path, folder / "samples")
        for command in (
            ["scan", folder], ["protect", "postmaster@*", "*_*@*", "isp.example"],
            ["allow", "--reason", "Ben called", "ben@example.net"],
            ["deny", "--reason", "asked", "nobody@example.org", "Carla@example.com"],
        ):
            quiet = {"stdout": subprocess.DEVNULL, "stderr": subprocess.DEVNULL}
            subprocess.run(
                [self.tool, command[0], "--ledger", ledger, *command[1:]], check=True, **quiet
            )
        now = self.list_of_ledger(ledger)
        made = next(row[3] for row in now if row[1] == "deny")
        (self.work / "decisions.csv").write_text(
            f"address,made,decision,text\nben@example.net,{made},allow,Ben called\n"
            f"nobody@example.org,{made},deny,asked\nCarla@example.com,{made},deny,asked\n"
        )
        (self.work / "protections.csv").write_text("pattern\npostmaster@*\n*_*@*\n*@isp.example\n")
        run(self.work / "week.log", "batch.py", folder, self.work / "week-table",
            "--suppressed", self.work / "week-suppressed",
            "--decisions", self.work / "decisions.csv",
            "--protections", self.work / "protections.csv")
        return self.same_list(ledger, self.work / "week-suppressed")

    def stream(self, name: str, *source: object, jars: str = "", problems: int) -> str:
        """Kills the driver after some batches, and starts it again."""
        table, checkpoint = self.work / name, self.work / f"{name}-checkpoint"
        arguments = [*source, table, checkpoint, "--once"]
        first = Job(self.work / f"{name}.log", "stream.py", *arguments, jars=jars)
        first.wait_until(lambda: commits(checkpoint) >= 3, "any batch was finished")
        first.kill_driver()
        before = commits(checkpoint)
        run(self.work / f"{name}-again.log", "stream.py", *arguments, jars=jars)
        after = commits(checkpoint)
        if after <= before + 1:
            raise Failed("the driver was killed when all was done")
        rows = list(self.rows(table))
        found = sorted(row["problem"] for row in rows if "problem" in row)
        if len(found) != problems:
            raise Failed(f"{problems} messages cannot be read, but these are told: {found}")
        same = self.expected.compare_by_digest(row for row in rows if "problem" not in row)
        return (f"{same}, each once, as the tool has them, and {problems} that cannot be read, with "
                f"the driver killed after {before} of {after} batches")

    def files(self) -> str:
        """The same messages in files as they arrive, and two that are none."""
        folder = self.work / "arriving"
        folder.mkdir()
        samples = make_mail.samples(self.options.samples)
        found = list(make_mail.messages(samples, self.options.messages))
        each = -(-len(found) // 36)
        for number, begin in enumerate(range(0, len(found), each)):
            content = b"".join(map(make_mail.in_mailbox, found[begin : begin + each]))
            if number % 5 == 4:
                (folder / f"{number:03}.mbox.gz").write_bytes(gzip.compress(content, 1))
            else:
                (folder / f"{number:03}.mbox").write_bytes(content)
        (folder / "document.pdf").write_bytes(b"%PDF-1.7\n")
        (folder / "cut.gz").write_bytes(gzip.compress(b"Subject: x\n\n")[:8])
        return self.stream("files", "--files", folder, "--batch", 4, problems=2)

    def kafka(self) -> str:
        jars = ",".join(map(str, pathlib.Path(self.options.connector).glob("*.jar")))
        with Broker(self.options.broker, self.work / "broker") as broker:
            run(self.work / "produce.log", "trial/produce.py", self.mail, broker.servers, "bounces",
                jars=jars)
            return self.stream(
                "kafka", "--kafka", broker.servers, "--batch", -(-self.options.messages // 10),
                jars=jars, problems=2,
            )


def main() -> int:
    parser = argparse.ArgumentParser("try.py")
    for name in ("tool", "samples", "work"):
        parser.add_argument(f"--{name}", required=True)
    parser.add_argument("--messages", type=int, required=True)
    parser.add_argument("--only", nargs="*", default=["batch", "week", "files", "kafka"])
    parser.add_argument("--broker")
    parser.add_argument("--connector")
    options = parser.parse_args()
    trial = Trial(options)
    try:
        if "batch" in options.only:
            trial.check("batch.py", trial.batch)
            trial.check("ledger.sql", trial.suppressed)
        if "week" in options.only:
            trial.check("ledger.sql, with decisions and protections", trial.decisions)
        if "files" in options.only:
            trial.check("stream.py, a folder", trial.files)
        if "kafka" in options.only and options.broker:
            trial.check("stream.py, Kafka with 4 partitions", trial.kafka)
    except Failed as error:
        print(f"FAILS    {error}", file=sys.stderr)
        return 1
    print(f"{trial.checked} passed, 0 failed")
    return 0


if __name__ == "__main__":
    sys.exit(main())
