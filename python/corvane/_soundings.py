"""Whole soundings."""
from __future__ import annotations

import datetime as dt
import numbers
import operator
import os
from collections.abc import Iterable
from typing import TYPE_CHECKING, Any, NamedTuple, Optional, Union

from . import _corvane, _inputs, _times
from ._refused import warn_of_refused

if TYPE_CHECKING:
    import pandas
    import xarray


class SoundingLevel(NamedTuple):
    """Everything that the parts of a sounding give at one pressure. What they do not give is None.

    `kinds` and `doubt` are names separated by spaces; see :meth:`Sounding.to_pandas`.

    >>> bulletin = b"TTAA 56001 72201 99014 32259 11504 00140 30057 11506 88999 77999="
    >>> level = soundings(bulletin)[0].levels[0]
    >>> level.pressure, level.temperature, level.kinds, level.below_ground
    (1014.0, 32.2, 'surface', False)
    """

    pressure: float  #: hPa
    height: Optional[float]  #: geopotential metres
    temperature: Optional[float]  #: degrees Celsius
    dewpoint: Optional[float]  #: degrees Celsius
    direction: Optional[float]  #: from which the wind blows, degrees true
    speed: Optional[float]  #: m/s
    kinds: str  #: of "surface mandatory significant tropopause maxwind"
    doubt: str  #: the checks that doubt the level; usually empty
    height_computed: bool  #: whether the height is computed from temperatures, not reported
    below_ground: bool  #: whether its pressure is above that of the surface


class Mend(NamedTuple):
    """A change to a part, made so that it could be read.

    >>> bulletin = b"TTAA 5600/ 72201 99014 32259 11504 00140 30057 11506 88999 77999="
    >>> soundings(bulletin)[0].parts[0].mends
    (Mend(name='id', text='5600/ read as 56000', lost=False),)
    """

    name: str  #: "id", "closer", "join" ...
    text: str  #: what was done, with the groups concerned
    lost: bool  #: whether something that the part reports is not in the levels


class Doubt(NamedTuple):
    """A doubt about a part.

    >>> bulletin = b"TTAA 56009 72201 99014 32259 11504 00140 30057 11506 92180 25057 11506 88999 77999="
    >>> soundings(bulletin)[0].parts[0].doubts[0].text
    'the heights of 1000 and 925 hPa imply a mean temperature of -255.6 degrees'
    """

    name: str  #: the check: "hydrostatic", "tropopause", "lapse-rate"
    text: str  #: what does not fit


class SoundingPart(NamedTuple):
    """A part of a sounding: where it is in the input and what was done to it.

    >>> bulletin = b"TTAA 56001 72201 99014 32259 11504 00140 30057 11506 88999 77999="
    >>> soundings(bulletin)[0].parts[0]
    SoundingPart(source='-:1', heading='', letter='A', mends=(), doubts=())
    """

    source: str  #: FILE:LINE
    heading: str  #: the abbreviated heading of its bulletin
    letter: str  #: "A" to "D"
    mends: tuple[Mend, ...]
    doubts: tuple[Doubt, ...]


class SVG(str):
    """A picture in SVG: a string that a notebook shows as the picture.

    >>> bulletin = b"TTAA 56001 72201 99014 32259 11504 00140 30057 11506 88999 77999="
    >>> picture = soundings(bulletin)[0].skewt()
    >>> isinstance(picture, SVG), picture.rstrip()[-6:]
    (True, '</svg>')
    """

    def _repr_svg_(self) -> str:
        return str(self)

    def save(self, path: Union[str, os.PathLike[str]]) -> None:
        """Writes the picture to a file.

        >>> bulletin = b"TTAA 56001 72201 99014 32259 11504 00140 30057 11506 88999 77999="
        >>> soundings(bulletin)[0].skewt().save("72201.svg")
        """
        with open(path, "w", encoding="utf-8") as file:
            file.write(self)


