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
    unsigned kinds = 0;
    bool doubted = false;

    bool is(SoundingLevel::Kind kind) const { return (kinds & kind) != 0; }
};

// The quantities that are drawn as a line.
enum class Quantity { TEMPERATURE, DEWPOINT, WIND };

// The levels of a sounding from the ground up.
class Profile {
public:
    explicit Profile(const Sounding& sounding);

    // By falling pressure. Of more than 350, which no station reports, as many evenly chosen ones.
    const std::vector<Level>& levels() const { return drawn; }

    // The levels of a kind, from the lowest up: four at most, of which a report gives two or three.
    std::vector<Level> levelsOf(SoundingLevel::Kind kind) const;

    // The levels that a line joins: one run for each stretch without a gap. Between adjacent levels that give the
    // quantity the code form takes it for linear. There is a gap where a level between them should give it and does
    // not, and where the report says that data is missing.
    std::vector<std::vector<Level>> runs(Quantity quantity) const;

    // Pressure of the ground, hPa; NaN where the sounding has no surface level.
    double groundPressure() const { return ground; }

    // A quantity at a pressure, linear in ln p between the levels that give it; NaN outside them.
    double at(double pressure, double Level::*quantity) const;

    // The pressure at a height, the inverse of at().
    double pressureAt(double height) const;

private:
    // A layer in which a part says that data is missing (groups nn/// /////).
    struct Missing {
        double lower;  // pressures, hPa
        double upper;
    };

    void findMissing(const Sounding& sounding);
    bool isMissing(const Level& lower, const Level& upper) const;

    std::vector<Level> drawn;
    std::vector<Missing> missing;
    double ground = SoundingLevel::NOT_GIVEN;
};

// Whether a level gives a quantity.
bool gives(const Level& level, Quantity quantity);

}  // namespace corvane::skewt

#endif
