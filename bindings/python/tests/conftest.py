from __future__ import annotations

import json
import os
import subprocess
from pathlib import Path
from typing import Any, Callable, Dict, List

import pytest

ROOT = Path(__file__).resolve().parents[3]
# Samples are named as the tool would name them there.
os.chdir(ROOT)
SAMPLES = sorted(map(str, Path("samples").glob("*.eml")))

Tool = Callable[..., List[Dict[str, Any]]]


def pytest_addoption(parser: pytest.Parser) -> None:
    parser.addoption("--tool", help="the path of the command-line tool, to compare with")


@pytest.fixture(scope="session")
def tool_path(request: pytest.FixtureRequest) -> str:
    path = request.config.getoption("--tool")
    if not path or not os.access(path, os.X_OK):
        pytest.skip("The tool is not built; --tool gives its path")
    return str(path)


@pytest.fixture(scope="session")
def tool(tool_path: str) -> Tool:
    """What the tool prints as JSON for its arguments."""

    def run(*arguments: str, mail: bytes = b"") -> List[Dict[str, Any]]:
        command = [tool_path, "--format", "json", *arguments]
        printed = subprocess.run(command, input=mail, stdout=subprocess.PIPE, check=True).stdout
        return [json.loads(line) for line in printed.splitlines()]

    return run
