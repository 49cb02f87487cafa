// What the page calls: texts in, JSON, CSV and SVG out. Everything is decided by the library; nothing here interprets a
// report.
//
// The page adds its files one after another with corvane_add(), which takes their bytes from corvane_input(), and ends
// with corvane_finish(). From then on it asks for entries of its list, for what one entry holds, its picture and rows.
// A text is returned as its address; corvane_length() gives its length. It is valid until the next call.
#include "skewt/Drawing.h"
#include "skewt/Units.h"
#include "SoundingTable.h"

#include <corvane/Feed.h>
#include <corvane/SkewT.h>
#include <corvane/Sounding.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <istream>
#include <map>
#include <memory>
#include <optional>
#include <streambuf>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#ifdef __EMSCRIPTEN__
#define PAGE_EXPORT(name) __attribute__((export_name(#name), used))
#else
#define PAGE_EXPORT(name)
#endif

// The page's: gives up to `size` of the next bytes of the file that is being read; 0 at its end.
extern "C" int corvane_input(char* bytes, int size);

namespace {

using corvane::GroupRange;
using corvane::Part;
using corvane::Reading;
using corvane::Sounding;

// ---- input -------------------------------------------------------------------------------------------------------

class PageInput : public std::streambuf {
protected:
    int_type underflow() override {
        const int count = corvane_input(bytes.data(), static_cast<int>(bytes.size()));
        if (count <= 0) {
            return traits_type::eof();
        }
        setg(bytes.data(), bytes.data(), bytes.data() + count);
        return traits_type::to_int_type(bytes.front());
    }

private:
    std::array<char, 1 << 18> bytes{};
};

// ---- what is kept ------------------------------------------------------------------------------------------------

// Where a group is: bytes after the part's first one.
struct Place {
    std::uint32_t begin = 0;
    std::uint32_t end = 0;
};

// A part, without its levels.
struct KeptPart {
    std::size_t file = 0;
    std::uint64_t offset = 0;
    std::uint64_t line = 0;
    std::string heading;
    char letter = 0;
    std::vector<Place> groups;
    Reading reading;
};

// A line of the page's list: a sounding with the parts that were refused beside it, or parts that give no sounding.
struct Entry {
    std::optional<std::size_t> sounding;
    std::vector<std::size_t> parts;
};

struct State {
    std::vector<KeptPart> parts;
    corvane::Soundings collected;
    std::vector<Sounding> soundings;
    std::vector<Entry> entries;
    std::size_t files = 0;
    std::string svg;
};

std::unique_ptr<State> state;
std::string result;

const char* give(std::string text) {
    result = std::move(text);
    return result.c_str();
}

// ---- JSON --------------------------------------------------------------------------------------------------------

// Writes JSON. What precedes a value decides whether it needs a comma.
class Json {
public:
    Json& open(char bracket) {
        separate();
        text += bracket;
        return *this;
    }
    Json& close(char bracket) {
        text += bracket;
        return *this;
    }
    Json& key(std::string_view name) {
        string(name);
        text += ':';
        return *this;
    }
    Json& string(std::string_view value) {
        separate();
        text += '"';
        for (const char character : value) {
            const auto byte = static_cast<unsigned char>(character);
            if (byte < 0x20 || byte == '"' || byte == '\\' || byte == 0x7F) {
                constexpr std::string_view DIGITS = "0123456789abcdef";
                text += "\\u00";
                text += DIGITS[byte / 16];
                text += DIGITS[byte % 16];
            } else {
                text += character;
            }
        }
        text += '"';
        return *this;
    }
    Json& letter(char value) { return string(std::string_view(&value, value == 0 ? 0 : 1)); }
    Json& boolean(bool value) {
        separate();
        text += value ? "true" : "false";
        return *this;
    }
    Json& whole(std::uint64_t value) {
        separate();
        text += std::to_string(value);
        return *this;
    }
    // A number in thousandths: nothing on the page needs more. Absent and NaN are null.
    Json& number(std::optional<double> value) {
        separate();
        constexpr double LARGEST = 1e12;
        if (!value || !(std::fabs(*value) < LARGEST)) {
            text += "null";
            return *this;
        }
        const long long thousandths = std::llround(*value * 1000.0);
        const long long magnitude = thousandths < 0 ? -thousandths : thousandths;
        const std::string decimals = std::to_string(1000 + magnitude % 1000);
        text += thousandths < 0 ? "-" : "";
        text += std::to_string(magnitude / 1000);
        text += '.';
        text.append(decimals, 1, 3);
        return *this;
    }
    Json& range(const GroupRange& groups) { return open('[').whole(groups.first).whole(groups.count).close(']'); }

