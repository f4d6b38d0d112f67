// SlcClGrp: picks one column group of a level: from the list, or by typing its number in
// `GrpNoTxt` (which takes ".0123456789").
#pragma once

#include <QDialog>
#include <vector>

#include "columns/column_records.h"
#include "shell/shell_state.h"

class QLineEdit;
class QListWidget;

namespace orvak::columns::forms {

class SlcClGrp : public QDialog {
    Q_OBJECT
public:
    SlcClGrp(const shell::ShellState& shell, const std::vector<ColumnGroup>& groups,
             QWidget* parent = nullptr);
    QListWidget* groupList() const { return m_list; }
    QLineEdit* numberField() const { return m_number; }
    /// The chosen group's number (1-based), 0 for none.
    int chosenGroup() const;

    /// Asks for a group of `groups`; 0 when none was chosen.
    static int choose(QWidget* parent, const shell::ShellState& shell,
                      const std::vector<ColumnGroup>& groups, int current = 0);

private:
    QListWidget* m_list;
    QLineEdit* m_number;
};

} // namespace orvak::columns::forms
