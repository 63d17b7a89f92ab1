"""What is known of a message, as values that cannot be changed."""

from __future__ import annotations

from dataclasses import dataclass, field
from typing import Any, Dict, List, Optional, Tuple

from . import _native
from ._enums import Advice, FoundIn, Outcome, Reason, ReasonFrom, StepKind, Verdict
from ._record import Record


@dataclass(frozen=True, repr=False)
class Evidence(Record):
    """Why a recipient has its reason."""

    #: Where the message names the recipient.
    found_in: FoundIn = FoundIn.RETURNED
    #: What gave the reason; None where nothing did.
    reason_from: Optional[ReasonFrom] = None
    #: The row of the table that matched: a phrase, or a code.
    row: str = ""
    #: The words of the message that matched the row.
    quote: str = ""

    _always = frozenset({"found_in"})


@dataclass(frozen=True, repr=False)
class Recipient(Record):
    """Somebody whom a message says something about. What it does not say is ""."""

    #: The address that the sender of the original mail knows; "" when only a tag is known.
    address: str = ""
    #: The address that the mail was sent on to, where the message names another.
    final_address: str = ""
    #: What the address that the mail came back to carries, by `verp`.
    tag: str = ""
    #: Whether the mail failed.
    outcome: Outcome = Outcome.UNKNOWN
    #: Why it did; None where there is nothing to explain.
    reason: Optional[Reason] = None
    #: What to do.
    advice: Advice = Advice.NONE
    #: The enhanced status code (RFC 3463), such as "5.1.1"; a report may hold what is none.
    status: str = ""
    #: The reply code of SMTP (RFC 5321): "550".
    reply_code: str = ""
    #: What the mail system said, without its type.
    diagnostic: str = ""
    #: The host that said it.
    remote_mta: str = ""
    #: The date of the last attempt, as the report writes it (RFC 3464, section 2.3.7).
    last_attempt: str = ""
    #: When the system gives up, as the report writes it (RFC 3464, section 2.3.9).
    will_retry_until: str = ""
    #: Where all this comes from.
    evidence: Evidence = Evidence()

    _always = frozenset({"address", "outcome", "advice", "evidence"})


@dataclass(frozen=True, repr=False)
class ReportField(Record):
    """A field of a complaint or a receipt, its name as written."""

    name: str = ""
    value: str = ""

    _always = frozenset({"name", "value"})


@dataclass(frozen=True, repr=False)
class Report(Record):
    """What a delivery status, a complaint or a receipt says besides its recipients."""

    #: The host that wrote the delivery status, without its type.
    reporting_mta: str = ""
    #: All fields of a complaint (RFC 5965) or a receipt (RFC 8098), in their order.
    fields: Tuple[ReportField, ...] = ()


@dataclass(frozen=True, repr=False)
class Returned(Record):
    """Fields of the header of the message that came back, decoded."""

    message_id: str = ""
    #: "from" in `asdict()`.
    from_: str = ""
    to: str = ""
    subject: str = ""
    date: str = ""
    list_id: str = ""
    #: The address that the message was to come back to.
    return_path: str = ""


@dataclass(frozen=True, repr=False)
class Step(Record):
    """A step on the way to a verdict."""

    kind: StepKind = StepKind.INFO
    #: The name of the check, the line, or the name of the value.
    text: str = ""
    #: The value that a tag names.
    value: str = ""

    def asdict(self) -> Dict[str, Any]:
        values = {"value": self.value} if self.kind is StepKind.TAG else {}
        return {self.kind.value: self.text, **values}


@dataclass(frozen=True, repr=False)
class Result(Record):
    """What a message means, whom it is about, and why.

    Results are equal when they say the same, wherever the messages were read.
    """

    #: The file that the message was read from; "" for a message in memory.
    source: str = field(default="", compare=False)
    #: The number of the message in its file, from 1 on.
    index: int = field(default=1, compare=False)
    #: The number of the verdict.
    type: int = 0
    #: Its name.
    name: Verdict = Verdict.NONE
    #: The label of the rule that decided; None when the message is none of the kinds, or when
    #: the table of last resort decided.
    label: Optional[str] = None
    #: The address that the verdict is about, as the message has it: check its form before use.
    address: str = ""
    #: Everybody whom the message says something about, each once, in the order of the message.
    recipients: Tuple[Recipient, ...] = ()
    report: Report = Report()
    returned: Returned = Returned()
    #: The steps to the verdict; None unless they were asked for.
    trace: Optional[Tuple[Step, ...]] = None

    _always = frozenset(
        "source index type name label address recipients report returned".split()
    )

    @property
    def meaning(self) -> str:
        """What the verdict says about the message, in a sentence."""
        return _native.explanation(self.type, self.label or "")[0]

    @property
    def action(self) -> str:
        """What to do about it."""
        return _native.explanation(self.type, self.label or "")[1]

    def trace_tree(self) -> str:
        """The trace as text, one line a step; control characters are escapes. "" without one."""
        steps = self.trace or ()
        return _native.trace_tree([(step.kind.value, step.text, step.value) for step in steps])


# What `_native` gives for a recipient: its members in their order, those of the evidence last.
RecipientRow = Tuple[str, str, str, str, str, str, str, str, str, str, str, str, str, str, str, str]
ReturnedRow = Tuple[str, str, str, str, str, str, str]
StepRow = Tuple[str, str, str]
# And for a message: type, name, label, address, recipients, reporting_mta, fields, returned, trace.
Row = Tuple[
    int,
    str,
    str,
    str,
    List[RecipientRow],
    str,
    List[Tuple[str, str]],
    ReturnedRow,
    Optional[List[StepRow]],
]

# Most messages have neither.
_NO_REPORT = Report()
_NOTHING_RETURNED = Returned()
# Faster than a call of the enumeration.
_OUTCOMES = {member.value: member for member in Outcome}
_REASONS = {member.value: member for member in Reason}
_ADVICES = {member.value: member for member in Advice}
_FOUND_IN = {member.value: member for member in FoundIn}
_REASON_FROM = {member.value: member for member in ReasonFrom}
_KINDS = {member.value: member for member in StepKind}
_VERDICTS = {member.value: member for member in Verdict}


def _recipient_of(row: RecipientRow) -> Recipient:
    address, final_address, tag, outcome, reason, advice = row[:6]
    found_in, reason_from, phrase, quote = row[12:]
    return Recipient(
        address,
        final_address,
        tag,
        _OUTCOMES[outcome],
        _REASONS.get(reason),
        _ADVICES[advice],
        *row[6:12],
        Evidence(_FOUND_IN[found_in], _REASON_FROM.get(reason_from), phrase, quote),
    )


def _report_of(reporting_mta: str, fields: List[Tuple[str, str]]) -> Report:
    if not reporting_mta and not fields:
        return _NO_REPORT
    return Report(reporting_mta, tuple(ReportField(*field) for field in fields))


def result_of(row: Row, source: str, index: int) -> Result:
    """The result that `_native` gave as a row."""
    number, name, label, address, recipients, reporting_mta, report, returned, trace = row
    return Result(
        source,
        index,
        number,
        _VERDICTS[name],
        label or None,
        address,
        tuple(map(_recipient_of, recipients)),
        _report_of(reporting_mta, report),
        Returned(*returned) if any(returned) else _NOTHING_RETURNED,
        None if trace is None else tuple(Step(_KINDS[kind], *rest) for kind, *rest in trace),
    )
