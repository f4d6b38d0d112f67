// SlcFtGrp: the groups' names in the user's language.
#include "footings/forms/slcftgrp_form.h"

#include "ui/qt_text.h"

namespace orvak::footings::forms {

int chooseFootingGroup(QWidget* parent, const shell::ShellState& shell,
                       const std::vector<StoredFootingGroup>& groups, int current) {
    QStringList names;
    for (const StoredFootingGroup& g : groups) {
        names << ui::toQString(g.group.name, shell.language());
    }
    return ui::NumberedChoice::choose(parent, shell, kSlcFtGrpTexts, names, current);
}

} // namespace orvak::footings::forms
