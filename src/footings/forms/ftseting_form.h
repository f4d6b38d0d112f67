// FtSeting: the design settings of footings (FOOTSSET.DAT in the GENERAL folder): concrete and
// steel strengths, the soil's bearing capacity, the cover, the load factor, the least steel,
// the least depth and FacRowmax. Saved only when a design can use every value; a new footing
// group takes a copy.
#pragma once

#include <QWidget>
#include <map>
#include <optional>
#include <string>

#include "footings/footing_settings.h"
#include "shell/prompts.h"
#include "shell/shell_state.h"
#include "ui/form_support.h"

class QLabel;
class QLineEdit;
class QPushButton;

namespace orvak::footings::forms {

class FtSeting : public QWidget {
    Q_OBJECT
public:
    explicit FtSeting(shell::ShellState& shell, QWidget* parent = nullptr);

    /// The field of a setting by its stored name ("Fc", "SoilCapacity" ...).
    QLineEdit* field(std::string_view name) const;
    /// The settings as shown; a field that is not a number makes it empty (after telling).
    std::optional<FootingSettings> shownSettings();
    /// Writes the shown settings when a design can use them; false after telling why.
    bool save();
    /// Shows the built-in settings (saved only by save()).
    void restoreDefaults();
    bool isChanged() const;

    void setAskHook(ui::AskHook hook) { m_askHook = std::move(hook); }
    void setMessageHook(ui::MessageHook hook) { m_messageHook = std::move(hook); }

signals:
    void saved(const QString& message);

public slots:
    void readPrompts();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    QString prompt(std::size_t n, std::string_view english) const;
    void show(const FootingSettings& s);
    /// The shown settings; empty (and `bad` the field) when a field is not a number.
    std::optional<FootingSettings> parse(std::string* bad) const;

    shell::ShellState& m_shell;
    shell::PromptList m_prompts;
    FootingSettings m_stored;
    std::map<std::string, QLineEdit*, std::less<>> m_fields;
    std::map<std::string, QLabel*, std::less<>> m_labels;
    QLabel* m_note;
    QPushButton* m_save;
    QPushButton* m_defaults;
    QPushButton* m_exit;
    ui::AskHook m_askHook;
    ui::MessageHook m_messageHook;
};

} // namespace orvak::footings::forms
