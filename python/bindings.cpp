// The extension module corvane._corvane: the library as Python objects and columns. What needs pandas or xarray stands in
// the package around it.
#include "FeedTable.h"
#include "IndicesTable.h"
#include "SoundingTable.h"
#include "Table.h"

#include <cmath>
#include <corvane/Corvane.h>
#include <corvane/Feed.h>
#include <corvane/Indices.h>
#include <corvane/SkewT.h>
#include <corvane/Sounding.h>
#include <cstdint>
#include <istream>
#include <limits>
#include <map>
#include <optional>
#include <pybind11/numpy.h>
#include <pybind11/pybind11.h>
#include <pybind11/stl.h>
#include <stdexcept>
#include <streambuf>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace py = pybind11;
using corvane::Part;
using corvane::Reading;
using corvane::Sounding;
using corvane::SoundingLevel;

namespace {

constexpr double MISSING = std::numeric_limits<double>::quiet_NaN();

// ---------------------------------------------------------------------------------------------------------------------
// One report
// ---------------------------------------------------------------------------------------------------------------------

struct Level {
    std::string type;
    std::map<std::string, double> values;  // by column
};

struct Report {
    std::string form;
    std::string heading;
    std::string station;  // number or call sign
    int day = 0;
    int hour = 0;
    std::optional<int> launch;
    std::optional<double> latitude;
    std::optional<double> longitude;
    bool windsInKnots = false;
    std::vector<std::string> groups;
    std::vector<Level> levels;
};

Level levelOf(const Corvane::Level& decoded) {
    Level level;
    level.type = decoded.name();
    for (const corvane::table::Column& column : corvane::table::COLUMNS) {
        const auto field = decoded.fields.find(column.field);
        if (field != decoded.fields.end()) {
            level.values.emplace(column.name, field->second);
        }
    }
    return level;
}

// @throws CodingFault of the package, for a coding fault and for a group that is too short.
Report decode(const std::string& text) {
    std::string fault;
    try {
        const Corvane decoder = [&] {
            const py::gil_scoped_release release;
            return Corvane(text);
        }();
        Report report;
        report.form = decoder.wmoType();
        report.heading = decoder.abrHeader();
        report.station = decoder.bsn().empty() ? decoder.callSign() : decoder.bsn();
        report.day = decoder.dayOfMonth();
        report.hour = decoder.obsHour();
        if (decoder.obsTime() >= 0) {
            report.launch = decoder.obsTime();
        }
        if (report.form != "TEMP" && report.form != "UNKNOWN") {
            report.latitude = decoder.latitude();
            report.longitude = decoder.longitude();
        }
        report.windsInKnots = decoder.windsInKnots();
        report.groups = decoder.tokens();
        for (const Corvane::Level& level : decoder.allLevels()) {
            report.levels.push_back(levelOf(level));
        }
        return report;
    } catch (const std::string& message) {
        fault = message;
    } catch (const std::out_of_range& tooShort) {
        fault = tooShort.what();
    }
    // The text of a report may hold any bytes, and so may a message about it.
    const py::object type = py::module_::import("corvane._faults").attr("CodingFault");
    const py::object message = py::reinterpret_steal<py::object>(
        PyUnicode_DecodeUTF8(fault.data(), static_cast<Py_ssize_t>(fault.size()), "surrogateescape"));
    PyErr_SetObject(type.ptr(), type(message).ptr());
    throw py::error_already_set();
}

// ---------------------------------------------------------------------------------------------------------------------
// Columns
// ---------------------------------------------------------------------------------------------------------------------

// A column of texts, each distinct one kept once.
class TextColumn {
public:
    void add(const std::string& text) {
        if (!codes.empty() && texts[static_cast<std::size_t>(codes.back())] == text) {
            codes.push_back(codes.back());
            return;
        }
        const auto [entry, isNew] = known.try_emplace(text, static_cast<std::int32_t>(texts.size()));
        if (isNew) {
            texts.push_back(text);
        }
        codes.push_back(entry->second);
    }

