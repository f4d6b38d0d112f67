// The design job runner: designs the chosen elements of a project one after another, reports
// progress and a status per element, and puts each element's outputs in place as one set.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "bars/steel_store.h"
#include "core/output_batch.h"

namespace orvak::jobs {

enum class ElementStatus {
    Designed,     ///< every check passed
    ChecksFailed, ///< sheets and steel written; some checks fail (see failures)
    NotDesigned,  ///< nothing written for it: it cannot be analysed, or its outputs cannot be
};

/// What became of one element of a run.
struct ElementReport {
    std::string kind; ///< "beam", later "column group", "footing group"
    int floor = 0;
    int number = 0;
    std::string name; ///< as stored, in the project's code page
    ElementStatus status = ElementStatus::NotDesigned;
    std::vector<std::string> failures; ///< the system's sentences; empty when designed
    /// The element kind's own word for its outcome where the status says too little (a column
    /// group's "section too small"); empty otherwise.
    std::string outcome;
    std::vector<std::string> messages;        ///< notes for the engineer (e.g. the depth messages)
    std::vector<std::filesystem::path> files; ///< the sheets put in place
    std::size_t steelItems = 0;               ///< bar items recorded in the steel store
};

/// Everything the design of one element produces, before anything is written.
struct ElementOutputs {
    ElementReport report; ///< status, failures and messages; who it is, the runner fills in
    std::vector<core::OutputFile> files;        ///< the element's sheets
    std::vector<core::OutputFile> scratchFiles; ///< written with the sheets, not reported
    /// The element's bar items; they replace every item of (steelKind, floor, number).
    bool recordsSteel = false;
    bars::ElementKind steelKind = bars::ElementKind::None;
    std::vector<bars::SteelItem> items;
};

/// One element of a run: who it is, and how to design it. `design(last)` is told whether the
/// element ends the run (the beam analysis leaves its case files for that one only). It
/// throws InputError or FileError for a problem of that element alone.
struct JobElement {
    std::string kind;
    int floor = 0;
    int number = 0;
    std::string name;
    std::function<ElementOutputs(bool last)> design;
};

/// Hooks of a run; every one may be empty. `k` counts from 1 to `n`.
struct JobObserver {
    std::function<void(std::size_t k, std::size_t n, const JobElement&)> starting;
    std::function<void(std::size_t k, std::size_t n, const ElementReport&)> finished;
    /// Asked before each element; true stops the run there, keeping what is done.
    std::function<bool()> cancelRequested;
};

struct JobResult {
    std::vector<ElementReport> elements; ///< in the order designed
    bool cancelled = false;
    /// Elements that are not Designed.
    std::size_t failing() const;
};

/// The local time now through a strftime format ("%Y-%m-%d %H:%M" for a run's time, "%d-%m-%Y"
/// for the date of a report).
std::string localTimeText(const char* format);

/// Designs the elements in order. The run is one transaction of the project's steel store,
/// each element a savepoint of it: an element whose files cannot be staged, or that throws
/// InputError or FileError, is reported NotDesigned with that sentence, keeps its earlier
/// items and sheets, and the run goes on. The sheets are staged unsynced, made durable once,
/// recorded in the store with the run's items, and renamed into place after the commit, so a
/// run cut off anywhere (a kill, a power cut) leaves the items and sheets of the run before it
/// or those of this run, never a mix: the next open of the store completes the renames.
/// Inputs are never touched. Throws FileError when the store cannot be opened or loses the
/// run (then nothing of the run is kept), or when the sheets cannot be put in place at the
/// end; InputError, before anything is designed, when the project holds an older Iron.MDB
/// that is not imported yet.
JobResult runDesignJob(const std::filesystem::path& projectFolder,
                       const std::vector<JobElement>& elements, const JobObserver& observer = {});

/// An element edited after its design no longer stands: where the store records a state for
/// it, the state becomes "not designed" with `reason` and the time; its steel items stay as
/// designed until the next design. A project without a steel store has no state to change.
void markElementChanged(const std::filesystem::path& projectFolder, std::string_view kind,
                        int floor, int number, std::string_view reason);

/// An element that is gone (or whose number now belongs to another) leaves nothing behind:
/// its steel items of `steelKind` and its design state go.
void forgetElement(const std::filesystem::path& projectFolder, std::string_view kind,
                   bars::ElementKind steelKind, int floor, int number);

/// The design states the project's store records, for showing them: none where the project
/// has no store (looking makes none), an old store waits for its import, or the store cannot
/// be read (the next design run says why).
std::vector<bars::DesignState> recordedDesignStates(const std::filesystem::path& projectFolder);

} // namespace orvak::jobs
