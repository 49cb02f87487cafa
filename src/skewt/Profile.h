// The levels of a sounding as they are drawn: those that lie in the air, with values that an atmosphere can have.
#ifndef CORVANE_SKEWT_PROFILE_H
#define CORVANE_SKEWT_PROFILE_H

#include <corvane/Sounding.h>

#include <cstddef>
#include <vector>

namespace corvane::skewt {

// A level to be drawn. What the sounding does not give, or gives out of all bounds, is NaN.
struct Level {
    std::size_t index = 0;  // into Sounding::levels
    double pressure = SoundingLevel::NOT_GIVEN;
    double height = SoundingLevel::NOT_GIVEN;
    double temperature = SoundingLevel::NOT_GIVEN;
    double dewpoint = SoundingLevel::NOT_GIVEN;
    double windSpeed = SoundingLevel::NOT_GIVEN;  // m/s, given together with the direction or not at all
    double windDirection = SoundingLevel::NOT_GIVEN;
    double maximumWind = SoundingLevel::NOT_GIVEN;  // m/s
    unsigned kinds = 0;
    bool temperatureDoubted = false;  // with the dew point and the height
    bool windDoubted = false;

    bool is(SoundingLevel::Kind kind) const { return (kinds & kind) != 0; }
};

// The quantities that are drawn as a line.
enum class Quantity { TEMPERATURE, DEWPOINT, WIND };

// The levels of a sounding from the ground up.
class Profile {
public:
    explicit Profile(const Sounding& sounding);

    // By descending pressure. Of more than 350, which no station reports, as many evenly chosen ones.
    const std::vector<Level>& levels() const { return drawn; }

    // The levels of a kind, from the lowest up: four at most, of which a report gives two or three.
    std::vector<Level> levelsOf(SoundingLevel::Kind kind) const;

    // The levels that a line joins: one run for each stretch without a gap. Between adjacent levels that give the
    // quantity the code form takes it for linear. There is a gap where a level between them should give it and does
    // not, and where the report says that it is missing.
    std::vector<std::vector<Level>> runs(Quantity quantity) const;

    // Whether a line is drawn at a pressure.
    bool isDrawnAt(double pressure, Quantity quantity) const;

    // Pressure of the ground, hPa; NaN where the sounding has no surface level.
    double groundPressure() const { return ground; }

    // Whether it begins aloft: it has no surface, and only parts C and D, which begin above 100 hPa. Nothing in it is
    // near the ground then.
    bool beginsAloft() const { return aloft; }

    // A quantity at a pressure, linear in ln p between the levels that give it; NaN outside them.
    double at(double pressure, double Level::*quantity) const;

    // The pressure of the highest level that gives a quantity; NaN without one.
    double topOf(double Level::*quantity) const;

    // The pressure at a height, the inverse of at().
    double pressureAt(double height) const;

private:
    // A layer in which a part says that data is missing (groups nn/// /////).
    struct Missing {
        double lower;  // pressures, hPa
        double upper;
        bool ofWind;  // in section 6; otherwise of temperature and dew point, in section 5
    };

    void findMissing(const Sounding& sounding);
    bool isMissing(const Level& lower, const Level& upper, Quantity quantity) const;

    std::vector<Level> drawn;
    std::vector<Missing> missing;
    double ground = SoundingLevel::NOT_GIVEN;
    bool aloft = false;
};

// Whether a level gives a quantity.
bool gives(const Level& level, Quantity quantity);

}  // namespace corvane::skewt

#endif
