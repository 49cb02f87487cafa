"""Prints the soundings of bulletins, a line for each, and how many parts were read."""
from __future__ import annotations

import argparse
import sys

from . import __version__, _corvane, _inputs


def main() -> int:
    parser = argparse.ArgumentParser(prog="python3 -m corvane", description=__doc__)
    parser.add_argument("file", nargs="*", default=["-"], help="bulletins, also .gz; standard input without or with -")
    parser.add_argument("--version", action="version", version=f"corvane {__version__}")
    files = parser.parse_args().file

    reader = _corvane.SoundingReader(True)
    trouble = False
    for file in files:
        try:
            _inputs.add(reader, file)
        except OSError as error:
            print(f"corvane: {error.filename}: {error.strerror}", file=sys.stderr)
            trouble = True
    soundings = reader.soundings()
    print("form        station    day hour launch parts levels  from hPa  to hPa")
    for sounding in soundings:
        pressures = [level[0] for level in sounding.levels()]
        span = f"{pressures[0]:9g} {pressures[-1]:7g}" if pressures else f"{'':17}"
        print(f"{sounding.form:<11} {sounding.station:<10} {sounding.day:3} {sounding.hour:4} {sounding.launch:>6} "
              f"{sounding.letters:>5} {len(pressures):6} {span}".rstrip())
    counts = reader.counts
    print(f"{len(soundings)} soundings; {counts['parts']} parts: {counts['decoded']} decoded "
          f"({counts['mended']} mended, {counts['with losses']} with losses, {counts['doubtful']} doubtful), "
          f"{counts['NIL']} NIL, {counts['empty']} empty, {counts['refused']} refused")
    if trouble:
        return 2
    return 1 if counts["refused"] or counts["with losses"] or not counts["parts"] else 0


if __name__ == "__main__":
    sys.exit(main())
