// The extension module corvane._corvane: reports, tables and soundings as plain Python objects and arrays. The package
// around it gives them their public classes and shapes them for pandas and xarray.
#include "FeedTable.h"
#include "IndicesTable.h"
#include "Table.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <corvane/Corvane.h>
#include <corvane/Feed.h>
#include <corvane/Indices.h>
#include <corvane/SkewT.h>
#include <corvane/Sounding.h>
#include <cstdint>
#include <exception>
#include <istream>
#include <map>
#include <memory>
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

// ---------------------------------------------------------------------------------------------------------------------
// Values
// ---------------------------------------------------------------------------------------------------------------------

// Reports and file names may hold any bytes. Those that are not UTF-8 become lone surrogates, as in Python's file
// names.
py::str textOf(const std::string& bytes) {
    return py::reinterpret_steal<py::str>(
        PyUnicode_DecodeUTF8(bytes.data(), static_cast<Py_ssize_t>(bytes.size()), "surrogateescape"));
}

std::string bytesOf(const py::str& text) {
    const auto bytes =
        py::reinterpret_steal<py::bytes>(PyUnicode_AsEncodedString(text.ptr(), "utf-8", "surrogateescape"));
    if (!bytes) {
        throw py::error_already_set();
    }
    return bytes;
}

// The number that a reader of the programs' tables gets, never -0.
double asWritten(double number) {
    return corvane::table::asWritten(number) + 0.0;  // -0 + 0 is 0
}

// None for a quantity that is not given.
py::object givenOrNone(double quantity) {
    return std::isnan(quantity) ? py::object(py::none()) : py::object(py::float_(asWritten(quantity)));
}

py::object givenOrNone(const std::optional<double>& quantity) {
    return quantity ? py::object(py::float_(asWritten(*quantity))) : py::object(py::none());
}

// ---------------------------------------------------------------------------------------------------------------------
// One report
// ---------------------------------------------------------------------------------------------------------------------

// The quantities of a level in the order of the table, then the two that have no column.
py::tuple levelOf(const Corvane::Level& level) {
    std::vector<py::object> values{textOf(level.name())};
    const auto append = [&](Corvane::LEVEL_FIELD field) {
        values.push_back(level.has(field) ? py::object(py::float_(asWritten(level.value(field))))
                                          : py::object(py::none()));
    };
    for (const corvane::table::Column& column : corvane::table::COLUMNS) {
        append(column.field);
    }
    append(Corvane::LF_VA);
    append(Corvane::LF_VB);
    return py::tuple(py::cast(values));
}

[[noreturn]] void throwFault(const py::object& message) {
    const py::object type = py::module_::import("corvane._faults").attr("CodingFault");
    PyErr_SetObject(type.ptr(), type(message).ptr());
    throw py::error_already_set();
}

// (form, heading, station, day, hour, launch, latitude, longitude, winds in knots, groups, levels)
py::tuple decode(const py::bytes& text) {
    std::string report = text;
    std::string fault;
    std::optional<Corvane> decoded;
    {
        const py::gil_scoped_release release;
        try {
            decoded.emplace(std::move(report));
        } catch (const std::string& message) {
            fault = message;
        } catch (const std::out_of_range&) {
            fault = "A group is too short to be read.";
        }
    }
    if (!decoded) {
        throwFault(textOf(fault));
    }

    const bool hasPart = decoded->obsHour() >= 0;
    const bool hasPosition = hasPart && decoded->wmoType() != "TEMP";
    py::object launch = py::none();
    if (decoded->obsTime() >= 0) {
        const std::string digits = std::to_string(decoded->obsTime());
        launch = textOf(std::string(4 - std::min<std::size_t>(4, digits.size()), '0') + digits);
    }
    py::list groups;
    for (const std::string& group : decoded->tokens()) {
        groups.append(textOf(group));
    }
    py::list levels;
    decoded->forEachLevel([&](const Corvane::Level& level) { levels.append(levelOf(level)); });
    const auto ifTrue = [](bool condition, auto value) {
        return condition ? py::object(py::cast(value)) : py::object(py::none());
    };
    return py::make_tuple(textOf(decoded->wmoType()), textOf(decoded->abrHeader()),
                          textOf(decoded->bsn().empty() ? decoded->callSign() : decoded->bsn()),
                          ifTrue(hasPart, decoded->dayOfMonth()), ifTrue(hasPart, decoded->obsHour()), launch,
                          ifTrue(hasPosition, decoded->latitude()), ifTrue(hasPosition, decoded->longitude()),
                          decoded->windsInKnots(), py::tuple(groups), levels);
}

