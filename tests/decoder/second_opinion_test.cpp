// A plain second reading of TTTDD, ddfff, the heights of section 2 and the pressures of sections 3 to 6, held against
// the decoder over every group of digits and solidi.
#include "support/OpenDecoder.h"

#include <cmath>
#include <gtest/gtest.h>
#include <map>
#include <string>
#include <vector>

namespace {

const std::string DIGITS_AND_SOLIDUS = "0123456789/";
constexpr double TEMPERATURE_BEFORE = -777.0;
constexpr double DEW_POINT_BEFORE = -888.0;
constexpr double DIRECTION_BEFORE = -555.0;
constexpr double SPEED_BEFORE = -666.0;

using Fields = std::map<Corvane::LEVEL_FIELD, double>;

// Counts the disagreements of the two readings and keeps the first five.
class Disagreements {
public:
    void note(const std::string& group, const std::string& what) {
        ++_count;
        if (_count <= 5) {
            _firstFew += "\n  " + group + ": " + what;
        }
    }

    void expectNone() const { EXPECT_EQ(_count, 0) << "the first of them:" << _firstFew; }

private:
    int _count = 0;
    std::string _firstFew;
};

// Every text of `length` characters out of the ten digits and the solidus.
template <typename Call>
void forEveryText(std::size_t length, Call call) {
    std::vector<std::size_t> places(length, 0);
    std::string text(length, DIGITS_AND_SOLIDUS.front());
    while (true) {
        call(text);
        std::size_t place = length;
        while (place > 0 && places[place - 1] + 1 == DIGITS_AND_SOLIDUS.size()) {
            --place;
            places[place] = 0;
            text[place] = DIGITS_AND_SOLIDUS.front();
        }
        if (place == 0) {
            return;
        }
        ++places[place - 1];
        text[place - 1] = DIGITS_AND_SOLIDUS[places[place - 1]];
    }
}

// The digits before the first solidus as a number, 0 without any: "123" is 123, "1/2" is 1, "/12" is 0.
int digitsOf(const std::string& text, std::size_t from, std::size_t length) {
    int number = 0;
    for (std::size_t place = from; place < from + length && text[place] != '/'; ++place) {
        number = number * 10 + (text[place] - '0');
    }
    return number;
}

bool onlySolidi(const std::string& text, std::size_t from, std::size_t length) {
    bool only = true;
    for (std::size_t place = from; place < from + length; ++place) {
        only = only && text[place] == '/';
    }
    return only;
}

struct Air {
    bool temperatureGiven = false;
    bool dewPointGiven = false;
    bool fault = false;
    bool belowZero = false;
    int temperatureTenths = 0;
    int dewPointTenths = 0;
};

// TTT is the temperature in tenths of a degree, its last digit (approximate tenths and sign) even above and odd below
// zero; DD is the dew-point depression by code table 0777: 00 to 50 tenths of a degree, 56 to 99 whole degrees on top
// of 50, and 51 to 55 not used. A solidus in the place of the tenths counts as odd.
Air readAir(const std::string& group) {
    Air air;
    if (onlySolidi(group, 0, 3)) {
        return air;
    }
    air.temperatureGiven = true;
    air.belowZero = group[2] != '0' && group[2] != '2' && group[2] != '4' && group[2] != '6' && group[2] != '8';
    air.temperatureTenths = digitsOf(group, 0, 3) * (air.belowZero ? -1 : 1);
    if (onlySolidi(group, 3, 2)) {
        return air;
    }
    const int code = digitsOf(group, 3, 2);
    if (code == 51 || code == 52 || code == 53 || code == 54 || code == 55) {
        air.fault = true;
        return air;
    }
    air.dewPointGiven = true;
    air.dewPointTenths = air.temperatureTenths - (code < 51 ? code : (code - 50) * 10);
    return air;
}

struct Wind {
    bool given = false;
    int degrees = 0;
    int speed = 0;
};

// dd is the direction in tens of degrees; fff the speed, with 500 on top when the direction ends in 5. A direction
// without a speed, or a speed without a direction, is no wind.
Wind readWind(const std::string& group) {
    Wind wind;
    if (onlySolidi(group, 0, 2) || onlySolidi(group, 2, 3)) {
        return wind;
    }
    const int fff = digitsOf(group, 2, 3);
    wind.given = true;
    wind.degrees = digitsOf(group, 0, 2) * 10 + fff / 500 * 5;
    wind.speed = fff % 500;
    return wind;
}

struct Tally {
    std::map<int, int> results;
    int faults = 0;
    int belowZero = 0;
    int endingInFive = 0;
};

Tally compareAir(bool knots) {
    OpenDecoder decoder;
    decoder._windsInKnots = knots;
    Tally tally;
    Disagreements disagreements;
    forEveryText(5, [&](const std::string& group) {
        const Air air = readAir(group);
        const int expectedResult = air.dewPointGiven ? 3 : air.temperatureGiven ? 1 : 0;
        double temperature = TEMPERATURE_BEFORE;
        double dewPoint = DEW_POINT_BEFORE;
        decoder.tokenQueue.clear();
        decoder.tokenQueue.push_back(group);
        try {
            const int result = decoder.decodeTTTDD(temperature, dewPoint);
            ++tally.results[result];
            if (air.fault) {
                disagreements.note(group, "no fault");
                return;
            }
            if (result != expectedResult) {
                disagreements.note(group, "result " + std::to_string(result));
            }
            if (!decoder.tokenQueue.empty()) {
                disagreements.note(group, "not taken from the queue");
            }
        } catch (const std::string& message) {
            ++tally.faults;
            if (!air.fault) {
                disagreements.note(group, "fault " + message);
                return;
            }
            if (message !=
                "Dewpoint depression code may not be between 51 to 56. Error detected at " + group + " ...") {
                disagreements.note(group, "message " + message);
            }
            if (decoder.tokenQueue.size() != 1 || decoder.tokenQueue.front() != group) {
                disagreements.note(group, "not left at the front");
            }
        }
        const double expectedTemperature = air.temperatureGiven ? air.temperatureTenths / 10.0 : TEMPERATURE_BEFORE;
        if (temperature < expectedTemperature || temperature > expectedTemperature || std::isnan(temperature)) {
            disagreements.note(group, "temperature " + std::to_string(temperature));
        }
        if (air.temperatureGiven && std::signbit(temperature) != air.belowZero) {
            disagreements.note(group, "sign of the temperature " + std::to_string(temperature));
        }
        // The decoder subtracts in floating point, this reading subtracts whole tenths.
        const double expectedDewPoint = air.dewPointGiven ? air.dewPointTenths / 10.0 : DEW_POINT_BEFORE;
        if (!(std::abs(dewPoint - expectedDewPoint) <= (air.dewPointGiven ? 1e-9 : 0.0))) {
            disagreements.note(group, "dew point " + std::to_string(dewPoint));
        }
        tally.belowZero += !air.fault && air.temperatureGiven && std::signbit(temperature) ? 1 : 0;
    });
    disagreements.expectNone();
    return tally;
}

Tally compareWind(bool knots) {
    OpenDecoder decoder;
    decoder._windsInKnots = knots;
    Tally tally;
    Disagreements disagreements;
    forEveryText(5, [&](const std::string& group) {
        const Wind wind = readWind(group);
        double direction = DIRECTION_BEFORE;
        double speed = SPEED_BEFORE;
        decoder.tokenQueue.clear();
        decoder.tokenQueue.push_back(group);
        try {
            const int result = decoder.decodeDDFFF(direction, speed);
            ++tally.results[result];
            if (result != (wind.given ? 3 : 0)) {
                disagreements.note(group, "result " + std::to_string(result));
            }
        } catch (const std::string& message) {
            ++tally.faults;
            disagreements.note(group, "fault " + message);
        }
        if (!decoder.tokenQueue.empty()) {
            disagreements.note(group, "not taken from the queue");
        }
        const double expectedDirection = wind.given ? wind.degrees : DIRECTION_BEFORE;
        const double metresPerSecond = knots ? wind.speed * 0.5144 : wind.speed;
        const double expectedSpeed = wind.given ? metresPerSecond : SPEED_BEFORE;
        if (!(std::abs(direction - expectedDirection) <= 0.0)) {
            disagreements.note(group, "direction " + std::to_string(direction));
        }
        if (!(std::abs(speed - expectedSpeed) <= 0.0)) {
            disagreements.note(group, "speed " + std::to_string(speed));
        }
        tally.endingInFive += wind.given && std::lround(direction) % 10 == 5 ? 1 : 0;
    });
    disagreements.expectNone();
    return tally;
}

// The lowest height that the three digits of a surface can mean, and the metres in their last digit.
struct Surface {
    int lowest;
    int step;
};

// Above 500 hPa the heights are in tens of metres, below in metres; the thousands (tens of thousands) are left out.
// A surface whose height lies about such a round number takes it from 500 below to 500 above.
Surface surfaceOf(int part, const std::string& code) {
    const std::map<std::string, Surface> lower = {
        {"85", {1000, 1}},  {"70", {2501, 1}},   {"50", {0, 10}},     {"40", {0, 10}},     {"30", {5010, 10}},
        {"25", {5010, 10}}, {"20", {10000, 10}}, {"15", {10000, 10}}, {"10", {10000, 10}},
    };
    const std::map<std::string, Surface> upper = {
        {"70", {10000, 10}}, {"50", {15010, 10}}, {"30", {20000, 10}}, {"20", {20000, 10}}, {"10", {25010, 10}},
        {"07", {30000, 10}}, {"05", {30000, 10}}, {"03", {35010, 10}}, {"02", {35010, 10}}, {"01", {45010, 10}},
    };
    if (part == 0 && lower.count(code) != 0) {
        return lower.at(code);
    }
    if (part == 2 && upper.count(code) != 0) {
        return upper.at(code);
    }
    return {0, 1};
}

// At 1000 hPa a height below sea level is written as its amount plus 500.
int readHeight(const Surface& surface, bool mayBeBelowSea, int digits) {
    if (mayBeBelowSea && digits >= 500) {
        return -(digits - 500);
    }
    int height = digits * surface.step;
    while (height < surface.lowest) {
        height += 1000 * surface.step;
    }
    return height;
}

std::string threeDigits(int number) {
    const std::string text = std::to_string(1000 + number);
    return text.substr(1);
}

// Compares what a section filed and which groups it did not take.
void compareSection(OpenDecoder& decoder, const std::string& group, Corvane::LEVEL_TYPE kind,
                    const std::vector<Fields>& expected, const std::string& expectedRest,
                    Disagreements& disagreements) {
    if (decoder.rest() != expectedRest) {
        disagreements.note(group, "not taken: " + decoder.rest());
    }
    if (decoder.levelStore.size() != expected.size()) {
        disagreements.note(group, std::to_string(decoder.levelStore.size()) + " levels");
        return;
    }
    auto next = expected.begin();
    for (const auto& filed : decoder.levelStore) {
        if (filed.second.type != kind || filed.second.fields != *next) {
            const auto pressure = filed.second.fields.find(Corvane::LF_PRES);
            disagreements.note(
                group, "a " + filed.second.name() + " level at " +
                           (pressure == filed.second.fields.end() ? "no pressure" : std::to_string(pressure->second)));
        }
        ++next;
    }
}

const std::vector<std::string> LEVEL_NUMBERS = {"00", "11", "21", "31", "55", "99", "//", "XX"};

// PPP of sections 5 and 6: whole hectopascals in part B, without the 1000; tenths in part D. Solidi read as 0.
double readSignificantPressure(int part, const std::string& digits) {
    const int number = digitsOf(digits, 0, 3);
    if (part == 3) {
        return number / 10.0;
    }
    return number < 100 ? 1000 + number : number;
}

}  // namespace

