// Projdata: the project-data form, the general fields of the current project's GEN.CST (title
// lines, the job's numbers and notes, work folder, the date of the last save) in one grid.
#pragma once

#include <QDate>
#include <QMessageBox>
#include <QWidget>
#include <array>
#include <functional>

#include "shell/prompts.h"
#include "shell/shell_state.h"

class QPushButton;

namespace orvak::ui {
class InputGrid;
}

namespace orvak::shell::forms {

class Projdata : public QWidget {
    Q_OBJECT
public:
    static constexpr int kFieldCount = 21;
    /// 0-based grid rows of the fields that are not plain text.
    static constexpr int kWorkFolderRow = 15;
    static constexpr int kChoiceRow = 16;
    static constexpr int kCountRow = 18;
    static constexpr int kDateRow = 19;
    static constexpr int kValueRow = 20;
    /// Rows of the fields that nothing reads (the choice, the count, the value): hidden, never
    /// checked, and saved as the file held them.
    static constexpr std::array<int, 3> kHiddenRows = {kChoiceRow, kCountRow, kValueRow};

    /// Edits the current project of `shell` (which must have one and outlive the form).
    explicit Projdata(shell::ShellState& shell, QWidget* parent = nullptr);

    ui::InputGrid* grid() const { return m_grid; }
    bool isChanged() const;

    /// Checks every field, stamps today's date and writes GEN.CST. False, after telling the
    /// user, when a field is refused or the file cannot be written; nothing is written then.
    bool save();

    /// The date stamp of the record: "dd-mm-yyyy".
    static QString dateStamp(const QDate& date);

    /// Replaces the question asked when the form is left with unsaved changes (Yes saves, No
    /// drops them, Cancel stays).
    void setAskHook(std::function<QMessageBox::StandardButton(const QString&)> hook) {
        m_askHook = std::move(hook);
    }
    /// Replaces the message boxes of refused values and failed saves.
    void setMessageHook(std::function<void(const QString&)> hook);

public slots:
    /// Reloads the captions in the current language; what was typed stays.
    void readPrompts();

signals:
    /// The record was written; the text says so in the user's language.
    void saved(const QString& message);

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void loadRecord();
    void tell(const QString& message) const;
    /// Puts the user on a refused row when the form is on screen.
    void showCell(int row);
    QString label(int row) const;

    shell::ShellState& m_shell;
    shell::PromptList m_prompts;
    ui::InputGrid* m_grid;
    QPushButton* m_saveButton;
    QPushButton* m_exitButton;
    std::function<QMessageBox::StandardButton(const QString&)> m_askHook;
    std::function<void(const QString&)> m_messageHook;
    /// Edits made before the grid was relabelled for a new language, not saved yet.
    bool m_changedBeforeRelabel = false;
};

} // namespace orvak::shell::forms
