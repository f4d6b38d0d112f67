// The project explorer: a dock of the main window with the project's floors, under each its
// beams with what their last design made of them (and when), and the project's sheets. A
// double click opens a sheet in the text viewer, or a beam in the beam form; a beam's menu
// opens its flexure listing too.
#pragma once

#include <QDockWidget>
#include <filesystem>

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
    /// "Design all beams of the floor" was chosen in a floor's context menu.
    void designFloorRequested(int floor);

private:
    QString prompt(std::size_t n, std::string_view english) const;
    void activated(QTreeWidgetItem* item);
    void showMenu(const QPoint& at);

    shell::ShellState& m_shell;
    shell::PromptList m_prompts;
    QTreeWidget* m_tree;
};

} // namespace orvak::app
