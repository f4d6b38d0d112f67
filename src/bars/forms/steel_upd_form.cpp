// SteelUpd: the hand-entered bar items of the project's steel store. The fields give an item
// and its key; `SV` edits the row of that key or adds one, `delqnt` and `QntDelall` delete.
#include "bars/forms/steel_upd_form.h"

#include <QButtonGroup>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QRegularExpressionValidator>
#include <QShowEvent>
#include <QSpacerItem>
#include <QToolButton>
#include <QVBoxLayout>
#include <algorithm>

#include "bars/bar_table_grid.h"
#include "bars/forms/opndiams_dialog.h"
#include "bars/steel_report.h"
#include "core/error.h"
#include "ui/general_prompts.h"
#include "ui/qt_text.h"

namespace orvak::bars::forms {

namespace {

constexpr std::string_view kPromptKey = "SteelUpd";

// Prompts of the form, in the order of its prompt file (from line 2).
enum Prompt : std::size_t {
    kCaption = 1,
    kElementGroup,
    kSlabOption,
    kFootingOption,
    kExtraOption,
    kElementLabel,
    kFirstFieldLabel, ///< one label per Field, in their order
    kBarGroup = kFirstFieldLabel + SteelUpd::kFieldCount,
    kBarKindLabel,
    kFirstBarKind, ///< one caption per bar kind
    kItemsGroup = kFirstBarKind + SteelUpd::kBarKinds,
    kListHeading, ///< "@1:" .. "@7:" the columns of the item list
    kNewButton,
    kEditButton,
    kSaveButton,
    kDeleteButton,
    kDeleteAllButton,
    kExitButton,
    kChooseDiameterTip,
    kNoElement,
    kNoDiameter,
    kAdded,             ///< "%1" the key
    kChanged,           ///< "%1" the key
    kDeleteQuestion,    ///< "%1" the key
    kDeleteAllQuestion, ///< "%1" count, "%2" element
    kNoneChosen,
    kNoSuchItem, ///< "%1" the key
    kDeleted,    ///< "%1" count
    kImportQuestion,
    kOtherElementQuestion, ///< "%1" the key, "%2" the element that holds it
    kPromptCount = kOtherElementQuestion,
};

struct FieldRule {
    const char* objectName;
    const char* pattern; ///< the characters the field takes
    int maxLength;
    int shownChars;
    std::string_view label;
};

// Key numbers are kept within their places of the item key (slab 3, element 3, mark 4 and
// sub-building 3 digits), so that two items typed apart never share a key unnoticed.
constexpr std::array<FieldRule, SteelUpd::kFieldCount> kFieldRules = {{
    {"SlabTxt", "[0-9]*", 3, 4, "Floor no.:"},
    {"ElmNoTxt", "[0-9]*", 3, 4, "Element no.:"},
    {"SubBldTxt", "[0-9]*", 3, 4, "Sub-building:"},
    {"MarkTxt", "[0-9]*", 4, 5, "Mark:"},
    {"QNTTXT", "[0-9]*", 5, 6, "Number of bars:"},
    {"DiamTxt", "[0-9]{0,3}(\\.[0-9]{0,2})?", 6, 7, "Diameter (mm):"},
    {"LengthTxt", "[0-9]{0,5}(\\.[0-9]{0,2})?", 8, 9, "Length (cm):"},
    {"ShpTxt", "[0-9]*", 4, 5, "Shape:"},
    {"SheetTxt", "[0-9]*", 4, 5, "Sheet:"},
    {"DescTxt", nullptr, static_cast<int>(bars::kDescriptionWidth), 27, "Description:"},
}};

constexpr std::array<std::string_view, SteelUpd::kBarKinds> kBarKindNames = {"Main bar", "Stirrup",
                                                                             "Other"};

constexpr std::array<bars::ElementKind, 3> kKinds = {
    bars::ElementKind::Slab, bars::ElementKind::Footing, bars::ElementKind::Extra};
constexpr std::array<const char*, 3> kKindObjectNames = {"Cielopt", "Footopt", "Extraopt"};
constexpr std::array<std::string_view, 3> kKindNames = {"Floor (beams, slabs)", "Footing",
                                                        "Extra items"};

/// Columns of the item list line: width, blanks after the value, left-aligned text.
struct ListColumn {
    int width;
    int trailing;
    bool left;
};
constexpr std::array<ListColumn, 7> kListColumns = {{
    {5, 1, false}, // "#### "
    {20, 1, true}, // "\23456789012345678\ "
    {10, 1, true}, // "\       \ ", the bar kind's name
    {7, 1, false}, // " ##### "
    {8, 1, false}, // "  ##.## "
    {9, 1, false}, // " ####.## "
    {3, 1, false}, // " # "
}};
constexpr std::string_view kEnglishListHeading =
    "@1:Mark@2:Description@3:Kind@4:Bars@5:Diam.@6:Length@7:Shape";

/// The heading of the item list: each text over its column, numbers' headings ending where
/// the numbers end; a heading wider than its column pushes the next one along.
QString listHeading(const std::string& prompt, std::string_view language) {
    QString line;
    int start = 0;
    for (std::size_t k = 0; k < kListColumns.size(); ++k) {
        const ListColumn& column = kListColumns[k];
        std::string text = shell::placeholderText(prompt, static_cast<int>(k) + 1);
        if (text.empty()) {
            text = shell::placeholderText(kEnglishListHeading, static_cast<int>(k) + 1);
        }
        const QString heading = ui::toQString(text, language);
        const int room = column.width - column.trailing;
        const QString cell =
            column.left ? heading.leftJustified(room) : heading.rightJustified(room);
        // A heading that filled its column's blank too keeps one blank before the next.
        if (line.size() < start) {
            line = line.leftJustified(start);
        } else if (!line.isEmpty()) {
            line += QLatin1Char(' ');
        }
        line += cell;
        start += column.width;
    }
    return line;
}

/// Element names compare as the store compares them: without regard to ASCII case.
bool sameElement(const std::string& a, const std::string& b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](char x, char y) {
        const auto lower = [](char c) {
            return (c >= 'A' && c <= 'Z') ? static_cast<char>(c - 'A' + 'a') : c;
        };
        return lower(x) == lower(y);
    });
}

