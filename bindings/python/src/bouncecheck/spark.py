"""Results as columns of data frames of Apache Spark, in batch and as a stream.

    >>> import bouncecheck.spark
    >>> bouncecheck.spark.classify(frame, message="value")

The workers classify batches of Arrow. They need this package and PyArrow, as the driver does.
"""

from __future__ import annotations

from typing import Any, Callable, Iterable, Iterator, List, Optional, Sequence, Union

import pyarrow as pa
from pyspark.sql import DataFrame, SparkSession
from pyspark.sql.pandas.types import from_arrow_schema
from pyspark.sql.types import BinaryType, StringType, StructType

from . import _stored, arrow
from ._mailbox import MOST_BYTES
from ._verp import Verp, VerpPattern

__all__ = ["classify", "classify_files", "classify_mail", "mail", "messages_of_files", "schema"]

_LISTING_TASKS = 16
_FOUND = ("source", "offset", "problem")
_Batches = Iterator[pa.RecordBatch]
Paths = Union[str, Sequence[str]]


def schema(*, ledger: bool = False) -> StructType:
    """The columns of results."""
    made: StructType = from_arrow_schema(arrow.schema(ledger=ledger))
    return made


def classify(
    frame: DataFrame,
    message: str = "value",
    *,
    keep: Optional[Iterable[str]] = None,
    verp: Verp = (),
    ledger: bool = False,
) -> DataFrame:
    """`frame` with the columns of the results for the messages in the column `message`, which is
    binary or a string; where it is null, so are the results. `frame` may be a stream.

    `keep` names the columns of `frame` that the result has, too; by default all. What is not
    needed should be left out, above all the messages: Spark hands the columns to a worker and
    back.

    `verp` has patterns of the addresses that mail comes back to. With `ledger` there is one more
    column, which docs/scale.md describes.

    Raises ValueError or TypeError where the columns do not fit, before anything runs.
    """
    given = {field.name: field for field in frame.schema}
    if message not in given:
        raise ValueError(f"there is no column {message!r}")
    if not isinstance(given[message].dataType, (BinaryType, StringType)):
        kind = given[message].dataType.simpleString()
        raise TypeError(f"the column {message!r} holds {kind}, not messages as binary")
    kept = list(given) if keep is None else list(keep)
    for name in kept:
        if name not in given:
            raise ValueError(f"there is no column {name!r}")
    results = schema(ledger=ledger)
    for name in kept:
        if name.lower() in results.names:
            raise ValueError(f"the column {name!r} is one of the results: rename it")
    patterns = _patterns(verp)

    def run(batches: _Batches) -> _Batches:
        return arrow.batches(batches, message, keep=kept, verp=patterns, ledger=ledger)

    wanted = StructType([given[name] for name in kept] + list(results))
    return frame.mapInArrow(run, wanted)


def mail(
    spark: SparkSession,
    paths: Paths,
    *,
    stretch: int = 64 << 20,
    most: int = MOST_BYTES,
    open_file: _stored.Open = _stored.open_uri,
) -> DataFrame:
    """The messages of files, and of all files below folders: of mbox files of any size, of files
    of one message each, compressed (gzip, bzip2, xz) or not.

    A row has `source`, the file; `offset`, where in it the message begins; `message`, its bytes;
    and `problem`, why it could not be read, in which case `message` is null.

    Mailboxes are read by stretches of `stretch` bytes, each in a task of its own, which gives the
    messages that begin there: before a blank line and a "From " line of an mbox. Unlike one that is
    read whole, a mailbox of several stretches is not divided by the Content-Length of messages.
    What is compressed is read whole. Messages of more than `most` bytes are a problem.

    Spark lists the files, whatever storage they are in; `open_file` opens one in a worker, by
    default by PyArrow.
    """
    return _read(spark, paths, stretch, most, open_file, StructType(), lambda batches: batches)


