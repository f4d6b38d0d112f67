// The bar, spacing and mesh table forms: what they show on opening, what a save tells the user
// and writes, the delete question, the printed table, the diameter dialog, all of them and the
// steel forms in Hebrew, and their screenshots. The record layouts and the rows a save keeps are
// the table engine's tests.
#include "bars/forms/bar_table_form.h"

#include <QAction>
#include <QComboBox>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QListWidget>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QTableView>
#include <QTimer>
#include <cstring>

#include "app/mdi_main.h"
#include "bars/bar_table_grid.h"
#include "bars/forms/opndiams_dialog.h"
#include "bars/forms/steel_qnt_form.h"
#include "bars/forms/steel_upd_form.h"
#include "bars/steel_store.h"
#include "ui/input_grid.h"
#include "ui/shell_fixture.h"
#include "ui/text_viewer.h"

namespace orvak::bars::forms {
namespace {

namespace fs = std::filesystem;

/// One table record as the files hold it: the use mark, then little-endian singles.
std::string record(char flag, const std::vector<float>& values, std::size_t valueCount) {
    std::string bytes(1 + 4 * valueCount, '\0');
    bytes[0] = flag;
    for (std::size_t i = 0; i < values.size(); ++i) {
        std::uint32_t bits = 0;
        std::memcpy(&bits, &values[i], 4);
        for (int b = 0; b < 4; ++b) {
            bytes[1 + 4 * i + static_cast<std::size_t>(b)] = static_cast<char>(bits >> (8 * b));
        }
    }
    return bytes;
}

/// Value `index` (0-based, behind the use mark) of record `n` (1-based) of a file's bytes.
float storedValue(const std::string& file, std::size_t recordLength, std::size_t n,
                  std::size_t index) {
    const std::size_t at = (n - 1) * recordLength + 1 + 4 * index;
    EXPECT_LE(at + 4, file.size());
    std::uint32_t bits = 0;
    for (int b = 0; b < 4; ++b) {
        bits |= static_cast<std::uint32_t>(static_cast<unsigned char>(file[at + b])) << (8 * b);
    }
    float value = 0.0f;
    std::memcpy(&value, &bits, 4);
    return value;
}

class BarFormsTest : public test::FormFixture {
protected:
    BarFormsTest() {
        // A first start installs the built-in tables as files; these tests begin where the
        // user has none, the state the forms' own defaults are for.
        fs::remove(general() / "ROUNDBAR.DAT");
        fs::remove(general() / "SPACING.DAT");
    }

    fs::path general() const { return m_shell.generalFolder(); }

