// A small project for the end-to-end design tests: the built-in bar table as ROUNDBAR.DAT and
// a floor of two beams as an orvak-model JSON text.
#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "core/record.h"
#include "support/temp_dir.h"

namespace orvak::beams::testing {

/// Rows (diameter mm, kg/m, cm²) as ROUNDBAR.DAT records: "1", the three values, eight free
/// singles. Without rows, the six rows of the built-in bar table.
inline void writeBarTable(const std::filesystem::path& general,
                          std::vector<std::array<float, 3>> rows = {{8, 0.40f, 0.50f},
                                                                    {10, 0.62f, 0.79f},
                                                                    {12, 0.89f, 1.13f},
                                                                    {14, 1.21f, 1.54f},
                                                                    {16, 1.58f, 2.01f},
                                                                    {20, 2.47f, 3.14f}}) {
    std::string bytes;
    for (const auto& r : rows) {
        std::uint8_t rec[45] = {'1'};
        for (int v = 0; v < 3; ++v) {
            core::writeSingle(rec + 1 + 4 * v, r[v]);
        }
        bytes.append(reinterpret_cast<const char*>(rec), sizeof rec);
    }
    std::filesystem::create_directories(general);
    test::writeBytes(general / "ROUNDBAR.DAT", bytes);
}

/// Floor 1 with B1: two 6 m spans of 30 × 60, 3 t/m dead and no live load, Fc 250, FY 4200;
/// and B2: one 4 m span of 25 × 50, 2 t/m dead and 1 t/m live. The support lists are JSON
/// arrays of support objects.
inline std::string
twoBeamModel(const std::string& b1Supports = R"([{"code": 2}, {"code": 2}, {"code": 2}])",
             const std::string& b2Supports = R"([{"code": 2}, {"code": 2}])") {
    const std::string span =
        R"({"length_m": 6.0, "section": {"kind": 2, "dims_cm": [0, 0, 30, 0, 60]},
            "loads": [{"kind": "uniform", "dead": 3.0, "live": 0.0}]})";
    return R"({"format": "orvak-model", "version": 1, "floors": [{"number": 1, "beams": [
        {"name": "B1", "fc": 250, "fy": 4200, "fy_stirrups": 2800, "spans": [)" +
           span + ", " + span + R"(], "supports": )" + b1Supports + R"(},
        {"name": "B2", "fc": 250, "fy": 4200, "spans": [{"length_m": 4.0,
            "section": {"kind": 2, "dims_cm": [0, 0, 25, 0, 50]},
            "loads": [{"kind": "uniform", "dead": 2.0, "live": 1.0}]}],
         "supports": )" +
           b2Supports + "}]}]}";
}

} // namespace orvak::beams::testing
