"""Addresses that were made for one recipient."""

from __future__ import annotations

import argparse
from dataclasses import dataclass
from typing import Iterable, List, NamedTuple, Optional, Tuple, Union

from . import _native


class VerpMatch(NamedTuple):
    """What an address carries."""

    #: local-part@domain; "" for a form with a tag.
    address: str
    #: "" for a form with an address.
    tag: str


@dataclass(frozen=True)
class VerpPattern:
    """The form of the addresses that a sender's mail comes back to, one for each recipient:
    "bounces+{local}={domain}@lists.example.org" or "bounces-{tag}@example.org".

    Raises ValueError for any other form.
    """

    pattern: str

    def __post_init__(self) -> None:
        if not isinstance(self.pattern, str):
            raise TypeError(f"a VERP pattern is a str, not {type(self.pattern).__name__}")
        object.__setattr__(self, "_native", _native.VerpPattern(self.pattern))

    def __reduce__(self) -> Tuple[object, ...]:
        return VerpPattern, (self.pattern,)

    def match(self, address: str) -> Optional[VerpMatch]:
        """What `address` carries, letter case ignored; None where it is not of the form."""
        found = native_of(self).match(address)
        return None if found is None else VerpMatch(*found)


Verp = Union[str, VerpPattern, Iterable[Union[str, VerpPattern]]]


def native_of(pattern: Union[str, VerpPattern]) -> _native.VerpPattern:
    """The pattern as the library has it."""
    if not isinstance(pattern, VerpPattern):
        pattern = VerpPattern(pattern)
    native: _native.VerpPattern = vars(pattern)["_native"]
    return native


def natives_of(verp: Verp) -> List[_native.VerpPattern]:
    """All patterns that a caller gave, one or several."""
    if isinstance(verp, (str, VerpPattern)):
        verp = (verp,)
    return [native_of(pattern) for pattern in verp]


def _argument(text: str) -> VerpPattern:
    """A pattern on a command line."""
    try:
        return VerpPattern(text)
    except ValueError as error:
        raise argparse.ArgumentTypeError(str(error)) from None


def add_verp_option(parser: argparse.ArgumentParser) -> None:
    parser.add_argument(
        "--verp", action="append", default=[], type=_argument, metavar="PATTERN",
        help="the form of the addresses that mail comes back to, one for each recipient",
    )
