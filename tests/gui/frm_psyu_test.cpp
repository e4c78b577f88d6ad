#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QtTest>
#include <fstream>

#include "gui_fixture.hpp"
#include "ui/frm_psyu.hpp"
#include "ui/frm_psyu_lookup.hpp"

using namespace arborex;

namespace {

constexpr const char* kNotFound =
    "The PSYU data was not found. Please check your numbers and try again.";

// A project of two polygons, the second on screen, and a region/compartment table in the
// installation folder. Columns: region 1-2, compartment 3-5, letter 6-8, PSYU 9-11, block 12,
// FIZ from 13.
struct PsyuScreen {
    test::GuiHost gui;
    std::unique_ptr<frmPSYU> screen;

    PsyuScreen() {
        std::ofstream(gui.dir.file("Rc_table.dat")) << "REG COMP\r\n"
                                                       " 5 12  A 23BC\r\n"
                                                       " 5 12  B 24AD\r\n"
                                                       " 5 12  A 99ZZ\r\n"
                                                       "11 13    30AE\r\n";
        gui.m.Paths[ArborexFolder] = gui.dir.path() + "/";
        gui.m.Paths[UserDocuments] = gui.dir.path() + "/";
        ResizePolygonArrays(gui.m, 2);
        gui.m.LastPoly = 1;
        gui.m.CurPoly = 1;
        PolyData& poly = gui.m.Poly[1];
        poly.REGION = "5";
        poly.COMP = "12";
        poly.COMPL = "A";
        poly.FIZ = "G";
        poly.PSYUBLOCK = "H";
        poly.PSYU = 7;
    }
    void open() { screen = std::make_unique<frmPSYU>(gui.m, gui.host); }
    QLineEdit* field(const char* name) { return screen->findChild<QLineEdit*>(name); }
    QString text(const char* name) { return field(name)->text(); }
    void type(const char* name, const char* text) { field(name)->setText(text); }
    void click(const char* name) {
        QTest::mouseClick(screen->findChild<QPushButton*>(name), Qt::LeftButton);
    }
};

PSYUEntry psyu(int16_t number, const char* name) {
    PSYUEntry entry;
    entry.Number = number;
    entry.Name = name;
    return entry;
}

}  // namespace

class FrmPsyuTest : public QObject {
    Q_OBJECT
private slots:
    void showsThePolygonOnScreen() {
        PsyuScreen s;
        s.open();
        QCOMPARE(s.screen->windowTitle(), QString("Find PSYU by Region and Compartment"));
        QCOMPARE(s.text("txtRegion"), QString("5"));
        QCOMPARE(s.text("txtComp"), QString("12"));
        QCOMPARE(s.text("txtCompL"), QString("A"));
        QCOMPARE(s.text("txtFIZ"), QString("G"));
        QCOMPARE(s.text("txtPSYUBlk"), QString("H"));
        QCOMPARE(s.text("txtPSYU"), QString("7"));
    }

    // The first record of region, compartment and letter wins; numbers are read tolerantly.
    void findFillsFizBlockAndPsyu() {
        PsyuScreen s;
        s.open();
        s.click("cmdFindPSYU");
        QCOMPARE(s.text("txtFIZ"), QString("C"));
        QCOMPARE(s.text("txtPSYUBlk"), QString("B"));
        QCOMPARE(s.text("txtPSYU"), QString("23"));

        s.type("txtRegion", "05");
        s.type("txtComp", "12 north");
        s.type("txtCompL", "B");
        s.click("cmdFindPSYU");
        QCOMPARE(s.text("txtFIZ"), QString("D"));
        QCOMPARE(s.text("txtPSYUBlk"), QString("A"));
        QCOMPARE(s.text("txtPSYU"), QString("24"));

        s.type("txtRegion", "11");
        s.type("txtComp", "13");
        s.type("txtCompL", "");
        s.click("cmdFindPSYU");
        QCOMPARE(s.text("txtPSYU"), QString("30"));
        QVERIFY(s.gui.shown().empty());
    }

    void findTellsWhenNothingMatches() {
        PsyuScreen s;
        s.open();
        s.type("txtComp", "14");
        s.click("cmdFindPSYU");
        QCOMPARE(s.gui.shown().size(), std::size_t(1));
        QCOMPARE(s.gui.shown()[0].text, std::string(kNotFound));
        QCOMPARE(s.text("txtPSYU"), QString("7"));
        QCOMPARE(s.text("txtFIZ"), QString("G"));
    }

    // Without the table there is nothing to find: the loader's own box, then the refusal.
    void findWithoutTheTableTellsNotFound() {
        PsyuScreen s;
        s.gui.m.Paths[ArborexFolder] = s.gui.dir.file("nowhere/");
        s.open();
        s.click("cmdFindPSYU");
        QVERIFY(s.gui.prompt.script.showed(kNotFound));
    }

