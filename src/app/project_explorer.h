// The project explorer: a dock of the main window with the project's floors, under each its
// beams and column groups with what their last design made of them (and when), the footing
// level's column and footing groups, and the project's sheets. A double click opens a sheet in
// the text viewer, a beam in the beam form, or a group in its groups form; the menu of a beam
// or a group opens its sheet too.
#pragma once

#include <QDockWidget>
#include <QSet>
#include <filesystem>
#include <map>
#include <string>
#include <tuple>

#include "bars/steel_store.h"
#include "columns/column_records.h"

#include "shell/prompts.h"
#include "shell/shell_state.h"

class QTreeWidget;
class QTreeWidgetItem;

namespace orvak::app {

class ProjectExplorer : public QDockWidget {
    Q_OBJECT
public:
    /// The tree's columns.
    enum Column { ElementColumn, StateColumn, WhenColumn };

    /// `shell` must outlive the dock.
    explicit ProjectExplorer(shell::ShellState& shell, QWidget* parent = nullptr);

    QTreeWidget* tree() const { return m_tree; }

public slots:
    /// Reads the floors, beams, design states and sheets of the current project again; what
    /// was expanded stays expanded. Reads only: no store is made where there is none.
    void refresh();
    void readPrompts();

signals:
    /// A sheet was chosen (a double click on it, or a beam's listing from its menu).
    void sheetChosen(const std::filesystem::path& sheet);
    /// A beam was chosen (a double click on it, or its menu): its form is to open.
    void beamChosen(int floor, int number);
    /// A column group was chosen (a double click on it, or the menu of a group or of a
    /// level's groups, `number` 0): the column groups form is to open at it. `floor` 0 is the
    /// footing level.
    void columnGroupChosen(int floor, int number);
    /// A footing group was chosen: the footing groups form is to open at it.
    void footingGroupChosen(int number);
    /// "Design all beams of the floor" was chosen in a floor's context menu.
    void designFloorRequested(int floor);

private:
    QString prompt(std::size_t n, std::string_view english) const;
    void activated(QTreeWidgetItem* item);
    void showMenu(const QPoint& at);
    using StateMap = std::map<std::tuple<std::string, int, int>, bars::DesignState>;
    void showState(QTreeWidgetItem* item, const bars::DesignState& state);
    /// The level's column groups under `parent`, with their states; nothing when it has none.
    void addColumnGroups(QTreeWidgetItem* parent, columns::ColumnLevel level,
                         const StateMap& states, const QSet<QString>& expanded);
    /// The project's footing groups under `parent` (the footing level), with their states.
    void addFootingGroups(QTreeWidgetItem* parent, const StateMap& states,
                          const QSet<QString>& expanded);

    shell::ShellState& m_shell;
    shell::PromptList m_prompts;
    QTreeWidget* m_tree;
};

} // namespace orvak::app