    // (codes, texts)
    py::tuple take() const {
        py::list list;
        for (const std::string& text : texts) {
            list.append(py::reinterpret_steal<py::object>(PyUnicode_DecodeUTF8(
                text.data(), static_cast<Py_ssize_t>(text.size()), "surrogateescape")));
        }
        return py::make_tuple(py::array_t<std::int32_t>(static_cast<py::ssize_t>(codes.size()), codes.data()), list);
    }

private:
    std::map<std::string, std::int32_t> known;
    std::vector<std::string> texts;
    std::vector<std::int32_t> codes;
};

using NumberColumn = std::vector<double>;

py::array_t<double> arrayOf(const NumberColumn& column) {
    return py::array_t<double>(static_cast<py::ssize_t>(column.size()), column.data());
}

// The columns of corvane-feed: one for each name, texts as (codes, texts).
struct FeedColumns {
    std::array<TextColumn, 9> texts;  // source, heading, form, part, station, launch, mends, doubt, type
    std::array<NumberColumn, 5> part;  // day, hour, slat, slon, selev
    std::array<NumberColumn, corvane::table::COLUMNS.size()> level;

    void add(const Part& read, const Reading& reading) {
        const std::array<std::string, 7> same{corvane::table::sourceOf(read), read.heading,
                                              corvane::formName(reading.form), std::string(1, reading.letter),
                                              reading.station, reading.launch, corvane::table::mendNames(reading)};
        for (const corvane::ReadLevel& found : reading.levels) {
            for (std::size_t i = 0; i < same.size(); ++i) {
                texts[i].add(same[i]);
            }
            texts[7].add(corvane::table::joinNames(found.doubts));
            texts[8].add(found.values.name());
            part[0].push_back(reading.day.value_or(0));
            part[1].push_back(reading.hour.value_or(0));
            part[2].push_back(reading.latitude.value_or(MISSING));
            part[3].push_back(reading.longitude.value_or(MISSING));
            part[4].push_back(reading.elevation.value_or(MISSING));
            auto field = found.values.fields.begin();
            for (std::size_t i = 0; i < level.size(); ++i) {
                while (field != found.values.fields.end() && field->first < corvane::table::COLUMNS[i].field) {
                    ++field;
                }
                const bool given =
                    field != found.values.fields.end() && field->first == corvane::table::COLUMNS[i].field;
                level[i].push_back(given ? field->second : MISSING);
            }
        }
    }

    py::dict take() const {
        static constexpr std::array<const char*, 9> TEXT_NAMES{"source", "heading", "form",  "part", "station",
                                                               "launch", "mends",   "doubt", "type"};
        static constexpr std::array<const char*, 5> PART_NAMES{"day", "hour", "slat", "slon", "selev"};
        py::dict columns;
        for (std::size_t i = 0; i < texts.size(); ++i) {
            columns[TEXT_NAMES[i]] = texts[i].take();
        }
        for (std::size_t i = 0; i < part.size(); ++i) {
            columns[PART_NAMES[i]] = arrayOf(part[i]);
        }
        for (std::size_t i = 0; i < level.size(); ++i) {
            columns[py::str(std::string(corvane::table::COLUMNS[i].name))] = arrayOf(level[i]);
        }
        return columns;
    }
};

struct PartsColumns {
    std::array<TextColumn, 8> texts;  // source, heading, form, part, station, status, mends, message
    std::array<NumberColumn, 3> numbers;  // day, hour, levels

    void add(const Part& part, const Reading& reading) {
        const std::array<std::string, 8> row{corvane::table::sourceOf(part), part.heading,
                                             corvane::formName(reading.form), std::string(1, reading.letter),
                                             reading.station, corvane::statusName(reading.status),
                                             corvane::table::mendNames(reading), reading.reason};
        for (std::size_t i = 0; i < row.size(); ++i) {
            texts[i].add(row[i]);
        }
        numbers[0].push_back(reading.day ? *reading.day : MISSING);
        numbers[1].push_back(reading.hour ? *reading.hour : MISSING);
        numbers[2].push_back(static_cast<double>(reading.levels.size()));
    }

