"""python -m bouncecheck FILE...: prints a line for each recipient."""

from __future__ import annotations

import argparse
import json
import os
import sys
from typing import Iterator, List, Optional

from ._classify import classify_many
from ._inputs import StoredMessage
from ._mailbox import mailbox
from ._results import Recipient, Result
from ._verp import add_verp_option

_DESCRIPTION = (
    "Prints a line for each recipient that a message says something about: the address (or tag), "
    "the outcome, the reason, the advice, the verdict on the message, and the file, with tabs "
    'between. "-" stands for what there is none of; a message that names nobody has a line too.'
)
_EPILOG = (
    "Exit status: 0 when all was classified, 1 when something could not be read (the rest is "
    "still done) or the results could not be written, 2 for wrong usage."
)


def _parsed(arguments: Optional[List[str]]) -> argparse.Namespace:
    parser = argparse.ArgumentParser("python -m bouncecheck", None, _DESCRIPTION, _EPILOG)
    parser.add_argument(
        "paths", nargs="+", metavar="FILE",
        help='a message, an mbox, a Maildir or a folder of them; "-" is a message on standard input',
    )
    parser.add_argument(
        "--json", action="store_true", help="print an object of JSON for each message instead"
    )
    add_verp_option(parser)
    return parser.parse_args(arguments)


class _Reader:
    """The messages of several paths. What cannot be read is said on standard error."""

    def __init__(self, paths: List[str]) -> None:
        self._paths = paths
        self.failed = False

    def messages(self) -> Iterator[StoredMessage]:
        for path in self._paths:
            try:
                if path == "-":
                    yield _standard_input()
                else:
                    yield from mailbox(path, onerror=self._report)
            except OSError as error:
                self._report(error)

    def _report(self, error: OSError) -> None:
        self.failed = True
        _complain(str(error))


def _standard_input() -> StoredMessage:
    try:
        return StoredMessage(sys.stdin.buffer.read(), "-")
    except OSError as error:
        error.filename = "-"
        raise


def _complain(text: str) -> None:
    print(f"bouncecheck: {_shown(text)}", file=sys.stderr)


def _shown(text: str) -> str:
    """A text as a terminal can print it, on one line."""
    return "".join(c if c.isprintable() else ascii(c)[1:-1] for c in text) or "-"


def _line(result: Result, recipient: Recipient) -> str:
    reason = "" if recipient.reason is None else recipient.reason
    cells = (recipient.address or recipient.tag, recipient.outcome, reason, recipient.advice)
    return "\t".join(map(_shown, (*cells, result.name, _place(result))))


def _place(result: Result) -> str:
    return result.source if result.index == 1 else f"{result.source}:{result.index}"


def _print(result: Result, as_json: bool) -> None:
    if as_json:
        print(json.dumps(result.asdict()))
        return
    for recipient in result.recipients:
        print(_line(result, recipient))
    if not result.recipients:
        print("\t".join(("-", "-", "-", "-", result.name, _shown(_place(result)))))


def main(arguments: Optional[List[str]] = None) -> int:
    options = _parsed(arguments)
    for stream in (sys.stdout, sys.stderr):
        stream.reconfigure(errors="backslashreplace")  # type: ignore[union-attr]
    reader = _Reader(options.paths)
    try:
        for result in classify_many(reader.messages(), verp=options.verp):
            _print(result, options.json)
        sys.stdout.flush()
    except OSError as error:
        # Where nobody reads on there is nothing to say, nor when Python flushes at the end.
        if not isinstance(error, BrokenPipeError):
            _complain(f"standard output: {error.strerror}")
        os.dup2(os.open(os.devnull, os.O_WRONLY), sys.stdout.fileno())
        return 1
    return int(reader.failed)


if __name__ == "__main__":
    sys.exit(main())
