// Wind barbs: which feathers a speed has, and where they point.
#ifndef CORVANE_SKEWT_BARB_H
#define CORVANE_SKEWT_BARB_H

#include "Geometry.h"

#include <string>
#include <vector>

namespace corvane::skewt {

// The feathers of a wind (WMO-No. 485, Attachment IV: symbol for wind). A pennant stands for 50 knots or 25 m/s, a
// full feather for 10 knots or 5 m/s, a half one for 5 knots or 2.5 m/s.
struct Feathers {
    int pennants = 0;
    int full = 0;
    int half = 0;

    bool none() const { return pennants + full + half == 0; }
};

// The feathers of a speed, rounded to the nearest half feather, halves up: 97.5 knots have two pennants.
// @param speed in `half`s: the speed in knots / 5, or in m/s / 2.5. More than 270 knots are drawn as 270.
Feathers feathers(double halves);

// A barb ready to be drawn. A calm has a ring and nothing else.
struct Barb {
    bool calm = false;
    Point station;              // the free end of the staff, or the centre of the ring
    double ring = 0.0;          // radius of the ring of a calm
    std::vector<Line> strokes;  // the staff, then the feathers
    std::vector<Line> pennants;

    // What it covers, with the width of its strokes.
    Box bounds(double stroke) const;
};

// Draws a barb.
// @param direction degrees true from which the wind comes: the staff points there, north up.
// @param halves as for feathers(); 0 is a calm, and less than half of a feather is a bare staff.
// @param length of the staff, pixels.
// @param southern whether the feathers are on the right of the wind, as they do in the southern hemisphere, instead
//        of the left: toward lower pressure.
Barb barb(Point station, double direction, double halves, double length, bool southern);

}  // namespace corvane::skewt

#endif
