// The plain-text viewer of listings, sheets and reports: fixed-width text that can be read,
// printed, or saved as PDF.
#pragma once

#include <QString>
#include <QWidget>
#include <functional>
#include <string_view>

class QAction;
class QPlainTextEdit;
class QPrinter;

namespace orvak::ui {

class EditAsc : public QWidget {
    Q_OBJECT
public:
    explicit EditAsc(QWidget* parent = nullptr);

    /// Shows a file (single-byte text in the language's code page); returns false when it
    /// cannot be read, after telling the user.
    bool openFile(const QString& path, std::string_view language);
    /// Shows a text built in memory (a printout) under a title.
    void showText(const QString& title, const QString& text);
    QString text() const;

    /// Writes the text as a PDF file (A4, monospaced, long lines wrapped, a form feed starts a
    /// new page); the file appears only when complete. Returns false on failure.
    bool saveAsPdf(const QString& pdfPath) const;

    /// Captions of the toolbar in the user's language (prompts of the form).
    void setActionTexts(const QString& print, const QString& savePdf, const QString& close);
    /// Replaces the message box of failures (tests record the message instead).
    void setMessageHook(std::function<void(const QString&)> hook) {
        m_messageHook = std::move(hook);
    }

public slots:
    void print();
    void saveAsPdfInteractive();

private:
    void tell(const QString& message) const;
    bool paintPages(QPrinter& printer) const;

    QPlainTextEdit* m_edit;
    QAction* m_printAction;
    QAction* m_pdfAction;
    QAction* m_closeAction;
    std::function<void(const QString&)> m_messageHook;
};

} // namespace orvak::ui
