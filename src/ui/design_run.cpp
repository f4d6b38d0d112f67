// A design run on a worker thread, reported to a progress dialog.
#include "ui/design_run.h"

#include <QProgressDialog>
#include <QThread>

#include "core/error.h"
#include "ui/general_prompts.h"
#include "ui/qt_text.h"

namespace orvak::ui {

DesignRun::DesignRun(const shell::ShellState& shell, QWidget* parent)
    : QObject(parent), m_shell(shell), m_parent(parent) {}

DesignRun::~DesignRun() {
    // A window closed during a run waits for the element under way; the rest is cancelled.
    if (m_thread != nullptr) {
        m_cancel = true;
        m_thread->wait();
        delete m_thread;
    }
}

bool DesignRun::start(std::size_t count, Work work, DesignRunTexts texts) {
    if (m_thread != nullptr || count == 0) {
        return false;
    }
    m_texts = std::move(texts);
    m_cancel = false;
    m_result = {};
    m_error.clear();
    m_progress = new QProgressDialog(m_parent);
    m_progress->setObjectName(QStringLiteral("DesignProgress"));
    m_progress->setWindowModality(Qt::WindowModal);
    m_progress->setRange(0, static_cast<int>(count));
    m_progress->setValue(0);
    m_progress->setMinimumDuration(0);
    m_progress->setAutoClose(false);
    m_progress->setAutoReset(false);
    m_progress->setCancelButtonText(generalPrompt(m_shell, General::Cancel));
    const QString designing = m_texts.designing;
    const std::string language = m_shell.language();
    connect(m_progress, &QProgressDialog::canceled, this, [this] { m_cancel = true; });

    jobs::JobObserver observer;
    observer.starting = [this, designing, language](std::size_t k, std::size_t total,
                                                    const jobs::JobElement& element) {
        const QString text = designing.arg(k).arg(total).arg(toQString(element.name, language));
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

    m_thread = QThread::create([this, work = std::move(work), observer] {
        try {
            m_result = work(observer);
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

void DesignRun::ended() {
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
        m_summary = m_texts.stopped.arg(m_error);
    } else if (m_result.cancelled) {
        m_summary = m_texts.cancelled.arg(done);
    } else if (failing == 0) {
        m_summary = m_texts.allDone.arg(done);
    } else {
        m_summary = m_texts.someFailed.arg(failing).arg(done);
    }
    const std::string& language = m_shell.language();
    // Each element that did not pass, with why, one line each.
    for (const jobs::ElementReport& r : m_result.elements) {
        if (r.status == jobs::ElementStatus::Designed) {
            continue;
        }
        m_summary += QStringLiteral("\n%1 %2: ").arg(r.number).arg(toQString(r.name, language));
        for (std::size_t i = 0; i < r.failures.size(); ++i) {
            m_summary += (i == 0 ? QString() : QStringLiteral("; ")) +
                         QString::fromUtf8(r.failures[i].c_str());
        }
    }
    // The notes of the run, gathered from every element, after the failures.
    if (!m_texts.notes.isEmpty()) {
        QString notes;
        for (const jobs::ElementReport& r : m_result.elements) {
            for (const std::string& note : r.messages) {
                notes += QStringLiteral("\n") + toQString(note, language);
            }
        }
        if (!notes.isEmpty()) {
            m_summary += QStringLiteral("\n\n") + m_texts.notes + notes;
        }
    }
    tellUser(m_parent, m_messageHook, m_summary);
    emit finished();
}

} // namespace orvak::ui
