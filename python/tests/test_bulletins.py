"""Bulletins: read_feed, soundings, and what is made of a sounding."""
import copy
import datetime as dt
import gzip
import io
import math
import os
import pathlib
import pickle
import re
import shlex
import subprocess
import sys
import threading
import warnings
from concurrent.futures import ThreadPoolExecutor
from xml.etree import ElementTree

import numpy
import pandas
import pytest
import xarray
from conftest import BULLETINS, DAY, REPORT, ROOT
from hypothesis import given, settings
from hypothesis import strategies as st

import corvane

BULLETIN = (
    "USUS50 KWBC 130000 RRA\n"
    f"{REPORT}=\n"
    "TTAA 56001 72202 NIL=\n"
    "TTAA 5600 7220=\n"  # neither a date group nor a station
    "TTAA 56001 72203 990 32259 11504=\n"
)

pytestmark = pytest.mark.filterwarnings("ignore::corvane.RefusedWarning", "ignore::corvane.NoPartWarning")


# ---- inputs ---------------------------------------------------------------------------------------------------------


def test_every_kind_of_input_gives_the_same_rows(tmp_path, monkeypatch):
    plain = tmp_path / "a file.txt"
    plain.write_text(BULLETIN)
    content = gzip.compress(BULLETIN.encode())
    packed = tmp_path / "a file.txt.gz"
    packed.write_bytes(content)
    unnamed = tmp_path / "packed"
    unnamed.write_bytes(content)
    misnamed = tmp_path / "plain.gz"
    misnamed.write_text(BULLETIN)
    monkeypatch.setattr(sys, "stdin", io.TextIOWrapper(io.BytesIO(BULLETIN.encode())))
    expected = corvane.read_feed(BULLETIN.encode())
    assert list(expected["source"].unique()) == ["-:2"]

    class Drip(io.BytesIO):
        def read(self, size=-1):
            return super().read(1)

    with open(plain, "rb") as binary, open(plain, encoding="utf-8") as text, open(unnamed, "rb") as binary_packed:
        inputs = {
            str(plain): [str(plain), plain, binary, text],
            str(packed): [str(packed), packed],
            str(unnamed): [str(unnamed), binary_packed],
            str(misnamed): [misnamed],
            "-": ["-", io.BytesIO(BULLETIN.encode()), io.StringIO(BULLETIN), bytearray(BULLETIN.encode()),
                  content, memoryview(content), io.BytesIO(content), content[:9999] + gzip.compress(b""),
                  Drip(BULLETIN.encode()), Drip(content)],
        }
        for name, sources in inputs.items():
            for source in sources:
                frame = corvane.read_feed(source)
                assert list(frame["source"].unique()) == [f"{name}:2"], source
                pandas.testing.assert_frame_equal(frame.drop(columns="source"), expected.drop(columns="source"))


def test_a_list_is_read_in_its_order(tmp_path):
    path = tmp_path / "b.txt"
    path.write_text(BULLETIN)
    frame = corvane.read_feed([path, BULLETIN.encode()])
    assert list(frame["source"].unique()) == [f"{path}:2", "-:2"]
    assert corvane.read_feed([]).empty


def test_an_input_that_cannot_be_read_is_named(tmp_path):
    broken = tmp_path / "broken.gz"
    broken.write_bytes(gzip.compress(BULLETIN.encode())[:-12])
    for path in (tmp_path / "missing.txt", tmp_path, broken):
        for read in (corvane.read_feed, corvane.soundings):
            with pytest.raises(OSError) as caught:
                read(path)
            assert caught.value.filename == str(path)
    with pytest.raises(FileNotFoundError):
        corvane.read_feed(tmp_path / "missing.txt")
    with pytest.raises(OSError, match="gzip") as caught:
        corvane.read_feed(broken.read_bytes())
    assert caught.value.filename == "-"


@pytest.mark.parametrize("content", [b"", b"T", b"SAUS70 KWBC 130000\nMETAR=\n", b"\x1f", b"\x1f\x8a",
                                     gzip.compress(b"")])
