// SteelQnt: the steel-quantity report. Elements of the project's steel store are chosen on
// tabs (`SSTab1`) with an "all" box per list; `MainOk` opens the report in the text viewer.
#pragma once

#include <QWidget>
#include <array>
#include <optional>
#include <string>
#include <vector>

#include "bars/forms/bar_form_support.h"
#include "bars/steel_store.h"
#include "shell/prompts.h"
#include "shell/shell_state.h"

class QCheckBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;
class QTabWidget;

namespace orvak::ui {
class EditAsc;
}

namespace orvak::bars::forms {

class SteelQnt : public QWidget {
    Q_OBJECT
public:
    /// The lists of the tabs, in their order.
    enum class ElementList {
        ExtraItems,    ///< `StrucList`: items entered as extra items (stairs, walls ...)
        ColumnGroups,  ///< `LSTCol`
        FootingGroups, ///< `LSTFoot`
        Floors,        ///< `CielList`: the beams and slabs of the floors
    };
    static constexpr std::size_t kListCount = 4;

    /// Reads the element names of the current project's store (which it never makes). `shell`
    /// must have a project and outlive the form.
    explicit SteelQnt(shell::ShellState& shell, QWidget* parent = nullptr);

    QTabWidget* tabs() const { return m_tabs; }
    QListWidget* list(ElementList which) const { return m_lists[index(which)]; }
    /// The "all" box of a list (`AllStrucchk`, `AllColsGroupschk`, `AllFootsGroupschk`,
    /// `CielChk`).
    QCheckBox* allBox(ElementList which) const { return m_allBoxes[index(which)]; }
    /// `AllItemschk`: every element of every list.
    QCheckBox* allItemsBox() const { return m_allItems; }
    /// `RoundupTxt`: takes only the characters ".0123456789".
    QLineEdit* roundupField() const { return m_roundup; }

    /// Ticks the element of that name in every list that holds it; false when none does.
    bool chooseElement(const QString& name, bool chosen = true);
    /// The ticked elements (stored names), each once, in the order of the tabs.
    std::vector<std::string> chosenElements() const;

    /// `MainOk`: the report of the ticked elements in the text viewer; nullptr, after telling
    /// the user, when none is ticked, the bar table is empty or the store cannot be read.
    ui::EditAsc* report();

    /// Reads the element names of the store again (offering an old Iron.MDB for import).
    void refreshLists();

    void setAskHook(ui::AskHook hook) { m_askHook = std::move(hook); }
    void setMessageHook(ui::MessageHook hook) { m_messageHook = std::move(hook); }

public slots:
    /// Reloads the captions in the current language; the choice stays.
    void readPrompts();

protected:
    void showEvent(QShowEvent* event) override;

private:
    static std::size_t index(ElementList which) { return static_cast<std::size_t>(which); }
    QString prompt(std::size_t n, std::string_view fallback) const;
    void tell(const QString& message) const;
    void fillLists(const std::array<std::vector<std::string>, kListCount>& names);
    void syncAllBox(std::size_t list);
    void setAll(std::size_t list, bool checked);

    shell::ShellState& m_shell;
    shell::PromptList m_prompts;
    std::optional<bars::IronDatabase> m_db;
    bool m_storeOffered = false;

    QCheckBox* m_allItems;
    QTabWidget* m_tabs;
    std::array<QListWidget*, kListCount> m_lists{};
    std::array<QCheckBox*, kListCount> m_allBoxes{};
    QLabel* m_emptyNote;
    QLabel* m_roundupLabel;
    QLineEdit* m_roundup;
    QPushButton* m_ok;
    QPushButton* m_exit;
    ui::AskHook m_askHook;
    ui::MessageHook m_messageHook;
    bool m_syncing = false;
};

} // namespace orvak::bars::forms
