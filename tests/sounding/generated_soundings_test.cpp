// What holds for whatever parts come in whatever order.
#include "SoundingParts.h"

#include "SoundingTable.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <set>
#include <string>
#include <vector>

namespace {

using corvane::ReadLevel;
using corvane::Sounding;
using corvane::SoundingLevel;
using sounding_test::Fields;
using sounding_test::handMade;
using sounding_test::PartReading;
using sounding_test::readLevel;
using sounding_test::soundingsOf;

ReadLevel anyLevel() {
    const auto kind = *rc::gen::element(Corvane::LT_SURFACE, Corvane::LT_MANDATORY, Corvane::LT_SIGNIFICANT,
                                        Corvane::LT_TROPOPAUSE, Corvane::LT_MAXWIND, Corvane::LT_DEEPLAYERWIND);
    Fields fields;
    fields[Corvane::LF_PRES] = *rc::gen::inRange(0, 40) * 25.0;
    const auto maybe = [&fields](Corvane::LEVEL_FIELD field, int low, int high) {
        if (*rc::gen::arbitrary<bool>()) {
            fields[field] = *rc::gen::inRange(low, high) / 10.0;
        }
    };
    maybe(Corvane::LF_TDRY, -900, 400);
    maybe(Corvane::LF_DP, -1000, 400);
    maybe(Corvane::LF_WSPD, 0, 1000);
    maybe(Corvane::LF_WDIR, 0, 3600);
    maybe(Corvane::LF_HEIGHT, -5000, 300000);
    return readLevel(kind, fields);
}

// Any part of one of a few stations and hours; two of one letter have the same content.
std::vector<PartReading> anyParts() {
    std::vector<PartReading> parts;
    for (const char* const station : {"72403", "72402", "70219"}) {
        for (const int hour : {0, 12}) {
            for (const char letter : {'A', 'B', 'C', 'D'}) {
                const int copies = *rc::gen::inRange(0, 3);
                PartReading part = handMade(letter, {});
                const int levels = copies == 0 ? 0 : *rc::gen::inRange(0, 8);
                for (int level = 0; level < levels; ++level) {
                    part.reading.levels.push_back(anyLevel());
                }
                part.reading.station = station;
                part.reading.hour = hour;
                part.reading.windsInKnots = *rc::gen::arbitrary<bool>();
                part.reading.groups = {part.part.mmmm, station, std::to_string(hour)};
                parts.insert(parts.end(), static_cast<std::size_t>(copies), part);
            }
        }
    }
    return parts;
}

std::set<std::string> tablesOf(const std::vector<Sounding>& soundings) {
    std::set<std::string> tables;
    for (const Sounding& sounding : soundings) {
        std::string rows = sounding.station + std::to_string(sounding.hour) + sounding.letters + "\n";
        corvane::table::appendSoundingRows(rows, sounding);
        tables.insert(rows);
    }
    return tables;
}

RC_GTEST_PROP(AnySoundings, DoNotDependOnTheOrderOfParts, ()) {
    std::vector<PartReading> parts = anyParts();
    const std::set<std::string> tables = tablesOf(soundingsOf(parts));
    std::mt19937 random(*rc::gen::arbitrary<unsigned>());
    std::shuffle(parts.begin(), parts.end(), random);
    RC_ASSERT(tablesOf(soundingsOf(parts)) == tables);
}

RC_GTEST_PROP(AnySoundings, HaveLevelsByStrictlyDescendingPressureWithValuesOfTheirParts, ()) {
    const std::vector<PartReading> parts = anyParts();
    for (const Sounding& sounding : soundingsOf(parts)) {
        double above = 1.0e9;
        for (const SoundingLevel& level : sounding.levels) {
            RC_ASSERT(level.pressure > 0.0);
            RC_ASSERT(level.pressure < above);
            above = level.pressure;
            RC_ASSERT(level.kinds > 0U);
            RC_ASSERT(!level.origins.empty());
            RC_ASSERT(!level.heightComputed || std::isfinite(level.height));
            const auto isReported = [&](Corvane::LEVEL_FIELD field, double value) {
                return std::isnan(value) || std::any_of(parts.begin(), parts.end(), [&](const PartReading& part) {
                           return part.reading.station == sounding.station && part.reading.hour == sounding.hour &&
                                  std::any_of(part.reading.levels.begin(), part.reading.levels.end(),
                                              [&](const ReadLevel& read) {
                                                  const Fields& fields = read.values.fields;
                                                  const auto found = fields.find(field);
                                                  return found != fields.end() && found->second == value &&
                                                         fields.at(Corvane::LF_PRES) == level.pressure;
                                              });
                       });
            };
            RC_ASSERT(isReported(Corvane::LF_TDRY, level.temperature));
            RC_ASSERT(isReported(Corvane::LF_DP, level.dewpoint));
            RC_ASSERT(isReported(Corvane::LF_WSPD, level.windSpeed));
            RC_ASSERT(isReported(Corvane::LF_WDIR, level.windDirection));
            RC_ASSERT(level.heightComputed || isReported(Corvane::LF_HEIGHT, level.height));
        }
    }
}

}  // namespace
