// The design job runner: one transaction per element, outputs staged and made durable once.
#include "jobs/design_job.h"

#include <optional>

#include <fmt/format.h>

#include "core/error.h"

namespace orvak::jobs {

namespace {

// Elements whose steel items one transaction of the store takes: their shared pages are
// written once per group, and a group holds the store's write lock for well under a second.
constexpr std::size_t kElementsPerGroup = 25;

// An element that could not be designed or written: its transaction has rolled back, and the
// files it staged go too.
void failElement(ElementReport& report, core::OutputBatch& batch, std::size_t mark,
                 const char* sentence) {
    batch.discardFrom(mark);
    report.status = ElementStatus::NotDesigned;
    report.failures.assign(1, sentence);
    report.files.clear();
    report.steelItems = 0;
}

} // namespace

std::size_t JobResult::failing() const {
    std::size_t n = 0;
    for (const ElementReport& e : elements) {
        n += e.status == ElementStatus::Designed ? 0 : 1;
    }
    return n;
}

JobResult runDesignJob(const std::filesystem::path& projectFolder,
                       const std::vector<JobElement>& elements, const JobObserver& observer) {
    // A design would start a new steel store beside the old one, and the old items would never
    // be imported: the engineer decides first.
    if (bars::legacyImportOffered(projectFolder)) {
        throw InputError("The project holds the steel quantities of an older version (Iron.MDB) "
                         "that are not imported yet. Import them first ('orvak-cli steel "
                         "import' or the steel forms), or move Iron.MDB out of the project "
                         "folder, then design again.");
    }
    JobResult result;
    core::OutputBatch batch(core::OutputBatch::Durability::PerRun);
    std::optional<bars::IronDatabase> store;
    const std::size_t n = elements.size();
    const bool grouped = n > 1;
    // Where the store's open group began: its elements' items land with its commit, and
    // their sheets must not be put in place unless it does.
    std::size_t groupMark = 0;
    std::size_t groupFirst = 0;
    // The store lost a whole group (a full disk, a failed commit): the sheets staged since the
    // group began go, those of the groups before are put in place with their items, and the
    // run stops with the reason.
    const auto stopRun = [&](const std::string& reason) {
        batch.discardFrom(groupMark);
        batch.commit();
        try {
            store->flushDeferred();
        } catch (const FileError&) {
        }
        std::string where = "the elements designed before it have their new sheets and items";
        if (groupFirst < n) {
            const JobElement& from = elements[groupFirst];
            where = fmt::format("the elements designed before floor {}, {} {} have their new "
                                "sheets and items; it and the ones after keep their earlier ones",
                                from.floor, from.kind, from.number);
        }
        throw FileError(projectFolder,
                        fmt::format("The steel store could not keep the run's items ({}). The run "
                                    "stopped: {}.",
                                    reason, where));
    };
    for (std::size_t i = 0; i < n; ++i) {
        if (observer.cancelRequested && observer.cancelRequested()) {
            result.cancelled = true;
            break;
        }
        const JobElement& element = elements[i];
        if (observer.starting) {
            observer.starting(i + 1, n, element);
        }
        ElementReport report;
        const std::size_t mark = batch.staged();
        try {
            ElementOutputs out = element.design(i + 1 == n);
            report = std::move(out.report);
            if (report.status != ElementStatus::NotDesigned) {
                auto stage = [&] {
                    batch.stage(out.files);
                    batch.stage(out.scratchFiles);
                };
                if (out.recordsSteel) {
                    if (!store) {
                        bars::IronDatabase db = bars::OpenIronDatabase(projectFolder);
                        // One element commits as any save does; a longer run defers the
                        // store's flushes to its end.
                        if (grouped) {
                            db.deferDurability();
                            db.beginGroup();
                        }
                        store.emplace(std::move(db));
                    }
                    store->replaceElementItems(
                        out.steelKind, static_cast<std::int16_t>(element.floor),
                        static_cast<std::int16_t>(element.number), out.items, stage);
                    report.steelItems = out.items.size();
                } else {
                    stage();
                }
                for (const core::OutputFile& f : out.files) {
                    report.files.push_back(f.path);
                }
            }
        } catch (const FileError& e) {
            if (store && store->groupLost()) {
                stopRun(e.what());
            }
            failElement(report, batch, mark, e.what());
        } catch (const InputError& e) {
            failElement(report, batch, mark, e.what());
        }
        // Who the element is comes from the run's list, whatever its design filled in.
        report.kind = element.kind;
        report.floor = element.floor;
        report.number = element.number;
        report.name = element.name;
        if (observer.finished) {
            observer.finished(i + 1, n, report);
        }
        result.elements.push_back(std::move(report));
        if (store && grouped && (i + 1) % kElementsPerGroup == 0) {
            try {
                store->commitGroup();
            } catch (const FileError& e) {
                stopRun(e.what());
            }
            groupMark = batch.staged();
            groupFirst = i + 1;
            store->beginGroup();
        }
    }
    if (store && grouped) {
        try {
            store->commitGroup();
        } catch (const FileError& e) {
            stopRun(e.what());
        }
    }
    try {
        batch.commit();
    } catch (...) {
        if (store && grouped) {
            store->flushDeferred();
        }
        throw;
    }
    if (store && grouped) {
        store->flushDeferred();
    }
    return result;
}

} // namespace orvak::jobs
