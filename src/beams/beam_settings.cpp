// Design settings of beams: the built-in defaults, and the settings record and BMSETING.DAT
// through the shared settings codec.
#include "beams/beam_settings.h"

#include <cctype>
#include <cmath>
#include <type_traits>

#include <fmt/format.h>

#include "core/error.h"
#include "core/settings_fields.h"

namespace fs = std::filesystem;

namespace orvak::beams {

namespace {

// The values a design setting may take when it is not 0 (the code's value): wide enough for
// any code or habit, narrow enough to catch a slip or a damaged file.
struct SettingBounds {
    std::string_view name;
    float least;
    float most;
};
constexpr SettingBounds kSettingBounds[] = {
    {"MomFiTxt", 0.5f, 1.0f},     {"ShearFiTxt", 0.5f, 1.0f}, {"FacRmaxTxt", 0.1f, 1.0f},
    {"FacRminTxt", 1.0f, 100.0f}, {"VsMinTxt", 0.5f, 50.0f},  {"LdfactTxt", 0.1f, 5.0f},
    {"DeflTxt", 60.0f, 5000.0f},  {"MINDIST", 1.0f, 30.0f},   {"MINDCALC", 3.0f, 60.0f},
    {"MAXDCALC", 3.0f, 60.0f},    {"SDIAMTXT", 3.0f, 40.0f},  {"SSPCTXT", 2.0f, 100.0f},
    {"MinSSPCTXT", 1.0f, 100.0f}, {"WIDTHLNK", 5.0f, 500.0f}, {"DSTXT", 3.0f, 60.0f},
    {"THIKTXT", 1.0f, 100.0f},    {"FACDEADL", 0.1f, 5.0f},   {"FACDAYNL", 0.1f, 5.0f},
};

// The least bars of a face and their diameter: a count no beam can hold, or a bar that does
// not exist, would be placed as it stands.
struct WholeBounds {
    std::string_view name;
    int most;
    bool diameter; ///< 0 or kLeastBarMm..most
};
constexpr int kLeastBarMm = 3;
constexpr WholeBounds kWholeBounds[] = {
    {"MINUPSQ", 50, false}, {"MINUPSD", 60, true},  {"MINDNSQ", 50, false},
    {"MINDNSD", 60, true},  {"MINDNSQC", 50, false}, {"MINDNSDC", 60, true},
};

bool finite(float v) {
    return std::isfinite(v);
}

} // namespace

BeamSettings defaultBeamSettings() {
    BeamSettings s;
    s.MINUPSQ = 2;
    s.MINUPSD = 12;
    s.MINDNSQ = 2;
    s.MINDNSD = 12;
    s.MINDNSQC = 2;
    s.MINDNSDC = 12;
    s.MINDIST = 2.5f;
    s.MINAREA = 0.5f;
    s.CutNgtvBarsChk = 1;
    s.MINLNGTV = 0.3f;
    s.MINDCALCNGTV = 10.0f;
    s.LIRONENDBL = 0.25f;
    s.LIRONENDBR = 0.25f;
    s.MINDCALC = 10.0f;
    s.MAXDCALC = 25.0f;
    s.SDIAMTXT = 8.0f;
    s.SSPCTXT = 20.0f;
    s.MinSSPCTXT = 7.5f;
    s.WIDTHLNK = 40.0f;
    s.angleheight = {45.0f, 10.0f, 10.0f};
    s.DSTXT = {8, 10, 12, 14, 16, 18, 20, 22, 25, 28, 32, 0};
    s.CONTBSTLCHK = 1;
    s.FACDEADL = {1.4f, 1.4f};
    s.FACDAYNL = {1.7f, 0.0f};
    s.DeflTxt = 360.0f;
    s.FacRmaxTxt = 0.5f;
    s.FacRminTxt = 14.06f;
    s.EsupBmFacTxt = 1.0f;
    s.VsMinTxt = 3.5f;
    s.MomFiTxt = 0.9f;
    s.ShearFiTxt = 0.85f;
    s.DevLenTxt = 1.0f;
    s.RedMomChk = 0;
    s.RedShrChk = 1;
    s.LdfactTxt = 1.0f;
    s.ShrContDpthTxt = 1.0f;
    s.MaxLenTxt = 12.0f;
    s.MinthicknessChk = 0;
    s.LFacTxt = 1.0f;
    // ACI minimum depth of beams h = L / x: simply supported, one end continuous, both ends
    // continuous, cantilever; then the same four for one-way slabs.
    s.THIKTXT = {16.0f, 18.5f, 21.0f, 8.0f, 20.0f, 24.0f, 28.0f, 10.0f, 0, 0, 0, 0};
    return s;
}

std::string validateBeamSettings(const BeamSettings& s) {
    // The settings copy: a value that is not a number would reach every moment and area of
    // the design. A negative value stands for the code's value where the setting has one;
    // the load factors have none, and a negative one would turn the loads upside down. A
    // value above 0 is used as it stands: one that no design can mean (a stored blank reads
    // as about 1e-19, a phi of 0.0009) would turn every area of the beam absurd, so it is
    // refused with its name and the values it may take.
    std::string settingsProblem;
    forEachSettingsField(s, [&](std::string_view name, const auto& value) {
        if constexpr (std::is_same_v<std::decay_t<decltype(value)>, std::int16_t>) {
            for (const WholeBounds& bounds : kWholeBounds) {
                const int least = bounds.diameter ? kLeastBarMm : 0;
                if (settingsProblem.empty() && name == bounds.name && value != 0 &&
                    (value < least || value > bounds.most)) {
                    settingsProblem =
                        bounds.diameter
                            ? fmt::format("the setting {} is {}: it must be 0 or from {} to {} mm",
                                          name, value, least, bounds.most)
                            : fmt::format("the setting {} is {}: it must be 0 to {}", name, value,
                                          bounds.most);
                }
            }
        }
    });
    std::string outOfRange;
    core::forEachSettingsSingle(s, [&](std::string_view name, float x) {
        const bool factor = name == "FACDEADL" || name == "FACDAYNL";
        if (!settingsProblem.empty()) {
            return;
        }
        if (!finite(x) || (factor && x < 0.0f)) {
            settingsProblem = fmt::format("the setting {} must be {}", name,
                                          factor ? "a number of 0 or more" : "a number");
            return;
        }
        for (const SettingBounds& bounds : kSettingBounds) {
            if (outOfRange.empty() && name == bounds.name && x > 0.0f &&
                !(x >= bounds.least && x <= bounds.most)) {
                outOfRange = fmt::format("the setting {} is {:g}: it must be 0 (the code's value) "
                                         "or from {:g} to {:g}",
                                         name, x, bounds.least, bounds.most);
            }
        }
    });
    if (!settingsProblem.empty()) {
        return settingsProblem;
    }
    // A strength reduction factor only reduces: above 1 it can only be a slip (9 for 0.9).
    if (s.MomFiTxt > 1.0f || s.ShearFiTxt > 1.0f) {
        return "the strength reduction factors MomFiTxt and ShearFiTxt must not be above 1 "
               "(0 stands for the code's value)";
    }
    if (!outOfRange.empty()) {
        return outOfRange;
    }
    if (s.MAXDCALC > 0.0f && s.MINDCALC > s.MAXDCALC) {
        return fmt::format("the smallest main-bar diameter MINDCALC ({} mm) is larger than the "
                           "largest, MAXDCALC ({} mm)",
                           s.MINDCALC, s.MAXDCALC);
    }
    // The dead load always acts, and so does the live load of the span a case loads: a factor
    // of 0 there would design the beam for no load at all.
    if (!(s.FACDEADL[0] > 0.0f && s.FACDEADL[1] > 0.0f)) {
        return "the dead-load factors FACDEADL must both be more than 0";
    }
    if (!(s.FACDAYNL[0] > 0.0f)) {
        return "the first live-load factor FACDAYNL must be more than 0";
    }
    return {};
}

BeamSettings decodeBeamSettings(const core::RecordBuffer& rec) {
    BeamSettings s;
    core::decodeSettingsFields(kBeamSettingsLayout, rec, s);
    return s;
}

core::RecordBuffer encodeBeamSettings(const BeamSettings& settings) {
    return core::encodeSettingsRecord(kBeamSettingsLayout, settings);
}

BeamSettings readBeamSettingsFile(const fs::path& folder) {
    const BeamSettings settings = core::readSettingsFile(
        folder, kBeamSettingsFile, kBeamSettingsLayout, defaultBeamSettings());
    // Every new beam takes its copy from here: a damaged value is named now, not found later
    // in a design that cannot mean it.
    if (std::string problem = validateBeamSettings(settings); !problem.empty()) {
        problem[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(problem[0])));
        throw FileError(folder / kBeamSettingsFile,
                        fmt::format("{} holds a setting no design can use: {}. Open the beam "
                                    "settings and save them again, or restore the defaults.",
                                    kBeamSettingsFile, problem));
    }
    return settings;
}

void writeBeamSettingsFile(const fs::path& folder, const BeamSettings& settings) {
    core::writeSettingsRecord(folder, kBeamSettingsFile, encodeBeamSettings(settings));
}

} // namespace orvak::beams
