// FtGroups: the footing groups of the project. Each group is one footing of one kind (isolated,
// combined or pile) under one or two of the footing level's column groups, which give it their
// section and their governing load and moments. The engineer picks the column groups and where
// the columns stand, saves the group (its record keeps its number for good), and designs one
// group or all; the run's problems are shown together at its end, and the group shows the plan
// and bars of its last design.
#pragma once

#include <QWidget>
#include <array>
#include <filesystem>
#include <optional>
#include <vector>

#include "columns/column_records.h"
#include "footings/footing_records.h"
#include "shell/prompts.h"
#include "shell/shell_state.h"
#include "ui/form_support.h"

class QComboBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;

namespace orvak::ui {
class DesignRun;
class EditAsc;
} // namespace orvak::ui

namespace orvak::footings::forms {

class FtGroups : public QWidget {
    Q_OBJECT
public:
    explicit FtGroups(shell::ShellState& shell, QWidget* parent = nullptr);
    ~FtGroups() override;

    QListWidget* groupList() const { return m_groupList; }
    QComboBox* kindCombo() const { return m_kind; }
    /// The column group choices of the two columns (the second for a combined footing).
    QComboBox* columnGroupCombo(int k) const { return m_columnGroup[static_cast<std::size_t>(k)]; }
    /// A field by its object name ("GrpNameTxt", "Cx1Txt", "PilesTxt" ...).
    QLineEdit* field(std::string_view objectName) const;
    QLabel* resultText() const { return m_result; }

    /// Chooses the group of record `number` (after asking to keep unsaved edits); false when
    /// there is none.
    bool chooseGroup(int number);
    /// The record number of the chosen group; 0 for a new group not saved yet, -1 for none.
    int currentGroup() const;

    /// `CmdNew`: a new group "Gr-Ft" and the next free number, isolated, with the current
    /// settings and the first column group; saved by save().
    void newGroup();
    /// `CmdDelete`: after asking, the chosen group's record gets the use mark "0" in place, and
    /// its steel and design state go.
    bool deleteGroup();
    /// `CmdSettings`: the chosen group takes the current footing settings.
    bool takeSettings();
    /// `CmdSave`: stores the chosen group (the system's refusals: "Footing dimension is not
    /// suitable for column", "CX1 IS GREATER OR EQUAL CX2"). False after telling why; the
    /// form keeps the edits.
    bool save();
    /// `CmdDesign` / `CmdDesignAll`: saves, then designs on the design run.
    bool designGroup();
    bool designAll();
    ui::DesignRun* designRun() const { return m_run; }
    /// `CmdSheet`: the chosen group's sheet in the viewer.
    ui::EditAsc* showSheet();

    bool isDirty() const { return m_dirty; }

    void setAskHook(ui::AskHook hook) { m_askHook = std::move(hook); }
    void setMessageHook(ui::MessageHook hook);

signals:
    void saved(const QString& message);

public slots:
    void readPrompts();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    QString prompt(std::size_t n, std::string_view english) const;
    void load();
    void showGroupList();
    void showGroup();
    void showKind();
    void showResult();
    /// The group as the fields show it; empty after telling why.
    std::optional<FootingGroup> takeFields();
    void edited();
    bool mayLeave();
    bool startRun(bool all);

    shell::ShellState& m_shell;
    shell::PromptList m_prompts;
    std::vector<StoredFootingGroup> m_groups;
    std::vector<columns::ColumnGroup> m_columnGroups; ///< of the footing level
    int m_current = -1;                               ///< index in m_groups
    std::optional<FootingGroup> m_fresh;              ///< a new group not saved yet
    bool m_dirty = false;
    bool m_showing = false;
    bool m_readOk = true;

    QListWidget* m_groupList;
    QComboBox* m_kind;
    std::array<QComboBox*, 2> m_columnGroup{};
    std::vector<QLineEdit*> m_fields;
    std::vector<QLabel*> m_fieldLabels;
    std::vector<QLabel*> m_captions;
    QGroupBox* m_secondBox;
    QGroupBox* m_pileBox;
    QLabel* m_settingsText;
    QLabel* m_result;
    QLabel* m_convention;
    QPushButton* m_new;
    QPushButton* m_delete;
    QPushButton* m_settings;
    QPushButton* m_save;
    QPushButton* m_design;
    QPushButton* m_designAll;
    QPushButton* m_sheet;
    QPushButton* m_exit;
    ui::DesignRun* m_run;
    ui::AskHook m_askHook;
    ui::MessageHook m_messageHook;
};

} // namespace orvak::footings::forms
