"""The verdict on one message, or on many by several threads."""

from __future__ import annotations

import os
from collections import deque
from concurrent.futures import Future, ThreadPoolExecutor
from email.message import Message
from typing import Deque, Iterable, Iterator, List, Optional

from . import _native
from ._inputs import MessageInput, StoredMessage, read
from ._results import Result, result_of
from ._verp import Verp, natives_of

# A batch is what a thread is handed at once: enough that the handing over costs little.
_BATCH_MESSAGES = 64
_BATCH_BYTES = 1 << 20
# How many batches are on their way for each thread, one of them being classified.
_BATCHES_PER_THREAD = 2


def classify(message: MessageInput, *, verp: Verp = (), trace: bool = False) -> Result:
    """What a message means, whom it is about, and why.

    `message` is its bytes (RFC 5322, any line ends), the path of a file that holds it, or an
    `email.message.Message`. Any bytes do: nothing in a message is an error, and time is linear
    in its size.

    `verp` has one or more patterns of the addresses that mail comes back to. `trace` asks for
    the steps to the verdict.

    Raises TypeError for what cannot be a message, ValueError for a bad pattern or a Message
    that the email package cannot write, OSError for a file that cannot be read.
    """
    return _results_of([read(message)], natives_of(verp), trace)[0]


def classify_many(
    messages: Iterable[MessageInput], *, threads: Optional[int] = None, verp: Verp = ()
) -> Iterator[Result]:
    """The results for `messages`, in their order, classified by several threads.

    The threads are as many as the processors that may be used unless `threads` says otherwise;
    other threads of Python run meanwhile. Messages are taken ahead of the results, at most 128
    of them or 2 MiB for each thread (a larger message counts alone), and no more until the
    results are asked for. With one thread each result comes before the next message is taken.

    Raises what `classify` does when the turn of a message comes, and what `messages` raises; the
    results before it have been yielded then, and none follow.
    """
    # Iterable too, but over letters, numbers or the names of fields.
    if isinstance(messages, (str, bytes, bytearray, memoryview, Message)):
        raise TypeError(f"an iterable of messages is needed, not one {type(messages).__name__}")
    if threads is None:
        threads = processors()
    elif threads < 1:
        raise ValueError(f"threads has to be 1 or more, not {threads}")
    patterns = natives_of(verp)
    if threads == 1:
        return (_results_of([read(message)], patterns, False)[0] for message in messages)
    return _in_threads(iter(messages), threads, patterns)


def processors() -> int:
    if hasattr(os, "sched_getaffinity"):
        return len(os.sched_getaffinity(0))
    return os.cpu_count() or 1


def _results_of(
    batch: List[StoredMessage], verp: List[_native.VerpPattern], trace: bool = False
) -> List[Result]:
    rows = _native.classify_all([message.content for message in batch], verp, trace)
    return [
        result_of(row, message.source, message.index) for row, message in zip(rows, batch)
    ]


class _Batches:
    """Messages, a batch at a time. What reading them raises waits for its turn."""

    def __init__(self, messages: Iterator[MessageInput]) -> None:
        self._messages = messages
        self.error: Optional[BaseException] = None

    def next(self) -> List[StoredMessage]:
        """The next batch; [] at the end."""
        batch: List[StoredMessage] = []
        size = 0
        try:
            while self.error is None and len(batch) < _BATCH_MESSAGES and size < _BATCH_BYTES:
                batch.append(read(next(self._messages)))
                size += len(batch[-1].content)
        except StopIteration:
            pass
        except Exception as error:
            self.error = error
        return batch


def _in_threads(
    messages: Iterator[MessageInput], threads: int, verp: List[_native.VerpPattern]
) -> Iterator[Result]:
    batches = _Batches(messages)
    pending: Deque[Future[List[Result]]] = deque()
    executor = ThreadPoolExecutor(threads, thread_name_prefix="bouncecheck")
    try:
        while True:
            while len(pending) < _BATCHES_PER_THREAD * threads:
                batch = batches.next()
                if not batch:
                    break
                pending.append(executor.submit(_results_of, batch, verp))
            if not pending:
                break
            yield from pending.popleft().result()
        if batches.error is not None:
            raise batches.error
    finally:
        executor.shutdown(cancel_futures=True)