class Sounding:
    """One ascent or drop: its parts joined, its levels by descending pressure. Made by :func:`soundings`.

    >>> bulletin = b"TTAA 56001 72201 99014 32259 11504 00140 30057 11506 88999 77999="
    >>> sounding = soundings(bulletin)[0]
    >>> sounding
    <corvane.Sounding TEMP 72201, day 6, 00 UTC, part A, 2 levels>
    >>> sounding.levels[0].temperature
    32.2
    """

    __slots__ = ("_data", "_time")

    def __init__(self, data: _corvane.Sounding, time: Optional[dt.datetime] = None) -> None:
        self._data = data
        self._time = time

    @property
    def form(self) -> str:
        """ "TEMP", "TEMP SHIP", "TEMP DROP" or "TEMP MOBIL"."""
        return self._data.form

    @property
    def station(self) -> str:
        """Number IIiii or call sign; empty for TEMP DROP."""
        return self._data.station

    @property
    def day(self) -> int:
        """Day of the month."""
        return self._data.day

    @property
    def hour(self) -> int:
        """Hour of the observation, UTC."""
        return self._data.hour

    @property
    def time(self) -> Optional[dt.datetime]:
        """Day and hour as a date, UTC, without a time zone; None unless `near` was given: no year is invented."""
        return self._time

    @property
    def latitude(self) -> Optional[float]:
        """Degrees north; None for TEMP, which has a station number instead."""
        return self._data.latitude

    @property
    def longitude(self) -> Optional[float]:
        """Degrees east; None for TEMP."""
        return self._data.longitude

    @property
    def elevation(self) -> Optional[float]:
        """Metres above sea level, of a TEMP MOBIL."""
        return self._data.elevation

    @property
    def launch(self) -> str:
        """Time of launch GGgg, UTC, four digits; empty where it is not given."""
        return self._data.launch

    @property
    def letters(self) -> str:
        """The parts that it is made of, such as "ABCD"."""
        return self._data.letters

    @property
    def replaced(self) -> int:
        """How many different copies of its parts were replaced by a correction or a later copy."""
        return self._data.replaced

    @property
    def levels(self) -> tuple[SoundingLevel, ...]:
        """All levels by descending pressure, those below the ground included."""
        return tuple(SoundingLevel._make(level) for level in self._data.levels())

    @property
    def parts(self) -> tuple[SoundingPart, ...]:
        """The parts, with what was mended in them and what is doubted."""
        return tuple(
            SoundingPart(source, heading, letter, tuple(map(Mend._make, mends)), tuple(map(Doubt._make, doubts)))
            for source, heading, letter, mends, doubts in self._data.parts()
        )

    def __len__(self) -> int:
        return self._data.count

    def __bool__(self) -> bool:
        return True

    def __repr__(self) -> str:
        name = f" {self.station}" if self.station else ""
        plural = "part" if len(self.letters) == 1 else "parts"
        when = f"day {self.day}, {self.hour:02} UTC" if self.time is None else f"{self.time:%Y-%m-%d %H} UTC"
        return f"<corvane.Sounding {self.form}{name}, {when}, {plural} {self.letters}, {len(self)} levels>"

    def _identity(self) -> tuple[Any, ...]:
        return (self.form, self.station, self.day, self.hour, self.time, self.latitude, self.longitude,
                self.elevation, self.launch, self.replaced, self.parts, self.levels)

    def __eq__(self, other: object) -> bool:
        if not isinstance(other, Sounding):
            return NotImplemented
        return self._identity() == other._identity()

    def __hash__(self) -> int:
        return hash((self.form, self.station, self.day, self.hour, self.time))

    def __reduce__(self) -> tuple[Any, ...]:
        return Sounding, (self._data, self._time)

    def to_pandas(self) -> pandas.DataFrame:
        """The profile, surface first, in the columns that tools for upper-air data share.

        ``pressure`` (hPa), ``height`` (meter), ``temperature``, ``dewpoint`` (degC), ``direction`` (degrees),
        ``speed``, ``u_wind``, ``v_wind`` (m/s), ``station``, ``time`` (UTC), ``latitude``, ``longitude`` (degrees);
        then ``doubt`` and ``kinds`` (names separated by spaces) and ``height_computed``. Missing values are NaN. Levels
        below the ground are left out, and so are those without temperature, dew point and wind. Units, as texts for
        pint, are in ``attrs["units"]``.

        >>> bulletin = b"TTAA 56001 72201 99014 32259 11504 00140 30057 11506 88999 77999="
        >>> frame = soundings(bulletin)[0].to_pandas()
        >>> frame[["pressure", "height", "temperature", "dewpoint", "direction", "speed"]]
           pressure  height  temperature  dewpoint  direction   speed
        0    1014.0    15.0         32.2      23.2      115.0  2.0576
        1    1000.0   140.0         30.0      23.0      115.0  3.0864
        >>> frame.attrs["units"]["height"]
        'meter'
        """
        from . import _frames

        return _frames.sounding_frame(self)

    def to_xarray(self) -> xarray.Dataset:
        """The profile as a CF data set of feature type profile, one-dimensional along ``level``.

        Rows and values are those of :meth:`to_pandas`. See :func:`to_xarray` for several soundings.

        >>> bulletin = b"TTAA 56001 72201 99014 32259 11504 00140 30057 11506 88999 77999="
        >>> soundings(bulletin)[0].to_xarray()["temperature"].attrs["standard_name"]
        'air_temperature'
        """
        from . import _datasets

        return _datasets.profile(self)

    def indices(self) -> dict[str, float]:
        """The numbers that ``corvane-skewt --indices`` writes, NaN where the sounding cannot give one.

        ``sb_`` is the parcel of the surface, ``mu_`` the most unstable one: ``_p``, ``_lcl_p``, ``_lfc_p``, ``_el_p``
        (hPa), ``_lcl_t`` (degrees Celsius), ``_cape``, ``_cin`` (J/kg), ``_li`` (K). ``k_index``, ``total_totals``
        (degrees Celsius), ``pw`` (mm), ``fzl_p``, ``wbz_p`` (hPa), ``fzl_z``, ``wbz_z`` (metres above the ground),
        ``shear_0_6km`` (m/s), ``lr_700_500`` (K/km).

        >>> bulletin = b"TTAA 56001 72201 99014 32259 11504 00140 30057 11506 88999 77999="
        >>> round(soundings(bulletin)[0].indices()["sb_lcl_p"])
        890
        """
        return self._data.indices()

    def skewt(self, *, units: str = "kt", top: Optional[float] = None, width: int = 1000, height: int = 1100,
              dark: bool = False) -> SVG:
        """The skew-T log-p diagram in SVG: a string that a notebook shows as a picture.

        Args:
            units: of wind speeds, "kt" or "mps".
            top: pressure of the upper edge, 1 to 900 hPa; 100 or just above the highest level if not given.
            width, height: in pixels, from 400x440 to 10000x10000.
            dark: light lines on a dark ground.

        Raises:
            ValueError: an argument is out of these ranges.
            TypeError: the width or the height is not an integer, or the top is not a number.

        >>> bulletin = b"TTAA 56001 72201 99014 32259 11504 00140 30057 11506 88999 77999="
        >>> picture = soundings(bulletin)[0].skewt()
        >>> picture.startswith("<?xml"), "TEMP" in picture
        (True, True)
        """
        if units not in ("kt", "mps"):
            raise ValueError(f'units of wind are "kt" or "mps", not {units!r}')
        if top is not None and not isinstance(top, (float, numbers.Real)):
            raise TypeError(f"top must be a number or None, not {top!r}")
        if top is not None and not 1 <= top <= 900:
            raise ValueError(f"top must be from 1 to 900 hPa, not {top!r}")
        width, height = operator.index(width), operator.index(height)
        if not (400 <= width <= 10000 and 440 <= height <= 10000):
            raise ValueError(f"the size must be from 400x440 to 10000x10000, not {width}x{height}")
        return SVG(self._data.skewt(units == "kt", 0.0 if top is None else float(top), width, height, dark))

    def _repr_svg_(self) -> str:
        return str(self.skewt())


