// Wind speeds in the unit of a picture.
#ifndef CORVANE_SKEWT_UNITS_H
#define CORVANE_SKEWT_UNITS_H

#include <corvane/SkewT.h>

namespace corvane::skewt {

// A knot as the decoder converts it, so that a speed reported in knots comes back as it was.
constexpr double KNOT = 0.5144;

inline double inUnit(double metresPerSecond, SkewTOptions::WindUnit unit) {
    return unit == SkewTOptions::KNOTS ? metresPerSecond / KNOT : metresPerSecond;
}

inline const char* unitName(SkewTOptions::WindUnit unit) {
    return unit == SkewTOptions::KNOTS ? "kt" : "m/s";
}

// The speed that half a feather of a barb stands for.
inline double halfFeather(SkewTOptions::WindUnit unit) {
    return unit == SkewTOptions::KNOTS ? 5.0 : 2.5;
}

}  // namespace corvane::skewt

#endif
