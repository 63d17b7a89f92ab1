"""What bench/spark runs: spark.py TOOL SAMPLES FOLDER [ARGUMENT]..."""

import argparse
import json
import os
import pathlib
import shutil
import statistics
import subprocess
import sys
import time

import make_mail
from pyspark.sql import SparkSession

import batch
import bouncecheck.arrow
import bouncecheck.spark
from bouncecheck import _stored
from bouncecheck._mailbox import MOST_BYTES
from reports import reports

TASKS = 4


def show(name, *figures):
    print(f"| {name:<48} |" + "".join(f" {figure:>9} |" for figure in figures), flush=True)


def processor_seconds(pid):
    """Of a process and all below it."""
    fields = pathlib.Path(f"/proc/{pid}/stat").read_text().rpartition(")")[2].split()
    ticks = sum(int(field) for field in fields[11:15])
    children = pathlib.Path(f"/proc/{pid}/task").glob("*/children")
    below = " ".join(child.read_text() for child in children).split()
    return ticks / os.sysconf("SC_CLK_TCK") + sum(processor_seconds(int(child)) for child in below)


class Measured:
    """Runs beside those of the tool: elapsed and processor time, as medians of the ratios."""

    def __init__(self, options, mail, count):
        self.options, self.mail, self.count = options, mail, count
        self.tool_times = []

    def tool(self):
        before = os.times()
        begin = time.monotonic()
        command = [self.options.tool, "--format", "json", "-j", "1", self.mail]
        subprocess.run(command, check=True, stdout=subprocess.DEVNULL)
        after = os.times()
        spent = (after.children_user + after.children_system
                 - before.children_user - before.children_system)
        self.tool_times.append((time.monotonic() - begin, spent))
        return self.tool_times[-1]

    def of(self, name, run, processor=time.process_time, cores=1):
        """`cores` are those that the tasks of `run` have."""
        run()  # starts workers, and compiles what is run often
        taken = []
        for _ in range(self.options.runs):
            tool = self.tool()
            begin, spent = time.monotonic(), processor()
            run()
            taken.append((time.monotonic() - begin, processor() - spent, *tool))
        elapsed = statistics.median(one[0] for one in taken)
        spent = statistics.median(one[1] for one in taken)
        show(name, f"{self.count / elapsed / cores:.0f}", f"{1e6 * spent / self.count:.1f}",
             f"{statistics.median(one[2] / one[0] / cores for one in taken):.0%}",
             f"{statistics.median(one[3] / one[1] for one in taken):.0%}")
        return elapsed


def in_worker(mail, size, ledger):
    found = _stored.of_stretch(mail, 0, size, size, _stored.open_uri, MOST_BYTES)
    for _ in bouncecheck.arrow.batches(found, "message", keep=["source", "offset", "problem"],
                                       ledger=ledger):
        pass


def session(workers, folder):
    spark = (
        SparkSession.builder.master(f"local-cluster[{workers},1,1024]")
        .config("spark.driver.memory", "768m").config("spark.executor.memory", "768m")
        .config("spark.ui.enabled", "false").config("spark.ui.showConsoleProgress", "false")
        .config("spark.sql.shuffle.partitions", "4")
        .config("spark.sql.session.timeZone", "UTC")
        .config("spark.sql.execution.arrow.maxRecordsPerBatch", "1000")
        .config("spark.eventLog.enabled", "true").config("spark.eventLog.dir", f"file:{folder}")
        .getOrCreate()
    )
    spark.sparkContext.setLogLevel("OFF")
    return spark


def workers_processor():
    """Of the processes that classify, without that of the driver."""
    driver = [child for child in children_of(os.getpid()) if is_java(child)]
    executors = [child for one in driver for child in children_of(one) if is_java(child)]
    return sum(map(processor_seconds, executors))


def children_of(pid):
    tasks = pathlib.Path(f"/proc/{pid}/task").glob("*/children")
    return [int(child) for task in tasks for child in task.read_text().split()]


def is_java(pid):
    return b"java" in pathlib.Path(f"/proc/{pid}/cmdline").read_bytes().split(b"\0")[0]


def to_nothing(frame):
    frame.write.format("noop").mode("overwrite").save()


