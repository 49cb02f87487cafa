"""Prints the soundings of bulletins, a line for each, and how many parts were read."""
from __future__ import annotations

import argparse
import os
import pathlib
import sys
import warnings

from . import NoPartWarning, __version__, _corvane, _inputs


def counted(number: int, name: str) -> str:
    return f"{number} {name}" if number == 1 else f"{number} {name}s"


def show(reader: _corvane.SoundingReader) -> None:
    soundings = reader.soundings()
    print("form        station    day hour launch parts levels  from hPa  to hPa")
    for sounding in soundings:
        levels = sounding.levels()
        pressures = [level[0] for level in levels if not level[9]]  # none below the ground
        span = f"{pressures[0]:9g} {pressures[-1]:7g}" if pressures else f"{'':17}"
        print(f"{sounding.form:<11} {sounding.station:<10} {sounding.day:3} {sounding.hour:4} {sounding.launch:>6} "
              f"{sounding.letters:>5} {len(levels):6} {span}".rstrip())
    counts = reader.counts
    print(f"{counted(len(soundings), 'sounding')}; {counted(counts['parts'], 'part')}: {counts['decoded']} decoded "
          f"({counts['mended']} mended, {counts['with losses']} with losses, {counts['doubtful']} doubtful), "
          f"{counts['NIL']} NIL, {counts['empty']} empty, {counts['refused']} refused")


def main() -> int:
    parser = argparse.ArgumentParser(prog="python3 -m corvane", description=__doc__)
    parser.add_argument("file", nargs="*", default=["-"],
                        help="bulletins, also packed with gzip; standard input without or with -")
    parser.add_argument("--version", action="version", version=f"corvane {__version__}")
    files = parser.parse_args().file

    reader = _corvane.SoundingReader(True)
    unread = 0
    for file in files:
        with warnings.catch_warnings(record=True) as caught:
            warnings.simplefilter("always", NoPartWarning)
            try:
                _inputs.add(reader, file if file == "-" else pathlib.Path(file))
            except OSError as error:
                print(f"corvane: {error.filename}: {error.strerror}", file=sys.stderr)
                unread += 1
        for warning in caught:
            print(f"corvane: {warning.message}", file=sys.stderr)
    if unread < len(files):
        try:
            show(reader)
            sys.stdout.flush()
        except BrokenPipeError:  # whoever read has seen enough, as head does; Python must not flush again at its end
            os.dup2(os.open(os.devnull, os.O_WRONLY), sys.stdout.fileno())
    if unread:
        return 2
    counts = reader.counts
    return 1 if counts["refused"] or counts["with losses"] or not counts["parts"] else 0


if __name__ == "__main__":
    sys.exit(main())
