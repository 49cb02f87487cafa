#include "Geometry.h"

#include <algorithm>
#include <cmath>

namespace corvane::skewt {

void Box::include(Point point) {
    left = std::min(left, point.x);
    right = std::max(right, point.x);
    top = std::min(top, point.y);
    bottom = std::max(bottom, point.y);
}

// Liang and Barsky, ACM Trans. Graph. 3 (1984), 1-22: the part of the line between two of its fractions is inside.
bool clip(const Box& box, Point& from, Point& to) {
    const double dx = to.x - from.x;
    const double dy = to.y - from.y;
    double enters = 0.0;
    double leaves = 1.0;
    const auto inside = [&](double direction, double distance) {
        if (direction == 0.0) {
            return distance >= 0.0;
        }
        const double fraction = distance / direction;
        if (direction < 0.0) {
            enters = std::max(enters, fraction);
        } else {
            leaves = std::min(leaves, fraction);
        }
        return enters <= leaves;
    };
    if (!inside(-dx, from.x - box.left) || !inside(dx, box.right - from.x) || !inside(-dy, from.y - box.top) ||
        !inside(dy, box.bottom - from.y)) {
        return false;
    }
    const Point start = from;
    if (leaves < 1.0) {
        to = {start.x + leaves * dx, start.y + leaves * dy};
    }
    if (enters > 0.0) {
        from = {start.x + enters * dx, start.y + enters * dy};
    }
    return true;
}

std::vector<Line> clip(const Box& box, const Line& line) {
    std::vector<Line> pieces;
    bool open = false;  // whether the last piece ends where the next stretch begins
    for (std::size_t i = 1; i < line.size(); ++i) {
        Point from = line[i - 1];
        Point to = line[i];
        if (!clip(box, from, to)) {
            open = false;
            continue;
        }
        if (!open) {
            pieces.push_back({from});
        }
        pieces.back().push_back(to);
        open = box.contains(line[i]);
    }
    // A line that only touches a corner leaves nothing to draw.
    const auto isDot = [](const Line& piece) {
        constexpr double LEAST = 0.1;  // pixels
        return std::all_of(piece.begin(), piece.end(), [&piece](const Point& point) {
            return std::fabs(point.x - piece.front().x) < LEAST && std::fabs(point.y - piece.front().y) < LEAST;
        });
    };
    pieces.erase(std::remove_if(pieces.begin(), pieces.end(), isDot), pieces.end());
    return pieces;
}

Geometry::Geometry(const Box& frame, double bottom, double top, double cornerTemperature, double range)
    : edges(frame),
      lower(bottom),
      upper(top),
      corner(cornerTemperature),
      scale(frame.width() / range),
      height(frame.height() / std::log(bottom / top)) {}

double Geometry::y(double pressure) const {
    return edges.bottom - height * std::log(lower / pressure);
}

Point Geometry::at(double pressure, double temperature) const {
    const double level = y(pressure);
    return {edges.left + (temperature - corner) * scale + (edges.bottom - level), level};
}

double Geometry::pressure(double atY) const {
    return lower * std::exp((atY - edges.bottom) / height);
}

double Geometry::temperature(Point point) const {
    return corner + (point.x - edges.left - (edges.bottom - point.y)) / scale;
}

}  // namespace corvane::skewt
