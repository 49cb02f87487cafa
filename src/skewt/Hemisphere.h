// On which side of the equator a sounding was made.
#ifndef CORVANE_SKEWT_HEMISPHERE_H
#define CORVANE_SKEWT_HEMISPHERE_H

#include <corvane/Sounding.h>

#include <string_view>

namespace corvane::skewt {

// Whether a land station lies south of the equator, by its number IIiii. False for anything that is not a station
// number.
bool southernStation(std::string_view station);

// Whether a sounding is from the southern hemisphere: by its latitude, or by the station number where the report gives
// no position, as a TEMP of a land station never does.
bool southern(const Sounding& sounding);

}  // namespace corvane::skewt

#endif
