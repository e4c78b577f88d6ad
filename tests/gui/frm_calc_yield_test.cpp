#include <QAction>
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTabWidget>
#include <QtTest>
#include <filesystem>
#include <fstream>
#include <functional>

#include "frame/startup.hpp"
#include "gui_fixture.hpp"
#include "modal_driver.hpp"
#include "model/polygon_lifecycle.hpp"
#include "model/species_binding.hpp"
#include "support/test_install.hpp"
#include "ui/frm_calc_yield.hpp"
#include "ui/frm_polygon.hpp"
#include "yield/work_files.hpp"

using namespace arborex;

namespace {

// Text laid at 1-based columns of a blank line, as the models write their files.
std::string record(std::initializer_list<std::pair<std::size_t, std::string>> fields) {
    std::string line(116, ' ');
    for (const auto& [column, text] : fields) line.replace(column - 1, text.size(), text);
    return line;
}

// VDYP as far as this screen cares: a table of volume age * 3 on ages 0 to 100 by 10 for each
// polygon of its input, and the error lines it is told to write. TIPSY is never expected.
class FakeVdyp final : public ProcessRunner {
public:
    std::vector<ProcessRequest> requests;
    std::vector<std::string> errorLines;
    std::function<void()> whileRunning;

    ProcessResult run(const ProcessRequest& request) override {
        requests.push_back(request);
        if (whileRunning) whileRunning();
        const std::string& folder = request.workingFolder;
        std::ifstream in(folder + kVdypInFile);
        std::ofstream out(folder + kVdypOutFile, std::ios::binary);
        out << "VDYP batch output version: 7.0\r\n";
        for (std::string line; std::getline(in, line);)
            for (int age = 0; age <= 100; age += 10) {
                const std::string volume = std::to_string(age * 3) + ".0";
                out << record({{1, "Arborex"},
                               {9, line.substr(9, 3)},
                               {14, std::to_string(age)},
                               {18, "55"},
                               {23, "21.50"},
                               {31, "20.0"},
                               {40, volume},
                               {49, "0.0"},
                               {58, "0.0"},
                               {67, "0.0"},
                               {76, "0.0"},
                               {85, "0.0"},
                               {94, "25.0"},
                               {100, "1.000"},
                               {109, volume}})
                    << "\r\n";
            }
        std::ofstream errors(folder + kVdypErrorFile, std::ios::binary);
        for (const std::string& line : errorLines) errors << line << "\r\n";
        return {};
    }
};

// Three natural stands P1 to P3 with sound data, their curves current, on grids of 0 to 100
// by 10; the work folder a fresh one.
struct YieldScreen {
    test::GuiHost gui;
    FakeVdyp models;
    std::unique_ptr<frmPolygon> polygons;
    std::unique_ptr<frmCalcYield> screen;

    YieldScreen() {
        Model& m = gui.m;
        programDefaults(m);
        m.Paths[ArborexFolder] = gui.dir.file("program/");
        m.Paths[UserDocuments] = gui.dir.file("documents/");
        m.Paths[UserTemp] = gui.dir.file("temp/");
        test::installProgramFolder(m.Paths[ArborexFolder]);
        std::filesystem::create_directories(m.Paths[UserDocuments]);
        std::filesystem::create_directories(m.Paths[UserTemp]);
        LoadReferenceData(m, gui.host);
        EmptyArrays(m);
        m.Settings.YieldMaxAge = {100, 100};
        m.Settings.YieldIncAge = {10, 10};
        SetAgeInc(m);
        for (int i = 1; i <= 3; ++i) {
            PolyData data;
            PolyCalc calc;
            PolyMgmt mgmt;
            projectFollowingPolygon(data, calc, mgmt);
            data.NAME = "P" + std::to_string(i);
            data.AREA = 50.0f;
            data.VSITEINDEX = 20.0f;
            data.CLOSURE = 50;
            data.PSYU = 1;
            data.VAF = 1.0f;
            data.VS[0] = "PL";
            data.VS[1] = "SX";
            data.VP = {70, 30, 0, 0, 0, 0};
            data.YIELDSTATE = {3, 3};
            calc.VX = {1, 1, 1, 1, 1, 1};
            appendPolygon(m, data, calc, mgmt);
        }
        findSpecIDX(m);
        m.CurPoly = 0;
    }
    PolyData& poly(int p) { return gui.m.Poly[static_cast<std::size_t>(p)]; }
    void open(bool withPolygonScreen = false) {
        if (withPolygonScreen) {
            polygons = std::make_unique<frmPolygon>(gui.m, gui.host);
            polygons->show();
        }
        screen = std::make_unique<frmCalcYield>(gui.m, gui.host, models, polygons.get());
        screen->show();
    }
    template <typename T = QLabel>
    T* child(const QString& name) {
        T* found = screen->findChild<T*>(name);
        if (!found) qFatal("no control %s", qPrintable(name));
        return found;
    }
    QStringList rows(const char* list) {
        QStringList texts;
        auto* shown = child<QListWidget>(list);
        for (int i = 0; i < shown->count(); ++i) texts << shown->item(i)->text();
        return texts;
    }
    QStringList stats() {
        QStringList texts;
        for (int i = 0; i < 8; ++i) texts << child(QString("lblStat_%1").arg(i))->text();
        return texts;
    }
    void click(const char* name) { child<QPushButton>(name)->click(); }
};

}  // namespace

