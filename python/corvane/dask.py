"""Archives of many bulletin files with dask: a partition for each file.

    import corvane.dask
    frame = corvane.dask.read_feed(paths, near=date_of)     # a dask DataFrame; nothing is read yet
    frame[frame["pres"] == 500].groupby("station")["tdry"].mean().compute()

Whatever dask has for a cluster works with it: the partitions are independent. If a worker is lost, only the files it
was reading are read again.
"""
from __future__ import annotations

import os
import warnings
from collections.abc import Iterable
from typing import TYPE_CHECKING, Any, Optional, Union

import dask
import dask.dataframe

from . import RefusedWarning, _times
from . import read_feed as _read_feed

if TYPE_CHECKING:
    import pandas

__all__ = ["read_feed", "read_parts"]

_Paths = Union[str, "os.PathLike[str]", Iterable[Union[str, "os.PathLike[str]"]]]


def _read(path: Union[str, list[str]], near: Optional[_times.Near], mends: bool, parts: bool) -> pandas.DataFrame:
    with warnings.catch_warnings():
        warnings.simplefilter("ignore", RefusedWarning)  # read_parts tells them
        frame = _read_feed(path, near=near, mends=mends)
    found = frame.attrs.pop("parts")
    if parts:
        return found.copy()
    return frame


def _frame(paths: _Paths, near: Optional[_times.Near], mends: bool, parts: bool) -> Any:
    names = [os.fspath(path) for path in ([paths] if isinstance(paths, (str, os.PathLike)) else paths)]
    if not names:
        raise ValueError("no files")
    meta = _read([], near=near, mends=mends, parts=parts)
    read = dask.delayed(_read, pure=True)
    return dask.dataframe.from_delayed([read(name, near, mends, parts) for name in names], meta=meta, verify_meta=False)


def read_feed(paths: _Paths, *, near: Optional[_times.Near] = None, mends: bool = True) -> Any:
    """The table of :func:`corvane.read_feed` over many files as a dask DataFrame, a partition for each file.

    Nothing is read before the result is computed. A file that cannot be read ends the computation with an OSError that
    names its path.

    Args:
        paths: the files; the workers must see them under these paths.
        near: a date, or a function from the path to the date of its bulletins.
        mends: as for :func:`corvane.read_feed`.

    >>> frame = read_feed(["bulletins.txt"], near="2022-07-13")
    >>> frame.npartitions
    1
    >>> float(frame[frame["station"] == "72572"]["tdry"].max().compute())
    36.6
    """
    return _frame(paths, near, mends, False)


def read_parts(paths: _Paths, *, mends: bool = True) -> Any:
    """The table of parts over many files: which were decoded, mended, empty or refused, and why.

    >>> parts = read_parts(["bulletins.txt"])
    >>> sorted(parts["status"].unique().compute())
    ['decoded', 'refused']
    """
    return _frame(paths, None, mends, True)
