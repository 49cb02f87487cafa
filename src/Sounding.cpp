// How parts become soundings: which part belongs where, which of its copies counts, and how levels are merged.
#include <corvane/Sounding.h>
#include <corvane/Thermodynamics.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <set>
#include <string_view>
#include <tuple>
#include <unordered_map>
#include <utility>

namespace corvane {

namespace {

constexpr std::string_view LETTERS = "ABCD";

// ---------------------------------------------------------------------------------------------------------------------
// What is kept of a part
// ---------------------------------------------------------------------------------------------------------------------

struct KeptQuantity {
    Corvane::LEVEL_FIELD field;
    double SoundingLevel::*member;
};

constexpr KeptQuantity PRESSURE{Corvane::LF_PRES, &SoundingLevel::pressure};
constexpr std::array<KeptQuantity, 5> QUANTITIES{{
    {Corvane::LF_TDRY, &SoundingLevel::temperature},
    {Corvane::LF_DP, &SoundingLevel::dewpoint},
    {Corvane::LF_WSPD, &SoundingLevel::windSpeed},
    {Corvane::LF_WDIR, &SoundingLevel::windDirection},
    {Corvane::LF_HEIGHT, &SoundingLevel::height},
}};

constexpr std::size_t WIND_SPEED = 2;
static_assert(QUANTITIES[WIND_SPEED].field == Corvane::LF_WSPD);

// The bit of a kind of level; 0 for the remarks of a dropsonde, which are not levels of a sounding.
unsigned kindBit(Corvane::LEVEL_TYPE type) {
    switch (type) {
    case Corvane::LT_SURFACE: return SoundingLevel::SURFACE;
    case Corvane::LT_MANDATORY: return SoundingLevel::MANDATORY;
    case Corvane::LT_SIGNIFICANT: return SoundingLevel::SIGNIFICANT;
    case Corvane::LT_TROPOPAUSE: return SoundingLevel::TROPOPAUSE;
    case Corvane::LT_MAXWIND: return SoundingLevel::MAXWIND;
    default: return 0;
    }
}

// A level of a part in 56 bytes; most of what is kept are these.
struct KeptLevel {
    double pressure;
    std::array<double, QUANTITIES.size()> quantities;  // NaN where not given
    std::uint16_t firstGroup;
    std::uint16_t groupCount;
    std::uint8_t kind;  // one of SoundingLevel::Kind
    bool doubted;       // KeptPart::levelDoubts has its doubts
};
static_assert(sizeof(KeptLevel) == 56);
static_assert(MAXIMUM_GROUPS <= std::numeric_limits<std::uint16_t>::max());

struct KeptPart {
    SoundingPart about;
    std::optional<double> latitude;
    std::optional<double> longitude;
    std::optional<double> elevation;
    std::string launch;
    bool knots = false;
    std::vector<KeptLevel> levels;
    std::vector<std::vector<std::string>> levelDoubts;  // of the doubted levels, in their order
};

double quantityOf(const Corvane::Level& level, Corvane::LEVEL_FIELD field) {
    const auto found = level.fields.find(field);
    return found == level.fields.end() ? SoundingLevel::NOT_GIVEN : found->second;
}

KeptPart keep(const Part& part, const Reading& reading) {
    KeptPart kept;
    kept.about = {part.source, part.line, part.offset, part.heading, reading.letter, reading.mends, reading.doubts};
    kept.latitude = reading.latitude;
    kept.longitude = reading.longitude;
    kept.elevation = reading.elevation;
    kept.launch = reading.launch;
    kept.knots = reading.windsInKnots;
    kept.levels.reserve(reading.levels.size());
    for (const ReadLevel& level : reading.levels) {
        const unsigned kind = kindBit(level.values.type);
        const double pressure = quantityOf(level.values, PRESSURE.field);
        if (kind == 0 || !(pressure > 0.0)) {  // a surface of unknown pressure has no place in the vertical
            continue;
        }
        KeptLevel entry{};
        entry.pressure = pressure;
        for (std::size_t index = 0; index < QUANTITIES.size(); ++index) {
            entry.quantities[index] = quantityOf(level.values, QUANTITIES[index].field);
        }
        entry.firstGroup = static_cast<std::uint16_t>(level.groups.first);
        entry.groupCount = static_cast<std::uint16_t>(level.groups.count);
        entry.kind = static_cast<std::uint8_t>(kind);
        entry.doubted = !level.doubts.empty();
        kept.levels.push_back(entry);
        if (entry.doubted) {
            kept.levelDoubts.push_back(level.doubts);
        }
    }
    return kept;
}

// ---------------------------------------------------------------------------------------------------------------------
// Copies of a part
// ---------------------------------------------------------------------------------------------------------------------

// A hash of the groups of a part (FNV-1a): parts with the same groups share it, and others almost never do. For a
// decoded part these are the groups that the decoder was given.
std::uint64_t contentOf(const Part& part, const Reading& reading) {
    std::uint64_t content = 0xcbf29ce484222325U;
    const auto take = [&content](std::string_view group) {
        for (const char character : group) {
            content = (content ^ static_cast<unsigned char>(character)) * 0x100000001b3U;
        }
        content *= 0x100000001b3U;  // the end of the group, like a NUL
    };
    if (reading.status == Reading::DECODED) {
        std::for_each(reading.groups.begin(), reading.groups.end(), take);
    } else {
        std::for_each(part.groups.begin(), part.groups.end(), [&take](const Group& group) { take(group.text); });
    }
    return content;
}

// TTAAii CCCC YYGGgg and what follows, the BBB words.
struct Heading {
    std::string name;
    int correction = 0;  // 0: none, 1: COR, 2: CCA, 3: CCB ...