    std::string take() { return std::move(text); }

private:
    void separate() {
        if (!text.empty() && std::string_view("[{:,").find(text.back()) == std::string_view::npos) {
            text += ',';
        }
    }

    std::string text;
};

// ---- reading -----------------------------------------------------------------------------------------------------

KeptPart keep(const Part& part, std::size_t file, Reading reading) {
    KeptPart kept;
    kept.file = file;
    kept.offset = part.offset;
    kept.line = part.line;
    kept.heading = part.heading;
    kept.letter = part.letter();
    kept.groups.reserve(part.groups.size());
    for (const corvane::Group& group : part.groups) {
        kept.groups.push_back({static_cast<std::uint32_t>(group.offset - part.offset),
                               static_cast<std::uint32_t>(group.end - part.offset)});
    }
    kept.reading = std::move(reading);
    kept.reading.levels = {};  // the soundings have them
    kept.reading.groups = {};
    return kept;
}

// What parts of one ascent have in common, as far as it can be read.
std::string ascent(Corvane::WMO_MESSAGE_TYPE form, const std::string& station, std::optional<int> day,
                   std::optional<int> hour, std::optional<double> latitude, std::optional<double> longitude) {
    Json key;
    key.string(corvane::formName(form)).string(station).number(day).number(hour);
    if (form == Corvane::WMO_TEMP_DROP) {
        key.number(latitude).number(longitude);
    }
    return key.take();
}

std::string ascent(const Sounding& sounding) {
    return ascent(sounding.form, sounding.station, sounding.day, sounding.hour, sounding.latitude, sounding.longitude);
}

std::string ascent(const Reading& reading) {
    return ascent(reading.form, reading.station, reading.day, reading.hour, reading.latitude, reading.longitude);
}

// The part at a place of the input; the parts are in the order of the input.
std::size_t partAt(std::size_t file, std::uint64_t offset) {
    const auto found = std::lower_bound(
        state->parts.begin(), state->parts.end(), std::make_pair(file, offset),
        [](const KeptPart& part, const auto& place) { return std::make_pair(part.file, part.offset) < place; });
    return static_cast<std::size_t>(found - state->parts.begin());
}

// The entries of the list: the soundings, each with the refused parts of its ascent; then what is left over: refused
// parts without a sounding, NIL and empty parts, those of one ascent and status in one entry.
void makeEntries() {
    std::map<std::string, std::size_t> entryOf;
    for (std::size_t i = 0; i < state->soundings.size(); ++i) {
        const Sounding& sounding = state->soundings[i];
        Entry entry;
        entry.sounding = i;
        for (const corvane::SoundingPart& part : sounding.parts) {
            entry.parts.push_back(partAt(std::stoul(part.source), part.offset));
        }
        entryOf.emplace(ascent(sounding), state->entries.size());
        state->entries.push_back(std::move(entry));
    }
    std::map<std::string, std::size_t> leftOver;
    for (std::size_t i = 0; i < state->parts.size(); ++i) {
        const Reading& reading = state->parts[i].reading;
        if (reading.status == Reading::DECODED) {
            continue;
        }
        std::string key = ascent(reading);
        if (reading.status == Reading::REFUSED) {
            const auto sounding = entryOf.find(key);
            if (sounding != entryOf.end()) {
                state->entries[sounding->second].parts.push_back(i);
                continue;
            }
        }
        key += corvane::statusName(reading.status);
        const auto [place, isNew] = leftOver.emplace(std::move(key), state->entries.size());
        // Refused parts of an unknown date have nothing to do with each other. NIL parts mostly give none.
        const bool unknown = reading.station.empty() || (reading.status == Reading::REFUSED && !reading.day);
        if (isNew || unknown) {
            place->second = state->entries.size();
            state->entries.emplace_back();
        }
        state->entries[place->second].parts.push_back(i);
    }
}

// ---- answers -----------------------------------------------------------------------------------------------------

void writeCounts(Json& json) {
    std::array<std::uint64_t, 4> statuses{};
    std::uint64_t mended = 0;
    std::uint64_t lost = 0;
    std::uint64_t doubtful = 0;
    for (const KeptPart& part : state->parts) {
        ++statuses.at(part.reading.status);
        if (part.reading.status == Reading::DECODED) {
            mended += part.reading.mended() && !part.reading.lost() ? 1 : 0;
            lost += part.reading.lost() ? 1 : 0;
            doubtful += part.reading.doubtful() ? 1 : 0;
        }
    }
    json.open('{');
    json.key("parts").whole(state->parts.size());
    json.key("decoded").whole(statuses[Reading::DECODED]);
    json.key("mended").whole(mended);
    json.key("lost").whole(lost);
    json.key("doubtful").whole(doubtful);
    json.key("nil").whole(statuses[Reading::NIL]);
    json.key("empty").whole(statuses[Reading::EMPTY]);
    json.key("refused").whole(statuses[Reading::REFUSED]);
    json.key("entries").whole(state->entries.size());
    json.close('}');
}

// Inserts the letter of a part into letters that are in order, unless it is among them.
void addLetter(std::string& letters, char letter) {
    const auto place = std::lower_bound(letters.begin(), letters.end(), letter);
    if (place == letters.end() || *place != letter) {
        letters.insert(place, letter);
    }
}

void writeEntry(Json& json, std::size_t index) {
    const Entry& entry = state->entries[index];
    const Reading& first = state->parts[entry.parts.front()].reading;
    const Sounding* sounding = entry.sounding ? &state->soundings[*entry.sounding] : nullptr;
    std::string letters;
    std::string refused;
    bool mended = false;
    bool lost = false;
    for (const std::size_t i : entry.parts) {
        const KeptPart& part = state->parts[i];
        if (part.reading.status == Reading::REFUSED) {
            addLetter(refused, part.letter);
        } else {
            for (const corvane::Mend& mend : part.reading.mends) {
                (mend.lost ? lost : mended) = true;
            }
        }
        addLetter(letters, part.letter);
    }
    const bool doubtful =
        sounding != nullptr && std::any_of(sounding->levels.begin(), sounding->levels.end(),
                                           [](const corvane::SoundingLevel& level) { return !level.doubts.empty(); });
    json.open('{');
    json.key("id").whole(index);
    json.key("status").string(sounding != nullptr ? "sounding" : corvane::statusName(first.status));
    json.key("form").string(corvane::formName(first.form));
    json.key("station").string(sounding != nullptr ? sounding->station : first.station);
    json.key("day").number(sounding != nullptr ? sounding->day : first.day);
    json.key("hour").number(sounding != nullptr ? sounding->hour : first.hour);
    json.key("latitude").number(sounding != nullptr ? sounding->latitude : first.latitude);
    json.key("longitude").number(sounding != nullptr ? sounding->longitude : first.longitude);
    json.key("letters").string(sounding != nullptr ? sounding->letters : letters);
    json.key("levels").whole(sounding != nullptr ? sounding->levels.size() : 0);
    json.key("mended").boolean(mended);
    json.key("lost").boolean(lost);
    json.key("doubtful").boolean(doubtful);
    json.key("refused").string(refused);
    json.close('}');
}

void writePart(Json& json, const KeptPart& part) {
    const Reading& reading = part.reading;
    json.open('{');
    json.key("file").whole(part.file);
    json.key("offset").whole(part.offset);
    json.key("line").whole(part.line);
    json.key("heading").string(part.heading);
    json.key("letter").letter(part.letter);
    json.key("status").string(corvane::statusName(reading.status));
    json.key("groups").open('[');
    for (const Place& group : part.groups) {
        json.open('[').whole(group.begin).whole(group.end).close(']');
    }
    json.close(']');
    json.key("mends").open('[');
    for (const corvane::Mend& mend : reading.mends) {
        json.open('{');
        json.key("name").string(mend.name);
        json.key("text").string(mend.text);
        json.key("lost").boolean(mend.lost);
        json.key("groups").range(mend.groups);
        json.close('}');
    }
    json.close(']');
    json.key("doubts").open('[');
    for (const corvane::Doubt& doubt : reading.doubts) {
        json.open('{').key("name").string(doubt.name).key("text").string(doubt.text).close('}');
    }
    json.close(']');
    json.key("reason").string(reading.reason);
    json.key("fault").range(reading.fault);
    json.close('}');
}

// The rows of a sounding as its CSV table has them, without the columns that all rows share. These are the last nine,
// and none of them holds a comma or a quotation mark.
std::vector<std::string> rowsOf(const Sounding& sounding) {
    std::string table;
    corvane::table::appendSoundingRows(table, sounding);
    std::vector<std::string> rows;
    std::size_t begin = 0;
    while (begin < table.size()) {
        const std::size_t end = table.find('\n', begin);
        std::size_t field = end;
        for (int columns = 0; columns < 9; ++columns) {
            field = table.rfind(',', field - 1);
        }
        rows.push_back(table.substr(field + 1, end - field - 1));
        begin = end + 1;
    }
    return rows;
}

void writeLevels(Json& json, const Sounding& sounding) {
    const std::vector<std::string> rows = rowsOf(sounding);
    json.open('[');
    for (std::size_t i = 0; i < sounding.levels.size(); ++i) {
        const corvane::SoundingLevel& level = sounding.levels[i];
        json.open('{');
        json.key("row").string(rows[i]);
        json.key("knots").number(corvane::skewt::inUnit(level.windSpeed, corvane::SkewTOptions::KNOTS));
        json.key("below").boolean(level.belowGround);
        json.key("origins").open('[');
        for (const corvane::SoundingLevel::Origin& origin : level.origins) {
            json.open('[').whole(origin.part).whole(origin.groups.first).whole(origin.groups.count).close(']');
        }
        json.close(']');
        json.close('}');
    }
    json.close(']');
}

void writePlaces(Json& json, const Sounding& sounding, const corvane::skewt::Drawing& drawing) {
    const corvane::skewt::Geometry& geometry = drawing.geometry;
    json.open('{');
    json.key("width").number(drawing.picture.right);
    json.key("height").number(drawing.picture.bottom);
    json.key("left").number(geometry.frame().left);
    json.key("right").number(std::max(geometry.frame().right, drawing.barbColumn.right));
    json.key("levels").open('[');
    for (const corvane::SoundingLevel& level : sounding.levels) {
        const bool inside = level.pressure <= geometry.bottomPressure() && level.pressure >= geometry.topPressure() &&
                            !level.belowGround;
        json.number(inside ? geometry.y(level.pressure) : corvane::SoundingLevel::NOT_GIVEN);
    }
    json.close(']');
    json.close('}');
}

}  // namespace