// One of the 11 x 11 x 11 texts for TTT is ///; of the 11 x 11 for DD one is // and five are 51 to 55. So 121 groups
// give nothing, 1330 x 5 are faults, 1330 give the temperature alone and 1330 x 115 both. The tenths are odd or a
// solidus in 6 x 121 - 1 of the 1330.
TEST(SecondOpinion, AgreesOnTheTemperatureOfEveryGroup) {
    for (const bool knots : {false, true}) {
        SCOPED_TRACE(knots ? "winds in knots" : "winds in metres per second");
        const Tally tally = compareAir(knots);
        const std::map<int, int> results = {{0, 121}, {1, 1330}, {3, 152950}};
        EXPECT_EQ(tally.results, results);
        EXPECT_EQ(tally.faults, 6650);
        EXPECT_EQ(tally.belowZero, 725 * 116);
    }
}

// 1331 groups have // for a direction, 121 have /// for a speed, one of them both: 1451 without a wind. The other
// 120 x 1330 have one; with three digits from 500 to 999 for fff, 120 x 500 of them, the direction ends in 5.
TEST(SecondOpinion, AgreesOnTheWindOfEveryGroup) {
    for (const bool knots : {false, true}) {
        SCOPED_TRACE(knots ? "winds in knots" : "winds in metres per second");
        const Tally tally = compareWind(knots);
        const std::map<int, int> results = {{0, 1451}, {3, 159600}};
        EXPECT_EQ(tally.results, results);
        EXPECT_EQ(tally.faults, 0);
        EXPECT_EQ(tally.endingInFive, 60000);
    }
}

