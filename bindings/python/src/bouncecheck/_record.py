"""What all results have in common."""

from __future__ import annotations

from dataclasses import fields
from enum import Enum
from typing import Any, ClassVar, Dict, FrozenSet


class Record:
    """A frozen dataclass that shows and stores only what is known."""

    #: The members that are part of `asdict()` even when they are empty.
    _always: ClassVar[FrozenSet[str]] = frozenset()

    def asdict(self) -> Dict[str, Any]:
        """Plain values with the keys that ``bouncecheck --format json`` writes, which
        docs/result.schema.json describes. What is empty is left out as there."""
        return {
            name.rstrip("_"): _plain(value)  # from_
            for name, value in vars(self).items()
            if value or name in self._always
        }

    def __repr__(self) -> str:
        shown = (
            f"{member.name}={value!r}"
            for member in fields(self)  # type: ignore[arg-type]
            if (value := getattr(self, member.name)) != member.default
        )
        return f"{type(self).__name__}({', '.join(shown)})"


def _plain(value: Any) -> Any:
    if isinstance(value, Record):
        return value.asdict()
    if isinstance(value, tuple):
        return [_plain(item) for item in value]
    return value.value if isinstance(value, Enum) else value
