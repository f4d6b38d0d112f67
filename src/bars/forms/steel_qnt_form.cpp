// SteelQnt: the elements of the project's steel store on tabs by the kind of their items,
// ticked one by one or all at once, and the quantity report of the ticked ones.
#include "bars/forms/steel_qnt_form.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRegularExpressionValidator>
#include <QShowEvent>
#include <QTabWidget>
#include <QVBoxLayout>
#include <algorithm>
#include <set>

#include "bars/bar_table_grid.h"
#include "bars/bar_tables.h"
#include "bars/steel_report.h"
#include "core/error.h"
#include "core/file_util.h"
#include "ui/general_prompts.h"
#include "ui/qt_text.h"
#include "ui/text_viewer.h"

namespace orvak::bars::forms {

namespace {

constexpr std::string_view kPromptKey = "SteelQnt";

// Prompts of the form, in the order of its prompt file (from line 2).
constexpr std::size_t kCaptionPrompt = 1;
constexpr std::size_t kAllItemsPrompt = 2;
constexpr std::size_t kFirstTabPrompt = 3; ///< one per list
constexpr std::size_t kFirstAllPrompt = 7; ///< one "all" box per list
constexpr std::size_t kRoundupPrompt = 11;
constexpr std::size_t kOkPrompt = 12;
constexpr std::size_t kExitPrompt = 13;
constexpr std::size_t kReportTextsPrompt = 14; ///< "@0:" .. "@12:" of the report
constexpr std::size_t kNoneChosenPrompt = 15;
constexpr std::size_t kNoItemsPrompt = 16;
constexpr std::size_t kImportPrompt = 17;
constexpr std::size_t kPromptCount = 17;

constexpr std::array<std::string_view, SteelQnt::kListCount> kTabNames = {
    "Extra items", "Column groups", "Footing groups", "Floors (beams, slabs)"};
constexpr std::array<std::string_view, SteelQnt::kListCount> kAllNames = {
    "All extra items", "All column groups", "All footing groups", "All floors"};
constexpr std::array<const char*, SteelQnt::kListCount> kListObjectNames = {"StrucList", "LSTCol",
                                                                            "LSTFoot", "CielList"};
constexpr std::array<const char*, SteelQnt::kListCount> kAllObjectNames = {
    "AllStrucchk", "AllColsGroupschk", "AllFootsGroupschk", "CielChk"};

/// The list an element's items put it on, by the element kind they carry (GENERAL): the
/// beams a design stores and the floor items entered by hand are floor items, footing items go
/// with the footing groups, and items entered as extra items, or carrying no kind (an old
/// store), with the extra items; a column group's items go with the column groups.
SteelQnt::ElementList listOfKind(std::int16_t kind) {
    switch (static_cast<bars::ElementKind>(kind)) {
    case bars::ElementKind::Slab:
        return SteelQnt::ElementList::Floors;
    case bars::ElementKind::Footing:
        return SteelQnt::ElementList::FootingGroups;
    case bars::ElementKind::ColumnGroup:
        return SteelQnt::ElementList::ColumnGroups;
    case bars::ElementKind::None:
    case bars::ElementKind::Extra:
        break;
    }
    return SteelQnt::ElementList::ExtraItems;
}

} // namespace

SteelQnt::SteelQnt(shell::ShellState& shell, QWidget* parent)
    : QWidget(parent), m_shell(shell), m_allItems(new QCheckBox(this)),
      m_tabs(new QTabWidget(this)), m_emptyNote(new QLabel(this)), m_roundupLabel(new QLabel(this)),
      m_roundup(new QLineEdit(this)), m_ok(new QPushButton(this)), m_exit(new QPushButton(this)) {
    setObjectName(QStringLiteral("SteelQnt"));
    ORVAK_ASSERT(m_shell.hasProject());

    m_allItems->setObjectName(QStringLiteral("AllItemschk"));
    m_tabs->setObjectName(QStringLiteral("SSTab1"));
    // Every tab stays in sight: the form is as wide as its tab bar.
    m_tabs->setUsesScrollButtons(false);
    for (std::size_t i = 0; i < kListCount; ++i) {
        auto* page = new QWidget(m_tabs);
        m_allBoxes[i] = new QCheckBox(page);
        m_allBoxes[i]->setObjectName(QString::fromLatin1(kAllObjectNames[i]));
        m_lists[i] = new QListWidget(page);
        m_lists[i]->setObjectName(QString::fromLatin1(kListObjectNames[i]));
        m_lists[i]->setFont(ui::listingFont());
        m_lists[i]->setSelectionMode(QAbstractItemView::NoSelection);
        m_lists[i]->setMinimumHeight(QFontMetrics(m_lists[i]->font()).height() * 12);
        auto* box = new QVBoxLayout(page);
        box->addWidget(m_allBoxes[i]);
        box->addWidget(m_lists[i], 1);
        m_tabs->addTab(page, QString());

        connect(m_allBoxes[i], &QCheckBox::clicked, this,
                [this, i](bool checked) { setAll(i, checked); });
        connect(m_lists[i], &QListWidget::itemChanged, this, [this, i] { syncAllBox(i); });
    }
    connect(m_allItems, &QCheckBox::clicked, this, [this](bool checked) {
        for (std::size_t i = 0; i < kListCount; ++i) {
            setAll(i, checked);
        }
    });

    m_roundup->setObjectName(QStringLiteral("RoundupTxt"));
    m_roundup->setValidator(
        new QRegularExpressionValidator(QRegularExpression(QStringLiteral("[.0-9]*")), m_roundup));
    m_roundup->setMaxLength(8);
    m_roundup->setAlignment(Qt::AlignRight | Qt::AlignAbsolute | Qt::AlignVCenter);
    ui::fitToChars(m_roundup, 8);
    m_roundupLabel->setBuddy(m_roundup);
    m_ok->setObjectName(QStringLiteral("MainOk"));
    m_exit->setObjectName(QStringLiteral("MainExit"));
    m_ok->setDefault(true);
    m_emptyNote->setObjectName(QStringLiteral("EmptyNote"));
    m_emptyNote->setWordWrap(true);

    auto* bottom = new QHBoxLayout;
    bottom->addWidget(m_roundupLabel);
    bottom->addWidget(m_roundup);
    bottom->addStretch(1);
    bottom->addWidget(m_ok);
    bottom->addWidget(m_exit);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_allItems);
    layout->addWidget(m_tabs, 1);
    layout->addWidget(m_emptyNote);
    layout->addLayout(bottom);

