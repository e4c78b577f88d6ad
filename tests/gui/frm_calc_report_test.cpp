// The calculation report's settings dialog, and "Create Calculation Report" on the calculation
// screen over the bundled sample: the settings asked first, the save dialog, the file written
// with the delimiter of the filter chosen, and the spreadsheet launched.

#include <QAction>
#include <QCheckBox>
#include <QLineEdit>
#include <QPushButton>
#include <QtTest>
#include <fstream>

#include "frame/project_open.hpp"
#include "frame/startup.hpp"
#include "gui_fixture.hpp"
#include "modal_driver.hpp"
#include "model/project_file.hpp"
#include "ui/frm_calc.hpp"
#include "ui/frm_calc_report.hpp"

using namespace arborex;

namespace {

class RecordingLauncher final : public DocumentLauncher {
public:
    std::vector<std::string> calls;
    bool openDocument(const std::string& path) override {
        calls.push_back("open " + path);
        return true;
    }
    bool openWith(const std::string& program, const std::string& path) override {
        calls.push_back(program + " " + path);
        return true;
    }
};

std::string firstLine(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::string line;
    std::getline(in, line);
    return line;
}

}  // namespace

class FrmCalcReportTest : public QObject {
    Q_OBJECT
private slots:
    void okStoresTheSevenSettingsAndCancelNone() {
        test::GuiHost gui;
        programDefaults(gui.m);
        frmCalcReport dialog(gui.m, gui.host);
        QCOMPARE(dialog.windowTitle(), QString("Calculation Report Settings"));
        auto* inc = dialog.findChild<QLineEdit*>("txtReportInc");
        QCOMPARE(inc->text(), QString("1"));
        QVERIFY(dialog.findChild<QCheckBox*>("chkShowPoly")->isChecked());
        QVERIFY(!dialog.findChild<QCheckBox*>("chkTotal")->isChecked());
        const QStringList captions = {"Annual", "5", "10", "20", "50"};
        const QStringList values = {"1", "5", "10", "20", "50"};
        for (int i = 0; i < 5; ++i) {
            auto* button = dialog.findChild<QPushButton*>(QString("cmdYear_%1").arg(i));
            QCOMPARE(button->text(), captions[i]);
            button->click();
            QCOMPARE(inc->text(), values[i]);
        }
        dialog.findChild<QCheckBox*>("chkTotal")->click();
        dialog.findChild<QCheckBox*>("chkShow")->click();
        dialog.findChild<QPushButton*>("cmdCancel")->click();
        QCOMPARE(dialog.result(), int(QDialog::Rejected));
        QCOMPARE(gui.m.Report.RptIncrement, int16_t{1});
        QCOMPARE(gui.m.Report.RptTotal, int16_t{0});

        inc->setText("12.5");  // a numeric value, rounded half to even
        dialog.findChild<QPushButton*>("cmdOk")->click();
        QCOMPARE(dialog.result(), int(QDialog::Accepted));
        QCOMPARE(gui.m.Report.RptIncrement, int16_t{12});
        QCOMPARE(gui.m.Report.RptTotal, int16_t{-1});
        QCOMPARE(gui.m.Report.RptPrompt, int16_t{0});
        QCOMPARE(gui.m.Report.RptShowPoly, int16_t{-1});
    }

    void createReportAsksSettingsThenFileThenLaunches() {
        test::GuiHost gui;
        QVERIFY(gui.loadSourceSample());
        CalcRun run;
        run.FixedStartYear = 2030;
        frmCalc screen(gui.m, gui.host, run);
        RecordingLauncher launcher;
        screen.setDocumentLauncher(launcher);
        auto* report = screen.findChild<QAction*>("mnuReport");
        QCOMPARE(report->text(), QString("Create Calculation Report"));

        // Cancelled settings: no file is asked for.
        test::clickWhenModalShown("cmdCancel");
        report->trigger();
        QVERIFY(gui.prompt.fileRequests.empty());

        // Settings of 20 years, the comma filter chosen.
        const std::string csv = gui.dir.file("schedule.csv");
        gui.prompt.script.files.push_back(FileChoice{csv, 2});
        test::whenModalShown([](QWidget* modal) {
            modal->findChild<QPushButton*>("cmdYear_3")->click();
            modal->findChild<QPushButton*>("cmdOk")->click();
        });
        report->trigger();
        QCOMPARE(gui.m.Report.RptIncrement, int16_t{20});
        QCOMPARE(gui.prompt.fileRequests.size(), std::size_t{1});
        const FileRequest& asked = gui.prompt.fileRequests[0];
        QCOMPARE(asked.title, std::string("Export Calculation Report File"));
        QCOMPARE(asked.filter, std::string("Tab Delimited (*.txt)|*.txt|Comma Seperated Values "
                                           "(*.csv)|*.csv"));
        QCOMPARE(asked.filterIndex, 1);
        QVERIFY(asked.overwritePrompt);
        QVERIFY(firstLine(csv).rfind("Year,Polygon Name,Ownership,", 0) == 0);
        QCOMPARE(run.ReportEvery, int16_t{0});
        QCOMPARE(launcher.calls, std::vector<std::string>{"open " + csv});

        // Without the settings prompt, the tab filter, and the spreadsheet of the settings.
        gui.m.Report.RptPrompt = 0;
        gui.m.Files[FileEditorExcel] = "/opt/office/calc";
        const std::string txt = gui.dir.file("schedule.txt");
        gui.prompt.script.files.push_back(FileChoice{txt, 1});
        report->trigger();
        QVERIFY(firstLine(txt).rfind("Year\tPolygon Name\tOwnership\t", 0) == 0);
        QCOMPARE(launcher.calls.back(), "/opt/office/calc " + txt);
    }
};

QTEST_MAIN(FrmCalcReportTest)
#include "frm_calc_report_test.moc"
