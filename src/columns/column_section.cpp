// Cross-sections of columns: every type is a circle or a set of rectangles with a rectilinear
// outline, so one routine gives the properties, the compressed zone and the bar places.
#include "columns/column_section.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "core/error.h"

namespace orvak::columns {

namespace {

bool positive(float v) {
    return std::isfinite(v) && v > 0.0f;
}

// Drops repeated points and points in the middle of a straight run (a Tee whose stem is as
// wide as its flange is a rectangle).
std::vector<Point> cleanOutline(const std::vector<Point>& in) {
    std::vector<Point> pts;
    for (const Point& p : in) {
        if (pts.empty() || std::abs(p.x - pts.back().x) + std::abs(p.y - pts.back().y) > 1e-9) {
            pts.push_back(p);
        }
    }
    while (pts.size() > 1 && std::abs(pts.front().x - pts.back().x) +
                                     std::abs(pts.front().y - pts.back().y) <= 1e-9) {
        pts.pop_back();
    }
    bool changed = true;
    while (changed && pts.size() > 3) {
        changed = false;
        for (std::size_t i = 0; i < pts.size(); ++i) {
            const Point& a = pts[(i + pts.size() - 1) % pts.size()];
            const Point& b = pts[i];
            const Point& c = pts[(i + 1) % pts.size()];
            const double cross = (b.x - a.x) * (c.y - b.y) - (b.y - a.y) * (c.x - b.x);
            if (std::abs(cross) <= 1e-9) {
                pts.erase(pts.begin() + static_cast<std::ptrdiff_t>(i));
                changed = true;
                break;
            }
        }
    }
    return pts;
}

void addBox(ColumnSection& s, Box b) {
    if (b.x1 - b.x0 > 0.0 && b.y1 - b.y0 > 0.0) {
        s.parts.push_back(b);
    }
}

// Area, centroid and inertias of the rectangles (parallel-axis rule).
void boxProperties(ColumnSection& s) {
    double area = 0.0, sx = 0.0, sy = 0.0;
    for (const Box& b : s.parts) {
        const double a = (b.x1 - b.x0) * (b.y1 - b.y0);
        area += a;
        sx += a * (b.x0 + b.x1) / 2.0;
        sy += a * (b.y0 + b.y1) / 2.0;
    }
    s.areaCm2 = area;
    s.centroid = {sx / area, sy / area};
    for (const Box& b : s.parts) {
        const double w = b.x1 - b.x0;
        const double h = b.y1 - b.y0;
        const double dx = (b.x0 + b.x1) / 2.0 - s.centroid.x;
        const double dy = (b.y0 + b.y1) / 2.0 - s.centroid.y;
        s.ixCm4 += w * h * h * h / 12.0 + w * h * dy * dy;
        s.iyCm4 += h * w * w * w / 12.0 + w * h * dx * dx;
    }
}

// The bar line: the outline moved `cover` inwards, each corner along both of its sides'
// inward normals (exact for a rectilinear outline). Empty when a side would turn round.
std::vector<Point> insetOutline(const std::vector<Point>& outline, double cover) {
    const std::size_t n = outline.size();
    std::vector<Point> out(n);
    for (std::size_t i = 0; i < n; ++i) {
        const Point& prev = outline[(i + n - 1) % n];
        const Point& p = outline[i];
        const Point& next = outline[(i + 1) % n];
        const auto normal = [](const Point& from, const Point& to) {
            const double len = std::hypot(to.x - from.x, to.y - from.y);
            return Point{-(to.y - from.y) / len, (to.x - from.x) / len};
        };
        const Point n1 = normal(prev, p);
        const Point n2 = normal(p, next);
        out[i] = {p.x + cover * (n1.x + n2.x), p.y + cover * (n1.y + n2.y)};
    }
    for (std::size_t i = 0; i < n; ++i) {
        const Point& a = outline[i];
        const Point& b = outline[(i + 1) % n];
        const Point& a2 = out[i];
        const Point& b2 = out[(i + 1) % n];
        const double along = (b.x - a.x) * (b2.x - a2.x) + (b.y - a.y) * (b2.y - a2.y);
        if (!(along > 0.0)) {
            return {};
        }
    }
    return out;
}

double perimeter(const std::vector<Point>& pts) {
    double len = 0.0;
    for (std::size_t i = 0; i < pts.size(); ++i) {
        const Point& a = pts[i];
        const Point& b = pts[(i + 1) % pts.size()];
        len += std::hypot(b.x - a.x, b.y - a.y);
    }
    return len;
}

} // namespace

int requiredDimensions(int type) {
    switch (static_cast<SectionType>(type)) {
    case SectionType::Circle:
    case SectionType::SquareSpiral:
    case SectionType::CircleTied:
        return 1;
    case SectionType::Rectangle:
        return 2;
    default:
        return 4;
    }
}

std::optional<ColumnSection> columnSection(int type, const std::array<float, 5>& dims) {
    if (type < 1 || type > 7) {
        return std::nullopt;
    }
    for (int i = 0; i < requiredDimensions(type); ++i) {
        if (!positive(dims[static_cast<std::size_t>(i)])) {
            return std::nullopt;
        }
    }
    ColumnSection s;
    s.type = static_cast<SectionType>(type);
    const double a = dims[0], b = dims[1], c = dims[2], d = dims[3];
    switch (s.type) {
    case SectionType::Circle:
    case SectionType::CircleTied: {
        s.circular = true;
        s.barsOnCircle = true;
        s.extentX = s.extentY = a;
        s.areaCm2 = std::numbers::pi * a * a / 4.0;
        s.centroid = {a / 2.0, a / 2.0};
        s.ixCm4 = s.iyCm4 = std::numbers::pi * a * a * a * a / 64.0;
        return s;
    }
    case SectionType::SquareSpiral:
        s.barsOnCircle = true;
        s.extentX = s.extentY = a;
        addBox(s, {0, a, 0, a});
        s.outline = {{0, 0}, {a, 0}, {a, a}, {0, a}};
        break;
    case SectionType::Rectangle:
        s.extentX = a;
        s.extentY = b;
        addBox(s, {0, a, 0, b});
        s.outline = {{0, 0}, {a, 0}, {a, b}, {0, b}};
        break;
    case SectionType::Tee: {
        if (c >= a || d > b) {
            return std::nullopt;
        }
        const double xf = a - c, y0 = (b - d) / 2.0, y1 = (b + d) / 2.0;
        s.extentX = a;
        s.extentY = b;
        addBox(s, {xf, a, 0, b});
        addBox(s, {0, xf, y0, y1});
        s.outline = {{0, y0}, {xf, y0}, {xf, 0}, {a, 0}, {a, b}, {xf, b}, {xf, y1}, {0, y1}};
        break;
    }
    case SectionType::L: {
        if (c >= a || d > b) {
            return std::nullopt;
        }
        const double xf = a - c;
        s.extentX = a;
        s.extentY = b;
        addBox(s, {xf, a, 0, b});
        addBox(s, {0, xf, 0, d});
        s.outline = {{0, 0}, {a, 0}, {a, b}, {xf, b}, {xf, d}, {0, d}};
        break;
    }
    case SectionType::Cross: {
        if (c > b || d > a) {
            return std::nullopt;
        }
        const double y0 = (b - c) / 2.0, y1 = (b + c) / 2.0;
        const double x0 = (a - d) / 2.0, x1 = (a + d) / 2.0;
        s.extentX = a;
        s.extentY = b;
        addBox(s, {0, a, y0, y1});
        addBox(s, {x0, x1, 0, y0});
        addBox(s, {x0, x1, y1, b});
        s.outline = {{0, y0}, {x0, y0}, {x0, 0}, {x1, 0}, {x1, y0}, {a, y0},
                     {a, y1}, {x1, y1}, {x1, b}, {x0, b}, {x0, y1}, {0, y1}};
        break;
    }
    }
    s.outline = cleanOutline(s.outline);
    boxProperties(s);
    return s;
}

Zone compressionZone(const ColumnSection& s, Direction d, double depthCm) {
    const double full = s.depth(d);
    const double t = std::clamp(depthCm, 0.0, full);
    Zone z;
    if (t <= 0.0) {
        return z;
    }
    if (s.circular) {
        // Circular segment of height t: half-angle alpha with cos alpha = (R - t) / R, area
        // R²(alpha - sin alpha cos alpha), centroid (2/3) R³ sin³ alpha / area from the centre.
        const double r = full / 2.0;
        const double alpha = std::acos(std::clamp((r - t) / r, -1.0, 1.0));
        const double sa = std::sin(alpha);
        z.areaCm2 = r * r * (alpha - sa * std::cos(alpha));
        z.centroidDepthCm = r - 2.0 / 3.0 * r * r * r * sa * sa * sa / z.areaCm2;
        return z;
    }
    double moment = 0.0;
    for (const Box& b : s.parts) {
        // Coordinates measured from the compression face inwards.
        const double lo = d == Direction::X ? full - b.x1 : full - b.y1;
        const double hi = d == Direction::X ? full - b.x0 : full - b.y0;
        const double width = d == Direction::X ? b.y1 - b.y0 : b.x1 - b.x0;
        const double top = std::min(hi, t);
        if (top > lo) {
            const double a = (top - lo) * width;
            z.areaCm2 += a;
            moment += a * (lo + top) / 2.0;
        }
    }
    z.centroidDepthCm = z.areaCm2 > 0.0 ? moment / z.areaCm2 : 0.0;
    return z;
}

int minimumBars(const ColumnSection& s) {
    if (s.type == SectionType::CircleTied) {
        return 4;
    }
    if (s.barsOnCircle) {
        return 6;
    }
    return static_cast<int>(s.outline.size());
}

int placeableBars(const ColumnSection& s, int count) {
    count = std::max(count, minimumBars(s));
    if (!s.barsOnCircle && count % 2 != 0) {
        ++count;
    }
    return count;
}

std::vector<Point> barPlaces(const ColumnSection& s, int count, double coverCm) {
    ORVAK_ASSERT(count >= minimumBars(s));
    std::vector<Point> bars;
    if (s.barsOnCircle) {
        const double r = std::min(s.extentX, s.extentY) / 2.0 - coverCm;
        if (!(r > 0.0)) {
            return bars;
        }
        const Point c{s.extentX / 2.0, s.extentY / 2.0};
        for (int i = 0; i < count; ++i) {
            const double theta = 2.0 * std::numbers::pi * i / count;
            bars.push_back({c.x + r * std::cos(theta), c.y + r * std::sin(theta)});
        }
        return bars;
    }
    const std::vector<Point> line = insetOutline(s.outline, coverCm);
    if (line.empty()) {
        return bars;
    }
    const std::size_t n = line.size();
    // Bars between the corners of each side: each further bar goes to the side whose bars
    // stand farthest apart (the first such side on a tie), so equal sides fill in turn.
    std::vector<int> between(n, 0);
    for (int extra = count - static_cast<int>(n); extra > 0; --extra) {
        std::size_t best = 0;
        double widest = -1.0;
        for (std::size_t i = 0; i < n; ++i) {
            const Point& a = line[i];
            const Point& b = line[(i + 1) % n];
            const double spacing = std::hypot(b.x - a.x, b.y - a.y) / (between[i] + 1);
            if (spacing > widest + 1e-9) {
                widest = spacing;
                best = i;
            }
        }
        ++between[best];
    }
    for (std::size_t i = 0; i < n; ++i) {
        const Point& a = line[i];
        const Point& b = line[(i + 1) % n];
        bars.push_back(a);
        for (int k = 1; k <= between[i]; ++k) {
            const double f = static_cast<double>(k) / (between[i] + 1);
            bars.push_back({a.x + f * (b.x - a.x), a.y + f * (b.y - a.y)});
        }
    }
    return bars;
}

double barLineLengthCm(const ColumnSection& s, double coverCm) {
    if (s.barsOnCircle) {
        return std::numbers::pi * std::max(0.0, std::min(s.extentX, s.extentY) - 2.0 * coverCm);
    }
    return perimeter(insetOutline(s.outline, coverCm));
}

} // namespace orvak::columns
