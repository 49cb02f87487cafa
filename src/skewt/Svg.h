// Writes the pieces of an SVG document: numbers, texts, lines, and labels that keep clear of each other.
#ifndef CORVANE_SKEWT_SVG_H
#define CORVANE_SKEWT_SVG_H

#include "Geometry.h"

#include <string>
#include <string_view>
#include <vector>

namespace corvane::skewt {

// A number with this many decimals, whatever the locale: "12.5", "-0.3", "0".
std::string fixed(double number, int decimals);

// A number for people: as fixed(), with a minus sign in place of the hyphen.
std::string shown(double number, int decimals);

// A coordinate: to a tenth of a pixel, without a needless zero.
std::string pixels(double number);

// A text as content or attribute value of XML: markup escaped, what is no XML character or not UTF-8 replaced.
std::string escaped(std::string_view text);

// The width of a text in a sans-serif font of size 1, estimated from above: fonts differ, labels must not touch.
double textWidth(std::string_view text, bool bold = false);

// A text shortened with an ellipsis so that textWidth() stays below `width`.
std::string fitted(std::string_view text, double width, bool bold = false);

// An attribute of an element, its value written as it is: name="value".
std::string attribute(std::string_view name, std::string_view value);
std::string attribute(std::string_view name, double value);

// The attributes of a line of this colour and width.
std::string stroke(std::string_view colour, double width);

// The attribute of a dashed line, its dashes and spaces in multiples of its width.
std::string dashes(double width, double dash, double space);

// How a text is aligned: which end of it `x` is.
enum class Anchor { START, MIDDLE, END };

// What a label has to keep clear of.
enum class Clear {
    OF_EVERYTHING,
    OF_BOXES  // but not of lines
};

// The face of a text.
struct Face {
    double size = 12.0;  // pixels
    bool bold = false;
    std::string_view colour = {};  // empty: that of the group around it
};

// A text in the picture and the room that it takes.
struct Label {
    std::string text;
    Box box;
};

// The labels of a picture and the lines that labels have to keep off.
class Labels {
public:
    // The room that a text takes with its baseline at `at`.
    static Box room(Point at, Anchor anchor, std::string_view text, const Face& face);

    // Whether a box overlaps no label, box or line so far.
    bool isFree(const Box& box, Clear clear = Clear::OF_EVERYTHING) const;

    void add(std::string text, const Box& box) { placed.push_back({std::move(text), box}); }
    void keepOff(const Line& line);
    void keepOff(const Box& box) { boxes.push_back(box); }

    const std::vector<Label>& all() const { return placed; }

private:
    std::vector<Label> placed;
    std::vector<Box> boxes;
    std::vector<Line> lines;
};

// A part of the picture: elements in the order in which they are painted.
class Layer {
public:
    explicit Layer(Labels& labels) : names(&labels) {}

    // Opens a group with these attributes, written as they are.
    void open(std::string_view attributes);
    void close();

    void segment(Point from, Point to, std::string_view attributes = {});
    void path(const Line& line, std::string_view attributes = {});
    // One path of several lines. Writes nothing when there is none.
    void paths(const std::vector<Line>& lines, std::string_view attributes = {});
    void polygon(const Line& line, std::string_view attributes = {});
    void circle(Point centre, double radius, std::string_view attributes = {}, std::string_view title = {});
    void rectangle(const Box& box, std::string_view attributes = {});

    // Writes a text with its baseline at `at` and records its room.
    void text(Point at, Anchor anchor, std::string_view text, const Face& face, std::string_view attributes = {});
    // Writes a text if its room lies in `within` and is free.
    bool textWhereFree(const Box& within, Point at, Anchor anchor, std::string_view text, const Face& face,
                       Clear clear = Clear::OF_EVERYTHING);

    // Markup, as it is.
    void raw(std::string_view markup) { out += markup; }

    const std::string& markup() const { return out; }

private:
    void data(const Line& line);

    Labels* names;
    std::string out;
};

}  // namespace corvane::skewt

#endif
