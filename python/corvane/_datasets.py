"""Data sets for xarray, after the CF conventions, chapter 9 and appendix H.3 (profile data)."""
from __future__ import annotations

from collections.abc import Iterable
from typing import TYPE_CHECKING, Any

import numpy
import pandas
import xarray

from . import _corvane, _frames

if TYPE_CHECKING:
    from ._soundings import Sounding

_LEVEL = {
    "pressure": {"standard_name": "air_pressure", "units": "hPa", "axis": "Z", "positive": "down"},
    "height": {"standard_name": "geopotential_height", "units": "m"},
    "temperature": {"standard_name": "air_temperature", "units": "degree_Celsius"},
    "dewpoint": {"standard_name": "dew_point_temperature", "units": "degree_Celsius"},
    "direction": {"standard_name": "wind_from_direction", "units": "degree"},
    "speed": {"standard_name": "wind_speed", "units": "m s-1"},
    "u_wind": {"standard_name": "eastward_wind", "units": "m s-1"},
    "v_wind": {"standard_name": "northward_wind", "units": "m s-1"},
    "doubt": {"long_name": "checks that doubt the level"},
    "kinds": {"long_name": "kinds of level"},
    "height_computed": {"long_name": "whether the height is computed from temperatures"},
}
_PROFILE = {
    "profile": {"long_name": "code form, station, day and hour", "cf_role": "profile_id"},
    "form": {"long_name": "WMO code form"},
    "station": {"standard_name": "platform_id"},
    "time": {"standard_name": "time"},
    "day": {"long_name": "day of the month"},
    "hour": {"long_name": "hour of the observation, UTC"},
    "launch": {"long_name": "time of launch GGgg, UTC"},
    "latitude": {"standard_name": "latitude", "units": "degrees_north"},
    "longitude": {"standard_name": "longitude", "units": "degrees_east"},
}
_ATTRIBUTES = {
    "Conventions": "CF-1.8",
    "featureType": "profile",
    "source": f"radiosonde or dropsonde, decoded by corvane {_corvane.__version__}",
}


def _profile_values(sounding: Sounding) -> dict[str, Any]:
    name = f"{sounding.form} {sounding.station}".strip()
    time = numpy.datetime64("NaT") if sounding.time is None else numpy.datetime64(sounding.time)
    return {
        "profile": f"{name} {sounding.day:02}{sounding.hour:02}",
        "form": sounding.form,
        "station": sounding.station,
        "time": time.astype("datetime64[ns]"),
        "day": sounding.day,
        "hour": sounding.hour,
        "launch": sounding.launch,
        "latitude": numpy.nan if sounding.latitude is None else sounding.latitude,
        "longitude": numpy.nan if sounding.longitude is None else sounding.longitude,
    }


def _level_variables(frame: pandas.DataFrame, dimension: str) -> dict[str, Any]:
    variables = {}
    for name, attributes in _LEVEL.items():
        column = frame[name]
        values = column.fillna("").to_numpy() if column.dtype == object else column.to_numpy()
        variables[name] = (dimension, values, dict(attributes))
    return variables


def _dataset(variables: dict[str, Any], profile: dict[str, Any]) -> xarray.Dataset:
    # The identifier, by which CF finds the profiles, is a variable like any other; the rest are coordinates.
    variables["profile"] = profile.pop("profile")
    coordinates = {**profile, "pressure": variables.pop("pressure")}
    dataset = xarray.Dataset(variables, coords=coordinates, attrs=dict(_ATTRIBUTES))
    dataset["time"].encoding.update(units="hours since 1970-01-01", dtype="float64", calendar="standard")
    return dataset


def profile(sounding: Sounding) -> xarray.Dataset:
    values = _profile_values(sounding)
    return _dataset(_level_variables(_frames.sounding_frame(sounding), "level"),
                    {name: ((), values[name], dict(_PROFILE[name])) for name in _PROFILE})


def ragged(soundings: Iterable[Sounding]) -> xarray.Dataset:
    soundings = list(soundings)
    if not soundings:
        raise ValueError("no soundings")
    frames = [_frames.sounding_frame(sounding) for sounding in soundings]
    rows = [_profile_values(sounding) for sounding in soundings]
    variables = _level_variables(pandas.concat(frames, ignore_index=True), "obs")
    variables["row_size"] = ("station_profile", numpy.array([len(frame) for frame in frames], dtype="int64"),
                             {"long_name": "number of levels of the profile", "sample_dimension": "obs"})
    values = {}
    for name, attributes in _PROFILE.items():
        column = [row[name] for row in rows]
        array = numpy.array(column, dtype=object if isinstance(column[0], str) else None)
        values[name] = ("station_profile", array, dict(attributes))
    return _dataset(variables, values)
