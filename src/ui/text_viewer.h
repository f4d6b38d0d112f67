// The plain-text viewer of listings, sheets and reports: fixed-width text that can be read,
// printed, or saved as PDF.
#pragma once

#include <QDialog>
#include <QString>

class QPlainTextEdit;

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

    /// Writes the text as a PDF file; returns false on failure.
    bool saveAsPdf(const QString& pdfPath) const;

public slots:
    void print();
    void saveAsPdfInteractive();

private:
    QPlainTextEdit* m_edit;
};

} // namespace orvak::ui
