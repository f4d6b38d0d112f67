// The small dialog that picks one element of a numbered list (a column group, a footing
// group): from the list, or by typing its number in `GrpNoTxt` (which takes ".0123456789").
// Its caption and label come from the prompt file of the form that uses it.
#pragma once

#include <QDialog>
#include <QStringList>
#include <string_view>

#include "shell/shell_state.h"

class QLineEdit;
class QListWidget;

namespace orvak::ui {

/// The texts of a choice: the prompt file's key, and the English caption and label used when
/// the file is missing (prompts 1 and 2).
struct NumberedChoiceTexts {
    std::string_view promptKey;
    std::string_view caption;
    std::string_view label;
};

class NumberedChoice : public QDialog {
    Q_OBJECT
public:
    /// `items` are shown numbered from 1.
    NumberedChoice(const shell::ShellState& shell, const NumberedChoiceTexts& texts,
                   const QStringList& items, QWidget* parent = nullptr);
    QListWidget* list() const { return m_list; }
    QLineEdit* numberField() const { return m_number; }
    /// The chosen item's number (1-based), 0 for none.
    int chosen() const;

    /// Asks for one of `items`; 0 when none was chosen. `current` (1-based) starts chosen.
    static int choose(QWidget* parent, const shell::ShellState& shell,
                      const NumberedChoiceTexts& texts, const QStringList& items, int current = 0);

private:
    QListWidget* m_list;
    QLineEdit* m_number;
};

} // namespace orvak::ui
