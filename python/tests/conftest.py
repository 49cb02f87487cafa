"""Where the samples and the programs are."""
import os
import pathlib

import pytest

ROOT = pathlib.Path(__file__).resolve().parents[2]
REPORTS = sorted([*ROOT.glob("tests/reports/*.txt"), *ROOT.glob("examples/reports/*.txt")])
BULLETINS = sorted(path for folder in ("tests/feed/bulletins", "tests/sounding/data", "examples/bulletins")
                   for path in ROOT.glob(f"{folder}/*.txt"))
DAY = ROOT / "examples" / "bulletins" / "us-2022-07-13.txt"
assert REPORTS and DAY in BULLETINS

REPORT = "TTAA 56001 72201 99014 32259 11504 00140 30057 11506 88999 77999"


def program(name):
    """A program that the tests compare with, built by scripts/check-python or named by hand."""
    folder = os.environ.get("CORVANE_PROGRAMS")
    if not folder:
        pytest.skip("CORVANE_PROGRAMS does not name the folder of the programs")
    return str(pathlib.Path(folder) / name)
