// Design settings of footings: defaults, checks and FOOTSSET.DAT through the shared settings
// codec.
#include "footings/footing_settings.h"

#include <cctype>
#include <cmath>

#include <fmt/format.h>

#include "core/error.h"

namespace fs = std::filesystem;

namespace orvak::footings {

FootingSettings defaultFootingSettings() {
    return FootingSettings{};
}

std::string validateFootingSettings(const FootingSettings& s) {
    if (s.Fc < 50 || s.Fc > 1000) {
        return fmt::format("the concrete strength Fc is {}: it must be 50 to 1000 kg/cm2", s.Fc);
    }
    if (s.FY < 1000 || s.FY > 10000) {
        return fmt::format("the steel strength FY is {}: it must be 1000 to 10000 kg/cm2", s.FY);
    }
    const auto within = [](float v, float least, float most) {
        return std::isfinite(v) && v >= least && v <= most;
    };
    // The plan area is the service load over the soil capacity: a capacity near zero asks for
    // a footing no plan can give.
    if (!within(s.soilCapacity, 0.1f, 50.0f)) {
        return "the soil bearing capacity must be 0.1 to 50 kg/cm2";
    }
    if (!within(s.coverCm, 2.0f, 20.0f)) {
        return "the steel cover must be 2 to 20 cm";
    }
    // Pu / (Pd + Pl): the factored load over the service load lies between the smallest and
    // the largest load factor of the code.
    if (!within(s.LF, 1.0f, 2.0f)) {
        return "the load factor LF must be 1 to 2";
    }
    if (!within(s.minSteelPercent, 0.05f, 2.0f)) {
        return "the least steel ratio must be 0.05 to 2 %";
    }
    if (!within(s.minDepthCm, 10.0f, 500.0f)) {
        return "the least depth MinDepth must be 10 to 500 cm";
    }
    // RowMax = FacRowmax · Rowb: more than the balanced ratio would allow a brittle section.
    if (!within(s.facRowmax, 0.1f, 1.0f)) {
        return "the factor FacRowmax must be 0.1 to 1";
    }
    return {};
}

FootingSettings decodeFootingSettings(const core::RecordBuffer& rec) {
    FootingSettings s;
    core::decodeSettingsFields(kFootingSettingsLayout, rec, s);
    return s;
}

core::RecordBuffer encodeFootingSettings(const FootingSettings& settings) {
    return core::encodeSettingsRecord(kFootingSettingsLayout, settings);
}

FootingSettings readFootingSettingsFile(const fs::path& general) {
    const auto rec =
        core::readSettingsRecord(general, kFootingSettingsFile, kFootingSettingsLayout.size);
    if (!rec) {
        return defaultFootingSettings();
    }
    const FootingSettings settings = decodeFootingSettings(*rec);
    if (std::string problem = validateFootingSettings(settings); !problem.empty()) {
        problem[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(problem[0])));
        throw FileError(general / kFootingSettingsFile,
                        fmt::format("{} holds a setting no design can use: {}. Open the footing "
                                    "settings and save them again, or restore the defaults.",
                                    kFootingSettingsFile, problem),
                        1);
    }
    return settings;
}

void writeFootingSettingsFile(const fs::path& general, const FootingSettings& settings) {
    if (const std::string problem = validateFootingSettings(settings); !problem.empty()) {
        throw InputError("The footing settings were not saved: " + problem + ".");
    }
    core::writeSettingsRecord(general, kFootingSettingsFile, encodeFootingSettings(settings));
}

} // namespace orvak::footings
