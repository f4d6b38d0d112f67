// The grid form base: toolbar, status line and progress bar around the input grid; captions
// and headings from the form's prompt file; the checked save and the question on leaving.
#include "ui/grid_form.h"

#include <QAction>
#include <QCloseEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QTableView>
#include <QToolBar>
#include <QVBoxLayout>
#include <algorithm>

#include "core/error.h"
#include "ui/general_prompts.h"
#include "ui/input_grid.h"

namespace orvak::ui {

namespace {

constexpr int kProgressWidth = 180;

QString latin1(std::string_view text) {
    return QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size()));
}

/// The last prompt line a form reads: its headings, tools and messages.
std::size_t lastPrompt(const GridFormSetup& setup) {
    return std::max({setup.caption.prompt, setup.firstToolPrompt + setup.tools.size() - 1,
                     setup.firstHeadingPrompt + static_cast<std::size_t>(setup.columns) - 1,
                     setup.saving.prompt, setup.saved.prompt, setup.emptySaved.prompt});
}

} // namespace

GridForm::GridForm(shell::ShellState& shell, const GridFormSetup& setup, QWidget* parent)
    : QWidget(parent), m_shell(shell), m_setup(setup), m_toolBar(new QToolBar(this)),
      m_grid(new InputGrid(this)), m_status(new QLabel(this)), m_progress(new QProgressBar(this)) {
    ORVAK_ASSERT(setup.headings.size() == static_cast<std::size_t>(setup.columns));
    setObjectName(latin1(setup.objectName));
    m_toolBar->setObjectName(QStringLiteral("Toolbar1"));
    m_toolBar->setToolButtonStyle(Qt::ToolButtonTextOnly);
    m_toolBar->setMovable(false);
    for (const GridTool& tool : setup.tools) {
        // "exit" stands apart from the commands on the table.
        if (tool.key == "exit" && !m_toolBar->actions().isEmpty()) {
            m_toolBar->addSeparator();
        }
        QAction* action = m_toolBar->addAction(QString());
        action->setObjectName(latin1(tool.key));
        const std::string_view key = tool.key;
        connect(action, &QAction::triggered, this, [this, key] { toolbarCommand(key); });
    }
    m_grid->setObjectName(QStringLiteral("Pict1"));

    // The status area: the outcome of the last command, and the progress of a save.
    m_status->setObjectName(QStringLiteral("StatusText"));
    m_progress->setObjectName(QStringLiteral("ProgressBar1"));
    m_progress->setTextVisible(false);
    m_progress->setRange(0, setup.rows);
    m_progress->setValue(0);
    m_progress->setFixedWidth(kProgressWidth);
    auto* statusRow = new QHBoxLayout;
    statusRow->addWidget(m_status, 1);
    statusRow->addWidget(m_progress);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(6, 0, 6, 6);
    layout->addWidget(m_toolBar);
    layout->addWidget(m_grid, 1);
    layout->addLayout(statusRow);

    readPrompts();
}

QAction* GridForm::action(std::string_view key) const {
    return m_toolBar->findChild<QAction*>(latin1(key));
}

QString GridForm::prompt(const FormText& text) const {
    return formPrompt(m_prompts, text.prompt, text.english, m_shell.language());
}

void GridForm::readPrompts() {
    const GridFormSetup& setup = m_setup;
    m_prompts = shell::readPrompts(m_shell.programFolder, m_shell.language(), setup.promptKey, 2,
                                   lastPrompt(setup));

    InputGridSetup grid;
    grid.rows = setup.rows;
    grid.columns = setup.columns;
    grid.descriptors = {std::string(setup.descriptor)};
    grid.limitStrings = {std::string(setup.limits)};
    for (std::size_t c = 0; c < setup.headings.size(); ++c) {
        grid.columnHeadings.append(prompt({setup.firstHeadingPrompt + c, setup.headings[c]}));
    }
    grid.rangeMessage = generalPrompt(m_shell, General::RangeMessage);
    grid.notANumberMessage = generalPrompt(m_shell, General::NotANumber);

    // A new language relabels the grid; what the user typed stays, and so does the fact that
    // it is not saved yet.
    QList<QStringList> texts;
    if (m_loaded) {
        m_changedBeforeRelabel = m_changedBeforeRelabel || m_grid->isChanged();
        for (int r = 0; r < setup.rows; ++r) {
            QStringList row;
            for (int c = 0; c < setup.columns; ++c) {
                row.append(m_grid->cellText(r, c));
            }
            texts.append(row);
        }
    }
    m_grid->setup(grid);
    for (int r = 0; r < texts.size(); ++r) {
        for (int c = 0; c < setup.columns; ++c) {
            m_grid->setCellText(r, c, texts[r][c]);
        }
    }

    for (int c = setup.shownColumns; c > 0 && c < setup.columns; ++c) {
        m_grid->view()->setColumnHidden(c, true);
    }

    setWindowTitle(prompt(setup.caption));
    for (std::size_t i = 0; i < setup.tools.size(); ++i) {
        if (QAction* a = action(setup.tools[i].key)) {
            a->setText(prompt({setup.firstToolPrompt + i, setup.tools[i].english}));
        }
    }
}

