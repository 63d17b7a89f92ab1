"""Results as columns are those of `classify`, whatever the columns of messages are like."""

from __future__ import annotations

import json
import sqlite3
import subprocess
import sys
from pathlib import Path
from typing import Any, Dict, List, Optional

import pytest
from conftest import SAMPLES
from test_golden import HOSTILE, damaged

from bouncecheck import classify

pa = pytest.importorskip("pyarrow")
from bouncecheck import _native, arrow  # noqa: E402

MAILS = [Path(sample).read_bytes() for sample in SAMPLES]
VERP = "bounces-{tag}@own.example"
TAGGED = b"To: Bounces-x=1@own.example\nSubject: failure\n\n550 User unknown\n"


def wanted(mail: Optional[bytes]) -> Dict[str, Any]:
    """The row for a message, without what is null."""
    if mail is None:
        return {}
    row = classify(mail, verp=VERP).asdict()
    row = {"type": row.pop("type"), "verdict": row.pop("name"), "rule": row.pop("label"), **row}
    return {name: value for name, value in row.items() if name not in ("source", "index")}


def known(value: Any) -> Any:
    if isinstance(value, dict):
        return {name: known(member) for name, member in value.items() if member is not None}
    return [known(item) for item in value] if isinstance(value, list) else value


def rows(data: Any, **options: Any) -> List[Dict[str, Any]]:
    table = arrow.classify(data, "mail", verp=VERP, **{"keep": [], **options})
    table.validate(full=True)
    return [known(row) for row in table.to_pylist()]


def test_results_are_those_of_classify() -> None:
    mails = [*MAILS, TAGGED, None, *HOSTILE.values(), *map(damaged, range(40)), None]
    expected = [known(wanted(mail)) for mail in mails]
    assert rows(pa.array(mails)) == expected
    assert rows(pa.array(mails), threads=1) == expected


@pytest.mark.parametrize(
    "kind", ["binary", "large_binary", "binary_view", "string", "large_string", "string_view"]
)
def test_each_type_of_column(kind: str) -> None:
    mails = [mail.decode() for mail in MAILS if mail.isascii()] + [None, "", "Subject:\n\n"]
    if not hasattr(pa, kind):
        pytest.skip(f"this PyArrow has no {kind}")
    column = pa.array(mails, getattr(pa, kind)())
    expected = [known(wanted(None if mail is None else mail.encode())) for mail in mails]
    assert rows(column) == expected
    # Where rows begin behind others.
    assert rows(column.slice(7, 100)) == expected[7:107]
    assert rows(column.slice(len(mails) - 3)) == expected[-3:]


@pytest.mark.parametrize(
    "mails",
    [
        pa.array([], pa.binary()),
        pa.array([None] * 9),
        pa.array([None] * 9, pa.binary()),
        pa.chunked_array([[b"x"], [], [None, b"Subject: failure\n\nno such user"]], pa.binary()),
        pa.chunked_array([], pa.binary()),
        pa.array([MAILS[0], None, MAILS[0]]).dictionary_encode(),
    ],
    ids=["empty", "no type", "all null", "chunks", "no chunks", "dictionary"],
)
def test_odd_columns(mails: Any) -> None:
    assert rows(mails) == [known(wanted(mail)) for mail in mails.to_pylist()]


@pytest.mark.parametrize("mails", [pa.array(MAILS[:3]), pa.array(MAILS[:3]).dictionary_encode()])
def test_columns_stand_beside_what_is_there(mails: Any) -> None:
    table = pa.table({"n": range(3), "mail": mails, "type_": ["a", None, "c"]})
    names = arrow.schema().names
    found = arrow.classify(table, "mail")
    assert found.column_names == ["n", "mail", "type_", *names]
    assert found.select(table.column_names).equals(table)
    assert arrow.classify(table, "mail", keep=["type_"]).column_names == ["type_", *names]
    batches = list(arrow.batches(table.to_batches(), "mail", keep=["n"]))
    assert pa.Table.from_batches(batches).equals(arrow.classify(table, "mail", keep=["n"]))


