// Cross-sections of beam spans: geometry of the seven kinds from their five stored dimensions,
// the centroid and the gross moment of inertia by the parallel-axis rule.
#include "beams/section.h"

#include <cmath>
#include <string>

#include <fmt/format.h>

namespace orvak::beams {

namespace {

bool positive(float v) {
    return std::isfinite(v) && v > 0.0f;
}

// One rectangular part of a section: width, height, and the height of its bottom face.
struct Part {
    double width;
    double height;
    double bottom;
};

// The web and the flange (a rectangle has only the web; the flange then has zero height).
std::array<Part, 2> parts(const SectionGeometry& s) {
    if (!s.flanged()) {
        return {{{s.webWidthCm, s.heightCm, 0.0}, {0.0, 0.0, 0.0}}};
    }
    const double webHeight = s.heightCm - s.flangeThicknessCm;
    if (s.flangeOnTop) {
        return {
            {{s.webWidthCm, webHeight, 0.0}, {s.flangeWidthCm, s.flangeThicknessCm, webHeight}}};
    }
    return {{{s.webWidthCm, webHeight, s.flangeThicknessCm},
             {s.flangeWidthCm, s.flangeThicknessCm, 0.0}}};
}

} // namespace

std::optional<SectionGeometry> sectionGeometry(int kind, const SectionDims& dims,
                                               std::string& error) {
    error.clear();
    if (kind < 1 || kind > 7) {
        error = fmt::format("The section kind {} is not one of 1 to 7.", kind);
        return std::nullopt;
    }
    SectionGeometry g;
    g.kind = static_cast<SectionKind>(kind);
    const bool rectangle =
        g.kind == SectionKind::WideRectangle || g.kind == SectionKind::DeepRectangle;
    if (!positive(dims[2])) {
        error = "The web width of the section must be a positive number of cm.";
        return std::nullopt;
    }
    if (!positive(dims[4])) {
        error = "The height of the section must be a positive number of cm.";
        return std::nullopt;
    }
    g.webWidthCm = dims[2];
    g.heightCm = dims[4];
    if (rectangle) {
        g.flangeWidthCm = g.webWidthCm;
        return g;
    }
    if (!positive(dims[0])) {
        error = "The flange width of the section must be a positive number of cm.";
        return std::nullopt;
    }
    if (!positive(dims[1])) {
        error = "The flange thickness of the section must be a positive number of cm.";
        return std::nullopt;
    }
    g.flangeWidthCm = dims[0];
    g.flangeThicknessCm = dims[1];
    if (g.flangeThicknessCm >= g.heightCm) {
        error = "The flange of the section must be thinner than the section is high.";
        return std::nullopt;
    }
    if (g.flangeWidthCm < g.webWidthCm) {
        error = "The flange of the section must not be narrower than its web.";
        return std::nullopt;
    }
    g.flangeOnTop = g.kind == SectionKind::TSection || g.kind == SectionKind::LSection ||
                    g.kind == SectionKind::Rib;
    g.flangeAtBottom = !g.flangeOnTop;
    return g;
}

double centroidFromBottomCm(const SectionGeometry& section) {
    double area = 0.0;
    double moment = 0.0;
    for (const Part& p : parts(section)) {
        const double a = p.width * p.height;
        area += a;
        moment += a * (p.bottom + p.height / 2.0);
    }
    return moment / area;
}

double grossInertiaCm4(const SectionGeometry& section) {
    const double yc = centroidFromBottomCm(section);
    double inertia = 0.0;
    for (const Part& p : parts(section)) {
        const double d = p.bottom + p.height / 2.0 - yc;
        inertia += p.width * p.height * p.height * p.height / 12.0 + p.width * p.height * d * d;
    }
    return inertia;
}

} // namespace orvak::beams