def soundings(source: Union[_inputs.Source, Iterable[_inputs.Source]], *, near: Optional[_times.Near] = None,
              mends: bool = True) -> list[Sounding]:
    """Reads bulletins and joins their parts into soundings, in the order in which their first parts come.

    The parts of one code form, station, day and hour are one sounding, wherever they are. Repeats count once, and a
    correction replaces what it corrects. Do not pass bulletins of several months together: day 13 of two months would
    be one sounding.

    Args:
        source, near, mends: as for :func:`read_feed`.

    >>> bulletin = b"TTAA 56001 72201 99014 32259 11504 00140 30057 11506 88999 77999="
    >>> for sounding in soundings(bulletin, near="2026-11-08"):
    ...     print(sounding.station, sounding.time, len(sounding))
    72201 2026-11-06 00:00:00 2
    """
    reader = _corvane.SoundingReader(mends)
    date_of = _times.resolver(near)
    dates = {}
    for one in _inputs.sources(source):
        name = _inputs.name_of(one)
        dates[name] = date_of(name)
        _inputs.add(reader, one)
    warn_of_refused(reader.counts)
    found = []
    for data in reader.soundings():
        date = dates[data.parts()[0][0].rpartition(":")[0]]
        found.append(Sounding(data, None if date is None else _times.nearest(date, data.day, data.hour)))
    return found
