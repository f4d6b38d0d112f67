// SlcClGrp: picks one column group of a level, from the list or by its number.
#pragma once

#include <vector>

#include "columns/column_records.h"
#include "ui/numbered_choice.h"

namespace orvak::columns::forms {

inline constexpr ui::NumberedChoiceTexts kSlcClGrpTexts{"SLCCLGRP", "Choose a column group",
                                                        "Group number"};

class SlcClGrp : public ui::NumberedChoice {
    Q_OBJECT
public:
    SlcClGrp(const shell::ShellState& shell, const std::vector<ColumnGroup>& groups,
             QWidget* parent = nullptr);
    int chosenGroup() const { return chosen(); }

    /// Asks for a group of `groups`; 0 when none was chosen.
    static int choose(QWidget* parent, const shell::ShellState& shell,
                      const std::vector<ColumnGroup>& groups, int current = 0);
};

} // namespace orvak::columns::forms
