// The steel forms: items entered by hand (add, change by key, delete, delete all), the
// element choice of the report form and the report it opens, the offer to import Iron.MDB.
#include "bars/forms/steel_qnt_form.h"
#include "bars/forms/steel_upd_form.h"

#include <QCheckBox>
#include <QComboBox>
#include <QCoreApplication>
#include <QDir>
#include <QLineEdit>
#include <QListWidget>
#include <QRadioButton>
#include <QSignalSpy>
#include <QTabWidget>
#include <QTest>

#include "bars/bar_table_grid.h"
#include "bars/steel_store.h"
#include "ui/shell_fixture.h"
#include "ui/text_viewer.h"

namespace orvak::bars::forms {
namespace {

namespace fs = std::filesystem;
using Field = SteelUpd::Field;

class SteelFormsTest : public test::FormFixture {
protected:
    fs::path project() const { return m_shell.projectPath(); }

    /// The built-in bar table written to ROUNDBAR.DAT, as a save from its form writes it.
    void writeBarTable() {
        auto grid = bars::BarTableGrid::open(bars::roundbarTable(), m_shell.generalFolder());
        grid.markChanged();
        grid.save(m_shell.generalFolder());
    }

    /// An item of element number `number`: the number, not the name, is part of the key.
    static void addItem(bars::IronDatabase& db, bars::ElementKind kind, const std::string& element,
                        int number, int mark, float quantity, float diameter, float length,
                        const std::string& description) {
        bars::ManualItem m;
        m.kind = kind;
        m.element = element;
        m.elementNumber = number;
        m.mark = mark;
        m.quantity = quantity;
        m.diameterMm = diameter;
        m.lengthCm = length;
        m.description = description;
        db.saveItem(bars::itemFromManual(m));
    }

