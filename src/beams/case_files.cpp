// The case files of a beam analysis: the per-case copies of the beam record and the three
// result tables, removed at the start of a run and written when it succeeds.
#include "beams/case_files.h"

#include <system_error>

#include "core/error.h"
#include "core/file_util.h"

namespace fs = std::filesystem;

namespace orvak::beams {

namespace {

constexpr std::array<std::string_view, 4> kCaseFiles = {kLoadCasesFile, kCasesT1File, kCasesT2File,
                                                        kCasesT3File};

core::RecordBuffer stationRecord(int caseNumber, const CaseResult& c, int spanCount, bool moments) {
    const auto& L = kCaseStationsLayout;
    core::RecordBuffer rec = core::blankRecord(L);
    rec.setText(L["marker"], std::string(1, core::kUseMark));
    rec.setInt16(L["caseNumber"], static_cast<std::int16_t>(caseNumber));
    rec.setInt16(L["spanCount"], static_cast<std::int16_t>(spanCount));
    rec.setInt16(L["stationsPerSpan"], kStationsPerSpan);
    for (std::size_t i = 0; i < c.stations.size(); ++i) {
        const Station& st = c.stations[i];
        rec.setSingle(L["stationX"], static_cast<float>(st.xCm), i);
        rec.setSingle(L["stationValue"], static_cast<float>(moments ? st.momentKgCm : st.shearKg),
                      i);
    }
    return rec;
}

core::RecordBuffer resultRecord(int caseNumber, const CaseResult& c, int freeDofCount) {
    const auto& L = kCasesT1Layout;
    core::RecordBuffer rec = core::blankRecord(L);
    const auto single = [&](std::string_view name, double v, std::size_t i) {
        rec.setSingle(L[name], static_cast<float>(v), i);
    };
    rec.setText(L["marker"], std::string(1, core::kUseMark));
    rec.setInt16(L["caseNumber"], static_cast<std::int16_t>(caseNumber));
    rec.setInt16(L["caseKind"], static_cast<std::int16_t>(c.loadCase.kind));
    rec.setInt16(L["caseIndex"], static_cast<std::int16_t>(c.loadCase.index));
    rec.setInt32(L["liveSpans"], static_cast<std::int32_t>(c.loadCase.liveSpans));
    rec.setInt16(L["spanCount"], static_cast<std::int16_t>(c.spans.size()));
    rec.setInt16(L["freeDofCount"], static_cast<std::int16_t>(freeDofCount));
    for (std::size_t j = 0; j < c.supportMomentsKgCm.size(); ++j) {
        single("supportMoments", c.supportMomentsKgCm[j], j);
        single("reactions", c.reactionsKg[j], j);
        single("displacements", c.displacementsUpCm[j], j);
        single("rotations", c.rotations[j], j);
    }
    for (std::size_t s = 0; s < c.spans.size(); ++s) {
        const SpanForces& f = c.spans[s];
        single("endMoments", f.momentLeftKgCm, 2 * s);
        single("endMoments", f.momentRightKgCm, 2 * s + 1);
        single("endShears", f.shearLeftKg, 2 * s);
        single("endShears", f.shearRightKg, 2 * s + 1);
        single("spanMaxMoment", f.maxMoment.momentKgCm, s);
        single("spanMaxMomentX", f.maxMoment.xCm, s);
        single("spanMinMoment", f.minMoment.momentKgCm, s);
        single("spanMinMomentX", f.minMoment.xCm, s);
        single("spanAbsMaxShear", f.absMaxShearKg, s);
    }
    return rec;
}

} // namespace

BeamRecord caseRecord(const BeamRecord& beam, const LoadCase& loadCase, const LoadFactors& factors,
                      int caseScheme) {
    BeamRecord copy = beam;
    copy.caseScheme = static_cast<std::int16_t>(caseScheme);
    for (std::size_t s = 0; s < copy.spans.size(); ++s) {
        const SpanFactors f = spanFactors(loadCase, static_cast<int>(s), factors);
        for (StoredLoad& load : copy.spans[s].loads) {
            if (load.present) {
                load.dead = static_cast<float>(load.dead * f.dead + load.live * f.live);
                load.live = 0.0f;
            }
        }
    }
    return copy;
}

void removeCaseFiles(const fs::path& folder) {
    for (const std::string_view name : kCaseFiles) {
        if (const auto path = core::findFileNoCase(folder, name)) {
            std::error_code ec;
            fs::remove(*path, ec);
            if (ec) {
                throw FileError(*path, "The old case file cannot be deleted: " + ec.message());
            }
        }
    }
}

std::vector<core::OutputFile> caseFileOutputs(const fs::path& folder, const BeamRecord& beam,
                                              int caseScheme, const BeamAnalysisResult& result) {
    ORVAK_ASSERT(result.ok());
    const BeamAnalysisInput input = analysisInput(beam, caseScheme);
    core::RecordFile cases(folder / kLoadCasesFile, kBeamRecordLength);
    core::RecordFile t1(folder / kCasesT1File, kCasesT1Layout.size);
    core::RecordFile t2(folder / kCasesT2File, kCaseStationsLayout.size);
    core::RecordFile t3(folder / kCasesT3File, kCaseStationsLayout.size);
    const int spanCount = static_cast<int>(beam.spans.size());
    for (std::size_t i = 0; i < result.cases.size(); ++i) {
        const CaseResult& c = result.cases[i];
        const int number = static_cast<int>(i) + 1;
        BeamRecord copy = caseRecord(beam, c.loadCase, input.factors, caseScheme);
        copy.freeDofCount = static_cast<std::int16_t>(result.freeDofCount);
        cases.write(i + 1, encodeBeamRecord(copy));
        t1.write(i + 1, resultRecord(number, c, result.freeDofCount));
        t2.write(i + 1, stationRecord(number, c, spanCount, true));
        t3.write(i + 1, stationRecord(number, c, spanCount, false));
    }
    std::vector<core::OutputFile> files;
    for (const core::RecordFile* f : {&cases, &t1, &t2, &t3}) {
        const std::vector<std::uint8_t> image = f->image();
        files.push_back({f->path(), std::string(image.begin(), image.end())});
    }
    return files;
}

void writeCaseFiles(const fs::path& folder, const BeamRecord& beam, int caseScheme,
                    const BeamAnalysisResult& result) {
    core::saveTogether(caseFileOutputs(folder, beam, caseScheme, result));
}

BeamAnalysisResult analyseBeamWithCaseFiles(const fs::path& folder, const BeamRecord& beam,
                                            int caseScheme) {
    removeCaseFiles(folder);
    BeamAnalysisResult result = analyzeBeam(analysisInput(beam, caseScheme));
    if (result.ok()) {
        writeCaseFiles(folder, beam, caseScheme, result);
    }
    return result;
}

} // namespace orvak::beams
