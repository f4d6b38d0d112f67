// The plain-text viewer of listings, sheets and reports, with printing and PDF export that
// lay the text out in a monospaced face page by page.
#include "ui/text_viewer.h"

#include "ui/general_prompts.h"
#include "ui/qt_text.h"

#include <QAction>
#include <QDate>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QFontDatabase>
#include <QFontInfo>
#include <QMessageBox>
#include <QPainter>
#include <QPlainTextEdit>
#include <QPrintDialog>
#include <QPrinter>
#include <QToolBar>
#include <QVBoxLayout>

#include <algorithm>
#include <filesystem>
#include <system_error>

namespace orvak::ui {

namespace {

constexpr qreal kPrintPointSize = 9.0;
/// Below this size a printed character is no longer readable; longer lines wrap instead.
constexpr qreal kSmallestPrintPointSize = 6.0;
constexpr qreal kPageMarginMm = 15.0;
constexpr int kTabWidth = 8;

QFont monospacedFont(qreal pointSize) {
    QFont font(QStringLiteral("DejaVu Sans Mono"));
    font.setStyleHint(QFont::Monospace);
    font.setFixedPitch(true);
    font.setPointSizeF(pointSize);
    if (!QFontInfo(font).fixedPitch()) {
        font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
        font.setPointSizeF(pointSize);
    }
    return font;
}

QString expandTabs(const QString& line) {
    if (!line.contains(QLatin1Char('\t'))) {
        return line;
    }
    QString out;
    for (const QChar c : line) {
        if (c == QLatin1Char('\t')) {
            out += QString(kTabWidth - out.size() % kTabWidth, QLatin1Char(' '));
        } else {
            out += c;
        }
    }
    return out;
}

std::filesystem::path toPath(const QString& path) {
    return std::filesystem::path(path.toStdU16String());
}

} // namespace

EditAsc::EditAsc(QWidget* parent)
    : QWidget(parent), m_edit(new QPlainTextEdit(this)),
      m_printAction(new QAction(tr("Print"), this)),
      m_pdfAction(new QAction(tr("Save as PDF"), this)),
      m_closeAction(new QAction(tr("Close"), this)) {
    auto* toolBar = new QToolBar(this);
    toolBar->setToolButtonStyle(Qt::ToolButtonTextOnly);
    toolBar->addAction(m_printAction);
    toolBar->addAction(m_pdfAction);
    toolBar->addSeparator();
    toolBar->addAction(m_closeAction);

    m_edit->setReadOnly(true);
    m_edit->setLineWrapMode(QPlainTextEdit::NoWrap);
    m_edit->setFont(monospacedFont(QFont().pointSizeF()));
    m_edit->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(toolBar);
    layout->addWidget(m_edit);
    setFocusProxy(m_edit);

    connect(m_printAction, &QAction::triggered, this, &EditAsc::print);
    connect(m_pdfAction, &QAction::triggered, this, &EditAsc::saveAsPdfInteractive);
    connect(m_closeAction, &QAction::triggered, this, [this]() { closeForm(this); });
}

void EditAsc::setActionTexts(const QString& print, const QString& savePdf, const QString& close) {
    m_printAction->setText(print);
    m_pdfAction->setText(savePdf);
    m_closeAction->setText(close);
}

bool EditAsc::openFile(const QString& path, std::string_view language) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        tell(tr("The file \"%1\" cannot be read: %2.").arg(path, file.errorString()));
        return false;
    }
    const QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError) {
        tell(tr("The file \"%1\" cannot be read: %2.").arg(path, file.errorString()));
        return false;
    }
    QString text =
        toQString(std::string_view(bytes.constData(), static_cast<size_t>(bytes.size())), language);
    // Listings written on Windows end their lines with CR LF.
    text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    showText(QFileInfo(path).fileName(), text);
    return true;
}

void EditAsc::showText(const QString& title, const QString& text) {
    setWindowTitle(title);
    m_edit->setPlainText(text);
}

QString EditAsc::text() const {
    return m_edit->toPlainText();
}

void EditAsc::tell(const QString& message) const {
    if (m_messageHook) {
        m_messageHook(message);
    } else {
        QMessageBox::warning(const_cast<EditAsc*>(this), windowTitle(), message);
    }
}

void EditAsc::setTitleBlock(const QString& project, const QString& element, const QString& pageWord,
                            const QString& ofWord) {
    m_titleProject = project;
    m_titleElement = element;
    m_pageWord = pageWord;
    m_ofWord = ofWord;
}

