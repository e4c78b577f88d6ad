#include <QAction>
#include <QClipboard>
#include <QComboBox>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QToolButton>
#include <QtTest>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "frame/startup.hpp"
#include "gui_fixture.hpp"
#include "model/polygon_lifecycle.hpp"
#include "model/species_binding.hpp"
#include "support/test_install.hpp"
#include "ui/frm_graph.hpp"
#include "ui/frm_polygon.hpp"
#include "ui/frm_yield.hpp"
#include "yield/harvest_ages.hpp"

using namespace arborex;

namespace {

// Two natural stands over the installed reference data, both on VDYP now and TIPSY later. The
// VDYP curve (1-year grid) passes 150 m3/ha at 62 and 15 cm at 48, with MAI culminating at 80;
// the second stand's TIPSY curve has no MAI. The first stand is on screen.
struct YieldScreen {
    test::GuiHost gui;
    std::unique_ptr<frmPolygon> polygons;

    YieldScreen() {
        gui.installEmptyProject();
        for (int i = 1; i <= 2; ++i) {
            PolyData data;
            PolyCalc calc;
            PolyMgmt mgmt;
            projectFollowingPolygon(data, calc, mgmt);
            data.NAME = "P" + std::to_string(i);
            data.AREA = 50.0f;
            data.VS[0] = "PL";
            data.VP = {100, 0, 0, 0, 0, 0};
            data.MGNT = {0, 1};
            data.YIELDSTATE = {3, 3};
            appendPolygon(gui.m, data, calc, mgmt);
        }
        findSpecIDX(gui.m);
        for (int p = 0; p < 2; ++p) {
            for (int k = 0; k <= 300; ++k) {
                YieldRow& row = gui.m.VYield(p, k);
                row.Vol = static_cast<int16_t>(k * 24 + 12);
                row.Dia = static_cast<int16_t>(k * 3 + 6);
                row.Mai = 5.0f - 0.01f * static_cast<float>(std::abs(k - 80));
            }
            for (int k = 0; k <= 35; ++k) {
                gui.m.TYield(p, k).Vol = static_cast<int16_t>(k * 100);
                gui.m.TYield(p, k).Dia = static_cast<int16_t>(k * 10);
            }
        }
        calcAllCutAges(gui.m, 0);
        calcAllCutAges(gui.m, 1);
        gui.m.CurPoly = 0;
        polygons = std::make_unique<frmPolygon>(gui.m, gui.host);
        polygons->show();
    }
    PolyData& poly(int p) { return gui.m.Poly[static_cast<std::size_t>(p)]; }
    template <typename T = QWidget>
    T* polygonChild(const QString& name) {
        T* found = polygons->findChild<T*>(name);
        if (!found) qFatal("no control %s", qPrintable(name));
        return found;
    }
    frmYield* view() { return polygons->findChild<frmYield*>(); }
    template <typename T = QLineEdit>
    T* child(const QString& name) {
        T* found = view()->findChild<T*>(name);
        if (!found) qFatal("no control %s", qPrintable(name));
        return found;
    }
    QString text(const QString& name) { return child<QLabel>(name)->text(); }
    // Types into a view field and leaves it for another.
    void enter(const QString& name, const QString& typed) {
        view()->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(view()));
        QLineEdit* edit = child(name);
        edit->setFocus(Qt::TabFocusReason);
        edit->selectAll();
        QTest::keyClicks(edit, typed);
        child(name == "txtFindAge_0" ? "txtFindAge_1" : "txtFindAge_0")
            ->setFocus(Qt::TabFocusReason);
    }
};

}  // namespace

