// The calculation screen over the bundled sample project (15 polygons, saved calculation data
// with ownerships 0 and 1 ticked and the rate search on), driven by control names.

#include <QAction>
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QStatusBar>
#include <QTreeWidget>
#include <QtTest>

#include "frame/project_open.hpp"
#include "frame/startup.hpp"
#include "gui_fixture.hpp"
#include "modal_driver.hpp"
#include "model/model.hpp"
#include "model/project_file.hpp"
#include "ui/frm_calc.hpp"
#include "ui/frm_calc_sort_ls.hpp"
#include "ui/standing_graph.hpp"

using namespace arborex;

namespace {

const std::string kSample = std::string(ARBOREX_SOURCE_DIR) + "/samples/sample.arx";

struct SampleScreen {
    test::GuiHost gui;
    CalcRun run;
    std::unique_ptr<frmCalc> screen;

    explicit SampleScreen(bool recalcOnOpen = false, const std::string& project = kSample) {
        programDefaults(gui.m);
        gui.m.Paths[ArborexFolder] = std::string(ARBOREX_SOURCE_DIR) + "/data/";
        LoadReferenceData(gui.m, gui.host);
        if (!LoadARX(gui.m, gui.host, project)) qFatal("the project does not load");
        run.FixedStartYear = 2030;  // repeatable years in the schedule
        run.RecalcOnOpen = recalcOnOpen;
        open();
    }
    void open() { screen = std::make_unique<frmCalc>(gui.m, gui.host, run); }

    template <typename T>
    T* child(const QString& name) {
        T* found = screen->findChild<T*>(name);
        if (!found) qFatal("no control %s", qPrintable(name));
        return found;
    }
    QLineEdit* field(const char* name) { return child<QLineEdit>(name); }
    QTreeWidget* schedule() { return child<QTreeWidget>("lsvCalc"); }
    QListWidget* orderList(int i) { return child<QListWidget>(QString("lstCutOrder_%1").arg(i)); }
    void click(const QString& name) { child<QAbstractButton>(name)->click(); }
    void trigger(const char* name) { child<QAction>(name)->trigger(); }
    bool rateMarkedOutOfDate() {
        const bool button = child<QPushButton>("cmdCalculate")->styleSheet().contains("255, 0, 0");
        const bool rate = field("txtVolToCut")->styleSheet().contains("255, 0, 0");
        if (button != rate) qFatal("the rate field and the button disagree");
        return button;
    }
    // One run at the rate typed, without the search, started by Enter in the rate field.
    void calculateAt(const char* rate) {
        auto* search = child<QCheckBox>("chkCalcRate");
        if (search->isChecked()) search->click();
        field("txtVolToCut")->setText(rate);
        QTest::keyClick(field("txtVolToCut"), Qt::Key_Return);
    }
    void loseFocus(QLineEdit* edit) {
        QFocusEvent event(QEvent::FocusOut);
        QApplication::sendEvent(edit, &event);
    }
    std::string lastBox() const { return gui.shown().empty() ? "" : gui.shown().back().text; }
    QStringList allRows() {
        QStringList rows;
        for (int r = 0; r < schedule()->topLevelItemCount(); ++r) rows << row(r).join('|');
        return rows;
    }
    QStringList row(int r) {
        QStringList cells;
        const QTreeWidgetItem* item = schedule()->topLevelItem(r);
        for (int c = 0; c < item->columnCount(); ++c) cells << item->text(c);
        return cells;
    }
};

}  // namespace

