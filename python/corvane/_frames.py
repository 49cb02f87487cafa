"""Tables for pandas. The only modules that need pandas are this one and what imports it."""
from __future__ import annotations

import datetime as dt
from typing import TYPE_CHECKING, Any, Optional

import numpy
import pandas

from . import _corvane, _times

if TYPE_CHECKING:
    from ._report import Report
    from ._soundings import Sounding

LEVEL_UNITS = {
    "pres": "hPa", "tdry": "degC", "dp": "degC", "wspd": "m/s", "wdir": "degrees", "height": "meter",
    "lat": "degrees", "lon": "degrees", "pres2": "hPa",
}
FEED_UNITS = {"slat": "degrees", "slon": "degrees", "selev": "meter", **LEVEL_UNITS}
SOUNDING_UNITS: dict[str, Optional[str]] = {
    "pressure": "hPa", "height": "meter", "temperature": "degC", "dewpoint": "degC", "direction": "degrees",
    "speed": "m/s", "u_wind": "m/s", "v_wind": "m/s", "station": None, "time": None, "latitude": "degrees",
    "longitude": "degrees", "doubt": None, "kinds": None, "height_computed": None,
}


class PartsFrame(pandas.DataFrame):  # type: ignore[misc]
    """The table of parts. pandas compares what is in ``attrs``: this table is compared by identity."""

    @property
    def _constructor(self) -> Any:
        return pandas.DataFrame

    def __eq__(self, other: object) -> Any:
        return self is other if isinstance(other, PartsFrame) else super().__eq__(other)

    def __deepcopy__(self, memo: object = None) -> PartsFrame:
        return PartsFrame(self.copy(deep=True))


def report_frame(report: Report) -> pandas.DataFrame:
    names = _corvane.REPORT_COLUMNS
    frame = pandas.DataFrame([level[: len(names)] for level in report.levels], columns=list(names))
    frame = frame.astype({"type": object, **dict.fromkeys(names[1:], float)})
    frame.attrs["units"] = dict(LEVEL_UNITS)
    return frame


def feed_frame(levels: dict[str, Any], parts: dict[str, Any],
               dates: Optional[list[tuple[Optional[dt.datetime], int]]]) -> pandas.DataFrame:
    """`dates` holds the date of each input and the row that it ends before; None: without the column of times."""
    columns = {name: levels[name].astype("int64") if name in ("day", "hour") else levels[name]
               for name in _corvane.FEED_COLUMNS}
    if dates is not None:
        columns = {"remark_time" if name == "time" else name: values for name, values in columns.items()}
        columns["time"] = times(columns["day"], columns["hour"], dates)
    frame = data_frame(columns)
    frame.attrs["units"] = dict(FEED_UNITS)
    columns = {name: parts[name] for name in _corvane.PARTS_COLUMNS}
    for name in ("day", "hour"):
        missing = numpy.isnan(columns[name])
        columns[name] = pandas.arrays.IntegerArray(numpy.where(missing, 0, columns[name]).astype("int64"), missing)
    frame.attrs["parts"] = PartsFrame(columns, copy=False)
    return frame


def data_frame(columns: dict[str, Any]) -> pandas.DataFrame:
    """pandas looks for dates in each column of objects, unless it comes as a Series: a tenth of the time."""
    return pandas.DataFrame({name: pandas.Series(values, dtype=object) if values.dtype == object else values
                             for name, values in columns.items()}, copy=False)


def times(days: Any, hours: Any, dates: list[tuple[Optional[dt.datetime], int]]) -> Any:
    """The dates of rows; `dates` as for feed_frame."""
    found = numpy.empty(len(days), dtype="datetime64[ns]")
    begin = 0
    for date, end in dates:
        assert date is not None
        keys, where = numpy.unique(days[begin:end] * 100 + hours[begin:end], return_inverse=True)
        nearest = [_times.nearest(date, int(key) // 100, int(key) % 100) for key in keys]
        found[begin:end] = numpy.array(nearest, dtype="datetime64[ns]")[where]
        begin = end
    return found


def sounding_frame(sounding: Sounding) -> pandas.DataFrame:
    columns = sounding._data.columns()
    below_ground = columns.pop("below_ground")
    size = len(below_ground)
    columns["station"] = numpy.full(size, sounding.station or numpy.nan, dtype=object)
    time = numpy.datetime64("NaT") if sounding.time is None else numpy.datetime64(sounding.time)
    columns["time"] = numpy.full(size, time, dtype="datetime64[ns]")
    for name, value in (("latitude", sounding.latitude), ("longitude", sounding.longitude)):
        columns[name] = numpy.full(size, numpy.nan if value is None else value)
    given = [~numpy.isnan(columns[name]) for name in ("temperature", "dewpoint", "direction", "speed")]
    frame = pandas.DataFrame({name: columns[name] for name in SOUNDING_UNITS})
    frame = frame[~below_ground & numpy.logical_or.reduce(given)].reset_index(drop=True)
    frame.attrs["units"] = dict(SOUNDING_UNITS)
    return frame
