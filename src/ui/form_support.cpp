// What the forms share beyond the grid: Yes/No questions defaulting to No, messages, the
// listing face, and the report viewer opened beside the form.
#include "ui/form_support.h"

#include <QApplication>
#include <QFontDatabase>
#include <QFontInfo>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QStyle>
#include <QWidget>
#include <algorithm>

#include "core/file_util.h"
#include "core/rtf_text.h"
#include "shell/prompts.h"
#include "shell/shell_state.h"
#include "ui/general_prompts.h"
#include "ui/qt_text.h"
#include "ui/text_viewer.h"

namespace orvak::ui {

namespace {

constexpr QSize kViewerSize(760, 540);

} // namespace

bool askYesNo(QWidget* form, const AskHook& hook, const QString& question, const QString& title) {
    const QMessageBox::StandardButton answer =
        hook ? hook(question)
             : QMessageBox::question(form, title, question, QMessageBox::Yes | QMessageBox::No,
                                     QMessageBox::No);
    return answer == QMessageBox::Yes;
}

void tellUser(QWidget* form, const MessageHook& hook, const QString& message) {
    // The engines' sentences come without their full stop.
    QString text = message.trimmed();
    if (!text.isEmpty() && !QStringLiteral(".!?:").contains(text.back())) {
        text += QLatin1Char('.');
    }
    tellUserAsIs(form, hook, text);
}

void tellUserAsIs(QWidget* form, const MessageHook& hook, const QString& text) {
    if (hook) {
        hook(text);
    } else {
        QMessageBox::warning(form, form->windowTitle(), text);
    }
}

QFont listingFont() {
    QFont font(QStringLiteral("DejaVu Sans Mono"));
    font.setStyleHint(QFont::Monospace);
    font.setFixedPitch(true);
    font.setPointSizeF(QApplication::font().pointSizeF());
    if (!QFontInfo(font).fixedPitch()) {
        font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    }
    return font;
}

void fitToChars(QLineEdit* edit, int chars) {
    const QFontMetrics metrics(edit->font());
    // Frame and text margins of the line edit on each side, and room for the caret.
    const int margins = 2 * (edit->style()->pixelMetric(QStyle::PM_DefaultFrameWidth) + 4) + 2;
    edit->setFixedWidth(chars * metrics.horizontalAdvance(QLatin1Char('0')) + margins);
}

void setSheetTitleBlock(EditAsc* viewer, const shell::ShellState& shell, const QString& element) {
    if (viewer == nullptr) {
        return;
    }
    const shell::PromptList prompts =
        shell::readPrompts(shell.programFolder, shell.language(), "SHEET", 2, 2);
    const std::string& first = shell.project.titleLines[0];
    const QString project = first.find_first_not_of(' ') != std::string::npos
                                ? toQString(first, shell.language())
                                : QString::fromStdString(shell.projectName);
    viewer->setTitleBlock(project, element, formPrompt(prompts, 1, "Page", shell.language()),
                          formPrompt(prompts, 2, "of", shell.language()));
}

void showBeside(QWidget* form, QWidget* other, QSize size) {
    other->setAttribute(Qt::WA_DeleteOnClose);
    auto* sub = qobject_cast<QMdiSubWindow*>(form->parentWidget());
    QMdiArea* area = sub ? sub->mdiArea() : nullptr;
    if (area) {
        QMdiSubWindow* window = area->addSubWindow(other);
        window->setAttribute(Qt::WA_DeleteOnClose);
        const QSize room = area->viewport()->size();
        window->resize(std::min(size.width(), room.width()),
                       std::min(size.height(), room.height()));
        window->show();
        area->setActiveSubWindow(window);
    } else {
        other->resize(size);
        other->show();
    }
}

EditAsc* openReportViewer(QWidget* form, const shell::ShellState& shell, const QString& title,
                          const QString& text, const MessageHook& hook) {
    auto* viewer = new EditAsc;
    viewer->setAttribute(Qt::WA_DeleteOnClose);
    viewer->setActionTexts(generalPrompt(shell, General::Print),
                           generalPrompt(shell, General::SaveAsPdf),
                           generalPrompt(shell, General::Exit));
    if (hook) {
        viewer->setMessageHook(hook);
    }
    viewer->showText(title, text);
    showBeside(form, viewer, kViewerSize);
    return viewer;
}

EditAsc* openSheetViewer(QWidget* form, const shell::ShellState& shell,
                         const std::filesystem::path& file, const MessageHook& hook) {
    const auto bytes = core::readWholeFile(file);
    if (!bytes) {
        return nullptr;
    }
    std::string text(bytes->begin(), bytes->end());
    if (file.extension() == ".rtf") {
        text = core::rtfPlainText(text);
    }
    EditAsc* viewer =
        openReportViewer(form, shell, QString::fromStdString(file.filename().string()),
                         toQString(text, shell.language()), hook);
    setSheetTitleBlock(viewer, shell, QString::fromStdString(file.stem().string()));
    return viewer;
}

} // namespace orvak::ui
