// The plain-text viewer of listings, sheets and reports: fixed-width text that can be read,
// printed, or saved as PDF.
#pragma once

#include <QList>
#include <QString>
#include <QStringList>
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

    /// A calculation sheet printed or saved as PDF carries on every page a title block: the
    /// project's title, the element and the date above the text, "Page k of n" below it.
    /// `pageWord` and `ofWord` are the user's language ("Page", "of"). Not set: plain pages.
    void setTitleBlock(const QString& project, const QString& element,
                       const QString& pageWord = QStringLiteral("Page"),
                       const QString& ofWord = QStringLiteral("of"));
    /// The printed pages for `linesPerPage` lines of `columns` characters: each page's lines,
    /// the title block's included (three lines above the text, two below it).
    QList<QStringList> printedPages(int linesPerPage, int columns) const;

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
    QString m_titleProject;
    QString m_titleElement;
    QString m_pageWord;
    QString m_ofWord;
    QAction* m_printAction;
    QAction* m_pdfAction;
    QAction* m_closeAction;
    std::function<void(const QString&)> m_messageHook;
};

} // namespace orvak::ui