def test_large_results_come_in_pieces(monkeypatch: pytest.MonkeyPatch) -> None:
    monkeypatch.setattr(arrow, "_MOST_TEXT", 1000)
    for mails in (pa.array(MAILS), pa.array(MAILS).dictionary_encode()):
        (batch,) = pa.table({"n": range(len(MAILS)), "mail": mails}).to_batches()
        pieces = list(arrow.batches([batch], "mail"))
        assert len(pieces) > 10
        assert pa.Table.from_batches(pieces).equals(arrow.classify(batch, "mail"))


@pytest.mark.parametrize(
    "data, options, error, words",
    [
        (pa.table({"mail": [1]}), {}, TypeError, "int64"),
        (pa.table({"x": [b""]}), {}, KeyError, "no column 'mail'"),
        (pa.table({"mail": [b""], "rule": [1]}), {"keep": None}, ValueError, "'rule'"),
        (pa.table({"mail": [b""]}), {"keep": ["x"]}, KeyError, "x"),
        (pa.table({"mail": [b""]}), {"threads": 0}, ValueError, "1 or more"),
    ],
)
def test_wrong_arguments(data: Any, options: Any, error: Any, words: str) -> None:
    with pytest.raises(error, match=words):
        rows(data, **options)


def test_released_data_are_refused() -> None:
    types, column = pa.array([b"x"]).__arrow_c_array__()
    pa.Array._import_from_c_capsule(types, column)
    with pytest.raises(ValueError, match="released"):
        _native.classify_arrow(types, column, [], False, 1)


def shape(schema: Dict[str, Any], definitions: Dict[str, Any]) -> Any:
    """The type of a key in the schema of JSON: names with types, and whether each is required."""
    if "$ref" in schema:
        return shape(definitions[schema["$ref"].rpartition("/")[2]], definitions)
    if schema.get("type") == "array":
        return [shape(schema["items"], definitions)]
    if schema.get("type") == "object":
        return {
            name: (shape(member, definitions), name in schema.get("required", []))
            for name, member in schema["properties"].items()
        }
    numbers = schema.get("type") == "integer" or type(schema.get("enum", [""])[0]) is int
    return "number" if numbers else "text"


def arrow_shape(kind: Any) -> Any:
    if pa.types.is_list(kind):
        return [arrow_shape(kind.value_type)]
    if pa.types.is_struct(kind):
        return {
            field.name: (arrow_shape(field.type), not field.nullable)
            for field in (kind.field(i) for i in range(kind.num_fields))
        }
    return "number" if pa.types.is_integer(kind) else "text"


def test_schema_is_that_of_json() -> None:
    document = json.loads(Path("docs/result.schema.json").read_text(encoding="utf-8"))
    names = {"name": "verdict", "label": "rule"}
    # Where a message was read is the caller's; the rest is asked for by options of the tool.
    elsewhere = ("source", "index", "data", "trace")
    json_columns = {
        names.get(name, name): kind
        for name, (kind, _) in shape(document, document["$defs"]).items()
        if name not in elsewhere
    }
    columns = {field.name: arrow_shape(field.type) for field in arrow.schema()}
    assert list(columns) == list(json_columns) and columns == json_columns


