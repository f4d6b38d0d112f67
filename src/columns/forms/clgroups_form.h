// ClGroups: the column groups of a floor, or of the footing level. The engineer makes groups
// ("Gr-C" and a number), ticks the columns of the level that belong to each (a column belongs
// to one group at most), gives each its section and cover, and designs one group or all; the
// problems of the run are shown together at its end. A group with members takes their
// governing load and moments; one without members keeps its own. An empty group takes the
// section of the first column ticked into it.
#pragma once

#include <QWidget>
#include <array>
#include <filesystem>
#include <vector>

#include "columns/column_records.h"
#include "jobs/column_groups_store.h"
#include "shell/prompts.h"
#include "shell/shell_state.h"
#include "ui/form_support.h"

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QListWidgetItem;
class QPushButton;

namespace orvak::ui {
class DesignRun;
class EditAsc;
} // namespace orvak::ui

namespace orvak::columns::forms {

class ClGroups : public QWidget {
    Q_OBJECT
public:
    /// The groups of the shell's current floor, or of the footing level when there is no
    /// current floor or `footingLevel` is set.
    explicit ClGroups(shell::ShellState& shell, bool footingLevel = false,
                      QWidget* parent = nullptr);
    ~ClGroups() override;

    ColumnLevel level() const { return m_level; }
    /// Shows the groups of `level` (after asking to keep unsaved edits). False when the level
    /// was not changed.
    bool showLevel(ColumnLevel level);

    QListWidget* groupList() const { return m_groupList; }
    QListWidget* columnList() const { return m_columnList; }
    QComboBox* levelCombo() const { return m_levelCombo; }
    /// The group's fields: name, text, a to e, cover, height, Pu, M2, M1, M2y, M1y.
    QLineEdit* field(std::string_view objectName) const;
    QComboBox* typeCombo() const { return m_type; }
    QCheckBox* sustainedCheck() const { return m_sustained; }

    /// Chooses group `number` (1-based) of the level; false when there is none.
    bool chooseGroup(int number);
    int currentGroup() const { return m_current + 1; }
    /// The groups as edited (not yet stored).
    std::vector<ColumnGroup> groups() const;

    /// `CmdNew`: a new group "Gr-C" and the next free number, with the current settings.
    void newGroup();
    /// `CmdDelete`: after asking, the chosen group goes; its columns belong to none.
    bool deleteGroup();
    /// `CmdSettings`: the chosen group takes the current column settings.
    bool takeSettings();
    /// `CmdSave`: stores the groups and the membership of the level's columns. False after
    /// telling why (nothing is lost: the form keeps the edits).
    bool save();
    /// `CmdDesign` / `CmdDesignAll`: saves, then designs the chosen group (or every group of
    /// the level) on the design run; false after telling why nothing started.
    bool designGroup();
    bool designAll();
    ui::DesignRun* designRun() const { return m_run; }
    /// `CmdSheet`: the chosen group's sheet in the viewer; `CmdChart`: its interaction chart.
    ui::EditAsc* showSheet();
    QWidget* showChart();
    /// The sheet of group `number` of the level (whether it exists or not).
    std::filesystem::path sheetPath(int number) const;

    bool isDirty() const { return m_dirty; }

    void setAskHook(ui::AskHook hook) { m_askHook = std::move(hook); }
    void setMessageHook(ui::MessageHook hook);

signals:
    /// Groups were stored or designed (the explorer reads the project again).
    void saved(const QString& message);

public slots:
    void readPrompts();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    QString prompt(std::size_t n, std::string_view english) const;
    void load();
    void fillLevels();
    void showGroupList();
    void showColumns();
    void showGroup();
    void showState();
    /// Reads the fields into the chosen group; false after telling why.
    bool takeFields();
    void fieldEdited();
    void memberToggled(QListWidgetItem* item);
    bool startRun(bool all);
    bool mayLeave();

    shell::ShellState& m_shell;
    shell::PromptList m_prompts;
    ColumnLevel m_level;
    std::vector<jobs::EditedGroup> m_groups;
    int m_storedCount = 0;
    std::vector<Column> m_columns;
    std::vector<int> m_memberOf; ///< per column, the index of its group in m_groups, or -1
    int m_current = -1;
    bool m_dirty = false;
    bool m_showing = false; ///< the fields are being filled, not edited
    bool m_readOk = true;

    QComboBox* m_levelCombo;
    QListWidget* m_groupList;
    QListWidget* m_columnList;
    std::vector<QLineEdit*> m_fields;
    std::vector<QLabel*> m_fieldLabels;
    QComboBox* m_type;
    QCheckBox* m_sustained;
    QLabel* m_settingsText;
    QLabel* m_stateText;
    QLabel* m_membersNote;
    QPushButton* m_new;
    QPushButton* m_delete;
    QPushButton* m_settings;
    QPushButton* m_save;
    QPushButton* m_design;
    QPushButton* m_designAll;
    QPushButton* m_sheet;
    QPushButton* m_chart;
    QPushButton* m_exit;
    ui::DesignRun* m_run;
    ui::AskHook m_askHook;
    ui::MessageHook m_messageHook;
};

} // namespace orvak::columns::forms