@pytest.mark.parametrize("read", [corvane.read_feed, corvane.soundings])
def test_an_input_without_a_part_is_named(read, content, tmp_path):
    path = tmp_path / "a.txt"
    path.write_bytes(content)
    with pytest.warns(corvane.NoPartWarning) as caught:
        assert len(read([REPORT.encode(), path, content, path])) == len(read(REPORT.encode()))
    assert [str(warning.message) for warning in caught] == [
        f"no TEMP part found in {name}" for name in (path, "-", path)]
    assert {warning.filename for warning in caught} == {__file__}


@pytest.mark.parametrize("text", [REPORT, " " + REPORT, "\nUUBB", "UUBB 1", BULLETIN, "bulletins.txt\n", "XXDD\t1",
                                  "a\rb"])
@pytest.mark.parametrize("read", [corvane.read_feed, corvane.soundings])
def test_text_is_not_a_path(read, text):
    with pytest.raises(ValueError, match=r"this is text, not a path: pass text\.encode\(\)"):
        read(text)
    with pytest.raises(FileNotFoundError):
        read(pathlib.Path(text))  # whatever it is called


@pytest.mark.parametrize("name", ["TTAA", "TTAA.txt", "USUS50 KWBC 130000"])
def test_files_may_be_called_like_parts(name, tmp_path, monkeypatch):
    (tmp_path / name).write_text(REPORT)
    monkeypatch.chdir(tmp_path)
    assert len(corvane.read_feed(name)) == 2


@pytest.mark.parametrize("nothing", [None, 5, [None], object()])
def test_what_is_not_an_input_is_a_type_error(nothing):
    with pytest.raises(TypeError):
        corvane.read_feed(nothing)


def test_what_a_file_object_throws_comes_through():
    class Failing:
        def read(self, size):
            raise RuntimeError("gone")

    class Wrong:
        def read(self, size):
            return 5

    with pytest.raises(RuntimeError, match="gone"):
        corvane.read_feed(Failing())
    with pytest.raises(TypeError, match="bytes"):
        corvane.read_feed(Wrong())


def test_small_chunks_give_the_same_rows():
    class Slow(io.BytesIO):
        def read(self, size=-1):
            return super().read(7)

    pandas.testing.assert_frame_equal(corvane.read_feed(Slow(BULLETIN.encode())),
                                      corvane.read_feed(BULLETIN.encode()))


@settings(max_examples=200, deadline=None)
@given(st.one_of(st.binary(), st.lists(st.sampled_from(BULLETIN.split() + ["\n", "=", "NNNN", "é"])).map(" ".join)))
def test_any_bytes_are_read(content):
    content = content.encode() if isinstance(content, str) else content
    frame = corvane.read_feed(content)
    assert len(frame) == frame.attrs["parts"]["levels"].sum()
    for sounding in corvane.soundings(content):
        sounding.to_pandas()
        sounding.indices()
        ElementTree.fromstring(sounding.skewt())


# ---- the table ------------------------------------------------------------------------------------------------------


def test_types_do_not_depend_on_the_rows():
    full, empty = corvane.read_feed(DAY), corvane.read_feed(b"")
    assert list(full.dtypes) == list(empty.dtypes)
    assert full["day"].dtype == "int64" and full["pres"].dtype == "float64" and full["station"].dtype == object
    assert list(full.attrs["parts"].dtypes) == list(empty.attrs["parts"].dtypes)
    assert len(full) > 1000 and full.attrs["units"] == empty.attrs["units"]


def test_parts_and_the_warning():
    with pytest.warns(corvane.RefusedWarning, match="^1 of 4 parts was refused") as caught:
        frame = corvane.read_feed(BULLETIN.encode())
    assert caught[0].filename == __file__
    parts = frame.attrs["parts"]
    assert list(parts["status"]) == ["decoded", "NIL", "empty", "refused"]
    assert parts["message"].notna().tolist() == (parts["status"] == "refused").tolist()
    with warnings.catch_warnings():
        warnings.simplefilter("error")
        corvane.read_feed(REPORT.encode())


