// Cross-sections of columns: the seven section types from their dimensions a to e, by one
// routine: area, centroid, moments of inertia, the compressed zone under a stress block and
// the places of the main bars. Lengths in cm; the section lies in the box [0, a] × [0, b].
#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

namespace orvak::columns {

/// Section types 1..7 (names of the type table; docs/file-formats.md gives the dimensions).
enum class SectionType : int {
    Rectangle = 1,    ///< a along x, b along y
    Circle = 2,       ///< diameter a, spiral
    Tee = 3,          ///< depth a, flange width b, flange thickness c, stem width d
    L = 4,            ///< depth a, width b, flange thickness c, stem width d
    Cross = 5,        ///< a × b overall, arm along x c thick, arm along y d thick
    SquareSpiral = 6, ///< side a, bars on a circle within a spiral
    CircleTied = 7,   ///< diameter a, ties
};

/// The two directions of bending: x bends the section over its depth a (compression at
/// x = a, the flange of a Tee or L), y over its extent in y (compression at y = extent).
enum class Direction { X, Y };

struct Point {
    double x = 0.0;
    double y = 0.0;
};

/// An axis-parallel rectangle [x0, x1] × [y0, y1].
struct Box {
    double x0, x1, y0, y1;
};

struct ColumnSection {
    SectionType type = SectionType::Rectangle;
    bool circular = false;     ///< a circle of diameter a (types 2 and 7)
    bool barsOnCircle = false; ///< types 2, 6 and 7
    std::vector<Box> parts;    ///< the non-overlapping rectangles of a polygonal section
    std::vector<Point> outline; ///< its outline, counter-clockwise (empty for a circle)
    double extentX = 0.0;      ///< a
    double extentY = 0.0;      ///< b (a for the circle and the square)
    double areaCm2 = 0.0;      ///< AC
    Point centroid;
    double ixCm4 = 0.0; ///< IX: about the axis through the centroid parallel to x
    double iyCm4 = 0.0; ///< IY: about the axis parallel to y (bending over a)

    double depth(Direction d) const { return d == Direction::X ? extentX : extentY; }
    /// The distance from the compression face to the centroid.
    double centroidDepth(Direction d) const {
        return d == Direction::X ? extentX - centroid.x : extentY - centroid.y;
    }
};

/// The section of type 1..7 with dimensions a..e, or empty when a dimension the type needs
/// is not a positive number or the parts do not fit (a flange as deep as the section).
std::optional<ColumnSection> columnSection(int type, const std::array<float, 5>& dims);

/// How many of a..e the type needs (1 circle and square, 2 rectangle, 4 the others).
int requiredDimensions(int type);

/// The part of the section within `depthCm` of the compression face: its area and the
/// distance of its centroid from that face.
struct Zone {
    double areaCm2 = 0.0;
    double centroidDepthCm = 0.0;
};
Zone compressionZone(const ColumnSection& section, Direction d, double depthCm);

/// The fewest main bars the type takes: a bar in every corner of a polygonal section (4 in a
/// rectangle, 8 in a Tee, 6 in an L, 12 in a cross), 6 within a spiral, 4 within circular ties.
int minimumBars(const ColumnSection& section);
/// The count rounded up to what the type can place symmetrically (even for polygons).
int placeableBars(const ColumnSection& section, int count);

/// The centres of `count` bars `coverCm` in from the faces: a bar in every corner of the
/// line `coverCm` inside the outline and the others along its sides, each added to the side
/// whose bars stand farthest apart; on a circle, equally spaced starting at the compression
/// face of x. Empty when the bar line does not fit inside the section (a part thinner than
/// twice the cover). Precondition: count >= minimumBars.
std::vector<Point> barPlaces(const ColumnSection& section, int count, double coverCm);

/// The length of the line on which the bars stand, cm.
double barLineLengthCm(const ColumnSection& section, double coverCm);

} // namespace orvak::columns
