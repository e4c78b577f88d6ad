// A forester's first plan on the desktop screens, driven by control names only: a new project,
// the inventory imported through the data grid, a polygon edited, yields from the growth-model
// stand-ins of the build tree, the harvest ages on the summary, a rate search, both reports,
// and the project saved, closed and reopened with the same schedule. It leaves the rate and the
// reports in ARBOREX_E2E_OUT for the batch route to be compared with.

#include <QAction>
#include <QCheckBox>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QTreeWidget>
#include <QtTest>
#include <filesystem>
#include <fstream>

#include "base/document_launcher.hpp"
#include "gui_fixture.hpp"
#include "modal_driver.hpp"
#include "ui/frm_arbo.hpp"
#include "ui/frm_calc.hpp"
#include "ui/frm_polygon.hpp"
#include "ui/frm_spreadsheet.hpp"
#include "ui/frm_summary.hpp"
#include "ui/startup_sequence.hpp"

using namespace arborex;
namespace fs = std::filesystem;

namespace {

const std::string kInventory = std::string(ARBOREX_E2E_DATA) + "/woodlot.txt";
const std::string kOut = std::string(ARBOREX_E2E_OUT) + "/";
const std::string kProject = ARBOREX_E2E_PROJECT;

// Documents are written, never opened: nothing of the desktop runs during the test.
struct NoLauncher final : DocumentLauncher {
    bool openDocument(const std::string&) override { return true; }
    bool openWith(const std::string&, const std::string&) override { return true; }
};

template <typename T>
T* named(QObject* parent, const QString& name) {
    T* found = parent->findChild<T*>(name);
    if (!found) qFatal("no control %s", qPrintable(name));
    return found;
}

// The rows of a list view as text, a tab between cells.
QStringList rowsOf(QTreeWidget* list) {
    QStringList rows;
    for (int r = 0; r < list->topLevelItemCount(); ++r) {
        QStringList cells;
        for (int c = 0; c < list->columnCount(); ++c) cells << list->topLevelItem(r)->text(c);
        rows << cells.join('\t');
    }
    return rows;
}

void writeText(const std::string& path, const QString& text) {
    std::ofstream(path, std::ios::binary) << text.toStdString();
}

}  // namespace

class DesktopWorkflowTest : public QObject {
    Q_OBJECT
private:
    test::GuiHost gui;
    std::unique_ptr<frmArbo> main;

    void view(int n) { named<QAction>(main.get(), QString("mniView_%1").arg(n))->trigger(); }
    template <typename T>
    T* screen() {
        T* found = main->findChild<T*>();
        if (!found || !found->isVisible()) qFatal("the screen is not showing");
        return found;
    }
    // Closes a view; it is gone before the next one opens.
    static void close(QWidget* window) {
        window->close();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    void activate(QWidget* window) {
        window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(window));
    }

private slots:
    void initTestCase() {
        fs::remove_all(kOut);
        fs::create_directories(kOut);
        fs::remove(kProject);
        test::setUpUser(gui.system, gui.dir.path());
        main = std::make_unique<frmArbo>(gui.m, gui.host);
        main->setDocumentLauncher(std::make_unique<NoLauncher>());
        main->setEndAction([] {});
        StartupEnvironment start;
        start.programFolder = std::string(ARBOREX_SHARE_DIR) + "/";
        QVERIFY(runStartup(gui.m, gui.host, *main, start));
        // The program found its installation: the reference data and the stand-ins beside it.
        QCOMPARE(gui.m.Paths[ArborexFolder], start.programFolder);
    }

    void everyViewIsOfferedAndThoseThatNeedPolygonsWait() {
        auto* views = named<QMenu>(main->menuBar(), "mniView");
        QCOMPARE(views->actions().size(), 7);
        for (QAction* action : views->actions()) {
            const int n = action->data().toInt();
            QCOMPARE(action->isEnabled(), n != 2 && n != 3 && n != 4);
        }
        for (int i = 0; i < 6; ++i)
            QCOMPARE(named<QPushButton>(main.get(), QString("cmdView_%1").arg(i))->isEnabled(),
                     i == 0 || i == 1 || i == 5);
    }