QString numberText(float value) {
    return QString::fromStdString(bars::cellTextFor(value));
}

} // namespace

SteelUpd::SteelUpd(shell::ShellState& shell, QWidget* parent)
    : QWidget(parent), m_shell(shell), m_elementGroup(new QGroupBox(this)),
      m_barGroup(new QGroupBox(this)), m_itemsGroup(new QGroupBox(this)),
      m_kindGroup(new QButtonGroup(this)), m_element(new QComboBox(this)),
      m_elementLabel(new QLabel(this)), m_barKindLabel(new QLabel(this)),
      m_barKindGroup(new QButtonGroup(this)), m_diameterChoice(new QToolButton(this)),
      m_listHeading(new QLabel(this)), m_items(new QListWidget(this)), m_new(new QPushButton(this)),
      m_edit(new QPushButton(this)), m_save(new QPushButton(this)), m_delete(new QPushButton(this)),
      m_deleteAll(new QPushButton(this)), m_exit(new QPushButton(this)) {
    setObjectName(QStringLiteral("SteelUpd"));
    ORVAK_ASSERT(m_shell.hasProject());

    // Element: its kind, its name and the numbers that key its items.
    auto* kindRow = new QHBoxLayout;
    for (std::size_t i = 0; i < kKinds.size(); ++i) {
        m_kindOptions[i] = new QRadioButton(m_elementGroup);
        m_kindOptions[i]->setObjectName(QString::fromLatin1(kKindObjectNames[i]));
        m_kindGroup->addButton(m_kindOptions[i], static_cast<int>(kKinds[i]));
        kindRow->addWidget(m_kindOptions[i]);
    }
    kindRow->addStretch(1);
    m_element->setObjectName(QStringLiteral("ElementCmb"));
    m_element->setEditable(true);
    m_element->setInsertPolicy(QComboBox::NoInsert);
    m_element->lineEdit()->setMaxLength(static_cast<int>(bars::kElementNameWidth));
    m_element->setMinimumContentsLength(static_cast<int>(bars::kElementNameWidth) + 2);
    m_element->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);

    for (std::size_t i = 0; i < kFieldCount; ++i) {
        const FieldRule& rule = kFieldRules[i];
        auto* edit = new QLineEdit(this);
        edit->setObjectName(QString::fromLatin1(rule.objectName));
        edit->setMaxLength(rule.maxLength);
        if (rule.pattern != nullptr) {
            edit->setValidator(new QRegularExpressionValidator(
                QRegularExpression(QString::fromLatin1(rule.pattern)), edit));
            edit->setAlignment(Qt::AlignRight | Qt::AlignAbsolute | Qt::AlignVCenter);
            edit->setLayoutDirection(Qt::LeftToRight);
        }
        m_fields[i] = edit;
        m_fieldLabels[i] = new QLabel(this);
        m_fieldLabels[i]->setBuddy(edit);
        ui::fitToChars(edit, rule.shownChars);
    }

    auto* elementGrid = new QGridLayout(m_elementGroup);
    elementGrid->addLayout(kindRow, 0, 0, 1, 8);
    elementGrid->addWidget(m_elementLabel, 1, 0);
    elementGrid->addWidget(m_element, 1, 1);
    int column = 2;
    for (const Field f : {Field::Slab, Field::ElementNumber, Field::SubBuilding}) {
        elementGrid->addWidget(m_fieldLabels[static_cast<std::size_t>(f)], 1, column++);
        elementGrid->addWidget(field(f), 1, column++);
    }
    // What room is left goes to the right, not between the fields.
    elementGrid->addItem(new QSpacerItem(0, 0, QSizePolicy::Expanding, QSizePolicy::Minimum), 1,
                         column);
    elementGrid->setColumnStretch(column, 1);

    // Bar: mark, count, diameter (typed or chosen from the bar table), length, shape, sheet,
    // kind and description.
    m_diameterChoice->setObjectName(QStringLiteral("DiamChoice"));
    m_diameterChoice->setText(QStringLiteral("..."));
    auto* diameterBox = new QHBoxLayout;
    diameterBox->setSpacing(2);
    diameterBox->addWidget(field(Field::Diameter));
    diameterBox->addWidget(m_diameterChoice);
    auto* barKindRow = new QHBoxLayout;
    for (int k = 0; k < kBarKinds; ++k) {
        auto* option = new QRadioButton(m_barGroup);
        option->setObjectName(QStringLiteral("IrnTypeOpt%1").arg(k));
        m_barKinds[static_cast<std::size_t>(k)] = option;
        m_barKindGroup->addButton(option, k);
        barKindRow->addWidget(option);
    }
    barKindRow->addStretch(1);

    const auto label = [this](Field f) { return m_fieldLabels[static_cast<std::size_t>(f)]; };
    auto* barGrid = new QGridLayout(m_barGroup);
    barGrid->addWidget(label(Field::Mark), 0, 0);
    barGrid->addWidget(field(Field::Mark), 0, 1);
    barGrid->addWidget(label(Field::Quantity), 0, 2);
    barGrid->addWidget(field(Field::Quantity), 0, 3);
    barGrid->addWidget(label(Field::Diameter), 0, 4);
    barGrid->addLayout(diameterBox, 0, 5);
    barGrid->addWidget(label(Field::Length), 0, 6);
    barGrid->addWidget(field(Field::Length), 0, 7);
    barGrid->addWidget(label(Field::Shape), 1, 0);
    barGrid->addWidget(field(Field::Shape), 1, 1);
    barGrid->addWidget(label(Field::Sheet), 1, 2);
    barGrid->addWidget(field(Field::Sheet), 1, 3);
    barGrid->addWidget(m_barKindLabel, 1, 4);
    barGrid->addLayout(barKindRow, 1, 5, 1, 3);
    barGrid->addWidget(label(Field::Description), 2, 0);
    barGrid->addWidget(field(Field::Description), 2, 1, 1, 5, Qt::AlignLeading);
    barGrid->addItem(new QSpacerItem(0, 0, QSizePolicy::Expanding, QSizePolicy::Minimum), 0, 8);
    barGrid->setColumnStretch(8, 1);

    // The element's items by mark, in the listing's fixed-width face.
    m_items->setObjectName(QStringLiteral("ItemsList"));
    m_items->setFont(ui::listingFont());
    m_items->setUniformItemSizes(true);
    m_listHeading->setFont(ui::listingFont());
    m_listHeading->setTextFormat(Qt::PlainText);
    m_listHeading->setIndent(m_items->frameWidth() + 3);
    const QFontMetrics listMetrics(ui::listingFont());
    m_items->setMinimumWidth(listMetrics.horizontalAdvance(QString(66, QLatin1Char('0'))));
    m_items->setMinimumHeight(listMetrics.height() * 8);
    auto* itemsBox = new QVBoxLayout(m_itemsGroup);
    itemsBox->setSpacing(2);
    itemsBox->addWidget(m_listHeading);
    itemsBox->addWidget(m_items, 1);

    m_new->setObjectName(QStringLiteral("TNEW"));
    m_edit->setObjectName(QStringLiteral("UPD"));
    m_save->setObjectName(QStringLiteral("SV"));
    m_delete->setObjectName(QStringLiteral("delqnt"));
    m_deleteAll->setObjectName(QStringLiteral("QntDelall"));
    m_exit->setObjectName(QStringLiteral("MainExit"));
    m_save->setDefault(true);
    auto* buttons = new QHBoxLayout;
    for (QPushButton* b : {m_new, m_edit, m_save, m_delete, m_deleteAll}) {
        buttons->addWidget(b);
    }
    buttons->addStretch(1);
    buttons->addWidget(m_exit);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_elementGroup);
    layout->addWidget(m_barGroup);
    layout->addWidget(m_itemsGroup, 1);
    layout->addLayout(buttons);

    connect(m_kindGroup, &QButtonGroup::idClicked, this, [this](int) { refillElements(); });
    connect(m_element, &QComboBox::currentTextChanged, this, [this] { elementChosen(); });
    connect(m_items, &QListWidget::itemDoubleClicked, this, [this] { editItem(); });
    connect(m_diameterChoice, &QToolButton::clicked, this, [this] { chooseDiameter(); });
    connect(m_new, &QPushButton::clicked, this, [this] { newItem(); });
    connect(m_edit, &QPushButton::clicked, this, [this] { editItem(); });
    connect(m_save, &QPushButton::clicked, this, [this] { saveItem(); });
    connect(m_delete, &QPushButton::clicked, this, [this] { deleteItem(); });
    connect(m_deleteAll, &QPushButton::clicked, this, [this] { deleteAllItems(); });
    connect(m_exit, &QPushButton::clicked, this, [this] { ui::closeForm(this); });

    m_kindOptions[2]->setChecked(true);
    m_barKinds[0]->setChecked(true);
    readPrompts();

    // An existing store is read at once; a new one is made only by the first save, and an
    // old Iron.MDB is offered when the form is first shown.
    if (!bars::legacyImportOffered(m_shell.projectPath())) {
        ensureStore(false);
        m_storeOffered = true;
    }
    refillElements();
}

