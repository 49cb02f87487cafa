// Indices of real soundings against a second computation, within the accuracy that doc/indices.md names.
#include "IndicesTable.h"
#include "PlainIndices.h"
#include "RealSoundings.h"
#include "SaneIndices.h"

#include <corvane/Indices.h>

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <map>
#include <random>
#include <string>
#include <vector>

namespace {

using namespace corvane;

const double NONE = SoundingLevel::NOT_GIVEN;

struct Tolerance {
    double absolute;
    double relative;
};

Tolerance toleranceOf(const std::string& column) {
    const std::map<std::string, Tolerance> tolerances{
        {"p", {1e-9, 0.0}},         {"lcl_p", {0.5, 0.0}},         {"lcl_t", {0.05, 0.0}}, {"lfc_p", {3.0, 0.0}},
        {"el_p", {3.0, 0.0}},       {"cape", {10.0, 0.01}},        {"cin", {5.0, 0.03}},   {"li", {0.1, 0.0}},
        {"k_index", {0.05, 0.0}},   {"total_totals", {0.05, 0.0}}, {"pw", {0.1, 0.005}},   {"fzl_p", {0.5, 0.0}},
        {"fzl_z", {5.0, 0.0}},      {"wbz_p", {1.0, 0.0}},         {"wbz_z", {10.0, 0.0}}, {"shear_0_6km", {0.1, 0.0}},
        {"lr_700_500", {0.01, 0.0}}};
    const bool ofParcel = column.compare(0, 3, "sb_") == 0 || column.compare(0, 3, "mu_") == 0;
    return tolerances.at(ofParcel ? column.substr(3) : column);
}

bool agree(double value, const std::map<std::string, double>& plain, const std::string& column) {
    const auto found = plain.find(column);
    if (std::isnan(value) || found == plain.end()) {
        return std::isnan(value) && found == plain.end();
    }
    const Tolerance tolerance = toleranceOf(column);
    return std::fabs(value - found->second) <=
           std::max(tolerance.absolute, tolerance.relative * std::fabs(found->second));
}

// What a comparison came to.
struct Comparison {
    std::map<std::string, int> values;  // by column
    // Values of parcels that graze the sounding: where a hundredth of a kelvin decides whether two layers are one, both
    // answers are right.
    int grazing = 0;
};

void compareWithPlain(const Sounding& sounding, Comparison& comparison) {
    const Indices indices = indicesOf(sounding);
    expectSane(sounding, indices);
    const std::map<std::string, double> plain = plainIndices(sounding);
    for (const table::IndexColumn& column : table::INDEX_COLUMNS) {
        const std::string name(column.name);
        const double value = column.value(indices);
        comparison.values[name] += std::isnan(value) ? 0 : 1;
        if (agree(value, plain, name)) {
            continue;
        }
        const auto found = plain.find(name);
        EXPECT_TRUE(agree(value, plainIndices(sounding, 0.01), name) ||
                    agree(value, plainIndices(sounding, -0.01), name))
            << name << ' ' << sounding.station << ": " << value << " instead of "
            << (found == plain.end() ? NONE : found->second);
        ++comparison.grazing;
    }
}

TEST(RealIndices, RealSoundingsAgreeWithASecondComputation) {
    Comparison comparison;
    std::size_t compared = 0;
    for (const auto* soundings : {&realSoundings(), &realSoundingsOfPartA()}) {
        for (const Sounding& sounding : *soundings) {
            compareWithPlain(sounding, comparison);
            ++compared;
        }
    }
    EXPECT_EQ(comparison.grazing, 0);
    EXPECT_GE(compared, 200U);
    for (const table::IndexColumn& column : table::INDEX_COLUMNS) {
        EXPECT_GE(comparison.values[std::string(column.name)], 80) << column.name;
    }
}

// Real soundings with levels and dew points missing and with temperatures a little off.
TEST(RealIndices, DamagedSoundingsAgreeWithASecondComputation) {
    std::mt19937 random(20220713);
    const auto chance = [&random](unsigned percent) { return random() % 100 < percent; };
    Comparison comparison;
    for (Sounding sounding : realSoundings()) {
        std::vector<SoundingLevel> kept;
        for (SoundingLevel level : sounding.levels) {
            if (level.belowGround) {
                continue;
            }
            const bool isGround = kept.empty();
            if (!isGround && chance(30)) {
                continue;
            }
            if (chance(30)) {
                level.dewpoint = NONE;
            }
            if (!isGround && chance(10)) {
                level.temperature = NONE;
            }
            level.temperature += static_cast<double>(random() % 21) / 10.0;
            kept.push_back(level);
        }
        sounding.levels = kept;
        compareWithPlain(sounding, comparison);
    }
    EXPECT_LE(comparison.grazing, 8) << "the values of two soundings";
    EXPECT_GE(comparison.values["sb_cape"], 100);
    EXPECT_GE(comparison.values["sb_lfc_p"], 50);
}

}  // namespace
