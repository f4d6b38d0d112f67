// Design settings of beams: record codec of the settings fields, the built-in defaults and the
// BMSETING.DAT file.
#include "beams/beam_settings.h"

#include <type_traits>

#include "core/file_util.h"

namespace fs = std::filesystem;

namespace orvak::beams {

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

BeamSettings decodeBeamSettings(const core::RecordBuffer& rec) {
    BeamSettings s;
    forEachSettingsField(s, [&](std::string_view name, auto& value) {
        const core::FieldDef& f = kBeamSettingsLayout[name];
        using T = std::decay_t<decltype(value)>;
        if constexpr (std::is_same_v<T, std::int16_t>) {
            value = rec.getInt16(f);
        } else if constexpr (std::is_same_v<T, float>) {
            value = rec.getSingle(f);
        } else {
            for (std::size_t i = 0; i < value.size(); ++i) {
                value[i] = rec.getSingle(f, i);
            }
        }
    });
    return s;
}

core::RecordBuffer encodeBeamSettings(const BeamSettings& settings) {
    core::RecordBuffer rec = core::blankRecord(kBeamSettingsLayout);
    rec.setText(kBeamSettingsLayout["marker"], std::string(1, core::kUseMark));
    forEachSettingsField(settings, [&](std::string_view name, const auto& value) {
        const core::FieldDef& f = kBeamSettingsLayout[name];
        using T = std::decay_t<decltype(value)>;
        if constexpr (std::is_same_v<T, std::int16_t>) {
            rec.setInt16(f, value);
        } else if constexpr (std::is_same_v<T, float>) {
            rec.setSingle(f, value);
        } else {
            for (std::size_t i = 0; i < value.size(); ++i) {
                rec.setSingle(f, value[i], i);
            }
        }
    });
    return rec;
}

BeamSettings readBeamSettingsFile(const fs::path& folder) {
    const auto path = core::findFileNoCase(folder, kBeamSettingsFile);
    if (!path) {
        return defaultBeamSettings();
    }
    const auto file = core::RecordFile::load(*path, kBeamSettingsLayout.size);
    const core::RecordBuffer rec = file.read(1);
    return rec.inUse() ? decodeBeamSettings(rec) : defaultBeamSettings();
}

void writeBeamSettingsFile(const fs::path& folder, const BeamSettings& settings) {
    const fs::path path = core::resolveNoCase(folder, kBeamSettingsFile);
    auto file = core::RecordFile::load(path, kBeamSettingsLayout.size);
    file.write(1, encodeBeamSettings(settings));
    file.save();
}

} // namespace orvak::beams