// ---------------------------------------------------------------------------------------------------------------------
// Columns
// ---------------------------------------------------------------------------------------------------------------------

// The memory of the column becomes that of the array.
template <typename Number>
py::array_t<Number> arrayOf(std::vector<Number>&& column) {
    auto owned = std::make_unique<std::vector<Number>>(std::move(column));
    const py::capsule owner(owned.get(), [](void* vector) { delete static_cast<std::vector<Number>*>(vector); });
    const std::vector<Number>& values = *owned.release();
    return py::array_t<Number>(static_cast<py::ssize_t>(values.size()), values.data(), owner);
}

// An array of n objects, none of which is set yet.
py::array newObjects(std::size_t n) {
    return {py::dtype("O"), static_cast<py::ssize_t>(n)};
}

// A column of texts: each text once, and a number for each row.
class TextColumn {
public:
    void add(const std::string& text) {
        if (codes.empty() || texts[codes.back()] != text) {  // most repeat the last one
            const auto [entry, isNew] = known.try_emplace(text, texts.size());
            if (isNew) {
                texts.push_back(text);
            }
            codes.push_back(entry->second);
        } else {
            codes.push_back(codes.back());
        }
    }

    // The texts, NaN for an empty one.
    py::array objects() const {
        std::vector<py::object> distinct;
        for (const std::string& text : texts) {
            distinct.push_back(text.empty() ? py::module_::import("numpy").attr("nan") : py::object(textOf(text)));
        }
        py::array column = newObjects(codes.size());
        auto* at = static_cast<PyObject**>(column.mutable_data());
        for (const std::size_t code : codes) {
            *at++ = distinct[code].inc_ref().ptr();
        }
        return column;
    }

private:
    std::map<std::string, std::size_t> known;
    std::vector<std::string> texts;
    std::vector<std::size_t> codes;
};

using NumberColumn = std::vector<double>;

// What is not given is NaN.
void addNumber(NumberColumn& column, const std::optional<double>& value) {
    column.push_back(value ? asWritten(*value) : SoundingLevel::NOT_GIVEN);
}

// The tables of corvane-feed: of levels, and of parts. What the levels of a part share stands once, with the part.
class FeedTables {
public:
    void add(const Part& part, const Reading& reading) {
        source.add(corvane::table::sourceOf(part));
        heading.add(part.heading);
        form.add(corvane::formName(reading.form));
        letter.add(std::string(1, reading.letter));
        station.add(reading.station);
        addNumber(day, reading.day);
        addNumber(hour, reading.hour);
        addNumber(latitude, reading.latitude);
        addNumber(longitude, reading.longitude);
        addNumber(elevation, reading.elevation);
        launch.add(reading.launch);
        status.add(corvane::statusName(reading.status));
        levelCount.push_back(static_cast<std::int64_t>(reading.levels.size()));
        mends.add(corvane::table::mendNames(reading));
        message.add(reading.reason);
        addLevels(reading.levels);
    }

    // How many levels there are.
    std::size_t rows() const { return rowCount; }

