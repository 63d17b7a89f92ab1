"""What the tool prints of mail, and whether the rows of a table say the same."""

from __future__ import annotations

import json
import pathlib
import subprocess
from typing import Any, Dict, Iterator, List, Tuple

import bouncecheck.arrow
from bouncecheck import _stored
from bouncecheck._mailbox import MOST_BYTES

from driver import Failed

Place = Tuple[str, int]
RECIPIENT = (
    "address", "final_address", "tag", "outcome", "reason", "advice", "status", "reply_code",
    "diagnostic", "remote_mta", "last_attempt", "will_retry_until", "evidence",
)


class Expected:
    """The results of the tool for each message of a folder: by file and offset, and by digest."""

    def __init__(self, tool: str, folder: pathlib.Path) -> None:
        self.by_place: Dict[Place, str] = {}
        self.by_digest: Dict[str, str] = {}
        places = _places(folder)
        command = [tool, "--format", "json", str(folder)]
        with subprocess.Popen(command, stdout=subprocess.PIPE) as printing:
            assert printing.stdout is not None
            for line in printing.stdout:
                message = json.loads(line)
                offset, digest = places[message["source"]][message["index"] - 1]
                result = _of_tool(message)
                self.by_place[message["source"], offset] = result
                self.by_digest[digest] = result

    def compare_by_place(self, rows: Iterator[Dict[str, Any]]) -> str:
        """Each message that was read, with each of its recipients."""
        return _compare(self.by_place, _results(rows, by_digest=False))

    def compare_by_digest(self, rows: Iterator[Dict[str, Any]]) -> str:
        """Each message once, though copies were read."""
        return _compare(self.by_digest, _results(rows, by_digest=True))


def _places(folder: pathlib.Path) -> Dict[str, List[Tuple[int, str]]]:
    """The offsets and digests of the messages of each file, in their order."""
    places: Dict[str, List[Tuple[int, str]]] = {}
    for path in folder.rglob("*"):
        if not path.is_file():
            continue
        with path.open("rb") as file:
            found = _stored.together(_stored.of_file(str(path), file, MOST_BYTES))
            for batch in bouncecheck.arrow.batches(
                found, "message", keep=("offset", "problem"), ledger=True
            ):
                for offset, problem, who in zip(*map(batch.column, ("offset", "problem", "ledger"))):
                    if not problem.is_valid:
                        digest = who["digest"].as_py().hex()
                        places.setdefault(str(path), []).append((offset.as_py(), digest))
    return places


def _of_tool(message: Dict[str, Any]) -> str:
    message["report"].pop("fields", None)
    return json.dumps(
        [message["type"], message["name"], message["label"], message["address"],
         message["recipients"], message["report"], message["returned"]],
        sort_keys=True,
    )


def _results(rows: Iterator[Dict[str, Any]], by_digest: bool) -> Iterator[Tuple[Any, str]]:
    """The messages that rows of a table are about, in the form of the tool."""
    messages: Dict[Any, List[Dict[str, Any]]] = {}
    for row in rows:
        place = (row["source"], row["offset"])
        messages.setdefault((place, row["digest"]), []).append(row)
    for (place, digest), about in messages.items():
        about.sort(key=lambda row: row.get("position", -1))
        if [row.get("position") for row in about] not in ([None], list(range(len(about)))):
            raise Failed(f"{place} has a recipient twice, or lacks one")
        one = about[0]
        recipients = [
            {name: row[name] for name in RECIPIENT if name in row}
            for row in about if "position" in row
        ]
        report = {"reporting_mta": one["reporting_mta"]} if "reporting_mta" in one else {}
        result = [one["type"], one["verdict"], one.get("rule"), one["verdict_address"], recipients,
                  report, one.get("returned", {})]
        yield digest if by_digest else place, json.dumps(result, sort_keys=True)


def _compare(expected: Dict[Any, str], found: Iterator[Tuple[Any, str]]) -> str:
    missing = set(expected)
    for key, result in found:
        if key not in missing:
            raise Failed(f"{key} is there twice" if key in expected else f"{key} is not of the mail")
        missing.remove(key)
        if result != expected[key]:
            raise Failed(f"{key} differs:\n  {result}\n  {expected[key]}")
    if missing:
        raise Failed(f"{len(missing)} messages are lost, such as {min(missing)}")
    return f"{len(expected)} messages"
