"""Validates what --format json prints for every sample against docs/result.schema.json.

    validate.py TOOL PROJECT

ends with 77 when Python has no jsonschema (Debian: python3-jsonschema).
"""

import json
import pathlib
import subprocess
import sys

try:
    import jsonschema
except ImportError:
    print("skipped: Python has no jsonschema (Debian: python3-jsonschema)")
    sys.exit(77)

# What no sample has: a tag, and a list.
TAGGED = b"""To: bounces+a=b@own.example
Content-Type: multipart/report; boundary=b

--b
Content-Type: message/delivery-status

Final-Recipient: rfc822; a@x.example
Action: failed
Diagnostic-Code: smtp; 550 \xff\x1b

--b
Content-Type: text/rfc822-headers

List-Id: <x.own.example>

--b--
"""


def results(*arguments, mail=None):
    run = subprocess.run([tool, "--format", "json", *arguments], input=mail, check=True,
                         stdout=subprocess.PIPE)
    return [json.loads(line) for line in run.stdout.splitlines()]


def names_of(option):
    """All names that an option takes, which its complaint lists."""
    complaint = subprocess.run([tool, option, "?"], stderr=subprocess.PIPE, text=True).stderr
    return set(complaint.partition("choose from: ")[2].partition(" (see")[0].split(", "))


def all_keys(value):
    if isinstance(value, list):
        return set().union(*map(all_keys, value))
    return set(value).union(*map(all_keys, value.values())) if isinstance(value, dict) else set()


tool, project = sys.argv[1], pathlib.Path(sys.argv[2])
schema = json.loads((project / "docs/result.schema.json").read_text())
validator = jsonschema.Draft202012Validator(schema)
validator.check_schema(schema)
parts = [schema] + [part for part in schema["$defs"].values() if "properties" in part]
assert schema["$id"].split(":")[-1] == schema["version"].split(".")[0]
assert all(part["additionalProperties"] is False for part in parts)
for option, enum in (("--reason", schema["$defs"]["reason"]),
                     ("--advice", schema["$defs"]["advice"]),
                     ("--only", schema["properties"]["name"])):
    assert names_of(option) == set(enum["enum"]), option

lines = results("--data", "--trace", str(project / "samples"))
assert len(lines) == len(list((project / "samples").glob("*.eml")))
lines += results("--verp", "bounces+{tag}@own.example", mail=TAGGED) + results(mail=b"\n")
problems = [f"{line['source']}: {'/'.join(map(str, error.absolute_path))}: {error.message}"
            for line in lines for error in validator.iter_errors(line)]
described = set().union(*(part["properties"] for part in parts))
problems += [f"no message has the key \"{key}\"" for key in described - all_keys(lines)]
print("\n".join(problems + [f"{len(lines)} lines, {len(problems)} problems"]))
sys.exit(len(problems) > 0)
