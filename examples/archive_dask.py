#!/usr/bin/env python3
"""Reads an archive of bulletin files with dask, on all processors or on a cluster, into Parquet or CSV.

Needs the Python package corvane and dask (Debian: python3-dask, python3-distributed). The files are given by name, or
by a pattern such as 'archive/*.txt.gz'. Writes a file for each of them into the folder OUT: Parquet where a package for
it is installed, otherwise CSV; and parts.csv, which says what was refused and why."""
import argparse
import glob
import importlib.util
import os
import re
import sys

import corvane.dask
import dask
from dask.diagnostics import ProgressBar


def date_of(path):
    """The date in the name of a file: 2022-07-13 or 20220713."""
    found = re.search(r"(\d{4})-?(\d\d)-?(\d\d)", os.path.basename(path))
    if not found:
        raise ValueError(f"{path}: no date in the name")
    return "-".join(found.groups())


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("out", metavar="OUT", help="the folder to write to")
    parser.add_argument("files", metavar="FILE", nargs="+", help="bulletins, or a pattern")
    parser.add_argument("--dated", action="store_true", help="add times, by the date in the name of each file")
    parser.add_argument("--scheduler", metavar="ADDRESS", help="of a cluster: tcp://HOST:8786; default: this machine")
    options = parser.parse_args()
    paths = sorted(path for pattern in options.files for path in glob.glob(pattern))
    if not paths:
        sys.exit("no such files")

    frame = corvane.dask.read_feed(paths, near=date_of if options.dated else None)
    parts = corvane.dask.read_parts(paths)
    os.makedirs(options.out, exist_ok=True)
    if importlib.util.find_spec("pyarrow") or importlib.util.find_spec("fastparquet"):
        write = frame.to_parquet(options.out, write_index=False, compute=False)
    else:
        names = [f"{number:06}.csv" for number in range(len(paths))]
        write = dask.delayed(frame.to_csv([os.path.join(options.out, name) for name in names], index=False,
                                          compute=False))
    report = dask.delayed(parts.to_csv(os.path.join(options.out, "parts.csv"), single_file=True, index=False,
                                       compute=False))

    if options.scheduler:
        from distributed import Client, progress

        with Client(options.scheduler) as client:
            futures = client.compute([write, report])
            progress(futures, notebook=False)
            client.gather(futures)
    else:
        with ProgressBar(out=sys.stderr):
            dask.compute(write, report, scheduler="processes")


if __name__ == "__main__":
    main()
