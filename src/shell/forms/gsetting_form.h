// Gsetting: the software settings form, the language and the configuration items of SWC.
// Saving writes SWC; a new language makes the main window reload every caption.
#pragma once

#include <QMessageBox>
#include <QWidget>
#include <functional>

#include "shell/prompts.h"
#include "shell/shell_state.h"

class QComboBox;
class QLabel;
class QPushButton;

namespace orvak::ui {
class InputGrid;
}

namespace orvak::shell::forms {

class Gsetting : public QWidget {
    Q_OBJECT
public:
    /// 0-based grid rows of the SWC items.
    static constexpr int kText1Row = 0;
    static constexpr int kText2Row = 1;
    static constexpr int kText3Row = 2;
    static constexpr int kSettingARow = 3;
    static constexpr int kSettingBRow = 4;
    static constexpr int kSettingCRow = 5;
    static constexpr int kText4Row = 6;
    static constexpr int kRowCount = 7;

    explicit Gsetting(shell::ShellState& shell, QWidget* parent = nullptr);

    ui::InputGrid* grid() const { return m_grid; }
    QComboBox* languageBox() const { return m_language; }
    bool isChanged() const;

    /// Checks the items and writes SWC. False, after telling the user, when an item is
    /// refused or SWC cannot be written; the shell's configuration is then as it was.
    bool save();

    void setAskHook(std::function<QMessageBox::StandardButton(const QString&)> hook) {
        m_askHook = std::move(hook);
    }
    void setMessageHook(std::function<void(const QString&)> hook);

public slots:
    /// Reloads the captions in the current language; what was typed stays.
    void readPrompts();

signals:
    /// SWC was written with another language: every caption must be read again.
    void languageChanged();
    /// SWC was written; the text says so in the user's language.
    void saved(const QString& message);

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void loadConfig();
    void tell(const QString& message) const;
    /// Puts the user on a refused row when the form is on screen.
    void showCell(int row);

    shell::ShellState& m_shell;
    shell::PromptList m_prompts;
    QLabel* m_languageLabel;
    QComboBox* m_language;
    ui::InputGrid* m_grid;
    QPushButton* m_saveButton;
    QPushButton* m_exitButton;
    std::function<QMessageBox::StandardButton(const QString&)> m_askHook;
    std::function<void(const QString&)> m_messageHook;
    bool m_changedBeforeRelabel = false;
};

} // namespace orvak::shell::forms
