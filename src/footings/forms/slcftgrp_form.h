// SlcFtGrp: picks one footing group, from the list or by its number.
#pragma once

#include <vector>

#include "footings/footing_records.h"
#include "ui/numbered_choice.h"

namespace orvak::footings::forms {

inline constexpr ui::NumberedChoiceTexts kSlcFtGrpTexts{"SLCFTGRP", "Choose a footing group",
                                                        "Group number"};

/// Asks for one of `groups` (shown by their position in the list); returns the position
/// (1-based), 0 when none was chosen.
int chooseFootingGroup(QWidget* parent, const shell::ShellState& shell,
                       const std::vector<StoredFootingGroup>& groups, int current = 0);

} // namespace orvak::footings::forms