TEST(SecondOpinion, AgreesOnEveryHeightOfEverySurface) {
    std::vector<std::string> codes = {"", "0", "8", "850", "AA", "//", "8 ", " 85"};
    for (int code = 0; code < 100; ++code) {
        codes.push_back(threeDigits(code).substr(1));
    }
    OpenDecoder decoder;
    decoder.init();
    // Every surface of the two tables is among the codes.
    for (const auto* table : {&decoder.mandatoryA, &decoder.mandatoryC}) {
        for (const OpenDecoder::MandatoryInfo& surface : *table) {
            EXPECT_EQ(surface.code, threeDigits(std::stoi(surface.code)).substr(1));
        }
    }
    EXPECT_EQ(decoder.mandatoryA.size(), 12u);
    EXPECT_EQ(decoder.mandatoryC.size(), 9u);
    Disagreements disagreements;
    std::map<int, int> unchanged;
    for (int part = 0; part < 4; ++part) {
        decoder.part = part;
        for (const std::string& code : codes) {
            const Surface surface = surfaceOf(part, code);
            const bool mayBeBelowSea = part == 0 && code == "00";
            for (int digits = 0; digits < 1000; ++digits) {
                const double height = decoder.mandatoryHeight(code, digits);
                if (!(std::abs(height - readHeight(surface, mayBeBelowSea, digits)) <= 0.0)) {
                    disagreements.note(threeDigits(digits), "part " + std::to_string(part) + ", surface " + code +
                                                                ", height " + std::to_string(height));
                }
                unchanged[part] += std::abs(height - digits) <= 0.0 ? 1 : 0;
            }
        }
    }
    disagreements.expectNone();
    // Of the 108 codes part A changes ten, and part C ten with 02. Of those of part A the 1000 hPa surface keeps the
    // digits below 500; 000 stays 0 at 500 and at 400 hPa.
    const std::map<int, int> unchangedByHand = {{0, 98 * 1000 + 500 + 2}, {1, 108000}, {2, 98 * 1000}, {3, 108000}};
    EXPECT_EQ(unchanged, unchangedByHand);
}

