"""What docs/python.md shows is what happens."""

from __future__ import annotations

import doctest
import os
import re
import subprocess
import sys
from pathlib import Path
from typing import List

PAGE = Path("docs/python.md").read_text(encoding="utf-8")


def blocks(language: str) -> List[str]:
    found = re.findall(rf"^```{language}\n(.*?)^```$", PAGE, re.MULTILINE | re.DOTALL)
    assert found
    return found


def test_sessions() -> None:
    session = "".join(blocks("pycon"))
    test = doctest.DocTestParser().get_doctest(session, {}, "docs/python.md", None, None)
    runner = doctest.DocTestRunner(verbose=False)
    printed: List[str] = []
    runner.run(test, out=printed.append)
    assert not runner.failures, "".join(printed)


def test_commands() -> None:
    path = os.pathsep.join((os.path.dirname(sys.executable), os.environ["PATH"]))
    for block in blocks("console"):
        command, _, shown = block.partition("\n")
        printed = subprocess.run(
            ["sh", "-c", command[2:]],
            env={**os.environ, "PATH": path},
            stdout=subprocess.PIPE,
            check=True,
        ).stdout
        assert printed.decode() == shown