    // (levels, parts): the columns by name, in any order. To be called once: the arrays take the memory of the columns.
    py::tuple take() {
        using namespace py::literals;
        py::dict levels("launch"_a = repeated(launch.objects()), "slat"_a = repeated(latitude),
                        "slon"_a = repeated(longitude), "selev"_a = repeated(elevation), "doubt"_a = doubt.objects(),
                        "type"_a = type.objects());
        for (const corvane::table::Column& column : corvane::table::COLUMNS) {
            levels[textOf(std::string(column.name))] = arrayOf(std::move(quantities[column.field]));
        }
        py::dict parts("status"_a = status.objects(), "levels"_a = arrayOf(std::vector(levelCount)),
                       "message"_a = message.objects());
        const auto share = [&](const char* name, const py::array& ofParts, const py::array& ofLevels) {
            parts[name] = ofParts;
            levels[name] = ofLevels;
        };
        const auto shareTexts = [&](const char* name, const TextColumn& column) {
            const py::array objects = column.objects();
            share(name, objects, repeated(objects));
        };
        shareTexts("source", source);
        shareTexts("heading", heading);
        shareTexts("form", form);
        shareTexts("part", letter);
        shareTexts("station", station);
        shareTexts("mends", mends);
        share("day", arrayOf(NumberColumn(day)), repeated(day));
        share("hour", arrayOf(NumberColumn(hour)), repeated(hour));
        return py::make_tuple(levels, parts);
    }

private:
    void addLevels(const std::vector<corvane::ReadLevel>& levels) {
        for (const corvane::table::Column& column : corvane::table::COLUMNS) {
            quantities[column.field].resize(rowCount + levels.size(), SoundingLevel::NOT_GIVEN);
        }
        for (const corvane::ReadLevel& level : levels) {
            doubt.add(corvane::table::joinNames(level.doubts));
            type.add(level.values.name());
            for (const auto& [field, value] : level.values.fields) {
                NumberColumn& column = quantities[field];
                if (!column.empty()) {
                    column[rowCount] = asWritten(value);
                }
            }
            ++rowCount;
        }
    }

    // What stands once for each part, for each of its levels. For the twelve columns of a day's bulletins, numpy.repeat
    // takes 1.6 ms, and all of take() 0.9 ms.
    py::array repeated(const py::array& objects) const {
        py::array column = newObjects(rows());
        const auto* from = static_cast<PyObject* const*>(objects.data());
        auto* to = static_cast<PyObject**>(column.mutable_data());
        for (const std::int64_t count : levelCount) {
            for (std::int64_t i = 0; i < count; ++i) {
                Py_INCREF(*from);
                *to++ = *from;
            }
            ++from;
        }
        return column;
    }

    py::array repeated(const NumberColumn& numbers) const {
        NumberColumn column;
        column.reserve(rows());
        for (std::size_t i = 0; i < numbers.size(); ++i) {
            column.insert(column.end(), static_cast<std::size_t>(levelCount[i]), numbers[i]);
        }
        return arrayOf(std::move(column));
    }

    TextColumn source, heading, form, letter, station, launch, status, mends, message;
    NumberColumn day, hour, latitude, longitude, elevation;
    std::vector<std::int64_t> levelCount;

    std::size_t rowCount = 0;
    TextColumn doubt, type;
    std::array<NumberColumn, Corvane::LF_PRES2 + 1> quantities;  // by field; those without a column stay empty
};

// ---------------------------------------------------------------------------------------------------------------------
// Bulletins
// ---------------------------------------------------------------------------------------------------------------------

// The bytes that a function read(size) of Python gives until it gives none. It runs with the global interpreter
// lock, which its reader has released.
class PythonInput : public std::streambuf {
public:
    explicit PythonInput(py::object readFunction) : read(std::move(readFunction)) {}

