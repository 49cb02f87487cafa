// The plane of a skew-T log-p diagram: pixels of pressure and temperature and back, boxes, lines cut at a frame.
#ifndef CORVANE_SKEWT_GEOMETRY_H
#define CORVANE_SKEWT_GEOMETRY_H

#include <vector>

namespace corvane::skewt {

constexpr double PI = 3.14159265358979323846;

// A place in the picture, pixels; y grows downward.
struct Point {
    double x = 0.0;
    double y = 0.0;
};

// A line through points.
using Line = std::vector<Point>;

// A rectangle in the picture, pixels.
struct Box {
    double left = 0.0;
    double top = 0.0;
    double right = 0.0;
    double bottom = 0.0;

    double width() const { return right - left; }
    double height() const { return bottom - top; }
    bool contains(Point point) const {
        return point.x >= left && point.x <= right && point.y >= top && point.y <= bottom;
    }
    bool contains(const Box& other) const {
        return other.left >= left && other.right <= right && other.top >= top && other.bottom <= bottom;
    }
    // Whether the two share more than an edge.
    bool overlaps(const Box& other) const {
        return left < other.right && other.left < right && top < other.bottom && other.top < bottom;
    }
    // The box with `margin` more on every side.
    Box grown(double margin) const { return {left - margin, top - margin, right + margin, bottom + margin}; }
    // Grows as far as it takes to hold a point.
    void include(Point point);
    // The box of no extent at a point.
    static Box at(Point point) { return {point.x, point.y, point.x, point.y}; }
};

// Cuts the straight line from `from` to `to` down to what lies in `box`.
// @return false, with the ends unspecified, when nothing of it does.
bool clip(const Box& box, Point& from, Point& to);

// The pieces of a line that lie in a box.
std::vector<Line> clip(const Box& box, const Line& line);

// The coordinates of the diagram. Pressure falls logarithmically from the lower edge to the upper one, and an isotherm
// rises to the right at 45 degrees: one pixel to the right for each pixel up.
class Geometry {
public:
    Geometry() = default;

    // @param frame the diagram's rectangle.
    // @param bottom,top pressures of the lower and the upper edge, hPa.
    // @param corner temperature at the lower left corner, degrees Celsius.
    // @param range degrees between the lower left and the lower right corner.
    Geometry(const Box& frame, double bottom, double top, double corner, double range);

    const Box& frame() const { return edges; }
    double bottomPressure() const { return lower; }
    double topPressure() const { return upper; }
    double cornerTemperature() const { return corner; }
    double range() const { return edges.width() / scale; }
    double pixelsPerDegree() const { return scale; }

    double y(double pressure) const;
    Point at(double pressure, double temperature) const;
    double pressure(double atY) const;
    double temperature(Point point) const;

private:
    Box edges;
    double lower = 1050.0;
    double upper = 100.0;
    double corner = -40.0;
    double scale = 1.0;   // pixels per degree along an isobar
    double height = 1.0;  // pixels per unit of ln p
};

}  // namespace corvane::skewt

#endif
