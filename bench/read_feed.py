#!/usr/bin/env python3
"""Compares, in turn within one run, what it costs to read bulletins into a frame: corvane-feed writing its table,
corvane.read_feed, and pandas.read_csv of the table. Processor seconds, the minimum of the rounds.

usage: bench/read_feed.py CORVANE-FEED BULLETINS [ROUNDS]"""
import os
import resource
import subprocess
import sys
import tempfile
import time
import warnings

import pandas

import corvane


def children():
    usage = resource.getrusage(resource.RUSAGE_CHILDREN)
    return usage.ru_utime + usage.ru_stime


def main():
    if len(sys.argv) not in (3, 4):
        sys.exit(__doc__)
    program, bulletins = sys.argv[1:3]
    rounds = int(sys.argv[3]) if len(sys.argv) > 3 else 10
    warnings.simplefilter("ignore")
    taken = {"corvane-feed": [], "read_feed": [], "read_csv": []}
    with tempfile.TemporaryDirectory() as folder:
        table = os.path.join(folder, "table.csv")
        for _ in range(rounds):
            begin = children()
            with open(table, "wb") as out:
                subprocess.run([program, "--quiet", bulletins], stdout=out, stderr=subprocess.DEVNULL)
            taken["corvane-feed"].append(children() - begin)
            begin = time.process_time()
            frame = corvane.read_feed(bulletins)
            taken["read_feed"].append(time.process_time() - begin)
            begin = time.process_time()
            read = pandas.read_csv(table, low_memory=False)
            taken["read_csv"].append(time.process_time() - begin)
            assert len(read) == len(frame)
    least = {name: min(times) for name, times in taken.items()}
    for name, seconds in least.items():
        print(f"{name:12} {seconds * 1000:8.1f} ms")
    print(f"read_feed / corvane-feed {least['read_feed'] / least['corvane-feed']:.2f}")
    print(f"read_feed / (corvane-feed + read_csv) "
          f"{least['read_feed'] / (least['corvane-feed'] + least['read_csv']):.2f}")


main()