    static bool type(BarTableForm& form, int row, int column, const QString& text) {
        return test::typeInto(*form.grid(), row, column, text);
    }
};

TEST_F(BarFormsTest, RoundbarOpensOnTheBuiltInTable) {
    ASSERT_FALSE(fs::exists(general() / "ROUNDBAR.DAT"));
    auto form = open<Roundbar>();
    const ui::InputGrid& grid = *form->grid();
    ASSERT_EQ(grid.model()->rowCount(), 20);
    ASSERT_EQ(grid.model()->columnCount(), 11);

    // Rows of the handbook table: diameter mm, weight kg/m, area cm².
    EXPECT_DOUBLE_EQ(grid.cellNumber(5, 0), 12.0);
    EXPECT_NEAR(grid.cellNumber(5, 2), 1.13, 1e-6);
    EXPECT_NEAR(grid.cellNumber(15, 1), 6.31, 1e-6);
    // The cells show the column's decimals: "###.##" columns print 0.89 as "  0.89".
    EXPECT_EQ(grid.model()->data(grid.model()->index(5, 1), Qt::DisplayRole).toString(), "  0.89");
    for (int row = 16; row < 20; ++row) {
        EXPECT_TRUE(grid.cellText(row, 0).isEmpty()) << row;
    }
    EXPECT_FALSE(form->isChanged());

    // Captions and headings come from the prompt file.
    EXPECT_EQ(form->windowTitle(), "Areas for bars");
    const QString heading =
        grid.model()->headerData(2, Qt::Horizontal, Qt::DisplayRole).toString().simplified();
    EXPECT_EQ(heading, QString::fromUtf8("Area cm²"));
}

TEST_F(BarFormsTest, KeptColumnsAreHiddenAndSavedAsTheFileHoldsThem) {
    // Values 4 to 11 of a bar record are read by nothing. Another program left 7.5 and 1000
    // (beyond the column's 999.99) in two of them.
    test::writeBytes(general() / "ROUNDBAR.DAT",
                     record('1', {12.0f, 0.89f, 1.13f, 7.5f, 1000.0f}, 11));
    auto form = open<Roundbar>();
    for (int column = 3; column < 11; ++column) {
        EXPECT_TRUE(form->grid()->view()->isColumnHidden(column)) << column;
    }
    EXPECT_FALSE(form->grid()->view()->isColumnHidden(2));

    // The hidden 1000 does not stop a save the user cannot mend, and both stay as they were.
    ASSERT_TRUE(type(*form, 0, 1, "0.88"));
    ASSERT_TRUE(form->save()) << m_messages.join('\n').toStdString();
    const std::string bytes = test::readBytes(general() / "ROUNDBAR.DAT");
    EXPECT_FLOAT_EQ(storedValue(bytes, 45, 1, 1), 0.88f);
    EXPECT_FLOAT_EQ(storedValue(bytes, 45, 1, 3), 7.5f);
    EXPECT_FLOAT_EQ(storedValue(bytes, 45, 1, 4), 1000.0f);
}

TEST_F(BarFormsTest, SaveWritesEveryRowWithADiameterWithoutGaps) {
    auto form = open<Roundbar>();
    QList<int> progress;
    QObject::connect(form->progressBar(), &QProgressBar::valueChanged,
                     [&](int v) { progress << v; });

    ASSERT_TRUE(type(*form, 2, 0, ""));    // 7 mm leaves the table
    ASSERT_TRUE(type(*form, 17, 0, "40")); // a new bar below an empty row
    ASSERT_TRUE(type(*form, 17, 1, "9.87"));
    ASSERT_TRUE(type(*form, 17, 2, "12.57"));
    ASSERT_TRUE(form->isChanged());
    ASSERT_TRUE(form->save());
    EXPECT_FALSE(form->isChanged());
    EXPECT_TRUE(m_messages.isEmpty()) << m_messages.join('\n').toStdString();

    // 16 built-in rows - 7 mm + 40 mm = 16 records of 45 bytes, 40 mm moved up to record 16.
    const std::string bytes = test::readBytes(general() / "ROUNDBAR.DAT");
    ASSERT_EQ(bytes.size(), 16u * 45u);
    EXPECT_FLOAT_EQ(storedValue(bytes, 45, 3, 0), 8.0f);
    EXPECT_FLOAT_EQ(storedValue(bytes, 45, 16, 0), 40.0f);
    EXPECT_FLOAT_EQ(storedValue(bytes, 45, 16, 2), 12.57f);

    // The bar ran over the 20 grid rows, one step each, and was reset to 0 at the end.
    ASSERT_FALSE(progress.isEmpty());
    EXPECT_EQ(progress.back(), 0);
    EXPECT_TRUE(progress.contains(20));
    EXPECT_EQ(form->progressBar()->maximum(), 20);
    EXPECT_EQ(form->statusText(), "The table was saved: 16 rows.");

    // Nothing changed since: a second save writes nothing.
    fs::remove(general() / "ROUNDBAR.DAT");
    EXPECT_TRUE(form->save());
    EXPECT_FALSE(fs::exists(general() / "ROUNDBAR.DAT"));
}

TEST_F(BarFormsTest, FailedSaveKeepsTheOldTable) {
    auto form = open<Roundbar>();
    ASSERT_TRUE(type(*form, 0, 1, "0.16"));
    ASSERT_TRUE(form->save());
    const std::string saved = test::readBytes(general() / "ROUNDBAR.DAT");

    // TMPFIL cannot be written when a folder stands in its place.
    fs::create_directory(general() / "TMPFIL");
    ASSERT_TRUE(type(*form, 0, 1, "0.17"));
    EXPECT_FALSE(form->save());
    ASSERT_EQ(m_messages.size(), 1);
    EXPECT_EQ(test::readBytes(general() / "ROUNDBAR.DAT"), saved);
    EXPECT_TRUE(form->isChanged());
    EXPECT_EQ(form->progressBar()->value(), 0);
}

TEST_F(BarFormsTest, SpacingShowsItsRowsFromTheFile) {
    // Two records: spacing, then 20 areas of which the grid shows 15.
    test::writeBytes(general() / "SPACING.DAT",
                     record('1', {10.0f, 1.0f}, 21) + record('1', {12.5f, 2.0f}, 21));

    auto form = open<spacing>();
    ASSERT_EQ(form->grid()->model()->rowCount(), 27);
    ASSERT_EQ(form->grid()->model()->columnCount(), 16);
    EXPECT_DOUBLE_EQ(form->grid()->cellNumber(1, 0), 12.5);
    // A row beyond the end of the file reads as a row of zeros, not in use.
    EXPECT_EQ(form->grid()->cellText(2, 0), "0");
}

TEST_F(BarFormsTest, NetironStartsEmptyAndRefusesValuesOutOfRange) {
    auto form = open<Netiron>();
    EXPECT_FALSE(fs::exists(general() / "NETIRON.DAT"));
    EXPECT_TRUE(form->grid()->cellText(0, 0).isEmpty());
    EXPECT_EQ(form->windowTitle(), "NetWork Iron");

    // The mark column takes 0 or 1; the spacings up to 999.9.
    EXPECT_FALSE(type(*form, 0, 5, "2"));
    EXPECT_EQ(m_messages, QStringList{"The value 2 is outside the range 0 to 1."});
    EXPECT_FALSE(type(*form, 0, 1, "1000"));

    for (const auto& [column, text] : std::vector<std::pair<int, QString>>{
             {0, "6"}, {1, "15"}, {2, "20"}, {3, "1.88"}, {4, "1.41"}, {5, "1"}}) {
        ASSERT_TRUE(type(*form, 0, column, text)) << column;
    }
    ASSERT_TRUE(form->save());
    const std::string bytes = test::readBytes(general() / "NETIRON.DAT");
    ASSERT_EQ(bytes.size(), 25u);
    EXPECT_FLOAT_EQ(storedValue(bytes, 25, 1, 3), 1.88f);
    EXPECT_FLOAT_EQ(storedValue(bytes, 25, 1, 5), 1.0f);
}

TEST_F(BarFormsTest, DeleteAsksWithDefaultNoAndClosesTheForm) {
    // Without a table file there is nothing to delete and nothing to ask.
    {
        auto form = open<Netiron>();
        EXPECT_FALSE(form->deleteTable());
        EXPECT_TRUE(m_questions.isEmpty());
    }

    auto form = open<Roundbar>();
    form->show();
    m_answer = QMessageBox::No;
    form->toolbarCommand("cdelete");
    EXPECT_EQ(m_questions, QStringList{"Delete this table file?"});
    EXPECT_TRUE(fs::exists(general() / "ROUNDBAR.DAT"));
    EXPECT_TRUE(form->isVisible());

    // Yes deletes the file (and nothing else) and closes the form without a second question,
    // though the grid was edited.
    ASSERT_TRUE(type(*form, 0, 1, "0.16"));
    test::writeBytes(general() / "SPACING.DAT", record('1', {10.0f}, 21));
    m_answer = QMessageBox::Yes;
    EXPECT_TRUE(form->deleteTable());
    EXPECT_FALSE(fs::exists(general() / "ROUNDBAR.DAT"));
    EXPECT_TRUE(fs::exists(general() / "SPACING.DAT"));
    EXPECT_FALSE(form->isVisible());
    EXPECT_EQ(m_questions.size(), 2);
}

TEST_F(BarFormsTest, LeavingWithChangesAsks) {
    auto form = open<Roundbar>();
    form->show();
    ASSERT_TRUE(type(*form, 0, 1, "0.16"));
    m_answer = QMessageBox::Cancel;
    form->toolbarCommand("exit");
    EXPECT_TRUE(form->isVisible());
    EXPECT_EQ(m_questions, QStringList{"Save changes?"});

    // "copy" is accepted and changes nothing.
    form->toolbarCommand("copy");
    EXPECT_TRUE(form->isVisible());
    EXPECT_EQ(fs::file_size(general() / "ROUNDBAR.DAT"), 0u);

    m_answer = QMessageBox::Yes;
    form->toolbarCommand("exit");
    EXPECT_FALSE(form->isVisible());
    EXPECT_EQ(fs::file_size(general() / "ROUNDBAR.DAT"), 16u * 45u);
}

TEST_F(BarFormsTest, PrintShowsOneLinePerRowInUse) {
    auto form = open<Roundbar>();
    ASSERT_TRUE(type(*form, 3, 0, "")); // 8 mm is not printed
    ui::EditAsc* viewer = form->printTable();
    ASSERT_NE(viewer, nullptr);
    const QStringList lines = viewer->text().split('\n', Qt::SkipEmptyParts);
    delete viewer;

    // The title and one heading line, then the 15 rows in use.
    ASSERT_EQ(lines.size(), 2 + 15);
    EXPECT_EQ(lines[0], "Areas for bars");
    EXPECT_TRUE(lines[1].startsWith("Dia.  kg/m")) << lines[1].toStdString();
    // 12 mm by the masks "### " and "###.##" (twice: weight and area), written out by hand.
    EXPECT_EQ(lines[2 + 4], " 12   0.89  1.13");
    EXPECT_TRUE(lines[2 + 3].startsWith(" 10 ")) << lines[5].toStdString();
}

TEST_F(BarFormsTest, InTheMainWindowPrintAndDeleteWorkOnSubWindows) {
    QMdiArea area;
    area.resize(900, 700);
    area.show();
    auto* form = open<Netiron>().release();
    QMdiSubWindow* sub = area.addSubWindow(form);
    sub->setAttribute(Qt::WA_DeleteOnClose);
    sub->show();

    ui::EditAsc* viewer = form->printTable();
    ASSERT_NE(viewer, nullptr);
    ASSERT_EQ(area.subWindowList().size(), 2);
    EXPECT_EQ(area.subWindowList().at(1)->widget(), viewer);

    // Deleting the table closes the form's sub-window, not the viewer's.
    ASSERT_TRUE(type(*form, 0, 0, "5"));
    ASSERT_TRUE(form->save());
    m_answer = QMessageBox::Yes;
    ASSERT_TRUE(form->deleteTable());
    QCoreApplication::processEvents();
    ASSERT_EQ(area.subWindowList().size(), 1);
    EXPECT_EQ(area.subWindowList().at(0)->widget(), viewer);
}

class OpndiamsTest : public BarFormsTest {};

TEST_F(OpndiamsTest, ListsTheDiametersOfTheBarTable) {
    // 12, a row in use with diameter 0 (left out), 12.5, a row not in use, 16.
    test::writeBytes(general() / "ROUNDBAR.DAT",
                     record('1', {12.0f, 0.89f, 1.13f}, 11) + record('1', {0.0f}, 11) +
                         record('1', {12.5f, 0.96f, 1.23f}, 11) + record(' ', {14.0f}, 11) +
                         record('1', {16.0f, 1.58f, 2.01f}, 11));
    Opndiams dialog(m_shell);
    QListWidget* list = dialog.list();
    ASSERT_EQ(list->count(), 3);
    EXPECT_EQ(list->item(0)->text(), "12 mm");
    EXPECT_EQ(list->item(1)->text(), "12.5 mm");
    EXPECT_EQ(list->item(2)->text(), "16 mm");

    // OKLISTIN takes the chosen row; EXLISTIN none.
    list->setCurrentRow(1);
    QTimer::singleShot(0, dialog.okButton(), &QPushButton::click);
    const std::optional<float> chosen = dialog.choose();
    ASSERT_TRUE(chosen.has_value());
    EXPECT_FLOAT_EQ(*chosen, 12.5f);
    QTimer::singleShot(0, dialog.exitButton(), &QPushButton::click);
    EXPECT_FALSE(dialog.choose().has_value());
}

TEST_F(OpndiamsTest, EmptyBarTableIsToldAndNothingOpens) {
    Opndiams dialog(m_shell);
    dialog.setMessageHook([this](const QString& m) { m_messages << m; });
    EXPECT_FALSE(dialog.choose().has_value());
    EXPECT_EQ(m_messages, QStringList{"The bar table is empty: enter the bar diameters in Setting "
                                      "> Areas for bars first."});
    EXPECT_FALSE(dialog.isVisible());
}

/// A program started in Hebrew opens the bar-table and steel forms mirrored, captioned from
/// their Hebrew prompt files (compared with the files' lines, decoded by the test's own table).
class HebrewFormsTest : public test::ShellFixture {};

TEST_F(HebrewFormsTest, BarAndSteelFormsOpenRightToLeftWithTheirHebrewCaptions) {
    configureLanguage("Hebrew");
    shell::ShellState shell = startShell();
    {
        // A designed beam's stirrups, stored as floor items.
        bars::IronDatabase db = bars::OpenIronDatabase(shell.projectPath());
        bars::ManualItem m;
        m.kind = bars::ElementKind::Slab;
        m.element = "B1";
        m.elementNumber = 1;
        m.mark = 1;
        m.quantity = 24;
        m.diameterMm = 8;
        m.lengthCm = 95;
        m.barKind = 1;
        db.saveItem(bars::itemFromManual(m));
    }
    app::MdiMain window(shell);
    const auto hebrew = [](const char* file, std::size_t line) {
        return test::hebrewText(test::shippedLines("Hebrew", file).at(line - 1));
    };
    const auto heading = [](const ui::InputGrid& grid, int column) {
        return grid.model()->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString();
    };

    struct TableForm {
        const char* name;
        const char* file;
        int shownColumns;
    };
    for (const TableForm& t :
         {TableForm{"Roundbar", "roundbarH.TXT", 3}, TableForm{"spacing", "spacingH.TXT", 16},
          TableForm{"Netiron", "NetironH.TXT", 6}}) {
        auto* form = qobject_cast<BarTableForm*>(window.openForm(t.name));
        ASSERT_NE(form, nullptr) << t.name;
        EXPECT_TRUE(form->isRightToLeft()) << t.name;
        EXPECT_EQ(form->windowTitle(), hebrew(t.file, 2)) << t.name;
        EXPECT_EQ(form->action("save")->text(), hebrew(t.file, 3)) << t.name;
        // Line 12 on: one heading per shown column; the rest are hidden.
        for (int c = 0; c < form->grid()->model()->columnCount(); ++c) {
            const bool shown = c < t.shownColumns;
            EXPECT_EQ(!form->grid()->view()->isColumnHidden(c), shown) << t.name << c;
            if (shown) {
                EXPECT_EQ(heading(*form->grid(), c).simplified(),
                          hebrew(t.file, 12 + static_cast<std::size_t>(c)).simplified())
                    << t.name << c;
            }
        }
    }

    auto* update = qobject_cast<SteelUpd*>(window.openForm("SteelUpd"));
    ASSERT_NE(update, nullptr);
    EXPECT_TRUE(update->isRightToLeft());
    EXPECT_EQ(update->windowTitle(), hebrew("SteelUpdH.TXT", 2));
    EXPECT_EQ(update->kindOption(bars::ElementKind::Slab)->text(), hebrew("SteelUpdH.TXT", 4));
    EXPECT_EQ(update->barKindOption(1)->text(), hebrew("SteelUpdH.TXT", 21));
    update->setElementKind(bars::ElementKind::Slab);
    update->elementBox()->setEditText("B1");
    ASSERT_EQ(update->itemsList()->count(), 1);
    // The list names the bar kind as its button does, not by its code.
    EXPECT_TRUE(update->itemsList()->item(0)->text().contains(hebrew("SteelUpdH.TXT", 21)))
        << update->itemsList()->item(0)->text().toStdString();

    auto* report = qobject_cast<SteelQnt*>(window.openForm("SteelQnt"));
    ASSERT_NE(report, nullptr);
    EXPECT_TRUE(report->isRightToLeft());
    EXPECT_EQ(report->windowTitle(), hebrew("SteelQntH.TXT", 2));
    const int floors = static_cast<int>(SteelQnt::ElementList::Floors);
    EXPECT_EQ(report->tabs()->tabText(floors), hebrew("SteelQntH.TXT", 7));
    EXPECT_EQ(report->list(SteelQnt::ElementList::Floors)->count(), 1);

    // The GENERAL folder made for the language holds no bar table yet: the built-in one,
    // 5 mm first, saved as its form saves it.
    auto bars = bars::BarTableGrid::open(bars::roundbarTable(), shell.generalFolder());
    bars.markChanged();
    bars.save(shell.generalFolder());
    Opndiams dialog(shell);
    EXPECT_TRUE(dialog.isRightToLeft());
    EXPECT_EQ(dialog.windowTitle(), hebrew("OpndiamsH.TXT", 2));
    ASSERT_GT(dialog.list()->count(), 0);
    EXPECT_EQ(dialog.list()->item(0)->text(), hebrew("OpndiamsH.TXT", 6).arg("5"));
}

/// Pictures of the three table forms for a reader to judge; made only when
/// ORVAK_SCREENSHOT_DIR names a folder.
TEST_F(BarFormsTest, Screenshots) {
    const QString folder = qEnvironmentVariable("ORVAK_SCREENSHOT_DIR");
    if (folder.isEmpty()) {
        GTEST_SKIP() << "ORVAK_SCREENSHOT_DIR is not set";
    }
    QDir().mkpath(folder);
    test::writeBytes(general() / "NETIRON.DAT",
                     record('1', {5.0f, 15.0f, 15.0f, 1.31f, 1.31f, 1.0f}, 6) +
                         record('1', {6.0f, 15.0f, 20.0f, 1.88f, 1.41f, 1.0f}, 6) +
                         record('1', {8.0f, 20.0f, 20.0f, 2.51f, 2.51f, 0.0f}, 6));
    const auto shoot = [&](BarTableForm& form, const QString& name) {
        form.resize(form.sizeHint());
        form.show();
        QCoreApplication::processEvents();
        EXPECT_TRUE(form.grab().save(folder + "/orvak-" + name + ".png")) << name.toStdString();
        // The printed table beside the picture, as text.
        ui::EditAsc* viewer = form.printTable();
        ASSERT_NE(viewer, nullptr);
        QFile text(folder + "/orvak-" + name + "-print.txt");
        ASSERT_TRUE(text.open(QIODevice::WriteOnly));
        text.write(viewer->text().toUtf8());
        delete viewer;
        form.close();
    };
    shoot(*open<Roundbar>(), "Roundbar");
    shoot(*open<spacing>(), "spacing");
    shoot(*open<Netiron>(), "Netiron");
}

} // namespace
} // namespace orvak::bars::forms
