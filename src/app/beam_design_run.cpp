// The design of a floor's beams: chosen and checked before the run starts.
#include "app/beam_design_run.h"

#include "bars/bar_tables.h"
#include "beams/beam_job.h"
#include "core/codepage.h"
#include "core/error.h"
#include "jobs/beam_design_job.h"
#include "shell/prompts.h"
#include "ui/general_prompts.h"

namespace orvak::app {

namespace {

constexpr std::string_view kPromptKey = "EXPLORER";
constexpr std::size_t kDesigning = 13;
constexpr std::size_t kAllDesigned = 14;
constexpr std::size_t kSomeFailed = 15;
constexpr std::size_t kCancelled = 16;
constexpr std::size_t kStopped = 17;
constexpr std::size_t kPromptCount = 17;

} // namespace

bool BeamDesignRun::start(int floor, int scheme) {
    if (running()) {
        return false;
    }
    const shell::ShellState& s = shell();
    // The run's texts, read once: its end uses them too.
    const shell::PromptList prompts =
        shell::readPrompts(s.programFolder, s.language(), kPromptKey, 2, kPromptCount);
    const auto text = [&](std::size_t n, std::string_view english) {
        return ui::formPrompt(prompts, n, english, s.language());
    };
    const std::filesystem::path project = s.projectPath();
    const core::CodePage page = core::codePageForLanguage(s.language());
    std::vector<beams::BeamRecord> chosen;
    bars::BarPropertyTable table;
    try {
        // Every beam is read and checked before the first is designed.
        chosen = jobs::chooseBeams(project, {floor, 0}, page);
        table = beams::designBarTable(s.generalFolder());
    } catch (const InputError& e) {
        ui::tellUser(parentForm(), messageHook(), QString::fromUtf8(e.what()));
        return false;
    } catch (const FileError& e) {
        ui::tellUser(parentForm(), messageHook(), QString::fromUtf8(e.what()));
        return false;
    }
    ui::DesignRunTexts texts;
    texts.designing = text(kDesigning, "Designing beam %1 of %2: %3");
    texts.allDone = text(kAllDesigned, "All %1 beams were designed.");
    texts.someFailed = text(kSomeFailed, "%1 of %2 beams did not pass:");
    texts.cancelled = text(kCancelled, "The run was cancelled after %1 beams.");
    texts.stopped = text(kStopped, "The run stopped: %1");
    const std::size_t count = chosen.size();
    return ui::DesignRun::start(
        count,
        [project, chosen = std::move(chosen), rows = table.rows, scheme,
         page](const jobs::JobObserver& observer) {
            return jobs::designBeams(project, chosen, rows, scheme, observer, page);
        },
        std::move(texts));
}

} // namespace orvak::app
