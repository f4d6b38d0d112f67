// Clseting: the general settings beside the table of the seven section types, written to
// COLSSET.DAT only when a design can use every value.
#include "columns/forms/clseting_form.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpressionValidator>
#include <QVBoxLayout>
#include <algorithm>
#include <array>
#include <type_traits>

#include "core/error.h"
#include "ui/general_prompts.h"
#include "ui/qt_text.h"

namespace orvak::columns::forms {

namespace {

constexpr std::string_view kPromptKey = "CLSETING";
constexpr std::size_t kCaptionPrompt = 1;
constexpr std::size_t kGeneralPrompt = 2;
constexpr std::size_t kTypesPrompt = 3;
constexpr std::size_t kTypeHeadingPrompt = 4;
constexpr std::size_t kSavePrompt = 5;
constexpr std::size_t kDefaultsPrompt = 6;
constexpr std::size_t kExitPrompt = 7;
constexpr std::size_t kFirstFieldPrompt = 8; // one label per field, in stored order
constexpr std::size_t kSavedPrompt = 20;
constexpr std::size_t kRefusedPrompt = 21;
constexpr std::size_t kNamePrompt = 22;
constexpr std::size_t kPromptCount = 22;

struct FieldText {
    std::string_view name;
    std::string_view english;
};

// Every field in stored order with its English label; the per-type tables and the names are
// the columns of the type table, their labels its headings.
constexpr std::array<FieldText, 12> kFieldTexts = {{
    {"Fc", "Concrete strength Fc (kg/cm2)"},
    {"FY", "Yield strength of the main bars FY (kg/cm2)"},
    {"FYties", "Yield strength of the ties and spirals (kg/cm2)"},
    {"Cover", "Face of the column to the centre of the bars (cm)"},
    {"KFactor", "Effective length factor k"},
    {"BdFactor", "Creep ratio beta d (sustained / total load)"},
    {"Braced", "Braced against sidesway"},
    {"PhiPercent", "Strength reduction phi (%)"},
    {"EccPercent", "Minimum-eccentricity reduction (%)"},
    {"MinSteelPercent", "Least steel ratio Ast (%)"},
    {"Tolerance", "Convergence tolerance of the steel ratio"},
    {"TypeNames", "Name"},
}};

std::size_t fieldIndex(std::string_view name) {
    const auto at = std::find_if(kFieldTexts.begin(), kFieldTexts.end(),
                                 [&](const FieldText& f) { return f.name == name; });
    return static_cast<std::size_t>(at - kFieldTexts.begin());
}

QString fieldName(std::string_view name) {
    return QString::fromLatin1(name.data(), static_cast<qsizetype>(name.size()));
}

} // namespace

Clseting::Clseting(shell::ShellState& shell, QWidget* parent)
    : QWidget(parent), m_shell(shell), m_braced(new QCheckBox(this)), m_save(new QPushButton(this)),
      m_defaults(new QPushButton(this)), m_exit(new QPushButton(this)) {
    setObjectName(QStringLiteral("Clseting"));
    m_braced->setObjectName(QStringLiteral("Braced"));
    m_save->setObjectName(QStringLiteral("saveclseting"));
    m_defaults->setObjectName(QStringLiteral("DefCmd"));
    m_exit->setObjectName(QStringLiteral("exitm"));

    auto* general = new QGroupBox(this);
    general->setObjectName(QStringLiteral("GNRLFrm"));
    auto* generalGrid = new QGridLayout(general);
    generalGrid->setColumnStretch(2, 1);
    auto* types = new QGroupBox(this);
    types->setObjectName(QStringLiteral("TypesFrm"));
    auto* typeGrid = new QGridLayout(types);
    typeGrid->setColumnStretch(5, 1);
    m_captions = {general, types};

    // Strengths are whole kg/cm²; the rest take digits and one point.
    static const QRegularExpression decimals(QStringLiteral("[0-9]*\\.?[0-9]*"));
    static const QRegularExpression whole(QStringLiteral("[0-9]*"));
    const auto makeEdit = [&](QWidget* parentBox, std::string_view name, std::size_t index,
                              bool integral) {
        auto* edit = new QLineEdit(parentBox);
        edit->setObjectName(fieldName(name));
        edit->setProperty("index", static_cast<int>(index));
        edit->setValidator(new QRegularExpressionValidator(integral ? whole : decimals, edit));
        edit->setMaxLength(9);
        ui::fitToChars(edit, 8);
        m_fields[std::string(name)].push_back(edit);
        return edit;
    };

    // The type table: a heading row, then one row per section type.
    auto* typeHeading = new QLabel(types);
    typeGrid->addWidget(typeHeading, 0, 0);
    m_captions.push_back(typeHeading);
    int tableColumn = 2;
    ColumnSettings shape;
    forEachSettingsField(shape, [&](std::string_view name, auto& value) {
        using T = std::decay_t<decltype(value)>;
        auto* caption = new QLabel;
        m_labels[std::string(name)] = caption;
        if constexpr (std::is_same_v<T, std::array<float, kSectionTypes>>) {
            typeGrid->addWidget(caption, 0, tableColumn);
            caption->setParent(types);
            caption->setWordWrap(true);
            for (std::size_t t = 0; t < kSectionTypes; ++t) {
                typeGrid->addWidget(makeEdit(types, name, t, false), static_cast<int>(t) + 1,
                                    tableColumn);
            }
            ++tableColumn;
        } else if (name == "Braced") {
            delete caption;
            m_labels[std::string(name)] = m_braced;
            m_braced->setParent(general);
            generalGrid->addWidget(m_braced, generalGrid->rowCount(), 0, 1, 3);
        } else {
            caption->setParent(general);
            const int row = generalGrid->rowCount();
            generalGrid->addWidget(caption, row, 0);
            generalGrid->addWidget(makeEdit(general, name, 0, std::is_same_v<T, std::int16_t>), row,
                                   1);
        }
    });
    auto* nameHeading = new QLabel(types);
    typeGrid->addWidget(nameHeading, 0, 1);
    m_labels["TypeNames"] = nameHeading;
    for (std::size_t t = 0; t < kSectionTypes; ++t) {
        const int row = static_cast<int>(t) + 1;
        typeGrid->addWidget(new QLabel(QString::number(t + 1), types), row, 0);
        auto* name = new QLineEdit(types);
        name->setObjectName(QStringLiteral("TypeNames"));
        name->setProperty("index", static_cast<int>(t));
        name->setMaxLength(static_cast<int>(kTypeNameWidth));
        ui::fitToChars(name, static_cast<int>(kTypeNameWidth) + 1);
        typeGrid->addWidget(name, row, 1);
        m_fields["TypeNames"].push_back(name);
    }
    generalGrid->setRowStretch(generalGrid->rowCount(), 1);
    typeGrid->setRowStretch(typeGrid->rowCount(), 1);

    auto* panels = new QHBoxLayout;
    panels->addWidget(general);
    panels->addWidget(types, 1);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(m_save);
    buttons->addWidget(m_defaults);
    buttons->addStretch(1);
    buttons->addWidget(m_exit);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(panels, 1);
    layout->addLayout(buttons);

    connect(m_save, &QPushButton::clicked, this, [this] { save(); });
    connect(m_defaults, &QPushButton::clicked, this, [this] { restoreDefaults(); });
    connect(m_exit, &QPushButton::clicked, this, [this] { ui::closeForm(this); });

    readPrompts();
    try {
        m_stored = readColumnSettingsFile(m_shell.generalFolder());
    } catch (const FileError& e) {
        // A damaged file is named; the form shows the built-in values, saved only on request.
        ui::tellUser(this, m_messageHook, QString::fromUtf8(e.what()));
        m_stored = defaultColumnSettings();
    }
    showSettings(m_stored);
}

QString Clseting::prompt(std::size_t n, std::string_view english) const {
    return ui::formPrompt(m_prompts, n, english, m_shell.language());
}

void Clseting::readPrompts() {
    m_prompts =
        shell::readPrompts(m_shell.programFolder, m_shell.language(), kPromptKey, 2, kPromptCount);
    setWindowTitle(prompt(kCaptionPrompt, "Column settings"));
    static_cast<QGroupBox*>(m_captions[0])->setTitle(prompt(kGeneralPrompt, "General"));
    static_cast<QGroupBox*>(m_captions[1])->setTitle(prompt(kTypesPrompt, "Section types"));
    static_cast<QLabel*>(m_captions[2])->setText(prompt(kTypeHeadingPrompt, "Type"));
    for (const auto& [name, widget] : m_labels) {
        const std::size_t at = fieldIndex(name);
        const QString text = prompt(kFirstFieldPrompt + at, kFieldTexts[at].english);
        if (auto* box = qobject_cast<QCheckBox*>(widget)) {
            box->setText(text);
        } else if (auto* caption = qobject_cast<QLabel*>(widget)) {
            caption->setText(text);
        }
    }
    m_save->setText(prompt(kSavePrompt, "Save"));
    m_defaults->setText(prompt(kDefaultsPrompt, "Defaults"));
    m_exit->setText(prompt(kExitPrompt, "Exit"));
}

QLineEdit* Clseting::field(const std::string& name, std::size_t index) const {
    const auto it = m_fields.find(name);
    return it == m_fields.end() || index >= it->second.size() ? nullptr : it->second[index];
}

void Clseting::showSettings(const ColumnSettings& settings) {
    forEachSettingsField(settings, [&](std::string_view nameView, const auto& value) {
        using T = std::decay_t<decltype(value)>;
        const std::string name(nameView);
        if constexpr (std::is_same_v<T, std::int16_t>) {
            if (name == "Braced") {
                m_braced->setChecked(value != 0);
            } else {
                field(name)->setText(QString::number(value));
            }
        } else if constexpr (std::is_same_v<T, float>) {
            field(name)->setText(ui::plainDecimal(value));
        } else {
            for (std::size_t i = 0; i < value.size(); ++i) {
                field(name, i)->setText(ui::plainDecimal(value[i]));
            }
        }
    });
    for (std::size_t t = 0; t < kSectionTypes; ++t) {
        field("TypeNames", t)->setText(ui::toQString(settings.TypeNames[t], m_shell.language()));
    }
}

ColumnSettings Clseting::shownSettings(int* unwritableName) const {
    ColumnSettings s;
    forEachSettingsField(s, [&](std::string_view nameView, auto& value) {
        using T = std::decay_t<decltype(value)>;
        const std::string name(nameView);
        if constexpr (std::is_same_v<T, std::int16_t>) {
            if (name == "Braced") {
                value = m_braced->isChecked() ? 1 : 0;
            } else {
                // Five digits fit; a larger number is refused by the checks as 32767.
                const int typed = field(name)->text().toInt();
                value = static_cast<std::int16_t>(std::min(typed, 32767));
            }
        } else if constexpr (std::is_same_v<T, float>) {
            value = field(name)->text().toFloat();
        } else {
            for (std::size_t i = 0; i < value.size(); ++i) {
                value[i] = field(name, i)->text().toFloat();
            }
        }
    });
    if (unwritableName) {
        *unwritableName = 0;
    }
    for (std::size_t t = 0; t < kSectionTypes; ++t) {
        const QString typed = field("TypeNames", t)->text().trimmed();
        if (auto bytes = ui::fromQStringExact(typed, m_shell.language())) {
            s.TypeNames[t] = *bytes;
        } else if (unwritableName && *unwritableName == 0) {
            *unwritableName = static_cast<int>(t) + 1;
        }
    }
    return s;
}

bool Clseting::isChanged() const {
    return !(shownSettings() == m_stored);
}

bool Clseting::save() {
    int unwritable = 0;
    const ColumnSettings settings = shownSettings(&unwritable);
    QString problem = QString::fromStdString(validateColumnSettings(settings));
    if (problem.isEmpty() && unwritable > 0) {
        problem = prompt(kNamePrompt, "the name of type %1 holds a character the language's "
                                      "code page cannot write")
                      .arg(unwritable);
    }
    if (!problem.isEmpty()) {
        ui::tellUser(this, m_messageHook,
                     prompt(kRefusedPrompt, "The settings were not saved: %1.").arg(problem));
        return false;
    }
    try {
        writeColumnSettingsFile(m_shell.generalFolder(), settings);
    } catch (const FileError& e) {
        ui::tellUser(this, m_messageHook, QString::fromUtf8(e.what()));
        return false;
    } catch (const InputError& e) {
        ui::tellUser(this, m_messageHook,
                     prompt(kRefusedPrompt, "The settings were not saved: %1.")
                         .arg(QString::fromUtf8(e.what())));
        return false;
    }
    m_stored = settings;
    showSettings(m_stored);
    emit saved(prompt(kSavedPrompt, "The column settings were saved."));
    return true;
}

void Clseting::restoreDefaults() {
    showSettings(defaultColumnSettings());
}

void Clseting::closeEvent(QCloseEvent* event) {
    if (!isChanged() || ui::mayLeaveForm(this, m_shell, m_askHook, [this] { return save(); })) {
        event->accept();
    } else {
        event->ignore();
    }
}

} // namespace orvak::columns::forms
