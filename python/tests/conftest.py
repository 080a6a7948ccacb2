"""What the tests share. PLXUTILS_LIBRARY names the library; whole conversions also need the programs PLXCONVERT
and VALLEY_SOLVER and are skipped without them."""

import os
import shutil
import subprocess
from pathlib import Path

import pytest

EXAMPLES = Path(__file__).resolve().parents[2] / "examples"


def run_program(variable, *arguments):
    if variable not in os.environ:
        pytest.skip(f"{variable} is not set")
    subprocess.run([os.environ[variable], *map(str, arguments)], check=True, stdout=subprocess.DEVNULL)


@pytest.fixture(scope="session")
def quarry(tmp_path_factory):
    """The example project, in a folder of its own."""
    return Path(shutil.copytree(EXAMPLES / "quarry", tmp_path_factory.mktemp("Room") / "Quarry"))


@pytest.fixture(scope="session")
def valley(tmp_path_factory):
    """The example model with its results."""
    folder = Path(shutil.copytree(EXAMPLES / "valley", tmp_path_factory.mktemp("room") / "valley"))
    run_program("VALLEY_SOLVER", folder)
    return folder
