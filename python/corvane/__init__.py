"""Decodes upper-air soundings in the WMO code forms TEMP, TEMP SHIP, TEMP DROP and TEMP MOBIL.

Bulletins as they are received, of many stations, into a table for pandas::

    frame = corvane.read_feed("bulletins.txt")      # a row for each level of each part, repeats included

Whole soundings, each with a profile, indices and a picture::

    soundings = corvane.soundings("bulletins.txt", near="2022-07-13")
    profiles = pandas.concat([sounding.to_pandas() for sounding in soundings])
    profiles[profiles["pressure"] == 500][["station", "time", "temperature"]]
    soundings[0].skewt().save("first.svg")

One clean report, strictly by the code form::

    report = corvane.decode(text)      # raises corvane.CodingFault

Functions:
    read_feed     bulletins into a pandas.DataFrame, a row for each level of each part
    soundings     bulletins into a list of Sounding
    to_xarray     several soundings into one xarray.Dataset
    decode        one report into a Report

Units: hPa, degrees Celsius, m/s, degrees true, geopotential metres, UTC. Numbers have the six significant digits of
the tables that the programs write. Nothing is made up: a value that is not reported is NaN in a table and None in an
object. All functions may run in several threads at once; the global interpreter lock is released during decoding.
pandas, numpy and xarray are needed only where their objects are asked for. ``corvane.dask`` reads archives with dask.

``python3 -m corvane FILE`` prints the soundings of a file.
"""
from __future__ import annotations

from collections.abc import Iterable
from typing import TYPE_CHECKING

from ._corvane import __version__
from ._faults import CodingFault, NoPartWarning, RefusedWarning
from ._feed import read_feed
from ._report import Level, Report, decode
from ._soundings import SVG, Doubt, Mend, Sounding, SoundingLevel, SoundingPart, soundings

if TYPE_CHECKING:
    import xarray

__all__ = [
    "CodingFault", "Doubt", "Level", "Mend", "NoPartWarning", "RefusedWarning", "Report", "SVG", "Sounding",
    "SoundingLevel", "SoundingPart", "__version__", "decode", "read_feed", "soundings", "to_xarray",
]

for _public in (CodingFault, Doubt, Level, Mend, NoPartWarning, RefusedWarning, Report, SVG, Sounding, SoundingLevel,
                SoundingPart, decode, read_feed, soundings):
    _public.__module__ = __name__  # where users find them


def to_xarray(soundings: Iterable[Sounding]) -> xarray.Dataset:
    """Several soundings as one CF data set: profiles in a contiguous ragged array.

    The levels of all soundings follow one another along ``obs``; ``row_size`` says how many belong to each
    profile.

    >>> bulletin = b"TTAA 56001 72201 99014 32259 11504 00140 30057 11506 88999 77999="
    >>> to_xarray(soundings(bulletin))["row_size"].attrs["sample_dimension"]
    'obs'
    """
    from . import _datasets

    return _datasets.ragged(soundings)
