from __future__ import annotations

import email
import email.policy
import json
import mmap
import pickle
from dataclasses import fields
from email.message import EmailMessage, Message
from pathlib import Path
from typing import Any, Callable

import pytest
from conftest import SAMPLES

import bouncecheck
from bouncecheck import Advice, FoundIn, Outcome, Reason, StepKind, Verdict, VerpPattern, classify
from bouncecheck import _native

SAMPLE = "samples/postfix-unknown-user.eml"
MAIL = Path(SAMPLE).read_bytes()


def mapped() -> mmap.mmap:
    with open(SAMPLE, "rb") as file:
        return mmap.mmap(file.fileno(), 0, access=mmap.ACCESS_READ)


@pytest.mark.parametrize(
    "message",
    [
        bytearray(MAIL),
        memoryview(MAIL),
        memoryview(b"".join(bytes([c, 0]) for c in MAIL))[::2],
        mapped(),
        SAMPLE,
        Path(SAMPLE),
        bouncecheck.StoredMessage(MAIL, "somewhere", 7),
    ],
    ids=lambda message: type(message).__name__,
)
def test_each_form_of_a_message_gives_the_same(message: Any) -> None:
    assert classify(message) == classify(MAIL)


@pytest.mark.parametrize("policy", [email.policy.compat32, email.policy.default])
def test_parsed_messages(policy: Any) -> None:
    for sample in SAMPLES:
        mail = Path(sample).read_bytes()
        parsed = email.message_from_bytes(mail, policy=policy)
        if not parsed.defects:
            assert classify(parsed) == classify(mail), sample


#: For arguments that a type checker would refuse.
anything: Any = classify


def unwritable() -> Message:
    message = Message()
    message.set_payload("naïve, without a charset")
    return message


@pytest.mark.parametrize(
    "call, error, words",
    [
        (lambda: anything(None), TypeError, "bytes, a path, or an email.message.Message, not None"),
        (lambda: anything(5), TypeError, "not int"),
        (lambda: anything([MAIL]), TypeError, "not list"),
        (lambda: classify("Subject: x\n\ntext"), TypeError, "has to be bytes"),
        (lambda: classify("no/such/file"), FileNotFoundError, "no/such/file"),
        (lambda: classify("samples"), IsADirectoryError, "samples"),
        (lambda: classify("a\0b"), ValueError, "null"),
        (lambda: classify(unwritable()), ValueError, "cannot write this Message"),
        (lambda: classify(MAIL, verp="nothing"), ValueError, "needs an '@'"),
        (lambda: anything(MAIL, verp=[7]), TypeError, "is a str, not int"),
        (lambda: bouncecheck.classify_many(SAMPLE), TypeError, "an iterable of messages"),
        (lambda: bouncecheck.classify_many([], threads=0), ValueError, "1 or more"),
    ],
)
def test_wrong_arguments(call: Callable[[], Any], error: Any, words: str) -> None:
    with pytest.raises(error, match=words):
        call()


def test_results_are_values() -> None:
    result = classify(MAIL)
    assert hash(result) == hash(classify(SAMPLE))
    assert pickle.loads(pickle.dumps(result)) == result
    assert eval(repr(result), vars(bouncecheck)) == result
    with pytest.raises(AttributeError):
        result.address = ""  # type: ignore[misc]
    assert result != classify(MAIL.replace(b"lena", b"anna"))
    assert result.meaning and result.action and Reason.UNKNOWN_MAILBOX.action
    assert classify(b"").meaning


def test_names_are_strings() -> None:
    (recipient,) = classify(MAIL).recipients
    assert recipient.reason == "unknown-mailbox" and recipient.reason is Reason.UNKNOWN_MAILBOX
    assert f"{recipient.advice} {recipient.outcome:>8}" == "suppress   failed"
    assert json.dumps(recipient.evidence.found_in) == '"report"'


def test_names_are_those_of_the_library() -> None:
    assert _native.verdicts() == [
        (classified.value, number)
        for classified, number in zip(Verdict, (0, 1, 2, 3, 5, 6, 7, 9, 10, 11, 12, 14, 15))
    ]
    assert [row[0] for row in _native.reasons()] == list(Reason)
    assert [row[0] for row in _native.advices()] == list(Advice)
    schema = json.loads(Path("docs/result.schema.json").read_text())["$defs"]
    evidence = schema["evidence"]["properties"]
    assert schema["outcome"]["enum"] == list(Outcome)
    assert evidence["found_in"]["enum"] == list(FoundIn)
    assert evidence["reason_from"]["enum"] == list(bouncecheck.ReasonFrom)
    for name, cls in [("recipient", bouncecheck.Recipient), ("evidence", bouncecheck.Evidence)]:
        assert list(schema[name]["properties"]) == [member.name for member in fields(cls)]


def test_trace() -> None:
    result = classify("samples/exim-over-quota.eml", trace=True)
    assert result.trace and result.trace[0].kind is StepKind.TAG
    assert '\n    checkEmailBody:\n      matchedIndicator: "ailbox is full"\n' in result.trace_tree()
    assert classify(MAIL).trace_tree() == ""


def test_verp_patterns() -> None:
    pattern = VerpPattern("b+{local}={domain}@own.example")
    assert pattern.match("B+ann=x.example@OWN.example") == ("ann@x.example", "")
    assert pattern.match("ann@x.example") is None
    assert pickle.loads(pickle.dumps({pattern})) == {VerpPattern(pattern.pattern)}
    message = EmailMessage()
    message["To"] = "b-17@own.example"
    message["Subject"] = "failure notice"
    message.set_content("User unknown")
    (recipient,) = classify(message, verp=[pattern, "b-{tag}@own.example"]).recipients
    assert (recipient.address, recipient.tag) == ("", "17")
