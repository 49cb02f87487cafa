#include <corvane/SkewT.h>

#include "skewt/Drawing.h"

namespace corvane {

std::string skewT(const Sounding& sounding, const SkewTOptions& options) {
    return skewt::draw(sounding, options).svg;
}

}  // namespace corvane