    void newProjectTakesTheInventoryThroughTheDataGrid() {
        named<QAction>(main.get(), "mniNew")->trigger();
        QCOMPARE(gui.m.LastPoly, int16_t{-1});
        view(5);
        auto* grid = screen<frmSpreadsheet>();
        gui.prompt.script.files.push_back(FileChoice{kInventory, 3});
        named<QAction>(grid, "mnuImport")->trigger();
        QCOMPARE(gui.m.LastPoly, int16_t{4});
        QCOMPARE(gui.m.Poly[1].NAME.str(), std::string("W2"));
        for (int i = 0; i < 6; ++i)
            QVERIFY(named<QPushButton>(main.get(), QString("cmdView_%1").arg(i))->isEnabled());
        // The new project gets its name at once.
        gui.prompt.script.files.push_back(FileChoice{kProject, 1});
        named<QAction>(main.get(), "mniSaveAs")->trigger();
        QVERIFY(fs::exists(kProject));
        // "Return to Polygon Data" brings the polygon screen up.
        named<QPushButton>(grid, "cmdDone")->click();
        QTRY_VERIFY(main->polygonScreen() && main->polygonScreen()->isVisible());
    }

    void aPolygonIsEditedOnThePolygonScreen() {
        frmPolygon* polygons = main->polygonScreen();
        activate(polygons);
        auto* list = named<QListWidget>(polygons, "lstMapPoly");
        list->setCurrentRow(1);
        QCOMPARE(gui.m.CurPoly, int16_t{1});
        auto* siteIndex = named<QLineEdit>(polygons, "txtVData_0");
        siteIndex->setFocus(Qt::TabFocusReason);
        QCoreApplication::processEvents();
        QTest::keyClicks(siteIndex, "21.5");
        named<QLineEdit>(polygons, "txtPData_0")->setFocus(Qt::TabFocusReason);
        gui.answers().push_back(Answer::Yes);
        list->setCurrentRow(0);
        QCOMPARE(gui.shown().back().title, std::string("Keep Changes?"));
        QCOMPARE(gui.m.Poly[1].VSITEINDEX, 21.5f);
    }

    void yieldsComeFromTheStandInModels() {
        frmPolygon* polygons = main->polygonScreen();
        QStringList messages;
        test::whenModalShown([&messages](QWidget* modal) {
            named<QPushButton>(modal, "cmdOk")->click();
            // Without messages the screen closes itself.
            if (!modal->isVisible()) return;
            for (auto* list : {"lstErrors", "lstWarn", "lstPost"})
                for (int i = 0; i < named<QListWidget>(modal, list)->count(); ++i)
                    messages << named<QListWidget>(modal, list)->item(i)->text();
            modal->close();
        });
        named<QAction>(polygons, "mnuCalcYield")->trigger();
        QVERIFY2(messages.isEmpty(), qPrintable(messages.join('\n')));
        for (const PolyData& poly : gui.m.Poly) {
            // Natural stands use VDYP now and TIPSY after harvest; managed ones TIPSY only.
            if (poly.MGNT[0] == 0) QCOMPARE(poly.YIELDSTATE[0], int16_t{3});
            QCOMPARE(poly.YIELDSTATE[1], int16_t{3});
        }
        close(polygons);
    }

    void theSummaryShowsEveryPolygonsHarvestAges() {
        view(2);
        auto* list = named<QTreeWidget>(screen<frmSummary>(), "lsvSum");
        const QStringList rows = rowsOf(list);
        QCOMPARE(rows.size(), 6);  // five polygons and the total
        for (int r = 0; r < 5; ++r) {
            const QTreeWidgetItem* row = list->topLevelItem(r);
            // Calculated target ages, bracketed, of the existing and the future management.
            for (int column : {4, 8}) {
                const QString age = row->text(column).trimmed();
                QVERIFY2(age.startsWith('[') && age.endsWith(']'), qPrintable(rows[r]));
                const int years = age.mid(1, age.size() - 2).toInt();
                QVERIFY2(years > 20 && years < 200, qPrintable(rows[r]));
            }
        }
        writeText(kOut + "summary.txt", rows.join('\n') + '\n');
        close(screen<frmSummary>());
    }