    connect(m_ok, &QPushButton::clicked, this, [this] { report(); });
    connect(m_exit, &QPushButton::clicked, this, [this] { ui::closeForm(this); });

    readPrompts();
    // A waiting Iron.MDB is offered when the form is first shown; otherwise the store (if
    // any) is read now.
    if (!bars::legacyImportOffered(m_shell.projectPath())) {
        m_storeOffered = true;
        refreshLists();
    } else {
        fillLists({});
    }
}

QString SteelQnt::prompt(std::size_t n, std::string_view fallback) const {
    return ui::formPrompt(m_prompts, n, fallback, m_shell.language());
}

void SteelQnt::readPrompts() {
    m_prompts =
        shell::readPrompts(m_shell.programFolder, m_shell.language(), kPromptKey, 2, kPromptCount);
    setWindowTitle(prompt(kCaptionPrompt, "Steel quantities"));
    m_allItems->setText(prompt(kAllItemsPrompt, "All elements"));
    for (std::size_t i = 0; i < kListCount; ++i) {
        m_tabs->setTabText(static_cast<int>(i), prompt(kFirstTabPrompt + i, kTabNames[i]));
        m_allBoxes[i]->setText(prompt(kFirstAllPrompt + i, kAllNames[i]));
    }
    m_roundupLabel->setText(prompt(kRoundupPrompt, "Round up to:"));
    m_ok->setText(prompt(kOkPrompt, "Report"));
    m_exit->setText(prompt(kExitPrompt, "Exit"));
    m_emptyNote->setText(prompt(kNoItemsPrompt, "No steel items are stored for this project."));
}

void SteelQnt::tell(const QString& message) const {
    ui::tellUser(const_cast<SteelQnt*>(this), m_messageHook, message);
}

void SteelQnt::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    if (!m_storeOffered) {
        refreshLists();
    }
}

void SteelQnt::refreshLists() {
    // A report only reads: the store is never made here.
    const QString question =
        m_storeOffered ? QString()
                       : prompt(kImportPrompt, "This project holds the steel quantities of an "
                                               "older version (Iron.MDB). Import them now?");
    m_storeOffered = true;
    m_db.reset();
    m_db = openSteelStore(this, m_shell, false, question, m_askHook, m_messageHook);

    std::array<std::vector<std::string>, kListCount> names;
    if (m_db) {
        try {
            for (const std::string& name : m_db->elementNames()) {
                std::set<std::size_t> lists;
                for (const bars::SteelItem& item : m_db->elementItemsByMark(name)) {
                    lists.insert(index(listOfKind(item.general)));
                }
                for (const std::size_t list : lists) {
                    names[list].push_back(name);
                }
            }
        } catch (const FileError& e) {
            tell(QString::fromUtf8(e.what()));
        }
    }
    fillLists(names);
}

