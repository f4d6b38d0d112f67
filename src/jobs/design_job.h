// The design job runner: designs the chosen elements of a project one after another, reports
// progress and a status per element, and puts each element's outputs in place as one set.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
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
    std::vector<std::string> failures;        ///< the system's sentences; empty when designed
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

/// Designs the elements in order. Each element's steel items are replaced and its files
/// staged inside one transaction of the project's steel store: if its files cannot be
/// written, its items stay as they were, and the other way round. An element that throws
/// InputError or FileError is reported NotDesigned with that sentence and the run goes on.
/// Outputs are derived data: they are written unsynced and made durable once, at the end of
/// the run (files flushed, then renamed over their targets; the store's log checkpointed), so
/// a power cut during a run may lose the run's outputs but never an input, and never leaves a
/// sheet that looks whole and is not. Throws FileError when the store cannot be opened or the
/// outputs cannot be put in place at the end, and InputError, before anything is designed,
/// when the project holds an older Iron.MDB that is not imported yet.
JobResult runDesignJob(const std::filesystem::path& projectFolder,
                       const std::vector<JobElement>& elements, const JobObserver& observer = {});

} // namespace orvak::jobs