class FrmCalcTest : public QObject {
    Q_OBJECT
private slots:
    void opensWithTheSavedCalculation() {
        SampleScreen s;
        QVERIFY(s.screen->windowTitle().startsWith("Calculations - "));
        QVERIFY(s.child<QCheckBox>("chkCut_0")->isChecked());
        QVERIFY(s.child<QCheckBox>("chkCut_1")->isChecked());
        QVERIFY(s.child<QCheckBox>("chkCalcRate")->isChecked());
        QVERIFY(s.child<QCheckBox>("chkCut_0")->text().startsWith("Harvest "));
        QCOMPARE(s.orderList(1)->count() + s.orderList(0)->count(), 15);
        QCOMPARE(s.child<QLabel>("lbl_0")->text(), QString::fromLatin1("m\xb3/yr"));
        QVERIFY(s.rateMarkedOutOfDate());  // opening always asks for a new calculation
        // No run is saved with the sample: the schedule is an empty table with its titles.
        QCOMPARE(s.schedule()->topLevelItemCount(), 0);
        QCOMPARE(s.schedule()->headerItem()->text(11), QString("Age Cons."));

        // The harvest parameters open over the screen; the lists are rebuilt afterwards.
        test::clickWhenModalShown("cmdCancel");
        s.trigger("mniHarvParam");
        QCOMPARE(s.orderList(1)->count() + s.orderList(0)->count(), 15);
    }

    void sortAndMoveMarkTheResultsOutOfDate() {
        SampleScreen s;
        s.calculateAt("1000");
        QVERIFY(!s.rateMarkedOutOfDate());

        s.trigger("mniSort_0");  // oldest first
        QVERIFY(s.rateMarkedOutOfDate());
        QVERIFY(s.child<QAction>("mniSort_0")->isChecked());
        QVERIFY(!s.child<QAction>("mniSortCustom")->isChecked());
        for (int i = 0; i < s.gui.m.CutOrderLast; ++i)
            QVERIFY(s.gui.m.Poly[s.gui.m.CutOrder[i]].AGE >=
                    s.gui.m.Poly[s.gui.m.CutOrder[i + 1]].AGE);

        s.click("cmdCalculate");
        QVERIFY(!s.rateMarkedOutOfDate());

        QListWidget* included = s.orderList(1);
        const QVariant third = included->item(2)->data(Qt::UserRole + 1);
        included->setCurrentRow(2);
        s.click("cmdMove_0");  // to the top
        QVERIFY(s.rateMarkedOutOfDate());
        QVERIFY(s.child<QAction>("mniSortCustom")->isChecked());
        QVERIFY(!s.child<QAction>("mniSort_0")->isChecked());
        QCOMPARE(included->item(0)->data(Qt::UserRole + 1), third);
        QCOMPARE(included->currentRow(), 0);
    }

    void refusalsLeaveTheLastRun() {
        SampleScreen s;
        s.calculateAt("1000");
        const int rows = s.schedule()->topLevelItemCount();
        const std::vector<YearRec> years(s.gui.m.Calc.YearTable.begin(),
                                         s.gui.m.Calc.YearTable.end());

        s.click("chkCut_0");
        s.click("chkCut_1");
        s.click("cmdCalculate");
        QCOMPARE(s.lastBox(),
                 std::string("Please select which ownership(s) to harvest by placing checks in "
                             "the harvest boxes."));

        s.click("chkCut_0");
        s.trigger("mnuInclude_1");  // exclude all
        QCOMPARE(s.orderList(1)->count(), 0);
        s.click("cmdCalculate");
        QCOMPARE(s.lastBox(), std::string("No Polygons selected"));

        s.trigger("mnuInclude_0");  // include all again
        s.gui.m.Settings.PLANHORZ = 1;
        for (PolyData& poly : s.gui.m.Poly) poly.AGE = 0;  // nothing ripe within a year
        s.click("cmdCalculate");
        QCOMPARE(
            s.lastBox(),
            std::string("Nothing will be harvestable durring the planning horizon of 1 years."));

        QCOMPARE(s.schedule()->topLevelItemCount(), rows);
        QCOMPARE(s.gui.m.Calc.YearTable[10].VolConifer, years[10].VolConifer);
        QVERIFY(s.rateMarkedOutOfDate());
    }