void GridForm::finishLoad(bool readOk) {
    if (!readOk) {
        m_loadFailed = true;
        for (const char* key : {"save", "cdelete"}) {
            if (QAction* a = action(key)) {
                a->setEnabled(false);
            }
        }
    }
    m_grid->clearChanged();
    m_loaded = true;
    m_changedBeforeRelabel = false;
    setStatus(generalPrompt(m_shell, General::Ready));
}

bool GridForm::dataChanged() const {
    return m_changedBeforeRelabel || m_grid->isChanged();
}

bool GridForm::isChanged() const {
    return m_changedBeforeRelabel || m_grid->isChanged() || dataChanged();
}

QString GridForm::statusText() const {
    return m_status->text();
}

void GridForm::setStatus(const QString& text) {
    m_status->setText(text);
}

void GridForm::setMessageHook(MessageHook hook) {
    m_messageHook = hook;
    m_grid->setMessageHook(std::move(hook));
}

void GridForm::tell(const QString& message) const {
    tellUser(const_cast<GridForm*>(this), m_messageHook, message);
}

bool GridForm::refuseBadCell() {
    const InputGridModel& model = *m_grid->model();
    for (int r = 0; r < model.rowCount(); ++r) {
        if (!rowInUse(r)) {
            continue;
        }
        for (int c = 0; c < model.columnCount(); ++c) {
            if (model.kindAt(r, c) != 1 || m_grid->view()->isColumnHidden(c)) {
                continue;
            }
            QString refusal = refusedNumberMessage(m_shell, model, r, c);
            if (!refusal.isEmpty() && model.cellText(r, c).trimmed().isEmpty()) {
                // An empty cell that must hold a number: say which and what it may hold.
                const shell::Limits limits = model.limitsAt(r, c);
                refusal = generalPrompt(m_shell, General::EmptyValue)
                              .arg(r + 1)
                              .arg(model.headerData(c, Qt::Horizontal, Qt::DisplayRole)
                                       .toString()
                                       .replace(QLatin1Char('\n'), QLatin1Char(' ')))
                              .arg(QString::number(limits.minimum, 'g', 12),
                                   QString::number(limits.maximum, 'g', 12));
            }
            if (!refusal.isEmpty()) {
                tell(refusal);
                if (isVisible()) {
                    m_grid->focusCell(r, c);
                }
                return true;
            }
        }
    }
    return false;
}

bool GridForm::save() {
    if (m_loadFailed) {
        return false;
    }
    syncData();
    if (!dataChanged()) {
        return true;
    }
    if (refuseBadCell()) {
        return false;
    }

    setStatus(prompt(m_setup.saving));
    const auto notSaved = [this](const std::exception& e) {
        m_progress->setValue(0);
        setStatus(generalPrompt(m_shell, General::NotSaved));
        tell(QString::fromUtf8(e.what()));
        return false;
    };
    std::size_t written = 0;
    try {
        written = writeTable([this](int value, int maximum) {
            m_progress->setMaximum(maximum);
            m_progress->setValue(value);
        });
    } catch (const FileError& e) {
        return notSaved(e);
    } catch (const InputError& e) {
        // A value its record cannot hold (a count beyond a 16-bit field).
        return notSaved(e);
    }
    m_grid->clearChanged();
    m_changedBeforeRelabel = false;

    const QString message = written == 0
                                ? prompt(m_setup.emptySaved)
                                : prompt(m_setup.saved).arg(static_cast<qulonglong>(written));
    setStatus(message);
    emit saved(message);
    if (isVisible()) {
        m_grid->setFocus();
    }
    return true;
}

void GridForm::toolbarCommand(std::string_view key) {
    if (key == "save") {
        save();
    } else if (key == "exit") {
        closeForm(this);
    } else {
        runCommand(key);
    }
}

bool GridForm::rowInUse(int) const {
    return true;
}

void GridForm::runCommand(std::string_view) {}

void GridForm::closeWithoutQuestion() {
    m_leavingWithoutQuestion = true;
    closeForm(this);
}

void GridForm::closeEvent(QCloseEvent* event) {
    if (m_leavingWithoutQuestion || m_loadFailed || !isChanged() ||
        mayLeaveForm(this, m_shell, m_askHook, [this] { return save(); })) {
        event->accept();
    } else {
        event->ignore();
    }
}

} // namespace orvak::ui