TEST(SecondOpinion, AgreesOnEveryTropopausePressure) {
    OpenDecoder decoder;
    Disagreements disagreements;
    for (const int part : {0, 2}) {
        int withPressure = 0;
        decoder.part = part;
        forEveryText(3, [&](const std::string& digits) {
            decoder.levelStore.clear();
            decoder.tokenQueue.assign({"88" + digits, "/////", "/////", "77999"});
            decoder.decodeSection3();
            const int number = digitsOf(digits, 0, 3);
            std::vector<Fields> expected;
            if (digits == "///") {
                expected.push_back({});
            } else if (digits != "999") {
                expected.push_back({{Corvane::LF_PRES, part == 2 ? number / 10.0 : number}});
                ++withPressure;
            }
            compareSection(decoder, "88" + digits, Corvane::LT_TROPOPAUSE, expected,
                           digits == "999" ? "///// ///// 77999" : "77999", disagreements);
        });
        EXPECT_EQ(withPressure, 1331 - 2);
    }
    disagreements.expectNone();
}

TEST(SecondOpinion, AgreesOnEveryMaximumWindPressure) {
    OpenDecoder decoder;
    Disagreements disagreements;
    for (const int part : {0, 2}) {
        decoder.part = part;
        for (const std::string indicator : {"77", "66"}) {
            int withPressure = 0;
            forEveryText(3, [&](const std::string& digits) {
                const bool none = indicator == "77" && digits == "999";
                decoder.levelStore.clear();
                decoder.tokenQueue.assign({indicator + digits, "/////", "31313"});
                decoder.decodeSection4();
                std::vector<Fields> expected;
                if (digits == "///") {
                    expected.push_back({});
                } else if (!none) {
                    // Whole hectopascals, in part C as well.
                    expected.push_back({{Corvane::LF_PRES, digitsOf(digits, 0, 3)}});
                    ++withPressure;
                }
                compareSection(decoder, indicator + digits, Corvane::LT_MAXWIND, expected,
                               none ? "///// 31313" : "31313", disagreements);
            });
            EXPECT_EQ(withPressure, indicator == "77" ? 1331 - 2 : 1331 - 1);
        }
    }
    disagreements.expectNone();
}

