"""Reports what a returned or automatic e-mail means.

    >>> import bouncecheck
    >>> result = bouncecheck.classify(b"Subject: Out of office\\n\\nI am away.\\n")
    >>> result.name
    Verdict.AUTO_REPLY

docs/python.md of the project is the guide.
"""

from ._classify import classify, classify_many
from ._enums import Advice, FoundIn, Outcome, Reason, ReasonFrom, StepKind, Verdict
from ._inputs import MessageInput, StoredMessage
from ._mailbox import mailbox
from ._results import Evidence, Recipient, Report, ReportField, Result, Returned, Step
from ._verp import VerpMatch, VerpPattern

__all__ = [
    "Advice",
    "Evidence",
    "FoundIn",
    "MessageInput",
    "Outcome",
    "Reason",
    "ReasonFrom",
    "Recipient",
    "Report",
    "ReportField",
    "Result",
    "Returned",
    "Step",
    "StepKind",
    "StoredMessage",
    "Verdict",
    "VerpMatch",
    "VerpPattern",
    "classify",
    "classify_many",
    "mailbox",
]
