"""One report: decode, CodingFault, Report, Level."""
import gc
import io
import math
import pickle
import resource
import sys
import threading
import time
from concurrent.futures import ThreadPoolExecutor

import pandas
import pytest
from conftest import REPORT, REPORTS
from hypothesis import given, settings
from hypothesis import strategies as st

import corvane
from corvane import _corvane


SOUNDINGS = _corvane.SoundingReader(True)
SOUNDINGS.add("-", io.BytesIO(REPORT.encode()).read)
SOUNDING = SOUNDINGS.soundings()[0]


def test_identification_of_a_report():
    report = corvane.decode(REPORT)
    assert (report.form, report.station, report.day, report.hour) == ("TEMP", "72201", 6, 0)
    assert report.winds_in_knots  # day 56
    assert report.latitude is None and report.longitude is None and report.launch is None
    assert report.groups == tuple(REPORT.split())


def test_levels_of_a_report():
    surface, standard = corvane.decode(REPORT).levels
    # 99014 32259 11504: 1014 hPa, 32.2 degrees, 9 degrees less, 115 degrees, 4 knots of 0.5144 m/s
    assert surface == ("surface", 1014.0, 32.2, 23.2, 2.0576, 115.0, None, None, None, None, None, None, None)
    assert (standard.type, standard.pres, standard.height) == ("mandatory", 1000.0, 140.0)


def test_position_of_a_drop():
    report = corvane.decode("XXAA 70038 99153 70659 04583 99007 29456 28521 00003 28657 28519 88999 77999")
    assert (report.form, report.station) == ("TEMP DROP", "")
    assert (report.latitude, report.longitude) == (15.3, -65.9)


def test_launch_has_four_digits():
    text = "TTBB 06008 72201 00014 32259 21212 00014 11504 31313 44108 80030"
    assert corvane.decode(text).launch == "0030"


def test_empty_text_has_no_levels():
    report = corvane.decode("")
    assert (report.form, report.day, report.hour, report.levels) == ("UNKNOWN", None, None, ())
    assert list(report.to_pandas().columns)[:3] == ["type", "pres", "tdry"] and report.to_pandas().empty


@pytest.mark.parametrize(
    ("text", "reason", "groups"),
    [
        ("72403 TTAA 56121", "WMO type and part identifier (MMMM) must be 4 characters.", ("72403", "TTAA", "56121")),
        ("TTAA 56001 7220", "Block and station number is incorrect", ("7220",)),
        ("TTAA 56001", "At least 1 code groups are required.", ()),
        ("TTAA 56001 72201 99014", "At least 2 code groups are required.", ("99014",)),
    ],
)
def test_fault_has_reason_and_groups(text, reason, groups):
    with pytest.raises(ValueError) as caught:
        corvane.decode(text)
    fault = caught.value
    assert type(fault) is corvane.CodingFault
    assert (fault.reason, fault.groups) == (reason, groups)
    assert fault.message == str(fault) and fault.message.startswith(reason)


def test_short_group_is_a_coding_fault():
    with pytest.raises(corvane.CodingFault) as caught:
        corvane.decode("TTAA 56001 72201 99014 32259 1150 00140 30057 1 88999 77999")
    assert caught.value.message


def test_fault_survives_pickling():
    with pytest.raises(corvane.CodingFault) as caught:
        corvane.decode("TTAA 56001 72201 99014")
    copy = pickle.loads(pickle.dumps(caught.value))
    assert (copy.message, copy.reason, copy.groups) == (
        caught.value.message, caught.value.reason, caught.value.groups)


@pytest.mark.parametrize("nothing", [None, 5, ["TTAA"], object()])
def test_what_is_not_text_is_a_type_error(nothing):
    with pytest.raises(TypeError):
        corvane.decode(nothing)


@pytest.mark.parametrize("make", [str.encode, lambda text: bytearray(text.encode()),
                                  lambda text: memoryview(text.encode())])
def test_bytes_are_read_like_str(make):
    assert corvane.decode(make(REPORT)) == corvane.decode(REPORT)


@pytest.mark.parametrize("text", ["TTAA é", "\ud800", "\udcff", b"\xff\x00", "TTAA\0", "TTAA 56001 7220é"])
def test_odd_characters_are_a_coding_fault(text):
    with pytest.raises(corvane.CodingFault):
        corvane.decode(text)


