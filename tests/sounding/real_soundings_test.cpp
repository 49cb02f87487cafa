// Soundings of the sample reports: the levels are those of the decoder's own profile.
#include "support/Samples.h"

#include <corvane/Corvane.h>
#include <corvane/Feed.h>
#include <corvane/Sounding.h>

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <map>
#include <optional>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using corvane::Sounding;
using corvane::SoundingLevel;

constexpr unsigned TROPOPAUSE_OR_MAXWIND = SoundingLevel::TROPOPAUSE | SoundingLevel::MAXWIND;

// The profile of a report that the decoder alone can read: quantities by pressure, without levels at 0 hPa (99///) and
// those that give a pressure alone.
using Profile = std::map<double, std::map<Corvane::LEVEL_FIELD, double>>;

std::optional<Profile> profileOf(const std::string& text) {
    try {
        Profile profile;
        for (const Corvane::Level& level : Corvane(text).profile()) {
            const double pressure = level.fields.at(Corvane::LF_PRES);
            if (pressure > 0.0 && level.fields.size() > 1) {
                profile[pressure] = level.fields;
            }
        }
        return profile;
    } catch (const std::string&) {
    } catch (const std::out_of_range&) {
    }
    return std::nullopt;
}

// The soundings of a text; none when a part of it needed a mend or could not be read.
std::vector<Sounding> soundingsOf(const std::string& text) {
    std::istringstream input(text);
    corvane::BulletinReader reader(input, "-");
    corvane::Soundings collected;
    for (corvane::Part part; reader.next(part);) {
        const corvane::Reading reading = corvane::read(part);
        if (reading.status != corvane::Reading::DECODED || reading.mended()) {
            return {};
        }
        collected.add(part, reading);
    }
    return collected.soundings();
}

void expectQuantity(const Profile::mapped_type& fields, Corvane::LEVEL_FIELD field, double value, unsigned kinds) {
    const auto found = fields.find(field);
    if (found != fields.end()) {
        EXPECT_EQ(value, found->second);
    } else if ((kinds & TROPOPAUSE_OR_MAXWIND) == 0) {
        EXPECT_TRUE(std::isnan(value)) << value;
    }
}

void expectProfile(const Sounding& sounding, const Profile& profile) {
    Profile::size_type inProfile = 0;
    for (const SoundingLevel& level : sounding.levels) {
        SCOPED_TRACE(level.pressure);
        const auto found = profile.find(level.pressure);
        if (found == profile.end()) {
            EXPECT_EQ(level.kinds & ~TROPOPAUSE_OR_MAXWIND, 0U);
            continue;
        }
        ++inProfile;
        expectQuantity(found->second, Corvane::LF_TDRY, level.temperature, level.kinds);
        expectQuantity(found->second, Corvane::LF_DP, level.dewpoint, level.kinds);
        expectQuantity(found->second, Corvane::LF_WSPD, level.windSpeed, level.kinds);
        expectQuantity(found->second, Corvane::LF_WDIR, level.windDirection, level.kinds);
        const double reported = level.heightComputed ? SoundingLevel::NOT_GIVEN : level.height;
        expectQuantity(found->second, Corvane::LF_HEIGHT, reported, level.kinds);
    }
    EXPECT_EQ(inProfile, profile.size());
}

TEST(RealSoundings, HaveTheLevelsOfTheProfile) {
    int compared = 0;
    for (const std::filesystem::path& file : reportSamples()) {
        const std::string text = contentOf(file);
        const std::optional<Profile> profile = profileOf(text);
        const std::vector<Sounding> soundings = soundingsOf(text);
        if (!profile || soundings.size() != 1) {
            continue;
        }
        SCOPED_TRACE(file.filename().string());
        expectProfile(soundings.front(), *profile);
        ++compared;
    }
    EXPECT_GE(compared, 8);
}

TEST(RealSoundings, RiseWithFallingPressure) {
    int compared = 0;
    for (const std::filesystem::path& file : reportSamples()) {
        for (const Sounding& sounding : soundingsOf(contentOf(file))) {
            SCOPED_TRACE(file.filename().string());
            double below = -1.0e9;
            for (const SoundingLevel& level : sounding.levels) {
                if (!std::isnan(level.height)) {
                    EXPECT_GT(level.height, below) << level.pressure;
                    below = level.height;
                    ++compared;
                }
            }
        }
    }
    EXPECT_GE(compared, 500);
}

}  // namespace
