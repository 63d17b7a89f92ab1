"""Results as columns of Arrow, for PyArrow, Polars, DuckDB, pandas and whatever else reads them.

    >>> import bouncecheck.arrow
    >>> bouncecheck.arrow.classify(table, message="mail")

As a program it does the same between two pipes: `python -m bouncecheck.arrow` reads record batches
in the streaming format of Arrow and writes those of the results.

Needs PyArrow, which `pip install bouncecheck[arrow]` brings.
"""

from __future__ import annotations

import argparse
import sys
from concurrent.futures import ThreadPoolExecutor
from typing import Any, Iterable, Iterator, List, Optional, Sequence, Tuple

import pyarrow as pa

from . import _native
from ._classify import processors
from ._stored import Exported
from ._verp import Verp, add_verp_option, natives_of

__all__ = ["batches", "classify", "schema"]

# A column of Arrow's strings has less than 2 GiB. Results of one message stay far below the rest.
_MOST_TEXT = 1 << 28
# What a thread is handed at once.
_ROWS_PER_THREAD = 1024

_MESSAGE_TYPES = (
    "binary", "large_binary", "string", "large_string", "binary_view", "string_view", "null",
)


def schema(*, ledger: bool = False) -> pa.Schema:
    """The columns of results."""
    return _results_of(pa.nulls(0), [], ledger).schema


def classify(
    data: Any,
    message: str = "value",
    *,
    keep: Optional[Iterable[str]] = None,
    verp: Verp = (),
    ledger: bool = False,
    threads: Optional[int] = None,
) -> pa.Table:
    """A table with the columns of `data` and those of the results, a row for each of its rows.

    `data` is anything that exports Arrow: a table or record batch of PyArrow, a data frame of
    Polars or pandas, a relation of DuckDB; or a column of messages alone. `message` names the
    column that has the bytes of a message in each row, as any type of binary or string, or as a
    dictionary of them. Where it is null, so are the results. `keep` names the columns of `data`
    that the table has, too; by default all.

    The columns are those of docs/result.schema.json, `name` being `verdict` and `label` being
    `rule`; texts that JSON leaves out are null. With `ledger` there is one more, which docs/scale.md
    describes. `verp` and `threads` are as in `bouncecheck.classify_many`.

    Raises KeyError for a column that is not there, TypeError for one that cannot hold messages,
    ValueError for one that has the name of a result.
    """
    if threads is not None and threads < 1:
        raise ValueError(f"threads has to be 1 or more, not {threads}")
    table = _table_of(data, message)
    names = None if keep is None else list(keep)
    if isinstance(data, (pa.Array, pa.ChunkedArray)) and keep is None:
        names = []
    wanted = joined(table.schema, message, names, ledger)
    patterns = natives_of(verp)
    pieces = table.to_batches(max_chunksize=_ROWS_PER_THREAD)
    done = _in_threads(pieces, threads or processors(), message, patterns, ledger)
    return pa.Table.from_batches(
        [_beside(batch, results, names, wanted) for batch, results in done], wanted
    )


def batches(
    data: Iterable[pa.RecordBatch],
    message: str = "value",
    *,
    keep: Optional[Iterable[str]] = None,
    verp: Verp = (),
    ledger: bool = False,
) -> Iterator[pa.RecordBatch]:
    """The same for record batches, one after the other, in this thread. A batch whose results are
    too large for one column comes as several."""
    patterns = natives_of(verp)
    names = None if keep is None else list(keep)
    for batch in data:
        wanted = joined(batch.schema, message, names, ledger)
        for piece, results in _pieces(batch, message, patterns, ledger):
            yield _beside(piece, results, names, wanted)


def joined(
    given: pa.Schema, message: str, keep: Optional[Sequence[str]], ledger: bool
) -> pa.Schema:
    """The columns that `classify` makes of those that are `given`."""
    held = given.field(message).type
    values = held.value_type if pa.types.is_dictionary(held) else held
    if not any(getattr(pa.types, f"is_{name}", _never)(values) for name in _MESSAGE_TYPES):
        raise TypeError(f"the column {message!r} holds {held}, not messages as binary")
    kept = list(given) if keep is None else [given.field(name) for name in keep]
    made = schema(ledger=ledger)
    for field in kept:
        if field.name in made.names:
            raise ValueError(f"the column {field.name!r} is one of the results: rename it")
    return pa.schema([*kept, *made])


