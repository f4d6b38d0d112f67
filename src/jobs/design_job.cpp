// The design job runner: one store transaction per run (a savepoint per element), its sheets
// staged, recorded with the transaction and put in place after it.
#include "jobs/design_job.h"

#include <ctime>
#include <optional>

#include <fmt/format.h>

#include "core/error.h"
#include "core/file_util.h"

namespace orvak::jobs {

namespace {

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

std::string localTimeText(const char* format) {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    char text[64];
    const std::size_t n = std::strftime(text, sizeof text, format, &local);
    return std::string(text, n);
}

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
    // The whole run is one transaction of the store, each element a savepoint of it, and its
    // sheets are put in place only once that transaction is committed with the list of them:
    // a run cut off anywhere leaves either none of its items and sheets, or all of them (the
    // next open of the store completes the renames). When the store loses the transaction (a
    // full disk, a failed commit), nothing of the run is kept and the run stops with why.
    const auto stopRun = [&](const std::string& reason) {
        batch.discard();
        store->rollbackGroup();
        try {
            store->flushDeferred();
        } catch (const FileError&) {
        }
        throw FileError(projectFolder,
                        fmt::format("The steel store could not keep the run's items ({}). The run "
                                    "stopped, and nothing of it was kept: every element keeps "
                                    "its earlier sheets and items.",
                                    reason));
    };
    if (n == 0) {
        return result;
    }
    // The run holds the store's write lock from before its first sheet is staged: another
    // program opening the store meanwhile then knows that the staged sheets are not orphans.
    // A run of one element is flushed as any save is; a longer run defers the store's
    // flushes to its end.
    store.emplace(bars::OpenIronDatabase(projectFolder));
    if (grouped) {
        store->deferDurability();
    }
    store->beginGroup();
    const std::string runTime = localTimeText("%Y-%m-%d %H:%M");
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
            if (store->groupLost()) {
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
        // The element's outcome lands with its items: a run cut off keeps neither.
        bars::DesignState state;
        state.kind = report.kind;
        state.floor = static_cast<std::int16_t>(report.floor);
        state.number = static_cast<std::int16_t>(report.number);
        state.status =
            report.status == ElementStatus::Designed       ? bars::DesignState::Status::Designed
            : report.status == ElementStatus::ChecksFailed ? bars::DesignState::Status::ChecksFailed
                                                           : bars::DesignState::Status::NotDesigned;
        state.when = runTime;
        for (const std::string& failure : report.failures) {
            state.failures += (state.failures.empty() ? "" : "\n") + failure;
        }
        try {
            store->recordDesignState(state);
        } catch (const FileError& e) {
            if (store->groupLost()) {
                stopRun(e.what());
            }
        }
        if (observer.finished) {
            observer.finished(i + 1, n, report);
        }
        result.elements.push_back(std::move(report));
    }
    try {
        store->recordPendingOutputs(batch.prepare());
        store->commitGroup();
    } catch (const FileError& e) {
        stopRun(e.what());
    }
    // The items and the list of sheets are durable before the first sheet takes its name.
    if (grouped) {
        store->flushDeferred();
    }
    // A rename that fails is reported; the list stays, and the next open of the store puts
    // the rest in place.
    batch.commit();
    try {
        store->clearPendingOutputs();
    } catch (const FileError&) {
    }
    return result;
}

namespace {

/// The project's steel store when it has one; the edits of a project never make one.
std::optional<bars::IronDatabase> existingStore(const std::filesystem::path& projectFolder) {
    if (!std::filesystem::exists(bars::ironDatabasePath(projectFolder))) {
        return std::nullopt;
    }
    return bars::OpenIronDatabase(projectFolder);
}

} // namespace

void markElementChanged(const std::filesystem::path& projectFolder, std::string_view kind,
                        int floor, int number, std::string_view reason) {
    std::optional<bars::IronDatabase> store = existingStore(projectFolder);
    if (!store) {
        return;
    }
    for (const bars::DesignState& state : store->designStates()) {
        if (state.kind == kind && state.floor == floor && state.number == number) {
            if (state.status != bars::DesignState::Status::NotDesigned ||
                state.failures != reason) {
                bars::DesignState changed = state;
                changed.status = bars::DesignState::Status::NotDesigned;
                changed.when = localTimeText("%Y-%m-%d %H:%M");
                changed.failures = std::string(reason);
                store->recordDesignState(changed);
            }
            return;
        }
    }
}

void forgetElement(const std::filesystem::path& projectFolder, std::string_view kind,
                   bars::ElementKind steelKind, int floor, int number) {
    std::optional<bars::IronDatabase> store = existingStore(projectFolder);
    if (!store) {
        return;
    }
    store->replaceElementItems(steelKind, static_cast<std::int16_t>(floor),
                               static_cast<std::int16_t>(number), {});
    store->removeDesignState(kind, static_cast<std::int16_t>(floor),
                             static_cast<std::int16_t>(number));
}

std::vector<bars::DesignState> recordedDesignStates(const std::filesystem::path& projectFolder) {
    if (!core::findFileNoCase(projectFolder, bars::kIronDatabaseFile) ||
        bars::legacyImportOffered(projectFolder)) {
        return {};
    }
    try {
        return bars::OpenIronDatabase(projectFolder).designStates();
    } catch (const FileError&) {
        return {};
    }
}

} // namespace orvak::jobs