    void okStoresTheFieldsInThePolygon() {
        PsyuScreen s;
        s.open();
        s.type("txtRegion", "123");
        s.type("txtComp", "4567");
        s.type("txtCompL", "C");
        s.type("txtFIZ", "K");
        s.type("txtPSYUBlk", "M");
        s.type("txtPSYU", "41 Mackenzie");
        s.click("cmdOK");
        QCOMPARE(s.screen->result(), int(QDialog::Accepted));
        const PolyData& poly = s.gui.m.Poly[1];
        QCOMPARE(poly.REGION.str(), std::string("12"));
        QCOMPARE(poly.COMP.str(), std::string("456"));
        QCOMPARE(poly.COMPL.str(), std::string("C"));
        QCOMPARE(poly.FIZ.str(), std::string("K"));
        QCOMPARE(poly.PSYUBLOCK.str(), std::string("M"));
        QCOMPARE(poly.PSYU, int16_t(41));
        QCOMPARE(s.gui.m.Poly[0].PSYU, int16_t(0));
    }

    void okBeyondSixteenBitsGoesToTheErrorScreen() {
        PsyuScreen s;
        s.open();
        s.screen->show();
        s.type("txtPSYU", "40000");
        s.type("txtFIZ", "Q");
        s.click("cmdOK");
        QCOMPARE(s.gui.prompt.script.failures.size(), std::size_t(1));
        QVERIFY(s.screen->isVisible());
        QCOMPARE(s.gui.m.Poly[1].PSYU, int16_t(7));
        QCOMPARE(s.gui.m.Poly[1].FIZ.str(), std::string("G"));
    }

    void withoutAPolygonOkStoresNothing() {
        PsyuScreen s;
        s.gui.m.CurPoly = -1;
        s.open();
        QCOMPARE(s.text("txtRegion"), QString());
        s.type("txtPSYU", "41");
        s.click("cmdOK");
        QCOMPARE(s.screen->result(), int(QDialog::Accepted));
        QCOMPARE(s.gui.m.Poly[1].PSYU, int16_t(7));
        QCOMPARE(s.gui.m.Poly[0].PSYU, int16_t(0));
    }

    // Entries 1 to PSYUCount, in list order; an entry past the count is not listed.
    void lookupListsNamesWithNumbers() {
        test::GuiHost gui;
        auto& ref = gui.m.Ref;
        ref.PSYUList.resize(4);
        ref.PSYUList[1] = psyu(40, "Fort St. John");
        ref.PSYUList[2] = psyu(7, "Mackenzie");
        ref.PSYUList[3] = psyu(99, "Past the count");
        ref.PSYUCount = 2;
        frmPSYULookup lookup(gui.m);
        lookup.show();
        QCOMPARE(lookup.windowTitle(), QString("Lookup PSYU"));
        auto* list = lookup.findChild<QListWidget*>("lstPSYU");
        QCOMPARE(list->count(), 2);
        QCOMPARE(list->item(0)->text(), QString("Fort St. John  (40)"));
        QCOMPARE(list->item(1)->text(), QString("Mackenzie  (7)"));
        QCOMPARE(list->item(1)->data(Qt::UserRole).toInt(), 7);

        auto* done = lookup.findChild<QPushButton*>("cmdDone");
        QVERIFY(!done->isEnabled());
        list->setCurrentRow(1);
        QTest::mouseClick(done, Qt::LeftButton);
        QCOMPARE(lookup.result(), int(QDialog::Accepted));
        QCOMPARE(lookup.selectedNumber(), int16_t(7));
        QCOMPARE(lookup.selectedName(), std::string("Mackenzie"));
    }

    void lookupDoubleClickChoosesAndCancelDoesNot() {
        test::GuiHost gui;
        gui.m.Ref.PSYUList.resize(2);
        gui.m.Ref.PSYUList[1] = psyu(40, "Fort St. John");
        gui.m.Ref.PSYUCount = 1;

        frmPSYULookup picked(gui.m);
        picked.show();
        QVERIFY(QTest::qWaitForWindowExposed(&picked));
        auto* list = picked.findChild<QListWidget*>("lstPSYU");
        const QRect row = list->visualItemRect(list->item(0));
        // A double click is a click and then the double-click event.
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, row.center());
        QVERIFY(picked.isVisible());
        QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, row.center());
        QCOMPARE(picked.result(), int(QDialog::Accepted));
        QCOMPARE(picked.selectedNumber(), int16_t(40));
        QCOMPARE(picked.selectedName(), std::string("Fort St. John"));

        frmPSYULookup cancelled(gui.m);
        cancelled.show();
        cancelled.findChild<QListWidget*>("lstPSYU")->setCurrentRow(0);
        QTest::mouseClick(cancelled.findChild<QPushButton*>("cmdCancel"), Qt::LeftButton);
        QCOMPARE(cancelled.result(), int(QDialog::Rejected));
        QCOMPARE(cancelled.selectedNumber(), int16_t(0));
    }
};

QTEST_MAIN(FrmPsyuTest)
#include "frm_psyu_test.moc"
