#!/usr/bin/env bash
# Who may include whom: the engines never include Qt, the ui or a form; a lower engine never
# includes a higher one; the shell knows no domain; the ui knows no form and not the app.
#
#   check_include_rules.sh <src folder>          checks a source tree
#   check_include_rules.sh --self-test <folder>  checks the checker on a small tree it writes
#                                                there, with one fault per rule
# Every offending include is printed as "src/<file>:<line>: includes <target>: <rule>".
set -euo pipefail

# The engines from lowest to highest; engines of one rank are siblings.
declare -A rank=([core]=0 [shell]=1 [floors]=2 [bars]=2 [beams]=3 [columns]=4 [footings]=5
                 [model]=6 [jobs]=7 [cli]=8)

# Breaches known and waiting for a move: a file, and the one rule it may still break.
declare -A pending=()

is_engine() { [[ -n "$1" && -n "${rank[$1]+set}" ]]; }

# The part of the program a path under src/ belongs to: an engine's name, "forms" (any
# <domain>/forms folder), "ui" or "app"; empty for a path outside every known part.
part_of() {
    local path="$1" top="${1%%/*}"
    if [[ "$path" == */forms/* && "${path#*/}" == forms/* ]]; then
        echo forms
    elif [[ "$top" == ui || "$top" == app ]] || is_engine "$top"; then
        echo "$top"
    fi
}

# Why a file of part $1 may not include $2 ($3 is "qt" for a Qt header); nothing when it may.
broken_rule() {
    local part="$1" target="$2" qt="$3" target_part
    target_part="$(part_of "$target")"
    if is_engine "$part"; then
        if [[ "$qt" == qt ]]; then
            echo "an engine never includes Qt"
        elif [[ "$target_part" == ui || "$target_part" == app || "$target_part" == forms ]]; then
            echo "an engine never includes the ui, a form or the app"
        elif ! is_engine "$target_part"; then
            return 0
        elif [[ "$part" == shell && "$target_part" != core && "$target_part" != shell ]]; then
            echo "the shell knows no domain"
        elif ((rank[$target_part] > rank[$part])); then
            echo "$part is below $target_part and may not include it"
        elif ((rank[$target_part] == rank[$part])) && [[ "$target_part" != "$part" ]]; then
            echo "$part and $target_part are siblings and may not include each other"
        fi
    elif [[ "$part" == ui ]]; then
        if [[ "$target_part" == forms || "$target_part" == app ]]; then
            echo "the ui holds shared widgets and includes no form and not the app"
        fi
    elif [[ "$part" == forms && "$target_part" == app ]]; then
        echo "a form never includes the app"
    fi
}

# Prints every offence in the tree $1 (a src folder); returns 1 when there is any.
check_tree() {
    local root="$1" status=0 file relative part number text target rule
    while IFS= read -r -d '' file; do
        relative="${file#"$root"/}"
        part="$(part_of "$relative")"
        if [[ -z "$part" ]]; then
            echo "src/$relative: its folder is not in the include rules" \
                 "(tests/check_include_rules.sh); add it at its place in the order"
            status=1
            continue
        fi
        while IFS=: read -r number text; do
            [[ "$text" =~ ^[[:space:]]*#[[:space:]]*include[[:space:]]*([\<\"])([^\>\"]+)[\>\"] ]] ||
                continue
            target="${BASH_REMATCH[2]}"
            local qt=""
            if [[ "${BASH_REMATCH[1]}" == "<" && "$target" == Q* ]]; then
                qt=qt
            fi
            rule="$(broken_rule "$part" "$target" "$qt")"
            if [[ -n "$rule" && "${pending["src/$relative"]:-}" == "$rule" ]]; then
                echo "note: src/$relative:$number: includes $target: $rule (pending a move)"
            elif [[ -n "$rule" ]]; then
                echo "src/$relative:$number: includes $target: $rule"
                status=1
            fi
        done < <(grep -nE '^[[:space:]]*#[[:space:]]*include' "$file" || true)
    done < <(find "$root" -type f \( -name '*.h' -o -name '*.hpp' -o -name '*.cpp' \) -print0 |
             sort -z)
    return "$status"
}

self_test() {
    local work="$1" root="$1/src" path text
    rm -rf "$work"
    # One fault per rule (the line after a first comment line) ...
    local -a faults=(
        "core/a.h|#include <QString>"
        "beams/a.cpp|#include \"ui/input_grid.h\""
        "bars/a.cpp|#include \"beams/forms/bm_design.h\""
        "cli/a.cpp|#include \"app/main_frame.h\""
        "shell/a.cpp|  #  include \"bars/bar_tables.h\""
        "shell/b.h|#include \"model/project_model.h\""
        "floors/a.h|#include \"beams/beam_record.h\""
        "floors/b.h|#include \"bars/bar_tables.h\""
        "beams/b.cpp|#include \"columns/column.h\""
        "model/a.cpp|#include \"jobs/runner.h\""
        "jobs/a.cpp|#include \"cli/commands.h\""
        "ui/a.cpp|#include \"shell/forms/gsetting_form.h\""
        "ui/b.cpp|#include \"app/main_frame.h\""
        "beams/forms/a.cpp|#include \"app/main_frame.h\"")
    # ... and includes that every rule allows.
    local -a allowed=(
        $'core/ok.cpp|#include "core/record.h"\n#include <vector>\n// #include <QString> is a comment'
        $'shell/ok.cpp|#include "core/error.h"\n#include "shell/prompts.h"'
        $'shell/forms/ok.cpp|#include <QWidget>\n#include "ui/input_grid.h"\n#include "shell/startup.h"'
        $'model/ok.cpp|#include "beams/beam_record.h"\n#include "floors/floors.h"\n#include "shell/projects.h"'
        $'cli/ok.cpp|#include "model/project_model.h"\n#include "jobs/runner.h"\n#include <CLI/CLI.hpp>'
        $'ui/ok.cpp|#include <QTableView>\n#include "shell/prompts.h"'
        $'beams/forms/ok.cpp|#include "ui/input_grid.h"\n#include "beams/beam_record.h"'
        $'app/ok.cpp|#include "ui/input_grid.h"\n#include "model/shipped_data.h"\n#include <QApplication>')
    local expected="" entry
    for entry in "${faults[@]}"; do
        path="${entry%%|*}"
        text="${entry#*|}"
        mkdir -p "$(dirname "$root/$path")"
        printf '// fixture\n%s\n' "$text" >"$root/$path"
        [[ "$text" =~ [\"\<]([^\"\>]+)[\"\>] ]]
        expected+="src/$path:2: includes ${BASH_REMATCH[1]}"$'\n'
    done
    for entry in "${allowed[@]}"; do
        path="${entry%%|*}"
        mkdir -p "$(dirname "$root/$path")"
        printf '%s\n' "${entry#*|}" >"$root/$path"
    done
    local report found
    if report="$(check_tree "$root")"; then
        echo "The include check passed a tree with ${#faults[@]} faults."
        return 1
    fi
    found="$(sed -E 's/^(.*:[0-9]+: includes [^:]+): .*$/\1/' <<<"$report" | sort)"
    if [[ "$found" != "$(sort <<<"${expected%$'\n'}")" ]]; then
        printf 'The include check reported:\n%s\nbut should have reported exactly:\n%s' \
            "$report" "$expected"
        return 1
    fi
    # A folder the rules do not know is refused rather than let through unchecked.
    mkdir -p "$root/drawing"
    printf '#include "core/record.h"\n' >"$root/drawing/a.cpp"
    report="$(check_tree "$root" || true)"
    if ! grep -q '^src/drawing/a.cpp: its folder is not in the include rules' <<<"$report"; then
        echo "A file in an unknown folder src/drawing went unreported."
        return 1
    fi
    echo "The include check reports each broken rule and only those."
}

if [[ "${1:-}" == --self-test && $# -eq 2 ]]; then
    self_test "$2"
elif [[ $# -eq 1 && -d "$1" ]]; then
    if ! check_tree "$1"; then
        echo "Some includes break the include rules (core < shell < floors, bars < beams <" \
             "columns < footings < model < jobs < cli; ui < <domain>/forms < app)."
        exit 1
    fi
    echo "Every include keeps the include rules."
else
    echo "usage: $0 <src folder> | --self-test <work folder>" >&2
    exit 2
fi