def test_ledger_column_is_what_a_ledger_has(tool_path: str, tmp_path: Path) -> None:
    folder = tmp_path / "mail"
    folder.mkdir()
    copies = [mail.replace(b"\r", b"").replace(b"\n", b"\r\n") for mail in MAILS[:9]]
    undated = [b"Subject: x\n\ny\n", b"Subject: x\n\n>From a\n", b"\xef\xbb\xbf\r\n\r\nFrom x\nA: b\n"]
    long = [b"Message-ID: <%d>\n\n" % size + b"x" * size for size in range(50, 130)]
    for number, mail in enumerate([*MAILS, *copies, *undated, *long]):
        (folder / f"{number:04}.eml").write_bytes(mail)
    subprocess.run([tool_path, "scan", "--ledger", tmp_path / "db", folder], check=True)
    database = sqlite3.connect(tmp_path / "db")
    found = {}
    mails = [path.read_bytes() for path in sorted(folder.iterdir())]
    column = arrow.classify(pa.array(mails), ledger=True).select(["ledger", "recipients"])
    for row in column.to_pylist():
        who = row["ledger"]
        mailboxes = [
            (recipient["address"].lower(), mailbox)
            for recipient, mailbox in zip(row["recipients"], who["is_mailbox"])
            if recipient["address"]
        ]
        date = who["date"] and int(who["date"].timestamp())
        found[who["digest"]] = (date, who["message_id"], sorted(mailboxes))
    stored = {}
    for number, digest, seen, recorded, message_id in database.execute(
        "SELECT id, digest, seen, recorded, message_id FROM messages"
    ):
        addresses = database.execute(
            "SELECT key, is_mailbox FROM events e JOIN addresses a ON a.id = address "
            "WHERE message = ?", (number,),
        )
        mailboxes = sorted((key, bool(mailbox)) for key, mailbox in addresses)
        stored[digest] = (None if seen == recorded else seen, message_id, mailboxes)
    assert len(stored) == len(MAILS) + len(undated) + len(long)
    assert found == stored


def test_as_a_program() -> None:
    mails = pa.array([TAGGED, *MAILS])
    table = pa.table({"n": range(len(mails)), "mail": mails})
    sink = pa.BufferOutputStream()
    with pa.ipc.new_stream(sink, table.schema) as stream:
        stream.write_table(table, max_chunksize=50)
    command = [sys.executable, "-m", "bouncecheck.arrow", "--message", "mail", "--keep", "n"]
    command += ["--verp", VERP]
    done = subprocess.run(command, input=sink.getvalue(), stdout=subprocess.PIPE, check=True)
    found = pa.ipc.open_stream(done.stdout).read_all()
    assert found.equals(arrow.classify(table, "mail", keep=["n"], verp=VERP))
    assert found["recipients"][0][0]["tag"].as_py() == "x=1"
    for given in (b"", b"no stream", sink.getvalue().to_pybytes()[:3000]):
        run = subprocess.run(command, input=given, stdout=subprocess.PIPE, stderr=subprocess.PIPE)
        assert (run.returncode, run.stderr.count(b"\n")) == (1, 1)


def by_polars() -> Any:
    return pytest.importorskip("polars").DataFrame({"mail": MAILS})


def by_duckdb() -> Any:
    mails = by_pandas()
    assert len(mails)
    return pytest.importorskip("duckdb").sql("SELECT mail FROM mails")


def by_pandas() -> Any:
    return pytest.importorskip("pandas").DataFrame({"mail": MAILS})


@pytest.mark.parametrize("frame", [by_polars, by_duckdb, by_pandas])
def test_other_frames(frame: Any) -> None:
    assert rows(frame()) == [known(wanted(mail)) for mail in MAILS]


def test_other_frames_read_the_results() -> None:
    results = arrow.classify(pa.array(MAILS))
    hard = sum(classify(mail).name == "hard" for mail in MAILS)
    polars, duckdb = pytest.importorskip("polars"), pytest.importorskip("duckdb")
    frame = polars.from_arrow(results)
    assert frame.filter(polars.col("verdict") == "hard").height == hard
    sql = "SELECT count(*) FROM (SELECT unnest(recipients) r FROM results) WHERE r.advice = 'suppress'"
    suppressed = frame.explode("recipients").unnest("recipients", separator=".")
    (count,) = duckdb.sql(sql).fetchall()[0]
    assert count == suppressed.filter(polars.col("recipients.advice") == "suppress").height > 0
    assert (results.to_pandas()["verdict"] == "hard").sum() == hard
