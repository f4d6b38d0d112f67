// Design settings of beams: the settings record of BMSETING.DAT (also copied into every beam
// record), its built-in defaults, and the code values that stand in for a setting left at 0.
#pragma once

#include <array>
#include <concepts>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <type_traits>

#include "beams/code_defaults.h"
#include "core/record.h"
#include "core/settings_fields.h"

namespace orvak::beams {

inline constexpr std::string_view kBeamSettingsFile = "BMSETING.DAT";

/// The settings record: a use mark, then every field in stored order. Q fields are bar
/// counts and D fields bar diameters (mm), both int16; Chk fields are int16 flags (1 on);
/// the rest are singles.
inline constexpr auto kBeamSettingsLayout = core::packFields<42>({{
    {"marker", core::FieldType::Text, 1},
    {"MINUPSQ", core::FieldType::Int16},
    {"MINUPSD", core::FieldType::Int16},
    {"MINDNSQ", core::FieldType::Int16},
    {"MINDNSD", core::FieldType::Int16},
    {"MINDNSQC", core::FieldType::Int16},
    {"MINDNSDC", core::FieldType::Int16},
    {"MINDIST", core::FieldType::Single},
    {"MINAREA", core::FieldType::Single},
    {"CutNgtvBarsChk", core::FieldType::Int16},
    {"MINLNGTV", core::FieldType::Single},
    {"MINDCALCNGTV", core::FieldType::Single},
    {"LIRONENDBL", core::FieldType::Single},
    {"LIRONENDBR", core::FieldType::Single},
    {"MINDCALC", core::FieldType::Single},
    {"MAXDCALC", core::FieldType::Single},
    {"SDIAMTXT", core::FieldType::Single},
    {"SSPCTXT", core::FieldType::Single},
    {"MinSSPCTXT", core::FieldType::Single},
    {"WIDTHLNK", core::FieldType::Single},
    {"angleheight", core::FieldType::Single, 0, 3},
    {"DSTXT", core::FieldType::Single, 0, 12},
    {"CONTBSTLCHK", core::FieldType::Int16},
    {"FACDEADL", core::FieldType::Single, 0, 2},
    {"FACDAYNL", core::FieldType::Single, 0, 2},
    {"DeflTxt", core::FieldType::Single},
    {"FacRmaxTxt", core::FieldType::Single},
    {"FacRminTxt", core::FieldType::Single},
    {"EsupBmFacTxt", core::FieldType::Single},
    {"VsMinTxt", core::FieldType::Single},
    {"MomFiTxt", core::FieldType::Single},
    {"ShearFiTxt", core::FieldType::Single},
    {"DevLenTxt", core::FieldType::Single},
    {"RedMomChk", core::FieldType::Int16},
    {"RedShrChk", core::FieldType::Int16},
    {"LdfactTxt", core::FieldType::Single},
    {"ShrContDpthTxt", core::FieldType::Single},
    {"MaxLenTxt", core::FieldType::Single},
    {"MinthicknessChk", core::FieldType::Int16},
    {"LFacTxt", core::FieldType::Single},
    {"THIKTXT", core::FieldType::Single, 0, 12},
}});
static_assert(kBeamSettingsLayout.size == 243, "beam settings records are 243 bytes");

/// The settings as stored. A value 0 (or less) of a field with a code fallback stands for the
/// code's value; read it through the effective...() accessors, never directly, in a design.
struct BeamSettings {
    std::int16_t MINUPSQ = 0;        ///< minimum count of top bars
    std::int16_t MINUPSD = 0;        ///< their diameter, mm
    std::int16_t MINDNSQ = 0;        ///< minimum count of bottom bars
    std::int16_t MINDNSD = 0;        ///< their diameter, mm
    std::int16_t MINDNSQC = 0;       ///< minimum count of bottom bars carried into the supports
    std::int16_t MINDNSDC = 0;       ///< their diameter, mm
    float MINDIST = 0;               ///< minimum clear distance between bars, cm
    float MINAREA = 0;               ///< steel area below which a bar row is not placed, cm²
    std::int16_t CutNgtvBarsChk = 0; ///< cut the top bars where no longer needed
    float MINLNGTV = 0;              ///< shortest top-bar length as a fraction of the span
    float MINDCALCNGTV = 0;          ///< smallest diameter of top bars, mm
    float LIRONENDBL = 0;            ///< top-bar extension at the left end, fraction of the span
    float LIRONENDBR = 0;            ///< top-bar extension at the right end, fraction of the span
    float MINDCALC = 0;              ///< smallest main-bar diameter, mm
    float MAXDCALC = 0;              ///< largest main-bar diameter, mm
    float SDIAMTXT = 0;              ///< stirrup diameter, mm
    float SSPCTXT = 0;               ///< largest stirrup spacing, cm
    float MinSSPCTXT = 0;            ///< smallest stirrup spacing, cm
    float WIDTHLNK = 0;              ///< web width above which stirrups get four legs, cm
    std::array<float, 3> angleheight{}; ///< bent-bar angle (degrees) and hook lengths (cm)
    std::array<float, 12> DSTXT{};      ///< main-bar diameters offered to the design, mm
    std::int16_t CONTBSTLCHK = 0;       ///< carry bottom bars continuously over supports
    std::array<float, 2> FACDEADL{};    ///< dead-load factor: loaded span, other spans
    std::array<float, 2> FACDAYNL{};    ///< live-load factor: loaded span, other spans
    float DeflTxt = 0;                  ///< deflection limit as the divisor n of L/n
    float FacRmaxTxt = 0;               ///< largest steel ratio as a fraction of the balanced ratio
    float FacRminTxt = 0;               ///< rho min = value / FY
    float EsupBmFacTxt = 0;             ///< moment factor at end supports resting on beams
    float VsMinTxt = 0;                 ///< shear stress for minimum stirrups, kg/cm²
    float MomFiTxt = 0;                 ///< strength reduction factor, flexure
    float ShearFiTxt = 0;               ///< strength reduction factor, shear
    float DevLenTxt = 0;                ///< multiplier of the development length
    std::int16_t RedMomChk = 0;         ///< design for the moment at the support face
    std::int16_t RedShrChk = 0;         ///< design for the shear at distance d from the face
    float LdfactTxt = 0;                ///< moment factor at the flagged end supports
    float ShrContDpthTxt = 0; ///< distance from the face to the critical shear section, in d
    float MaxLenTxt = 0;      ///< longest bar delivered, m
    std::int16_t MinthicknessChk = 0; ///< check the minimum depth instead of deflections
    float LFacTxt = 0;                ///< multiplier of the span in the minimum-depth check
    std::array<float, 12> THIKTXT{};  ///< divisors of the minimum depth L/x, see docs

