// Bmseting: the design settings of beams on four tabbed pages (`MTabStrip`; frames `GNRLFrm`,
// `DsgnFrm`, `BarSetFrm`, `FrmMAINSTL`), every field under its control name. Opened from the
// menu it edits the defaults in BMSETING.DAT of the GENERAL folder, which every new beam
// copies; `savebmseting` stores them, `DefCmd` restores the built-in values, `exitm` closes.
#pragma once

#include <QWidget>
#include <functional>
#include <map>
#include <string>

#include "beams/beam_settings.h"
#include "shell/prompts.h"
#include "shell/shell_state.h"
#include "ui/form_support.h"

class QCheckBox;
class QLineEdit;
class QPushButton;
class QTabWidget;

namespace orvak::beams::forms {

class Bmseting : public QWidget {
    Q_OBJECT
public:
    /// Edits BMSETING.DAT of the GENERAL folder (the built-in values where there is none).
    explicit Bmseting(shell::ShellState& shell, QWidget* parent = nullptr);
    /// Edits the copy of the settings that beam `beamNumber` of floor `floor` carries; saving
    /// writes it into the beam's record (the beam's earlier design then no longer stands).
    Bmseting(shell::ShellState& shell, int floor, int beamNumber, QWidget* parent = nullptr);
    /// The beam whose copy the form edits; 0 when it edits the defaults.
    int beamNumber() const { return m_beamNumber; }

    /// The field of a setting: its line edit (`index` for the tables DSTXT, THIKTXT,
    /// angleheight, FACDEADL, FACDAYNL), nullptr for a flag or an unknown name.
    QLineEdit* field(const std::string& name, std::size_t index = 0) const;
    /// The check box of a flag (a name ending in Chk or CHK), nullptr otherwise.
    QCheckBox* flag(const std::string& name) const;
    QTabWidget* tabs() const { return m_tabs; }

    /// The settings as the form shows them.
    BeamSettings shownSettings() const;
    /// Shows settings in every field.
    void showSettings(const BeamSettings& settings);
    bool isChanged() const;

    /// `savebmseting`: checks the settings as a design would and writes them. False, after
    /// telling the user which setting is refused, when they cannot be used or written; nothing
    /// is written then.
    bool save();
    /// `DefCmd`: the built-in values in every field (saved only by `savebmseting`).
    void restoreDefaults();

    void setAskHook(ui::AskHook hook) { m_askHook = std::move(hook); }
    void setMessageHook(ui::MessageHook hook) { m_messageHook = std::move(hook); }

public slots:
    void readPrompts();

signals:
    void saved(const QString& message);

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    QString prompt(std::size_t n, std::string_view english) const;
    QString label(const std::string& name) const;

    shell::ShellState& m_shell;
    shell::PromptList m_prompts;
    QTabWidget* m_tabs;
    std::map<std::string, std::vector<QLineEdit*>> m_fields;
    std::map<std::string, QCheckBox*> m_flags;
    std::map<std::string, QWidget*> m_labels;
    QPushButton* m_save;
    QPushButton* m_defaults;
    QPushButton* m_exit;
    BeamSettings m_stored; ///< what BMSETING.DAT holds (or the built-in values)
    int m_beamFloor = 0;
    int m_beamNumber = 0; ///< 0: the defaults of BMSETING.DAT
    QString m_beamName;
    ui::AskHook m_askHook;
    ui::MessageHook m_messageHook;
};

} // namespace orvak::beams::forms
