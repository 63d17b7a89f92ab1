"""What Python gives is what the tool prints."""

from __future__ import annotations

import os
import random
from pathlib import Path

import pytest
from conftest import SAMPLES, Tool

from bouncecheck import classify, classify_many, mailbox


def damaged(seed: int) -> bytes:
    """A sample with bytes changed, many of them no UTF-8."""
    chance = random.Random(seed)
    mail = bytearray(Path(SAMPLES[seed % len(SAMPLES)]).read_bytes())
    for _ in range(1 + len(mail) // 50):
        mail[chance.randrange(len(mail))] = chance.randrange(256)
    return bytes(mail)


NOTICE = b"Subject: Delivery error report\n\nFailed Recipient: <y%sann@example.org>\nuser unknown\n"
HOSTILE = {
    "empty": b"",
    "NUL bytes": b"\0" * 1000,
    "noise": random.Random(1).getrandbits(8 << 20).to_bytes(1 << 20, "big"),
    "an address that is no UTF-8": NOTICE % b"\x9c",
    "control characters": NOTICE % b"\x1b[2J\xc2\x9b\xe2\x80\xae",
    "only a header": b"Subject: =?utf-8?q?=ed=a0=80?=",
    "deep": b"".join(
        b"Content-Type: multipart/mixed; boundary=b%d\n\n--b%d\n" % (i, i) for i in range(1000)
    ),
}


@pytest.mark.parametrize("trace", [False, True])
def test_samples(tool: Tool, trace: bool) -> None:
    printed = tool("--single", "samples", *["--trace"] * trace)
    assert [line["source"] for line in printed] == SAMPLES
    for line in printed:
        assert classify(line["source"], trace=trace).asdict() == line


@pytest.mark.parametrize("name", [*HOSTILE, *range(40)])
def test_hostile_messages(tool: Tool, name: object) -> None:
    mail = damaged(name) if isinstance(name, int) else HOSTILE[str(name)]
    (line,) = tool("--single", "--trace", "-", mail=mail)
    assert {**classify(mail, trace=True).asdict(), "source": "-"} == line


def test_verp(tool: Tool) -> None:
    pattern = "bounces-{tag}@own.example"
    mail = b"To: Bounces-x=1@own.example\nAuto-Submitted: auto-replied\nSubject: failure\n\n550 no\n"
    (line,) = tool("--single", "--verp", pattern, "-", mail=mail)
    result = classify(mail, verp=pattern)
    assert {**result.asdict(), "source": "-"} == line
    assert [recipient.tag for recipient in result.recipients] == ["x=1"]


def test_mailboxes(tool: Tool, tmp_path: Path) -> None:
    """Folders and mailboxes hold the same messages for both, at the same places."""
    envelope = b"From MAILER-DAEMON Thu Sep 18 17:54:04 2008\n"
    mails = [Path(sample).read_bytes().rstrip() + b"\n\n" for sample in SAMPLES]
    inbox = b"".join(envelope + mail for mail in mails if b"\nFrom " not in mail)
    trap = b"From: a@example.org\n\nText.\n\nFrom here on it is text.\nFrom now.\n\n"
    files = {
        "a.mbox": inbox,
        "inbox": inbox.replace(b"\r\n", b"\n").replace(b"\n", b"\r\n"),
        "traps": (envelope + trap) * 3,
        "quoted": envelope + b"S: x\n\n>From a\n>>From b\n\n" + envelope + b"S: y\n\n>From c\n\n",
        "lengths": envelope + b"Content-Length: 50\n\nx\n\n" + envelope + b"\n" + envelope + trap,
        "mac": (envelope + trap).replace(b"\n", b"\r") * 2,
        "empty": b"",
        "one": mails[0],
        "Mail/cur/1:2,S": envelope + mails[1] + envelope + mails[2],
        "Mail/new/2": b"",
        "Mail/tmp/3": mails[3],
        "Mail/notes": mails[3],
        "Mail/.Sent/cur/4": mails[4],
        "Mail/.Sent/new/5": mails[5],
        os.fsdecode(b"caf\xe9/6.eml"): envelope + mails[6] + envelope + mails[7],
    }
    for name, content in files.items():
        (tmp_path / name).parent.mkdir(parents=True, exist_ok=True)
        (tmp_path / name).write_bytes(content)
    (tmp_path / "Mail/loop").symlink_to(tmp_path)
    for part in ("", "Mail/cur", "Mail/cur/1:2,S"):
        path = str(tmp_path / part)
        assert [result.asdict() for result in classify_many(mailbox(path))] == tool(path)