    explicit Heading(std::string_view text) {
        std::size_t begin = 0;
        for (int word = 1; begin < text.size(); ++word) {
            const std::size_t end = std::min(text.find(' ', begin), text.size());
            const std::string_view characters = text.substr(begin, end - begin);
            if (word <= 3) {
                name = text.substr(0, end);
            } else if (characters == "COR") {
                correction = std::max(correction, 1);
            } else if (characters.size() == 3 && characters.substr(0, 2) == "CC") {
                correction = std::max(correction, 2 + (characters[2] - 'A'));
            }
            begin = end + 1;
        }
    }
};

// The copies of one part that came: the one that counts, and what distinguishes the others.
struct Copies {
    KeptPart part;
    int correction = 0;
    std::uint64_t order = 0;           // when it came
    std::set<std::uint64_t> contents;  // of all copies
};

// The parts of one ascent, by letter; null where there is none.
struct Ascent {
    std::uint64_t order = 0;  // when its first part came
    std::array<std::unique_ptr<Copies>, 4> parts;

    bool empty() const {
        return std::none_of(parts.begin(), parts.end(), [](const auto& copies) { return !!copies; });
    }

    void add(std::size_t letter, std::uint64_t now, const Part& part, const Reading& reading, int correction) {
        if (empty()) {
            order = now;
        }
        const bool first = !parts[letter];
        if (first) {
            parts[letter] = std::make_unique<Copies>();
        }
        Copies& copies = *parts[letter];
        const bool repeat = !copies.contents.insert(contentOf(part, reading)).second;
        if (first || correction > copies.correction || (correction == copies.correction && !repeat)) {
            copies.part = keep(part, reading);
            copies.correction = correction;
            copies.order = now;
        }
    }
};

// ---------------------------------------------------------------------------------------------------------------------
// Which ascent a part belongs to
// ---------------------------------------------------------------------------------------------------------------------

struct Key {
    Corvane::WMO_MESSAGE_TYPE form;
    std::string station;
    int day;
    int hour;
    std::optional<double> latitude;  // the position only where it tells ascents apart
    std::optional<double> longitude;

