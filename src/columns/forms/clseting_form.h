// Clseting: the design settings of columns (COLSSET.DAT of the GENERAL folder, which every new
// column group copies), every field under its control name; `saveclseting` stores them,
// `DefCmd` restores the built-in values, `exitm` closes.
#pragma once

#include <QWidget>
#include <map>
#include <string>
#include <vector>

#include "columns/column_settings.h"
#include "shell/prompts.h"
#include "shell/shell_state.h"
#include "ui/form_support.h"

class QCheckBox;
class QLineEdit;
class QPushButton;

namespace orvak::columns::forms {

class Clseting : public QWidget {
    Q_OBJECT
public:
    explicit Clseting(shell::ShellState& shell, QWidget* parent = nullptr);

    /// The field of a setting by its stored name (Fc, FY, FYties, Cover, KFactor, BdFactor,
    /// Tolerance; `index` 0..6 for PhiPercent, EccPercent, MinSteelPercent and TypeNames);
    /// nullptr for the flag Braced or an unknown name.
    QLineEdit* field(const std::string& name, std::size_t index = 0) const;
    /// The check box of the flag Braced.
    QCheckBox* braced() const { return m_braced; }

    /// The settings as the form shows them; a type name the code page cannot write is left
    /// empty in `unwritableName` (1-based type), else 0.
    ColumnSettings shownSettings(int* unwritableName = nullptr) const;
    void showSettings(const ColumnSettings& settings);
    bool isChanged() const;

    /// `saveclseting`: checks the settings as a design would and writes them. False, after
    /// telling the user which setting is refused, when they cannot be used or written; nothing
    /// is written then.
    bool save();
    /// `DefCmd`: the built-in values in every field (saved only by `saveclseting`).
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

    shell::ShellState& m_shell;
    shell::PromptList m_prompts;
    std::map<std::string, std::vector<QLineEdit*>> m_fields;
    std::map<std::string, QWidget*> m_labels;
    std::vector<QWidget*> m_captions; ///< the two panel titles and the type table's headings
    QCheckBox* m_braced;
    QPushButton* m_save;
    QPushButton* m_defaults;
    QPushButton* m_exit;
    ColumnSettings m_stored; ///< what COLSSET.DAT holds (or the built-in values)
    ui::AskHook m_askHook;
    ui::MessageHook m_messageHook;
};

} // namespace orvak::columns::forms