    // Throws what the function threw; a stream keeps that to itself.
    void rethrow() const {
        if (failure) {
            std::rethrow_exception(failure);
        }
    }

protected:
    int_type underflow() override {
        static constexpr int CHUNK = 1 << 16;
        if (failure) {
            return traits_type::eof();
        }
        const py::gil_scoped_acquire acquire;
        try {
            const py::object result = read(CHUNK);
            if (!PyBytes_Check(result.ptr())) {
                throw py::type_error("read() must return bytes, not " + std::string(Py_TYPE(result.ptr())->tp_name));
            }
            chunk = result;
        } catch (...) {
            failure = std::current_exception();
            return traits_type::eof();
        }
        char* const begin = PyBytes_AS_STRING(chunk.ptr());
        setg(begin, begin, begin + PyBytes_GET_SIZE(chunk.ptr()));
        return gptr() == egptr() ? traits_type::eof() : traits_type::to_int_type(*gptr());
    }

private:
    py::object read;
    py::object chunk;
    std::exception_ptr failure;
};

using Counts = std::map<std::string, std::size_t>;

// What the readers of bulletins share: reading, and counting what was read as corvane-feed does.
class Reader {
public:
    explicit Reader(bool mend) { options.mend = mend; }

    Counts counts() const { return counted; }

protected:
    ~Reader() = default;

    template <typename Handle>
    void readBulletins(const py::str& source, const py::object& read, Handle handle) {
        const std::string name = bytesOf(source);
        PythonInput bytes(read);
        {
            const py::gil_scoped_release release;
            std::istream input(&bytes);
            corvane::BulletinReader bulletins(input, name);
            Part part;
            while (bulletins.next(part)) {
                const Reading reading = corvane::read(part, options);
                count(reading);
                handle(part, reading);
            }
        }
        bytes.rethrow();
    }

private:
    void count(const Reading& reading) {
        ++counted["parts"];
        ++counted[corvane::statusName(reading.status)];
        if (reading.status == Reading::DECODED) {
            counted["mended"] += reading.mended() && !reading.lost() ? 1 : 0;
            counted["with losses"] += reading.lost() ? 1 : 0;
            counted["doubtful"] += reading.doubtful() ? 1 : 0;
        }
    }

    corvane::ReadOptions options;
    Counts counted{{"parts", 0},    {"decoded", 0}, {"mended", 0}, {"with losses", 0},
                   {"doubtful", 0}, {"NIL", 0},     {"empty", 0},  {"refused", 0}};
};

class TableReader : public Reader {
public:
    using Reader::Reader;

    void add(const py::str& source, const py::object& read) {
        readBulletins(source, read, [this](const Part& part, const Reading& reading) { tables.add(part, reading); });
    }

    std::size_t rows() const { return tables.rows(); }
    py::tuple take() { return tables.take(); }

private:
    FeedTables tables;
};

class SoundingReader : public Reader {
public:
    using Reader::Reader;

    void add(const py::str& source, const py::object& read) {
        readBulletins(source, read, [this](const Part& part, const Reading& reading) { collected.add(part, reading); });
    }

    std::vector<Sounding> soundings() const {
        const py::gil_scoped_release release;
        return collected.soundings();
    }

private:
    corvane::Soundings collected;
};

// ---------------------------------------------------------------------------------------------------------------------
// Soundings
// ---------------------------------------------------------------------------------------------------------------------

// The code form gives heights in whole metres at best.
double heightOf(const SoundingLevel& level) {
    return level.heightComputed ? std::round(level.height) : level.height;
}

// Exactly 0 at 180 and 360 degrees, which no double is in radians.
double sine(double degrees) {
    return std::fmod(degrees, 180.0) == 0.0 ? 0.0 : std::sin(degrees * (3.14159265358979323846 / 180.0));
}

double eastward(const SoundingLevel& level) {
    return asWritten(-level.windSpeed * sine(level.windDirection));
}

double northward(const SoundingLevel& level) {
    return asWritten(-level.windSpeed * sine(level.windDirection + 90.0));
}

