// The hodograph of a sounding: the ends of its wind vectors joined from the ground up.
#ifndef CORVANE_SKEWT_HODOGRAPH_H
#define CORVANE_SKEWT_HODOGRAPH_H

#include "Geometry.h"
#include "Profile.h"

#include <corvane/SkewT.h>

#include <vector>

namespace corvane::skewt {

// A hodograph in a square of the picture. East is right, north is up.
struct Hodograph {
    // A height above the ground, on the line.
    struct Mark {
        int kilometres;
        Point at;
    };

    Point centre;            // calm
    double ringSpeed = 0.0;  // of the first ring, in the unit of the picture; each further one has as much more
    int rings = 0;
    double pixelsPerUnit = 0.0;  // of speed
    std::vector<Line> lines;     // with gaps where winds are missing
    std::vector<Mark> marks;     // 0, 1, 3, 6, 9 and 12 km; none where the ground is far below
};

// The hodograph of the lowest 12 km above the ground; without heights, of the winds up to 200 hPa.
// @param radius pixels that the outermost ring may have.
Hodograph hodograph(const Profile& profile, SkewTOptions::WindUnit unit, Point centre, double radius);

}  // namespace corvane::skewt

#endif
