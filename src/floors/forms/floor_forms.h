// The floor forms of the "Cielling" menu: `NewCiel` adds a floor, `SlcCiel` chooses the current
// floor (and deletes one), `CielData` edits the names and levels of the floors and `CielThick`
// their slab thicknesses. The beam and column forms work on the current floor, which the main
// window's status bar shows.
#pragma once

#include <QString>
#include <QWidget>
#include <array>
#include <vector>

#include "floors/floors.h"
#include "shell/prompts.h"
#include "shell/shell_state.h"
#include "ui/form_support.h"
#include "ui/grid_form.h"

class QTableWidget;
class QPushButton;

namespace orvak::floors::forms {

/// The prompt file of the floor forms ("CIELE.TXT", "CIELH.TXT").
inline constexpr std::string_view kFloorPromptKey = "CIEL";

/// A floor as the forms list it: "2 - First floor", or "2" when it has no name.
QString floorCaption(const Floor& floor, std::string_view language);

/// "Floor: 2 - First floor", or "Floor: (none)", in the user's language, for the status bar.
QString currentFloorText(const shell::ShellState& shell);

/// Makes the project's first floor current when the current one is not a floor of the
/// project (a project just opened, a floor deleted); none when the project has no floor or
/// its floor list cannot be read.
void chooseDefaultFloor(shell::ShellState& shell);

/// The three grid forms of the floors: one row per floor (New: one row for the new floor).
class FloorGridForm : public ui::GridForm {
    Q_OBJECT
public:
    enum class Kind {
        New,       ///< `NewCiel`: number, name, level and slab thickness of a new floor
        Data,      ///< `CielData`: the name and level of every floor
        Thickness, ///< `CielThick`: the slab thickness of every floor
    };

    FloorGridForm(Kind kind, shell::ShellState& shell, QWidget* parent = nullptr);

    Kind kind() const { return m_kind; }

protected:
    /// New: adds the floor, makes it current and offers the next number. Data, Thickness:
    /// rewrites CIELS.DAT with the floors as shown. Throws FileError; InputError is told.
    std::size_t writeTable(const ui::GridProgress& progress) override;
    bool rowInUse(int row) const override;

private:
    void load();
    void showNewRow();

    Kind m_kind;
    std::vector<Floor> m_floors; ///< as read (Data, Thickness) or the floors so far (New)
    /// The texts the grid showed for each floor when loaded or last saved.
    std::vector<std::array<QString, 4>> m_shown;
};

/// `NewCiel`, `CielData`, `CielThick`.
class NewCiel : public FloorGridForm {
    Q_OBJECT
public:
    explicit NewCiel(shell::ShellState& shell, QWidget* parent = nullptr)
        : FloorGridForm(Kind::New, shell, parent) {}
};
class CielData : public FloorGridForm {
    Q_OBJECT
public:
    explicit CielData(shell::ShellState& shell, QWidget* parent = nullptr)
        : FloorGridForm(Kind::Data, shell, parent) {}
};
class CielThick : public FloorGridForm {
    Q_OBJECT
public:
    explicit CielThick(shell::ShellState& shell, QWidget* parent = nullptr)
        : FloorGridForm(Kind::Thickness, shell, parent) {}
};

/// `SlcCiel`: the list of the project's floors (number, name, level, slab thickness and how
/// many beams each holds); "Choose" (or a double click) makes one current, "Delete" deletes
/// one with its beams and their steel quantities after asking.
class SlcCiel : public QWidget {
    Q_OBJECT
public:
    explicit SlcCiel(shell::ShellState& shell, QWidget* parent = nullptr);

    QTableWidget* list() const { return m_list; }
    /// Makes the floor of the selected row current; false when none is selected.
    bool chooseSelected();
    /// Asks, then deletes the floor of the selected row: its beam file, its steel items and
    /// its record. True when it was deleted.
    bool deleteSelected();

    void setAskHook(ui::AskHook hook) { m_askHook = std::move(hook); }
    void setMessageHook(ui::MessageHook hook) { m_messageHook = std::move(hook); }

public slots:
    void readPrompts();

signals:
    /// The current floor changed, or a floor was deleted; the text says so.
    void saved(const QString& message);

private:
    void load();
    QString prompt(std::size_t n, std::string_view english) const;

    shell::ShellState& m_shell;
    shell::PromptList m_prompts;
    std::vector<Floor> m_floors;
    QTableWidget* m_list;
    QPushButton* m_choose;
    QPushButton* m_delete;
    QPushButton* m_exit;
    ui::AskHook m_askHook;
    ui::MessageHook m_messageHook;
};

} // namespace orvak::floors::forms