class FrmYieldTest : public QObject {
    Q_OBJECT
private slots:
    void opensFromThePolygonScreenAndItsTargetAgeFollowsThere() {
        YieldScreen s;
        s.polygonChild<QPushButton>("cmdYield_0")->click();
        frmYield* view = s.view();
        QVERIFY(view && view->isVisible());
        QCOMPARE(view->windowTitle(),
                 QString("Yield Table and Polygon Specific Harvest Parameters"));
        QCOMPARE(view->YieldPoly(), int16_t{0});
        QCOMPARE(view->YieldModel(), int16_t{0});
        QCOMPARE(view->YieldMgnt(), int16_t{0});
        auto* grid = s.child<QTableWidget>("grdYield");
        QCOMPARE(grid->rowCount(), 31);
        QCOMPARE(grid->horizontalHeaderItem(3)->text(), QString("Vol/Ha"));
        QCOMPARE(grid->item(6, 3)->text(), QString("145.2"));
        QCOMPARE(s.text("lblYield_1"), QString("80"));
        QCOMPARE(s.text("lblYield_4"), QString("62"));
        QCOMPARE(s.child("txtFindAge_1")->text(), QString("[150]"));
        QCOMPARE(s.child("txtHarvestRate")->text(), QString("[80]"));
        QCOMPARE(s.text("lblKey_1"), QString("Vol/ha"));
        QVERIFY(s.gui.shown().empty());

        s.enter("txtHarvestRate", "95");
        QCOMPARE(s.poly(0).HAR[0], int16_t{95});
        QCOMPARE(s.polygonChild<QLineEdit>("txtHar_0")->text(), QString("95"));
        QCOMPARE(s.text("lblYield_8"), QString("229.2"));  // the volume at 95
        s.child<QToolButton>("updnHarvestAge_Up")->click();
        QCOMPARE(s.polygonChild<QLineEdit>("txtHar_0")->text(), QString("96"));
        s.enter("txtHarvestRate", "abc");
        QCOMPARE(s.poly(0).HAR[0], int16_t{-1});
        QCOMPARE(s.child("txtHarvestRate")->text(), QString("[80]"));
        QCOMPARE(s.polygonChild<QLineEdit>("txtHar_0")->text(), QString("[80]"));

        // A criterion moves the calculated age, on the view and on the polygon screen.
        s.enter("txtFindAge_2", "100");
        QCOMPARE(s.gui.m.PolyC[0].MINCUTAGE[0], int16_t{100});
        QCOMPARE(s.child("txtHarvestRate")->text(), QString("[100]"));
        QCOMPARE(s.polygonChild<QLineEdit>("txtHar_0")->text(), QString("[100]"));

        // A click at the picture's left edge sets the grid's first age.
        auto* graph = s.view()->findChild<YieldGraph*>("picGraph");
        const QRectF plot = graph->plotArea();
        QTest::mouseClick(graph, Qt::LeftButton, {},
                          QPoint(static_cast<int>(plot.left()), graph->height() / 2));
        QCOMPARE(s.poly(0).HAR[0], int16_t{0});
        QCOMPARE(s.child("txtHarvestRate")->text(), QString("0"));
        QVERIFY(s.gui.prompt.script.failures.empty());
    }

    void oneViewPerPolygonScreenForAManagementWithACurve() {
        YieldScreen s;
        s.polygonChild<QPushButton>("cmdYield_0")->click();
        s.polygonChild<QPushButton>("cmdYield_1")->click();
        QCOMPARE(s.polygons->findChildren<frmYield*>().size(), qsizetype{1});
        QCOMPARE(s.view()->YieldModel(), int16_t{1});
        QCOMPARE(s.view()->YieldMgnt(), int16_t{1});
        // The TIPSY curve has no MAI: the caution names it.
        QCOMPARE(s.gui.shown().size(), std::size_t{1});
        QCOMPARE(s.gui.shown().back().text, std::string("Caution MAI, = 0 "));

        // An NC stand has no curve to view; a stand not calculated shows N/A.
        auto* manage = s.polygonChild<QComboBox>("lstManage_0");
        manage->setCurrentIndex(2);
        emit manage->activated(2);
        QCOMPARE(s.poly(0).MGNT[0], int16_t{2});
        QVERIFY(!s.polygonChild<QPushButton>("cmdYield_0")->isEnabled());
        QVERIFY(s.polygonChild<QPushButton>("cmdYield_1")->isEnabled());
        s.poly(0).YIELDSTATE[1] = 0;
        s.view()->showManagement(0, 1);
        QCOMPARE(s.text("lblYield_0"), QString("N/A"));
        QCOMPARE(s.text("lblCT_0"), QString("N/A"));
    }

    void copiesAndExportsTheTableAndOpensTheGraph() {
        YieldScreen s;
        s.polygonChild<QPushButton>("cmdYield_0")->click();
        const std::string path = s.gui.dir.file("table.csv");
        s.gui.prompt.script.files.push_back(FileChoice{path, 2});
        s.child<QAction>("mnuExportCSV")->trigger();
        QCOMPARE(s.gui.prompt.fileRequests.back().title,
                 std::string("Export Table as Delimited File"));
        QCOMPARE(s.gui.prompt.fileRequests.back().filter,
                 std::string("Tab Delimited (*.txt)|*.txt|Comma Delimited (*.csv)|*.csv"));
        std::ifstream file(path, std::ios::binary);
        std::stringstream text;
        text << file.rdbuf();
        // The species columns show, as the project's YIELDMODE is set.
        QVERIFY(text.str().rfind("Age, DBH, Height, Vol/Ha, MAI, Vol(1), ", 0) == 0);
        QVERIFY(text.str().find("\r\n0, 0.6, 0.0, 1.2, 4.20, 0.0, ") != std::string::npos);

        s.child<QAction>("mnuCopyTable")->trigger();
        QVERIFY(QGuiApplication::clipboard()->text().startsWith("Age\tDBH\tHeight\tVol/Ha\tMAI\t"));
        s.child<QAction>("mnuGraph")->trigger();
        auto* graph = s.view()->findChild<frmGraph*>();
        QVERIFY(graph && graph->isVisible());
        QCOMPARE(graph->findChild<GraphView*>()->picture().title, std::string("Yield Table - P1"));
    }
};

QTEST_MAIN(FrmYieldTest)
#include "frm_yield_test.moc"
