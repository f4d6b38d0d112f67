// FtRpt (Reports > Foundations groups): choose a footing group (`GroupCombo`, or `CmdChoose`
// through SlcFtGrp); `CmdSheet` shows its sheet in the viewer, where it is printed or saved
// as PDF.
#pragma once

#include <QWidget>
#include <filesystem>
#include <vector>

#include "footings/footing_records.h"
#include "shell/prompts.h"
#include "shell/shell_state.h"
#include "ui/form_support.h"

class QComboBox;
class QLabel;
class QPushButton;

namespace orvak::ui {
class EditAsc;
}

namespace orvak::footings::forms {

class FtRpt : public QWidget {
    Q_OBJECT
public:
    explicit FtRpt(shell::ShellState& shell, QWidget* parent = nullptr);

    QComboBox* groupCombo() const { return m_groupCombo; }
    /// Chooses the group of record `number`; false when there is none.
    bool chooseGroup(int number);
    /// The chosen group's sheet (empty when none is chosen).
    std::filesystem::path sheetPath() const;
    /// `CmdSheet`: the sheet in the viewer; nullptr after telling why.
    ui::EditAsc* showSheet();

    void setMessageHook(ui::MessageHook hook) { m_messageHook = std::move(hook); }

public slots:
    void readPrompts();

private:
    QString prompt(std::size_t n, std::string_view english) const;
    void load();

    shell::ShellState& m_shell;
    shell::PromptList m_prompts;
    std::vector<StoredFootingGroup> m_groups;
    QLabel* m_groupLabel;
    QComboBox* m_groupCombo;
    QPushButton* m_choose;
    QPushButton* m_sheet;
    QPushButton* m_exit;
    ui::MessageHook m_messageHook;
};

} // namespace orvak::footings::forms