// ---- what the page calls -----------------------------------------------------------------------------------------

extern "C" {

// The length of the text given last.
PAGE_EXPORT(corvane_length) std::size_t corvane_length() {
    return result.size();
}

// Forgets everything.
PAGE_EXPORT(corvane_begin) void corvane_begin() {
    state = std::make_unique<State>();
}

// Reads a file. Gives the number of its parts.
PAGE_EXPORT(corvane_add) std::size_t corvane_add() {
    const std::size_t before = state->parts.size();
    const std::size_t file = state->files++;
    PageInput bytes;
    std::istream input(&bytes);
    corvane::BulletinReader bulletins(input, std::to_string(file));
    Part part;
    while (bulletins.next(part)) {
        Reading reading = corvane::read(part);
        state->collected.add(part, reading);
        state->parts.push_back(keep(part, file, std::move(reading)));
    }
    return state->parts.size() - before;
}

// Joins the parts to soundings. Gives how many parts and entries there are.
PAGE_EXPORT(corvane_finish) const char* corvane_finish() {
    state->soundings = state->collected.soundings();
    state->collected = {};
    makeEntries();
    Json json;
    writeCounts(json);
    return give(json.take());
}

// Gives the entries of the list from `first` on, up to `count`.
PAGE_EXPORT(corvane_entries) const char* corvane_entries(std::size_t first, std::size_t count) {
    Json json;
    json.open('[');
    for (std::size_t i = first; i < state->entries.size() && i - first < count; ++i) {
        writeEntry(json, i);
    }
    json.close(']');
    return give(json.take());
}

// Gives the parts of an entry and the levels of its sounding.
PAGE_EXPORT(corvane_detail) const char* corvane_detail(std::size_t index) {
    const Entry& entry = state->entries.at(index);
    Json json;
    json.open('{');
    json.key("replaced").whole(entry.sounding ? state->soundings[*entry.sounding].replaced : 0);
    json.key("parts").open('[');
    for (const std::size_t part : entry.parts) {
        writePart(json, state->parts[part]);
    }
    json.close(']');
    json.key("levels");
    writeLevels(json, entry.sounding ? state->soundings[*entry.sounding] : Sounding());
    json.close('}');
    return give(json.take());
}

// Draws the sounding of an entry up to `top` hPa, or as high as usual with 0. Gives where its levels are in the
// picture; nothing when the entry has no sounding. The picture itself is given by corvane_svg().
PAGE_EXPORT(corvane_draw)
const char* corvane_draw(std::size_t index, int knots, double top, int dark, int width, int height) {
    const Entry& entry = state->entries.at(index);
    if (!entry.sounding) {
        return give({});
    }
    const Sounding& sounding = state->soundings[*entry.sounding];
    corvane::SkewTOptions options;
    options.units = knots != 0 ? corvane::SkewTOptions::KNOTS : corvane::SkewTOptions::METRES_PER_SECOND;
    options.top = top;
    options.width = width;
    options.height = height;
    options.dark = dark != 0;
    corvane::skewt::Drawing drawing = corvane::skewt::draw(sounding, options);
    Json json;
    writePlaces(json, sounding, drawing);
    state->svg = std::move(drawing.svg);
    return give(json.take());
}

// Gives the picture drawn last.
PAGE_EXPORT(corvane_svg) const char* corvane_svg() {
    return give(std::move(state->svg));
}

// Gives the table of an entry's sounding, or with `index` past the entries that of all soundings.
PAGE_EXPORT(corvane_table) const char* corvane_table(std::size_t index) {
    std::string table;
    corvane::table::appendSoundingHeader(table);
    if (index < state->entries.size()) {
        if (state->entries[index].sounding) {
            corvane::table::appendSoundingRows(table, state->soundings[*state->entries[index].sounding]);
        }
    } else {
        for (const Sounding& sounding : state->soundings) {
            corvane::table::appendSoundingRows(table, sounding);
        }
    }
    return give(std::move(table));
}

}  // extern "C"
