"""Makes mail to try things on, always the same: make_mail.py SAMPLES COUNT FOLDER

The messages are those of SAMPLES over and over, each with a Message-ID, a date in 45 days and
addresses of its own; one of a hundred is there twice. Most stand in one mbox, others in a gzip'ed
one, some in files of their own.
"""

from __future__ import annotations

import gzip
import pathlib
import random
import re
import sys
from datetime import datetime, timedelta, timezone
from typing import Iterator, List

ADDRESS = re.compile(rb"[\w.+-]+@[\w-]+(\.[\w-]+)+")
FIRST_DAY = datetime(2026, 8, 1, tzinfo=timezone.utc)
DAYS = 45
ENVELOPE = b"From MAILER-DAEMON Thu Sep 18 17:54:04 2008\n"


def messages(texts: List[bytes], count: int) -> Iterator[bytes]:
    chance = random.Random(1)
    # So few that many addresses fail again and again.
    people = max(count // 12, 10)
    last = b""
    for number in range(count):
        if last and chance.random() < 0.01:
            yield last
            continue
        renamed = {}

        def new_address(match: "re.Match[bytes]") -> bytes:
            who = chance.randrange(people)
            new = b"user%d@d%d.example" % (who, who % 3000)
            if chance.random() < 0.1:
                new = new.capitalize()
            return renamed.setdefault(match[0].lower(), new)

        header, _, body = texts[number % len(texts)].partition(b"\n\n")
        header = re.sub(
            rb"(?mi)^(date|message-id|content-length):.*\n([ \t].*\n)*", b"", header + b"\n"
        )
        seconds = chance.randrange(DAYS * 86400)
        date = (FIRST_DAY + timedelta(seconds=seconds)).strftime("%d %b %Y %H:%M:%S +0000").encode()
        last = (
            b"Date: " + date + b"\nMessage-ID: <%d@made.example>\n" % number
            + ADDRESS.sub(new_address, header) + b"\n" + ADDRESS.sub(new_address, body)
        )
        yield last


def samples(folder: str) -> List[bytes]:
    paths = sorted(pathlib.Path(folder).glob("*.eml"))
    texts = [path.read_bytes().replace(b"\r\n", b"\n") for path in paths]
    # An envelope in front of a message is no part of it.
    return [re.sub(rb"\A(>?From .*\n)", b"", text) for text in texts]


def in_mailbox(message: bytes) -> bytes:
    quoted = re.sub(rb"(?m)^(>*From )", rb">\1", message)
    return ENVELOPE + quoted.rstrip(b"\n") + b"\n\n"


def main(samples_folder: str, count: str, folder: str) -> None:
    out = pathlib.Path(folder)
    (out / "single").mkdir(parents=True)
    found = messages(samples(samples_folder), int(count))
    with (out / "all.mbox").open("wb") as plain, gzip.open(out / "old.mbox.gz", "wb", 1) as packed:
        for number, message in enumerate(found):
            if number % 100 == 50:
                (out / "single" / f"{number:07}.eml").write_bytes(message)
            else:
                (packed if number % 10 == 5 else plain).write(in_mailbox(message))


if __name__ == "__main__":
    main(*sys.argv[1:])