    void searchFillsItsWindowAndBothViews() {
        SampleScreen s;
        s.click("cmdCalculate");
        auto* trials = s.child<QListWidget>("lstCalcStatus");
        QVERIFY(trials->count() > 4);
        QCOMPARE(trials->item(0)->text(), QString("  Rate   Year   Error Message"));
        QVERIFY(s.child<QPushButton>("cmdOK")->isEnabled());
        QVERIFY(s.child<QLabel>("lblHanzlik")->text().endsWith("HANZLIK - STARTING RATE"));
        const QString rate = s.field("txtVolToCut")->text();
        QCOMPARE(s.child<QLabel>("lblStatus")->text(), rate + "  HARVEST RATE");
        QVERIFY(rate.toInt() > 1000);
        QVERIFY(!s.rateMarkedOutOfDate());

        QCOMPARE(s.schedule()->topLevelItemCount(), 251);
        QCOMPARE(s.schedule()->headerItem()->text(0), QString("Year"));
        QCOMPARE(s.row(0).front(), QString("2030"));
        QCOMPARE(s.row(250).front(), QString("2280"));
        QCOMPARE(s.child<QLabel>("lblError")->text(), QString("No Harvesting Issues"));
        QVERIFY(!s.child<StandingGraph>("picCalc")->data().empty());
        QVERIFY(!s.child<QLabel>("lblYieldYAxis_0")->text().isEmpty());

        // Picking a polygon in the order list selects its harvest years.
        s.orderList(1)->setCurrentRow(0);
        QVERIFY(!s.schedule()->selectedItems().isEmpty());
        QVERIFY(s.child<QStatusBar>("sbStatus")->currentMessage().contains(" years: "));

        s.click("optReport_1");
        QCOMPARE(s.schedule()->headerItem()->text(0), QString("Polygon"));
        const int entries = s.schedule()->topLevelItemCount();
        QVERIFY(entries > 0 && entries <= s.gui.m.Calc.CutCount);
        QCOMPARE(s.schedule()->columnCount(), 10);
        for (int r = 0; r < entries; ++r) {
            const QTreeWidgetItem* item = s.schedule()->topLevelItem(r);
            if (item->text(4) == "Clearcut") QCOMPARE(item->foreground(0).color(), QColor(0, 0, 0));
            if (item->text(4) == "Road") QCOMPARE(item->foreground(0).color(), QColor(192, 0, 0));
        }
        s.click("chkAdvanced");
        QCOMPARE(s.schedule()->columnCount(), 17);
        s.click("optReport_0");
        QCOMPARE(s.schedule()->topLevelItemCount(), 251);
        QCOMPARE(s.schedule()->columnCount(), 24);
    }

    void unsustainableRateShowsTheIssues() {
        SampleScreen s;
        s.calculateAt("5000");
        auto* issues = s.child<QLabel>("lblError");
        QVERIFY2(issues->text().startsWith("Harvesting Issues (Polygon="),
                 qPrintable(issues->text()));
        QVERIFY(issues->text().contains(" years   "));
        QCOMPARE(issues->palette().color(QPalette::WindowText), QColor(255, 0, 0));
        bool lowYear = false;
        for (int r = 0; r < s.schedule()->topLevelItemCount(); ++r)
            lowYear = lowYear || s.row(r).at(4).contains("Harvest. ");
        QVERIFY(lowYear);
    }

    void reopeningShowsTheLastRunWithoutCalculating() {
        SampleScreen s;
        s.calculateAt("1200");
        const QStringList year5 = s.row(5);
        s.child<QCheckBox>("chkConAge")->click();
        s.screen->show();
        s.trigger("mniOK");
        QVERIFY(!s.screen->isVisible());
        QCOMPARE(s.gui.m.Calc.inputs.SavedCalcRate, int16_t{0});
        QCOMPARE(s.gui.m.Calc.inputs.SavedVolRate, 1200);
        QVERIFY((s.gui.m.Calc.inputs.ConstraintBits & 4) != 0);

        // A mark in the kept tables that only they could show.
        s.gui.m.Calc.YearTable[0].BlockNames = "kept";
        const std::size_t boxes = s.gui.shown().size();
        s.open();
        QCOMPARE(s.schedule()->topLevelItemCount(), 251);
        QCOMPARE(s.row(0).at(1), QString("kept"));
        QCOMPARE(s.row(5), year5);
        QCOMPARE(s.field("txtVolToCut")->text(), QString("1200"));
        QVERIFY(s.child<QCheckBox>("chkConAge")->isChecked());
        QVERIFY(s.screen->findChild<QListWidget*>("lstCalcStatus") == nullptr);
        QCOMPARE(s.gui.shown().size(), boxes);
    }