py::dict columnsOf(const Sounding& sounding) {
    const auto numbers = [&](auto quantity) {
        NumberColumn column;
        column.reserve(sounding.levels.size());
        for (const SoundingLevel& level : sounding.levels) {
            column.push_back(quantity(level));
        }
        return arrayOf(std::move(column));
    };
    const auto flags = [&](auto flag) {
        py::array_t<bool> column(static_cast<py::ssize_t>(sounding.levels.size()));
        bool* at = column.mutable_data();
        for (const SoundingLevel& level : sounding.levels) {
            *at++ = flag(level);
        }
        return column;
    };
    TextColumn doubt;
    TextColumn kinds;
    for (const SoundingLevel& level : sounding.levels) {
        doubt.add(corvane::table::joinNames(level.doubts));
        kinds.add(corvane::kindNames(level.kinds));
    }
    using namespace py::literals;
    return py::dict("pressure"_a = numbers([](const SoundingLevel& level) { return asWritten(level.pressure); }),
                    "height"_a = numbers([](const SoundingLevel& level) { return asWritten(heightOf(level)); }),
                    "temperature"_a = numbers([](const SoundingLevel& level) { return asWritten(level.temperature); }),
                    "dewpoint"_a = numbers([](const SoundingLevel& level) { return asWritten(level.dewpoint); }),
                    "direction"_a = numbers([](const SoundingLevel& level) { return asWritten(level.windDirection); }),
                    "speed"_a = numbers([](const SoundingLevel& level) { return asWritten(level.windSpeed); }),
                    "u_wind"_a = numbers(eastward), "v_wind"_a = numbers(northward), "doubt"_a = doubt.objects(),
                    "kinds"_a = kinds.objects(),
                    "height_computed"_a = flags([](const SoundingLevel& level) { return level.heightComputed; }),
                    "below_ground"_a = flags([](const SoundingLevel& level) { return level.belowGround; }));
}

// (pressure, height, temperature, dewpoint, direction, speed, kinds, doubt, height computed, below the ground)
py::list levelsOf(const Sounding& sounding) {
    py::list levels;
    for (const SoundingLevel& level : sounding.levels) {
        levels.append(py::make_tuple(givenOrNone(level.pressure), givenOrNone(heightOf(level)),
                                     givenOrNone(level.temperature), givenOrNone(level.dewpoint),
                                     givenOrNone(level.windDirection), givenOrNone(level.windSpeed),
                                     corvane::kindNames(level.kinds), corvane::table::joinNames(level.doubts),
                                     level.heightComputed, level.belowGround));
    }
    return levels;
}

// (source, heading, letter, mends, doubts) with mends (name, text, lost) and doubts (name, text)
py::list partsOf(const Sounding& sounding) {
    py::list parts;
    for (const corvane::SoundingPart& part : sounding.parts) {
        py::list mends;
        for (const corvane::Mend& mend : part.mends) {
            mends.append(py::make_tuple(textOf(mend.name), textOf(mend.text), mend.lost));
        }
        py::list doubts;
        for (const corvane::Doubt& doubt : part.doubts) {
            doubts.append(py::make_tuple(textOf(doubt.name), textOf(doubt.text)));
        }
        parts.append(py::make_tuple(textOf(part.source + ':' + std::to_string(part.line)), textOf(part.heading),
                                    std::string(1, part.letter), mends, doubts));
    }
    return parts;
}

py::dict indicesOf(const Sounding& sounding) {
    const corvane::Indices indices = [&] {
        const py::gil_scoped_release release;
        return corvane::indicesOf(sounding);
    }();
    py::dict values;
    for (const corvane::table::IndexColumn& column : corvane::table::INDEX_COLUMNS) {
        values[textOf(std::string(column.name))] = asWritten(column.value(indices));
    }
    return values;
}

std::string skewt(const Sounding& sounding, bool knots, double top, int width, int height, bool dark) {
    corvane::SkewTOptions options;
    options.units = knots ? corvane::SkewTOptions::KNOTS : corvane::SkewTOptions::METRES_PER_SECOND;
    options.top = top;
    options.width = width;
    options.height = height;
    options.dark = dark;
    const py::gil_scoped_release release;
    return corvane::skewT(sounding, options);
}

