"""Messages that are stored in files and folders."""

from __future__ import annotations

import errno
import os
from typing import IO, Callable, Iterator, List, Optional, Tuple, Union

from . import _native
from ._inputs import StoredMessage, name_of

OnError = Optional[Callable[[OSError], object]]

#: Larger messages are a problem, as for the tool.
MOST_BYTES = 64 << 20


def mailbox(
    path: Union[str, "os.PathLike[str]"], *, onerror: OnError = None
) -> Iterator[StoredMessage]:
    """The messages at `path`, one at a time: those of an mbox file, of a Maildir with the Maildirs
    inside, of all files below a folder in the order of their names, or the one that a file is.
    Nothing is changed or locked.

    A file named "*.eml" and one in a Maildir is one message; one named "*.mbox" or "mbox*" is
    an mbox, and so is any other that begins with a "From " line of one. Messages of an mbox end
    before a blank line and such a line, or where their Content-Length says, and ">From " loses a
    ">" where the mbox quotes. All else is as it stands. Links to folders are not followed.
    Compressed files and archives are not unpacked.

    Raises OSError when `path` is not there. `onerror` is called with the OSError of anything
    else that cannot be read, such as a message of more than 64 MiB, and the rest goes on; without
    it the error is raised.
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
    failures: List[OSError] = []
    try:
        with open(path, "rb") as file:
            mail = _native.MailFile(_reader(file, failures), source, one_each, MOST_BYTES)
            while (found := mail.next()) is not None:
                if isinstance(found, str):
                    raise failures.pop()
                index, content = found
                if content is None:
                    words = f"message {index} is larger than {MOST_BYTES} bytes"
                    _report(OSError(errno.EFBIG, words, path), onerror)
                else:
                    yield StoredMessage(content, source, index)
    except OSError as error:
        error.filename = error.filename or path  # which reading leaves out
        _report(error, onerror)


def _reader(file: IO[bytes], failures: List[OSError]) -> Callable[[int], Union[bytes, str]]:
    """What `_native` reads the file with; what it raises is in `failures` then."""

    def read(size: int) -> Union[bytes, str]:
        try:
            return file.read(size)
        except OSError as error:
            # Its traceback would lead back here through an object that garbage collection cannot
            # look into, and which would never be freed.
            failures.append(error.with_traceback(None))
            return str(error)

    return read


def _report(error: OSError, onerror: OnError) -> None:
    if onerror is None:
        raise error
    onerror(error)

