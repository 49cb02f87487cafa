/// @file
/// Draws a sounding as a skew-T log-p diagram in SVG.
#ifndef CORVANE_SKEWT_H
#define CORVANE_SKEWT_H

#include <corvane/Sounding.h>

#include <string>

namespace corvane {

/// How a diagram is drawn.
struct SkewTOptions {
    enum WindUnit { KNOTS, METRES_PER_SECOND };

    WindUnit units = KNOTS;  ///< of barbs and hodograph
    /// Pressure of the upper edge, hPa. 0: 100, or the lowest pressure of the sounding where it does not reach that
    /// high.
    double top = 0.0;
    int width = 1000;   ///< of the picture, pixels
    int height = 1100;  ///< of the picture, pixels
    bool dark = false;  ///< light lines on a dark ground
};

/// Draws a sounding: one complete SVG 1.1 document, under 120 kB. Texts of the report are escaped. A sounding without
/// levels gives a diagram without curves.
CORVANE_API std::string skewT(const Sounding& sounding, const SkewTOptions& options = {});

}  // namespace corvane

#endif
