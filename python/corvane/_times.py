"""From the day of the month and the hour, which are all that a report gives, to a date."""
from __future__ import annotations

import calendar
import datetime as dt
import re
from collections.abc import Callable
from typing import Any, Optional, Union

#: A date, or a function that gives the date for the name of an input.
Near = Union[str, dt.date, Any, Callable[[str], Any]]

# Columns of dates hold nanoseconds in 64 bits, and a report may be of a month before or after the date.
_FIRST_YEAR, _LAST_YEAR = 1678, 2261


def resolver(near: Optional[Near]) -> Callable[[str], Optional[dt.datetime]]:
    """A function that gives the date for the name of an input. A date is checked at once.

    Raises ValueError for what is not a date, and TypeError for a type that cannot be one.
    """
    if callable(near):
        function: Callable[[str], Any] = near
        return lambda name: _date(function(name))
    date = None if near is None else _date(near)
    return lambda name: date


def _date(near: Any) -> dt.datetime:
    """In UTC and without a time zone."""
    wanted = f'near must be a date such as "2022-07-13", not {near!r}'
    if type(near).__name__ == "datetime64":  # of numpy, which is not needed here
        near = near.astype("datetime64[us]").item()  # None for NaT, a number for a year beyond datetime
    elif not isinstance(near, (str, dt.date)):
        raise TypeError(wanted)
    try:
        if isinstance(near, str):
            near = dt.datetime.fromisoformat(_as_python_writes(near.strip()))
        if isinstance(near, dt.datetime):
            time = dt.datetime.combine(near.date(), near.time(), near.tzinfo)  # fails for NaT, which is a datetime
            if time.tzinfo is not None:
                time = time.astimezone(dt.timezone.utc).replace(tzinfo=None)
        else:
            time = dt.datetime(near.year, near.month, near.day)
    except (AttributeError, OverflowError, ValueError) as error:
        raise ValueError(wanted) from error
    if not _FIRST_YEAR <= time.year <= _LAST_YEAR:
        raise ValueError(f"{wanted}: years from {_FIRST_YEAR} to {_LAST_YEAR} are possible")
    return time


def _as_python_writes(text: str) -> str:
    """Python before 3.11 reads no Z, and only fractions of three or six digits."""
    text = re.sub(r"[zZ]$", "+00:00", text)
    return re.sub(r"[.,](\d+)", lambda fraction: "." + fraction[1][:6].ljust(6, "0"), text)


def nearest(near: dt.datetime, day: int, hour: int) -> dt.datetime:
    """Of the times with this day of the month and hour, the closest to a date; of two equally close, the earlier one.

    >>> import datetime
    >>> str(nearest(datetime.datetime(2022, 7, 2), 30, 12))
    '2022-06-30 12:00:00'
    """
    candidates = []
    for shift in range(-2, 3):
        year, month = divmod(near.year * 12 + near.month - 1 + shift, 12)
        if day <= calendar.monthrange(year, month + 1)[1]:
            candidates.append(dt.datetime(year, month + 1, day) + dt.timedelta(hours=hour))
    return min(candidates, key=lambda time: abs(time - near))
