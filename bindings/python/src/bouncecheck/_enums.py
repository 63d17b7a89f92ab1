"""The names in results. Each is a str: ``Reason.UNKNOWN_MAILBOX == "unknown-mailbox"``."""

from __future__ import annotations

from enum import Enum

from . import _native


class _Name(str, Enum):
    """A str that prints as its value, in every version of Python."""

    __str__ = str.__str__

    def __format__(self, spec: str) -> str:
        return format(self.value, spec)

    def __repr__(self) -> str:
        return f"{type(self).__name__}.{self.name}"


class Verdict(_Name):
    """What a message means."""

    #: Not a bounce, or no verdict.
    NONE = "none"
    #: Permanent failure: unknown user, invalid address.
    HARD = "hard"
    #: Temporary failure: mailbox full, network trouble.
    SOFT = "soft"
    #: A bounce that does not name the address that failed.
    NO_RECIPIENT = "no-recipient"
    #: Refused by a filter, or because of its sender.
    BLOCKED = "blocked"
    #: An automatic or out-of-office reply.
    AUTO_REPLY = "auto-reply"
    #: Delayed and still being tried, or a report of success.
    TRANSIENT = "transient"
    #: A request to be unsubscribed.
    UNSUBSCRIBE = "unsubscribe"
    #: A notice of a virus or content scanner.
    VIRUS = "virus"
    #: Looks like a bounce, but no rule knows its kind.
    UNCLASSIFIED = "unclassified"
    #: The recipient's filter wants the sender to confirm.
    CHALLENGE = "challenge"
    #: A receipt: the message was displayed.
    DISPOSITION = "disposition"
    #: A complaint about abuse.
    ABUSE = "abuse"


class Outcome(_Name):
    """What a message says happened to the original mail at a recipient. Most are actions of a
    delivery report (RFC 3464, section 2.3.3)."""

    FAILED = "failed"
    #: Still being tried.
    DELAYED = "delayed"
    DELIVERED = "delivered"
    #: Handed to a system that sends no reports.
    RELAYED = "relayed"
    #: Delivered to an alias or a list, which sends it on.
    EXPANDED = "expanded"
    #: The recipient complained, or wants no more mail (RFC 5965).
    COMPLAINED = "complained"
    #: The recipient's program displayed or handled it (RFC 8098).
    DISPLAYED = "displayed"
    #: Something was reported of the recipient, but not what.
    UNKNOWN = "unknown"


class Reason(_Name):
    """Why a recipient did not get the mail."""

    UNKNOWN_MAILBOX = "unknown-mailbox"
    INACTIVE_MAILBOX = "inactive-mailbox"
    UNKNOWN_DOMAIN = "unknown-domain"
    MAILBOX_FULL = "mailbox-full"
    MESSAGE_TOO_LARGE = "message-too-large"
    CONTENT = "content"
    AUTHENTICATION = "authentication"
    REPUTATION = "reputation"
    POLICY = "policy"
    RATE_LIMIT = "rate-limit"
    UNREACHABLE = "unreachable"
    EXPIRED = "expired"
    SYSTEM = "system"
    #: It failed, and nothing says why.
    OTHER = "other"

    @property
    def meaning(self) -> str:
        """What the reason means to the sender."""
        return _REASONS[self.value][0]

    @property
    def action(self) -> str:
        """What to do about it."""
        return _REASONS[self.value][1]


class Advice(_Name):
    """What a sender should do about a recipient."""

    #: Nothing.
    NONE = "none"
    #: Stop mailing the address: the mailbox or the domain does not exist.
    SUPPRESS = "suppress"
    #: Take the address off the list: its owner complained, or asked for it.
    UNSUBSCRIBE = "unsubscribe"
    #: It may work later. Stop when it keeps failing.
    RETRY = "retry"
    #: The mailbox works: what was sent, or who sent it, was refused.
    FIX = "fix"

    @property
    def meaning(self) -> str:
        """What the advice means to the sender."""
        return _ADVICES[self.value]


class FoundIn(_Name):
    """Where a message names a recipient, the surest first."""

    #: The address that the mail came back to was made for one recipient.
    VERP = "verp"
    #: A delivery status, a complaint or a receipt.
    REPORT = "report"
    #: A field of the header, such as X-Failed-Recipients.
    HEADER = "header"
    #: The text that people read.
    TEXT = "text"
    #: The header of the message that came back.
    RETURNED = "returned"


class ReasonFrom(_Name):
    """What gave a reason."""

    #: A row of the phrases of replies.
    PHRASE = "phrase"
    #: An enhanced status code (RFC 3463).
    STATUS = "status"
    #: The reply code of SMTP (RFC 5321).
    REPLY_CODE = "reply-code"


class StepKind(_Name):
    """What a step of a trace is."""

    #: A check begins.
    ENTER = "enter"
    #: It ends.
    LEAVE = "leave"
    #: A line that it logs.
    INFO = "info"
    #: A named value.
    TAG = "tag"


_REASONS = {name: (meaning, action) for name, meaning, action in _native.reasons()}
_ADVICES = dict(_native.advices())