QList<QStringList> EditAsc::printedPages(int linesPerPage, int columns) const {
    const bool titled = !m_titleProject.isEmpty() || !m_titleElement.isEmpty();
    // The title block takes three lines above the text and two below it.
    const int textLines = std::max(1, titled ? linesPerPage - 5 : linesPerPage);
    columns = std::max(1, columns);

    QStringList lines;
    for (const QString& line : text().split(QLatin1Char('\n'))) {
        lines << expandTabs(line);
    }
    while (lines.size() > 1 && lines.last().trimmed().isEmpty()) {
        lines.removeLast();
    }
    // A page is begun only when a line goes on it, so a form feed at the end of the text
    // leaves no empty page behind.
    QList<QStringList> pages;
    bool pageBreakPending = true;
    const auto put = [&](const QString& chunk) {
        if (pageBreakPending || pages.last().size() == textLines) {
            pages.append(QStringList());
            pageBreakPending = false;
        }
        pages.last() << chunk;
    };
    for (const QString& line : lines) {
        const QStringList parts = line.split(QLatin1Char('\f'));
        for (qsizetype p = 0; p < parts.size(); ++p) {
            if (p > 0) {
                // A form feed in a listing starts the next page.
                pageBreakPending = pageBreakPending || !pages.isEmpty();
            }
            const QString& part = parts.at(p);
            if (part.isEmpty() && parts.size() == 1) {
                put(QString());
            }
            for (qsizetype start = 0; start < part.size(); start += columns) {
                put(part.mid(start, columns));
            }
        }
    }
    if (!titled) {
        return pages;
    }
    const QString date = QDate::currentDate().toString(QStringLiteral("dd-MM-yyyy"));
    const qsizetype n = pages.size();
    for (qsizetype k = 0; k < n; ++k) {
        // Project on the left, element and date on the right, cut to the line's width.
        const QString right = m_titleElement + QStringLiteral("  ") + date;
        const qsizetype room = std::max<qsizetype>(1, columns - right.size() - 2);
        QString head = m_titleProject.left(room);
        head = head.leftJustified(std::max<qsizetype>(0, columns - right.size()), QLatin1Char(' '));
        head = (head + right).left(columns);
        QStringList page;
        page << head << QString(columns, QLatin1Char('-')) << QString();
        page << pages.at(k);
        while (page.size() < linesPerPage - 2) {
            page << QString();
        }
        page << QString();
        const QString footer =
            QStringLiteral("%1 %2 %3 %4").arg(m_pageWord).arg(k + 1).arg(m_ofWord).arg(n);
        page << footer.rightJustified(columns, QLatin1Char(' ')).left(columns);
        pages[k] = page;
    }
    return pages;
}

bool EditAsc::paintPages(QPrinter& printer) const {
    QPainter painter;
    if (!painter.begin(&printer)) {
        return false;
    }
    const QRectF page = printer.pageLayout().paintRectPixels(printer.resolution());

    qsizetype longest = 1;
    for (const QString& line : text().split(QLatin1Char('\n'))) {
        for (const QString& part : expandTabs(line).split(QLatin1Char('\f'))) {
            longest = std::max(longest, part.size());
        }
    }
    // Shrink the face (not below readable) so that the widest line of a sheet fits the page.
    QFont font = monospacedFont(kPrintPointSize);
    qreal charWidth = QFontMetricsF(font, &printer).horizontalAdvance(QLatin1Char('0'));
    if (longest * charWidth > page.width()) {
        const qreal fitted = kPrintPointSize * page.width() / (longest * charWidth);
        font.setPointSizeF(std::max(kSmallestPrintPointSize, fitted));
    }
    painter.setFont(font);
    const QFontMetricsF metrics(font, &printer);
    charWidth = metrics.horizontalAdvance(QLatin1Char('0'));
    const int columns = std::max(1, static_cast<int>(page.width() / charWidth));
    const int linesPerPage = std::max(1, static_cast<int>(page.height() / metrics.lineSpacing()));

    const QList<QStringList> pages = printedPages(linesPerPage, columns);
    for (qsizetype k = 0; k < pages.size(); ++k) {
        if (k > 0) {
            printer.newPage();
        }
        const QStringList& lines = pages.at(k);
        for (qsizetype i = 0; i < lines.size(); ++i) {
            painter.drawText(
                QPointF(0.0, metrics.ascent() + static_cast<qreal>(i) * metrics.lineSpacing()),
                lines.at(i));
        }
    }
    return painter.end();
}

bool EditAsc::saveAsPdf(const QString& pdfPath) const {
    const QString partPath = pdfPath + QStringLiteral(".part");
    bool ok = false;
    {
        QPrinter printer(QPrinter::HighResolution);
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(partPath);
        printer.setPageSize(QPageSize(QPageSize::A4));
        printer.setPageMargins(
            QMarginsF(kPageMarginMm, kPageMarginMm, kPageMarginMm, kPageMarginMm),
            QPageLayout::Millimeter);
        printer.setDocName(windowTitle());
        ok = paintPages(printer);
    }
    std::error_code error;
    // The finished file replaces the target in one step; a failed export leaves any older
    // file of that name as it was.
    if (ok && QFileInfo(partPath).size() > 0) {
        std::filesystem::rename(toPath(partPath), toPath(pdfPath), error);
        if (!error) {
            return true;
        }
    }
    std::filesystem::remove(toPath(partPath), error);
    return false;
}

void EditAsc::print() {
    QPrinter printer(QPrinter::HighResolution);
    printer.setDocName(windowTitle());
    QPrintDialog dialog(&printer, this);
    if (dialog.exec() != QDialog::Accepted) {
        return;
    }
    if (!paintPages(printer)) {
        tell(tr("The text could not be printed."));
    }
}

void EditAsc::saveAsPdfInteractive() {
    QString suggested = QFileInfo(windowTitle()).completeBaseName();
    if (suggested.isEmpty()) {
        suggested = QStringLiteral("listing");
    }
    QString path = QFileDialog::getSaveFileName(
        this, m_pdfAction->text(), suggested + QStringLiteral(".pdf"), tr("PDF files (*.pdf)"));
    if (path.isEmpty()) {
        return;
    }
    if (!path.endsWith(QStringLiteral(".pdf"), Qt::CaseInsensitive)) {
        path += QStringLiteral(".pdf");
    }
    if (!saveAsPdf(path)) {
        tell(tr("The PDF file \"%1\" could not be written.").arg(path));
    }
}

} // namespace orvak::ui
