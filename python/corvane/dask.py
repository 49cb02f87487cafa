"""Archives of many bulletin files with dask: a partition for each file.

    import corvane.dask
    frame = corvane.dask.read_feed(paths, near=date_of)     # a dask DataFrame; nothing is read yet
    frame[frame["pres"] == 500].groupby("station")["tdry"].mean().compute()

Whatever dask has for a cluster works with it: the partitions are independent, and a worker that is lost costs only the
files that it was reading, which another one reads again.
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


def _read(path: str, near: Optional[_times.Near], mends: bool, parts: bool) -> pandas.DataFrame:
    with warnings.catch_warnings():
        warnings.simplefilter("ignore", RefusedWarning)  # read_parts tells them
        frame = _read_feed(path, near=near, mends=mends)
    found = frame.attrs.pop("parts")
    if parts:
        return found.copy()
    return frame


def _frame(paths: Iterable[Union[str, os.PathLike[str]]], near: Optional[_times.Near], mends: bool, parts: bool) -> Any:
    names = [os.fspath(path) for path in paths]
    if not names:
        raise ValueError("no files")
    meta = _read_feed(b"", near=near if near is None or not callable(near) else "2000-01-01")
    if parts:
        meta = meta.attrs["parts"].copy()
    else:
        meta.attrs.pop("parts")
    read = dask.delayed(_read, pure=True)
    return dask.dataframe.from_delayed([read(name, near, mends, parts) for name in names], meta=meta, verify_meta=False)


def read_feed(paths: Iterable[Union[str, os.PathLike[str]]], *, near: Optional[_times.Near] = None,
              mends: bool = True) -> Any:
    """The table of :func:`corvane.read_feed` over many files as a dask DataFrame, a partition for each file.

    Nothing is read before the result is computed. A file that cannot be read ends the computation with an OSError that
    names its path.

    Args:
        paths: the files; the workers must see them under these paths.
        near: a date, or a function from the path to the date of its bulletins.
        mends: as for :func:`corvane.read_feed`.
    """
    return _frame(paths, near, mends, False)


def read_parts(paths: Iterable[Union[str, os.PathLike[str]]], *, mends: bool = True) -> Any:
    """The table of parts over many files: which were decoded, mended, empty or refused, and why."""
    return _frame(paths, None, mends, True)