void SteelQnt::fillLists(const std::array<std::vector<std::string>, kListCount>& names) {
    const auto& language = m_shell.language();
    bool any = false;
    int firstFilled = -1;
    for (std::size_t i = 0; i < kListCount; ++i) {
        const QSignalBlocker block(m_lists[i]);
        m_lists[i]->clear();
        for (const std::string& name : names[i]) {
            auto* item = new QListWidgetItem(ui::toQString(name, language), m_lists[i]);
            item->setData(Qt::UserRole, QByteArray::fromStdString(name));
            item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsUserCheckable);
            item->setCheckState(Qt::Unchecked);
        }
        const bool filled = !names[i].empty();
        m_tabs->setTabEnabled(static_cast<int>(i), filled);
        m_allBoxes[i]->setChecked(false);
        if (filled && firstFilled < 0) {
            firstFilled = static_cast<int>(i);
        }
        any = any || filled;
    }
    if (firstFilled >= 0) {
        m_tabs->setCurrentIndex(firstFilled);
    }
    m_allItems->setChecked(false);
    m_allItems->setEnabled(any);
    m_ok->setEnabled(any);
    m_emptyNote->setVisible(!any);
}

void SteelQnt::setAll(std::size_t list, bool checked) {
    m_syncing = true;
    for (int row = 0; row < m_lists[list]->count(); ++row) {
        m_lists[list]->item(row)->setCheckState(checked ? Qt::Checked : Qt::Unchecked);
    }
    m_syncing = false;
    syncAllBox(list);
}

void SteelQnt::syncAllBox(std::size_t list) {
    if (m_syncing) {
        return;
    }
    const QListWidget* widget = m_lists[list];
    bool all = widget->count() > 0;
    for (int row = 0; row < widget->count() && all; ++row) {
        all = widget->item(row)->checkState() == Qt::Checked;
    }
    m_allBoxes[list]->setChecked(all);
    bool every = true;
    bool anyFilled = false;
    for (std::size_t i = 0; i < kListCount; ++i) {
        if (m_lists[i]->count() > 0) {
            anyFilled = true;
            every = every && m_allBoxes[i]->isChecked();
        }
    }
    m_allItems->setChecked(anyFilled && every);
}

bool SteelQnt::chooseElement(const QString& name, bool chosen) {
    bool found = false;
    for (QListWidget* list : m_lists) {
        for (int row = 0; row < list->count(); ++row) {
            QListWidgetItem* item = list->item(row);
            if (item->text() == name) {
                item->setCheckState(chosen ? Qt::Checked : Qt::Unchecked);
                found = true;
            }
        }
    }
    return found;
}

std::vector<std::string> SteelQnt::chosenElements() const {
    std::vector<std::string> chosen;
    for (const QListWidget* list : m_lists) {
        for (int row = 0; row < list->count(); ++row) {
            const QListWidgetItem* item = list->item(row);
            if (item->checkState() != Qt::Checked) {
                continue;
            }
            std::string name = item->data(Qt::UserRole).toByteArray().toStdString();
            if (std::find(chosen.begin(), chosen.end(), name) == chosen.end()) {
                chosen.push_back(std::move(name));
            }
        }
    }
    return chosen;
}

ui::EditAsc* SteelQnt::report() {
    const std::vector<std::string> chosen = chosenElements();
    if (chosen.empty() || !m_db) {
        tell(prompt(kNoneChosenPrompt, "Tick at least one element."));
        return nullptr;
    }
    try {
        const bars::BarPropertyTable barTable = bars::LoadBarProperties(m_shell.generalFolder());
        // The rounding field is a step in kg for the printed sums; blank or 0 rounds nothing.
        const double roundingStepKg =
            bars::cellNumber(ui::fromQString(m_roundup->text(), m_shell.language()));
        const bars::SteelReport report =
            bars::buildSteelReport(*m_db, chosen, barTable, roundingStepKg);
        if (report.status == bars::SteelReportStatus::NoBarTable) {
            tell(ui::generalPrompt(m_shell, ui::General::BarTableEmpty));
            return nullptr;
        }
        const std::string textLine =
            m_prompts.count() >= kReportTextsPrompt ? m_prompts(kReportTextsPrompt) : std::string();
        const std::string text =
            bars::formatSteelReport(report, bars::SteelReportTexts::fromPrompt(textLine));
        return ui::openReportViewer(this, m_shell, windowTitle(),
                                    ui::toQString(text, m_shell.language()), m_messageHook);
    } catch (const FileError& e) {
        tell(QString::fromUtf8(e.what()));
    }
    return nullptr;
}

} // namespace orvak::bars::forms
