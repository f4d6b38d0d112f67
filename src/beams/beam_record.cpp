// The beam record: codec of the 16,699-byte record, the checks of a beam, the floor's beam
// file and the translation of a stored beam into the analysis engine's input.
#include "beams/beam_record.h"

#include <algorithm>
#include <cmath>

#include <fmt/format.h>

#include "core/concrete.h"
#include "core/error.h"
#include "core/file_util.h"
#include "core/settings_fields.h"
#include "core/tolerances.h"
#include "floors/floors.h"

namespace fs = std::filesystem;

namespace orvak::beams {

namespace {

const core::FieldDef& field(std::string_view name) {
    return kBeamRecordLayout[name];
}

std::size_t tableIndex(std::size_t span, std::size_t kindIndex) {
    return span * kLoadTableKinds + kindIndex;
}

std::size_t valueIndex(std::size_t span, std::size_t kindIndex, std::size_t value) {
    return (span * kLoadKindCount + kindIndex) * kLoadValuesPerLoad + value;
}

bool finite(float v) {
    return std::isfinite(v);
}

constexpr std::array<const char*, kLoadKindCount> kLoadNames = {"uniform", "triangular", "partial",
                                                                "point"};

} // namespace

BeamRecord decodeBeamRecord(const core::RecordBuffer& rec, std::string& error) {
    error.clear();
    BeamRecord b;
    b.name = rec.getTrimmedText(field("name"));
    b.floor = rec.getInt16(field("floor"));
    b.number = rec.getInt16(field("number"));
    b.fc = rec.getSingle(field("fc"));
    b.fyMain = rec.getSingle(field("fyMain"));
    b.fyStirrups = rec.getSingle(field("fyStirrups"));
    b.coverTopCm = rec.getSingle(field("coverTop"));
    b.coverBottomCm = rec.getSingle(field("coverBottom"));
    b.coverSideCm = rec.getSingle(field("coverSide"));
    b.caseScheme = rec.getInt16(field("caseScheme"));
    b.freeDofCount = rec.getInt16(field("freeDofCount"));
    // Records written before these two fields existed hold blanks there: no sustained live
    // load and the default duration.
    const auto singleOrZero = [&rec](const core::FieldDef& f) {
        const auto at = rec.bytes().begin() + static_cast<std::ptrdiff_t>(f.offset);
        return std::all_of(at, at + 4, [](std::uint8_t c) { return c == ' '; }) ? 0.0f
                                                                                : rec.getSingle(f);
    };
    b.sustainedLivePercent = singleOrZero(field("sustainedLivePercent"));
    b.liveLoadMonths = singleOrZero(field("liveLoadMonths"));
    const core::FieldDef& settings = field("settings");
    b.settings = decodeBeamSettings(core::RecordBuffer(std::vector<std::uint8_t>(
        rec.bytes().begin() + static_cast<std::ptrdiff_t>(settings.offset),
        rec.bytes().begin() + static_cast<std::ptrdiff_t>(settings.end()))));

    const int supportCount = rec.getInt16(field("supportCount"));
    if (supportCount < 0 || supportCount > kMaxSupports) {
        error = fmt::format("the number of supports {} is not between 0 and {}", supportCount,
                            kMaxSupports);
        return b;
    }
    const std::size_t spans = supportCount > 0 ? static_cast<std::size_t>(supportCount) - 1 : 0;
    b.spans.resize(spans);
    for (std::size_t s = 0; s < spans; ++s) {
        StoredSpan& span = b.spans[s];
        span.sectionKind = rec.getInt16(field("sectionKind"), s);
        for (std::size_t d = 0; d < 5; ++d) {
            span.dims[d] = rec.getSingle(field("sectionDims"), s * 5 + d);
        }
        span.lengthM = rec.getSingle(field("spanLength"), s);
        span.trianglePeakLeft = rec.getInt16(field("trianglePeak"), s) == 1;
        for (std::size_t k = 0; k < kLoadKindCount; ++k) {
            StoredLoad& load = span.loads[k];
            load.present = rec.getInt16(field("loadPresent"), tableIndex(s, k)) != 0;
            load.dead = rec.getSingle(field("loadValues"), valueIndex(s, k, 0));
            load.live = rec.getSingle(field("loadValues"), valueIndex(s, k, 1));
            load.spare = rec.getSingle(field("loadValues"), valueIndex(s, k, 2));
            load.startM = rec.getSingle(field("loadPlacement"), tableIndex(s, k));
            load.lengthM = rec.getSingle(field("loadLength"), tableIndex(s, k));
        }
    }
    b.supports.resize(static_cast<std::size_t>(supportCount));
    for (std::size_t j = 0; j < b.supports.size(); ++j) {
        StoredSupport& sup = b.supports[j];
        sup.code = rec.getInt16(field("supportCode"), j);
        sup.second = rec.getInt16(field("supportSecond"), j);
        sup.widthCm = rec.getSingle(field("supportValues"), 2 * j);
        sup.value2 = rec.getSingle(field("supportValues"), 2 * j + 1);
    }
    return b;
}

core::RecordBuffer encodeBeamRecord(const BeamRecord& b) {
    ORVAK_ASSERT(b.spans.size() <= static_cast<std::size_t>(kMaxSpans));
    ORVAK_ASSERT(b.supports.size() == b.spans.size() + 1);
    core::RecordBuffer rec = core::blankRecord(kBeamRecordLayout);
    rec.setText(field("marker"), std::string(1, core::kUseMark));
    rec.setText(field("name"), b.name);
    rec.setInt16(field("floor"), b.floor);
    rec.setInt16(field("number"), b.number);
    rec.setInt16(field("supportCount"), static_cast<std::int16_t>(b.supports.size()));
    rec.setSingle(field("fc"), b.fc);
    rec.setSingle(field("fyMain"), b.fyMain);
    rec.setSingle(field("fyStirrups"), b.fyStirrups);
    rec.setSingle(field("coverTop"), b.coverTopCm);
    rec.setSingle(field("coverBottom"), b.coverBottomCm);
    rec.setSingle(field("coverSide"), b.coverSideCm);
    rec.setInt16(field("caseScheme"), b.caseScheme);
    rec.setInt16(field("freeDofCount"), b.freeDofCount);
    rec.setSingle(field("sustainedLivePercent"), b.sustainedLivePercent);
    rec.setSingle(field("liveLoadMonths"), b.liveLoadMonths);
    for (std::size_t s = 0; s < b.spans.size(); ++s) {
        const StoredSpan& span = b.spans[s];
        rec.setInt16(field("sectionKind"), span.sectionKind, s);
        for (std::size_t d = 0; d < 5; ++d) {
            rec.setSingle(field("sectionDims"), span.dims[d], s * 5 + d);
        }
        rec.setSingle(field("spanLength"), span.lengthM, s);
        rec.setInt16(field("trianglePeak"), span.trianglePeakLeft ? 1 : 0, s);
        for (std::size_t k = 0; k < kLoadKindCount; ++k) {
            const StoredLoad& load = span.loads[k];
            rec.setInt16(field("loadPresent"), load.present ? 1 : 0, tableIndex(s, k));
            rec.setSingle(field("loadValues"), load.dead, valueIndex(s, k, 0));
            rec.setSingle(field("loadValues"), load.live, valueIndex(s, k, 1));
            rec.setSingle(field("loadValues"), load.spare, valueIndex(s, k, 2));
            rec.setSingle(field("loadPlacement"), load.startM, tableIndex(s, k));
            rec.setSingle(field("loadLength"), load.lengthM, tableIndex(s, k));
        }
    }
    for (std::size_t j = 0; j < b.supports.size(); ++j) {
        rec.setInt16(field("supportCode"), b.supports[j].code, j);
        rec.setInt16(field("supportSecond"), b.supports[j].second, j);
        rec.setSingle(field("supportValues"), b.supports[j].widthCm, 2 * j);
        rec.setSingle(field("supportValues"), b.supports[j].value2, 2 * j + 1);
    }
    const core::RecordBuffer settings = encodeBeamSettings(b.settings);
    std::copy(settings.bytes().begin(), settings.bytes().end(),
              rec.bytes().begin() + static_cast<std::ptrdiff_t>(field("settings").offset));
    return rec;
}


std::string validateBeam(const BeamRecord& b) {
    if (b.name.size() > field("name").width) {
        return fmt::format("the name is longer than {} characters", field("name").width);
    }
    if (b.number > kMaxBeamsPerFloor) {
        return fmt::format("a floor holds at most {} beams (the steel quantities number them in "
                           "three digits); this is beam {}",
                           kMaxBeamsPerFloor, b.number);
    }
    if (b.spans.empty() || b.spans.size() > static_cast<std::size_t>(kMaxSpans)) {
        return fmt::format("a beam has 1 to {} spans, not {}", kMaxSpans, b.spans.size());
    }
    if (b.supports.size() != b.spans.size() + 1) {
        return fmt::format("a beam of {} spans needs {} supports, not {}", b.spans.size(),
                           b.spans.size() + 1, b.supports.size());
    }
    const auto positiveValue = [](float v) { return finite(v) && v > 0.0f; };
    if (!positiveValue(b.fc) || b.fc > kMaxFcKgCm2) {
        return fmt::format("fc must be more than 0 and at most {} kg/cm2", kMaxFcKgCm2);
    }
    if (!positiveValue(b.fyMain) || b.fyMain > kMaxFyKgCm2) {
        return fmt::format("fy must be more than 0 and at most {} kg/cm2", kMaxFyKgCm2);
    }
    if (!positiveValue(b.fyStirrups) || b.fyStirrups > kMaxFyKgCm2) {
        return fmt::format("fy_stirrups must be more than 0 and at most {} kg/cm2", kMaxFyKgCm2);
    }
    for (const float c : {b.coverTopCm, b.coverBottomCm, b.coverSideCm}) {
        if (!finite(c) || c < 0.0f || c > kMaxCoverCm) {
            return fmt::format("the covers must be 0 to {} cm", kMaxCoverCm);
        }
    }
    if (std::string problem = validateBeamSettings(b.settings); !problem.empty()) {
        return problem;
    }
    if (!finite(b.sustainedLivePercent) || b.sustainedLivePercent < 0.0f ||
        b.sustainedLivePercent > 100.0f) {
        return "the sustained part of the live load must be 0 to 100 %";
    }
    if (!finite(b.liveLoadMonths) || b.liveLoadMonths < 0.0f) {
        return "the live load duration must be 0 months or more (0: 60 months)";
    }
    for (std::size_t j = 0; j < b.supports.size(); ++j) {
        const StoredSupport& sup = b.supports[j];
        if (!finite(sup.widthCm) || sup.widthCm < 0.0f || sup.widthCm > kMaxSupportWidthCm) {
            return fmt::format("support {}: the width must be 0 to {} cm", j + 1,
                               kMaxSupportWidthCm);
        }
        if (!finite(sup.value2)) {
            return fmt::format("support {}: its second value is not a number", j + 1);
        }
        if (sup.second == 1 && sup.code != 2) {
            return fmt::format("support {}: a free joint cannot be fixed (only a supported "
                               "joint, code 2, can restrain the rotation)",
                               j + 1);
        }
    }
    // A continuous beam without hinges needs two supports, or one that is fixed.
    int supported = 0;
    bool anyFixed = false;
    for (const StoredSupport& sup : b.supports) {
        supported += sup.code == 2 ? 1 : 0;
        anyFixed = anyFixed || (sup.code == 2 && sup.second == 1);
    }
    if (supported == 0) {
        return "no joint is supported: at least one support needs code 2";
    }
    if (supported == 1 && !anyFixed) {
        return "the beam rests on one hinged support and would turn about it: add a support "
               "or fix this one";
    }
    for (std::size_t s = 0; s < b.spans.size(); ++s) {
        const StoredSpan& span = b.spans[s];
        const std::size_t n = s + 1;
        if (!positiveValue(span.lengthM)) {
            return fmt::format("span {}: the length must be more than 0 m", n);
        }
        if (span.lengthM < kMinSpanLengthM) {
            return fmt::format("span {}: the length must be at least {} m", n, kMinSpanLengthM);
        }
        if (span.lengthM > kMaxSpanLengthM) {
            return fmt::format("span {}: the length must be at most {} m", n, kMaxSpanLengthM);
        }
        for (const float d : span.dims) {
            if (!finite(d) || d < 0.0f) {
                return fmt::format("span {}: the section dimensions must be 0 cm or more", n);
            }
            if (d > kMaxSectionCm) {
                return fmt::format("span {}: the section dimensions must be at most {} cm", n,
                                   kMaxSectionCm);
            }
        }
        std::string sectionError;
        const auto geometry = sectionGeometry(span.sectionKind, span.dims, sectionError);
        if (!geometry) {
            // The section's sentence as a clause: "span 2: the web width ...".
            if (!sectionError.empty() && sectionError.back() == '.') {
                sectionError.pop_back();
            }
            if (!sectionError.empty() && sectionError[0] >= 'A' && sectionError[0] <= 'Z') {
                sectionError[0] = static_cast<char>(sectionError[0] - 'A' + 'a');
            }
            return fmt::format("span {}: {}", n, sectionError);
        }
        if (geometry->heightCm <= b.coverTopCm + b.coverBottomCm) {
            return fmt::format("span {}: the section is not higher than its two covers", n);
        }
        for (std::size_t k = 0; k < kLoadKindCount; ++k) {
            const StoredLoad& load = span.loads[k];
            if (!load.present) {
                continue;
            }
            const char* kind = kLoadNames[k];
            if (!finite(load.dead) || !finite(load.live) || !finite(load.spare)) {
                return fmt::format("span {}, {} load: the value is not a number", n, kind);
            }
            const bool point = static_cast<LoadKind>(k + 1) == LoadKind::Concentrated;
            const float most = point ? kMaxPointLoadT : kMaxDistributedLoadTm;
            if (std::abs(load.dead) > most || std::abs(load.live) > most) {
                return fmt::format("span {}, {} load: dead and live must each lie within ±{} {}", n,
                                   kind, most, point ? "t" : "t/m");
            }
            if (!finite(load.startM) || !finite(load.lengthM)) {
                return fmt::format("span {}, {} load: the position is not a number", n, kind);
            }
            const auto kindId = static_cast<LoadKind>(k + 1);
            // Positions are singles: a load typed to end at the support (1.2 + 4.8 on 6 m)
            // may add up a rounding above the span, which is no error.
            const double slack = core::kSingleRounding * span.lengthM;
            if (kindId == LoadKind::PartialUniform) {
                if (load.startM < 0.0f || load.lengthM <= 0.0f ||
                    static_cast<double>(load.startM) + load.lengthM > span.lengthM + slack) {
                    return fmt::format("span {}, partial load: a_m and length_m must lie within "
                                       "the span of {} m, with length_m more than 0",
                                       n, span.lengthM);
                }
            }
            if (kindId == LoadKind::Concentrated &&
                (load.startM < 0.0f || load.startM > span.lengthM)) {
                return fmt::format("span {}, point load: a_m must lie within the span of {} m", n,
                                   span.lengthM);
            }
        }
    }
    return {};
}

std::vector<BeamRecord> readBeamFile(const fs::path& projectFolder, int floor) {
    std::vector<BeamRecord> beams;
    const auto path = core::findFileNoCase(projectFolder, floors::beamFileName(floor));
    if (!path) {
        return beams;
    }
    const auto file =
        core::RecordFile::load(*path, kBeamRecordLength, core::RecordFile::Count::WholeOnly);
    for (std::size_t n = 1; n <= file.count(); ++n) {
        const core::RecordBuffer rec = file.read(n);
        if (!rec.inUse()) {
            continue;
        }
        if (n > static_cast<std::size_t>(kMaxBeamsPerFloor)) {
            throw FileError(*path,
                            fmt::format("A floor holds at most {} beams; this file has a beam in "
                                        "record {}",
                                        kMaxBeamsPerFloor, n),
                            static_cast<std::int64_t>(n), 0);
        }
        std::string error;
        BeamRecord beam = decodeBeamRecord(rec, error);
        // The file and the record number say which beam this is; the copies inside the
        // record only repeat them, and a damaged copy must not send the beam's listings and
        // steel to another floor's beam.
        beam.floor = static_cast<std::int16_t>(floor);
        beam.number = static_cast<std::int16_t>(n);
        if (!error.empty()) {
            throw FileError(*path, "The beam record is corrupt: " + error,
                            static_cast<std::int64_t>(n),
                            static_cast<std::int64_t>(field("supportCount").offset));
        }
        beams.push_back(std::move(beam));
    }
    return beams;
}

core::RecordFile beamFileImage(const fs::path& projectFolder, int floor,
                               const std::vector<BeamRecord>& beams) {
    core::RecordFile file(core::resolveNoCase(projectFolder, floors::beamFileName(floor)),
                          kBeamRecordLength);
    for (std::size_t i = 0; i < beams.size(); ++i) {
        file.write(i + 1, encodeBeamRecord(beams[i]));
    }
    return file;
}

void writeBeamFile(const fs::path& projectFolder, int floor, const std::vector<BeamRecord>& beams) {
    beamFileImage(projectFolder, floor, beams).save();
}

BeamAnalysisInput analysisInput(const BeamRecord& b, int caseScheme) {
    constexpr double kCmPerM = 100.0;
    constexpr double kKgCmPerTm = 10.0; // 1 t/m = 1000 kg / 100 cm
    constexpr double kKgPerT = 1000.0;
    BeamAnalysisInput in;
    in.caseScheme = caseScheme;
    in.elasticModulusKgCm2 = core::concreteModulus(b.fc);
    in.factors.dead = {b.settings.FACDEADL[0], b.settings.FACDEADL[1]};
    in.factors.live = {b.settings.FACDAYNL[0], b.settings.FACDAYNL[1]};
    for (const StoredSpan& span : b.spans) {
        BeamSpan out;
        out.lengthCm = span.lengthM * kCmPerM;
        std::string error;
        const auto geometry = sectionGeometry(span.sectionKind, span.dims, error);
        ORVAK_ASSERT(geometry.has_value());
        out.inertiaCm4 = grossInertiaCm4(*geometry);
        for (std::size_t k = 0; k < kLoadKindCount; ++k) {
            const StoredLoad& stored = span.loads[k];
            SpanLoad& load = out.loads[k];
            if (!stored.present) {
                continue;
            }
            const double unit =
                static_cast<LoadKind>(k + 1) == LoadKind::Concentrated ? kKgPerT : kKgCmPerTm;
            load.present = true;
            load.deadValue = stored.dead * unit;
            load.liveValue = stored.live * unit;
            load.startCm = stored.startM * kCmPerM;
            load.lengthCm = stored.lengthM * kCmPerM;
            if (static_cast<LoadKind>(k + 1) == LoadKind::PartialUniform) {
                // A load that reaches the support within the rounding of its singles ends
                // there.
                load.lengthCm = std::min(load.lengthCm, out.lengthCm - load.startCm);
            }
            load.peak = span.trianglePeakLeft ? TrianglePeak::AtLeft : TrianglePeak::AtRight;
        }
        in.spans.push_back(out);
    }
    for (const StoredSupport& sup : b.supports) {
        in.supports.push_back(supportFromCodes(sup.code, sup.second));
    }
    return in;
}

} // namespace orvak::beams