QString SteelUpd::prompt(std::size_t n, std::string_view fallback) const {
    return ui::formPrompt(m_prompts, n, fallback, m_shell.language());
}

void SteelUpd::readPrompts() {
    m_prompts =
        shell::readPrompts(m_shell.programFolder, m_shell.language(), kPromptKey, 2, kPromptCount);
    setWindowTitle(prompt(kCaption, "Steel update"));
    m_elementGroup->setTitle(prompt(kElementGroup, "Element"));
    for (std::size_t i = 0; i < m_kindOptions.size(); ++i) {
        m_kindOptions[i]->setText(prompt(kSlabOption + i, kKindNames[i]));
    }
    m_elementLabel->setText(prompt(kElementLabel, "Element:"));
    for (std::size_t i = 0; i < kFieldCount; ++i) {
        m_fieldLabels[i]->setText(prompt(kFirstFieldLabel + i, kFieldRules[i].label));
    }
    m_barGroup->setTitle(prompt(kBarGroup, "Bar"));
    m_barKindLabel->setText(prompt(kBarKindLabel, "Bar kind:"));
    for (std::size_t k = 0; k < m_barKinds.size(); ++k) {
        m_barKinds[k]->setText(prompt(kFirstBarKind + k, kBarKindNames[k]));
    }
    m_itemsGroup->setTitle(prompt(kItemsGroup, "Items of the element"));
    const std::string heading =
        m_prompts.count() >= kListHeading ? m_prompts(kListHeading) : std::string();
    m_listHeading->setText(listHeading(heading, m_shell.language()));
    m_new->setText(prompt(kNewButton, "New"));
    m_edit->setText(prompt(kEditButton, "Edit"));
    m_save->setText(prompt(kSaveButton, "Save"));
    m_delete->setText(prompt(kDeleteButton, "Delete"));
    m_deleteAll->setText(prompt(kDeleteAllButton, "Delete all"));
    m_exit->setText(prompt(kExitButton, "Exit"));
    m_diameterChoice->setToolTip(prompt(kChooseDiameterTip, "Choose from the bar table"));
    refillItems(); // the bar kinds' names of the list
}

