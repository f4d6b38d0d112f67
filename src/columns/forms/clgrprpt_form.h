// ClGrpRpt (Reports > Columns groups, and > Foundations columns necks groups): choose a level
// (`LevelCombo`: the floors, or the footing level) and one of its groups (`GroupCombo`, or
// `CmdChoose` through SlcClGrp); `CmdSheet` shows the group's sheet in the viewer, where it is
// printed or saved as PDF, and `CmdChart` its interaction chart.
#pragma once

#include <QWidget>
#include <filesystem>
#include <vector>

#include "columns/column_records.h"
#include "shell/prompts.h"
#include "shell/shell_state.h"
#include "ui/form_support.h"

class QComboBox;
class QLabel;
class QPushButton;

namespace orvak::ui {
class EditAsc;
}

namespace orvak::columns::forms {

class ClGrpRpt : public QWidget {
    Q_OBJECT
public:
    /// The floors' groups, or those of the footing level (the columns the footings stand on).
    explicit ClGrpRpt(shell::ShellState& shell, bool footingLevel = false,
                      QWidget* parent = nullptr);

    QComboBox* levelCombo() const { return m_levelCombo; }
    QComboBox* groupCombo() const { return m_groupCombo; }
    /// Chooses group `number` (1-based) of `level`; false when there is none.
    bool chooseGroup(ColumnLevel level, int number);
    /// The chosen group's sheet (empty when no group is chosen).
    std::filesystem::path sheetPath() const { return groupFile(false); }

    /// `CmdSheet`: the sheet in the viewer; nullptr after telling why.
    ui::EditAsc* showSheet();
    /// `CmdChart`: the chart; nullptr after telling why.
    QWidget* showChart();

    void setMessageHook(ui::MessageHook hook) { m_messageHook = std::move(hook); }

public slots:
    void readPrompts();

private:
    QString prompt(std::size_t n, std::string_view english) const;
    void fillLevels();
    void showGroupsOf(ColumnLevel level);
    /// The chosen group's sheet, or its chart; empty when no group is chosen.
    std::filesystem::path groupFile(bool chart) const;

    shell::ShellState& m_shell;
    shell::PromptList m_prompts;
    bool m_footingLevel;
    std::vector<ColumnGroup> m_groups;
    ColumnLevel m_level;
    QLabel* m_levelLabel;
    QLabel* m_groupLabel;
    QComboBox* m_levelCombo;
    QComboBox* m_groupCombo;
    QPushButton* m_choose;
    QPushButton* m_sheet;
    QPushButton* m_chart;
    QPushButton* m_exit;
    ui::MessageHook m_messageHook;
};

} // namespace orvak::columns::forms
