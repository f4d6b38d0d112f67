// Design settings of beams: the built-in defaults, and the settings record and BMSETING.DAT
// through the shared settings codec.
#include "beams/beam_settings.h"

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
    core::decodeSettingsFields(kBeamSettingsLayout, rec, s);
    return s;
}

core::RecordBuffer encodeBeamSettings(const BeamSettings& settings) {
    return core::encodeSettingsRecord(kBeamSettingsLayout, settings);
}

BeamSettings readBeamSettingsFile(const fs::path& folder) {
    return core::readSettingsFile(folder, kBeamSettingsFile, kBeamSettingsLayout,
                                  defaultBeamSettings());
}

void writeBeamSettingsFile(const fs::path& folder, const BeamSettings& settings) {
    core::writeSettingsRecord(folder, kBeamSettingsFile, encodeBeamSettings(settings));
}

} // namespace orvak::beams