def test_attributes_survive_work_with_pandas():
    one, two = corvane.read_feed(BULLETIN.encode()), corvane.read_feed(DAY)
    assert len(pandas.concat([one, two])) == len(one) + len(two)
    assert type(one.attrs["parts"].copy()) is pandas.DataFrame
    assert one.copy(deep=True).attrs["parts"].shape == one.attrs["parts"].shape
    assert one[one["pres"] > 1000].copy().attrs["units"]["pres"] == "hPa"
    assert len(two.groupby("station").size()) == two["station"].nunique()
    assert (one == one).shape == one.shape


def test_parts_are_compared_by_identity_and_copied():
    frame = corvane.read_feed(BULLETIN.encode())
    parts = frame.attrs["parts"]
    assert (parts == parts) is True and (parts == corvane.read_feed(BULLETIN.encode()).attrs["parts"]) is False
    assert (parts.copy() == parts.copy()).shape == parts.shape  # a plain frame is compared value by value
    for other in (copy.deepcopy(parts), parts.copy(), copy.deepcopy(frame.attrs)["parts"]):
        pandas.testing.assert_frame_equal(pandas.DataFrame(other), pandas.DataFrame(parts))
        other.loc[0, "status"] = "changed"
        assert parts["status"][0] == "decoded"


def test_missing_days_of_parts_are_missing():
    parts = corvane.read_feed(f"{REPORT}=TTAA ///// 72202 99014 32259=".encode()).attrs["parts"]
    assert parts["day"].dtype == parts["hour"].dtype == "Int64"
    assert parts["day"].tolist() == [6, pandas.NA] and parts["hour"].isna().tolist() == [False, True]
    assert parts["status"].tolist() == ["decoded", "refused"]


def test_near_gives_the_nearest_date_with_that_day():
    frame = corvane.read_feed(BULLETIN.encode(), near="2022-07-03")
    assert frame["time"].dtype == "datetime64[ns]"
    assert set(frame["time"]) == {pandas.Timestamp("2022-07-06 00:00")}
    assert "remark_time" in frame and "time" not in frame.columns[:-1]
    last = corvane.read_feed(BULLETIN.replace("56001", "81121").encode(), near=pandas.Timestamp("2022-03-01"))
    assert set(last["time"]) == {pandas.Timestamp("2022-01-31 12:00")}  # 29 days before, not 30 after
    by_name = corvane.read_feed(BULLETIN.encode(), near=lambda name: {"-": "1999-12-31"}[name])
    assert set(by_name["time"]) == {pandas.Timestamp("2000-01-06 00:00")}
    assert list(corvane.read_feed(b"", near="2022-07-13").columns)[-1] == "time"


ZONE = dt.timezone(dt.timedelta(hours=2))


@pytest.mark.parametrize("near", [
    "2022-07-13", " 2022-07-13 ", "2022-07-13 00:00", "2022-07-13T00:00:00", "2022-07-13T00:00Z",
    "2022-07-13T02:00+02:00", "2022-07-13T00:00:00.000000000", "2022-07-13T00:00:00.5z",
    dt.date(2022, 7, 13), dt.datetime(2022, 7, 13),
    dt.datetime(2022, 7, 13, 2, tzinfo=ZONE), pandas.Timestamp("2022-07-13"), pandas.Timestamp("2022-07-13", tz="UTC"),
    numpy.datetime64("2022-07-13"), numpy.datetime64("2022-07-13T00:00:00.000000000"), lambda name: "2022-07-13"])
def test_every_kind_of_date_means_the_same(near):
    frame = corvane.read_feed(REPORT.encode(), near=near)
    assert set(frame["time"]) == {pandas.Timestamp("2022-07-06 00:00")}
    assert corvane.soundings(REPORT.encode(), near=near)[0].time == dt.datetime(2022, 7, 6)