    bool operator<(const Key& other) const {
        return std::tie(form, station, day, hour, latitude, longitude) <
               std::tie(other.form, other.station, other.day, other.hour, other.latitude, other.longitude);
    }
};

Key keyOf(const Reading& reading) {
    Key key{reading.form, reading.station, reading.day.value_or(0), reading.hour.value_or(0), {}, {}};
    // A station without a call sign of its own reports as SHIP or MOBIL (WMO-No. 306, Volume I.1, D....D).
    if (reading.form == Corvane::WMO_TEMP_DROP || reading.station == "SHIP" || reading.station == "MOBIL") {
        key.latitude = reading.latitude;
        key.longitude = reading.longitude;
    }
    return key;
}

// The drops of one position, day and hour.
class Drops {
public:
    void add(std::size_t letter, std::uint64_t now, const Part& part, const Reading& reading) {
        const Heading heading(part.heading);
        const std::pair<std::string, std::uint64_t> bulletin(part.source, part.bulletin);
        if (letter == 0) {
            const std::size_t drop = dropOf(contentOf(part, reading), heading);
            dropOfBulletin[bulletin] = drop;
            if (reading.status == Reading::DECODED) {
                drops[drop].ascent.add(letter, now, part, reading, heading.correction);
            }
            return;
        }
        const auto found = dropOfBulletin.find(bulletin);
        Ascent& ascent = found == dropOfBulletin.end() ? loose : drops[found->second].ascent;
        ascent.add(letter, now, part, reading, heading.correction);
    }

    // The ascents. The loose parts are an ascent of their own, unless there is just one drop: they then belong to it.
    template <typename Take>
    void forEach(Take take) const {
        const bool join = drops.size() == 1;
        for (const Drop& drop : drops) {
            take(drop.ascent, join ? &loose : nullptr);
        }
        if (!join) {
            take(loose, nullptr);
        }
    }

private:
    struct Drop {
        Ascent ascent;
        int correction = 0;  // the highest of its parts A
    };

    struct HeadingDrop {
        std::size_t drop;
        bool several;
    };

    // The drop of a part A, a new one if need be.
    std::size_t dropOf(std::uint64_t content, const Heading& heading) {
        const auto known = dropOfContent.find(content);
        std::size_t drop = drops.size();
        if (known != dropOfContent.end()) {
            drop = known->second;
        } else if (const auto same = dropOfHeading.find(heading.name);
                   same != dropOfHeading.end() && !same->second.several &&
                   drops[same->second.drop].correction != heading.correction) {
            drop = same->second.drop;  // a correction and what it corrects, whichever comes first
        } else if (heading.correction > 0 && drops.size() == 1) {
            drop = 0;
        } else {
            drops.emplace_back();
        }
        dropOfContent.emplace(content, drop);
        if (!heading.name.empty()) {
            HeadingDrop& same = dropOfHeading.try_emplace(heading.name, HeadingDrop{drop, false}).first->second;
            same.several = same.several || same.drop != drop;
        }
        drops[drop].correction = std::max(drops[drop].correction, heading.correction);
        return drop;
    }

    std::vector<Drop> drops;
    Ascent loose;  // parts B, C, D without a part A before them in their bulletin
    std::unordered_map<std::uint64_t, std::size_t> dropOfContent;
    std::map<std::string, HeadingDrop> dropOfHeading;                             // by heading without BBB
    std::map<std::pair<std::string, std::uint64_t>, std::size_t> dropOfBulletin;  // of its last part A
};

// ---------------------------------------------------------------------------------------------------------------------
// From parts to levels
// ---------------------------------------------------------------------------------------------------------------------

// Marks the parts whose winds are in another unit than those of most parts. Where both units are equally frequent, all
// parts are marked: nobody knows which are wrong.
std::vector<bool> oddUnits(const std::vector<const KeptPart*>& parts) {
    const auto hasWind = [](const KeptPart& part) {
        return std::any_of(part.levels.begin(), part.levels.end(),
                           [](const KeptLevel& level) { return !std::isnan(level.quantities[WIND_SPEED]); });
    };
    std::array<std::size_t, 2> count{};
    for (const KeptPart* part : parts) {
        count[part->knots ? 1 : 0] += hasWind(*part) ? 1 : 0;
    }
    std::vector<bool> odd;
    for (const KeptPart* part : parts) {
        const std::size_t same = count[part->knots ? 1 : 0];
        const std::size_t other = count[part->knots ? 0 : 1];
        odd.push_back(other > 0 && same <= other);
    }
    return odd;
}

void addDoubt(SoundingLevel& level, const std::string& name) {
    if (std::find(level.doubts.begin(), level.doubts.end(), name) == level.doubts.end()) {
        level.doubts.push_back(name);
    }
}

class Merger {
public:
    explicit Merger(const std::vector<const KeptPart*>& keptParts) : parts(keptParts), odd(oddUnits(keptParts)) {}

