// Gsetting: the software settings form. The language comes from the list of LANGUAGE.DAT; the
// three configuration texts, settings A, B and C and text 4 are rows of one grid.
#include "shell/forms/gsetting_form.h"

#include <QCloseEvent>
#include <QComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>
#include <array>
#include <cmath>

#include "core/error.h"
#include "shell/software_config.h"
#include "shell/startup.h"
#include "ui/general_prompts.h"
#include "ui/input_grid.h"
#include "ui/qt_text.h"

namespace orvak::shell::forms {

namespace {

constexpr std::string_view kPromptKey = "Gsetting";
constexpr std::size_t kCaptionPrompt = 1;
constexpr std::size_t kLanguagePrompt = 2;
constexpr std::size_t kFirstRowPrompt = 3; ///< prompts 3-9 label the grid rows
constexpr std::size_t kSavePrompt = 10;
constexpr std::size_t kExitPrompt = 11;
constexpr std::size_t kValueHeadingPrompt = 12;
constexpr std::size_t kSavedPrompt = 13;
constexpr std::size_t kPromptCount = 13;

constexpr int kVisibleChars = 40;

struct RowRule {
    const char* descriptor;
    const char* limits;
    const char* label;
};

// The texts are whole lines of SWC; the settings are 16-bit integers, C only 1 or 2.
constexpr std::array<RowRule, Gsetting::kRowCount> kRows = {{
    {"1099.0,", "", "Configuration text 1"},
    {"1099.0,", "", "Configuration text 2"},
    {"1099.0,", "", "Configuration text 3"},
    {"1105.0,", "@1:-32768@2:32767", "Setting A"},
    {"1105.0,", "@1:-32768@2:32767", "Setting B"},
    {"1101.0,", "@1:1@2:2", "Setting C (1 or 2)"},
    {"1099.0,", "", "Configuration text 4"},
}};

std::string normalLanguage(std::string_view language) {
    std::string key;
    for (const char c : language) {
        key.push_back(c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c);
    }
    const auto first = key.find_first_not_of(" \t");
    if (first == std::string::npos) {
        return {};
    }
    return key.substr(first, key.find_last_not_of(" \t") - first + 1);
}

} // namespace

Gsetting::Gsetting(shell::ShellState& shell, QWidget* parent)
    : QWidget(parent), m_shell(shell), m_languageLabel(new QLabel(this)),
      m_language(new QComboBox(this)), m_grid(new ui::InputGrid(this)),
      m_saveButton(new QPushButton(this)), m_exitButton(new QPushButton(this)) {
    setObjectName(QStringLiteral("Gsetting"));

    // The language list: LANGUAGE.DAT, and the configured language even when the list lacks it.
    std::vector<std::string> languages;
    try {
        languages = shell::readLanguageList(m_shell.driversFolder());
    } catch (const FileError&) {
        languages.clear(); // the configured language below is still offered
    }
    languages.insert(languages.begin(), "English");
    languages.push_back(m_shell.language());
    std::vector<std::string> seen;
    for (const auto& name : languages) {
        const std::string key = normalLanguage(name);
        if (key.empty() || std::find(seen.begin(), seen.end(), key) != seen.end()) {
            continue;
        }
        seen.push_back(key);
        m_language->addItem(QString::fromLatin1(name.data(), static_cast<qsizetype>(name.size())));
    }

    m_languageLabel->setBuddy(m_language);
    auto* languageRow = new QHBoxLayout;
    languageRow->addWidget(m_languageLabel);
    languageRow->addWidget(m_language, 1);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(m_saveButton);
    buttons->addWidget(m_exitButton);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(languageRow);
    layout->addWidget(m_grid, 1);
    layout->addLayout(buttons);

    connect(m_saveButton, &QPushButton::clicked, this, [this] { save(); });
    // Inside the main window the sub-window closes, which asks this form first.
    connect(m_exitButton, &QPushButton::clicked, this, [this] { ui::closeForm(this); });

    readPrompts();
    loadConfig();
}

void Gsetting::readPrompts() {
    m_prompts =
        shell::readPrompts(m_shell.programFolder, m_shell.language(), kPromptKey, 2, kPromptCount);
    const auto prompt = [this](std::size_t n, std::string_view fallback) {
        return ui::formPrompt(m_prompts, n, fallback, m_shell.language());
    };

    ui::InputGridSetup setup;
    setup.rows = kRowCount;
    setup.columns = 1;
    for (std::size_t row = 0; row < kRows.size(); ++row) {
        setup.descriptors.emplace_back(kRows[row].descriptor);
        setup.limitStrings.emplace_back(kRows[row].limits);
        setup.rowHeadings.append(prompt(kFirstRowPrompt + row, kRows[row].label));
    }
    setup.columnHeadings = {prompt(kValueHeadingPrompt, "Value")};
    setup.columnWidths = {kVisibleChars};
    setup.rangeMessage = ui::generalPrompt(m_shell, ui::General::RangeMessage);
    setup.notANumberMessage = ui::generalPrompt(m_shell, ui::General::NotANumber);

    const bool hadCells = m_grid->model()->rowCount() == kRowCount;
    QStringList texts;
    if (hadCells) {
        m_changedBeforeRelabel = m_changedBeforeRelabel || m_grid->isChanged();
        for (int row = 0; row < kRowCount; ++row) {
            texts.append(m_grid->cellText(row, 0));
        }
    }
    m_grid->setup(setup);
    if (hadCells) {
        for (int row = 0; row < kRowCount; ++row) {
            m_grid->setCellText(row, 0, texts.at(row));
        }
    }

    m_grid->view()->horizontalHeader()->setStretchLastSection(true);
    setWindowTitle(prompt(kCaptionPrompt, "Software settings"));
    m_languageLabel->setText(prompt(kLanguagePrompt, "Language"));
    m_saveButton->setText(prompt(kSavePrompt, "Save"));
    m_exitButton->setText(prompt(kExitPrompt, "Exit"));
}

void Gsetting::loadConfig() {
    const shell::SoftwareConfig& config = m_shell.software;
    const auto& language = config.language;
    m_grid->setCellText(kText1Row, 0, ui::toQString(config.text1, language));
    m_grid->setCellText(kText2Row, 0, ui::toQString(config.text2, language));
    m_grid->setCellText(kText3Row, 0, ui::toQString(config.text3, language));
    m_grid->setCellText(kSettingARow, 0, QString::number(config.settingA));
    m_grid->setCellText(kSettingBRow, 0, QString::number(config.settingB));
    m_grid->setCellText(kSettingCRow, 0, QString::number(config.settingC));
    m_grid->setCellText(kText4Row, 0, ui::toQString(config.text4, language));
    m_grid->clearChanged();
    m_changedBeforeRelabel = false;

    const std::string current = normalLanguage(language);
    for (int i = 0; i < m_language->count(); ++i) {
        if (normalLanguage(m_language->itemText(i).toStdString()) == current) {
            m_language->setCurrentIndex(i);
            break;
        }
    }
}

bool Gsetting::isChanged() const {
    return m_changedBeforeRelabel || m_grid->isChanged() ||
           normalLanguage(m_language->currentText().toStdString()) !=
               normalLanguage(m_shell.software.language);
}

void Gsetting::setMessageHook(std::function<void(const QString&)> hook) {
    m_messageHook = hook;
    m_grid->setMessageHook(std::move(hook));
}

void Gsetting::showCell(int row) {
    if (isVisible()) {
        m_grid->focusCell(row, 0);
    }
}

void Gsetting::tell(const QString& message) const {
    if (m_messageHook) {
        m_messageHook(message);
    } else {
        QMessageBox::warning(const_cast<Gsetting*>(this), windowTitle(), message);
    }
}

bool Gsetting::save() {
    ui::InputGridModel* model = m_grid->model();
    for (int row = 0; row < kRowCount; ++row) {
        if (model->kindAt(row, 0) != 1) {
            continue;
        }
        const QString refusal = ui::refusedNumberMessage(m_shell, *model, row, 0);
        if (!refusal.isEmpty()) {
            tell(refusal);
            showCell(row);
            return false;
        }
    }

    const shell::SoftwareConfig previous = m_shell.software;
    shell::SoftwareConfig config = previous;
    config.language = m_language->currentText().toStdString();
    // The texts are kept in the code page of the language they will be read under.
    const auto text = [this, &config](int row) {
        return ui::fromQString(m_grid->cellText(row, 0), config.language);
    };
    const auto integer = [this](int row) {
        return static_cast<std::int16_t>(std::lround(m_grid->cellNumber(row, 0)));
    };
    config.text1 = text(kText1Row);
    config.text2 = text(kText2Row);
    config.text3 = text(kText3Row);
    config.settingA = integer(kSettingARow);
    config.settingB = integer(kSettingBRow);
    config.settingC = integer(kSettingCRow);
    config.text4 = text(kText4Row);

    m_shell.software = config;
    try {
        shell::saveSoftwareConfig(m_shell);
    } catch (const FileError& e) {
        m_shell.software = previous;
        tell(QString::fromUtf8(e.what()));
        return false;
    }
    m_grid->clearChanged();
    m_changedBeforeRelabel = false;
    if (normalLanguage(previous.language) != normalLanguage(config.language)) {
        emit languageChanged();
    }
    emit saved(
        ui::formPrompt(m_prompts, kSavedPrompt, "The settings were saved.", m_shell.language()));
    return true;
}

void Gsetting::closeEvent(QCloseEvent* event) {
    if (!isChanged() || ui::mayLeaveForm(this, m_shell, m_askHook, [this] { return save(); })) {
        event->accept();
    } else {
        event->ignore();
    }
}

} // namespace orvak::shell::forms
