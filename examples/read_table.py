#!/usr/bin/env python3
"""usage: read_table.py TABLE...

Reads the tables that corvane writes into one pandas table, with the name of its file in front of each level. Shows how
many levels of each kind there are, and the standard surfaces."""
import sys

if sys.argv[1:2] in (["-h"], ["--help"]):
    print(__doc__)
    sys.exit(0)
if len(sys.argv) < 2:
    print(__doc__, file=sys.stderr)
    sys.exit(2)

import pandas

# An empty field (not reported) and "nan" (solidi in place of a value) both become NaN. The time remains text: it is
# hhmmss, or hhmm, without leading zeros. Types are given because a table may have no row to tell them from.
QUANTITIES = ["pres", "tdry", "dp", "wspd", "wdir", "height", "lat", "lon", "pres2"]
TYPES = {"type": "string", "time": "string", **dict.fromkeys(QUANTITIES, float)}

tables = {name: pandas.read_csv(name, dtype=TYPES) for name in sys.argv[1:]}
table = pandas.concat(tables, names=["file"]).reset_index("file").reset_index(drop=True)

print(table.groupby("type", sort=False).size().to_string())
standard = table[table["type"] == "mandatory"].set_index(["file", "pres"])
print(standard[["height", "tdry", "dp", "wdir", "wspd"]].to_string(sparsify=False))