QRadioButton* SteelUpd::kindOption(bars::ElementKind kind) const {
    for (std::size_t i = 0; i < kKinds.size(); ++i) {
        if (kKinds[i] == kind) {
            return m_kindOptions[i];
        }
    }
    return nullptr;
}

QRadioButton* SteelUpd::barKindOption(int kind) const {
    return kind >= 0 && kind < kBarKinds ? m_barKinds[static_cast<std::size_t>(kind)] : nullptr;
}

QString SteelUpd::itemKey(int row) const {
    const QListWidgetItem* item = m_items->item(row);
    return item ? item->data(Qt::UserRole).toString() : QString();
}

bars::ElementKind SteelUpd::elementKind() const {
    return static_cast<bars::ElementKind>(m_kindGroup->checkedId());
}

void SteelUpd::setElementKind(bars::ElementKind kind) {
    if (QRadioButton* option = kindOption(kind)) {
        option->setChecked(true);
        refillElements();
    }
}

void SteelUpd::tell(const QString& message) const {
    ui::tellUser(const_cast<SteelUpd*>(this), m_messageHook, message);
}

void SteelUpd::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    if (!m_storeOffered) {
        openStore();
    }
}

void SteelUpd::openStore() {
    ensureStore(false);
    refillElements();
}

bool SteelUpd::ensureStore(bool create) {
    if (m_db) {
        return true;
    }
    // The old store is offered once; declined, the first save makes a new, empty one.
    const QString question =
        m_storeOffered ? QString()
                       : prompt(kImportQuestion, "This project holds the steel quantities of "
                                                 "an older version (Iron.MDB). Import them "
                                                 "now?");
    m_storeOffered = true;
    m_db = openSteelStore(this, m_shell, create, question, m_askHook, m_messageHook);
    return m_db.has_value();
}

