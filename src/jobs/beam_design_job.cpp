// Beams in the design job runner: the choice of beams and the design of each into its outputs.
#include "jobs/beam_design_job.h"

#include <fmt/format.h>

#include <optional>

#include "beams/beam_job.h"
#include "beams/beam_report.h"
#include "beams/case_files.h"
#include "core/error.h"
#include "core/file_util.h"
#include "floors/floors.h"
#include "shell/project_record.h"

namespace orvak::jobs {

namespace {

ElementStatus elementStatus(beams::BeamJobStatus status) {
    switch (status) {
    case beams::BeamJobStatus::Designed:
        return ElementStatus::Designed;
    case beams::BeamJobStatus::ChecksFailed:
        return ElementStatus::ChecksFailed;
    case beams::BeamJobStatus::AnalysisFailed:
        break;
    }
    return ElementStatus::NotDesigned;
}

// The head of the beams' report documents: the project's title lines as GEN.CST holds them
// (read without the write-back of a blank sheet name: a design writes no input) and today.
beams::ReportHead reportHead(const std::filesystem::path& project, core::CodePage page) {
    beams::ReportHead head;
    head.page = page;
    if (const auto file = core::findFileNoCase(project, shell::kProjectRecordFile)) {
        if (const auto bytes = core::readWholeFile(*file);
            bytes && bytes->size() >= shell::kGenCstLayout.size) {
            const shell::ProjectRecord record =
                shell::decodeProjectRecord(core::RecordBuffer(std::vector<std::uint8_t>(
                    bytes->begin(),
                    bytes->begin() + static_cast<std::ptrdiff_t>(shell::kGenCstLayout.size))));
            if (record.valid) {
                head.titleLines.assign(record.titleLines.begin(), record.titleLines.end());
            }
        }
    }
    head.date = localTimeText("%d-%m-%Y");
    return head;
}

} // namespace

std::vector<beams::BeamRecord> chooseBeams(const std::filesystem::path& project,
                                           const BeamSelection& o, core::CodePage page) {
    std::vector<floors::Floor> chosenFloors;
    for (const auto& f : floors::readFloors(project)) {
        if (o.floor == 0 || f.number == o.floor) {
            chosenFloors.push_back(f);
        }
    }
    if (o.floor != 0 && chosenFloors.empty()) {
        throw InputError(fmt::format("The project has no floor {}.", o.floor));
    }
    // Every chosen beam is read and checked before the first one is designed, so that a bad
    // record stops the run before anything is written.
    std::vector<beams::BeamRecord> chosen;
    for (const auto& f : chosenFloors) {
        bool found = false;
        for (auto& record : beams::readBeamFile(project, f.number)) {
            if (o.beam != 0 && record.number != o.beam) {
                continue;
            }
            found = true;
            const std::string problem = beams::validateBeam(record);
            if (!problem.empty()) {
                throw InputError(fmt::format("Floor {}, beam {} ({}): {}. Nothing was designed.",
                                             record.floor, record.number,
                                             core::toUtf8(record.name, page), problem));
            }
            chosen.push_back(std::move(record));
        }
        if (o.beam != 0 && o.floor != 0 && !found) {
            throw InputError(fmt::format("Floor {} has no beam {}.", f.number, o.beam));
        }
    }
    if (chosen.empty()) {
        throw InputError(o.beam != 0 ? fmt::format("No floor of the project has a beam {}.", o.beam)
                                     : std::string("The project has no beam to design."));
    }
    return chosen;
}

JobResult designBeams(const std::filesystem::path& project,
                      const std::vector<beams::BeamRecord>& beams,
                      const std::vector<bars::BarProperties>& barTable, int scheme,
                      const JobObserver& observer, core::CodePage page) {
    const beams::ReportHead head = reportHead(project, page);
    std::vector<JobElement> elements;
    elements.reserve(beams.size());
    for (const beams::BeamRecord& record : beams) {
        JobElement e;
        e.kind = std::string(kBeamKind);
        e.floor = record.floor;
        e.number = record.number;
        e.name = record.name;
        e.design = [&project, &record, &barTable, scheme, &head](bool last) {
            beams::BeamDesignOutputs design =
                beams::designBeamOutputs(project, record, barTable, scheme);
            ElementOutputs out;
            out.report.status = elementStatus(design.status);
            out.report.failures = std::move(design.failures);
            out.report.messages = std::move(design.messages);
            if (out.report.status == ElementStatus::NotDesigned) {
                return out;
            }
            out.files = std::move(design.listings);
            out.files.push_back(
                {project / (beams::listingBaseName(record) + std::string(beams::kReportExt)),
                 beams::beamReportRtf(head, record, out.files)});
            // The case files are the interactive analysis's scratch files: a run leaves them
            // holding its last beam, written with that beam's other outputs.
            if (last) {
                out.scratchFiles = beams::caseFileOutputs(project, record, scheme, design.analysis);
            }
            out.recordsSteel = true;
            out.steelKind = beams::kBeamSteelKind;
            out.items = std::move(design.items);
            return out;
        };
        elements.push_back(std::move(e));
    }
    beams::removeCaseFiles(project);
    return runDesignJob(project, elements, observer);
}

ElementReport designStoredBeam(const std::filesystem::path& project,
                               const std::filesystem::path& generalFolder, int floor,
                               int beamNumber, int scheme, core::CodePage page) {
    const std::vector<beams::BeamRecord> one = chooseBeams(project, {floor, beamNumber}, page);
    const bars::BarPropertyTable table = beams::designBarTable(generalFolder);
    return designBeams(project, one, table.rows, scheme, {}, page).elements.front();
}

void markBeamChanged(const std::filesystem::path& projectFolder, int floor, int beamNumber) {
    markElementChanged(projectFolder, kBeamKind, floor, beamNumber, kChangedAfterDesign);
}

void forgetBeam(const std::filesystem::path& projectFolder, int floor, int beamNumber) {
    forgetElement(projectFolder, kBeamKind, bars::ElementKind::Slab, floor, beamNumber);
}

} // namespace orvak::jobs
