// "Design all beams of the floor" from the desktop program: the design job runner on a worker
// thread (the engines are re-entrant and use no Qt), a progress dialog with Cancel, and at
// the end one message with the beams that failed and why. The window never freezes.
#pragma once

#include <QObject>
#include <QString>
#include <atomic>
#include <functional>
#include <memory>

#include "jobs/design_job.h"
#include "shell/prompts.h"
#include "shell/shell_state.h"
#include "ui/form_support.h"

class QProgressDialog;
class QThread;

namespace orvak::app {

class BeamDesignRun : public QObject {
    Q_OBJECT
public:
    /// `shell` must outlive the run; `parent` holds the progress dialog.
    BeamDesignRun(const shell::ShellState& shell, QWidget* parent);
    ~BeamDesignRun() override;

    /// Starts the design of every beam of `floor` under load-case scheme `scheme`. False,
    /// after telling the user why, when nothing can start (no beam, a beam that cannot be
    /// designed as stored, no usable bar table, a run already going).
    bool start(int floor, int scheme);
    bool running() const { return m_thread != nullptr; }
    /// What the last finished run did (empty until one finished).
    const jobs::JobResult& result() const { return m_result; }
    /// The sentence shown at the end of the last run.
    const QString& summary() const { return m_summary; }
    QProgressDialog* progress() const { return m_progress; }

    /// Replaces the message boxes (tests record the messages).
    void setMessageHook(ui::MessageHook hook) { m_messageHook = std::move(hook); }

signals:
    /// The run ended (designed, cancelled or stopped); result() and summary() say how.
    void finished();

private:
    void ended();
    QString prompt(std::size_t n, std::string_view english) const;

    const shell::ShellState& m_shell;
    shell::PromptList m_prompts;
    QWidget* m_parent;
    QProgressDialog* m_progress = nullptr;
    QThread* m_thread = nullptr;
    std::atomic<bool> m_cancel{false};
    jobs::JobResult m_result;
    QString m_error; ///< the sentence of a run that stopped (a lost store, say)
    QString m_summary;
    ui::MessageHook m_messageHook;
};

} // namespace orvak::app
