"""Where the samples and the programs are."""
import os
import pathlib

import pytest

ROOT = pathlib.Path(__file__).resolve().parents[2]
REPORTS = sorted([*ROOT.glob("tests/reports/*.txt"), *ROOT.glob("examples/reports/*.txt")])
BULLETINS = sorted([*ROOT.glob("tests/feed/bulletins/*.txt"), *ROOT.glob("tests/sounding/data/*.txt")])
DAY = ROOT / "tests" / "sounding" / "data" / "us-2022-07-13.txt"
assert REPORTS and BULLETINS

REPORT = "TTAA 56001 72201 99014 32259 11504 00140 30057 11506 88999 77999"


def program(name):
    """A program that the tests compare with, built by scripts/check-python or named by hand."""
    folder = os.environ.get("CORVANE_PROGRAMS")
    if not folder:
        pytest.skip("CORVANE_PROGRAMS does not name the folder of the programs")
    return str(pathlib.Path(folder) / name)
