// FtSeting: one labelled field per setting, in the order the settings record keeps them.
#include "footings/forms/ftseting_form.h"

#include <QCloseEvent>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpressionValidator>
#include <QVBoxLayout>
#include <array>
#include <type_traits>

#include "core/error.h"
#include "ui/general_prompts.h"
#include "ui/qt_text.h"

namespace orvak::footings::forms {

namespace {

constexpr std::string_view kPromptKey = "FTSETING";
constexpr std::size_t kCaption = 1;
constexpr std::size_t kFirstField = 2; // one label per setting, in stored order
constexpr std::size_t kSaveButton = 10;
constexpr std::size_t kDefaultsButton = 11;
constexpr std::size_t kExitButton = 12;
constexpr std::size_t kSavedText = 13;
constexpr std::size_t kRefused = 14;
constexpr std::size_t kNotANumber = 15;
constexpr std::size_t kNote = 16;
constexpr std::size_t kPromptCount = 16;

struct FieldText {
    std::string_view name;
    std::string_view english;
};
constexpr std::array<FieldText, 8> kFieldTexts = {{
    {"Fc", "Concrete strength Fc (kg/cm2)"},
    {"FY", "Yield strength of the bars FY (kg/cm2)"},
    {"SoilCapacity", "Safe bearing capacity of the soil (kg/cm2)"},
    {"Cover", "Steel cover, H - d (cm)"},
    {"LF", "Load factor LF = Pu / (Pd + Pl)"},
    {"MinSteelPercent", "Least steel ratio (%)"},
    {"MinDepth", "Least effective depth MinDepth (cm)"},
    {"FacRowmax", "FacRowmax (RowMax = FacRowmax * Rowb)"},
}};

} // namespace

FtSeting::FtSeting(shell::ShellState& shell, QWidget* parent)
    : QWidget(parent), m_shell(shell), m_note(new QLabel(this)), m_save(new QPushButton(this)),
      m_defaults(new QPushButton(this)), m_exit(new QPushButton(this)) {
    setObjectName(QStringLiteral("FtSeting"));
    m_save->setObjectName(QStringLiteral("CmdSave"));
    m_defaults->setObjectName(QStringLiteral("DefCmd"));
    m_exit->setObjectName(QStringLiteral("CmdExit"));
    m_note->setWordWrap(true);

    // Strengths are whole kg/cm²; the rest take digits and one point.
    static const QRegularExpression decimals(QStringLiteral("[0-9]*\\.?[0-9]*"));
    static const QRegularExpression whole(QStringLiteral("[0-9]*"));
    auto* fields = new QFormLayout;
    FootingSettings shape;
    forEachSettingsField(shape, [&](std::string_view name, auto& value) {
        using T = std::decay_t<decltype(value)>;
        auto* edit = new QLineEdit(this);
        edit->setObjectName(QString::fromLatin1(name.data(), static_cast<qsizetype>(name.size())));
        edit->setValidator(new QRegularExpressionValidator(
            std::is_same_v<T, std::int16_t> ? whole : decimals, edit));
        edit->setMaxLength(9);
        ui::fitToChars(edit, 9);
        auto* label = new QLabel(this);
        label->setBuddy(edit);
        fields->addRow(label, edit);
        m_fields.emplace(std::string(name), edit);
        m_labels.emplace(std::string(name), label);
    });
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(m_save);
    buttons->addWidget(m_defaults);
    buttons->addStretch(1);
    buttons->addWidget(m_exit);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(fields);
    layout->addWidget(m_note);
    layout->addStretch(1);
    layout->addLayout(buttons);

    connect(m_save, &QPushButton::clicked, this, [this] { save(); });
    connect(m_defaults, &QPushButton::clicked, this, [this] { restoreDefaults(); });
    connect(m_exit, &QPushButton::clicked, this, [this] { ui::closeForm(this); });

    readPrompts();
    try {
        m_stored = readFootingSettingsFile(m_shell.generalFolder());
    } catch (const FileError& e) {
        // A damaged file is named; the form shows the built-in values, saved only on request.
        ui::tellUser(this, m_messageHook, QString::fromUtf8(e.what()));
        m_stored = defaultFootingSettings();
    }
    show(m_stored);
}

QString FtSeting::prompt(std::size_t n, std::string_view english) const {
    return ui::formPrompt(m_prompts, n, english, m_shell.language());
}

void FtSeting::readPrompts() {
    m_prompts =
        shell::readPrompts(m_shell.programFolder, m_shell.language(), kPromptKey, 2, kPromptCount);
    setWindowTitle(prompt(kCaption, "Footing settings"));
    for (std::size_t i = 0; i < kFieldTexts.size(); ++i) {
        m_labels.at(std::string(kFieldTexts[i].name))
            ->setText(prompt(kFirstField + i, kFieldTexts[i].english));
    }
    m_save->setText(prompt(kSaveButton, "Save"));
    m_defaults->setText(prompt(kDefaultsButton, "Defaults"));
    m_exit->setText(prompt(kExitButton, "Exit"));
    m_note->setText(prompt(kNote, "A new footing group takes a copy of these settings; a group "
                                  "made before keeps its own."));
}

QLineEdit* FtSeting::field(std::string_view name) const {
    const auto at = m_fields.find(name);
    return at == m_fields.end() ? nullptr : at->second;
}

void FtSeting::show(const FootingSettings& s) {
    FootingSettings copy = s;
    forEachSettingsField(copy, [&](std::string_view name, auto& value) {
        using T = std::decay_t<decltype(value)>;
        if constexpr (std::is_same_v<T, std::int16_t>) {
            field(name)->setText(QString::number(value));
        } else {
            field(name)->setText(ui::plainDecimal(value));
        }
    });
}

std::optional<FootingSettings> FtSeting::parse(std::string* bad) const {
    FootingSettings s;
    bool ok = true;
    forEachSettingsField(s, [&](std::string_view name, auto& value) {
        using T = std::decay_t<decltype(value)>;
        if (!ok) {
            return;
        }
        const QString text = field(name)->text().trimmed();
        if constexpr (std::is_same_v<T, std::int16_t>) {
            const int v = text.toInt(&ok);
            ok = ok && v >= 0 && v <= 32767;
            value = static_cast<std::int16_t>(ok ? v : 0);
        } else {
            value = text.toFloat(&ok);
        }
        if (!ok && bad != nullptr) {
            *bad = std::string(name);
        }
    });
    return ok ? std::optional<FootingSettings>(s) : std::nullopt;
}

std::optional<FootingSettings> FtSeting::shownSettings() {
    std::string bad;
    const std::optional<FootingSettings> s = parse(&bad);
    if (!s) {
        ui::tellUser(
            this, m_messageHook,
            prompt(kNotANumber, "%1: the value is not a number.").arg(m_labels.at(bad)->text()));
        field(bad)->setFocus();
    }
    return s;
}

bool FtSeting::isChanged() const {
    const std::optional<FootingSettings> s = parse(nullptr);
    return !s || !(*s == m_stored);
}

bool FtSeting::save() {
    const std::optional<FootingSettings> s = shownSettings();
    if (!s) {
        return false;
    }
    const std::string problem = validateFootingSettings(*s);
    if (!problem.empty()) {
        ui::tellUser(this, m_messageHook,
                     prompt(kRefused, "The settings were not saved: %1.")
                         .arg(QString::fromUtf8(problem.c_str())));
        return false;
    }
    try {
        writeFootingSettingsFile(m_shell.generalFolder(), *s);
    } catch (const InputError& e) {
        ui::tellUser(this, m_messageHook, QString::fromUtf8(e.what()));
        return false;
    } catch (const FileError& e) {
        ui::tellUser(this, m_messageHook, QString::fromUtf8(e.what()));
        return false;
    }
    m_stored = *s;
    show(m_stored);
    emit saved(prompt(kSavedText, "The footing settings were saved."));
    return true;
}

void FtSeting::restoreDefaults() {
    show(defaultFootingSettings());
}

void FtSeting::closeEvent(QCloseEvent* event) {
    if (!isChanged() || ui::mayLeaveForm(this, m_shell, m_askHook, [this] { return save(); })) {
        event->accept();
    } else {
        event->ignore();
    }
}

} // namespace orvak::footings::forms