    double effectiveFacRmax() const { return core::orDefault(FacRmaxTxt, kFacRmaxFallback); }
    double effectiveFacRmin() const { return core::orDefault(FacRminTxt, kFacRminFallback); }
    double effectiveMomFi() const { return core::orDefault(MomFiTxt, kMomFiFallback); }
    double effectiveLdfact() const { return core::orDefault(LdfactTxt, kLdFactFallback); }
    double effectiveShearFi() const { return core::orDefault(ShearFiTxt, kShearFiFallback); }
    double effectiveVsMin() const { return core::orDefault(VsMinTxt, kVsMinFallback); }

    bool operator==(const BeamSettings&) const = default;
};

/// The beam's field list for the settings codec of core/settings_fields.h: calls visit(name,
/// member) for every field in stored order; `S` is BeamSettings or const BeamSettings.
template <class S, class Visit>
requires std::same_as<std::remove_const_t<S>, BeamSettings>
void forEachSettingsField(S& s, Visit&& visit) {
    visit("MINUPSQ", s.MINUPSQ);
    visit("MINUPSD", s.MINUPSD);
    visit("MINDNSQ", s.MINDNSQ);
    visit("MINDNSD", s.MINDNSD);
    visit("MINDNSQC", s.MINDNSQC);
    visit("MINDNSDC", s.MINDNSDC);
    visit("MINDIST", s.MINDIST);
    visit("MINAREA", s.MINAREA);
    visit("CutNgtvBarsChk", s.CutNgtvBarsChk);
    visit("MINLNGTV", s.MINLNGTV);
    visit("MINDCALCNGTV", s.MINDCALCNGTV);
    visit("LIRONENDBL", s.LIRONENDBL);
    visit("LIRONENDBR", s.LIRONENDBR);
    visit("MINDCALC", s.MINDCALC);
    visit("MAXDCALC", s.MAXDCALC);
    visit("SDIAMTXT", s.SDIAMTXT);
    visit("SSPCTXT", s.SSPCTXT);
    visit("MinSSPCTXT", s.MinSSPCTXT);
    visit("WIDTHLNK", s.WIDTHLNK);
    visit("angleheight", s.angleheight);
    visit("DSTXT", s.DSTXT);
    visit("CONTBSTLCHK", s.CONTBSTLCHK);
    visit("FACDEADL", s.FACDEADL);
    visit("FACDAYNL", s.FACDAYNL);
    visit("DeflTxt", s.DeflTxt);
    visit("FacRmaxTxt", s.FacRmaxTxt);
    visit("FacRminTxt", s.FacRminTxt);
    visit("EsupBmFacTxt", s.EsupBmFacTxt);
    visit("VsMinTxt", s.VsMinTxt);
    visit("MomFiTxt", s.MomFiTxt);
    visit("ShearFiTxt", s.ShearFiTxt);
    visit("DevLenTxt", s.DevLenTxt);
    visit("RedMomChk", s.RedMomChk);
    visit("RedShrChk", s.RedShrChk);
    visit("LdfactTxt", s.LdfactTxt);
    visit("ShrContDpthTxt", s.ShrContDpthTxt);
    visit("MaxLenTxt", s.MaxLenTxt);
    visit("MinthicknessChk", s.MinthicknessChk);
    visit("LFacTxt", s.LFacTxt);
    visit("THIKTXT", s.THIKTXT);
}

/// The values the form's DefCmd restores (ACI strength design, metric bars).
BeamSettings defaultBeamSettings();

/// An empty string when a design can use the settings, else one sentence naming the first
/// setting at fault and the values it may take (0 stands for the code's value where there
/// is one).
std::string validateBeamSettings(const BeamSettings& settings);

/// Settings from the bytes of a settings record (the marker is not checked here).
BeamSettings decodeBeamSettings(const core::RecordBuffer& rec);
/// A settings record with the use mark "1".
core::RecordBuffer encodeBeamSettings(const BeamSettings& settings);

/// Record 1 of BMSETING.DAT in `folder`; the built-in defaults when the file is missing or
/// holds no record in use. Throws FileError when the file cannot be read, or holds a setting
/// that validateBeamSettings refuses (the sentence names the file and the setting).
BeamSettings readBeamSettingsFile(const std::filesystem::path& folder);
/// Writes record 1 of BMSETING.DAT in `folder`, crash-safely.
void writeBeamSettingsFile(const std::filesystem::path& folder, const BeamSettings& settings);

} // namespace orvak::beams
