// Chooses what part of the atmosphere a diagram shows.
#ifndef CORVANE_SKEWT_SCALES_H
#define CORVANE_SKEWT_SCALES_H

#include "Geometry.h"
#include "Profile.h"

#include <corvane/SkewT.h>

namespace corvane::skewt {

// The coordinates of a diagram in this frame. They are the same for most soundings, so that pictures can be compared:
// 1050 to 100 hPa, and a temperature range that puts the troposphere in the middle. The range shifts, and then widens,
// as far as it takes to hold every temperature and dew point.
Geometry scales(const Box& frame, const Profile& profile, const SkewTOptions& options);

}  // namespace corvane::skewt

#endif