void SteelUpd::refillElements() {
    const QString current = m_element->currentText();
    const QSignalBlocker block(m_element);
    m_element->clear();
    if (m_db) {
        try {
            const auto& language = m_shell.language();
            for (const std::string& name : m_db->elementNames()) {
                if (!m_db->itemsByMark(elementKind(), name).empty()) {
                    m_element->addItem(ui::toQString(name, language));
                }
            }
        } catch (const FileError& e) {
            tell(QString::fromUtf8(e.what()));
        }
    }
    m_element->setEditText(current);
    refillItems();
}

void SteelUpd::elementChosen() {
    refillItems();
    const QString name = m_element->currentText().trimmed();
    if (name.isEmpty()) {
        return;
    }
    // The element's name is not part of an item's key, its numbers are: an element that holds
    // items brings its numbers, a new one gets an element number of its own, so that its
    // items never take the keys of another element's.
    try {
        int last = 0;
        if (m_db) {
            const std::string element = ui::fromQString(name, m_shell.language());
            const auto items = m_db->itemsByMark(elementKind(), element);
            if (!items.empty()) {
                field(Field::Slab)->setText(QString::number(items.front().slab));
                field(Field::ElementNumber)->setText(QString::number(items.front().beam));
                field(Field::SubBuilding)->setText(QString::number(items.front().subBuilding));
                return;
            }
            for (const std::string& other : m_db->elementNames()) {
                for (const bars::SteelItem& item : m_db->itemsByMark(elementKind(), other)) {
                    last = std::max<int>(last, item.beam);
                }
            }
        }
        field(Field::ElementNumber)->setText(QString::number(last + 1));
    } catch (const FileError& e) {
        tell(QString::fromUtf8(e.what()));
    }
}

void SteelUpd::refillItems() {
    m_items->clear();
    const std::string element =
        ui::fromQString(m_element->currentText().trimmed(), m_shell.language());
    if (!m_db || element.empty()) {
        return;
    }
    // The list names each item's bar kind as the kind buttons do.
    std::array<std::string, kBarKinds> kindNames;
    for (std::size_t k = 0; k < kindNames.size(); ++k) {
        const std::size_t n = kFirstBarKind + k;
        kindNames[k] = m_prompts.count() >= n && !m_prompts(n).empty()
                           ? m_prompts(n)
                           : std::string(kBarKindNames[k]);
    }
    try {
        const auto& language = m_shell.language();
        for (const bars::SteelItem& item : m_db->itemsByMark(elementKind(), element)) {
            auto* row = new QListWidgetItem(
                ui::toQString(bars::itemListLine(item, kindNames), language), m_items);
            row->setData(Qt::UserRole, QString::fromLatin1(item.mainKey.c_str()));
        }
    } catch (const FileError& e) {
        tell(QString::fromUtf8(e.what()));
    }
}

