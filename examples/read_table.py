#!/usr/bin/python3
# Reads a table into pandas: counts the levels of each kind and shows the standard surfaces.
#
#     corvane REPORT > TABLE
#     read_table.py TABLE
import sys

import pandas

# An empty field (not reported) and "nan" (solidi where a value should be) both become NaN. The time is kept as text: it
# is hhmmss, or hhmm, without leading zeros.
table = pandas.read_csv(sys.argv[1], dtype={"time": "string"})

print(table.groupby("type", sort=False).size().to_string())
standard = table[table["type"] == "mandatory"].set_index("pres")
print(standard[["height", "tdry", "dp", "wdir", "wspd"]].to_string())
