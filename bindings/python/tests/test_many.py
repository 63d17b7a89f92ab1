from __future__ import annotations

import itertools
import threading
from pathlib import Path
from typing import Any, Iterator, List

import pytest
from conftest import SAMPLES

from bouncecheck import classify, classify_many

MAILS = [Path(sample).read_bytes() for sample in SAMPLES]


@pytest.mark.parametrize("threads", [None, 1, 2, 7])
def test_results_are_those_of_one_after_the_other(threads: int) -> None:
    mails = MAILS * 5 + [b"x" * 3_000_000] + MAILS
    assert list(classify_many(mails, threads=threads)) == list(map(classify, mails))


def test_callers_in_many_threads() -> None:
    wanted = list(map(classify, MAILS))
    equal: List[bool] = []
    callers = [
        threading.Thread(
            target=lambda: equal.append(list(classify_many(MAILS, threads=2)) == wanted)
        )
        for _ in range(8)
    ]
    for caller in callers:
        caller.start()
    for caller in callers:
        caller.join()
    assert equal == [True] * 8


@pytest.mark.parametrize(
    "size, most", [(100, 2 * 2 * 64), (1 << 20, 2 * 2)], ids=["small messages", "large messages"]
)
def test_no_more_is_read_than_is_asked_for(size: int, most: int) -> None:
    taken = itertools.count()
    results = classify_many((b"x" * size for _ in taken), threads=2, verp="b-{tag}@x.example")
    assert next(taken) == 0  # nothing until a result is asked for
    for _ in range(300 if size == 100 else 10):
        next(results)
    results.close()  # type: ignore[attr-defined]
    assert next(taken) <= (320 if size == 100 else 11) + most
    assert not [t for t in threading.enumerate() if t.name.startswith("bouncecheck")]


def failing() -> Iterator[Any]:
    yield MAILS[0]
    raise KeyError


@pytest.mark.parametrize("threads", [1, 3])
@pytest.mark.parametrize(
    "last, error",
    [
        (lambda: ["no/such/file"], FileNotFoundError),
        (lambda: [None], TypeError),
        (failing, KeyError),
    ],
)
def test_an_error_comes_in_its_turn(threads: int, last: Any, error: Any) -> None:
    results = classify_many(itertools.chain(MAILS, last()), threads=threads)
    for mail in MAILS:
        assert next(results) == classify(mail)
    with pytest.raises(error):
        list(results)
    assert next(results, None) is None