def test_zones_are_converted_to_utc():
    # of two equally near dates the earlier one is taken: days 1 and 31 of July 12 hours later
    text = REPORT.replace("56001", "51001")
    for near, month in (("2022-07-16T12:00Z", 7), ("2022-07-17T02:00+14:00", 7), ("2022-07-16T23:00-02:00", 8)):
        assert {time.month for time in corvane.read_feed(text.encode(), near=near)["time"]} == {month}, near
    pacific = pandas.Timestamp("2022-07-16 23:00", tz=dt.timezone(dt.timedelta(hours=-2)))
    assert corvane.soundings(text.encode(), near=pacific)[0].time == dt.datetime(2022, 8, 1)


class Unread:
    """A file that must not be read."""

    def read(self, size):
        raise AssertionError("read")


@pytest.mark.parametrize(("near", "error"), [
    ("", ValueError), ("yesterday", ValueError), ("2022-13-01", ValueError), ("2022-07-13 25:00", ValueError),
    ("1677-12-31", ValueError), ("2262-01-01", ValueError), ("0001-01-01T00:00+14:00", ValueError),
    (pandas.NaT, ValueError), (numpy.datetime64("NaT"), ValueError), (numpy.datetime64("20000-01-01"), ValueError),
    (dt.date(1, 1, 1), ValueError), (20220713, TypeError), (b"2022-07-13", TypeError), (["2022-07-13"], TypeError),
    (float("nan"), TypeError), (True, TypeError)])
@pytest.mark.parametrize("read", [corvane.read_feed, corvane.soundings])
def test_what_is_not_a_date_is_reported_before_anything_is_read(read, near, error):
    for source in (Unread(), []):
        with pytest.raises(error, match='^near must be a date such as "2022-07-13", not '):
            read(source, near=near)
    with pytest.raises(error, match='^near must be a date such as "2022-07-13", not '):
        read(Unread(), near=lambda name: near)


@pytest.mark.parametrize("near", ["1678-01-01", "2261-12-31"])
@pytest.mark.parametrize("day", ["01", "15", "31"])
def test_the_first_and_the_last_year_have_times(near, day):
    text = REPORT.replace("56001", f"{int(day) + 50}001").encode()
    times = corvane.read_feed(text, near=near)["time"]
    assert abs(times[0] - pandas.Timestamp(near)) < pandas.Timedelta(days=32)
    assert corvane.soundings(text, near=near)[0].to_pandas()["time"][0] == times[0]


def test_hour_24_is_the_next_day():
    frame = corvane.read_feed(BULLETIN.replace("56001", "56241").encode(), near="2022-07-03")
    assert set(frame["time"]) <= {pandas.Timestamp("2022-07-07 00:00")} and len(frame)


def test_eight_threads_read_at_once():
    expected = corvane.read_feed(DAY)
    start = threading.Barrier(8)

    def work(_):
        start.wait()
        return corvane.read_feed(DAY), corvane.soundings(DAY)

    with ThreadPoolExecutor(8) as pool:
        results = list(pool.map(work, range(8)))
    for frame, soundings in results:
        pandas.testing.assert_frame_equal(frame, expected)
        assert soundings == results[0][1]


# ---- soundings ------------------------------------------------------------------------------------------------------


def test_a_sounding():
    (sounding,) = corvane.soundings(REPORT.encode())
    assert (sounding.form, sounding.station, sounding.day, sounding.hour) == ("TEMP", "72201", 6, 0)
    assert (sounding.letters, sounding.time, sounding.latitude, sounding.replaced) == ("A", None, None, 0)
    assert sounding.parts == (("-:1", "", "A", (), ()),)
    assert sounding.levels[1] == (1000.0, 140.0, 30.0, 23.0, 115.0, 3.0864, "mandatory", "", False, False)