    std::vector<SoundingLevel> merge() {
        // Later kinds overwrite; tropopause and maximum wind do not.
        for (const unsigned kind : {SoundingLevel::SURFACE, SoundingLevel::MANDATORY, SoundingLevel::SIGNIFICANT}) {
            take(kind, true);
        }
        for (const unsigned kind : {SoundingLevel::TROPOPAUSE, SoundingLevel::MAXWIND}) {
            take(kind, false);
        }
        std::vector<SoundingLevel> levels;
        levels.reserve(merged.size());
        for (auto& entry : merged) {
            SoundingLevel& level = entry.second.level;
            if (entry.second.oddWind) {
                addDoubt(level, "unit");
            }
            level.belowGround = level.pressure > surfacePressure;
            std::sort(level.origins.begin(), level.origins.end(), [](const auto& one, const auto& other) {
                return std::tie(one.part, one.groups.first) < std::tie(other.part, other.groups.first);
            });
            levels.push_back(std::move(level));
        }
        return levels;
    }

private:
    struct Merged {
        SoundingLevel level;
        bool oddWind = false;
    };

    // Merges the levels of one kind from all parts.
    void take(unsigned kind, bool overwrite) {
        for (std::size_t part = 0; part < parts.size(); ++part) {
            std::size_t doubted = 0;
            for (const KeptLevel& level : parts[part]->levels) {
                const std::size_t doubts = doubted;
                doubted += level.doubted ? 1 : 0;
                if (level.kind != kind) {
                    continue;
                }
                Merged& target = merged[level.pressure];
                takeQuantities(target, level, overwrite, odd[part]);
                target.level.pressure = level.pressure;
                target.level.kinds |= kind;
                target.level.origins.push_back({part, {level.firstGroup, level.groupCount}});
                if (level.doubted) {
                    for (const std::string& name : parts[part]->levelDoubts[doubts]) {
                        addDoubt(target.level, name);
                    }
                }
                if (kind == SoundingLevel::SURFACE) {
                    surfacePressure = level.pressure;
                } else if (kind == SoundingLevel::MAXWIND) {
                    target.level.maximumWind = level.quantities[WIND_SPEED];
                }
            }
        }
    }

    static void takeQuantities(Merged& target, const KeptLevel& level, bool overwrite, bool oddUnit) {
        for (std::size_t index = 0; index < QUANTITIES.size(); ++index) {
            double& value = target.level.*QUANTITIES[index].member;
            if (!std::isnan(level.quantities[index]) && (overwrite || std::isnan(value))) {
                value = level.quantities[index];
                if (QUANTITIES[index].field == Corvane::LF_WSPD) {
                    target.oddWind = oddUnit;
                }
            }
        }
    }

