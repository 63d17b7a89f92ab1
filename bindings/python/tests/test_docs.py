"""What docs/python.md and docs/scale.md show is what happens."""

from __future__ import annotations

import doctest
import os
import re
import subprocess
import sys
from pathlib import Path
from typing import List

import pytest

def blocks(language: str, page: str = "python") -> List[str]:
    text = Path(f"docs/{page}.md").read_text(encoding="utf-8")
    found = re.findall(rf"^```{language}\n(.*?)^```$", text, re.MULTILINE | re.DOTALL)
    assert found
    return found


@pytest.mark.parametrize("page", ["python", "scale"])
def test_sessions(page: str) -> None:
    if page == "scale":
        pytest.importorskip("pyarrow")
    session = "".join(blocks("pycon", page))
    test = doctest.DocTestParser().get_doctest(session, {}, f"docs/{page}.md", None, None)
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
