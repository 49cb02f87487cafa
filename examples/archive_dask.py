#!/usr/bin/env python3
"""Reads an archive of bulletin files with dask, on all processors or on a cluster, into Parquet or CSV.

Needs the Python package corvane and dask (Debian: python3-dask, python3-distributed). The files are given by name, or
by a pattern such as 'archive/*.txt.gz'. Writes two files for each of them: its levels into the folder OUT/levels, as
Parquet where a package for it is installed and otherwise as CSV, and its parts, with what was refused and why, as CSV
into OUT/parts. Both folders are data sets, read by pandas.read_parquet or dask.dataframe.read_csv as a whole."""
from __future__ import annotations

import argparse
import glob
import importlib.util
import os
import re
import sys
import warnings

import dask
from dask.diagnostics import ProgressBar

import corvane


def files_of(patterns: list[str]) -> list[str]:
    """The files that names and patterns stand for, each once."""
    paths: set[str] = set()
    for pattern in patterns:
        found = [pattern] if os.path.exists(pattern) else glob.glob(pattern)
        if not found:
            sys.exit(f"{pattern}: no such file")
        paths.update(found)
    return sorted(paths)


def date_of(path: str) -> str:
    """The date in the name of a file: 2022-07-13 or 20220713."""
    found = re.search(r"(\d{4})-?(\d\d)-?(\d\d)", os.path.basename(path))
    if not found:
        raise ValueError(f"{path}: no date in the name")
    return "-".join(found.groups())


def convert(path: str, out: str, name: str, dated: bool, parquet: bool) -> None:
    """Reads one file and writes its levels and its parts."""
    with warnings.catch_warnings():
        warnings.simplefilter("ignore", corvane.RefusedWarning)  # the table of parts tells
        frame = corvane.read_feed(path, near=date_of if dated else None)
    frame.attrs.pop("parts").to_csv(os.path.join(out, "parts", name + ".csv"), index=False)
    levels = os.path.join(out, "levels", name)
    if parquet:
        # A column that is empty in this file has the same type as in the others.
        texts = [column for column in frame if frame[column].dtype == object]
        frame.astype(dict.fromkeys(texts, "string")).to_parquet(levels + ".parquet", index=False)
    else:
        frame.to_csv(levels + ".csv", index=False)


def main() -> None:
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("out", metavar="OUT", help="the folder to write to")
    parser.add_argument("files", metavar="FILE", nargs="+", help="bulletins, or a pattern")
    parser.add_argument("--dated", action="store_true", help="add times, by the date in the name of each file")
    parser.add_argument("--scheduler", metavar="ADDRESS", help="of a cluster: tcp://HOST:8786; default: this machine")
    options = parser.parse_args()
    paths = files_of(options.files)

    for folder in ("levels", "parts"):
        os.makedirs(os.path.join(options.out, folder), exist_ok=True)
    parquet = any(importlib.util.find_spec(package) for package in ("pyarrow", "fastparquet"))
    task = dask.delayed(convert)
    tasks = [task(path, options.out, f"{number:06}", options.dated, parquet) for number, path in enumerate(paths)]
    if options.scheduler:
        from distributed import Client, progress

        with Client(options.scheduler) as client:
            futures = client.compute(tasks)
            progress(futures, notebook=False)
            client.gather(futures)
    else:
        with ProgressBar(out=sys.stderr):
            dask.compute(*tasks, scheduler="processes")


if __name__ == "__main__":
    main()
