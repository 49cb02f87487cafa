"""From the day of the month and the hour, which are all that a report gives, to a date."""
from __future__ import annotations

import calendar
import datetime as dt
from collections.abc import Callable
from typing import Any, Union

#: A date, or a function that gives the date for the name of an input.
Near = Union[str, dt.date, Any, Callable[[str], Any]]


def date_near(near: Near, source: str) -> dt.datetime:
    """The date that `near` means, in UTC and without a time zone."""
    if callable(near):
        near = near(source)
    if isinstance(near, dt.datetime):
        return near if near.tzinfo is None else near.astimezone(dt.timezone.utc).replace(tzinfo=None)
    if isinstance(near, dt.date):
        return dt.datetime(near.year, near.month, near.day)
    return dt.datetime.fromisoformat(str(near)[:26])  # numpy gives nanoseconds


def nearest(near: dt.datetime, day: int, hour: int) -> dt.datetime:
    """The day and hour nearest to a date that carry this day of the month; of two equally near, the earlier one.

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