std::optional<bars::SteelItem> SteelUpd::itemFromFields() {
    const auto& language = m_shell.language();
    const auto integer = [this](Field f) { return field(f)->text().trimmed().toInt(); };
    const auto number = [this](Field f) {
        return static_cast<float>(field(f)->text().trimmed().toDouble());
    };
    // A character the project's code page cannot hold would be stored as "?": refused.
    const auto element = ui::fromQStringExact(m_element->currentText().trimmed(), language);
    const auto description = ui::fromQStringExact(field(Field::Description)->text(), language);
    if (!element || !description) {
        tell(QStringLiteral("The %1 holds a character that the project's language cannot keep "
                            "in its files.")
                 .arg(element ? QStringLiteral("description") : QStringLiteral("element name")));
        return std::nullopt;
    }
    bars::ManualItem manual;
    manual.kind = elementKind();
    manual.element = *element;
    manual.slab = integer(Field::Slab);
    manual.elementNumber = integer(Field::ElementNumber);
    manual.subBuilding = integer(Field::SubBuilding);
    manual.mark = integer(Field::Mark);
    manual.quantity = number(Field::Quantity);
    manual.diameterMm = number(Field::Diameter);
    manual.lengthCm = number(Field::Length);
    manual.shape = integer(Field::Shape);
    manual.sheet = integer(Field::Sheet);
    manual.barKind = std::max(0, m_barKindGroup->checkedId());
    manual.description = *description;
    try {
        return bars::itemFromManual(manual);
    } catch (const InputError& e) {
        tell(QString::fromUtf8(e.what()));
    }
    return std::nullopt;
}

bool SteelUpd::saveItem() {
    if (m_element->currentText().trimmed().isEmpty()) {
        tell(prompt(kNoElement, "Choose or type the element first."));
        m_element->setFocus();
        return false;
    }
    if (field(Field::Diameter)->text().trimmed().toDouble() <= 0.0) {
        tell(prompt(kNoDiameter, "Enter the bar diameter."));
        field(Field::Diameter)->setFocus();
        return false;
    }
    const std::optional<bars::SteelItem> item = itemFromFields();
    if (!item || !ensureStore(true)) {
        return false;
    }
    bars::IronDatabase::SaveKind kind;
    try {
        // A key can hold an item of another element (the numbers were typed so): that item
        // is replaced only when the user says so.
        const auto existing = m_db->findItem(item->mainKey);
        if (existing && !sameElement(existing->element, item->element) &&
            !ui::askYesNo(this, m_askHook,
                          prompt(kOtherElementQuestion, "Item %1 belongs to %2. Replace it?")
                              .arg(QString::fromLatin1(item->mainKey.c_str()),
                                   ui::toQString(existing->element, m_shell.language())),
                          windowTitle())) {
            return false;
        }
        kind = m_db->saveItem(*item);
    } catch (const FileError& e) {
        tell(QString::fromUtf8(e.what()));
        return false;
    }
    refillElements();
    const QString key = QString::fromLatin1(item->mainKey.c_str());
    for (int row = 0; row < m_items->count(); ++row) {
        if (itemKey(row) == key) {
            m_items->setCurrentRow(row);
        }
    }
    emit saved(kind == bars::IronDatabase::SaveKind::Added
                   ? prompt(kAdded, "Item %1 was added.").arg(key)
                   : prompt(kChanged, "Item %1 was changed.").arg(key));
    return true;
}

void SteelUpd::newItem() {
    int lastMark = 0;
    if (m_db) {
        try {
            const std::string element =
                ui::fromQString(m_element->currentText().trimmed(), m_shell.language());
            for (const bars::SteelItem& item : m_db->itemsByMark(elementKind(), element)) {
                lastMark = std::max<int>(lastMark, item.mark);
            }
        } catch (const FileError& e) {
            tell(QString::fromUtf8(e.what()));
        }
    }
    for (const Field f : {Field::Quantity, Field::Diameter, Field::Length, Field::Shape,
                          Field::Sheet, Field::Description}) {
        field(f)->clear();
    }
    field(Field::Mark)->setText(QString::number(lastMark + 1));
    m_barKinds[0]->setChecked(true);
    m_items->setCurrentRow(-1);
    field(Field::Quantity)->setFocus();
}

