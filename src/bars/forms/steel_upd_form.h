// SteelUpd: bar items entered by hand into the project's steel store: element kind and
// element, the item's numbers and bar, the element's item list; new, edit, save, delete.
#pragma once

#include <QWidget>
#include <array>
#include <cstddef>
#include <optional>

#include "bars/forms/bar_form_support.h"
#include "bars/steel_store.h"
#include "shell/prompts.h"
#include "shell/shell_state.h"

class QButtonGroup;
class QComboBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;
class QRadioButton;
class QToolButton;

namespace orvak::bars::forms {

class SteelUpd : public QWidget {
    Q_OBJECT
public:
    /// The edit fields of an item, in the order of the form.
    enum class Field {
        Slab,          ///< CIELINDEX
        ElementNumber, ///< BEAMINDEX
        SubBuilding,   ///< SUBBUILDNO
        Mark,          ///< IRONINDEX
        Quantity,      ///< `QNTTXT`, digits only
        Diameter,      ///< `DiamTxt`, mm
        Length,        ///< cm, one bar
        Shape,         ///< `ShpTxt`
        Sheet,         ///< `SheetTxt`
        Description,   ///< `DescTxt`, at most 25 characters
    };
    static constexpr std::size_t kFieldCount = 10;
    /// Bar kinds offered by the `IrnTypeOpt` buttons (IRONTYPE 0, 1, 2).
    static constexpr int kBarKinds = 3;

    /// Works on the current project of `shell` (which must have one and outlive the form).
    explicit SteelUpd(shell::ShellState& shell, QWidget* parent = nullptr);

    QRadioButton* kindOption(bars::ElementKind kind) const;
    QComboBox* elementBox() const { return m_element; }
    QLineEdit* field(Field f) const { return m_fields[static_cast<std::size_t>(f)]; }
    QRadioButton* barKindOption(int kind) const;
    QListWidget* itemsList() const { return m_items; }
    /// The key of each row of the item list.
    QString itemKey(int row) const;

    bars::ElementKind elementKind() const;
    void setElementKind(bars::ElementKind kind);

    /// `SV`: writes the item of the edit fields; a row with its key is changed, else one is
    /// added. False, after telling the user, when a field is refused or the store fails.
    bool saveItem();
    /// `TNEW`: clears the bar fields for a new item, proposing the next free mark.
    void newItem();
    /// `UPD`: puts the chosen item of the list into the edit fields; false when none is chosen.
    bool editItem();
    /// `delqnt`: asks (Yes/No, default No), then deletes the item whose key the fields give.
    bool deleteItem();
    /// `QntDelall`: asks, then deletes every item of the element kind and element; returns
    /// how many went.
    std::size_t deleteAllItems();

    /// Offers to import the old Iron.MDB of the project, if it waits, and lists the items.
    /// Runs once when the form is first shown.
    void openStore();

    void setAskHook(ui::AskHook hook) { m_askHook = std::move(hook); }
    void setMessageHook(ui::MessageHook hook) { m_messageHook = std::move(hook); }

public slots:
    /// Reloads the captions in the current language; what was typed stays.
    void readPrompts();

signals:
    /// The store changed; the text says how.
    void saved(const QString& message);

protected:
    void showEvent(QShowEvent* event) override;

private:
    QString prompt(std::size_t n, std::string_view fallback) const;
    void tell(const QString& message) const;
    /// The store, made when `create` is set and there is none.
    bool ensureStore(bool create);
    void refillElements();
    void refillItems();
    /// The element name changed: its items are listed and its numbers put up.
    void elementChosen();
    /// The item of the edit fields; empty after telling the user what is wrong.
    std::optional<bars::SteelItem> itemFromFields();
    void showItem(const bars::SteelItem& item);
    void chooseDiameter();

    shell::ShellState& m_shell;
    shell::PromptList m_prompts;
    std::optional<bars::IronDatabase> m_db;
    bool m_storeOffered = false;

    QGroupBox* m_elementGroup;
    QGroupBox* m_barGroup;
    QGroupBox* m_itemsGroup;
    std::array<QRadioButton*, 3> m_kindOptions{};
    QButtonGroup* m_kindGroup;
    QComboBox* m_element;
    std::array<QLineEdit*, kFieldCount> m_fields{};
    std::array<QLabel*, kFieldCount> m_fieldLabels{};
    QLabel* m_elementLabel;
    QLabel* m_barKindLabel;
    std::array<QRadioButton*, kBarKinds> m_barKinds{};
    QButtonGroup* m_barKindGroup;
    QToolButton* m_diameterChoice;
    QLabel* m_listHeading;
    QListWidget* m_items;
    QPushButton* m_new;
    QPushButton* m_edit;
    QPushButton* m_save;
    QPushButton* m_delete;
    QPushButton* m_deleteAll;
    QPushButton* m_exit;
    ui::AskHook m_askHook;
    ui::MessageHook m_messageHook;
};

} // namespace orvak::bars::forms