// ---- pickling: a sounding as nested tuples, and back ----------------------------------------------------------------

py::tuple stateOf(const corvane::GroupRange& range) {
    return py::make_tuple(range.first, range.count);
}

corvane::GroupRange rangeFrom(const py::tuple& state) {
    return {state[0].cast<std::size_t>(), state[1].cast<std::size_t>()};
}

py::tuple stateOf(const SoundingLevel& level) {
    py::list origins;
    for (const SoundingLevel::Origin& origin : level.origins) {
        origins.append(py::make_tuple(origin.part, stateOf(origin.groups)));
    }
    return py::make_tuple(level.pressure, level.height, level.heightComputed, level.temperature, level.dewpoint,
                          level.windSpeed, level.windDirection, level.kinds, level.belowGround, level.doubts, origins,
                          level.maximumWind);
}

SoundingLevel levelFrom(const py::tuple& state) {
    SoundingLevel level;
    level.pressure = state[0].cast<double>();
    level.height = state[1].cast<double>();
    level.heightComputed = state[2].cast<bool>();
    level.temperature = state[3].cast<double>();
    level.dewpoint = state[4].cast<double>();
    level.windSpeed = state[5].cast<double>();
    level.windDirection = state[6].cast<double>();
    level.kinds = state[7].cast<unsigned>();
    level.belowGround = state[8].cast<bool>();
    level.doubts = state[9].cast<std::vector<std::string>>();
    for (const py::handle origin : state[10]) {
        const auto values = origin.cast<py::tuple>();
        level.origins.push_back({values[0].cast<std::size_t>(), rangeFrom(values[1])});
    }
    level.maximumWind = state[11].cast<double>();
    return level;
}

py::tuple stateOf(const corvane::SoundingPart& part) {
    py::list mends;
    for (const corvane::Mend& mend : part.mends) {
        mends.append(py::make_tuple(textOf(mend.name), textOf(mend.text), mend.lost, stateOf(mend.groups)));
    }
    py::list doubts;
    for (const corvane::Doubt& doubt : part.doubts) {
        doubts.append(py::make_tuple(textOf(doubt.name), textOf(doubt.text)));
    }
    return py::make_tuple(textOf(part.source), part.line, part.offset, textOf(part.heading), part.letter, mends,
                          doubts);
}

corvane::SoundingPart partFrom(const py::tuple& state) {
    corvane::SoundingPart part;
    part.source = bytesOf(state[0]);
    part.line = state[1].cast<std::uint64_t>();
    part.offset = state[2].cast<std::uint64_t>();
    part.heading = bytesOf(state[3]);
    part.letter = state[4].cast<char>();
    for (const py::handle mend : state[5]) {
        const auto values = mend.cast<py::tuple>();
        part.mends.push_back({bytesOf(values[0]), bytesOf(values[1]), values[2].cast<bool>(), rangeFrom(values[3])});
    }
    for (const py::handle doubt : state[6]) {
        const auto values = doubt.cast<py::tuple>();
        part.doubts.push_back({bytesOf(values[0]), bytesOf(values[1])});
    }
    return part;
}

py::tuple stateOf(const Sounding& sounding) {
    py::list parts;
    for (const corvane::SoundingPart& part : sounding.parts) {
        parts.append(stateOf(part));
    }
    py::list levels;
    for (const SoundingLevel& level : sounding.levels) {
        levels.append(stateOf(level));
    }
    return py::make_tuple(static_cast<int>(sounding.form), textOf(sounding.station), sounding.day, sounding.hour,
                          sounding.latitude, sounding.longitude, sounding.elevation, textOf(sounding.launch),
                          sounding.letters, parts, sounding.replaced, levels);
}

