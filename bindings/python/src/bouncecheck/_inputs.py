"""The forms in which a caller can have a message."""

from __future__ import annotations

import os
from dataclasses import dataclass, field
from email.generator import BytesGenerator
from email.message import Message
from io import BytesIO
from typing import Union


@dataclass(frozen=True)
class StoredMessage:
    """The bytes of a message, and where they were read."""

    content: bytes = field(repr=False)
    #: The path of the file, as UTF-8; bytes of it that are not are U+FFFD. "" for none.
    source: str = ""
    #: The number of the message in the file, from 1 on.
    index: int = 1

    def __bytes__(self) -> bytes:
        return self.content


MessageInput = Union[
    bytes, bytearray, memoryview, str, "os.PathLike[str]", Message, StoredMessage
]


def name_of(path: Union[str, bytes, "os.PathLike[str]", "os.PathLike[bytes]"]) -> str:
    """A path as text that can be encoded, whatever bytes it has."""
    return os.fsencode(path).decode("utf-8", "replace")


def read(message: MessageInput) -> StoredMessage:
    """The bytes of a message and where they are from. Raises TypeError for what cannot be a
    message, OSError for a file that cannot be read, ValueError for a Message that the email
    package cannot write."""
    if isinstance(message, StoredMessage):
        return message
    if isinstance(message, bytes):
        return StoredMessage(message)
    if isinstance(message, Message):
        return StoredMessage(_written(message))
    if isinstance(message, (str, os.PathLike)):
        return _from_file(message)
    try:
        with memoryview(message) as view:
            return StoredMessage(view.tobytes())
    except TypeError:
        raise TypeError(
            "a message is bytes, a path, or an email.message.Message, "
            f"not {type(message).__name__}"
        ) from None


def _from_file(path: Union[str, "os.PathLike[str]"]) -> StoredMessage:
    # Mail in a str is a mistake that "No such file or directory" would not explain.
    if isinstance(path, str) and "\n" in path and not os.path.exists(path):
        raise TypeError("a str is the path of a file; a message in memory has to be bytes")
    with open(path, "rb") as file:
        return StoredMessage(file.read(), name_of(path))


def _written(message: Message) -> bytes:
    """The bytes of a message; lines of a header that was read are not folded anew."""
    out = BytesIO()
    try:
        BytesGenerator(out, mangle_from_=False, maxheaderlen=0).flatten(message)
    except MemoryError:
        raise
    except Exception as error:  # of many kinds, since any header or payload can be damaged
        raise ValueError(f"the email package cannot write this Message: {error}") from error
    return out.getvalue()
