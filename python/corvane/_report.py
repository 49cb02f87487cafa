"""One report."""
from __future__ import annotations

from dataclasses import dataclass
from typing import TYPE_CHECKING, NamedTuple, Optional, Union

from . import _corvane

if TYPE_CHECKING:
    import pandas


class Level(NamedTuple):
    """One level of a report: its kind and what is reported there. A quantity that is not reported is None.

    NaN appears where the report gives solidi and the program writes nan.

    >>> level = decode("TTAA 56001 72201 99014 32259 11504 00140 30057 11506 88999 77999").levels[0]
    >>> level
    Level(type='surface', pres=1014.0, tdry=32.2, dp=23.2, wspd=2.0576, wdir=115.0)
    >>> level.height is None
    True
    """

    type: str  #: "surface", "mandatory", "significant", "tropopause", "maxwind", or the kind of a dropsonde's remark
    pres: Optional[float]  #: pressure, hPa; tenths of hPa for a maximum wind of part C
    tdry: Optional[float]  #: air temperature, degrees Celsius
    dp: Optional[float]  #: dew point, degrees Celsius
    wspd: Optional[float]  #: wind speed, m/s
    wdir: Optional[float]  #: direction from which the wind blows, degrees true
    height: Optional[float]  #: geopotential metres
    time: Optional[float]  #: of a release or splash point, its digits hhmmss or hhmm as one number
    lat: Optional[float]  #: latitude of a release or splash point, degrees
    lon: Optional[float]  #: longitude of a release or splash point, degrees
    pres2: Optional[float]  #: second pressure of a deep layer, hPa
    va: Optional[float]  #: first wind-shear value of a maximum wind, m/s
    vb: Optional[float]  #: second wind-shear value of a maximum wind, m/s

    def __repr__(self) -> str:
        given = (f"{name}={value!r}" for name, value in zip(self._fields, self) if value is not None)
        return f"Level({', '.join(given)})"


@dataclass(frozen=True, repr=False)
class Report:
    """One decoded report, exactly what the program `corvane` decodes. Made by :func:`decode`.

    Station, position, day and hour are those of the last part.

    >>> report = decode("TTAA 56001 72201 99014 32259 11504 00140 30057 11506 88999 77999")
    >>> report
    <corvane.Report TEMP 72201, day 6, 00 UTC, 2 levels>
    >>> report.station, report.day, report.hour, report.winds_in_knots
    ('72201', 6, 0, True)
    """

    form: str  #: "TEMP", "TEMP SHIP", "TEMP DROP", "TEMP MOBIL"; "UNKNOWN" for a report without a part
    heading: str  #: the abbreviated heading; usually empty
    station: str  #: number IIiii or call sign; empty for TEMP DROP
    day: Optional[int]  #: of the month
    hour: Optional[int]  #: UTC
    launch: Optional[str]  #: time of launch GGgg, UTC, four digits
    latitude: Optional[float]  #: degrees north; None for TEMP
    longitude: Optional[float]  #: degrees east; None for TEMP
    winds_in_knots: bool  #: whether the report gives knots; the levels have m/s either way
    groups: tuple[str, ...]  #: all groups of the report
    levels: tuple[Level, ...]  #: in the order of the table

    def __repr__(self) -> str:
        name = f" {self.station}" if self.station else ""
        when = f", day {self.day}, {self.hour:02} UTC" if self.hour is not None else ""
        return f"<corvane.Report {self.form}{name}{when}, {len(self.levels)} levels>"

    def to_pandas(self) -> pandas.DataFrame:
        """The table that the program writes: eleven columns, a row for each level.

        Missing values are NaN; units are in ``attrs["units"]``.

        >>> report = decode("TTAA 56001 72201 99014 32259 11504 00140 30057 11506 88999 77999")
        >>> report.to_pandas()[["type", "pres", "tdry", "dp", "height"]]
                type    pres  tdry    dp  height
        0    surface  1014.0  32.2  23.2     NaN
        1  mandatory  1000.0  30.0  23.0   140.0
        """
        from . import _frames

        return _frames.report_frame(self)


def decode(text: Union[str, bytes, bytearray, memoryview]) -> Report:
    """Decodes one report, just as the program `corvane` does. Nothing is mended or guessed.

    Args:
        text: code groups separated by white space, with or without a heading, in one or more parts.

    Raises:
        CodingFault: the report has a coding fault, or a group is too short to be read.

    >>> decode("TTAA 56001 72201 99014 32259 11504 00140 30057 11506 88999 77999").levels[1].height
    140.0
    >>> decode("TTAA 56001 72201 99014")
    Traceback (most recent call last):
    ...
    corvane.CodingFault: At least 2 code groups are required. Error detected at99014  ...
    """
    if isinstance(text, str):
        try:
            content = text.encode("utf-8", "surrogateescape")
        except UnicodeEncodeError:  # surrogates that stand for no byte
            content = text.encode("utf-8", "surrogatepass")
    elif isinstance(text, (bytes, bytearray, memoryview)):
        content = bytes(text)
    else:
        raise TypeError(f"a report is str or bytes, not {type(text).__name__}")
    *values, levels = _corvane.decode(content)
    return Report(*[*values, tuple(map(Level._make, levels))])