    py::dict take() const {
        static constexpr std::array<const char*, 8> TEXT_NAMES{"source",  "heading", "form",  "part",
                                                               "station", "status",  "mends", "message"};
        static constexpr std::array<const char*, 3> NUMBER_NAMES{"day", "hour", "levels"};
        py::dict columns;
        for (std::size_t i = 0; i < texts.size(); ++i) {
            columns[TEXT_NAMES[i]] = texts[i].take();
        }
        for (std::size_t i = 0; i < numbers.size(); ++i) {
            columns[NUMBER_NAMES[i]] = arrayOf(numbers[i]);
        }
        return columns;
    }
};

// ---------------------------------------------------------------------------------------------------------------------
// Bulletins
// ---------------------------------------------------------------------------------------------------------------------

// Reads bytes where they lie.
class BytesBuffer : public std::streambuf {
public:
    explicit BytesBuffer(std::string_view bytes) {
        char* const begin = const_cast<char*>(bytes.data());  // only read
        setg(begin, begin, begin + bytes.size());
    }
};

template <typename Handle>
void readBulletins(const std::string& source, std::string_view bytes, bool mend, Handle handle) {
    BytesBuffer buffer(bytes);
    std::istream input(&buffer);
    corvane::BulletinReader bulletins(input, source);
    corvane::ReadOptions options;
    options.mend = mend;
    Part part;
    while (bulletins.next(part)) {
        handle(part, corvane::read(part, options));
    }
}

// Collects the tables of several inputs.
class FeedReader {
public:
    explicit FeedReader(bool mayMend) : mend(mayMend) {}

    void add(const std::string& source, const py::bytes& content) {
        const std::string_view bytes = content;
        const py::gil_scoped_release release;
        readBulletins(source, bytes, mend, [this](const Part& part, const Reading& reading) {
            levels.add(part, reading);
            parts.add(part, reading);
        });
    }

    py::tuple take() const { return py::make_tuple(levels.take(), parts.take()); }

private:
    bool mend;
    FeedColumns levels;
    PartsColumns parts;
};

class SoundingReader {
public:
    explicit SoundingReader(bool mayMend) : mend(mayMend) {}

    void add(const std::string& source, const py::bytes& content) {
        const std::string_view bytes = content;
        const py::gil_scoped_release release;
        readBulletins(source, bytes, mend,
                      [this](const Part& part, const Reading& reading) { collected.add(part, reading); });
    }

    std::vector<Sounding> take() const {
        const py::gil_scoped_release release;
        return collected.soundings();
    }

private:
    bool mend;
    corvane::Soundings collected;
};

// ---------------------------------------------------------------------------------------------------------------------
// Soundings
// ---------------------------------------------------------------------------------------------------------------------

template <typename Value>
py::array_t<double> columnOf(const Sounding& sounding, Value value) {
    NumberColumn column;
    for (const SoundingLevel& level : sounding.levels) {
        column.push_back(level.*value);
    }
    return arrayOf(column);
}

py::dict columnsOf(const Sounding& sounding) {
    py::dict columns;
    columns["pressure"] = columnOf(sounding, &SoundingLevel::pressure);
    columns["height"] = columnOf(sounding, &SoundingLevel::height);
    columns["temperature"] = columnOf(sounding, &SoundingLevel::temperature);
    columns["dewpoint"] = columnOf(sounding, &SoundingLevel::dewpoint);
    columns["speed"] = columnOf(sounding, &SoundingLevel::windSpeed);
    columns["direction"] = columnOf(sounding, &SoundingLevel::windDirection);
    columns["height_computed"] = columnOf(sounding, &SoundingLevel::heightComputed);
    columns["below_ground"] = columnOf(sounding, &SoundingLevel::belowGround);
    py::list kinds;
    py::list doubts;
    for (const SoundingLevel& level : sounding.levels) {
        kinds.append(corvane::kindNames(level.kinds));
        doubts.append(corvane::table::joinNames(level.doubts));
    }
    columns["kinds"] = kinds;
    columns["doubt"] = doubts;
    return columns;
}

py::dict indicesOf(const Sounding& sounding) {
    const corvane::Indices indices = corvane::indicesOf(sounding);
    py::dict values;
    for (const corvane::table::IndexColumn& column : corvane::table::INDEX_COLUMNS) {
        values[py::str(std::string(column.name))] = column.value(indices);
    }
    return values;
}

std::string skewt(const Sounding& sounding, const std::string& units, double top, int width, int height, bool dark) {
    corvane::SkewTOptions options;
    if (units != "kt" && units != "mps") {
        throw py::value_error("units must be 'kt' or 'mps'");
    }
    options.units = units == "kt" ? corvane::SkewTOptions::KNOTS : corvane::SkewTOptions::METRES_PER_SECOND;
    options.top = top;
    options.width = width;
    options.height = height;
    options.dark = dark;
    const py::gil_scoped_release release;
    return corvane::skewT(sounding, options);
}
