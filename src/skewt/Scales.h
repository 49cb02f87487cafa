// Chooses what part of the atmosphere a diagram shows.
#ifndef CORVANE_SKEWT_SCALES_H
#define CORVANE_SKEWT_SCALES_H

#include "Geometry.h"
#include "Profile.h"

#include <corvane/SkewT.h>

namespace corvane::skewt {

// The coordinates of a diagram. They are the same for most soundings, so that pictures can be compared: 1050 to 100
// hPa, and a temperature range that puts the troposphere in the middle. The range shifts, and then widens, until it
// holds every temperature and dew point. The diagram fills the room, or its middle where the room is too high for that.
Geometry scales(const Box& room, const Profile& profile, const SkewTOptions& options);

}  // namespace corvane::skewt

#endif
