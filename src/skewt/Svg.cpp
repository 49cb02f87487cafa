#include "Svg.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <utility>

namespace corvane::skewt {

namespace {

constexpr std::string_view REPLACEMENT = "\xEF\xBF\xBD";  // U+FFFD
constexpr std::string_view ELLIPSIS = "\xE2\x80\xA6";     // U+2026
constexpr std::string_view MINUS = "\xE2\x88\x92";        // U+2212

// A height above and a depth below the baseline that no letter of a usual font exceeds, in parts of its size.
constexpr double ASCENT = 0.78;
constexpr double DESCENT = 0.24;

struct Character {
    std::uint32_t code = 0;
    std::size_t length = 1;  // bytes
    bool valid = false;      // whether XML 1.0 allows it and UTF-8 spells it so
};

// The character at the start of a text that is not empty.
Character characterAt(std::string_view text) {
    const auto byte = [&](std::size_t i) { return static_cast<std::uint32_t>(static_cast<unsigned char>(text[i])); };
    const std::uint32_t first = byte(0);
    if (first < 0x80) {
        return {first, 1, first >= 0x20 || first == '\t' || first == '\n' || first == '\r'};
    }
    const std::size_t length = first >= 0xF0 && first <= 0xF4 ? 4 : first >= 0xE0 ? 3 : 2;
    if (first < 0xC2 || first > 0xF4 || text.size() < length) {
        return {first, 1, false};
    }
    std::uint32_t code = first & (0x7FU >> length);
    for (std::size_t i = 1; i < length; ++i) {
        if ((byte(i) & 0xC0U) != 0x80U) {
            return {first, 1, false};
        }
        code = code << 6U | (byte(i) & 0x3FU);
    }
    const std::uint32_t least = length == 4 ? 0x10000 : length == 3 ? 0x800 : 0x80;
    const bool valid =
        code >= least && code <= 0x10FFFF && (code < 0xD800 || code > 0xDFFF) && code != 0xFFFE && code != 0xFFFF;
    return {code, valid ? length : 1, valid};
}

// Widths in a wide face (of the usual ones DejaVu Sans is the widest), rounded up, in parts of the size.
double characterWidth(std::uint32_t code) {
    if (code >= 0x80) {
        return code == 0xB0 || code == 0xB7 || code == 0x2013 ? 0.52 : 1.0;  // degree sign, middle dot, en dash
    }
    const char character = static_cast<char>(code);
    if (std::string_view(" .,:;'|!ijlIft()[]/-").find(character) != std::string_view::npos) {
        return 0.42;
    }
    if (std::string_view("mMwW@%").find(character) != std::string_view::npos) {
        return 1.0;
    }
    if ((character >= '0' && character <= '9') || (character >= 'a' && character <= 'z')) {
        return 0.65;
    }
    return character >= 'A' && character <= 'Z' ? 0.79 : 0.84;
}

constexpr double BOLD = 1.12;

// Whether a stretch of a line touches a box.
bool touches(const Box& box, Point from, Point to) {
    return clip(box, from, to);
}

void appendAttributes(std::string& out, std::string_view attributes) {
    if (!attributes.empty()) {
        out += ' ';
        out += attributes;
    }
}

void appendAttribute(std::string& out, std::string_view name, double value) {
    out += ' ';
    out += name;
    out += "=\"";
    out += pixels(value);
    out += '"';
}

}  // namespace

// ---- numbers and texts -------------------------------------------------------------------------------------------

std::string fixed(double number, int decimals) {
    double scale = 1.0;
    for (int i = 0; i < decimals; ++i) {
        scale *= 10.0;
    }
    constexpr double LARGEST = 1e15;
    const double scaled = std::clamp(std::isnan(number) ? 0.0 : number * scale, -LARGEST, LARGEST);
    const long long rounded = std::llround(scaled);
    std::string digits = std::to_string(rounded < 0 ? -rounded : rounded);
    if (decimals > 0) {
        const std::size_t places = static_cast<std::size_t>(decimals);
        if (digits.size() <= places) {
            digits.insert(0, places + 1 - digits.size(), '0');
        }
        digits.insert(digits.size() - places, 1, '.');
    }
    return rounded < 0 ? '-' + digits : digits;
}

std::string shown(double number, int decimals) {
    std::string text = fixed(number, decimals);
    if (text.front() == '-') {
        text.replace(0, 1, MINUS);
    }
    return text;
}

std::string pixels(double number) {
    std::string text = fixed(number, 1);
    if (text.back() == '0') {
        text.resize(text.size() - 2);
    }
    return text;
}

std::string escaped(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    while (!text.empty()) {
        const Character character = characterAt(text);
        switch (character.code) {
        case '&': out += "&amp;"; break;
        case '<': out += "&lt;"; break;
        case '>': out += "&gt;"; break;
        case '"': out += "&quot;"; break;
        case '\'': out += "&#39;"; break;
        default: out += character.valid ? text.substr(0, character.length) : REPLACEMENT; break;
        }
        text.remove_prefix(character.length);
    }
    return out;
}

double textWidth(std::string_view text, bool bold) {
    double width = 0.0;
    while (!text.empty()) {
        const Character character = characterAt(text);
        width += characterWidth(character.code);
        text.remove_prefix(character.length);
    }
    return bold ? width * BOLD : width;
}

std::string fitted(std::string_view text, double width, bool bold) {
    if (textWidth(text, bold) <= width) {
        return std::string(text);
    }
    const double room = width - textWidth(ELLIPSIS, bold);
    double used = 0.0;
    std::size_t end = 0;
    while (end < text.size()) {
        const Character character = characterAt(text.substr(end));
        used += characterWidth(character.code) * (bold ? BOLD : 1.0);
        if (used > room) {
            break;
        }
        end += character.length;
    }
    return std::string(text.substr(0, end)) + std::string(ELLIPSIS);
}

std::string attribute(std::string_view name, std::string_view value) {
    return std::string(name) + "=\"" + std::string(value) + '"';
}

std::string attribute(std::string_view name, double value) {
    return attribute(name, fixed(value, 2));
}

std::string stroke(std::string_view colour, double width) {
    return attribute("stroke", colour) + ' ' + attribute("stroke-width", width);
}

std::string dashes(double width, double dash, double space) {
    return "stroke-dasharray=\"" + fixed(width * dash, 1) + ' ' + fixed(width * space, 1) + '"';
}

// ---- labels ------------------------------------------------------------------------------------------------------

Box Labels::room(Point at, Anchor anchor, std::string_view text, const Face& face) {
    const double width = textWidth(text, face.bold) * face.size;
    const double left = anchor == Anchor::START ? at.x : anchor == Anchor::MIDDLE ? at.x - width / 2 : at.x - width;
    return {left, at.y - ASCENT * face.size, left + width, at.y + DESCENT * face.size};
}

bool Labels::isFree(const Box& box, Clear clear) const {
    const auto overlaps = [&](const Box& other) { return box.overlaps(other); };
    if (std::any_of(placed.begin(), placed.end(), [&](const Label& label) { return overlaps(label.box); }) ||
        std::any_of(boxes.begin(), boxes.end(), overlaps)) {
        return false;
    }
    if (clear == Clear::OF_BOXES) {
        return true;
    }
    for (const Line& line : lines) {
        for (std::size_t i = 1; i < line.size(); ++i) {
            if (touches(box, line[i - 1], line[i])) {
                return false;
            }
        }
    }
    return true;
}

void Labels::keepOff(const Line& line) {
    lines.push_back(line);
}

// ---- elements ----------------------------------------------------------------------------------------------------

void Layer::open(std::string_view attributes) {
    out += "<g";
    appendAttributes(out, attributes);
    out += ">\n";
}

void Layer::close() {
    out += "</g>\n";
}

void Layer::segment(Point from, Point to, std::string_view attributes) {
    path({from, to}, attributes);
}

void Layer::path(const Line& line, std::string_view attributes) {
    paths({line}, attributes);
}

// Each point after the first relative to the one before it, as rounded, so that no error adds up.
void Layer::data(const Line& line) {
    double x = 0.0;
    double y = 0.0;
    bool first = true;
    for (const Point& point : line) {
        const double toX = std::round(point.x * 10.0) / 10.0;
        const double toY = std::round(point.y * 10.0) / 10.0;
        if (first) {
            out += 'M';
        } else if (toX == x && toY == y) {
            continue;
        } else {
            out += 'l';
        }
        out += pixels(first ? toX : toX - x);
        const std::string down = pixels(first ? toY : toY - y);
        if (down.front() != '-') {
            out += ' ';
        }
        out += down;
        x = toX;
        y = toY;
        first = false;
    }
}

void Layer::paths(const std::vector<Line>& lines, std::string_view attributes) {
    if (lines.empty()) {
        return;
    }
    out += "<path";
    appendAttributes(out, attributes);
    out += " d=\"";
    for (const Line& line : lines) {
        data(line);
    }
    out += "\"/>\n";
}

void Layer::polygon(const Line& line, std::string_view attributes) {
    out += "<path";
    appendAttributes(out, attributes);
    out += " d=\"";
    data(line);
    out += "z\"/>\n";
}

void Layer::circle(Point centre, double radius, std::string_view attributes, std::string_view title) {
    out += "<circle";
    appendAttributes(out, attributes);
    appendAttribute(out, "cx", centre.x);
    appendAttribute(out, "cy", centre.y);
    appendAttribute(out, "r", radius);
    if (title.empty()) {
        out += "/>\n";
        return;
    }
    out += "><title>";
    out += escaped(title);
    out += "</title></circle>\n";
}

void Layer::rectangle(const Box& box, std::string_view attributes) {
    out += "<rect";
    appendAttributes(out, attributes);
    appendAttribute(out, "x", box.left);
    appendAttribute(out, "y", box.top);
    appendAttribute(out, "width", box.width());
    appendAttribute(out, "height", box.height());
    out += "/>\n";
}

void Layer::text(Point at, Anchor anchor, std::string_view text, const Face& face, std::string_view attributes) {
    names->add(std::string(text), Labels::room(at, anchor, text, face));
    out += "<text";
    appendAttributes(out, attributes);
    appendAttribute(out, "x", at.x);
    appendAttribute(out, "y", at.y);
    appendAttribute(out, "font-size", face.size);
    if (anchor != Anchor::START) {
        out += anchor == Anchor::MIDDLE ? " text-anchor=\"middle\"" : " text-anchor=\"end\"";
    }
    if (face.bold) {
        out += " font-weight=\"bold\"";
    }
    if (!face.colour.empty()) {
        out += " fill=\"";
        out += face.colour;
        out += '"';
    }
    out += '>';
    out += escaped(text);
    out += "</text>\n";
}

bool Layer::textWhereFree(const Box& within, Point at, Anchor anchor, std::string_view text, const Face& face,
                          Clear clear) {
    const Box room = Labels::room(at, anchor, text, face);
    const double space = 0.3 * face.size;  // so that two numbers are not read as one
    if (!within.contains(room) ||
        !names->isFree({room.left - space, room.top, room.right + space, room.bottom}, clear)) {
        return false;
    }
    this->text(at, anchor, text, face);
    return true;
}

}  // namespace corvane::skewt