    void aSavedProjectReopensWithItsSchedule() {
        SampleScreen s;
        s.calculateAt("1200");
        const QStringList years = s.allRows();
        s.click("optReport_1");
        const QStringList entries = s.allRows();
        s.screen->show();
        s.trigger("mniOK");
        const std::string saved = s.gui.dir.file("saved.arx");
        SaveArx(s.gui.m, s.gui.host, saved, kCurrentFileVersion, false);

        SampleScreen reopened(false, saved);
        QCOMPARE(reopened.field("txtVolToCut")->text(), QString("1200"));
        QVERIFY(!reopened.child<QCheckBox>("chkCalcRate")->isChecked());
        QCOMPARE(reopened.allRows(), years);
        reopened.click("optReport_1");
        QCOMPARE(reopened.allRows(), entries);
    }

    void recalcOnOpenRecalculatesTheSavedRateWithoutSearching() {
        SampleScreen s(true);
        QCOMPARE(s.schedule()->topLevelItemCount(), 0);  // nothing shown before the run
        const QString saved = s.field("txtVolToCut")->text();
        s.screen->show();
        QTRY_VERIFY(!s.run.RecalcOnOpen);
        QCOMPARE(s.schedule()->topLevelItemCount(), 251);
        QVERIFY(s.child<QCheckBox>("chkCalcRate")->isChecked());
        QVERIFY(s.screen->findChild<QListWidget*>("lstCalcStatus") == nullptr);
        QCOMPARE(s.field("txtVolToCut")->text(), saved);
        QVERIFY(!s.rateMarkedOutOfDate());
    }

    void fieldsKeepTheirLimitsOnLostFocus() {
        SampleScreen s;
        const std::array<std::pair<const char*, const char*>, 5> cases = {{{"txtPeriod", "11"},
                                                                           {"txtRelax", "-3"},
                                                                           {"txtHeight", "12.34"},
                                                                           {"txtAge", "400"},
                                                                           {"txtStartIn", "4.5"}}};
        const std::array<const char*, 5> expected = {"10", "0", "12.3", "350", "4"};
        for (std::size_t i = 0; i < cases.size(); ++i) {
            QLineEdit* edit = s.field(cases[i].first);
            edit->setText(cases[i].second);
            s.loseFocus(edit);
            QCOMPARE(edit->text(), QString(expected[i]));
        }
    }

    void leadSpeciesDialogRanksOrCancels() {
        frmCalcSortLS dialog({"FD", "PL", "AT"});
        auto* list = dialog.findChild<QListWidget*>("lstSpec");
        list->setCurrentRow(2);
        dialog.findChild<QPushButton*>("cmdMove_0")->click();
        QCOMPARE(dialog.ranking(), (std::vector<std::string>{"AT", "FD", "PL"}));
        QCOMPARE(list->currentRow(), 0);
        dialog.findChild<QPushButton*>("cmdMove_1")->click();  // "Up" from the top: refused
        QCOMPARE(dialog.ranking(), (std::vector<std::string>{"AT", "FD", "PL"}));

        test::clickWhenModalShown("cmdCancel");
        QVERIFY(!frmCalcSortLS::rank({"FD", "PL"}, nullptr).has_value());
        test::clickWhenModalShown("cmdOk");
        QCOMPARE(frmCalcSortLS::rank({"FD", "PL"}, nullptr).value(),
                 (std::vector<std::string>{"FD", "PL"}));
    }
};

QTEST_MAIN(FrmCalcTest)
#include "frm_calc_test.moc"