    const std::vector<const KeptPart*>& parts;
    const std::vector<bool> odd;
    std::map<double, Merged, std::greater<>> merged;
    double surfacePressure = std::numeric_limits<double>::infinity();
};

// ---------------------------------------------------------------------------------------------------------------------
// Heights
// ---------------------------------------------------------------------------------------------------------------------

// The levels above the ground, from the lowest up, and one value of each.
using Column = std::vector<SoundingLevel*>;
using Values = std::vector<double>;

// Fills the gaps between values linearly in ln p; leaves the ends.
void fillGaps(const Column& column, Values& values) {
    std::size_t below = values.size();
    for (std::size_t above = 0; above < values.size(); ++above) {
        if (std::isnan(values[above])) {
            continue;
        }
        for (std::size_t gap = below + 1; gap < above; ++gap) {  // none while there is no value below
            const double share = std::log(column[below]->pressure / column[gap]->pressure) /
                                 std::log(column[below]->pressure / column[above]->pressure);
            values[gap] = values[below] + share * (values[above] - values[below]);
        }
        below = above;
    }
}

// Virtual temperatures from the lowest to the highest temperature; NaN outside. Dew points are interpolated; above the
// highest one, where there is hardly any water, and below the lowest one the air counts as dry.
Values virtualTemperatures(const Column& column) {
    Values dewpoints;
    for (const SoundingLevel* level : column) {
        dewpoints.push_back(level->dewpoint);
    }
    fillGaps(column, dewpoints);
    Values temperatures;
    for (std::size_t index = 0; index < column.size(); ++index) {
        temperatures.push_back(
            virtualTemperature(column[index]->temperature, dewpoints[index], column[index]->pressure));
    }
    fillGaps(column, temperatures);
    return temperatures;
}

// The same with the ends held: between two reported heights it is the share of each layer that counts.
Values withEndsHeld(Values temperatures) {
    const auto given = [](double temperature) { return !std::isnan(temperature); };
    const auto first = std::find_if(temperatures.begin(), temperatures.end(), given);
    const auto last = std::find_if(temperatures.rbegin(), temperatures.rend(), given);
    std::fill(temperatures.begin(), first, first != temperatures.end() ? *first : 0.0);
    std::fill(temperatures.rbegin(), last, last != temperatures.rend() ? *last : 0.0);
    return temperatures;
}

// The thickness of the layer between each level and the next.
Values thicknesses(const Column& column, const Values& temperatures) {
    Values layers;
    for (std::size_t index = 1; index < column.size(); ++index) {
        layers.push_back(thickness(column[index - 1]->pressure, column[index]->pressure,
                                   (temperatures[index - 1] + temperatures[index]) / 2.0));
    }
    return layers;
}

void computeHeight(SoundingLevel& level, double height) {
    level.height = height;
    level.heightComputed = !std::isnan(height);
}

void computeHeights(std::vector<SoundingLevel>& levels) {
    Column column;
    std::vector<std::size_t> reported;
    for (SoundingLevel& level : levels) {
        // A height below the ground is extrapolated, with temperatures that nobody measured.
        if (!level.belowGround) {
            if (!std::isnan(level.height)) {
                reported.push_back(column.size());
            }
            column.push_back(&level);
        }
    }
    if (reported.empty()) {
        return;
    }
    const Values temperatures = virtualTemperatures(column);
    const Values layers = thicknesses(column, temperatures);
    const Values boundedLayers = thicknesses(column, withEndsHeld(temperatures));

    for (std::size_t index = reported.front(); index > 0; --index) {
        computeHeight(*column[index - 1], column[index]->height - layers[index - 1]);
    }
    for (std::size_t anchor = 1; anchor < reported.size(); ++anchor) {
        const std::size_t bottom = reported[anchor - 1];
        const std::size_t top = reported[anchor];
        double total = 0.0;
        for (std::size_t layer = bottom; layer < top; ++layer) {
            total += boundedLayers[layer];
        }
        const double scale = (column[top]->height - column[bottom]->height) / total;
        for (std::size_t index = bottom + 1; index < top; ++index) {
            computeHeight(*column[index], column[index - 1]->height + scale * boundedLayers[index - 1]);
        }
    }
    for (std::size_t index = reported.back() + 1; index < column.size(); ++index) {
        computeHeight(*column[index], column[index - 1]->height + layers[index - 1]);
    }
}

// ---------------------------------------------------------------------------------------------------------------------
// Soundings
// ---------------------------------------------------------------------------------------------------------------------

// An ascent whose copies may be in two places.
struct Found {
    const Key* key;
    const Ascent* ascent;
    const Ascent* rest;  // or null
    std::uint64_t order;
};

// The copy that counts, of those of one or two places.
const Copies* prevailing(const Copies* one, const Copies* other) {
    if (one == nullptr || other == nullptr) {
        return one != nullptr ? one : other;
    }
    return std::tie(one->correction, one->order) < std::tie(other->correction, other->order) ? other : one;
}

std::size_t distinctContents(const Copies* one, const Copies* other) {
    std::size_t count = one != nullptr ? one->contents.size() : 0;
    if (other != nullptr) {
        count += static_cast<std::size_t>(
            std::count_if(other->contents.begin(), other->contents.end(), [one](std::uint64_t content) {
                return one == nullptr || one->contents.count(content) == 0;
            }));
    }
    return count;
}

Sounding assemble(const Found& found) {
    Sounding sounding;
    sounding.form = found.key->form;
    sounding.station = found.key->station;
    sounding.day = found.key->day;
    sounding.hour = found.key->hour;
    std::vector<const KeptPart*> parts;
    for (std::size_t letter = 0; letter < LETTERS.size(); ++letter) {
        const Copies* const one = found.ascent->parts[letter].get();
        const Copies* const other = found.rest != nullptr ? found.rest->parts[letter].get() : nullptr;
        const Copies* const copies = prevailing(one, other);
        if (copies == nullptr) {
            continue;
        }
        const KeptPart& part = copies->part;
        sounding.replaced += distinctContents(one, other) - 1;
        sounding.letters += LETTERS[letter];
        sounding.parts.push_back(part.about);
        if (!sounding.latitude && !sounding.longitude) {
            sounding.latitude = part.latitude;
            sounding.longitude = part.longitude;
        }
        if (!sounding.elevation) {
            sounding.elevation = part.elevation;
        }
        if (sounding.launch.empty()) {
            sounding.launch = part.launch;
        }
        parts.push_back(&part);
    }
    sounding.levels = Merger(parts).merge();
    computeHeights(sounding.levels);
    return sounding;
}

}  // namespace

class Soundings::Store {
public:
    void add(const Part& part, const Reading& reading) {
        const std::size_t letter = LETTERS.find(reading.letter);
        const bool identified = letter != std::string_view::npos && reading.day && reading.hour;
        const bool decoded = reading.status == Reading::DECODED;
        ++now;
        if (identified && reading.form == Corvane::WMO_TEMP_DROP && (decoded || letter == 0)) {
            drops[keyOf(reading)].add(letter, now, part, reading);
        } else if (identified && decoded) {
            ascents[keyOf(reading)].add(letter, now, part, reading, Heading(part.heading).correction);
        }
    }