def test_frame_of_a_sounding():
    for sounding in corvane.soundings(DAY, near="2022-07-13"):
        frame = sounding.to_pandas()
        assert list(frame.columns) == [
            "pressure", "height", "temperature", "dewpoint", "direction", "speed", "u_wind", "v_wind", "station",
            "time", "latitude", "longitude", "doubt", "kinds", "height_computed"]
        assert frame["pressure"].is_monotonic_decreasing and frame["pressure"].is_unique
        assert not frame[["temperature", "dewpoint", "direction", "speed"]].isna().all(axis=1).any()
        kept = [level for level in sounding.levels if not level.below_ground]
        if any("surface" in level.kinds for level in kept):
            assert "surface" in frame["kinds"][0]
        assert frame["time"].unique().tolist() == [pandas.Timestamp(sounding.time).value]
        speed = (frame["u_wind"] ** 2 + frame["v_wind"] ** 2) ** 0.5
        assert (speed - frame["speed"]).abs().max() < 2e-4  # of components with six digits
        for name in ("u_wind", "v_wind"):
            assert frame[name].dropna().tolist() == [float(f"{value:.6g}") for value in frame[name].dropna()]
        east = frame[frame["direction"].between(1, 179) & (frame["speed"] > 0)]
        assert (east["u_wind"] < 0).all()  # a wind from the east blows to the west
        assert list(frame.attrs["units"]) == list(frame.columns)


def test_components_of_the_wind_are_exact_in_the_main_directions():
    # winds of 40 metres per second at the surface and at 1000 hPa, from 90, 180, 270, 360 and 30 degrees
    expected = {"09": (-40, 0), "18": (0, 40), "27": (40, 0), "36": (0, -40), "03": (-20, -34.641)}
    for direction, components in expected.items():
        text = f"TTAA 06001 72201 99014 32259 {direction}040 00140 30057 {direction}040 88999 77999="
        frame = corvane.soundings(text.encode())[0].to_pandas()
        assert frame["speed"].tolist() == [40.0, 40.0]
        assert frame[["u_wind", "v_wind"]].apply(tuple, axis=1).tolist() == [components] * 2
        assert not any(math.copysign(1, value) < 0 for value in frame["u_wind"].tolist() if value == 0)
        assert not any(math.copysign(1, value) < 0 for value in frame["v_wind"].tolist() if value == 0)


def units_by_column(frame, units):
    """As tools do that give each column its unit: looks units up by the name of the column, None for without."""
    arrays = {}
    for name in frame:
        if name in units:
            arrays[name] = (frame[name].values, units[name]) if units[name] else frame[name].values
    return arrays


def test_units_are_a_plain_dict_by_column():
    frame = corvane.soundings(DAY, near="2022-07-13")[0].to_pandas()
    arrays = units_by_column(frame, frame.attrs["units"])
    assert type(frame.attrs["units"]) is dict and list(arrays) == list(frame.columns)
    assert {name: value[1] for name, value in arrays.items() if isinstance(value, tuple)} == {
        "pressure": "hPa", "height": "meter", "temperature": "degC", "dewpoint": "degC", "direction": "degrees",
        "speed": "m/s", "u_wind": "m/s", "v_wind": "m/s", "latitude": "degrees", "longitude": "degrees"}
    assert arrays["pressure"][0][0] == frame["pressure"][0]


def test_without_near_no_year_is_invented():
    assert corvane.soundings(REPORT.encode())[0].to_pandas()["time"].isna().all()


def test_frames_of_several_soundings_join():
    frame = pandas.concat([sounding.to_pandas() for sounding in corvane.soundings(DAY)])
    assert frame.attrs["units"]["height"] == "meter"


@pytest.mark.parametrize("path", BULLETINS, ids=lambda path: path.name)
def test_soundings_survive_pickling(path):
    for sounding in corvane.soundings(path, near="2022-07-13"):
        copy = pickle.loads(pickle.dumps(sounding))
        assert copy == sounding and hash(copy) == hash(sounding) and repr(copy) == repr(sounding)
        assert copy.skewt() == sounding.skewt()
        assert pickle.dumps(copy) == pickle.dumps(pickle.loads(pickle.dumps(copy)))
        for level in copy.levels:
            assert pickle.loads(pickle.dumps(level)) == level


def test_source_that_is_not_utf_8_survives_pickling(tmp_path):
    path = pathlib.Path(str(tmp_path) + "/\udcff.txt")
    path.write_text(REPORT)
    (sounding,) = corvane.soundings(path)
    assert pickle.loads(pickle.dumps(sounding)).parts[0].source == f"{path}:1"


