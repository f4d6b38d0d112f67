// The plain-text viewer: reading single-byte listings and writing them out as PDF pages.
#include "ui/text_viewer.h"

#include "support/temp_dir.h"

#include <QDate>
#include <QRegularExpression>
#include <gtest/gtest.h>

namespace orvak::ui {
namespace {

QString qpath(const std::filesystem::path& path) {
    return QString::fromStdString(path.string());
}

/// Pages of a PDF written by Qt: each page object carries "/Type /Page" (the tree "/Pages").
int pageCount(const std::string& pdf) {
    static const QRegularExpression kPage(QStringLiteral("/Type\\s*/Page(?!s)"));
    int pages = 0;
    for (auto it = kPage.globalMatch(QString::fromLatin1(pdf)); it.hasNext(); it.next()) {
        ++pages;
    }
    return pages;
}

TEST(EditAscTest, OpensAHebrewListingAndReportsAMissingFile) {
    test::TempDir dir;
    // Windows-1255: 0xF9 0xEC 0xE5 0xED is shin, lamed, vav, final mem.
    test::writeBytes(dir / "ClGrp_A.Analy", "\xF9\xEC\xE5\xED\r\nAs = 12.5\r\n");
    EditAsc viewer;
    ASSERT_TRUE(viewer.openFile(qpath(dir / "ClGrp_A.Analy"), "Hebrew"));
    EXPECT_EQ(viewer.text(), QString::fromUtf8("\u05E9\u05DC\u05D5\u05DD\nAs = 12.5\n"));
    EXPECT_EQ(viewer.windowTitle(), "ClGrp_A.Analy");

    QStringList messages;
    viewer.setMessageHook([&](const QString& m) { messages << m; });
    EXPECT_FALSE(viewer.openFile(qpath(dir / "Report.txt"), "English"));
    ASSERT_EQ(messages.size(), 1);
    EXPECT_TRUE(messages[0].contains("Report.txt"));
}

TEST(EditAscTest, SavesPdfWithPageBreaks) {
    test::TempDir dir;
    EditAsc viewer;
    QString longText;
    for (int i = 1; i <= 200; ++i) {
        longText += QStringLiteral("Line %1 of the beam listing\n").arg(i);
    }
    viewer.showText("Report", longText);
    ASSERT_TRUE(viewer.saveAsPdf(qpath(dir / "long.pdf")));
    const std::string pdf = test::readBytes(dir / "long.pdf");
    ASSERT_GT(pdf.size(), 100u);
    EXPECT_EQ(pdf.substr(0, 4), "%PDF");
    // A4 less 15 mm margins leaves 267 mm = 757 pt; at 9 pt type a line takes about 10.5 pt,
    // some 70 lines a page, so 200 lines need 3 pages.
    EXPECT_EQ(pageCount(pdf), 3);
    EXPECT_FALSE(std::filesystem::exists(dir / "long.pdf.part"));

    // A form feed starts a new page; one at the very end leaves no empty page.
    viewer.showText("Sheet", "first page\n\fsecond page\n\f");
    ASSERT_TRUE(viewer.saveAsPdf(qpath(dir / "ff.pdf")));
    EXPECT_EQ(pageCount(test::readBytes(dir / "ff.pdf")), 2);
    EXPECT_FALSE(viewer.saveAsPdf(qpath(dir / "no-such-folder" / "out.pdf")));
}

// Every printed page of a sheet carries the project, the element, the date and "Page k of n".
TEST(EditAscTest, PrintedSheetsCarryATitleBlockOnEveryPage) {
    EditAsc viewer;
    QString text;
    for (int i = 1; i <= 25; ++i) {
        text += QStringLiteral("line %1\n").arg(i);
    }
    viewer.showText("F1-B1_1.Analy2", text + "\fafter the form feed\n");
    viewer.setTitleBlock("Demo office building", "F1-B1_1");

    // 15 lines a page, of which 5 are the title block: 10 text lines, so the 25 lines fill
    // three pages and the form feed starts a fourth.
    const QList<QStringList> pages = viewer.printedPages(15, 60);
    ASSERT_EQ(pages.size(), 4);
    const QString date = QDate::currentDate().toString("dd-MM-yyyy");
    for (qsizetype k = 0; k < pages.size(); ++k) {
        const QStringList& page = pages.at(k);
        ASSERT_EQ(page.size(), 15);
        EXPECT_TRUE(page.first().startsWith("Demo office building")) << page.first().toStdString();
        EXPECT_TRUE(page.first().endsWith("F1-B1_1  " + date)) << page.first().toStdString();
        EXPECT_EQ(page.first().size(), 60);
        EXPECT_EQ(page.last().trimmed(), QStringLiteral("Page %1 of 4").arg(k + 1));
    }
    EXPECT_EQ(pages.at(0).at(3), "line 1");
    EXPECT_EQ(pages.at(1).at(3), "line 11");
    EXPECT_EQ(pages.at(3).at(3), "after the form feed");
    // A sheet without a title block prints as it stands.
    EditAsc plain;
    plain.showText("Help", text);
    EXPECT_EQ(plain.printedPages(15, 60).size(), 2);
}

} // namespace
} // namespace orvak::ui
