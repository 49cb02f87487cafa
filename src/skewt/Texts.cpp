// The texts around the diagram: title, what was mended, the table of indices, the description.
#include "Picture.h"

#include "IndexTable.h"
#include "Units.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>
#include <vector>

namespace corvane::skewt {

namespace {

constexpr const char* DEGREE = "\xC2\xB0";
constexpr const char* DOT = " \xC2\xB7 ";

std::string twoDigits(int number) {
    return number >= 0 && number < 10 ? '0' + std::to_string(number) : std::to_string(number);
}

std::string degrees(double value, const char* positive, const char* negative) {
    return fixed(std::fabs(value), 1) + DEGREE + (value < 0.0 ? negative : positive);
}

}  // namespace

// "850 hPa, 18.2 / 16.3 degrees, 230 degrees 25 kt": what a level gives.
std::string Picture::levelText(const Level& level) const {
    std::string text = fixed(level.pressure, level.pressure < 10.0 ? 1 : 0) + " hPa";
    if (gives(level, Quantity::TEMPERATURE)) {
        text += ", " + shown(level.temperature, 1);
        text += gives(level, Quantity::DEWPOINT) ? " / " + shown(level.dewpoint, 1) : "";
        text += std::string(" ") + DEGREE + 'C';
    }
    if (gives(level, Quantity::WIND)) {
        text += ", " + fixed(level.windDirection, 0) + DEGREE + ' ' + fixed(inUnit(level.windSpeed, options.units), 0) +
                ' ' + unitName(options.units);
    }
    return text;
}

// @param room what the text may take, in characters of size 1: a longer name of the station is shortened.
std::string Picture::titleText(double room) const {
    std::string before = formName(sounding.form);
    before = (before.empty() ? "Sounding" : before) + ' ';
    const std::string after = ", day " + std::to_string(sounding.day) + ", " + twoDigits(sounding.hour) + " UTC";
    std::string where = sounding.station;
    if (where.empty() && sounding.latitude && sounding.longitude) {
        where = degrees(*sounding.latitude, "N", "S") + ' ' + degrees(*sounding.longitude, "E", "W");
    }
    if (where.empty()) {
        before.pop_back();
    }
    const double left = room - textWidth(before + after, true);
    return fitted(before + fitted(where, left, true) + after, room, true);
}

std::string Picture::placeText() const {
    std::vector<std::string> parts;
    if (sounding.latitude && sounding.longitude && !sounding.station.empty()) {
        parts.push_back(degrees(*sounding.latitude, "N", "S") + ' ' + degrees(*sounding.longitude, "E", "W"));
    }
    if (sounding.elevation) {
        parts.push_back("elevation " + shown(*sounding.elevation, 0) + " m");
    }
    if (sounding.launch.size() == 4) {
        parts.push_back("launched " + sounding.launch.substr(0, 2) + ':' + sounding.launch.substr(2) + " UTC");
    }
    if (!sounding.letters.empty()) {
        std::string text = sounding.letters.size() == 1 ? "part" : "parts";
        for (const char letter : sounding.letters) {
            text += std::string(" ") + letter;
        }
        parts.push_back(text);
    }
    parts.push_back(std::to_string(sounding.levels.size()) + (sounding.levels.size() == 1 ? " level" : " levels"));
    std::string text;
    for (const std::string& part : parts) {
        text += (text.empty() ? "" : DOT) + part;
    }
    return text;
}

void Picture::title() {
    const double room = column.left - content.left;
    front.text({content.left, content.top + 1.2 * font}, Anchor::START, titleText(room / (1.5 * font)),
               {1.5 * font, true, {}});
    front.text({content.left, content.top + 2.8 * font}, Anchor::START, fitted(placeText(), room / size(0.95)),
               {size(0.95), false, colours.quiet});
}

std::string Picture::mendedText() const {
    std::string text;
    for (const SoundingPart& part : sounding.parts) {
        if (part.mends.empty()) {
            continue;
        }
        std::vector<std::pair<std::string, int>> counts;
        for (const Mend& mend : part.mends) {
            const std::string name = mend.name + (mend.lost ? " (data lost)" : "");
            const auto known =
                std::find_if(counts.begin(), counts.end(), [&](const auto& entry) { return entry.first == name; });
            if (known == counts.end()) {
                counts.emplace_back(name, 1);
            } else {
                ++known->second;
            }
        }
        text += text.empty() ? "Mended: " : "; ";
        text += std::string(1, part.letter);
        for (const auto& [name, count] : counts) {
            text += ' ' + name + (count > 1 ? " \xC3\x97" + std::to_string(count) : "") +
                    (&name == &counts.back().first ? "" : ",");
        }
    }
    std::vector<std::string> doubts;
    for (const SoundingLevel& level : sounding.levels) {
        for (const std::string& doubt : level.doubts) {
            if (std::find(doubts.begin(), doubts.end(), doubt) == doubts.end()) {
                doubts.push_back(doubt);
            }
        }
    }
    for (const std::string& doubt : doubts) {
        text += &doubt == &doubts.front() ? std::string(text.empty() ? "" : DOT) + "Doubted (hollow): " : ", ";
        text += doubt;
    }
    if (sounding.replaced > 0) {
        text += (text.empty() ? "" : DOT) + std::string("Replaced copies: ") + std::to_string(sounding.replaced);
    }
    return text;
}

void Picture::mended() {
    const std::string text = mendedText();
    if (!text.empty()) {
        const double high = size(0.85);
        front.text({panel.left, frame.bottom + 2.65 * font}, Anchor::START,
                   fitted(text, (column.left - panel.left) / high), {high, false, colours.quiet},
                   attribute("id", "mended"));
    }
}

void Picture::table() {
    const std::vector<ParcelRow> parcels = parcelRows(indices);
    const std::vector<IndexRow> single = indexRows(indices, options.units);
    // Without a surface level nobody knows whether the lowest level is at the ground.
    const char* const lowest = std::isnan(profile.groundPressure()) && !profile.beginsAloft() ? "lowest" : "surface";
    const auto widest = [](const auto& rows, auto member, const char* header) {
        double columnWidth = textWidth(header, true);
        for (const auto& row : rows) {
            columnWidth = std::max(columnWidth, textWidth(row.*member));
        }
        return columnWidth;
    };
    constexpr double GAP = 0.6;
    const double name = widest(parcels, &ParcelRow::name, "");
    const double surface = widest(parcels, &ParcelRow::surface, lowest);
    double unstable = widest(parcels, &ParcelRow::mostUnstable, "unstable");
    const double index = widest(single, &IndexRow::name, "");
    const double value = widest(single, &IndexRow::value, "");
    const double room = (result.hodograph.left - panel.left) / font;  // in characters of size 1
    const auto needed = [&](double parcelColumn) { return name + surface + parcelColumn + index + value + 6.0 * GAP; };
    const double longer = std::max(unstable, textWidth("most unstable", true));
    const bool wide = needed(longer) <= room;
    unstable = wide ? longer : unstable;
    const double textSize = font * std::min(1.0, room / needed(unstable));
    const double gap = GAP + std::min(2.0, (room * font / textSize - needed(unstable)) / 5.0);

    const double row = panel.height() / 9.0;
    const auto baseline = [&](std::size_t i) { return panel.top + (static_cast<double>(i) + 0.7) * row; };
    const Face face{textSize};
    const Face quiet{textSize, false, colours.quiet};
    const Face bold{textSize, true, {}};
    const double nameLeft = panel.left;
    const double surfaceRight = nameLeft + (name + gap + surface) * textSize;
    const double unstableRight = surfaceRight + (gap + unstable) * textSize;
    const double indexLeft = unstableRight + 2.0 * gap * textSize;
    const double valueRight = indexLeft + (index + gap + value) * textSize;

    front.open(attribute("id", "indices"));
    front.text({nameLeft, baseline(0)}, Anchor::START, "Parcel", bold);
    front.text({surfaceRight, baseline(0)}, Anchor::END, lowest, bold);
    front.text({unstableRight, baseline(0)}, Anchor::END, wide ? "most unstable" : "unstable", bold);
    for (std::size_t i = 0; i < parcels.size(); ++i) {
        front.text({nameLeft, baseline(i + 1)}, Anchor::START, parcels[i].name, quiet);
        front.text({surfaceRight, baseline(i + 1)}, Anchor::END, parcels[i].surface, face);
        front.text({unstableRight, baseline(i + 1)}, Anchor::END, parcels[i].mostUnstable, face);
    }
    front.text({indexLeft, baseline(0)}, Anchor::START, "Sounding", bold);
    for (std::size_t i = 0; i < single.size(); ++i) {
        front.text({indexLeft, baseline(i + 1)}, Anchor::START, single[i].name, quiet);
        front.text({valueRight, baseline(i + 1)}, Anchor::END, single[i].value, face);
    }
    std::string notes = std::isnan(indices.freezingLevelHeight) && std::isnan(indices.wetBulbZeroHeight)
                            ? ""
                            : "Heights above ground. ";
    notes += parcelDrawn ? "Dashed: most unstable." : "";
    const double note = 0.72 * textSize;
    if (!notes.empty() && note >= SMALLEST_TEXT) {
        front.text({indexLeft, baseline(8)}, Anchor::START, notes, {note, false, colours.quiet});
    }
    front.close();
}

// What the picture shows, for those who do not see it.
std::string Picture::description() const {
    std::string text = placeText() + '.';
    const auto& levels = profile.levels();
    if (!levels.empty()) {
        text += " From " + fixed(levels.front().pressure, 0) + " to " + fixed(levels.back().pressure, 0) + " hPa.";
    }
    struct Named {
        SoundingLevel::Kind kind;
        const char* name;
    };
    for (const Named& named : {Named{SoundingLevel::SURFACE, "Surface"},
                               {SoundingLevel::TROPOPAUSE, "Tropopause"},
                               {SoundingLevel::MAXWIND, "Maximum wind"}}) {
        for (const Level& level : profile.levelsOf(named.kind)) {
            text += std::string(" ") + named.name + ' ' + levelText(level) + '.';
        }
    }
    text += " CAPE of the most unstable parcel " + indexText(indices.mostUnstable.cape, 0, "J/kg") + '.';
    constexpr std::size_t LONGEST = 4000;
    for (const SoundingPart& part : sounding.parts) {
        for (const Mend& mend : part.mends) {
            if (text.size() < LONGEST) {
                text += " Part " + std::string(1, part.letter) + " mended: " + fitted(mend.text, 150.0) + '.';
            }
        }
    }
    return text;
}

}  // namespace corvane::skewt
