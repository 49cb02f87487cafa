// The skew-T diagram: its coordinates, its lines, the barbs, what it says, and that nothing makes it overlap, leave its
// frame or break.
#include "skewt/Barb.h"
#include "skewt/Drawing.h"
#include "skewt/Geometry.h"
#include "skewt/Hemisphere.h"
#include "skewt/Hodograph.h"
#include "skewt/Profile.h"
#include "skewt/Scales.h"
#include "skewt/Svg.h"
#include "sounding/RealSoundings.h"
#include "support/Samples.h"
#include "support/SvgReader.h"

#include <corvane/Feed.h>
#include <corvane/Indices.h>
#include <corvane/SkewT.h>
#include <corvane/Sounding.h>
#include <corvane/Thermodynamics.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <limits>
#include <map>
#include <random>
#include <sstream>
#include <string>
#include <unistd.h>
#include <utility>
#include <vector>

namespace {

using corvane::skewT;
using corvane::SkewTOptions;
using corvane::Sounding;
using corvane::SoundingLevel;
namespace skewt = corvane::skewt;

constexpr double NONE = SoundingLevel::NOT_GIVEN;
constexpr double KNOT = 0.5144;  // m/s
constexpr std::size_t LARGEST = 120000;

SoundingLevel level(double pressure, double temperature, double dewpoint, double knots = NONE, double direction = NONE,
                    unsigned kinds = SoundingLevel::SIGNIFICANT) {
    SoundingLevel made;
    made.pressure = pressure;
    made.temperature = temperature;
    made.dewpoint = dewpoint;
    made.windSpeed = knots * KNOT;
    made.windDirection = direction;
    made.kinds = kinds;
    return made;
}

Sounding ascent(std::vector<SoundingLevel> levels, const std::string& station = "72201") {
    Sounding made;
    made.form = Corvane::WMO_TEMP;
    made.station = station;
    made.day = 13;
    made.hour = 0;
    made.letters = "AB";
    made.levels = std::move(levels);
    return made;
}

// The sounding of one of the sample reports.
Sounding sample(const std::string& name) {
    for (const std::filesystem::path& path : reportSamples()) {
        if (path.filename() == name) {
            return soundingsIn(contentOf(path), name).at(0);
        }
    }
    throw std::runtime_error("no sample " + name);
}

// Every sounding of the sample reports.
const std::vector<Sounding>& samples() {
    static const std::vector<Sounding> all = [] {
        std::vector<Sounding> found;
        for (const std::filesystem::path& path : reportSamples()) {
            for (Sounding& sounding : soundingsIn(contentOf(path), path.filename().string())) {
                found.push_back(std::move(sounding));
            }
        }
        return found;
    }();
    return all;
}

// Sizes, tops, units and colours that a picture is asked for in.
std::vector<SkewTOptions> manyOptions() {
    std::vector<SkewTOptions> all;
    const std::array<std::pair<int, int>, 5> sizes{{{1000, 1100}, {400, 440}, {1600, 900}, {600, 1400}, {3000, 3300}}};
    for (const auto& [width, height] : sizes) {
        for (const double top : {0.0, 10.0, 300.0, 700.0}) {
            SkewTOptions options;
            options.width = width;
            options.height = height;
            options.top = top;
            options.units = top == 10.0 ? SkewTOptions::METRES_PER_SECOND : SkewTOptions::KNOTS;
            options.dark = width == 400;
            all.push_back(options);
        }
    }
    return all;
}

std::string label(const Sounding& sounding, const SkewTOptions& options) {
    return sounding.station + " in " + std::to_string(options.width) + 'x' + std::to_string(options.height) +
           " up to " + std::to_string(options.top);
}

bool isIn(const skewt::Box& box, std::pair<double, double> point, double tolerance) {
    return box.grown(tolerance).contains(skewt::Point{point.first, point.second});
}

// What holds of every picture, whatever the sounding.
void expectSound(const Sounding& sounding, const SkewTOptions& options) {
    SCOPED_TRACE(label(sounding, options));
    const skewt::Drawing drawing = skewt::draw(sounding, options);
    EXPECT_EQ(skewT(sounding, options), drawing.svg);
    EXPECT_LT(drawing.svg.size(), LARGEST);
    const SvgDocument svg(drawing.svg);
    EXPECT_EQ(svg.all().front().name, "svg");
    ASSERT_GE(svg.all().size(), 10U);
    EXPECT_EQ(svg.all()[1].name, "title");
    EXPECT_EQ(svg.all()[2].name, "desc");
    EXPECT_FALSE(svg.all()[1].text.empty());
    EXPECT_FALSE(svg.all()[2].text.empty());

    constexpr double ROUNDING = 0.11;  // coordinates are in tenths
    const skewt::Box& frame = drawing.geometry.frame();
    for (const SvgElement& element : svg.all()) {
        const bool inDiagram = element.isIn("isobars") || element.isIn("isotherms") || element.isIn("dry-adiabats") ||
                               element.isIn("saturated-adiabats") || element.isIn("mixing-ratios") ||
                               element.attribute("id") == "parcel" ||
                               ((element.isIn("temperature") || element.isIn("dewpoint")) && element.name == "path");
        const skewt::Box& bounds = inDiagram                   ? frame
                                   : element.isIn("winds")     ? drawing.barbColumn
                                   : element.isIn("hodograph") ? drawing.hodograph
                                                               : drawing.picture;
        for (const auto& line : element.lines()) {
            for (const auto& point : line) {
                EXPECT_TRUE(isIn(bounds, point, ROUNDING))
                    << element.name << ' ' << element.attribute("id") << " at " << point.first << ' ' << point.second;
            }
        }
    }
    for (std::size_t i = 0; i < drawing.labels.size(); ++i) {
        const skewt::Label& one = drawing.labels[i];
        EXPECT_TRUE(drawing.picture.contains(one.box)) << one.text;
        for (std::size_t j = i + 1; j < drawing.labels.size(); ++j) {
            EXPECT_FALSE(one.box.overlaps(drawing.labels[j].box)) << one.text << " and " << drawing.labels[j].text;
        }
        EXPECT_FALSE(std::any_of(drawing.barbs.begin(), drawing.barbs.end(),
                                 [&](const skewt::Box& barb) { return barb.overlaps(one.box); }))
            << one.text << " and a barb";
    }
    for (std::size_t i = 0; i < drawing.barbs.size(); ++i) {
        for (std::size_t j = i + 1; j < drawing.barbs.size(); ++j) {
            EXPECT_FALSE(drawing.barbs[i].overlaps(drawing.barbs[j]));
        }
    }
}

std::vector<std::string> textsOf(const SvgDocument& svg) {
    std::vector<std::string> texts;
    for (const SvgElement& element : svg.all()) {
        if (element.name == "text") {
            texts.push_back(element.text);
        }
    }
    return texts;
}

bool shows(const Sounding& sounding, const std::string& text, const SkewTOptions& options = {}) {
    const std::vector<std::string> texts = textsOf(SvgDocument(skewT(sounding, options)));
    return std::find(texts.begin(), texts.end(), text) != texts.end();
}

// The value in a row of the table of indices: the texts on the line of its name, from left to right.
std::vector<std::string> tableRow(const Sounding& sounding, const std::string& name, const SkewTOptions& options = {}) {
    const SvgDocument svg(skewT(sounding, options));
    const std::vector<SvgElement> texts = svg.in("indices", "text");
    const auto found =
        std::find_if(texts.begin(), texts.end(), [&](const SvgElement& text) { return text.text == name; });
    std::vector<std::string> values;
    for (auto text = found; text != texts.end() && text->number("y") == found->number("y"); ++text) {
        values.push_back(text->text);
    }
    return values.empty() ? values : std::vector<std::string>(values.begin() + 1, values.end());
}

// ---- coordinates ---------------------------------------------------------------------------------------------------

TEST(SkewTGeometry, PixelOfPressureAndTemperatureAndBack) {
    for (const skewt::Geometry& geometry : {skewt::Geometry({66, 97, 846, 820}, 1050, 100, -40, 80),
                                            skewt::Geometry({10, 20, 310, 260}, 1070, 5, -90, 170)}) {
        for (double pressure = 5.0; pressure <= 1080.0; pressure += 7.3) {
            for (double temperature = -120.0; temperature <= 60.0; temperature += 4.9) {
                const skewt::Point at = geometry.at(pressure, temperature);
                EXPECT_NEAR(geometry.pressure(at.y), pressure, 1e-9);
                EXPECT_NEAR(geometry.temperature(at), temperature, 1e-9);
                EXPECT_DOUBLE_EQ(geometry.y(pressure), at.y);
            }
        }
    }
}

TEST(SkewTGeometry, EdgesAndCornersHaveTheirValues) {
    const skewt::Geometry geometry({100, 50, 900, 650}, 1050, 100, -40, 80);
    EXPECT_DOUBLE_EQ(geometry.y(1050), 650);
    EXPECT_DOUBLE_EQ(geometry.y(100), 50);
    EXPECT_DOUBLE_EQ(geometry.at(1050, -40).x, 100);
    EXPECT_DOUBLE_EQ(geometry.at(1050, 40).x, 900);
    // Half of the logarithm is half of the way: sqrt(1050 * 100).
    EXPECT_NEAR(geometry.y(std::sqrt(105000.0)), 350, 1e-9);
}

TEST(SkewTGeometry, IsothermsRiseToTheRightAtFortyFiveDegrees) {
    for (const SkewTOptions& options : manyOptions()) {
        const skewt::Drawing drawing = skewt::draw(sample("temp-camborne-2026.txt"), options);
        const std::vector<SvgElement> isotherms = SvgDocument(drawing.svg).in("isotherms", "path");
        ASSERT_GE(isotherms.size(), 4U);
        for (const SvgElement& isotherm : isotherms) {
            for (const auto& line : isotherm.lines()) {
                ASSERT_EQ(line.size(), 2U);
                const double right = line.back().first - line.front().first;
                const double up = line.front().second - line.back().second;
                EXPECT_NEAR(right, up, 0.11);
                // One temperature from end to end, and a round one.
                const double below = drawing.geometry.temperature({line.front().first, line.front().second});
                const double above = drawing.geometry.temperature({line.back().first, line.back().second});
                EXPECT_NEAR(below, above, 0.11 / drawing.geometry.pixelsPerDegree());
                EXPECT_NEAR(below, std::round(below / 5.0) * 5.0, 0.11 / drawing.geometry.pixelsPerDegree());
                EXPECT_EQ(isotherm.attribute("class") == "zero", std::fabs(below) < 1.0);
            }
        }
    }
}

TEST(SkewTGeometry, LinesAreCutAtTheBox) {
    const skewt::Box box{0, 0, 10, 10};
    skewt::Point from{-5, 5};
    skewt::Point to{15, 5};
    ASSERT_TRUE(skewt::clip(box, from, to));
    EXPECT_DOUBLE_EQ(from.x, 0);
    EXPECT_DOUBLE_EQ(to.x, 10);
    from = {-5, 11};
    to = {15, 11};
    EXPECT_FALSE(skewt::clip(box, from, to));
    from = {-1, 8};
    to = {3, 12};
    ASSERT_TRUE(skewt::clip(box, from, to));
    EXPECT_NEAR(from.x, 0, 1e-12);
    EXPECT_NEAR(from.y, 9, 1e-12);
    EXPECT_NEAR(to.x, 1, 1e-12);
    EXPECT_NEAR(to.y, 10, 1e-12);
    // Out and in again: two pieces.
    const std::vector<skewt::Line> pieces = skewt::clip(box, {{2, 2}, {8, 2}, {20, 5}, {8, 8}, {2, 8}});
    ASSERT_EQ(pieces.size(), 2U);
    EXPECT_EQ(pieces[0].size(), 3U);
    EXPECT_EQ(pieces[1].size(), 3U);
}

TEST(SkewTGeometry, DiagramShows1050To100UnlessTheSoundingAsksForMore) {
    const auto scales = [](const Sounding& sounding, double top = 0.0) {
        SkewTOptions options;
        options.top = top;
        return skewt::draw(sounding, options).geometry;
    };
    const skewt::Geometry usual = scales(sample("temp-bet-dagan-2026.txt"));
    EXPECT_DOUBLE_EQ(usual.bottomPressure(), 1050);
    EXPECT_DOUBLE_EQ(usual.topPressure(), 100);
    EXPECT_DOUBLE_EQ(usual.cornerTemperature(), -40);
    EXPECT_DOUBLE_EQ(usual.range(), 80);
    EXPECT_DOUBLE_EQ(scales(sample("temp-bet-dagan-2026.txt"), 20).topPressure(), 20);
    EXPECT_DOUBLE_EQ(scales(ascent({level(1006, 25, 20), level(698, 8, 2)})).topPressure(), 650);
    EXPECT_DOUBLE_EQ(scales(ascent({level(1006, 25, 20), level(154, -60, NONE)})).topPressure(), 150);
    EXPECT_DOUBLE_EQ(scales(ascent({level(1064, -45, -50), level(100, -60, NONE)})).bottomPressure(), 1070);
    // Part C alone: from where it begins to where it ends.
    const skewt::Geometry aloft = scales(ascent({level(70, -60, NONE), level(10, -45, NONE)}));
    EXPECT_DOUBLE_EQ(aloft.topPressure(), 10);
    EXPECT_LT(aloft.bottomPressure(), 100);
    EXPECT_GE(aloft.bottomPressure(), 70);
}

TEST(SkewTGeometry, EveryTemperatureOfTheSamplesIsInTheFrame) {
    std::size_t counted = 0;
    for (const Sounding& sounding : samples()) {
        for (const double top : {0.0, 10.0}) {
            SkewTOptions options;
            options.top = top;
            const skewt::Geometry geometry = skewt::draw(sounding, options).geometry;
            for (const SoundingLevel& drawn : sounding.levels) {
                if (drawn.belowGround || drawn.pressure < geometry.topPressure()) {
                    continue;
                }
                for (const double temperature : {drawn.temperature, drawn.dewpoint}) {
                    if (!std::isnan(temperature)) {
                        EXPECT_TRUE(geometry.frame().grown(0.01).contains(geometry.at(drawn.pressure, temperature)))
                            << sounding.station << ' ' << drawn.pressure << ' ' << temperature;
                        ++counted;
                    }
                }
            }
        }
    }
    EXPECT_GT(counted, 2000U);
}

TEST(SkewTGeometry, EveryTemperatureIsInAPictureOfAnyShape) {
    const std::array<std::pair<int, int>, 8> shapes{
        {{400, 2000}, {400, 700}, {1000, 1600}, {1000, 1800}, {600, 1400}, {3000, 440}, {10000, 440}, {1600, 900}}};
    for (const char* name : {"temp-camborne-2026.txt", "temp-bet-dagan-2026.txt", "temp-south-pole-2026.txt",
                             "temp-marion-island.txt", "drop-maria-2017.txt"}) {
        const Sounding sounding = sample(name);
        for (const auto& [width, height] : shapes) {
            SCOPED_TRACE(std::string(name) + ' ' + std::to_string(width) + 'x' + std::to_string(height));
            SkewTOptions options;
            options.width = width;
            options.height = height;
            const skewt::Drawing drawing = skewt::draw(sounding, options);
            const skewt::Geometry& map = drawing.geometry;
            for (const SoundingLevel& drawn : sounding.levels) {
                for (const double temperature : {drawn.temperature, drawn.dewpoint}) {
                    if (!drawn.belowGround && drawn.pressure >= map.topPressure() && !std::isnan(temperature)) {
                        EXPECT_TRUE(map.frame().grown(0.01).contains(map.at(drawn.pressure, temperature)))
                            << drawn.pressure << ' ' << temperature;
                    }
                }
            }
            // And it is still a picture of the atmosphere.
            EXPECT_LE(map.cornerTemperature() + map.range(), 80.0);
            EXPECT_GE(map.cornerTemperature(), -100.0);
            EXPECT_GE(SvgDocument(drawing.svg).in("dry-adiabats", "path").size(), 8U);
        }
    }
}

// ---- the lines of the background ----------------------------------------------------------------------------------

// Calls a function with pressure and temperature of every point of every line in a group.
void forPoints(const skewt::Drawing& drawing, const std::string& group,
               const std::function<void(std::size_t line, double pressure, double temperature)>& function) {
    std::size_t number = 0;
    for (const SvgElement& path : SvgDocument(drawing.svg).in(group, "path")) {
        for (const auto& line : path.lines()) {
            for (const auto& [x, y] : line) {
                function(number, drawing.geometry.pressure(y), drawing.geometry.temperature({x, y}));
            }
        }
        ++number;
    }
}

TEST(SkewTGrid, QuantitiesAreConstantAlongTheirLines) {
    SkewTOptions options;
    options.width = 4000;  // tenths of a pixel are small there
    options.height = 4400;
    const skewt::Drawing drawing = skewt::draw(sample("temp-key-west-2022.txt"), options);
    const auto spread = [&](const std::string& group, const std::function<double(double, double)>& quantity) {
        std::map<std::size_t, std::pair<double, double>> bounds;
        forPoints(drawing, group, [&](std::size_t line, double pressure, double temperature) {
            const double value = quantity(pressure, temperature);
            const auto [entry, isNew] = bounds.emplace(line, std::make_pair(value, value));
            entry->second = {std::min(entry->second.first, value), std::max(entry->second.second, value)};
        });
        double widest = 0.0;
        for (const auto& [line, values] : bounds) {
            widest = std::max(widest, values.second - values.first);
        }
        EXPECT_GE(bounds.size(), 8U) << group;
        return widest;
    };
    EXPECT_LT(spread("dry-adiabats", [](double p, double t) { return (t + 273.15) * std::pow(1000.0 / p, 0.2854); }),
              0.1);
    EXPECT_LT(spread("mixing-ratios",
                     [](double p, double t) {
                         const double e = 6.112 * std::exp(17.67 * t / (t + 243.5));
                         return std::log(0.622 * e / (p - e));
                     }),
              0.002);
    // Above theta_w 24 the formulas of theta_e and of the pseudoadiabat drift apart by more.
    EXPECT_LT(spread("saturated-adiabats",
                     [](double p, double t) {
                         const double thetaE = corvane::equivalentPotentialTemperature(t, t, p);
                         return thetaE < 350.0 ? thetaE : 0.0;
                     }),
              0.1);
    EXPECT_DOUBLE_EQ(spread("isobars", [](double p, double) { return std::round(p / 25.0); }), 0.0);
}

TEST(SkewTGrid, TopmostIsobarIsNamed) {
    for (const SkewTOptions& options : manyOptions()) {
        for (const char* name : {"temp-bet-dagan-2026.txt", "temp-camborne-2026.txt"}) {
            SCOPED_TRACE(label(sample(name), options));
            const skewt::Drawing drawing = skewt::draw(sample(name), options);
            const skewt::Box& frame = drawing.geometry.frame();
            const auto isThere = [&](const std::string& text, double y) {
                return std::any_of(drawing.labels.begin(), drawing.labels.end(), [&](const skewt::Label& one) {
                    return one.text == text && one.box.right < frame.left && one.box.top < y && one.box.bottom > y;
                });
            };
            const std::string top = skewt::fixed(drawing.geometry.topPressure(), 0);
            EXPECT_TRUE(isThere(top, frame.top)) << top;
            EXPECT_TRUE(std::any_of(drawing.labels.begin(), drawing.labels.end(),
                                    [](const skewt::Label& one) { return one.text == "hPa"; }));
        }
    }
}

TEST(SkewTGrid, MixingRatiosAreNamedOffTheLineOfZeroAndTheFreezingLevel) {
    const std::vector<std::string> ratios{"0.2", "0.5", "1", "2", "4", "7", "10", "15", "22", "30"};
    std::size_t named = 0;
    for (const Sounding& sounding : samples()) {
        const skewt::Drawing drawing = skewt::draw(sounding, {});
        const SvgDocument svg(drawing.svg);
        const skewt::Geometry& map = drawing.geometry;
        for (const skewt::Label& one : drawing.labels) {
            if (std::find(ratios.begin(), ratios.end(), one.text) == ratios.end() || !map.frame().contains(one.box)) {
                continue;
            }
            ++named;
            const double ground = skewt::Profile(sounding).groundPressure();
            if (!std::isnan(ground)) {
                EXPECT_LT(map.pressure(one.box.bottom), ground + 10.0) << sounding.station << ' ' << one.text;
            }
            skewt::Point from = map.at(map.bottomPressure(), 0.0);
            skewt::Point to = map.at(map.topPressure(), 0.0);
            EXPECT_FALSE(skewt::clip(one.box, from, to)) << sounding.station << ' ' << one.text;
            for (const SvgElement& mark : svg.in("marks", "path")) {
                const auto line = mark.lines().at(0);
                from = {line[0].first, line[0].second};
                to = {line[1].first, line[1].second};
                EXPECT_FALSE(skewt::clip(one.box, from, to)) << sounding.station << ' ' << one.text;
            }
        }
    }
    EXPECT_GT(named, 6 * samples().size());
}

TEST(SkewTGrid, IsobarsAndIsothermsAreNamed) {
    const Sounding sounding = sample("temp-bet-dagan-2026.txt");
    for (const char* text : {"1000", "925", "850", "700", "500", "400", "300", "250", "200", "150",
                             "\xE2\x88\x92"
                             "40",
                             "0", "30",
                             "\xE2\x88\x92"
                             "80"}) {
        EXPECT_TRUE(shows(sounding, text)) << text;
    }
    const SvgDocument svg(skewT(sounding));
    const std::vector<SvgElement> isotherms = svg.in("isotherms", "path");
    EXPECT_EQ(std::count_if(isotherms.begin(), isotherms.end(),
                            [](const SvgElement& path) { return path.attribute("class") == "zero"; }),
              1);
}

// ---- curves
// ----------------------------------------------------------------------------------------------------------

std::size_t pieces(const Sounding& sounding, const std::string& group) {
    std::size_t count = 0;
    for (const SvgElement& path : SvgDocument(skewT(sounding)).in(group, "path")) {
        count += path.lines().size();
    }
    return count;
}

TEST(SkewTCurves, LineIsNotDrawnAcrossALevelWithoutItsValue) {
    constexpr unsigned STANDARD = SoundingLevel::MANDATORY;
    const Sounding whole = ascent({level(1000, 20, 10, 5, 180, STANDARD), level(850, 12, 6, 5, 180, STANDARD),
                                   level(700, 2, -4, 5, 180, STANDARD), level(500, -14, -20, 5, 180, STANDARD)});
    EXPECT_EQ(pieces(whole, "temperature"), 1U);
    EXPECT_EQ(pieces(whole, "dewpoint"), 1U);

    Sounding dry = whole;
    dry.levels.insert(dry.levels.begin() + 2, level(750, 6, NONE, 5, 180, SoundingLevel::SIGNIFICANT));
    EXPECT_EQ(pieces(dry, "temperature"), 1U);
    EXPECT_EQ(pieces(dry, "dewpoint"), 2U);

    Sounding broken = whole;
    broken.levels.insert(broken.levels.begin() + 2, level(750, NONE, NONE, 5, 180, STANDARD));
    EXPECT_EQ(pieces(broken, "temperature"), 2U);
    EXPECT_EQ(pieces(broken, "dewpoint"), 2U);

    // A level that gives nothing but a wind, as those of section 6 of part B do, is no gap.
    Sounding windy = whole;
    windy.levels.insert(windy.levels.begin() + 2, level(750, NONE, NONE, 5, 180, SoundingLevel::SIGNIFICANT));
    EXPECT_EQ(pieces(windy, "temperature"), 1U);
    EXPECT_EQ(pieces(windy, "dewpoint"), 1U);
}

TEST(SkewTCurves, LayerOfMissingDataIsAGap) {
    Sounding sounding = ascent({level(1000, 20, 10), level(850, 12, 6), level(700, 2, -4), level(500, -14, -20)});
    sounding.parts.resize(1);
    sounding.parts[0].letter = 'B';
    for (std::size_t i = 0; i < sounding.levels.size(); ++i) {
        sounding.levels[i].origins = {{0, {3 + 2 * i + (i > 1 ? 2 : 0), 2}}};
    }
    ASSERT_EQ(pieces(sounding, "temperature"), 1U);
    corvane::Mend gap;  // "22/// /////" after the level at 850 hPa
    gap.name = "gap";
    gap.lost = true;
    gap.groups = {7, 2};
    sounding.parts[0].mends = {gap};
    EXPECT_EQ(pieces(sounding, "temperature"), 2U);
    EXPECT_EQ(pieces(sounding, "dewpoint"), 2U);
    const skewt::Profile profile(sounding);
    const auto runs = profile.runs(skewt::Quantity::TEMPERATURE);
    ASSERT_EQ(runs.size(), 2U);
    EXPECT_DOUBLE_EQ(runs[0].back().pressure, 850);
    EXPECT_DOUBLE_EQ(runs[1].front().pressure, 700);
}

std::vector<std::pair<double, double>> endsOf(const Sounding& sounding, skewt::Quantity quantity) {
    std::vector<std::pair<double, double>> ends;
    for (const auto& run : skewt::Profile(sounding).runs(quantity)) {
        ends.emplace_back(run.front().pressure, run.back().pressure);
    }
    return ends;
}

// Part A with temperature and wind at its standard surfaces, and what part B adds.
Sounding ascentWithPartB(const std::string& partB, const char* at500 = "06756 14016") {
    return soundingsIn(std::string("TTAA 63001 72201 99014 30456 11504 00140 28656 11506 92829 24456 10504 85563 19056 "
                                   "11506 70204 09856 11011 50592 ") +
                           at500 + " 40763 16556 14017 30973 31156 14017 25100 41156 15515 20247 54156 18012 15425 " +
                           "66156 15021 10665 79956 10524 88999 77999=\nTTBB 63008 72201 " + partB + "=\n",
                       "made up")
        .at(0);
}

using Ends = std::vector<std::pair<double, double>>;

TEST(SkewTCurves, MissingTemperaturesDoNotInterruptTheWind) {
    const Sounding sounding = ascentWithPartB("00014 30456 11850 19056 22700 09856 33600 01856 44/// ///// 55400 16556 "
                                              "66300 31156 77200 54156 88150 66156 21212 00014 11504 11850 11506",
                                              "///// 14016");
    EXPECT_EQ(endsOf(sounding, skewt::Quantity::TEMPERATURE), (Ends{{1014, 600}, {400, 100}}));
    EXPECT_EQ(endsOf(sounding, skewt::Quantity::DEWPOINT), (Ends{{1014, 600}, {400, 100}}));
    EXPECT_EQ(endsOf(sounding, skewt::Quantity::WIND), (Ends{{1014, 100}}));
}

TEST(SkewTCurves, MissingWindsDoNotInterruptTheTemperature) {
    const Sounding sounding = ascentWithPartB("00014 30456 11850 19056 22700 09856 33600 01856 44400 16556 55300 31156 "
                                              "66200 54156 77150 66156 21212 00014 11504 11850 11506 22680 11011 "
                                              "33/// ///// 44520 14017 55200 18012");
    EXPECT_EQ(endsOf(sounding, skewt::Quantity::TEMPERATURE), (Ends{{1014, 100}}));
    EXPECT_EQ(endsOf(sounding, skewt::Quantity::DEWPOINT), (Ends{{1014, 100}}));
    EXPECT_EQ(endsOf(sounding, skewt::Quantity::WIND), (Ends{{1014, 680}, {520, 100}}));
}

TEST(SkewTCurves, ALevelThatGivesItsValueIsNotCutOff) {
    // 500 hPa lies in the layer of missing temperatures, and gives one.
    const Sounding sounding = ascentWithPartB("00014 30456 11850 19056 22700 09856 33600 01856 44/// ///// 55400 16556 "
                                              "66300 31156 77200 54156 88150 66156");
    EXPECT_EQ(endsOf(sounding, skewt::Quantity::TEMPERATURE), (Ends{{1014, 100}}));
}

TEST(SkewTCurves, ParcelEndsAtTheEquilibriumLevelOrTheHighestTemperature) {
    const auto highest = [](const Sounding& sounding) {
        const skewt::Drawing drawing = skewt::draw(sounding, {});
        const SvgDocument svg(drawing.svg);
        double pressure = 2000.0;
        for (const auto& line : svg.byId("parcel")->lines()) {
            for (const auto& [x, y] : line) {
                pressure = std::min(pressure, drawing.geometry.pressure(y));
            }
        }
        return pressure;
    };
    const Sounding whole = sample("temp-sao-paulo-2023.txt");
    EXPECT_NEAR(highest(whole), corvane::indicesOf(whole).mostUnstable.elPressure, 0.5);
    // Ends while the parcel is buoyant, with a wind above.
    const Sounding cut = ascent({level(1000, 30, 24), level(700, 8, -4), level(400, -20, -40),
                                 level(200, NONE, NONE, 50, 250), level(100, NONE, NONE, 50, 250)});
    ASSERT_TRUE(std::isnan(corvane::indicesOf(cut).mostUnstable.elPressure));
    ASSERT_GT(corvane::indicesOf(cut).mostUnstable.cape, 0.0);
    EXPECT_NEAR(highest(cut), 400.0, 0.5);
}

TEST(SkewTCurves, BarsAreDrawnOnlyAcrossTheLine) {
    constexpr unsigned STANDARD = SoundingLevel::MANDATORY;
    const auto bars = [](const Sounding& sounding) {
        const skewt::Drawing drawing = skewt::draw(sounding, {});
        std::size_t count = 0;
        for (const SvgElement& path : SvgDocument(drawing.svg).in("marks", "path")) {
            const auto line = path.lines().at(0);
            const skewt::Box& frame = drawing.geometry.frame();
            count += line[0].first > frame.left + 1.0 && line[0].first < frame.right - 1.0 ? 1 : 0;
        }
        return count;
    };
    Sounding sounding = ascent({level(1000, 20, 10, 5, 180, STANDARD), level(850, 12, 6, 5, 180, STANDARD),
                                level(700, 4, -4, 5, 180, STANDARD), level(500, -14, -20, 5, 180, STANDARD)});
    EXPECT_EQ(bars(sounding), 1U);
    sounding.levels.insert(sounding.levels.begin() + 3, level(600, NONE, NONE, 5, 180, STANDARD));
    EXPECT_EQ(bars(sounding), 0U);
    const std::vector<std::string> texts = textsOf(SvgDocument(skewT(sounding)));
    EXPECT_TRUE(std::any_of(texts.begin(), texts.end(),
                            [](const std::string& text) { return text.compare(0, 14, "freezing level") == 0; }));
}

TEST(SkewTCurves, LevelsCanBeFoundByTheirIndex) {
    const Sounding sounding = sample("temp-bet-dagan-2026.txt");
    const skewt::Drawing drawing = skewt::draw(sounding, {});
    const SvgDocument svg(drawing.svg);
    std::size_t found = 0;
    for (std::size_t i = 0; i < sounding.levels.size(); ++i) {
        const SoundingLevel& drawn = sounding.levels[i];
        const bool inFrame = !drawn.belowGround && drawn.pressure >= 100.0;
        for (const auto& [prefix, value] : {std::make_pair("t-", drawn.temperature), {"td-", drawn.dewpoint}}) {
            const SvgElement* marker = svg.byId(prefix + std::to_string(i));
            ASSERT_EQ(marker != nullptr, inFrame && !std::isnan(value)) << prefix << i;
            if (marker != nullptr) {
                EXPECT_EQ(marker->name, "circle");
                const skewt::Point at{marker->number("cx"), marker->number("cy")};
                EXPECT_NEAR(drawing.geometry.pressure(at.y), drawn.pressure, 0.2);
                EXPECT_NEAR(drawing.geometry.temperature(at), value, 0.02);
                ++found;
            }
        }
    }
    EXPECT_GT(found, 80U);
}

TEST(SkewTCurves, DoubtedLevelsAreHollow) {
    Sounding sounding = ascent({level(1000, 20, 10, 5, 180), level(700, 2, -4, 60, 250), level(500, -14, -20, 5, 180)});
    sounding.levels[1].doubts = {"hydrostatic"};
    const SvgDocument svg(skewT(sounding));
    for (const char* id : {"t-1", "td-1"}) {
        ASSERT_NE(svg.byId(id), nullptr) << id;
        EXPECT_EQ(svg.byId(id)->attribute("class"), "doubted");
        EXPECT_EQ(svg.byId(id)->attribute("fill"), "#ffffff");
    }
    for (const char* id : {"t-0", "td-0", "wind-0", "wind-1", "t-2"}) {
        ASSERT_NE(svg.byId(id), nullptr) << id;
        EXPECT_EQ(svg.byId(id)->attribute("class"), "");
        EXPECT_EQ(svg.byId(id)->attribute("fill"), "");
    }
    EXPECT_TRUE(shows(sounding, "Doubted (hollow): hydrostatic"));
}

TEST(SkewTCurves, DoubtsMakeHollowOnlyWhatTheyConcern) {
    const auto isHollow = [](const std::string& doubt, const char* id) {
        Sounding sounding = ascent({level(1000, 20, 10, 5, 180), level(700, 2, -4, 60, 250)});
        sounding.levels[1].doubts = {doubt};
        return SvgDocument(skewT(sounding)).byId(id)->attribute("class") == "doubted";
    };
    for (const char* doubt : {"hydrostatic", "lapse-rate", "tropopause"}) {
        EXPECT_TRUE(isHollow(doubt, "t-1")) << doubt;
        EXPECT_TRUE(isHollow(doubt, "td-1")) << doubt;
        EXPECT_FALSE(isHollow(doubt, "wind-1")) << doubt;
    }
    EXPECT_FALSE(isHollow("unit", "t-1"));
    EXPECT_FALSE(isHollow("unit", "td-1"));
    EXPECT_TRUE(isHollow("unit", "wind-1"));
}

TEST(SkewTCurves, LevelsBelowTheGroundAreLeftOut) {
    const Sounding sounding = sample("temp-south-pole-2026.txt");
    const SvgDocument svg(skewT(sounding));
    std::size_t below = 0;
    for (std::size_t i = 0; i < sounding.levels.size(); ++i) {
        if (sounding.levels[i].belowGround) {
            ++below;
            for (const char* prefix : {"t-", "td-", "wind-"}) {
                EXPECT_EQ(svg.byId(prefix + std::to_string(i)), nullptr);
            }
        }
    }
    EXPECT_GE(below, 3U);
}

// ---- barbs
// -----------------------------------------------------------------------------------------------------------

TEST(WindBarb, FeathersOfSpeeds) {
    struct Case {
        double knots;
        int pennants;
        int full;
        int half;
    };
    for (const Case& expected : {Case{0, 0, 0, 0},
                                 {2, 0, 0, 0},
                                 {2.5, 0, 0, 1},
                                 {5, 0, 0, 1},
                                 {7.4, 0, 0, 1},
                                 {7.5, 0, 1, 0},
                                 {10, 0, 1, 0},
                                 {45, 0, 4, 1},
                                 {47.4, 0, 4, 1},
                                 {47.5, 1, 0, 0},
                                 {50, 1, 0, 0},
                                 {65, 1, 1, 1},
                                 {97.4, 1, 4, 1},
                                 {97.5, 2, 0, 0},
                                 {100, 2, 0, 0},
                                 {117, 2, 1, 1},
                                 {270, 5, 2, 0},
                                 {9999, 5, 2, 0}}) {
        const skewt::Feathers feathers = skewt::feathers(expected.knots / 5.0);
        EXPECT_EQ(feathers.pennants, expected.pennants) << expected.knots;
        EXPECT_EQ(feathers.full, expected.full) << expected.knots;
        EXPECT_EQ(feathers.half, expected.half) << expected.knots;
        // The conversion to m/s and back does not lose a half.
        const skewt::Feathers converted = skewt::feathers(expected.knots * KNOT / KNOT / 5.0);
        EXPECT_EQ(converted.pennants, expected.pennants) << expected.knots;
    }
}

// Strokes without the staff, and pennants, of the barb of one level in a picture.
std::pair<std::size_t, std::size_t> feathersDrawn(double knots, SkewTOptions::WindUnit unit = SkewTOptions::KNOTS) {
    SkewTOptions options;
    options.units = unit;
    const SvgDocument svg(skewT(ascent({level(700, 2, -4, knots, 250)}), options));
    std::size_t strokes = 0;
    std::size_t pennants = 0;
    for (const SvgElement& path : svg.in("wind-0", "path")) {
        for (const auto& line : path.lines()) {
            (line.size() == 3 ? pennants : strokes) += 1;
        }
    }
    return {strokes - 1, pennants};
}

TEST(WindBarb, PictureHasTheFeathers) {
    using Drawn = std::pair<std::size_t, std::size_t>;
    EXPECT_EQ(feathersDrawn(1), Drawn(0, 0));
    EXPECT_EQ(feathersDrawn(5), Drawn(1, 0));
    EXPECT_EQ(feathersDrawn(10), Drawn(1, 0));
    EXPECT_EQ(feathersDrawn(15), Drawn(2, 0));
    EXPECT_EQ(feathersDrawn(50), Drawn(0, 1));
    EXPECT_EQ(feathersDrawn(97.5), Drawn(0, 2));
    EXPECT_EQ(feathersDrawn(30 / KNOT, SkewTOptions::METRES_PER_SECOND), Drawn(1, 1));  // 30 m/s: 25 and 5
}

TEST(WindBarb, CalmIsARing) {
    const SvgDocument svg(skewT(ascent({level(700, 2, -4, 0, 0)})));
    const SvgElement* calm = svg.byId("wind-0");
    ASSERT_NE(calm, nullptr);
    EXPECT_EQ(calm->name, "circle");
    EXPECT_EQ(calm->attribute("fill"), "none");
    EXPECT_GT(calm->number("r"), 2.0);
    EXPECT_TRUE(skewt::barb({0, 0}, 0, 0, 40, false).strokes.empty());
}

TEST(WindBarb, StaffPointsIntoTheWind) {
    struct Case {
        double direction;
        double x;
        double y;
    };
    for (const Case& expected : {Case{0, 0, -40}, {90, 40, 0}, {180, 0, 40}, {270, -40, 0}, {360, 0, -40}}) {
        const skewt::Barb barb = skewt::barb({100, 200}, expected.direction, 2, 40, false);
        EXPECT_NEAR(barb.strokes.at(0).back().x, 100 + expected.x, 1e-9);
        EXPECT_NEAR(barb.strokes.at(0).back().y, 200 + expected.y, 1e-9);
    }
}

TEST(WindBarb, FeathersAreOnTheSideOfLowPressure) {
    for (double direction = 0; direction < 360; direction += 30) {
        for (const double halves : {1.0, 2.0, 10.0, 13.0}) {
            for (const bool south : {false, true}) {
                const skewt::Barb barb = skewt::barb({0, 0}, direction, halves, 40, south);
                // Facing downwind; y grows downward, so that the left of (x, y) is (y, -x).
                const double radians = direction * std::acos(-1.0) / 180.0;
                const skewt::Point downwind{-std::sin(radians), std::cos(radians)};
                const skewt::Point left{downwind.y, -downwind.x};
                std::vector<skewt::Line> lines(barb.strokes.begin() + 1, barb.strokes.end());
                lines.insert(lines.end(), barb.pennants.begin(), barb.pennants.end());
                ASSERT_FALSE(lines.empty());
                for (const skewt::Line& line : lines) {
                    const double side = line[1].x * left.x + line[1].y * left.y;
                    EXPECT_TRUE(south ? side < -5 : side > 5) << direction << ' ' << halves << ' ' << south;
                }
            }
        }
    }
    // A west wind in the north has low pressure, and its feathers, in the north.
    EXPECT_LT(skewt::barb({0, 0}, 270, 2, 40, false).strokes.at(1).back().y, -5);
    EXPECT_GT(skewt::barb({0, 0}, 270, 2, 40, true).strokes.at(1).back().y, 5);
}

TEST(WindBarb, HalfFeatherAloneStandsAwayFromTheEnd) {
    const skewt::Barb half = skewt::barb({0, 0}, 0, 1, 40, false);
    EXPECT_GT(half.strokes.at(1).front().y, -40 + 3);
    const skewt::Barb full = skewt::barb({0, 0}, 0, 2, 40, false);
    EXPECT_NEAR(full.strokes.at(1).front().y, -40, 1e-9);
    const auto length = [](const skewt::Line& line) {
        return std::hypot(line.back().x - line.front().x, line.back().y - line.front().y);
    };
    EXPECT_NEAR(length(half.strokes.at(1)) * 2, length(full.strokes.at(1)), 1e-9);
}

TEST(WindBarb, FeathersOfTheStrongestWindFitTheStaff) {
    for (double halves = 1; halves <= 54; ++halves) {
        const skewt::Barb barb = skewt::barb({0, 0}, 0, halves, 40, false);
        std::vector<skewt::Line> lines(barb.strokes.begin() + 1, barb.strokes.end());
        lines.insert(lines.end(), barb.pennants.begin(), barb.pennants.end());
        for (const skewt::Line& line : lines) {
            EXPECT_LE(line.front().y, -1) << halves;
            EXPECT_GE(line.front().y, -40 - 1e-9) << halves;
        }
    }
}

TEST(WindBarb, FeathersStandApart) {
    // The foot of the first feather is as far from the pennant as feathers are from each other.
    const skewt::Barb feathersOnly = skewt::barb({0, 0}, 0, 4, 40, false);
    const double spacing = feathersOnly.strokes.at(2).front().y - feathersOnly.strokes.at(1).front().y;
    const skewt::Barb pennant = skewt::barb({0, 0}, 0, 12, 40, false);
    EXPECT_GE(pennant.strokes.at(1).front().y - pennant.pennants.at(0).back().y, 0.9 * spacing);
    EXPECT_GT(spacing, 4.0);
}

TEST(WindBarb, HemisphereIsThatOfTheStation) {
    for (const char* station : {"68994", "83779", "94120", "89009", "61998", "63741", "82193", "91680", "96749",
                                "97180", "67083", "87576", "85586", "93112", "84628", "80398"}) {
        EXPECT_TRUE(skewt::southernStation(station)) << station;
    }
    for (const char* station : {"72201", "03808", "61641", "64700", "82022", "91285", "96441", "97014", "98433",
                                "80222", "91408", "91610", "61052", "63450", "48698", "", "ABCDE", "9400", "940000"}) {
        EXPECT_FALSE(skewt::southernStation(station)) << station;
    }
    Sounding ship = ascent({}, "94120");
    ship.form = Corvane::WMO_TEMP_SHIP;
    EXPECT_FALSE(skewt::southern(ship));
    ship.latitude = -0.1;
    EXPECT_TRUE(skewt::southern(ship));
    ship.latitude = 12.0;
    EXPECT_FALSE(skewt::southern(ship));
    EXPECT_TRUE(skewt::southern(sample("temp-marion-island.txt")));
}

TEST(WindBarb, SurfaceAndStandardLevelsSurviveThinning) {
    std::vector<SoundingLevel> levels{level(1010, 20, 10, 10, 270, SoundingLevel::SURFACE)};
    for (double pressure = 1008; pressure > 96; pressure -= 4) {
        const bool standard = pressure == 700 || pressure == 500 || pressure == 300;
        levels.push_back(
            level(pressure, NONE, NONE, 20, 270, standard ? SoundingLevel::MANDATORY : SoundingLevel::SIGNIFICANT));
    }
    const skewt::Drawing drawing = skewt::draw(ascent(levels), {});
    const SvgDocument svg(drawing.svg);
    for (std::size_t i = 0; i < levels.size(); ++i) {
        if (levels[i].kinds != SoundingLevel::SIGNIFICANT) {
            EXPECT_NE(svg.byId("wind-" + std::to_string(i)), nullptr) << levels[i].pressure;
        }
    }
    EXPECT_GT(drawing.barbs.size(), 15U);
    EXPECT_LT(drawing.barbs.size(), 80U);
}

// ---- hodograph
// -------------------------------------------------------------------------------------------------------

TEST(SkewTHodograph, WindFromTheWestEndsInTheEast) {
    Sounding sounding = ascent({level(1000, 20, 10, 0, 0), level(850, 12, 6, 20, 270), level(700, 2, -4, 40, 180)});
    sounding.levels[0].height = 100;
    sounding.levels[1].height = 1600;
    sounding.levels[2].height = 3100;
    const skewt::Hodograph drawn = skewt::hodograph(skewt::Profile(sounding), SkewTOptions::KNOTS, {100, 100}, 80);
    EXPECT_DOUBLE_EQ(drawn.ringSpeed, 10);
    EXPECT_EQ(drawn.rings, 4);
    ASSERT_EQ(drawn.lines.size(), 1U);
    ASSERT_EQ(drawn.lines[0].size(), 3U);
    EXPECT_NEAR(drawn.lines[0][1].x, 140, 1e-9);
    EXPECT_NEAR(drawn.lines[0][1].y, 100, 1e-9);
    EXPECT_NEAR(drawn.lines[0][2].x, 100, 1e-9);
    EXPECT_NEAR(drawn.lines[0][2].y, 20, 1e-9);
    ASSERT_EQ(drawn.marks.size(), 3U);  // 0, 1 and 3 km above the ground
    EXPECT_EQ(drawn.marks[1].kilometres, 1);
    EXPECT_NEAR(drawn.marks[1].at.x, 100 + 40 * 1000.0 / 1500.0, 1e-9);
    EXPECT_EQ(drawn.marks[2].kilometres, 3);
    EXPECT_NEAR(drawn.marks[2].at.y, 20, 1e-9);
}

TEST(SkewTHodograph, EndsTwelveKilometresAboveTheGround) {
    Sounding sounding =
        ascent({level(900, 20, 10, 10, 270), level(300, -40, NONE, 50, 270), level(100, -60, NONE, 90, 270)});
    sounding.levels[0].height = 1000;
    sounding.levels[1].height = 9000;
    sounding.levels[2].height = 17000;
    const skewt::Hodograph drawn = skewt::hodograph(skewt::Profile(sounding), SkewTOptions::KNOTS, {0, 0}, 70);
    ASSERT_EQ(drawn.lines.size(), 1U);
    // 4 of the 8 km between the upper two levels: 70 knots.
    EXPECT_NEAR(drawn.lines[0].back().x, 70 * drawn.pixelsPerUnit, 1e-9);
    EXPECT_EQ(drawn.marks.back().kilometres, 12);
}

// What a height label covers must not be covered by the line.
TEST(SkewTHodograph, LabelsKeepOffTheLine) {
    std::size_t marks = 0;
    std::size_t named = 0;
    std::vector<Sounding> all = realSoundings();
    all.insert(all.end(), samples().begin(), samples().end());
    for (const Sounding& sounding : all) {
        SCOPED_TRACE(sounding.station);
        const skewt::Drawing drawing = skewt::draw(sounding, {});
        const SvgDocument svg(drawing.svg);
        std::vector<skewt::Label> inside;
        for (const skewt::Label& one : drawing.labels) {
            if (drawing.hodograph.contains(one.box)) {
                inside.push_back(one);
            }
        }
        const bool withHeights =
            std::any_of(inside.begin(), inside.end(), [](const auto& l) { return l.text == "km"; });
        std::size_t circles = 0;
        std::size_t rings = 0;
        for (const SvgElement& circle : svg.in("hodograph", "circle")) {
            (circle.number("r") < 6.0 ? circles : rings) += 1;
        }
        EXPECT_EQ(withHeights, circles > 0);
        marks += circles;
        // The unit, "km", all rings and then the heights.
        const std::size_t others = rings + (withHeights ? 2 : 1);
        ASSERT_GE(inside.size(), others);
        for (std::size_t i = others; i < inside.size(); ++i) {
            ++named;
            for (const SvgElement& path : svg.in("hodograph", "path")) {
                if (path.attribute("stroke-linejoin") != "round") {
                    continue;
                }
                for (const auto& line : path.lines()) {
                    for (std::size_t j = 1; j < line.size(); ++j) {
                        skewt::Point from{line[j - 1].first, line[j - 1].second};
                        skewt::Point to{line[j].first, line[j].second};
                        EXPECT_FALSE(skewt::clip(inside[i].box.grown(-0.11), from, to)) << inside[i].text;
                    }
                }
            }
        }
        // The speeds of the rings stand in one line.
        for (std::size_t i = withHeights ? 3 : 2; i < others; ++i) {
            const skewt::Box& one = inside[i - 1].box;
            const skewt::Box& other = inside[i].box;
            EXPECT_TRUE(std::fabs(one.left - other.left) < 0.01 || std::fabs(one.right - other.right) < 0.01 ||
                        std::fabs(one.top - other.top) < 0.01);
        }
    }
    EXPECT_GT(marks, 500U);
    EXPECT_GE(named * 100, marks * 97);
}

TEST(SkewTHodograph, NothingAloftIsMarkedAsAboveTheGround) {
    const std::string dash = "\xE2\x80\x94";
    const auto partOf = [](const char* text) { return soundingsIn(text, "made up").at(0); };
    const Sounding aloft =
        partOf("TTCC 63001 70219 70887 49385 03513 50084 66174 09536 30405 54181 06032 88999 77999=");
    EXPECT_TRUE(skewt::Profile(aloft).beginsAloft());
    EXPECT_TRUE(skewt::hodograph(skewt::Profile(aloft), SkewTOptions::KNOTS, {0, 0}, 70).marks.empty());
    EXPECT_FALSE(skewt::hodograph(skewt::Profile(aloft), SkewTOptions::KNOTS, {0, 0}, 70).lines.empty());
    for (const char* row : {"Level, hPa", "LCL, hPa", "CAPE, J/kg", "Lifted index, K"}) {
        EXPECT_EQ(tableRow(aloft, row), (std::vector<std::string>{dash, dash})) << row;
    }
    for (const char* row : {"Precipitable water", "Freezing level", "Wet-bulb zero"}) {
        EXPECT_EQ(tableRow(aloft, row), std::vector<std::string>{dash}) << row;
    }
    EXPECT_EQ(tableRow(aloft, "Parcel"), (std::vector<std::string>{"surface", "most unstable"}));

    // Part B names its first level 00 where it is the surface, and 11 where it is not: that is not known any more.
    const Sounding low = partOf("TTBB 63008 70219 00000 08505 11850 08009 22700 02010=");
    EXPECT_FALSE(skewt::Profile(low).beginsAloft());
    EXPECT_EQ(tableRow(low, "Parcel"), (std::vector<std::string>{"lowest", "most unstable"}));
    EXPECT_EQ(tableRow(low, "Level, hPa").at(0), "1000");
}

// ---- texts
// -----------------------------------------------------------------------------------------------------------

TEST(SkewTTexts, TitleSaysWhatWhereAndWhen) {
    EXPECT_TRUE(shows(sample("temp-bet-dagan-2026.txt"), "TEMP 40179, day 5, 23 UTC"));
    EXPECT_TRUE(shows(sample("ship-9zt9mrk-2026.txt"), "TEMP SHIP 9ZT9MRK, day 6, 00 UTC"));
    EXPECT_TRUE(
        shows(sample("ship-9zt9mrk-2026.txt"),
              "60.2\xC2\xB0N 46.7\xC2\xB0W \xC2\xB7 launched 22:40 UTC \xC2\xB7 parts A B C D \xC2\xB7 40 levels"));
    EXPECT_TRUE(shows(sample("drop-maria-2017.txt"), "TEMP DROP 15.3\xC2\xB0N 65.9\xC2\xB0W, day 20, 03 UTC"));
    EXPECT_TRUE(shows(sample("mobil-part-b.txt"), "TEMP MOBIL USBYZ01, day 8, 16 UTC"));
    const SvgDocument svg(skewT(sample("temp-bet-dagan-2026.txt")));
    EXPECT_EQ(svg.all()[1].text, "Skew-T log-p diagram of TEMP 40179, day 5, 23 UTC");
    EXPECT_NE(svg.all()[2].text.find("Surface 1008 hPa, 12.8 / 10.9 \xC2\xB0"
                                     "C, 90\xC2\xB0 2 kt."),
              std::string::npos)
        << svg.all()[2].text;
}

TEST(SkewTTexts, LongStationLeavesDayAndHour) {
    const Sounding sounding = ascent({level(1000, 20, 10)}, std::string(600, 'W'));
    for (const SkewTOptions& options : manyOptions()) {
        const std::vector<std::string> texts = textsOf(SvgDocument(skewT(sounding, options)));
        EXPECT_TRUE(std::any_of(texts.begin(), texts.end(), [](const std::string& text) {
            const std::string end = "W\xE2\x80\xA6, day 13, 00 UTC";
            return text.compare(0, 6, "TEMP W") == 0 && text.size() > end.size() &&
                   text.compare(text.size() - end.size(), end.size(), end) == 0;
        })) << options.width;
    }
}

TEST(SkewTTexts, EveryLevelCounts) {
    const Sounding sounding = sample("temp-south-pole-2026.txt");  // with standard surfaces below the ground
    const std::string svg = skewT(sounding);
    EXPECT_NE(svg.find("\xC2\xB7 " + std::to_string(sounding.levels.size()) + " levels</text>"), std::string::npos);
}

TEST(SkewTTexts, TextsOfTheSmallestPictureAreLegible) {
    SkewTOptions small;
    small.width = 400;
    small.height = 440;
    std::vector<Sounding> all = realSoundings();
    all.insert(all.end(), samples().begin(), samples().end());
    for (const Sounding& sounding : all) {
        const SvgDocument svg(skewT(sounding, small));
        for (const SvgElement& element : svg.all()) {
            if (element.name == "text") {
                EXPECT_GE(element.number("font-size"), 7.5) << sounding.station << ": " << element.text;
            }
        }
    }
}

TEST(SkewTTexts, LiftedIndexNeedsAParcelBelow500Hectopascals) {
    const std::string dash = "\xE2\x80\x94";
    const Sounding pole = sample("temp-south-pole-2026.txt");
    ASSERT_LT(corvane::indicesOf(pole).mostUnstable.pressure, 500.0);
    ASSERT_FALSE(std::isnan(corvane::indicesOf(pole).mostUnstable.liftedIndex));
    EXPECT_EQ(tableRow(pole, "Lifted index, K").at(1), dash);
    EXPECT_NE(tableRow(pole, "Lifted index, K").at(0), dash);
}

TEST(SkewTTexts, MaximumWindIsTheOneReported) {
    // 77250 10599: 105 degrees, 99 knots, at a standard surface that gives 10 knots.
    const Sounding sounding =
        soundingsIn("TTAA 63201 70219 99000 20456 08510 00100 20456 08510 92800 20456 08510 85500 "
                    "20456 08510 70000 10456 08510 50560 11556 08510 40720 21556 08510 30920 41556 "
                    "08510 25050 51556 08510 20200 61556 08510 88200 62556 09520 77250 10599 40508=",
                    "made up")
            .at(0);
    EXPECT_TRUE(shows(sounding, "max wind 99 kt"));
    const auto found = std::find_if(sounding.levels.begin(), sounding.levels.end(),
                                    [](const SoundingLevel& one) { return one.pressure == 250.0; });
    ASSERT_NE(found, sounding.levels.end());
    EXPECT_NEAR(found->windSpeed, 10 * KNOT, 1e-9);
    EXPECT_NEAR(found->maximumWind, 99 * KNOT, 1e-9);
    EXPECT_TRUE(std::isnan(sounding.levels.front().maximumWind));
}

TEST(SkewTTexts, SpecialLevelsAreMarked) {
    const Sounding sounding = sample("temp-bet-dagan-2026.txt");  // 88215 ..., 88127 ..., 66167 26061
    EXPECT_TRUE(shows(sounding, "tropopause 215 hPa"));
    EXPECT_TRUE(shows(sounding, "tropopause 127 hPa"));
    EXPECT_TRUE(shows(sounding, "max wind 61 kt"));
    EXPECT_TRUE(shows(sounding, "surface 1008 hPa"));
    SkewTOptions metres;
    metres.units = SkewTOptions::METRES_PER_SECOND;
    EXPECT_TRUE(shows(sounding, "max wind 31 m/s", metres));
    // 70069 00668 and 88662 03165: 0.6 degrees at 700 hPa, -3.1 at 662 hPa.
    const int freezing = static_cast<int>(std::lround(700.0 * std::pow(662.0 / 700.0, 0.6 / 3.7)));
    EXPECT_TRUE(shows(sounding, "freezing level " + std::to_string(freezing) + " hPa")) << freezing;
}

TEST(SkewTTexts, HeightScaleIsThatOfTheSounding) {
    Sounding sounding = ascent({level(1000, 20, 10), level(700, 2, -4), level(500, -14, -20)});
    EXPECT_FALSE(shows(sounding, "km", SkewTOptions{}) &&
                 SvgDocument(skewT(sounding)).in("heights", "text").size() > 0);
    sounding.levels[0].height = 0;
    sounding.levels[1].height = 3000;
    sounding.levels[2].height = 5600;
    const skewt::Drawing drawing = skewt::draw(sounding, {});
    const SvgDocument svg(drawing.svg);
    const std::vector<SvgElement> texts = svg.in("heights", "text");
    const auto two = std::find_if(texts.begin(), texts.end(), [](const SvgElement& text) { return text.text == "2"; });
    ASSERT_NE(two, texts.end());
    // Two thirds of the way from 1000 to 700 hPa in the logarithm.
    const double expected = drawing.geometry.y(1000.0 * std::pow(0.7, 2.0 / 3.0));
    const std::vector<SvgElement> ticks = svg.in("heights", "path");
    EXPECT_TRUE(std::any_of(ticks.begin(), ticks.end(), [&](const SvgElement& tick) {
        return std::fabs(tick.lines().at(0).at(0).second - expected) < 0.1;
    }));
    EXPECT_NEAR(two->number("y"), expected, 8.0);
}

TEST(SkewTTexts, LineSaysWhatWasMended) {
    Sounding sounding = sample("temp-marion-island.txt");
    EXPECT_EQ(SvgDocument(skewT(sounding)).byId("mended"), nullptr);
    corvane::Mend join;
    join.name = "join";
    corvane::Mend gap;
    gap.name = "gap";
    gap.lost = true;
    gap.text = "22/// ///// dropped";
    sounding.parts.resize(2);
    sounding.parts[0].letter = 'A';
    sounding.parts[0].mends = {join, join};
    sounding.parts[1].letter = 'B';
    sounding.parts[1].mends = {join, gap};
    sounding.replaced = 1;
    const SvgDocument svg(skewT(sounding));
    ASSERT_NE(svg.byId("mended"), nullptr);
    EXPECT_EQ(svg.byId("mended")->text, "Mended: A join \xC3\x97"
                                        "2; B join, gap (data lost) \xC2\xB7 Replaced copies: 1");
    EXPECT_NE(svg.all()[2].text.find("Part B mended: 22/// ///// dropped."), std::string::npos);
}

TEST(SkewTTexts, TableHasADashWhereTheSoundingGivesNoValue) {
    const std::string dash = "\xE2\x80\x94";
    const Sounding pole = sample("temp-south-pole-2026.txt");
    EXPECT_EQ(tableRow(pole, "K index"), std::vector<std::string>{dash});
    EXPECT_EQ(tableRow(pole, "Freezing level"), std::vector<std::string>{dash});
    EXPECT_EQ(tableRow(ascent({}), "CAPE, J/kg"), (std::vector<std::string>{dash, dash}));
    EXPECT_EQ(tableRow(ascent({}), "Shear 0\xE2\x80\x93"
                                   "6 km"),
              std::vector<std::string>{dash});

    // K = T850 - T500 + Td850 - (T700 - Td700), total totals = T850 + Td850 - 2 T500.
    const Sounding known = ascent({level(1000, 25, 20), level(850, 15, 10), level(700, 5, -5), level(500, -15, -30)});
    EXPECT_EQ(tableRow(known, "K index"), std::vector<std::string>{"30.0"});
    EXPECT_EQ(tableRow(known, "Total totals"), std::vector<std::string>{"55.0"});
    EXPECT_EQ(tableRow(known, "Level, hPa"), (std::vector<std::string>{"1000", "1000"}));
}

TEST(SkewTTexts, TextsOfTheReportAreEscaped) {
    const Sounding sounding = ascent({level(1000, 20, 10)}, "<script>&\"'");
    const std::string svg = skewT(sounding);
    EXPECT_EQ(svg.find("<script"), std::string::npos);
    EXPECT_NE(svg.find("TEMP &lt;script&gt;&amp;&quot;&#39;, day 13"), std::string::npos);
    EXPECT_TRUE(shows(sounding, "TEMP <script>&\"', day 13, 00 UTC"));
}

TEST(SkewTTexts, WhatXmlDoesNotAllowIsReplaced) {
    const std::string replaced = "\xEF\xBF\xBD";
    EXPECT_EQ(skewt::escaped(std::string("a\0b\x1B", 4)), "a" + replaced + "b" + replaced);
    EXPECT_EQ(skewt::escaped("\xC3\xA9\xE2\x82\xAC\xF0\x9F\x8E\x88"), "\xC3\xA9\xE2\x82\xAC\xF0\x9F\x8E\x88");
    EXPECT_EQ(skewt::escaped("\xFF\xC3"), replaced + replaced);
    EXPECT_EQ(skewt::escaped("\xC0\xAF"), replaced + replaced);                 // a long form of "/"
    EXPECT_EQ(skewt::escaped("\xED\xA0\x80"), replaced + replaced + replaced);  // a surrogate
    EXPECT_EQ(skewt::escaped("\xEF\xBF\xBF"), replaced + replaced + replaced);  // U+FFFF
}

TEST(SkewTTexts, NumbersDoNotDependOnTheirSizeOrSign) {
    EXPECT_EQ(skewt::fixed(0.05, 1), "0.1");
    EXPECT_EQ(skewt::fixed(-0.04, 1), "0.0");
    EXPECT_EQ(skewt::fixed(-0.26, 1), "-0.3");
    EXPECT_EQ(skewt::fixed(12.0, 0), "12");
    EXPECT_EQ(skewt::fixed(-1234.567, 2), "-1234.57");
    EXPECT_EQ(skewt::pixels(12.04), "12");
    EXPECT_EQ(skewt::pixels(-0.96), "-1");
    EXPECT_EQ(skewt::pixels(0.5), "0.5");
}

// ---- every picture
// ---------------------------------------------------------------------------------------------------

TEST(SkewTPicture, NothingOverlapsOrLeavesItsFrame) {
    ASSERT_GE(samples().size(), 14U);
    for (const Sounding& sounding : samples()) {
        for (const SkewTOptions& options : manyOptions()) {
            expectSound(sounding, options);
        }
    }
}

TEST(SkewTPicture, NothingOverlapsInRealSoundings) {
    const std::vector<Sounding>& all = realSoundings();
    ASSERT_GE(all.size(), 100U);
    const std::vector<SkewTOptions> options = manyOptions();
    for (std::size_t i = 0; i < all.size(); ++i) {
        expectSound(all[i], {});
        expectSound(all[i], options[i % options.size()]);
    }
}

TEST(SkewTPicture, IsSoundWhateverTheSoundingHolds) {
    const double infinity = std::numeric_limits<double>::infinity();
    std::vector<Sounding> all{
        Sounding{},
        ascent({}),
        ascent({level(1000, 20, 10)}),
        ascent({level(1000, 20, 10, 15, 200), level(1000, 21, 9, 15, 210)}),
        ascent({level(NONE, NONE, NONE)}),
        ascent({level(0, 20, 10), level(-5, 20, 10), level(infinity, 1, 1), level(1e300, 1, 1), level(1e-300, 1, 1)}),
        ascent({level(1000, infinity, -infinity, infinity, infinity), level(500, 1e9, -1e9, 1e9, 1e9)}),
        ascent({level(1000, NONE, NONE, 20, 180), level(700, NONE, NONE, 30, 200), level(300, NONE, NONE, 90, 250)}),
        ascent({level(100, -60, -80), level(500, -10, -20), level(1000, 20, 10)}),
        ascent({level(1000, 50, 50), level(500, 60, 60), level(100, 90, 90)}),
        ascent({level(1000, -140, -149), level(100, 99, -149)}),
        ascent({level(1.0, -60, -80), level(0.5, -10, -20)}),
        ascent({level(1199, 20, 10), level(1198, 20, 10)}),
        ascent({level(1000, 20, 10, -5, 200), level(900, 15, 5, 5, -200), level(800, 15, 5, 5, 999)})};
    all[2].levels[0].height = infinity;
    all[3].levels[0].height = 5000;
    all[3].levels[1].height = -5000;
    all[2].latitude = infinity;
    all[2].longitude = NONE;
    all[2].elevation = -infinity;
    all[3].day = -2000000000;
    all[3].hour = 2000000000;
    all[3].launch = "ab\x01"
                    "d";
    all[3].letters = std::string(500, 'A');
    all[3].station = std::string(1000, 'W');
    for (const Sounding& sounding : all) {
        for (SkewTOptions options : manyOptions()) {
            expectSound(sounding, options);
        }
        for (const double top : {-5.0, NONE, infinity, 1050.0, 1e-9}) {
            SkewTOptions options;
            options.top = top;
            expectSound(sounding, options);
        }
        for (const auto& [width, height] : {std::make_pair(0, 0), {-5, 100000}, {1000000, 3}}) {
            SkewTOptions options;
            options.width = width;
            options.height = height;
            expectSound(sounding, options);
        }
    }
    EXPECT_TRUE(shows(ascent({}), "no data"));
    EXPECT_FALSE(shows(all[2], "no data"));
}

// Levels at random, from likely ones to absurd ones, with parts that were mended over and over.
Sounding randomSounding(std::mt19937& random) {
    const auto number = [&](double least, double most) {
        return std::uniform_real_distribution<double>(least, most)(random);
    };
    const auto chance = [&](double probability) { return number(0, 1) < probability; };
    Sounding made = ascent({}, chance(0.5) ? "94120" : "9ZT9MRK<&>");
    made.form = chance(0.5) ? Corvane::WMO_TEMP : Corvane::WMO_TEMP_SHIP;
    if (chance(0.5)) {
        made.latitude = number(-90, 90);
        made.longitude = number(-180, 180);
    }
    const double wildness = chance(0.3) ? 1.0 : 0.1;
    const int levels = static_cast<int>(std::pow(10.0, number(0, chance(0.1) ? 3.7 : 2.2)));
    for (int i = 0; i < levels; ++i) {
        const double pressure = std::round(std::pow(10.0, number(0.5, 3.03)));
        const double usual = 15.0 - 70.0 * std::min(1.0, std::log(1013.0 / pressure) / 1.6);
        SoundingLevel one = level(pressure, usual + number(-60, 60) * wildness, usual - number(0, 100) * wildness,
                                  std::fabs(number(-100, 270)) * wildness * 2, std::round(number(0, 360)),
                                  static_cast<unsigned>(number(0, 32)));
        one.height = 44000.0 * (1.0 - std::pow(pressure / 1013.0, 0.19)) + number(-500, 500) * wildness;
        for (double* value : {&one.temperature, &one.dewpoint, &one.windSpeed, &one.height}) {
            if (chance(0.15)) {
                *value = NONE;
            }
        }
        if (chance(0.05)) {
            one.doubts = {"hydrostatic", "unit"};
        }
        one.belowGround = chance(0.02);
        made.levels.push_back(one);
    }
    std::stable_sort(made.levels.begin(), made.levels.end(),
                     [](const SoundingLevel& a, const SoundingLevel& b) { return a.pressure > b.pressure; });
    made.parts.resize(4);
    for (corvane::SoundingPart& part : made.parts) {
        part.letter = 'A';
        corvane::Mend mend;
        mend.name = "join";
        mend.text = std::string(chance(0.1) ? 1000 : 20, '<');
        part.mends.assign(chance(0.1) ? 12 : 1, mend);
    }
    return made;
}

TEST(SkewTPicture, IsSoundForRandomSoundings) {
    std::mt19937 random(20260206);
    const std::vector<SkewTOptions> options = manyOptions();
    for (std::size_t i = 0; i < 200; ++i) {
        SCOPED_TRACE(i);
        expectSound(randomSounding(random), options[i % options.size()]);
    }
}

TEST(SkewTPicture, StaysBelowItsLargestSize) {
    std::mt19937 random(1);
    std::uniform_real_distribution<double> any(-90.0, 40.0);
    Sounding sounding = ascent({});
    for (int i = 0; i < 5000; ++i) {
        SoundingLevel one =
            level(1050.0 - i * 0.2, any(random), any(random), std::fabs(any(random)), std::fabs(any(random)), 31);
        one.height = 2.0 * i;
        one.doubts = {"hydrostatic"};
        sounding.levels.push_back(one);
    }
    SkewTOptions options;
    options.width = 10000;
    options.height = 10000;
    const std::string svg = skewT(sounding, options);
    EXPECT_LT(svg.size(), LARGEST);
    EXPECT_GT(svg.size(), 60000U);
    EXPECT_LT(skewT(sounding).size(), LARGEST);
}

TEST(SkewTPicture, DarkPictureHasADarkGround) {
    SkewTOptions dark;
    dark.dark = true;
    const auto ground = [](const SkewTOptions& options) {
        const SvgDocument svg(skewT(ascent({level(1000, 20, 10)}), options));
        return svg.all().at(3).attribute("fill");
    };
    EXPECT_EQ(ground({}), "#ffffff");
    const std::string colour = ground(dark);
    ASSERT_EQ(colour.size(), 7U);
    for (const std::size_t channel : {1U, 3U, 5U}) {
        EXPECT_LT(std::stoi(colour.substr(channel, 2), nullptr, 16), 64);
    }
}

// The definition of SVG 1.1 itself. Debian: w3c-sgml-lib has it, libxml2-utils the program.
TEST(SkewTPicture, IsValidSvg11) {
#if defined(CORVANE_SVG_DTD) && defined(CORVANE_XMLLINT)
    const std::filesystem::path folder =
        std::filesystem::path(testing::TempDir()) / ("corvane-svg-" + std::to_string(getpid()));
    std::filesystem::create_directories(folder);
    std::string command = std::string(CORVANE_XMLLINT) + " --nonet --noout --dtdvalid " + CORVANE_SVG_DTD;
    std::vector<Sounding> all = samples();
    std::mt19937 random(7);
    for (int i = 0; i < 10; ++i) {
        all.push_back(randomSounding(random));
    }
    all.push_back(Sounding{});
    all.push_back(ascent({level(1000, 20, 10)}, "<script>&\"'\x01\xFF"));
    const std::vector<SkewTOptions> options = manyOptions();
    for (std::size_t i = 0; i < all.size(); ++i) {
        const std::filesystem::path file = folder / (std::to_string(i) + ".svg");
        std::ofstream(file, std::ios::binary) << skewT(all[i], options[i % options.size()]);
        command += " '" + file.string() + "'";
    }
    EXPECT_EQ(std::system(command.c_str()), 0);
    // And the check is one: an element that SVG 1.1 does not have.
    const std::filesystem::path file = folder / "wrong.svg";
    std::ofstream(file, std::ios::binary) << "<svg xmlns=\"http://www.w3.org/2000/svg\"><blink/></svg>";
    EXPECT_NE(std::system((std::string(CORVANE_XMLLINT) + " --nonet --noout --dtdvalid " + CORVANE_SVG_DTD + " '" +
                           file.string() + "' 2>/dev/null")
                              .c_str()),
              0);
    std::filesystem::remove_all(folder);
#else
    GTEST_SKIP() << "xmllint (libxml2-utils) or the definition of SVG 1.1 (w3c-sgml-lib) is not installed";
#endif
}

}  // namespace
