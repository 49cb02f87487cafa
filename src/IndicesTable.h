// The table of indices: its columns, and how its header and its rows are written.
#ifndef CORVANE_INDICES_TABLE_H
#define CORVANE_INDICES_TABLE_H

#include "Csv.h"
#include "Table.h"

#include <corvane/Indices.h>

#include <array>
#include <cmath>
#include <string>
#include <string_view>

namespace corvane::table {

// A column of numbers: its name and the member that holds the number.
struct IndexColumn {
    std::string_view name;
    double (*value)(const Indices& indices);
};

// The columns after form, station, day, hour and levels. hPa, degrees Celsius, J/kg, mm, metres above the ground, m/s,
// K/km.
inline constexpr std::array<IndexColumn, 25> INDEX_COLUMNS{{
    {"sb_p", [](const Indices& indices) { return indices.surface.pressure; }},
    {"sb_lcl_p", [](const Indices& indices) { return indices.surface.lclPressure; }},
    {"sb_lcl_t", [](const Indices& indices) { return indices.surface.lclTemperature; }},
    {"sb_lfc_p", [](const Indices& indices) { return indices.surface.lfcPressure; }},
    {"sb_el_p", [](const Indices& indices) { return indices.surface.elPressure; }},
    {"sb_cape", [](const Indices& indices) { return indices.surface.cape; }},
    {"sb_cin", [](const Indices& indices) { return indices.surface.cin; }},
    {"sb_li", [](const Indices& indices) { return indices.surface.liftedIndex; }},
    {"mu_p", [](const Indices& indices) { return indices.mostUnstable.pressure; }},
    {"mu_lcl_p", [](const Indices& indices) { return indices.mostUnstable.lclPressure; }},
    {"mu_lcl_t", [](const Indices& indices) { return indices.mostUnstable.lclTemperature; }},
    {"mu_lfc_p", [](const Indices& indices) { return indices.mostUnstable.lfcPressure; }},
    {"mu_el_p", [](const Indices& indices) { return indices.mostUnstable.elPressure; }},
    {"mu_cape", [](const Indices& indices) { return indices.mostUnstable.cape; }},
    {"mu_cin", [](const Indices& indices) { return indices.mostUnstable.cin; }},
    {"mu_li", [](const Indices& indices) { return indices.mostUnstable.liftedIndex; }},
    {"k_index", [](const Indices& indices) { return indices.kIndex; }},
    {"total_totals", [](const Indices& indices) { return indices.totalTotals; }},
    {"pw", [](const Indices& indices) { return indices.precipitableWater; }},
    {"fzl_p", [](const Indices& indices) { return indices.freezingLevelPressure; }},
    {"fzl_z", [](const Indices& indices) { return indices.freezingLevelHeight; }},
    {"wbz_p", [](const Indices& indices) { return indices.wetBulbZeroPressure; }},
    {"wbz_z", [](const Indices& indices) { return indices.wetBulbZeroHeight; }},
    {"shear_0_6km", [](const Indices& indices) { return indices.shear0To6Km; }},
    {"lr_700_500", [](const Indices& indices) { return indices.lapseRate700To500; }},
}};

// Appends a number with six significant digits, never as -0; nothing for a missing one.
inline void appendIndex(std::string& out, double value) {
    if (std::isfinite(value)) {
        appendNumber(out, value + 0.0);  // -0 + 0 is 0
    }
}

// Appends the header without a line end.
inline void appendIndicesHeader(std::string& out) {
    out += "form,station,day,hour,levels";
    for (const IndexColumn& column : INDEX_COLUMNS) {
        out += ',';
        out += column.name;
    }
}

// Appends the numbers of a row, each after a comma.
inline void appendIndices(std::string& out, const Indices& indices) {
    for (const IndexColumn& column : INDEX_COLUMNS) {
        out += ',';
        appendIndex(out, column.value(indices));
    }
}

// Appends the row of a sounding without a line end.
inline void appendIndicesRow(std::string& out, const Sounding& sounding, const Indices& indices) {
    out += formName(sounding.form);
    out += ',';
    appendCsvField(out, sounding.station);
    for (const std::string& number :
         {std::to_string(sounding.day), std::to_string(sounding.hour), std::to_string(sounding.levels.size())}) {
        out += ',';
        out += number;
    }
    appendIndices(out, indices);
}

}  // namespace corvane::table

#endif