def _never(_: pa.DataType) -> bool:
    return False


def _table_of(data: Any, message: str) -> pa.Table:
    if isinstance(data, pa.RecordBatch):
        table = pa.Table.from_batches([data])
    elif isinstance(data, (pa.Array, pa.ChunkedArray)):
        table = pa.table({message: data})
    elif isinstance(data, pa.Table):
        table = data
    else:
        table = pa.table(data)
    if table.schema.get_field_index(message) < 0:
        raise KeyError(f"there is no column {message!r}, or more than one")
    return table


def _results_of(
    messages: pa.Array, patterns: List[_native.VerpPattern], ledger: bool
) -> pa.RecordBatch:
    """The results for all messages, or the first of them, if those are large."""
    types, rows = messages.__arrow_c_array__()
    made = _native.classify_arrow(types, rows, patterns, ledger, _MOST_TEXT)
    return pa.record_batch(Exported(made))


_Piece = Tuple[pa.RecordBatch, pa.RecordBatch]


def _pieces(
    batch: pa.RecordBatch, message: str, patterns: List[_native.VerpPattern], ledger: bool
) -> Iterator[_Piece]:
    messages = batch.column(message)
    if pa.types.is_dictionary(messages.type):
        messages = messages.cast(messages.type.value_type)
    while batch.num_rows:
        results = _results_of(messages, patterns, ledger)
        yield batch.slice(0, results.num_rows), results
        batch = batch.slice(results.num_rows)
        messages = messages.slice(results.num_rows)


def _beside(
    batch: pa.RecordBatch, results: pa.RecordBatch, keep: Optional[List[str]], wanted: pa.Schema
) -> pa.RecordBatch:
    kept = batch.columns if keep is None else [batch.column(name) for name in keep]
    return pa.RecordBatch.from_arrays([*kept, *results.columns], schema=wanted)


def _in_threads(
    given: Iterable[pa.RecordBatch], threads: int, message: str,
    patterns: List[_native.VerpPattern], ledger: bool,
) -> Iterator[_Piece]:
    def classified(batch: pa.RecordBatch) -> List[_Piece]:
        return list(_pieces(batch, message, patterns, ledger))

    if threads == 1:
        for batch in given:
            yield from classified(batch)
        return
    with ThreadPoolExecutor(threads, thread_name_prefix="bouncecheck") as executor:
        for pieces in executor.map(classified, given):
            yield from pieces


def main(arguments: Optional[List[str]] = None) -> int:
    parser = argparse.ArgumentParser(
        "python -m bouncecheck.arrow",
        description="Reads record batches with a column of messages on standard input, in the "
        "streaming format of Arrow, and writes them with the columns of the results.",
    )
    parser.add_argument("--message", default="value", help="the column of messages [value]")
    parser.add_argument(
        "--keep", default=None, type=lambda names: [name for name in names.split(",") if name],
        help="the columns to write besides, with commas between [all]",
    )
    parser.add_argument("--ledger", action="store_true", help="add the column ledger")
    add_verp_option(parser)
    options = parser.parse_args(arguments)
    try:
        with pa.ipc.open_stream(sys.stdin.buffer) as given:
            wanted = joined(given.schema, options.message, options.keep, options.ledger)
            with pa.ipc.new_stream(sys.stdout.buffer, wanted) as out:
                for batch in batches(
                    given, options.message, keep=options.keep, verp=options.verp,
                    ledger=options.ledger,
                ):
                    out.write_batch(batch)
                    sys.stdout.buffer.flush()
    except (OSError, KeyError, TypeError, ValueError) as error:
        print(f"bouncecheck: {' '.join(str(error).split())}", file=sys.stderr)
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