class FrmCalcYieldTest : public QObject {
    Q_OBJECT
private slots:
    void checksListEachPolygonsProblemsAndCountWhatIsDue() {
        YieldScreen s;
        s.poly(1).YIELDSTATE[0] = 1;
        s.poly(2).VP = {70, 20, 0, 0, 0, 0};
        s.poly(2).VAF = 1.5f;
        s.open();
        QCOMPARE(s.child<QTabWidget>("ts")->currentIndex(), 0);
        QCOMPARE(s.rows("lstErrors"),
                 QStringList({"P3\tThe percent of all VDYP species should equal 100%"}));
        QCOMPARE(s.child<QListWidget>("lstErrors")->item(0)->data(Qt::UserRole).toInt(), 2);
        QCOMPARE(s.rows("lstWarn"), QStringList({"P3\tThe VAF is NOT equal to 1.00"}));
        QCOMPARE(s.child("lblAmt_0")->text(), QString("(1 of 3 to calculate)"));
        QCOMPARE(s.child("lblAmt_1")->text(), QString("(0 of 0 to calculate)"));
        QCOMPARE(s.child("lblStatus")->text(), QString("Caution - 1 Error(s) / 1 Warnings(s)"));

        // Refresh checks again what was put right meanwhile.
        s.poly(2).VP = {70, 30, 0, 0, 0, 0};
        s.click("cmdRefresh");
        QVERIFY(s.rows("lstErrors").isEmpty());
        QCOMPARE(s.child("lblStatus")->text(), QString("Caution - 0 Error(s) / 1 Warnings(s)"));
    }

    void withNeitherModelTickedEveryStepIsSkipped() {
        YieldScreen s;
        s.poly(1).YIELDSTATE[0] = 1;
        s.open();
        s.child<QCheckBox>("chkToCalc_0")->setChecked(false);
        s.child<QCheckBox>("chkToCalc_1")->setChecked(false);
        s.click("cmdOk");
        QCOMPARE(s.child<QTabWidget>("ts")->currentIndex(), 1);
        QCOMPARE(s.stats(), QStringList(8, "Skip"));
        QVERIFY(s.models.requests.empty());
        QVERIFY(s.screen->isVisible());
        QCOMPARE(s.poly(1).YIELDSTATE[0], int16_t{1});
    }

    // A run without messages closes the screen; the polygon screen lists the new states.
    void aRunMakesTheCurveCurrentAndClosesWithoutMessages() {
        YieldScreen s;
        s.poly(1).YIELDSTATE[0] = 1;
        s.open(true);
        auto* mapList = s.polygons->findChild<QListWidget*>("lstMapPoly");
        QCOMPARE(mapList->item(1)->text(), QString("*P2"));
        bool buttonsOn = true;
        s.models.whileRunning = [&] {
            buttonsOn = s.child<QPushButton>("cmdOk")->isEnabled() ||
                        s.child<QPushButton>("cmdRefresh")->isEnabled();
        };
        s.click("cmdOk");
        QVERIFY(!buttonsOn);
        QCOMPARE(s.models.requests.size(), std::size_t{1});
        QCOMPARE(s.models.requests[0].workingFolder, s.gui.m.Paths[UserTemp]);
        QCOMPARE(s.poly(1).YIELDSTATE[0], int16_t{3});
        QCOMPARE(s.poly(0).YIELDSTATE[0], int16_t{3});
        QVERIFY(!s.screen->isVisible());
        QCOMPARE(s.screen->result(), int{QDialog::Accepted});
        QCOMPARE(mapList->item(1)->text(), QString("P2"));
        QVERIFY(s.gui.shown().empty());
    }

