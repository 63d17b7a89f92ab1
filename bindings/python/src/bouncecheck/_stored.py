"""Messages of files in any storage, by stretches, as columns of Arrow."""

from __future__ import annotations

import bz2
import gzip
import io
import lzma
import re
import urllib.parse
import zlib
from typing import IO, Any, Callable, Dict, Iterable, Iterator, List, Optional, Union

import pyarrow as pa

from . import _native

#: Opens a file to be read, by its path or URI. The file can seek.
Open = Callable[[str], IO[bytes]]

SCHEMA = pa.schema(
    [
        ("source", pa.string()),
        pa.field("offset", pa.int64()),
        ("message", pa.binary()),
        ("problem", pa.string()),
    ]
)

#: What `most` may be: a column of Arrow ends at 2 GiB.
_LARGEST_MOST = 1 << 30
# What a batch holds, at least, before the next begins.
_BATCH_ROWS = 1000
_BATCH_BYTES = 8 << 20
# How many of its first bytes tell what a file is.
_FIRST = 1024

_UNPACK: Dict[bytes, Callable[[Any], Any]] = {
    b"\x1f\x8b": lambda file: gzip.GzipFile(fileobj=file),
    b"BZh": bz2.BZ2File,
    b"\xfd7zXZ\0": lzma.LZMAFile,
}
# What a damaged file raises, wherever it is stored.
_DAMAGE = (OSError, EOFError, zlib.error, lzma.LZMAError)


def open_uri(path: str) -> IO[bytes]:
    """Opens a file of this machine, or one that PyArrow reads: s3://, gs://, hdfs:// and others."""
    local = re.match(r"(?:file:(?://)?)?(/.*)", path, re.DOTALL)
    if local:
        return open(local[1], "rb")
    from pyarrow import fs

    scheme, _, rest = path.partition("://")
    scheme = {"s3a": "s3", "s3n": "s3"}.get(scheme, scheme)
    system, place = fs.FileSystem.from_uri(f"{scheme}://{urllib.parse.quote(rest)}")
    file: IO[bytes] = system.open_input_file(place)
    return file


def of_stretch(
    path: str, begin: int, end: int, size: int, open_file: Open, most: int
) -> Iterator[pa.RecordBatch]:
    """The messages that begin within a stretch of a file of `size` bytes. A file that cannot be
    divided is read whole by its first stretch."""
    try:
        with open_file(path) as file:
            is_part = begin > 0 or end < size
            if not is_part or not _native.can_be_divided(path, file.read(_FIRST)):
                if not begin:
                    file.seek(0)
                    yield from of_file(path, file, most)
                return
            file.seek(_native.start_of_stream(begin))
            stretch = _native.StoredFile(_reader(file), begin, end, most)
            yield from _batches(stretch, path)
    except _DAMAGE as error:
        yield problem(path, begin, error)


def of_file(path: str, file: IO[bytes], most: int) -> Iterator[pa.RecordBatch]:
    """The messages of a file, compressed or not."""
    unpacked = _unpacked(file)
    foreign = _native.foreign_content(unpacked.peek(_FIRST)[:_FIRST])
    if foreign:
        yield problem(path, 0, foreign)
    else:
        yield from _batches(_native.StoredFile(_reader(unpacked), path, most), path)


def of_content(path: str, content: Optional[bytes], most: int) -> Iterator[pa.RecordBatch]:
    """The messages of a file that was read already; None is a problem."""
    if content is None:
        yield problem(path, 0, "there is no content")
        return
    try:
        yield from of_file(path, io.BytesIO(content), most)
    except _DAMAGE as error:
        yield problem(path, 0, error)


def checked_most(most: int) -> int:
    """`most`, if it can be; raises ValueError."""
    if not 1 <= most <= _LARGEST_MOST:
        raise ValueError(f"most has to be from 1 to {_LARGEST_MOST}, not {most}")
    return most


def together(batches: Iterable[pa.RecordBatch]) -> Iterator[pa.RecordBatch]:
    """The same rows in batches that are worth their handing over."""
    held: List[pa.RecordBatch] = []
    rows = size = 0
    for batch in batches:
        held.append(batch)
        rows += batch.num_rows
        size += batch.nbytes
        if rows >= _BATCH_ROWS or size >= _BATCH_BYTES:
            yield from _joined(held)
            held, rows, size = [], 0, 0
    if held:
        yield from _joined(held)


def _joined(batches: List[pa.RecordBatch]) -> List[pa.RecordBatch]:
    if len(batches) == 1:
        return batches
    return list(pa.Table.from_batches(batches).combine_chunks().to_batches())


def problem(path: str, offset: int, error: Union[str, BaseException]) -> pa.RecordBatch:
    return pa.RecordBatch.from_pylist(
        [{"source": path, "offset": offset, "problem": _words(error)}], SCHEMA
    )


def _words(error: Union[str, BaseException]) -> str:
    words = getattr(error, "strerror", None) or str(error) or type(error).__name__
    return " ".join(str(words).split())


def _unpacked(file: IO[bytes]) -> Any:
    """The file, or what it is packed from; with `peek`."""
    buffered = io.BufferedReader(file)  # type: ignore[type-var]
    first = buffered.peek(_FIRST)
    for magic, unpack in _UNPACK.items():
        if first.startswith(magic):
            return unpack(buffered)
    return buffered


def _reader(file: Any) -> Callable[[int], Union[bytes, str]]:
    read_once = getattr(file, "read1", file.read)

    def read(size: int) -> Union[bytes, str]:
        try:
            data: bytes = read_once(size)
            return data
        except _DAMAGE as error:
            return _words(error)

    return read


def _batches(stored: Any, path: str) -> Iterator[pa.RecordBatch]:
    while True:
        capsules = stored.next(_BATCH_ROWS, _BATCH_BYTES)
        if capsules is None:
            return
        rows = pa.record_batch(Exported(capsules))
        columns = [pa.repeat(pa.scalar(path), rows.num_rows), *rows.columns]
        yield pa.RecordBatch.from_arrays(columns, schema=SCHEMA)


class Exported:
    """A record that `_native` made, as others take it over."""

    def __init__(self, capsules: object) -> None:
        self._capsules = capsules

    def __arrow_c_array__(self, requested_schema: object = None) -> object:
        return self._capsules