Sounding soundingFrom(const py::tuple& state) {
    Sounding sounding;
    sounding.form = static_cast<Corvane::WMO_MESSAGE_TYPE>(state[0].cast<int>());
    sounding.station = bytesOf(state[1]);
    sounding.day = state[2].cast<int>();
    sounding.hour = state[3].cast<int>();
    sounding.latitude = state[4].cast<std::optional<double>>();
    sounding.longitude = state[5].cast<std::optional<double>>();
    sounding.elevation = state[6].cast<std::optional<double>>();
    sounding.launch = bytesOf(state[7]);
    sounding.letters = state[8].cast<std::string>();
    for (const py::handle part : state[9]) {
        sounding.parts.push_back(partFrom(part.cast<py::tuple>()));
    }
    sounding.replaced = state[10].cast<std::size_t>();
    for (const py::handle level : state[11]) {
        sounding.levels.push_back(levelFrom(level.cast<py::tuple>()));
    }
    return sounding;
}

}  // namespace

PYBIND11_MODULE(_corvane, module) {
    using namespace py::literals;
    module.attr("__version__") = CORVANE_PACKAGE_VERSION;

    py::list reportColumns;
    reportColumns.append("type");
    for (const corvane::table::Column& column : corvane::table::COLUMNS) {
        reportColumns.append(textOf(std::string(column.name)));
    }
    py::list feedColumns;
    for (const std::string_view column : corvane::table::PART_COLUMNS) {
        feedColumns.append(textOf(std::string(column)));
    }
    py::list partsColumns;
    for (const std::string_view column : corvane::table::PARTS_COLUMNS) {
        partsColumns.append(textOf(std::string(column)));
    }
    module.attr("REPORT_COLUMNS") = py::tuple(reportColumns);
    module.attr("FEED_COLUMNS") = py::tuple(feedColumns) + py::tuple(reportColumns);
    module.attr("PARTS_COLUMNS") = py::tuple(partsColumns);

    module.def("decode", &decode, "text"_a);

    py::class_<TableReader>(module, "TableReader")
        .def(py::init<bool>(), "mend"_a)
        .def("add", &TableReader::add, "source"_a, "read"_a)
        .def_property_readonly("counts", &TableReader::counts)
        .def_property_readonly("rows", &TableReader::rows)
        .def("take", &TableReader::take);

    py::class_<SoundingReader>(module, "SoundingReader")
        .def(py::init<bool>(), "mend"_a)
        .def("add", &SoundingReader::add, "source"_a, "read"_a)
        .def_property_readonly("counts", &SoundingReader::counts)
        .def("soundings", &SoundingReader::soundings);

    py::class_<Sounding>(module, "Sounding")
        .def_property_readonly("form", [](const Sounding& sounding) { return corvane::formName(sounding.form); })
        .def_property_readonly("station", [](const Sounding& sounding) { return textOf(sounding.station); })
        .def_readonly("day", &Sounding::day)
        .def_readonly("hour", &Sounding::hour)
        .def_property_readonly("latitude", [](const Sounding& sounding) { return givenOrNone(sounding.latitude); })
        .def_property_readonly("longitude", [](const Sounding& sounding) { return givenOrNone(sounding.longitude); })
        .def_property_readonly("elevation", [](const Sounding& sounding) { return givenOrNone(sounding.elevation); })
        .def_property_readonly("launch", [](const Sounding& sounding) { return textOf(sounding.launch); })
        .def_readonly("letters", &Sounding::letters)
        .def_readonly("replaced", &Sounding::replaced)
        .def_property_readonly("count", [](const Sounding& sounding) { return sounding.levels.size(); })
        .def("levels", &levelsOf)
        .def("parts", &partsOf)
        .def("columns", &columnsOf)
        .def("indices", &indicesOf)
        .def("skewt", &skewt, "knots"_a, "top"_a, "width"_a, "height"_a, "dark"_a)
        .def(py::pickle([](const Sounding& sounding) { return stateOf(sounding); }, &soundingFrom));
}
