// Test support for the forms: a fresh program folder (ORVAK_HOME) with the shipped data
// installed and the shell started in it, and readers of the shipped prompt files.
#pragma once

#include <QApplication>
#include <QCoreApplication>
#include <QMessageBox>
#include <QString>
#include <QStringList>
#include <filesystem>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

#include "model/shipped_data.h"
#include "shell/shell_state.h"
#include "shell/software_config.h"
#include "shell/startup.h"
#include "support/temp_dir.h"
#include "ui/input_grid.h"

namespace orvak::test {

class ShellFixture : public ::testing::Test {
protected:
    ShellFixture() : m_home("ORVAK_HOME", m_dir.path().string()) {}
    ~ShellFixture() override { QApplication::setLayoutDirection(Qt::LeftToRight); }

    /// Runs the start-up sequence in the fresh program folder, the shipped data installed.
    shell::ShellState startShell() {
        shell::StartupOptions options;
        options.programFolder = shell::resolveProgramFolder(std::getenv);
        options.dataFolder = std::filesystem::path(ORVAK_SOURCE_DATA_DIR);
        options.installShippedData = model::installShippedData;
        return shell::runStartup(options);
    }

    /// Writes SWC before start-up with the given language.
    void configureLanguage(const std::string& language) {
        shell::SoftwareConfig config;
        config.language = language;
        std::filesystem::create_directories(m_dir / "GENERAL");
        shell::writeSoftwareConfig(m_dir / "GENERAL" / "SWC", config);
    }

    const std::filesystem::path& home() const { return m_dir.path(); }

    TempDir m_dir;
    ScopedEnv m_home;
};

/// A started program folder and a form's message and question hooks: what the form told the
/// user, what it asked, and the answer every question gets.
class FormFixture : public ShellFixture {
protected:
    FormFixture() : m_shell(startShell()) {}

    /// A form of the shell with its hooks set.
    template <class Form> std::unique_ptr<Form> open() {
        auto form = std::make_unique<Form>(m_shell);
        form->setMessageHook([this](const QString& m) { m_messages << m; });
        form->setAskHook([this](const QString& q) {
            m_questions << q;
            return m_answer;
        });
        return form;
    }

    shell::ShellState m_shell;
    QStringList m_messages;
    QStringList m_questions;
    QMessageBox::StandardButton m_answer = QMessageBox::No;
};

/// Types a value into a cell (0-based) the way the grid's editor commits it. A refusal is told
/// once the editor is gone, so the queued events run before the answer.
inline bool typeInto(ui::InputGrid& grid, int row, int column, const QString& text) {
    const bool stored = grid.model()->setData(grid.model()->index(row, column), text, Qt::EditRole);
    QCoreApplication::processEvents();
    return stored;
}

/// The lines of a shipped prompt file (data/<language>/<file>), without line ends.
inline std::vector<std::string> shippedLines(const std::string& language, const std::string& file) {
    const std::string bytes =
        readBytes(std::filesystem::path(ORVAK_SOURCE_DATA_DIR) / language / file);
    std::vector<std::string> lines;
    std::string line;
    for (const char c : bytes) {
        if (c == '\n') {
            lines.push_back(line);
            line.clear();
        } else if (c != '\r') {
            line.push_back(c);
        }
    }
    if (!line.empty()) {
        lines.push_back(line);
    }
    return lines;
}

/// Windows-1255 text of the prompt files as Unicode, decoded here by its own table: ASCII
/// stays, the letters 0xE0..0xFA are alef (U+05D0) to tav (U+05EA). Any other byte is not
/// expected in the shipped files and fails the test.
inline QString hebrewText(const std::string& bytes) {
    QString text;
    for (const char c : bytes) {
        const auto b = static_cast<unsigned char>(c);
        if (b < 0x80) {
            text += QChar(b);
        } else if (b >= 0xE0 && b <= 0xFA) {
            text += QChar(0x05D0 + (b - 0xE0));
        } else {
            ADD_FAILURE() << "unexpected byte " << int(b) << " in a Hebrew prompt";
        }
    }
    return text;
}

} // namespace orvak::test
