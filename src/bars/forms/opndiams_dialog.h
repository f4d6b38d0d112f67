// Opndiams: the diameter choice dialog, a list (`ListIN`) of the bar diameters of ROUNDBAR.DAT
// closed by its accept button `OKLISTIN` or its exit button `EXLISTIN`.
#pragma once

#include <QDialog>
#include <optional>

#include "bars/bar_tables.h"
#include "bars/forms/bar_form_support.h"
#include "shell/prompts.h"
#include "shell/shell_state.h"

class QLabel;
class QListWidget;
class QPushButton;

namespace orvak::bars::forms {

class Opndiams : public QDialog {
    Q_OBJECT
public:
    /// Lists the diameters `LoadBarDiameters` reads from the GENERAL folder (file order,
    /// duplicates kept). `shell` must outlive the dialog.
    explicit Opndiams(shell::ShellState& shell, QWidget* parent = nullptr);

    QListWidget* list() const { return m_list; }
    QPushButton* okButton() const { return m_ok; }
    QPushButton* exitButton() const { return m_exit; }
    const bars::BarDiameterList& diameters() const { return m_diameters; }

    /// The diameter (mm) of the chosen row; empty when none is chosen.
    std::optional<float> selectedDiameter() const;

    /// Runs the dialog and returns the chosen diameter; empty after `EXLISTIN`. With no bar
    /// in the table it tells general prompt 3 and does not open.
    std::optional<float> choose();

    /// Replaces the message box of an empty or unreadable bar table.
    void setMessageHook(ui::MessageHook hook) { m_messageHook = std::move(hook); }

public slots:
    void readPrompts();

private:
    shell::ShellState& m_shell;
    shell::PromptList m_prompts;
    bars::BarDiameterList m_diameters;
    QString m_loadError;
    QLabel* m_heading;
    QListWidget* m_list;
    QPushButton* m_ok;
    QPushButton* m_exit;
    ui::MessageHook m_messageHook;
};

} // namespace orvak::bars::forms
