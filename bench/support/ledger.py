"""What bench/ledger runs: ledger.py TOOL SAMPLES [ARGUMENT]..."""

import argparse
import pathlib
import random
import re
import sqlite3
import statistics
import subprocess
import sys
import tempfile
import time

ADDRESS = re.compile(rb"[\w.+-]+@[\w-]+(\.[\w-]+)+")
SUFFIXES = {"k": 10, "m": 20, "g": 30}


def size_of(text):
    match = re.fullmatch(r"([1-9][0-9]*)([kmg]?)", text.lower())
    if not match:
        raise argparse.ArgumentTypeError(f"{text}: no size such as 200m or 1g")
    return int(match[1]) << SUFFIXES.get(match[2], 0)


def messages_of(folder):
    """Messages of their own, for ever. Within one, an address stays one."""
    texts = [path.read_bytes() for path in sorted(folder.rglob("*")) if path.is_file()]
    if not texts:
        sys.exit(f"bench/ledger: {folder}: holds no messages")
    chance = random.Random(1)
    number = 0
    while True:
        for text in texts:
            number += 1
            renamed = {}

            def new_address(match):
                return renamed.setdefault(match[0].lower(), b"user%d@d%d.example" % (
                    chance.randrange(10**7), chance.randrange(3000)))

            header, _, body = text.partition(b"\n\n")
            date = b"Date: %d Mar %d %02d:00 +0000" % (
                number % 31 + 1, 2020 + chance.randrange(6), number % 24)
            header = re.sub(rb"(?mi)^(date|message-id):.*\n?", b"", header + b"\n")
            yield (date + b"\nMessage-ID: <%d@bench.example>\n" % number
                   + ADDRESS.sub(new_address, header) + b"\n" + ADDRESS.sub(new_address, body))


def write_mailbox(path, messages, size):
    count = written = 0
    with path.open("wb") as mailbox:
        while written < size:
            text = re.sub(rb"(?m)^(>*From )", rb">\1", next(messages))
            written += mailbox.write(b"From x Thu Sep 18 17:54:04 2008\n" + text + b"\n\n")
            count += 1
    return count, written


def seconds(command, **streams):
    begin = time.monotonic()
    subprocess.run(command, check=True, **({"stdout": subprocess.DEVNULL} | streams))
    return time.monotonic() - begin


def show(name, *figures):
    print(f"{name:44}" + "".join(f"{figure:>18}" for figure in figures), flush=True)


def removed(ledger):
    for end in ("", "-wal", "-shm"):
        pathlib.Path(f"{ledger}{end}").unlink(missing_ok=True)
    return ledger


def held(tool, ledger):
    text = subprocess.run([tool, "check", "--ledger", ledger], check=True, capture_output=True,
                          text=True).stdout
    return int(re.search(r": (\d+) messages", text)[1])


def measure_scan(tool, folder, messages, size, runs):
    mailbox, ledger = folder / "mbox", folder / "scanned"
    count, written = write_mailbox(mailbox, messages, size)
    print(f"{count} messages, {written} bytes; medians of {runs} runs, one after the other")
    forms = {
        "a table": ["--format", "table"],
        "a row for each recipient, as JSON": ["--by", "recipient", "--format", "json", "--fields",
                                              "date,recipient,outcome,reason,advice,diagnostic"],
        "scan": None,
    }
    taken = {name: [] for name in forms}
    for _ in range(runs):
        for name, options in forms.items():
            command = ([tool, *options] if options
                       else [tool, "scan", "--ledger", removed(ledger)])
            taken[name].append(seconds([*command, mailbox]))
    plain = statistics.median(taken["a table"])
    for name in forms:
        median = statistics.median(taken[name])
        show(name, f"{median:.2f} s", f"{written / median / 1e6:.1f} MB/s", f"{median / plain:.2f} x")
    show("scan again, nothing new", f"{seconds([tool, 'scan', '--ledger', ledger, mailbox]):.2f} s")
    if held(tool, ledger) != count:
        sys.exit("bench/ledger: messages are lost")
    show("size of the ledger", f"{ledger.stat().st_size / 1e6:.1f} MB",
         f"{ledger.stat().st_size / count:.0f} bytes each")
    mailbox.unlink()


def measure_record(tool, folder, messages, name, runs=200):
    ledger, message = removed(folder / "recorded"), folder / "message"
    plain, record = [], []
    for _ in range(runs):
        message.write_bytes(next(messages))
        for command, taken in (([tool, "--single"], plain),
                               ([tool, "record", "--ledger", ledger], record)):
            with message.open("rb") as stream:
                taken.append(seconds(command, stdin=stream) * 1e3)
    medians = statistics.median(plain), statistics.median(record)
    show(name, f"plain {medians[0]:.2f} ms", f"record {medians[1]:.2f} ms",
         f"{medians[1] / medians[0]:.2f} x")


def measure_together(tool, folder, messages, processes=8, each=50):
    ledger = removed(folder / "together")
    files = []
    for number in range(processes * each):
        files.append(folder / f"message{number}")
        files[-1].write_bytes(next(messages))
    begin = time.monotonic()
    line = 'for file; do "$0" record --ledger "$LEDGER" <"$file" || exit; done'
    started = [subprocess.Popen(["sh", "-c", line, tool, *files[i::processes]],
                                env={"LEDGER": str(ledger)}) for i in range(processes)]
    if any(process.wait() for process in started):
        sys.exit("bench/ledger: a message was not recorded")
    taken = time.monotonic() - begin
    lost = len(files) - held(tool, ledger)
    show(f"{processes} processes, {each} messages each", f"{len(files) / taken:.0f} messages/s",
         f"{lost} lost")
    if lost:
        sys.exit(1)


