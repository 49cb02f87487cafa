"""Archives with dask."""
import os
import time

import dask
import pandas
import pytest
from conftest import BULLETINS, DAY

import corvane
import corvane.dask

pytestmark = pytest.mark.filterwarnings("ignore")


def archive(folder, copies):
    lines = DAY.read_text().splitlines(keepends=True)
    paths = []
    for number in range(copies):
        path = folder / f"{number:02}.txt"
        path.write_text("".join(lines[number::copies]))
        paths.append(str(path))
    return paths


def test_types_are_declared():
    paths = [str(path) for path in BULLETINS]
    for frame in (corvane.dask.read_feed(paths), corvane.dask.read_feed(paths, near="2022-07-13"),
                  corvane.dask.read_parts(paths)):
        assert frame.npartitions == len(paths)
        for partition in dask.compute(*frame.to_delayed()):
            assert list(partition.dtypes.items()) == list(frame.dtypes.items())


def test_a_file_that_cannot_be_read_is_named(tmp_path):
    paths = [*archive(tmp_path, 2), str(tmp_path / "missing.txt")]
    with pytest.raises(FileNotFoundError, match="missing.txt"):
        corvane.dask.read_feed(paths).compute(scheduler="sync")


def slow_count(partition, folder):
    """Leaves a note of its process, so that the test knows whom to stop."""
    with open(os.path.join(folder, str(os.getpid())), "a", encoding="ascii") as note:
        note.write(".")
    time.sleep(0.5)
    return partition


def test_a_lost_worker_loses_nothing(tmp_path):
    distributed = pytest.importorskip("distributed")
    paths = archive(tmp_path, 12)
    notes = tmp_path / "notes"
    notes.mkdir()
    expected = corvane.read_feed(paths)
    with distributed.LocalCluster(n_workers=2, threads_per_worker=1, processes=True, dashboard_address=None,
                                  local_directory=str(tmp_path)) as cluster, distributed.Client(cluster) as client:
        frame = corvane.dask.read_feed(paths)
        frame = frame.map_partitions(slow_count, str(notes), meta=frame._meta)
        future = client.compute(frame)
        deadline = time.monotonic() + 120
        while not list(notes.iterdir()) and time.monotonic() < deadline:
            time.sleep(0.05)
        assert not future.done()
        victim = int(next(notes.iterdir()).name)
        os.kill(victim, 9)
        result = future.result(timeout=240)
        with pytest.raises(OSError, match="missing"):
            client.compute(corvane.dask.read_feed([*paths, "missing.txt"])).result(timeout=120)
    assert len(list(notes.iterdir())) >= 2
    pandas.testing.assert_frame_equal(result.reset_index(drop=True), expected)
    parts = corvane.dask.read_parts(paths).compute(scheduler="sync")
    pandas.testing.assert_frame_equal(parts.reset_index(drop=True), expected.attrs["parts"].copy())
