// A design run from the desktop program: the job runner on a worker thread (the engines are
// re-entrant and use no Qt), a progress dialog with Cancel, and at the end one message with the
// elements that did not pass and why, and the notes of the run. The window never freezes.
#pragma once

#include <QObject>
#include <QString>
#include <atomic>
#include <cstddef>
#include <functional>

#include "jobs/design_job.h"
#include "shell/shell_state.h"
#include "ui/form_support.h"

class QProgressDialog;
class QThread;

namespace orvak::ui {

/// The texts of a run in the user's language; each takes the numbers named.
struct DesignRunTexts {
    QString designing;  ///< %1 of %2: %3 (the element's name)
    QString allDone;    ///< %1 elements
    QString someFailed; ///< %1 of %2 elements
    QString cancelled;  ///< after %1 elements
    QString stopped;    ///< %1: why
    /// Heads the notes of the elements (a column's slenderness over 100, say); empty: the
    /// notes are not shown.
    QString notes;
};

class DesignRun : public QObject {
    Q_OBJECT
public:
    /// Designs `count` elements with `work`, which gets the run's observer and runs on the
    /// worker thread; InputError and FileError it throws stop the run with their sentence.
    using Work = std::function<jobs::JobResult(const jobs::JobObserver&)>;

    /// `shell` must outlive the run; `parent` holds the progress dialog.
    DesignRun(const shell::ShellState& shell, QWidget* parent);
    ~DesignRun() override;

    /// Starts the run; false when one is already going or there is nothing to design.
    bool start(std::size_t count, Work work, DesignRunTexts texts);
    bool running() const { return m_thread != nullptr; }
    /// What the last finished run did (empty until one finished).
    const jobs::JobResult& result() const { return m_result; }
    /// The sentence shown at the end of the last run.
    const QString& summary() const { return m_summary; }
    QProgressDialog* progress() const { return m_progress; }

    /// Replaces the message boxes (tests record the messages).
    void setMessageHook(MessageHook hook) { m_messageHook = std::move(hook); }

signals:
    /// The run ended (designed, cancelled or stopped); result() and summary() say how.
    void finished();

protected:
    const shell::ShellState& shell() const { return m_shell; }
    QWidget* parentForm() const { return m_parent; }
    const MessageHook& messageHook() const { return m_messageHook; }

private:
    void ended();

    const shell::ShellState& m_shell;
    QWidget* m_parent;
    DesignRunTexts m_texts;
    QProgressDialog* m_progress = nullptr;
    QThread* m_thread = nullptr;
    std::atomic<bool> m_cancel{false};
    jobs::JobResult m_result;
    QString m_error; ///< the sentence of a run that stopped (a lost store, say)
    QString m_summary;
    MessageHook m_messageHook;
};

} // namespace orvak::ui