def write_large(tool, ledger, count):
    """As `record` leaves it, but written at once: a third does not exist, a third was full once."""
    subprocess.run([tool, "deny", "--ledger", ledger, "first@example.org"], check=True)
    database = sqlite3.connect(ledger)
    database.execute("PRAGMA synchronous = OFF")
    database.execute("PRAGMA cache_size = -2000000")
    numbers = ("WITH RECURSIVE n(i) AS (SELECT 2 UNION ALL SELECT i + 1 FROM n WHERE i <= ?1) ")
    time_of = "1500000000 + i * 20"
    with database:
        database.execute(
            numbers + "INSERT INTO messages SELECT i, randomblob(32), " + time_of + ", " + time_of +
            ", 'hard', '1.mri', '<' || i || '.bounce@mx.example.org>', 'Maildir/new/' || i, NULL "
            "FROM n", (count,))
        database.execute(
            numbers + "INSERT INTO addresses SELECT i, 'user' || ((i * 7919) % 100000007) || '@d' || "
            "(i % 3000) || '.example', NULL, 1, CASE i % 3 WHEN 0 THEN 'suppressed' ELSE 'active' "
            "END, CASE i % 3 WHEN 0 THEN 'suppress' END, CASE i % 3 WHEN 0 THEN 'unknown-mailbox' "
            "END, CASE i % 3 WHEN 0 THEN " + time_of + " END, CASE i % 3 WHEN 2 THEN NULL ELSE " +
            time_of + " END, CASE i % 3 WHEN 2 THEN NULL ELSE " + time_of + " END, i % 3 <> 2, "
            "CASE i % 3 WHEN 0 THEN " + time_of + " END FROM n", (count,))
        database.execute(
            numbers + "INSERT INTO events SELECT i, i, i, " + time_of + ", CASE i % 3 WHEN 0 THEN "
            "'suppress' WHEN 1 THEN 'retry' END, 'failed', CASE i % 3 WHEN 0 THEN 'unknown-mailbox' "
            "WHEN 1 THEN 'mailbox-full' ELSE 'content' END, CASE i % 3 WHEN 0 THEN 'suppress' WHEN 1 "
            "THEN 'retry' ELSE 'fix' END, '5.1.1', '550', '550 5.1.1 User unknown in virtual mailbox "
            "table', 'User unknown', NULL FROM n", (count,))
    newest = database.execute("SELECT max(changed) FROM addresses WHERE id > 1").fetchone()[0]
    address = database.execute("SELECT key FROM addresses WHERE id = ?1", (count // 2 // 3 * 3,))
    address = address.fetchone()[0]
    database.execute("PRAGMA wal_checkpoint(TRUNCATE)")
    database.close()
    return newest, address


def measure_large(tool, folder, count, runs=20):
    ledger = removed(folder / "large")
    begin = time.monotonic()
    newest, address = write_large(tool, ledger, count)
    print(f"{count} addresses, written in {time.monotonic() - begin:.0f} s; medians of {runs} runs")
    show("size of the ledger", f"{ledger.stat().st_size / 1e9:.2f} GB",
         f"{ledger.stat().st_size / count:.0f} bytes each")
    since = time.strftime("%Y-%m-%dT%H:%M:%SZ", time.gmtime(newest - 100 * 60))
    for name, arguments in (
            ("why", ["why", "--ledger", ledger, address]),
            ("list --changes-since, 100 changes",
             ["list", "--ledger", ledger, "--changes-since", since]),
    ):
        taken = [seconds([tool, *arguments]) * 1e3 for _ in range(runs)]
        show(name, f"{statistics.median(taken):.1f} ms", f"at most {max(taken):.1f} ms")
    show("list, all that is suppressed", f"{seconds([tool, 'list', '--ledger', ledger]):.1f} s")


def main(arguments):
    parser = argparse.ArgumentParser(prog="bench/ledger")
    parser.add_argument("tool")
    parser.add_argument("samples", type=pathlib.Path)
    parser.add_argument("folder", nargs="?", type=pathlib.Path)
    parser.add_argument("--size", type=size_of, default="1g")
    parser.add_argument("--runs", type=int, default=3)
    parser.add_argument("--addresses", type=int, default=10_000_000)
    parser.add_argument("--in", dest="place")
    options = parser.parse_args(arguments)
    with tempfile.TemporaryDirectory(dir=options.place) as name:
        folder = pathlib.Path(name)
        messages = messages_of(options.folder or options.samples)
        measure_scan(options.tool, folder, messages, options.size, options.runs)
        measure_record(options.tool, folder, messages, "one message, on disk")
        if pathlib.Path("/dev/shm").is_dir():
            with tempfile.TemporaryDirectory(dir="/dev/shm") as memory:
                measure_record(options.tool, pathlib.Path(memory), messages,
                               "one message, in memory")
        measure_together(options.tool, folder, messages)
        measure_large(options.tool, folder, options.addresses)


main(sys.argv[1:])