def classify_mail(
    spark: SparkSession,
    paths: Paths,
    *,
    verp: Verp = (),
    ledger: bool = False,
    stretch: int = 64 << 20,
    most: int = MOST_BYTES,
    open_file: _stored.Open = _stored.open_uri,
) -> DataFrame:
    """The results for the messages that `mail` reads, beside `source`, `offset` and `problem`. What
    reads a message classifies it, so that messages do not travel."""
    return _read(
        spark, paths, stretch, most, open_file, schema(ledger=ledger),
        _classifying(_patterns(verp), ledger),
    )


def messages_of_files(
    frame: DataFrame, content: str = "content", path: str = "path", *, most: int = MOST_BYTES
) -> DataFrame:
    """The messages of files whose bytes are in a column, as the format `binaryFile` reads them: a
    message, an mbox, compressed or not. The columns are those of `mail`. `frame` may be a
    stream."""
    return _of_contents(frame, content, path, most, StructType(), lambda batches: batches)


def classify_files(
    frame: DataFrame,
    content: str = "content",
    path: str = "path",
    *,
    verp: Verp = (),
    ledger: bool = False,
    most: int = MOST_BYTES,
) -> DataFrame:
    """The results for the messages that `messages_of_files` finds, beside `source`, `offset` and
    `problem`."""
    return _of_contents(
        frame, content, path, most, schema(ledger=ledger), _classifying(_patterns(verp), ledger)
    )


def _patterns(verp: Verp) -> List[VerpPattern]:
    given = (verp,) if isinstance(verp, (str, VerpPattern)) else verp
    return [VerpPattern(one) if isinstance(one, str) else one for one in given]


def _found(results: StructType) -> StructType:
    """The columns beside the results: of messages themselves where there are none."""
    names = _FOUND if len(results) else _stored.SCHEMA.names
    found = from_arrow_schema(_stored.SCHEMA)
    return StructType([found[name] for name in names] + list(results))


def _classifying(verp: List[VerpPattern], ledger: bool) -> Callable[[_Batches], _Batches]:
    def run(batches: _Batches) -> _Batches:
        return arrow.batches(batches, "message", keep=_FOUND, verp=verp, ledger=ledger)

    return run


def _read(
    spark: SparkSession, paths: Paths, stretch: int, most: int, open_file: _stored.Open,
    results: StructType, then: Callable[[_Batches], _Batches],
) -> DataFrame:
    if stretch < 1:
        raise ValueError(f"stretch has to be 1 or more, not {stretch}")
    most = _stored.checked_most(most)
    files = (
        spark.read.format("binaryFile")
        .option("recursiveFileLookup", "true")
        .load([paths] if isinstance(paths, str) else list(paths))
        .select("path", "length")
        # Spark counts 4 MB for each file that is opened, but none is here.
        .coalesce(_LISTING_TASKS)
    )
    begins = f"explode(sequence(0L, greatest(length - 1, 0L), {stretch}L)) AS begin"
    stretches = files.selectExpr("path", "length", begins)
    size = files.groupBy().sum("length").first()
    tasks = -(-int((size and size[0]) or 1) // stretch)

    def stored(batches: _Batches) -> Iterator[pa.RecordBatch]:
        for batch in batches:
            for row in batch.to_pylist():
                yield from _stored.of_stretch(
                    row["path"], row["begin"], row["begin"] + stretch, row["length"], open_file, most
                )

    def run(batches: _Batches) -> _Batches:
        return then(_stored.together(stored(batches)))

    return stretches.repartition(max(tasks, 1)).mapInArrow(run, _found(results))


def _of_contents(
    frame: DataFrame, content: str, path: str, most: int, results: StructType,
    then: Callable[[_Batches], _Batches],
) -> DataFrame:
    most = _stored.checked_most(most)

    def stored(batches: _Batches) -> Iterator[pa.RecordBatch]:
        for batch in batches:
            for name, value in zip(batch.column(path), batch.column(content)):
                yield from _stored.of_content(name.as_py(), value.as_py(), most)

    def run(batches: _Batches) -> _Batches:
        return then(_stored.together(stored(batches)))

    columns: Any = frame.select(path, content)
    return columns.mapInArrow(run, _found(results))
