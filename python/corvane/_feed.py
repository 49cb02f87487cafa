"""The table of bulletins."""
from __future__ import annotations

import datetime as dt
from collections.abc import Iterable
from typing import TYPE_CHECKING, Optional, Union

from . import _corvane, _inputs, _times
from ._refused import warn_of_refused

if TYPE_CHECKING:
    import pandas


def read_feed(source: Union[_inputs.Source, Iterable[_inputs.Source]], *, near: Optional[_times.Near] = None,
              mends: bool = True) -> pandas.DataFrame:
    """Reads bulletins into the table that corvane-feed writes: a row for each level of each part.

    Columns: ``source`` (FILE:LINE, the key of a part), ``heading``, ``form``, ``part``, ``station``, ``day``,
    ``hour`` (UTC), ``slat``, ``slon`` (degrees), ``selev`` (metres), ``launch`` (GGgg), ``mends``, ``doubt``,
    ``type``, ``pres`` (hPa), ``tdry``, ``dp`` (degrees Celsius), ``wspd`` (m/s), ``wdir`` (degrees true), ``height``
    (geopotential metres), ``time``, ``lat``, ``lon`` (of a remark of a dropsonde), ``pres2`` (hPa). A missing value is
    NaN, also in a column of texts, as pandas.read_csv reads an empty field. ``attrs["units"]`` holds the units,
    ``attrs["parts"]`` the table of all parts: status (decoded, NIL, empty, refused), mends, and why a part was refused.

    Args:
        source: a path ("-" is standard input), the bytes themselves, an open file, or a list of these. A gzip file is
            unpacked, whatever its name.
        near: a date: a string such as "2022-07-13" or "2022-07-13T12:00Z", a datetime, a date, a pandas.Timestamp or a
            numpy.datetime64; one with a time zone is converted to UTC. Adds the column ``time``, in UTC: of the times
            with the day and hour of the report, the closest to that date. The digits of a remark, otherwise called
            ``time``, are then ``remark_time``. For inputs of different dates: a function that returns the date for a
            path. Without it no year is invented.
        mends: whether to mend parts; with False, a part that needs mending is refused.

    Raises:
        OSError: an input cannot be opened or read; ``filename`` says which.
        ValueError: ``near`` is not a date, or the source is a string that holds bulletins instead of a path.

    Warns:
        RefusedWarning: how many parts were refused.
        NoPartWarning: an input holds no part.

    >>> bulletin = b"TTAA 56001 72201 99014 32259 11504 00140 30057 11506 88999 77999="
    >>> frame = read_feed(bulletin, near="2026-11-08")
    >>> frame[["station", "type", "pres", "tdry", "time"]]
      station       type    pres  tdry       time
    0   72201    surface  1014.0  32.2 2026-11-06
    1   72201  mandatory  1000.0  30.0 2026-11-06
    >>> frame.attrs["parts"]["status"].value_counts().to_dict()
    {'decoded': 1}
    """
    from . import _frames

    reader = _corvane.TableReader(mends)
    date_of = _times.resolver(near)
    dates: list[tuple[Optional[dt.datetime], int]] = []  # the date of each input, and the row that it ends before
    for one in _inputs.sources(source):
        date = date_of(_inputs.name_of(one))
        _inputs.add(reader, one)
        dates.append((date, reader.rows))
    warn_of_refused(reader.counts)
    return _frames.feed_frame(*reader.take(), None if near is None else dates)