    // Every ascent that has a part, in the order in which the first parts came.
    std::vector<Found> found() const {
        std::vector<Found> all;
        for (const auto& entry : ascents) {
            all.push_back({&entry.first, &entry.second, nullptr, entry.second.order});
        }
        for (const auto& entry : drops) {
            entry.second.forEach([&](const Ascent& ascent, const Ascent* rest) {
                const bool hasRest = rest != nullptr && !rest->empty();
                if (!ascent.empty()) {
                    const std::uint64_t order = hasRest ? std::min(ascent.order, rest->order) : ascent.order;
                    all.push_back({&entry.first, &ascent, hasRest ? rest : nullptr, order});
                } else if (hasRest) {
                    all.push_back({&entry.first, rest, nullptr, rest->order});
                }
            });
        }
        std::sort(all.begin(), all.end(), [](const Found& one, const Found& other) { return one.order < other.order; });
        return all;
    }

private:
    std::map<Key, Ascent> ascents;
    std::map<Key, Drops> drops;
    std::uint64_t now = 0;
};

Soundings::Soundings() : store(std::make_unique<Store>()) {}
Soundings::~Soundings() = default;
Soundings::Soundings(Soundings&&) noexcept = default;
Soundings& Soundings::operator=(Soundings&&) noexcept = default;

void Soundings::add(const Part& part, const Reading& reading) {
    store->add(part, reading);
}

void Soundings::forEach(const std::function<void(const Sounding&)>& take) const {
    for (const Found& found : store->found()) {
        take(assemble(found));
    }
}

std::vector<Sounding> Soundings::soundings() const {
    std::vector<Sounding> all;
    forEach([&all](const Sounding& sounding) { all.push_back(sounding); });
    return all;
}

std::string kindNames(unsigned kinds) {
    std::string names;
    for (const auto& [kind, name] :
         {std::pair(SoundingLevel::SURFACE, "surface"), std::pair(SoundingLevel::MANDATORY, "mandatory"),
          std::pair(SoundingLevel::SIGNIFICANT, "significant"), std::pair(SoundingLevel::TROPOPAUSE, "tropopause"),
          std::pair(SoundingLevel::MAXWIND, "maxwind")}) {
        if ((kinds & kind) != 0) {
            names += names.empty() ? "" : " ";
            names += name;
        }
    }
    return names;
}

}  // namespace corvane