    // The models' messages stay on the third tab; a click on one brings up its polygon.
    void aMessageLineSelectsItsPolygonOnThePolygonScreen() {
        YieldScreen s;
        s.poly(2).YIELDSTATE[0] = 0;
        s.models.errorLines = {record({{1, "WARNING"}, {23, "3"}, {34, "Site index estimated"}}),
                               record({{1, "ERROR"}, {23, "0"}, {34, "Table incomplete"}})};
        s.open(true);
        s.click("cmdOk");
        QVERIFY(s.screen->isVisible());
        QCOMPARE(s.child<QTabWidget>("ts")->currentIndex(), 2);
        QCOMPARE(s.rows("lstPost"),
                 QStringList({"P3\tSite index estimated", "Arborex\t\tTable incomplete"}));
        QCOMPARE(s.child("lblStat_3")->text(), QString("1 Warnings / 1 Errors"));

        auto* post = s.child<QListWidget>("lstPost");
        post->setCurrentRow(0);
        QCOMPARE(s.gui.m.CurPoly, int16_t{2});
        QCOMPARE(s.polygons->findChild<QListWidget*>("lstMapPoly")->currentRow(), 2);
        post->setCurrentRow(1);  // the project's line is about no polygon
        QCOMPARE(s.gui.m.CurPoly, int16_t{2});
        s.click("cmdClose");
        QVERIFY(!s.screen->isVisible());
    }

    // The polygon screen's menu entry first confirms the polygon being edited, so the checks
    // count its curve as due; closing shows the curve's new state in the list.
    void thePolygonMenuLeavesThePolygonBeforeTheChecks() {
        YieldScreen s;
        s.polygons = std::make_unique<frmPolygon>(s.gui.m, s.gui.host);
        s.polygons->show();
        s.polygons->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(s.polygons.get()));
        auto* site = s.polygons->findChild<QLineEdit*>("txtVData_0");
        site->setFocus(Qt::TabFocusReason);
        site->selectAll();
        QTest::keyClicks(site, "25");
        QString counted;
        test::whenModalShown([&](QWidget* modal) {
            counted = modal->findChild<QLabel*>("lblAmt_0")->text();
            modal->findChild<QPushButton*>("cmdClose")->click();
        });
        s.polygons->findChild<QAction*>("mnuCalcYield")->trigger();
        QCOMPARE(counted, QString("(1 of 3 to calculate)"));
        QCOMPARE(s.poly(0).VSITEINDEX, 25.0f);
        QCOMPARE(s.polygons->findChild<QListWidget*>("lstMapPoly")->item(0)->text(),
                 QString("*P1"));
    }

    // Cancel during the VDYP run ends the screen before TIPSY starts.
    void cancelTakesEffectBetweenTheModels() {
        YieldScreen s;
        for (int p = 0; p < 3; ++p) {
            s.poly(p).MGNT = {0, 1};
            s.poly(p).TS[0] = "PL";
            s.poly(p).TP = {100, 0, 0, 0, 0};
            s.poly(p).YIELDSTATE = {1, 1};
        }
        findSpecIDX(s.gui.m);
        s.open();
        s.models.whileRunning = [&] { s.click("cmdCancel"); };
        s.click("cmdOk");
        QCOMPARE(s.models.requests.size(), std::size_t{1});
        QCOMPARE(s.poly(0).YIELDSTATE, (std::array<int16_t, 2>{3, 1}));
        QVERIFY(!s.screen->isVisible());
    }
};

QTEST_MAIN(FrmCalcYieldTest)
#include "frm_calc_yield_test.moc"
