// The table of indices below a diagram, as texts.
#ifndef CORVANE_SKEWT_INDEXTABLE_H
#define CORVANE_SKEWT_INDEXTABLE_H

#include <corvane/Indices.h>
#include <corvane/SkewT.h>

#include <string>
#include <vector>

namespace corvane::skewt {

// A quantity of both parcels.
struct ParcelRow {
    std::string name;
    std::string surface;
    std::string mostUnstable;
};

// A quantity of the sounding.
struct IndexRow {
    std::string name;
    std::string value;
};

// A number of an index, or an em dash where there is none.
std::string indexText(double value, int decimals, const std::string& unit = {});

std::vector<ParcelRow> parcelRows(const Indices& indices);
std::vector<IndexRow> indexRows(const Indices& indices, SkewTOptions::WindUnit unit);

}  // namespace corvane::skewt

#endif
