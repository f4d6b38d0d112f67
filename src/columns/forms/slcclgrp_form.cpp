// SlcClGrp: the groups' names in the user's language.
#include "columns/forms/slcclgrp_form.h"

#include <QListWidget>

#include "ui/qt_text.h"

namespace orvak::columns::forms {

namespace {

QStringList names(const shell::ShellState& shell, const std::vector<ColumnGroup>& groups) {
    QStringList out;
    for (const ColumnGroup& g : groups) {
        out << ui::toQString(g.name, shell.language());
    }
    return out;
}

} // namespace

SlcClGrp::SlcClGrp(const shell::ShellState& shell, const std::vector<ColumnGroup>& groups,
                   QWidget* parent)
    : ui::NumberedChoice(shell, kSlcClGrpTexts, names(shell, groups), parent) {
    setObjectName(QStringLiteral("SlcClGrp"));
}

int SlcClGrp::choose(QWidget* parent, const shell::ShellState& shell,
                     const std::vector<ColumnGroup>& groups, int current) {
    SlcClGrp dialog(shell, groups, parent);
    if (current >= 1) {
        dialog.list()->setCurrentRow(current - 1);
    }
    return dialog.exec() == QDialog::Accepted ? dialog.chosen() : 0;
}

} // namespace orvak::columns::forms