    void aRateSearch() {
        view(3);
        auto* calc = screen<frmCalc>();
        static NoLauncher launcher;
        calc->setDocumentLauncher(launcher);
        // A new project harvests no ownership until it is ticked: all four are.
        for (int i = 0; i < 4; ++i) {
            auto* owner = named<QCheckBox>(calc, QString("chkCut_%1").arg(i));
            if (!owner->isChecked()) owner->click();
        }
        auto* search = named<QCheckBox>(calc, "chkCalcRate");
        if (!search->isChecked()) search->click();
        named<QPushButton>(calc, "cmdCalculate")->click();
        const QString rate = named<QLineEdit>(calc, "txtVolToCut")->text();
        QVERIFY(rate.toInt() > 0);
        QVERIFY(named<QListWidget>(calc, "lstCalcStatus")->count() > 2);
        writeText(kOut + "rate.txt", rate + '\n');
        writeText(kOut + "schedule-shown.txt",
                  rowsOf(named<QTreeWidget>(calc, "lsvCalc")).join('\n') + '\n');
    }

    // Of the search's final run. The delimited report runs the rate again as the field shows it,
    // in whole cubic metres, and its tables are then the last run's: it comes second, as in the
    // batch route.
    void theWrittenReport() {
        gui.prompt.script.files.push_back(FileChoice{kOut + "report.rtf", 1});
        named<QPushButton>(main.get(), "cmdView_4")->click();
        QVERIFY(fs::file_size(kOut + "report.rtf") > 1000);
    }

    void theDelimitedReport() {
        auto* calc = screen<frmCalc>();
        gui.prompt.script.files.push_back(FileChoice{kOut + "schedule.txt", 1});
        test::clickWhenModalShown("cmdOk");  // the report's settings as they stand
        named<QAction>(calc, "mnuReport")->trigger();
        QVERIFY(fs::file_size(kOut + "schedule.txt") > 1000);
        close(calc);
    }

    void savedClosedAndReopenedTheScheduleIsTheSame() {
        const std::size_t asked = gui.prompt.fileRequests.size();
        named<QAction>(main.get(), "mniSave")->trigger();
        QCOMPARE(gui.prompt.fileRequests.size(), asked);  // saved under its name
        QVERIFY(fs::exists(fs::path(kProject).replace_extension(".bak")));

        gui.answers().push_back(Answer::Ok);  // "Caution - Creating a new project ..."
        named<QAction>(main.get(), "mniNew")->trigger();
        QCOMPARE(gui.m.LastPoly, int16_t{-1});
        QVERIFY(!named<QPushButton>(main.get(), "cmdView_2")->isEnabled());

        named<QAction>(main.get(), "mnLast_0")->trigger();
        QCOMPARE(gui.m.LastPoly, int16_t{4});
        view(3);
        auto* calc = screen<frmCalc>();
        std::ifstream rate(kOut + "rate.txt");
        std::string before;
        std::getline(rate, before);
        QCOMPARE(named<QLineEdit>(calc, "txtVolToCut")->text(), QString::fromStdString(before));
        std::ifstream shown(kOut + "schedule-shown.txt");
        const std::string rows((std::istreambuf_iterator<char>(shown)), {});
        QCOMPARE(rowsOf(named<QTreeWidget>(calc, "lsvCalc")).join('\n') + '\n',
                 QString::fromStdString(rows));
        close(calc);
    }
};

QTEST_MAIN(DesktopWorkflowTest)
#include "desktop_workflow_test.moc"