    static void fill(SteelUpd& form, const QString& element,
                     const std::vector<std::pair<Field, QString>>& fields) {
        form.elementBox()->setEditText(element);
        for (const auto& [f, text] : fields) {
            form.field(f)->setText(text);
        }
    }
};

TEST_F(SteelFormsTest, SteelUpdAddsChangesAndDeletesAnItemByItsKey) {
    auto form = open<SteelUpd>();
    QSignalSpy saved(form.get(), &SteelUpd::saved);
    form->setElementKind(bars::ElementKind::Extra);
    fill(*form, "B12",
         {{Field::Mark, "1"},
          {Field::Quantity, "4"},
          {Field::Diameter, "12"},
          {Field::Length, "350"},
          {Field::Shape, "2"},
          {Field::Description, "  Top bars  "}});
    form->barKindOption(1)->setChecked(true);
    ASSERT_TRUE(form->saveItem()) << m_messages.join('\n').toStdString();

    // A new element gets element number 1 (the store is empty); the key is kind 3 (extra
    // items), slab 0, element 1, mark 1, sub-building 0.
    EXPECT_EQ(form->field(Field::ElementNumber)->text(), "1");
    const std::string key = "03.000.001.0001.000";
    {
        const bars::IronDatabase db = bars::OpenIronDatabase(project());
        const auto item = db.findItem(key);
        ASSERT_TRUE(item.has_value());
        EXPECT_EQ(item->element, "B12");
        EXPECT_FLOAT_EQ(item->quantity, 4.0f);
        EXPECT_FLOAT_EQ(item->diameterMm, 12.0f);
        EXPECT_FLOAT_EQ(item->lengthCm, 350.0f);
        EXPECT_EQ(item->shape, 2);
        EXPECT_EQ(item->ironType, 1);
        EXPECT_EQ(item->description, "Top bars");
    }
    ASSERT_EQ(form->itemsList()->count(), 1);
    EXPECT_EQ(form->itemKey(0).toStdString(), key);
    EXPECT_TRUE(form->itemsList()->item(0)->text().contains("Top bars"));
    // The bar kind reads as its button's caption, not as its code.
    EXPECT_TRUE(form->itemsList()->item(0)->text().contains(form->barKindOption(1)->text()));
    ASSERT_EQ(saved.count(), 1);
    EXPECT_EQ(saved.at(0).at(0).toString(), "Item 03.000.001.0001.000 was added.");

    // "New" proposes the next mark; the same key again changes the row instead of adding one.
    form->newItem();
    EXPECT_EQ(form->field(Field::Mark)->text(), "2");
    EXPECT_TRUE(form->field(Field::Quantity)->text().isEmpty());
    form->itemsList()->setCurrentRow(0);
    ASSERT_TRUE(form->editItem());
    EXPECT_EQ(form->field(Field::Mark)->text(), "1");
    EXPECT_EQ(form->field(Field::Description)->text(), "Top bars");
    form->field(Field::Quantity)->setText("6");
    ASSERT_TRUE(form->saveItem());
    EXPECT_EQ(saved.at(1).at(0).toString(), "Item 03.000.001.0001.000 was changed.");
    {
        const bars::IronDatabase db = bars::OpenIronDatabase(project());
        EXPECT_EQ(db.itemCount(), 1u);
        EXPECT_FLOAT_EQ(db.findItem(key)->quantity, 6.0f);
    }

    // Another element gets the next element number; typed back to 1 by hand, its mark 1
    // would take B12's key, which is replaced only on Yes.
    form->elementBox()->setEditText("B13");
    EXPECT_EQ(form->field(Field::ElementNumber)->text(), "2");
    form->field(Field::ElementNumber)->setText("1");
    m_answer = QMessageBox::No;
    EXPECT_FALSE(form->saveItem());
    EXPECT_EQ(m_questions, QStringList{"Item 03.000.001.0001.000 belongs to B12. Replace it?"});
    EXPECT_EQ(bars::OpenIronDatabase(project()).findItem(key)->element, "B12");

    // Choosing B12 again brings its numbers back. Delete asks first; No keeps the item.
    form->elementBox()->setEditText("B12");
    EXPECT_EQ(form->field(Field::ElementNumber)->text(), "1");
    m_questions.clear();
    EXPECT_FALSE(form->deleteItem());
    EXPECT_EQ(m_questions, QStringList{"Delete item 03.000.001.0001.000?"});
    m_answer = QMessageBox::Yes;
    EXPECT_TRUE(form->deleteItem());
    EXPECT_EQ(form->itemsList()->count(), 0);
    EXPECT_EQ(bars::OpenIronDatabase(project()).itemCount(), 0u);
    EXPECT_TRUE(m_messages.isEmpty()) << m_messages.join('\n').toStdString();
}

TEST_F(SteelFormsTest, SteelUpdRefusesAnIncompleteItemAndMakesNoStore) {
    auto form = open<SteelUpd>();
    fill(*form, "", {{Field::Quantity, "4"}, {Field::Diameter, "12"}});
    EXPECT_FALSE(form->saveItem());
    fill(*form, "B1", {{Field::Diameter, ""}});
    EXPECT_FALSE(form->saveItem());
    EXPECT_EQ(m_messages,
              (QStringList{"Choose or type the element first.", "Enter the bar diameter."}));
    EXPECT_FALSE(fs::exists(project() / "Iron.db"));

    // The number of bars takes digits only, and the diameter one point.
    form->field(Field::Quantity)->clear();
    QTest::keyClicks(form->field(Field::Quantity), "1a2.5");
    EXPECT_EQ(form->field(Field::Quantity)->text(), "125");
    QTest::keyClicks(form->field(Field::Diameter), "12.5.");
    EXPECT_EQ(form->field(Field::Diameter)->text(), "12.5");
}

TEST_F(SteelFormsTest, DeleteAllTakesOnlyTheElementOfTheChosenKind) {
    {
        bars::IronDatabase db = bars::OpenIronDatabase(project());
        addItem(db, bars::ElementKind::Extra, "B1", 1, 1, 2, 12, 100, "a");
        addItem(db, bars::ElementKind::Extra, "B1", 1, 2, 2, 14, 100, "b");
        addItem(db, bars::ElementKind::Slab, "B1", 1, 1, 2, 10, 100, "slab");
        addItem(db, bars::ElementKind::Extra, "B2", 2, 1, 2, 12, 100, "other");
    }
    auto form = open<SteelUpd>();
    form->setElementKind(bars::ElementKind::Extra);
    // The element list offers the names that hold items of the kind.
    ASSERT_EQ(form->elementBox()->count(), 2);
    form->elementBox()->setCurrentIndex(form->elementBox()->findText("B1"));
    ASSERT_EQ(form->itemsList()->count(), 2);

    m_answer = QMessageBox::Yes;
    EXPECT_EQ(form->deleteAllItems(), 2u);
    EXPECT_EQ(m_questions, QStringList{"Delete all 2 items of B1?"});
    const bars::IronDatabase db = bars::OpenIronDatabase(project());
    EXPECT_EQ(db.itemCount(), 2u);
    EXPECT_EQ(db.itemsByMark(bars::ElementKind::Slab, "B1").size(), 1u);
}

TEST_F(SteelFormsTest, SteelQntSortsElementsOntoTabsAndTicksAll) {
    {
        bars::IronDatabase db = bars::OpenIronDatabase(project());
        addItem(db, bars::ElementKind::Extra, "Stair 1", 1, 1, 2, 12, 100, "");
        addItem(db, bars::ElementKind::None, "Wall 2", 2, 1, 2, 12, 100, "");
        // A designed beam is stored as a floor item, as a hand-entered slab is.
        addItem(db, bars::ElementKind::Slab, "B1", 1, 1, 2, 10, 100, "");
        addItem(db, bars::ElementKind::Footing, "F1", 1, 1, 2, 14, 100, "");
        addItem(db, bars::ElementKind::ColumnGroup, "Gr-C1", 1, 1, 8, 16, 350, "");
    }
    auto form = open<SteelQnt>();
    using L = SteelQnt::ElementList;
    EXPECT_EQ(form->list(L::ExtraItems)->count(), 2);
    EXPECT_EQ(form->list(L::Floors)->count(), 1);
    EXPECT_EQ(form->list(L::FootingGroups)->count(), 1);
    EXPECT_EQ(form->list(L::ColumnGroups)->count(), 1);
    EXPECT_TRUE(form->tabs()->isTabEnabled(static_cast<int>(L::ColumnGroups)));

    form->allBox(L::ExtraItems)->click();
    EXPECT_EQ(form->chosenElements(), (std::vector<std::string>{"Stair 1", "Wall 2"}));
    EXPECT_FALSE(form->allItemsBox()->isChecked());
    // Ticking the rest by hand ticks "all" of that list and then "all elements".
    form->list(L::Floors)->item(0)->setCheckState(Qt::Checked);
    form->list(L::FootingGroups)->item(0)->setCheckState(Qt::Checked);
    EXPECT_TRUE(form->allBox(L::Floors)->isChecked());
    EXPECT_FALSE(form->allItemsBox()->isChecked());
    form->list(L::ColumnGroups)->item(0)->setCheckState(Qt::Checked);
    EXPECT_TRUE(form->allItemsBox()->isChecked());
    form->allItemsBox()->click();
    EXPECT_TRUE(form->chosenElements().empty());

    // The rounding field takes only ".0123456789".
    QTest::keyClicks(form->roundupField(), "2a.5-");
    EXPECT_EQ(form->roundupField()->text(), "2.5");
}

TEST_F(SteelFormsTest, SteelQntReportWeighsItemsFromTheBarTable) {
    writeBarTable();
    {
        bars::IronDatabase db = bars::OpenIronDatabase(project());
        addItem(db, bars::ElementKind::Extra, "B12", 12, 1, 4, 12, 350, "Top bars");
        addItem(db, bars::ElementKind::Extra, "B12", 12, 2, 2, 12.5f, 200, "Odd bars");
        addItem(db, bars::ElementKind::Extra, "B12", 12, 3, 3, 8, 100, "Links");
        addItem(db, bars::ElementKind::Extra, "C2", 2, 1, 10, 16, 300, "Not chosen");
    }
    auto form = open<SteelQnt>();
    ASSERT_TRUE(form->chooseElement("B12"));
    ui::EditAsc* viewer = form->report();
    ASSERT_NE(viewer, nullptr) << m_messages.join('\n').toStdString();
    const QString text = viewer->text();
    delete viewer;
    const QStringList lines = text.split('\n');

    // 12 mm weighs 0.89 kg/m: 4 bars x 350 cm x 0.89 / 100 = 12.46 kg, printed "  12.5";
    // 12.5 mm is not in the table and weighs 0; 8 mm: 3 x 100 x 0.40 / 100 = 1.2 kg. The
    // element and the report total 12.46 + 0 + 1.2 = 13.66 kg, printed 13.7.
    EXPECT_TRUE(lines.filter("Top bars").value(0).endsWith("  12.5")) << text.toStdString();
    EXPECT_TRUE(lines.filter("Odd bars").value(0).endsWith("   0.0")) << text.toStdString();
    const QString grand = lines.filter("Grand total").value(0);
    EXPECT_TRUE(grand.trimmed().endsWith(" 13.7")) << grand.toStdString();
    EXPECT_FALSE(text.contains("Not chosen"));
    EXPECT_TRUE(lines.value(0).startsWith("Steel quantities"));
}

TEST_F(SteelFormsTest, SteelQntWithoutBarTableOrChoiceTellsTheUser) {
    {
        bars::IronDatabase db = bars::OpenIronDatabase(project());
        addItem(db, bars::ElementKind::Extra, "B1", 1, 1, 2, 12, 100, "");
    }
    auto form = open<SteelQnt>();
    EXPECT_EQ(form->report(), nullptr);
    ASSERT_TRUE(form->chooseElement("B1"));
    // The bar table the first start installed is gone (deleted by the user).
    std::filesystem::remove(m_shell.generalFolder() / "ROUNDBAR.DAT");
    EXPECT_EQ(form->report(), nullptr);
    EXPECT_EQ(m_messages, (QStringList{"Tick at least one element.",
                                       "The bar table is empty: enter the bar diameters in "
                                       "Setting > Areas for bars first."}));
}

TEST_F(SteelFormsTest, OldIronMdbIsOfferedOnceAndAnUnreadableOneIsPutAside) {
    test::writeBytes(project() / "Iron.MDB", "this is not an Access file");
    auto report = open<SteelQnt>();
    EXPECT_TRUE(m_questions.isEmpty()); // asked only once the form is on screen
    m_answer = QMessageBox::No;
    report->show();
    ASSERT_EQ(m_questions.size(), 1);
    EXPECT_TRUE(m_questions[0].contains("Iron.MDB"));
    EXPECT_FALSE(fs::exists(project() / "Iron.db"));

    // Yes tries the import: the damaged file is told and kept aside, and steel entry goes on
    // in a new store.
    auto update = open<SteelUpd>();
    m_answer = QMessageBox::Yes;
    update->show();
    ASSERT_EQ(m_questions.size(), 2);
    ASSERT_EQ(m_messages.size(), 1);
    EXPECT_TRUE(m_messages[0].startsWith("Iron.MDB cannot be read as an older steel-quantity "
                                         "database"))
        << m_messages[0].toStdString();
    EXPECT_EQ(test::readBytes(project() / "Iron.MDB.unreadable"), "this is not an Access file");
    EXPECT_FALSE(fs::exists(project() / "Iron.MDB"));
    auto again = open<SteelUpd>();
    again->show();
    EXPECT_EQ(m_questions.size(), 2); // nothing stands in the way of steel entry any more
}

/// Pictures of the two steel forms for a reader to judge; made only when
/// ORVAK_SCREENSHOT_DIR names a folder.
TEST_F(SteelFormsTest, Screenshots) {
    const QString folder = qEnvironmentVariable("ORVAK_SCREENSHOT_DIR");
    if (folder.isEmpty()) {
        GTEST_SKIP() << "ORVAK_SCREENSHOT_DIR is not set";
    }
    QDir().mkpath(folder);
    writeBarTable();
    {
        bars::IronDatabase db = bars::OpenIronDatabase(project());
        addItem(db, bars::ElementKind::Extra, "Stair 1", 5, 1, 12, 12, 350, "Bottom bars");
        addItem(db, bars::ElementKind::Extra, "Stair 1", 5, 2, 12, 10, 280, "Top bars");
        addItem(db, bars::ElementKind::Extra, "Stair 1", 5, 3, 24, 8, 95, "Links");
        addItem(db, bars::ElementKind::None, "B1", 1, 1, 4, 16, 620, "Bottom span 1");
        addItem(db, bars::ElementKind::Slab, "Slab 2", 2, 1, 40, 10, 540, "Bottom x");
        addItem(db, bars::ElementKind::Footing, "F1", 1, 1, 14, 14, 210, "Mesh");
    }
    const auto shoot = [&](QWidget& form, const QString& name) {
        if (!form.isVisible()) {
            form.resize(form.sizeHint());
            form.show();
        }
        QCoreApplication::processEvents();
        EXPECT_TRUE(form.grab().save(folder + "/orvak-" + name + ".png")) << name.toStdString();
    };
    auto update = open<SteelUpd>();
    update->setElementKind(bars::ElementKind::Extra);
    update->elementBox()->setCurrentIndex(update->elementBox()->findText("Stair 1"));
    update->itemsList()->setCurrentRow(0);
    update->editItem();
    shoot(*update, "SteelUpd");
    auto report = open<SteelQnt>();
    report->chooseElement("Stair 1");
    report->chooseElement("B1");
    shoot(*report, "SteelQnt");
    ui::EditAsc* viewer = report->report();
    ASSERT_NE(viewer, nullptr);
    shoot(*viewer, "SteelQnt-report");
    delete viewer;
}

} // namespace
} // namespace orvak::bars::forms