bool SteelUpd::editItem() {
    const QString key = itemKey(m_items->currentRow());
    if (key.isEmpty() || !m_db) {
        tell(prompt(kNoneChosen, "Choose an item of the list first."));
        return false;
    }
    try {
        const auto item = m_db->findItem(key.toStdString());
        if (!item) {
            tell(prompt(kNoSuchItem, "There is no item %1.").arg(key));
            refillItems();
            return false;
        }
        showItem(*item);
    } catch (const FileError& e) {
        tell(QString::fromUtf8(e.what()));
        return false;
    }
    return true;
}

void SteelUpd::showItem(const bars::SteelItem& item) {
    const auto& language = m_shell.language();
    field(Field::Slab)->setText(QString::number(item.slab));
    field(Field::ElementNumber)->setText(QString::number(item.beam));
    field(Field::SubBuilding)->setText(QString::number(item.subBuilding));
    field(Field::Mark)->setText(QString::number(item.mark));
    field(Field::Quantity)->setText(numberText(item.quantity));
    field(Field::Diameter)->setText(numberText(item.diameterMm));
    field(Field::Length)->setText(numberText(item.lengthCm));
    field(Field::Shape)->setText(QString::number(item.shape));
    field(Field::Sheet)->setText(QString::number(item.sheet));
    field(Field::Description)->setText(ui::toQString(item.description, language));
    if (QRadioButton* option = barKindOption(item.ironType)) {
        option->setChecked(true);
    }
}

bool SteelUpd::deleteItem() {
    // Only the numbers of the key matter here: the bar need not be filled in.
    bars::ManualItem keyOnly;
    keyOnly.kind = elementKind();
    keyOnly.slab = field(Field::Slab)->text().toInt();
    keyOnly.elementNumber = field(Field::ElementNumber)->text().toInt();
    keyOnly.subBuilding = field(Field::SubBuilding)->text().toInt();
    keyOnly.mark = field(Field::Mark)->text().toInt();
    std::string key;
    try {
        key = bars::itemFromManual(keyOnly).mainKey;
    } catch (const InputError& e) {
        tell(QString::fromUtf8(e.what()));
        return false;
    }
    const QString keyText = QString::fromLatin1(key.c_str());
    if (!m_db) {
        tell(prompt(kNoSuchItem, "There is no item %1.").arg(keyText));
        return false;
    }
    try {
        if (!m_db->findItem(key)) {
            tell(prompt(kNoSuchItem, "There is no item %1.").arg(keyText));
            return false;
        }
        if (!ui::askYesNo(this, m_askHook, prompt(kDeleteQuestion, "Delete item %1?").arg(keyText),
                          windowTitle())) {
            return false;
        }
        m_db->deleteItem(key);
    } catch (const FileError& e) {
        tell(QString::fromUtf8(e.what()));
        return false;
    }
    refillElements();
    emit saved(prompt(kDeleted, "%1 items were deleted.").arg(1));
    return true;
}

std::size_t SteelUpd::deleteAllItems() {
    const QString elementText = m_element->currentText().trimmed();
    if (!m_db || elementText.isEmpty()) {
        tell(prompt(kNoElement, "Choose or type the element first."));
        return 0;
    }
    const std::string element = ui::fromQString(elementText, m_shell.language());
    std::size_t deleted = 0;
    try {
        const std::size_t count = m_db->itemsByMark(elementKind(), element).size();
        if (count == 0) {
            return 0;
        }
        if (!ui::askYesNo(this, m_askHook,
                          prompt(kDeleteAllQuestion, "Delete all %1 items of %2?")
                              .arg(static_cast<qulonglong>(count))
                              .arg(elementText),
                          windowTitle())) {
            return 0;
        }
        deleted = m_db->deleteElementItems(elementKind(), element);
    } catch (const FileError& e) {
        tell(QString::fromUtf8(e.what()));
        return 0;
    }
    refillElements();
    emit saved(prompt(kDeleted, "%1 items were deleted.").arg(static_cast<qulonglong>(deleted)));
    return deleted;
}

void SteelUpd::chooseDiameter() {
    Opndiams dialog(m_shell, this);
    dialog.setMessageHook(m_messageHook);
    if (const std::optional<float> d = dialog.choose()) {
        field(Field::Diameter)->setText(numberText(*d));
    }
}

} // namespace orvak::bars::forms
