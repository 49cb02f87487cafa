"""The tables are those of the programs."""
import io
import subprocess

import pandas
import pytest
from conftest import BULLETINS, REPORTS, program

import corvane

TEXTS = ["source", "heading", "form", "part", "station", "launch", "mends", "doubt", "type", "status", "message",
         "parts", "kinds"]
NANS = {"wdir": ["", "nan", "-nan"], "wspd": ["", "nan", "-nan"]}


def read_csv(text):
    """As users do, except that a call sign NA is a call sign."""
    columns = text.split("\n", 1)[0].split(",")
    types = {name: object for name in TEXTS if name in columns}
    missing = {name: [""] if name in types else ["", "nan", "-nan"] for name in columns}
    return pandas.read_csv(io.StringIO(text), dtype=types, keep_default_na=False, na_values=missing)


def assert_same(frame, table):
    assert list(frame.columns) == list(table.columns)
    frame = frame.astype({name: float for name in frame.columns if frame[name].dtype != object})
    table = table.astype({name: float for name in table.columns if name not in TEXTS})
    pandas.testing.assert_frame_equal(frame, table, check_exact=True, check_index_type=len(table) > 0)


@pytest.mark.parametrize("path", REPORTS, ids=lambda path: path.name)
def test_report(path):
    run = subprocess.run([program("corvane"), path], capture_output=True, text=True)
    try:
        report = corvane.decode(path.read_text())
    except corvane.CodingFault as fault:
        assert run.returncode != 0 and run.stdout == ""
        assert fault.message == run.stderr.rstrip("\n")
    else:
        assert run.returncode == 0
        assert_same(report.to_pandas(), read_csv(run.stdout))


@pytest.mark.filterwarnings("ignore::corvane.RefusedWarning", "ignore::corvane.NoPartWarning")
@pytest.mark.parametrize("mends", [True, False])
@pytest.mark.parametrize("path", BULLETINS, ids=lambda path: path.name)
def test_bulletins(path, mends, tmp_path):
    parts = tmp_path / "parts.csv"
    options = [] if mends else ["--no-mends"]
    run = subprocess.run([program("corvane-feed"), "--quiet", "--parts", parts, *options, path],
                         capture_output=True, text=True)
    frame = corvane.read_feed(str(path), mends=mends)
    assert_same(frame, read_csv(run.stdout))
    assert_same(frame.attrs["parts"].copy(), read_csv(parts.read_text()))


@pytest.mark.filterwarnings("ignore::corvane.RefusedWarning", "ignore::corvane.NoPartWarning")
def test_bulletins_through_a_pipe():
    path = max(BULLETINS, key=lambda path: path.stat().st_size)
    run = subprocess.run([program("corvane-feed"), "--quiet"], input=path.read_bytes(), capture_output=True)
    assert_same(corvane.read_feed(path.read_bytes()), read_csv(run.stdout.decode()))


@pytest.mark.filterwarnings("ignore::corvane.RefusedWarning", "ignore::corvane.NoPartWarning")
@pytest.mark.parametrize("path", BULLETINS, ids=lambda path: path.name)
def test_soundings(path):
    run = subprocess.run([program("corvane-feed"), "--quiet", "--soundings", path], capture_output=True, text=True)
    table = read_csv(run.stdout)
    names = ["kinds", "doubt", "pres", "height", "height_computed", "tdry", "dp", "wspd", "wdir"]
    rows = [
        (level.kinds, level.doubt or None, level.pressure, level.height,
         None if level.height is None else float(level.height_computed),
         level.temperature, level.dewpoint, level.speed, level.direction)
        for sounding in corvane.soundings(path) for level in sounding.levels
    ]
    frame = pandas.DataFrame(rows, columns=names).astype({name: float for name in names[2:]})
    frame["doubt"] = frame["doubt"].fillna(float("nan")).astype(object)
    assert_same(frame, table[names])


@pytest.mark.filterwarnings("ignore::corvane.RefusedWarning", "ignore::corvane.NoPartWarning")
@pytest.mark.parametrize("path", BULLETINS, ids=lambda path: path.name)
def test_indices(path):
    run = subprocess.run([program("corvane-skewt"), "--indices", path], capture_output=True, text=True)
    table = read_csv(run.stdout)
    soundings = corvane.soundings(path)
    assert list(table["levels"]) == [len(sounding) for sounding in soundings]
    frame = pandas.DataFrame([sounding.indices() for sounding in soundings], columns=table.columns[5:], dtype=float)
    assert_same(frame, table[table.columns[5:]])


@pytest.mark.filterwarnings("ignore::corvane.RefusedWarning", "ignore::corvane.NoPartWarning")
def test_picture(tmp_path):
    path = next(path for path in BULLETINS if path.name.startswith("us-"))
    sounding = corvane.soundings(path)[0]
    run = subprocess.run([program("corvane-skewt"), path, "--station", sounding.station, "--units", "mps", "--dark"],
                         capture_output=True, text=True, encoding="utf-8")
    assert sounding.skewt(units="mps", dark=True) == run.stdout
