"""Bulletins: read_feed, soundings, and what is made of a sounding."""
import gzip
import io
import math
import pathlib
import pickle
import re
import subprocess
import sys
import threading
import warnings
from concurrent.futures import ThreadPoolExecutor
from xml.etree import ElementTree

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

pytestmark = pytest.mark.filterwarnings("ignore::corvane.RefusedWarning")


# ---- inputs ---------------------------------------------------------------------------------------------------------


def test_every_kind_of_input_gives_the_same_rows(tmp_path, monkeypatch):
    plain = tmp_path / "a file.txt"
    plain.write_text(BULLETIN)
    packed = tmp_path / "a file.txt.gz"
    packed.write_bytes(gzip.compress(BULLETIN.encode()))
    monkeypatch.setattr(sys, "stdin", io.TextIOWrapper(io.BytesIO(BULLETIN.encode())))
    expected = corvane.read_feed(BULLETIN.encode())
    assert list(expected["source"].unique()) == ["-:2"]
    with open(plain, "rb") as binary, open(plain, encoding="utf-8") as text:
        inputs = {
            str(plain): [str(plain), plain, binary, text],
            str(packed): [str(packed), packed],
            "-": ["-", io.BytesIO(BULLETIN.encode()), io.StringIO(BULLETIN), bytearray(BULLETIN.encode())],
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
    no_gzip = tmp_path / "no.gz"
    no_gzip.write_text(BULLETIN)
    for path in (tmp_path / "missing.txt", tmp_path, broken, no_gzip):
        for read in (corvane.read_feed, corvane.soundings):
            with pytest.raises(OSError) as caught:
                read(path)
            assert caught.value.filename == str(path)
    with pytest.raises(FileNotFoundError):
        corvane.read_feed(tmp_path / "missing.txt")


@pytest.mark.parametrize("nothing", [None, 5, [None], object()])
def test_what_is_no_input_is_a_type_error(nothing):
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
        assert (speed - frame["speed"]).abs().max() < 1e-9
        east = frame[frame["direction"].between(1, 179) & (frame["speed"] > 0)]
        assert (east["u_wind"] < 0).all()  # a wind from the east blows to the west
        assert list(frame.attrs["units"]) == list(frame.columns)


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


def test_source_that_is_no_utf_8_survives_pickling(tmp_path):
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
    with pytest.raises(ValueError):
        sounding.skewt(units="furlongs")


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


def test_the_module_prints_soundings_and_counts(tmp_path):
    path = tmp_path / "bulletin.txt"
    path.write_text(BULLETIN)
    run = subprocess.run([sys.executable, "-m", "corvane", path, tmp_path / "none"], capture_output=True, text=True)
    assert run.returncode == 2 and f"{tmp_path / 'none'}: No such file" in run.stderr
    lines = run.stdout.splitlines()
    assert lines[1].split() == ["TEMP", "72201", "6", "0", "A", "2", "1014", "1000"]
    assert lines[-1].startswith("1 soundings; 4 parts: 1 decoded")


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
