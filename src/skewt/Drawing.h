// A skew-T diagram as it is drawn: the document, and where things are in it.
#ifndef CORVANE_SKEWT_DRAWING_H
#define CORVANE_SKEWT_DRAWING_H

#include "Geometry.h"
#include "Svg.h"

#include <corvane/SkewT.h>

#include <string>
#include <vector>

namespace corvane::skewt {

// A finished picture.
struct Drawing {
    std::string svg;
    Box picture;
    Geometry geometry;
    Box barbColumn;
    Box hodograph;
    std::vector<Label> labels;  // every text, except those that only a screen reader gives
    std::vector<Box> barbs;     // what each barb covers
};

Drawing draw(const Sounding& sounding, const SkewTOptions& options);

}  // namespace corvane::skewt

#endif