def test_picture():
    sounding = corvane.soundings(DAY)[0]
    picture = sounding.skewt(width=600, height=700)
    assert ElementTree.fromstring(picture).get("width").startswith("600")
    assert picture._repr_svg_() == str(picture) and sounding._repr_svg_() == sounding.skewt()
    assert sounding.skewt(units="mps") != sounding.skewt() != sounding.skewt(dark=True)
    assert sounding.skewt(width=numpy.int64(400), height=440, top=900) != sounding.skewt(top=1)
    assert ElementTree.fromstring(sounding.skewt(width=10000, height=10000, top=numpy.float64(300.5))) is not None


@pytest.mark.parametrize(("arguments", "error"), [
    ({"units": "furlongs"}, ValueError), ({"top": 2000}, ValueError), ({"top": -5}, ValueError),
    ({"top": 0}, ValueError),
    ({"top": 0.99}, ValueError), ({"top": 900.1}, ValueError), ({"top": math.nan}, ValueError),
    ({"top": "300"}, TypeError), ({"width": 399}, ValueError), ({"width": 100}, ValueError),
    ({"width": 10001}, ValueError), ({"width": 10**9}, ValueError), ({"width": 10**30}, ValueError),
    ({"width": 600.5}, TypeError), ({"width": "600"}, TypeError), ({"width": None}, TypeError),
    ({"height": 439}, ValueError), ({"height": 10001}, ValueError), ({"height": 700.0}, TypeError)])
def test_invalid_arguments_of_a_picture_are_refused(arguments, error):
    with pytest.raises(error):
        corvane.soundings(REPORT.encode())[0].skewt(**arguments)


def test_picture_is_saved(tmp_path):
    picture = corvane.soundings(DAY)[0].skewt()
    picture.save(tmp_path / "a.svg")
    assert (tmp_path / "a.svg").read_text(encoding="utf-8") == picture


def test_indices_of_a_dry_and_a_moist_level():
    indices = corvane.soundings(REPORT.encode())[0].indices()
    # Bolton's formula for 1014 hPa, 32.2 and 23.2 degrees, computed here
    t, td = 32.2 + 273.15, 23.2 + 273.15
    lcl = 1 / (1 / (td - 56) + math.log(t / td) / 800) + 56
    assert indices["sb_lcl_p"] == pytest.approx(1014 * (lcl / t) ** (1 / 0.2854), abs=0.5)
    assert math.isnan(indices["k_index"])


# ---- data sets ------------------------------------------------------------------------------------------------------


def test_data_set_of_a_sounding(tmp_path):
    sounding = next(s for s in corvane.soundings(DAY, near="2022-07-13") if "B" in s.letters)
    dataset, frame = sounding.to_xarray(), sounding.to_pandas()
    assert dataset.attrs["featureType"] == "profile" and dataset.sizes == {"level": len(frame)}
    for name, standard in {"pressure": "air_pressure", "temperature": "air_temperature", "speed": "wind_speed",
                           "dewpoint": "dew_point_temperature", "direction": "wind_from_direction",
                           "height": "geopotential_height"}.items():
        assert dataset[name].attrs["standard_name"] == standard
        pandas.testing.assert_series_equal(dataset[name].to_series(), frame[name], check_index=False, check_names=False)
    dataset.to_netcdf(tmp_path / "one.nc")
    with xarray.open_dataset(tmp_path / "one.nc") as back:
        xarray.testing.assert_identical(back.load(), dataset)


@pytest.mark.parametrize("near", [None, "2022-07-13"])
def test_data_set_of_several_soundings(tmp_path, near):
    soundings = corvane.soundings(BULLETINS, near=near)
    dataset = corvane.to_xarray(soundings)
    assert dataset["row_size"].attrs["sample_dimension"] == "obs"
    assert dataset["row_size"].values.tolist() == [len(sounding.to_pandas()) for sounding in soundings]
    assert dataset["row_size"].sum() == dataset.sizes["obs"]
    dataset.to_netcdf(tmp_path / "all.nc")
    with xarray.open_dataset(tmp_path / "all.nc") as back:
        xarray.testing.assert_identical(back.load(), dataset)
    with pytest.raises(ValueError):
        corvane.to_xarray([])