def measure_spark(measured, workers, folder, mail, size):
    logs = folder / f"events-{workers}"
    logs.mkdir()
    spark = session(workers, logs)
    name = f"{workers} worker{'s' if workers > 1 else ''} of Spark"
    read = {"stretch": -(-size // TASKS), "ledger": True}
    elapsed = measured.of(
        f"{name}: classify_mail",
        lambda: to_nothing(bouncecheck.spark.classify_mail(spark, mail, **read)),
        workers_processor, workers,
    )
    stored = str(folder / "messages")
    if workers == 1:
        bouncecheck.spark.mail(spark, mail, stretch=read["stretch"]).write.parquet(stored)
        frame = spark.read.parquet(stored)
        measured.of(
            f"{name}: classify, messages in Parquet",
            lambda: to_nothing(bouncecheck.spark.classify(frame, "message", keep=["offset"])),
            workers_processor,
        )
    else:
        measured.of(
            f"{name}: batch.py, the table",
            lambda: batch.write_reports(spark, mail, str(folder / "table"), read["stretch"]),
            workers_processor, workers,
        )
        begin, spent = time.monotonic(), workers_processor()
        batch.make_views(spark, str(folder / "table"), None, None)
        found = spark.table("suppressed").count()
        print(f"views: {found} addresses suppressed in {time.monotonic() - begin:.1f} s, "
              f"{workers_processor() - spent:.1f} s of processor time")
    spark.stop()
    SparkSession.builder._options.clear()
    return elapsed, shuffled(logs)


def shuffled(logs):
    """Bytes that the last write of the table shuffled."""
    by_stage = {}
    for path in logs.iterdir():
        for line in path.open(encoding="utf-8"):
            event = json.loads(line)
            if event["Event"] == "SparkListenerTaskEnd" and event.get("Task Metrics"):
                written = event["Task Metrics"]["Shuffle Write Metrics"]["Shuffle Bytes Written"]
                by_stage[event["Stage ID"]] = by_stage.get(event["Stage ID"], 0) + written
    return by_stage


def main(arguments):
    parser = argparse.ArgumentParser(prog="bench/spark")
    parser.add_argument("tool")
    parser.add_argument("samples")
    parser.add_argument("folder", type=pathlib.Path)
    parser.add_argument("mail", nargs="?")
    parser.add_argument("--messages", type=int, default=300_000)
    parser.add_argument("--runs", type=int, default=3)
    options = parser.parse_args(arguments)
    shutil.rmtree(options.folder, ignore_errors=True)
    options.folder.mkdir(parents=True)
    path = options.folder / "mail.mbox"
    with path.open("wb") as file:
        texts = make_mail.samples(options.mail or options.samples)
        for message in make_mail.messages(texts, options.messages):
            file.write(make_mail.in_mailbox(message))
    mail, size = str(path), path.stat().st_size
    print(f"{options.messages} messages, {size} bytes in one mbox; medians of {options.runs} runs, "
          "each beside one of the tool")
    print(f"load before: {os.getloadavg()[0]:.1f}, {os.cpu_count()} cores")
    measured = Measured(options, mail, options.messages)
    show("", "each s", "us each", "of tool's", "of tool's")
    show("", "and core", "processor", "rate", "processor")
    for ledger in (False, True):
        measured.of(f"without Spark{', with the column ledger' if ledger else ''}",
                    lambda ledger=ledger: in_worker(mail, size, ledger))
    alone, _ = measure_spark(measured, 1, options.folder, mail, size)
    together, by_stage = measure_spark(measured, 2, options.folder, mail, size)
    elapsed, spent = (statistics.median(times) for times in zip(*measured.tool_times))
    show("the tool, one thread, JSON", f"{options.messages / elapsed:.0f}",
         f"{1e6 * spent / options.messages:.1f}", "", "")
    print(f"from 1 to 2 workers: {alone / together:.2f} times as fast")
    table = sum(file.stat().st_size for file in (options.folder / "table").rglob("*.parquet"))
    print(f"a message takes {size / options.messages:.0f} bytes as mail, "
          f"{max(by_stage.values()) / options.messages:.0f} in the shuffle and "
          f"{table / options.messages:.0f} in the table")
    print(f"load after: {os.getloadavg()[0]:.1f}")
    shutil.rmtree(options.folder)


main(sys.argv[1:])
