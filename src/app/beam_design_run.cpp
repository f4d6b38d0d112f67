// The design of a floor's beams on a worker thread, reported to a progress dialog.
#include "app/beam_design_run.h"

#include <QProgressDialog>
#include <QThread>

#include "bars/bar_tables.h"
#include "beams/beam_job.h"
#include "core/codepage.h"
#include "core/error.h"
#include "jobs/beam_design_job.h"
#include "shell/prompts.h"
#include "ui/general_prompts.h"
#include "ui/qt_text.h"

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

BeamDesignRun::BeamDesignRun(const shell::ShellState& shell, QWidget* parent)
    : QObject(parent), m_shell(shell), m_parent(parent) {}

BeamDesignRun::~BeamDesignRun() {
    // A window closed during a run waits for the element under way; the rest is cancelled.
    if (m_thread != nullptr) {
        m_cancel = true;
        m_thread->wait();
        delete m_thread;
    }
}

QString BeamDesignRun::prompt(std::size_t n, std::string_view english) const {
    return ui::formPrompt(m_prompts, n, english, m_shell.language());
}

bool BeamDesignRun::start(int floor, int scheme) {
    if (m_thread != nullptr) {
        return false;
    }
    // The run's texts, read once: its end uses them too.
    m_prompts =
        shell::readPrompts(m_shell.programFolder, m_shell.language(), kPromptKey, 2, kPromptCount);
    const std::filesystem::path project = m_shell.projectPath();
    std::vector<beams::BeamRecord> chosen;
    bars::BarPropertyTable table;
    try {
        // Every beam is read and checked before the first is designed.
        chosen =
            jobs::chooseBeams(project, {floor, 0}, core::codePageForLanguage(m_shell.language()));
        table = beams::designBarTable(m_shell.generalFolder());
    } catch (const InputError& e) {
        ui::tellUser(m_parent, m_messageHook, QString::fromUtf8(e.what()));
        return false;
    } catch (const FileError& e) {
        ui::tellUser(m_parent, m_messageHook, QString::fromUtf8(e.what()));
        return false;
    }

    const int n = static_cast<int>(chosen.size());
    m_cancel = false;
    m_result = {};
    m_error.clear();
    m_progress = new QProgressDialog(m_parent);
    m_progress->setObjectName(QStringLiteral("DesignProgress"));
    m_progress->setWindowModality(Qt::WindowModal);
    m_progress->setRange(0, n);
    m_progress->setValue(0);
    m_progress->setMinimumDuration(0);
    m_progress->setAutoClose(false);
    m_progress->setAutoReset(false);
    m_progress->setCancelButtonText(ui::generalPrompt(m_shell, ui::General::Cancel));
    const QString designing = prompt(kDesigning, "Designing beam %1 of %2: %3");
    const std::string language = m_shell.language();
    connect(m_progress, &QProgressDialog::canceled, this, [this] { m_cancel = true; });

    jobs::JobObserver observer;
    observer.starting = [this, designing, language](std::size_t k, std::size_t total,
                                                    const jobs::JobElement& element) {
        const QString text = designing.arg(k).arg(total).arg(ui::toQString(element.name, language));
        QMetaObject::invokeMethod(
            this,
            [this, k, text] {
                if (m_progress) {
                    m_progress->setLabelText(text);
                    m_progress->setValue(static_cast<int>(k) - 1);
                }
            },
            Qt::QueuedConnection);
    };
    observer.cancelRequested = [this] { return m_cancel.load(); };

    const int schemeUsed = scheme;
    const core::CodePage page = core::codePageForLanguage(m_shell.language());
    m_thread = QThread::create(
        [this, project, chosen = std::move(chosen), rows = table.rows, schemeUsed, observer, page] {
            try {
                m_result = jobs::designBeams(project, chosen, rows, schemeUsed, observer, page);
            } catch (const FileError& e) {
                m_error = QString::fromUtf8(e.what());
            } catch (const InputError& e) {
                m_error = QString::fromUtf8(e.what());
            }
        });
    connect(
        m_thread, &QThread::finished, this, [this] { ended(); }, Qt::QueuedConnection);
    m_progress->show();
    m_thread->start();
    return true;
}

void BeamDesignRun::ended() {
    m_thread->wait();
    delete m_thread;
    m_thread = nullptr;
    if (m_progress) {
        m_progress->setValue(m_progress->maximum());
        m_progress->deleteLater();
        m_progress = nullptr;
    }
    const std::size_t done = m_result.elements.size();
    const std::size_t failing = m_result.failing();
    if (!m_error.isEmpty()) {
        m_summary = prompt(kStopped, "The run stopped: %1").arg(m_error);
    } else if (m_result.cancelled) {
        m_summary = prompt(kCancelled, "The run was cancelled after %1 beams.").arg(done);
    } else if (failing == 0) {
        m_summary = prompt(kAllDesigned, "All %1 beams were designed.").arg(done);
    } else {
        m_summary = prompt(kSomeFailed, "%1 of %2 beams did not pass:").arg(failing).arg(done);
    }
    // Each beam that did not pass, with why, one line each.
    for (const jobs::ElementReport& r : m_result.elements) {
        if (r.status == jobs::ElementStatus::Designed) {
            continue;
        }
        m_summary += QStringLiteral("\n%1 %2: ")
                         .arg(r.number)
                         .arg(ui::toQString(r.name, m_shell.language()));
        for (std::size_t i = 0; i < r.failures.size(); ++i) {
            m_summary += (i == 0 ? QString() : QStringLiteral("; ")) +
                         QString::fromUtf8(r.failures[i].c_str());
        }
    }
    ui::tellUser(m_parent, m_messageHook, m_summary);
    emit finished();
}

} // namespace orvak::app