# ---- the package ----------------------------------------------------------------------------------------------------


def run_module(*arguments, **options):
    return subprocess.run([sys.executable, "-m", "corvane", *arguments], capture_output=True, text=True, **options)


def test_the_module_prints_soundings_and_counts(tmp_path):
    path = tmp_path / "bulletin.txt"
    path.write_text(BULLETIN)
    run = run_module(path, tmp_path / "none")
    assert run.returncode == 2 and run.stderr == f"corvane: {tmp_path / 'none'}: No such file or directory\n"
    lines = run.stdout.splitlines()
    assert lines[1].split() == ["TEMP", "72201", "6", "0", "A", "2", "1014", "1000"]
    assert lines[-1].startswith("1 sounding; 4 parts: 1 decoded")
    assert run_module(input=REPORT).stdout.splitlines()[-1].startswith("1 sounding; 1 part: 1 decoded")
    day = run_module(DAY).stdout.splitlines()
    assert day[-1].startswith(f"{len(day) - 2} soundings; ")


def test_the_module_prints_nothing_of_files_that_cannot_be_read(tmp_path):
    run = run_module(tmp_path / "none")
    assert (run.returncode, run.stdout, run.stderr.count("\n")) == (2, "", 1)


def test_the_module_says_where_there_is_no_part(tmp_path):
    path = tmp_path / "SAUS70\n"  # any path, too
    path.write_text("SAUS70 KWBC")
    run = run_module(path)
    assert run.returncode == 1 and run.stderr.startswith("corvane: no TEMP part found in ")
    assert run.stdout.splitlines()[-1].startswith("0 soundings; 0 parts")


def test_the_module_leaves_out_levels_below_the_ground():
    # surface at 870 hPa: 1000, 925 are below it
    text = "TTAA 63001 72572 99870 36683 08505 00005 ///// ///// 92/// ///// ///// 85499 32680 08009 88999 77999="
    (sounding,) = corvane.soundings(text.encode())
    assert [(level.pressure, level.below_ground) for level in sounding.levels] == [
        (1000, True), (870, False), (850, False)]
    assert run_module(input=text).stdout.splitlines()[1].split()[-2:] == ["870", "850"]


def test_the_module_ends_quietly_when_its_reader_has_seen_enough():
    command = f"{shlex.quote(sys.executable)} -m corvane {shlex.quote(str(DAY))} | head -1"
    # So that lines are written one by one, and the second one finds the pipe closed.
    environment = {**os.environ, "PYTHONUNBUFFERED": "1"}
    run = subprocess.run(["sh", "-c", command], capture_output=True, text=True, env=environment)
    assert run.stdout.startswith("form") and run.stdout.count("\n") == 1 and run.stderr == ""


def test_soundings_need_no_pandas():
    code = f"""
import sys
sys.modules.update(dict.fromkeys(["pandas", "numpy", "xarray", "dask"]))
import corvane
assert len(corvane.soundings({REPORT.encode()!r})[0].levels) == 2
assert corvane.decode({REPORT!r}).station == "72201"
"""
    subprocess.run([sys.executable, "-c", code], check=True)


def test_compiled_sources_are_those_of_cmake():
    cmake = (ROOT / "CMakeLists.txt").read_text()
    named = set(re.findall(r"^\s+(src/[\w/]+\.cpp)", cmake, re.MULTILINE))
    found = {str(path.relative_to(ROOT)) for path in [*ROOT.glob("src/*.cpp"), *ROOT.glob("src/*/*.cpp")]}
    assert named == found
    assert re.search(r"^project\(corvane VERSION (\S+)", cmake, re.MULTILINE)[1] == corvane.__version__


def test_everything_public_is_documented():
    for name in corvane.__all__:
        if name != "__version__":
            assert getattr(corvane, name).__doc__, name