// In part B the 331 texts with a solidus read below 100, as do 000 to 099: 431 stand for 1000 hPa and more.
TEST(SecondOpinion, AgreesOnEveryPressureOfSignificantTemperatures) {
    OpenDecoder decoder;
    Disagreements disagreements;
    for (const int part : {1, 3}) {
        decoder.part = part;
        for (const std::string& number : LEVEL_NUMBERS) {
            int thousands = 0;
            forEveryText(3, [&](const std::string& digits) {
                const std::string group = number + digits;
                const bool closes = group == "21212" || group == "31313";
                decoder.levelStore.clear();
                decoder.tokenQueue.assign({group, "124//", "31313"});
                decoder.decodeSection5();
                std::vector<Fields> expected;
                if (!closes) {
                    const double pressure = readSignificantPressure(part, digits);
                    expected.push_back({{Corvane::LF_PRES, pressure}, {Corvane::LF_TDRY, 12.4}});
                    thousands += pressure >= 1000.0 ? 1 : 0;
                }
                compareSection(decoder, group, Corvane::LT_SIGNIFICANT, expected,
                               closes ? group + " 124// 31313" : "31313", disagreements);
            });
            EXPECT_EQ(thousands, part == 1 ? 431 : 0);
        }
    }
    disagreements.expectNone();
}

TEST(SecondOpinion, AgreesOnEveryPressureOfSignificantWinds) {
    OpenDecoder decoder;
    Disagreements disagreements;
    for (const int part : {1, 3}) {
        decoder.part = part;
        for (const std::string& number : LEVEL_NUMBERS) {
            int thousands = 0;
            forEveryText(3, [&](const std::string& digits) {
                const std::string group = number + digits;
                const bool closes = group == "31313";
                decoder.levelStore.clear();
                decoder.tokenQueue.assign({"21212", group, "/////", "31313"});
                decoder.decodeSection6();
                std::vector<Fields> expected;
                if (!closes) {
                    const double pressure = readSignificantPressure(part, digits);
                    expected.push_back({{Corvane::LF_PRES, pressure}});
                    thousands += pressure >= 1000.0 ? 1 : 0;
                }
                compareSection(decoder, group, Corvane::LT_SIGNIFICANT, expected,
                               closes ? "31313 ///// 31313" : "31313", disagreements);
            });
            EXPECT_EQ(thousands, part == 1 ? 431 : 0);
        }
    }
    disagreements.expectNone();
}