PIECES = ["TTAA", "UUBB", "XXCC", "IIDD", "56001", "0612/", "72201", "99014", "88999", "77999", "21212", "31313",
          "51515", "62626", "REL", "SPL", "WL150", "DLM", "WND", "nan", "=", "/////", "99153", "70659", "é", "\0"]


@settings(max_examples=500, deadline=None)
@given(st.one_of(st.text(), st.binary(),
                 st.lists(st.one_of(st.sampled_from(PIECES), st.text("0123456789/", max_size=6))).map(" ".join)))
def test_any_text_is_decoded_or_a_coding_fault(text):
    try:
        report = corvane.decode(text)
    except corvane.CodingFault as fault:
        assert fault.message and fault.reason and len(fault.groups) <= 6
        pickle.loads(pickle.dumps(fault))
    else:
        assert len(report.to_pandas()) == len(report.levels)


@pytest.mark.parametrize("path", REPORTS, ids=lambda path: path.name)
def test_report_survives_pickling(path):
    try:
        report = corvane.decode(path.read_bytes())
    except corvane.CodingFault:
        return
    copy = pickle.loads(pickle.dumps(report))
    assert repr(copy) == repr(report) and copy.groups == report.groups
    pandas.testing.assert_frame_equal(copy.to_pandas(), report.to_pandas())


def test_frame_has_units_and_types():
    frame = corvane.decode(REPORT).to_pandas()
    assert frame.dtypes.drop("type").eq(float).all() and frame["type"].dtype == object
    assert frame.attrs["units"]["pres"] == "hPa"
    assert frame[frame["pres"] > 1000].copy().attrs["units"]["wspd"] == "m/s"
    assert math.isnan(frame["height"][0]) and frame["height"][1] == 140.0


def test_threads_share_nothing():
    texts = []
    for path in REPORTS:
        try:
            corvane.decode(path.read_bytes())
            texts.append(path.read_bytes())
        except corvane.CodingFault:
            pass
    expected = [repr(corvane.decode(text).levels) for text in texts]
    start = threading.Barrier(8)

    def work(_):
        start.wait()
        return [[repr(corvane.decode(text).levels) for text in texts] for _ in range(5)]

    with ThreadPoolExecutor(8) as pool:
        for rounds in pool.map(work, range(8)):
            assert rounds == [expected] * 5


@pytest.fixture
def patient_threads():
    """A thread keeps the lock of the interpreter until it gives it up itself."""
    interval = sys.getswitchinterval()
    sys.setswitchinterval(1000)
    yield
    sys.setswitchinterval(interval)


@pytest.mark.parametrize("read", [
    lambda: corvane.decode(REPORT),
    lambda: _corvane.TableReader(True).add("-", io.BytesIO(REPORT.encode()).read),
    lambda: _corvane.SoundingReader(True).add("-", io.BytesIO(REPORT.encode()).read),
    lambda: SOUNDINGS.soundings(),
    lambda: SOUNDING.indices(),
    lambda: SOUNDING.skewt(True, 0, 1000, 1100, False),
], ids=["decode", "table", "bulletins", "soundings", "indices", "picture"])
def test_another_thread_runs_while_one_decodes(read, patient_threads):
    waiting, ran = threading.Lock(), []

    def work():
        with waiting:
            ran.append(True)

    waiting.acquire()
    other = threading.Thread(target=work)
    other.start()
    waiting.release()  # from here on the other thread waits for nothing but the lock of the interpreter
    for _ in range(100_000):
        pass
    assert not ran
    deadline = time.monotonic() + 60
    while not ran and time.monotonic() < deadline:
        read()
    assert ran
    other.join()


def resident():
    with open("/proc/self/statm", encoding="ascii") as statm:
        return int(statm.read().split()[1]) * resource.getpagesize()


def test_memory_does_not_grow():
    def decode(times):
        for _ in range(times):
            corvane.decode(REPORT)
            try:
                corvane.decode("TTAA 56001 72201 99014")
            except corvane.CodingFault:
                pass
        gc.collect()

    decode(5_000)
    before = resident()
    decode(50_000)  # twice as many decodes
    assert resident() - before < 2_000_000  # 20 bytes a decode
