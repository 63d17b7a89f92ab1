"""Messages that are stored in files and folders."""

from __future__ import annotations

import errno
import os
import re
from typing import IO, Callable, Iterator, List, Optional, Tuple, Union

from ._inputs import StoredMessage, name_of

OnError = Optional[Callable[[OSError], object]]

# The words that the date of an envelope is made of.
_DATE_WORD = re.compile(
    rb"(?:(?P<month>Jan|Feb|Mar|Apr|May|Jun|Jul|Aug|Sep|Oct|Nov|Dec)"
    rb"|(?P<time>\d\d?:\d\d(?::\d\d)?)|(?P<year>\d{4})|(?P<iso>\d{4}-\d\d-\d\d)"
    rb"|Mon|Tue|Wed|Thu|Fri|Sat|Sun|\d\d?|\(?(?:[A-Z]{1,5}|[+-]\d{4})\)?),?"
)
_LONGEST_ENVELOPE = 1000


def mailbox(
    path: Union[str, "os.PathLike[str]"], *, onerror: OnError = None
) -> Iterator[StoredMessage]:
    """The messages at `path`, one at a time, their bytes as they are: those of an mbox file, of
    a Maildir with the Maildirs inside, of all files below a folder in the order of their names,
    or the one that a file is. Nothing is changed or locked.

    A file named "*.eml" and one in a Maildir is one message; one named "*.mbox" or "mbox*" is
    an mbox, and so is any other that begins with a "From " line of one. Messages of an mbox end
    before a blank line and such a line; ">From " stays as it is. Links to folders are not
    followed. Compressed files and archives are not unpacked.

    Raises OSError when `path` is not there. `onerror` is called with the OSError of anything
    else that cannot be read, and the rest goes on; without it the error is raised.
    """
    text = os.fspath(path)
    os.stat(text)
    return _messages(text, onerror)


def _messages(path: str, onerror: OnError) -> Iterator[StoredMessage]:
    if os.path.isdir(path):
        yield from _of_folder(path, onerror, _is_in_maildir(path))
    else:
        yield from _of_file(path, onerror, _is_in_maildir(os.path.dirname(path) or "."))


def _is_in_maildir(folder: str) -> bool:
    """Whether `folder` is `cur` or `new` of a Maildir."""
    folder = os.path.realpath(folder)
    return os.path.basename(folder) in ("cur", "new") and _is_maildir(os.path.dirname(folder))


def _is_maildir(folder: str) -> bool:
    return all(os.path.isdir(os.path.join(folder, name)) for name in ("cur", "new"))


def _of_folder(folder: str, onerror: OnError, one_each: bool) -> Iterator[StoredMessage]:
    # A list of what is to do, since folders inside each other may be deeper than calls can be.
    todo: List[Tuple[str, bool, bool]] = [(folder, True, one_each)]
    while todo:
        path, is_folder, one_each = todo.pop()
        if not is_folder:
            yield from _of_file(path, onerror, one_each)
            continue
        is_maildir = _is_maildir(path)
        inside: List[Tuple[str, bool, bool]] = []
        for entry in _listing(path, onerror):
            try:
                if entry.is_dir(follow_symlinks=False):
                    holds_messages = is_maildir and entry.name in ("cur", "new")
                    if not is_maildir or entry.name != "tmp":
                        inside.append((entry.path, True, holds_messages))
                # Files beside the folders of a Maildir are the notes of mail servers.
                elif not is_maildir and not entry.is_dir():
                    # Of a named pipe nobody may ever write the other end.
                    if not entry.is_file():
                        os.stat(entry.path)  # raises for a broken link
                        raise OSError(errno.EINVAL, "not a regular file", entry.path)
                    inside.append((entry.path, False, one_each))
            except OSError as error:
                _report(error, onerror)
        todo.extend(reversed(inside))


def _listing(folder: str, onerror: OnError) -> List[os.DirEntry[str]]:
    try:
        with os.scandir(folder) as entries:
            return sorted(entries, key=lambda entry: os.fsencode(entry.name))
    except OSError as error:
        _report(error, onerror)
        return []


def _of_file(path: str, onerror: OnError, one_each: bool) -> Iterator[StoredMessage]:
    source = name_of(path)
    name = os.path.basename(path).lower()
    try:
        with open(path, "rb") as file:
            if one_each or name.endswith(".eml"):
                yield StoredMessage(file.read(), source)
                return
            first = file.readline(_LONGEST_ENVELOPE + 2)
            if _is_envelope(first):
                yield from _of_mbox(file, first, source)
            elif name.endswith(".mbox") or name.startswith("mbox"):
                yield from _of_mbox(file, first, source)
            elif first:
                yield StoredMessage(first + file.read(), source)
    except OSError as error:
        _report(error, onerror)


def _report(error: OSError, onerror: OnError) -> None:
    if onerror is None:
        raise error
    onerror(error)


def _is_envelope(line: bytes) -> bool:
    """Whether a line is one that begins a message in an mbox: "From ", a sender of any form and
    a date. A sentence that begins with "From" is none."""
    if not line.startswith(b"From ") or len(line) > _LONGEST_ENVELOPE + 2:
        return False
    found = set()
    for word in reversed(line[5:].split()):
        match = _DATE_WORD.fullmatch(word)
        if match is None:
            break
        found.add(match.lastgroup)
    return "time" in found and ("iso" in found or {"month", "year"} <= found)


def _of_mbox(file: IO[bytes], first: bytes, source: str) -> Iterator[StoredMessage]:
    index = 0
    lines: List[bytes] = [] if _is_envelope(first) else [first]
    begun = bool(first)
    for line in file:
        if _is_envelope(line) and lines and not lines[-1].strip(b"\r\n"):
            index += 1
            yield StoredMessage(b"".join(lines[:-1]), source, index)
            lines = []
        else:
            lines.append(line)
    if begun:
        if lines and not lines[-1].strip(b"\r\n"):
            lines.pop()
        yield StoredMessage(b"".join(lines), source, index + 1)
