// The calculation screen's Graph menu over the bundled sample: nothing before a calculation,
// then each entry writes its control file into the temporary folder and hands it to the
// graphing program, with a box when that cannot start.

#include <QAction>
#include <QCheckBox>
#include <QLineEdit>
#include <QMenu>
#include <QtTest>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "frame/project_open.hpp"
#include "frame/startup.hpp"
#include "gui_fixture.hpp"
#include "model/model.hpp"
#include "report/graph_files.hpp"
#include "ui/frm_calc.hpp"

using namespace arborex;

namespace {

class RecordingLauncher final : public DocumentLauncher {
public:
    bool starts = true;
    std::vector<std::string> opened;
    bool openDocument(const std::string&) override { return false; }
    bool openWith(const std::string& program, const std::string& path) override {
        opened.push_back(program + " " + path);
        return starts;
    }
};

std::string firstTitle(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::string line;
    while (std::getline(in, line))
        if (line.rfind("Title1=", 0) == 0) return line.substr(0, line.size() - 1);
    return {};
}

}  // namespace

class FrmCalcGraphTest : public QObject {
    Q_OBJECT
private slots:
    void menuWritesAndLaunchesEachGraph() {
        test::GuiHost gui;
        QVERIFY(gui.loadSourceSample());
        gui.m.Paths[UserTemp] = gui.dir.path() + "/";
        gui.m.Files[FileChartex] = "/opt/chart";
        CalcRun run;
        run.FixedStartYear = 2030;
        frmCalc screen(gui.m, gui.host, run);
        RecordingLauncher launcher;
        screen.setDocumentLauncher(launcher);
        auto trigger = [&](const char* name) {
            QAction* action = screen.findChild<QAction*>(name);
            QVERIFY2(action, name);
            action->trigger();
        };

        // The sample holds no calculation: the entries do nothing.
        QCOMPARE(gui.m.Calc.CutCount, int16_t(0));
        trigger("mnuGraph_0");
        trigger("mniTimeVol_1");
        QVERIFY(launcher.opened.empty());
        QVERIFY(!std::filesystem::exists(gui.m.Paths[UserTemp] + "graph.txt"));

        for (int i = 0; i < kResultGraphCount; ++i) {
            QAction* entry = screen.findChild<QAction*>(QString("mnuGraph_%1").arg(i));
            QVERIFY(entry);
            QCOMPARE(entry->text(), QString(kResultGraphCaptions[static_cast<std::size_t>(i)]));
        }
        QCOMPARE(screen.findChild<QAction*>("mniTimeVol_1")->text(),
                 QString("New Time Volume Graph"));

        auto* search = screen.findChild<QCheckBox*>("chkCalcRate");
        if (search->isChecked()) search->click();
        screen.findChild<QLineEdit*>("txtVolToCut")->setText("900");
        QTest::keyClick(screen.findChild<QLineEdit*>("txtVolToCut"), Qt::Key_Return);
        QVERIFY(gui.m.Calc.CutCount > 0);

        const std::string graph = gui.m.Paths[UserTemp] + "graph.txt";
        trigger("mnuGraph_6");
        QCOMPARE(firstTitle(graph), std::string("Title1= Harvest Forecast"));
        trigger("mnuGraph_0");
        QCOMPARE(firstTitle(graph), std::string("Title1= Volume Harvested over Time"));
        trigger("mniTimeVol_1");
        QCOMPARE(firstTitle(gui.m.Paths[UserTemp] + "tvgraph.txt"),
                 std::string("Title1= Time Volume"));
        QCOMPARE(launcher.opened.size(), std::size_t(3));
        QCOMPARE(launcher.opened[0], "/opt/chart " + graph);
        QVERIFY(gui.shown().empty());

        // A graphing program that does not start is passed over; the file is still written.
        launcher.starts = false;
        trigger("mnuGraph_1");
        QVERIFY(gui.shown().empty());
        QCOMPARE(firstTitle(graph), std::string("Title1= Area Harvested over Time"));
    }
};

QTEST_MAIN(FrmCalcGraphTest)
#include "frm_calc_graph_test.moc"
