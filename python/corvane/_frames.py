"""Tables for pandas. The only modules that need pandas are this one and what imports it."""
from __future__ import annotations

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
    """The table of parts. pandas compares and copies what is in ``attrs``; of this table the identity counts there."""

    @property
    def _constructor(self) -> Any:
        return pandas.DataFrame

    def __eq__(self, other: object) -> Any:
        return self is other if isinstance(other, PartsFrame) else super().__eq__(other)

    def __deepcopy__(self, memo: object = None) -> PartsFrame:
        return self


def texts(column: tuple[Any, list[str]], missing: object = numpy.nan) -> Any:
    """A column of texts, with `missing` for an empty one."""
    codes, distinct = column
    values = numpy.empty(len(distinct), dtype=object)
    values[:] = [text or missing for text in distinct]
    return values.take(codes)


def table(columns: dict[str, Any], names: tuple[str, ...]) -> dict[str, Any]:
    return {name: texts(columns[name]) if isinstance(columns[name], tuple) else columns[name] for name in names}


def report_frame(report: Report) -> pandas.DataFrame:
    names = _corvane.REPORT_COLUMNS
    frame = pandas.DataFrame([level[: len(names)] for level in report.levels], columns=list(names))
    frame = frame.astype({"type": object, **dict.fromkeys(names[1:], float)})
    frame.attrs["units"] = dict(LEVEL_UNITS)
    return frame


def feed_frame(levels: dict[str, Any], parts: dict[str, Any], rows: list[tuple[str, int]],
               near: Optional[_times.Near]) -> pandas.DataFrame:
    """`rows` holds the name of each input and the row that it ends before."""
    columns = table(levels, _corvane.FEED_COLUMNS)
    if near is not None:
        columns = {"remark_time" if name == "time" else name: column for name, column in columns.items()}
        columns["time"] = times(columns["day"], columns["hour"], rows, near)
    frame = pandas.DataFrame(columns, copy=False)
    frame.attrs["units"] = dict(FEED_UNITS)
    of_parts = pandas.DataFrame(table(parts, _corvane.PARTS_COLUMNS)).astype({"day": "Int64", "hour": "Int64"})
    frame.attrs["parts"] = PartsFrame(of_parts)
    return frame


def times(days: Any, hours: Any, rows: list[tuple[str, int]], near: _times.Near) -> Any:
    """The dates of rows; `rows` as for feed_frame."""
    found = numpy.empty(len(days), dtype="datetime64[ns]")
    begin = 0
    for name, end in rows:
        date = _times.date_near(near, name)
        keys, where = numpy.unique(days[begin:end] * 100 + hours[begin:end], return_inverse=True)
        dates = [_times.nearest(date, int(key) // 100, int(key) % 100) for key in keys]
        found[begin:end] = numpy.array(dates, dtype="datetime64[ns]")[where]
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
    frame = pandas.DataFrame(table(columns, tuple(SOUNDING_UNITS)))
    frame = frame[~below_ground & numpy.logical_or.reduce(given)].reset_index(drop=True)
    frame.attrs["units"] = dict(SOUNDING_UNITS)
    return frame
