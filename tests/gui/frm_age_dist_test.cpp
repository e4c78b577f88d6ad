// "Age Distribution Graph" over the bundled sample after a calculation: its proposals, and the
// years, fill styles, colours and fill type chosen reaching areagraph.txt and the picture.

#include <QCheckBox>
#include <QColorDialog>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QtTest>
#include <fstream>

#include "base/dates.hpp"
#include "frame/project_open.hpp"
#include "frame/startup.hpp"
#include "gui_fixture.hpp"
#include "modal_driver.hpp"
#include "model/colours.hpp"
#include "model/project_file.hpp"
#include "ui/frm_age_dist.hpp"
#include "ui/frm_calc.hpp"
#include "ui/frm_graph.hpp"

using namespace arborex;

namespace {

class RecordingLauncher final : public DocumentLauncher {
public:
    std::vector<std::string> opened;
    bool openDocument(const std::string&) override { return false; }
    bool openWith(const std::string& program, const std::string& path) override {
        opened.push_back(program + " " + path);
        return true;
    }
};

// The table row of a control file that starts with `head`, without its CR.
std::string tableRow(const std::string& path, const std::string& head) {
    std::ifstream in(path, std::ios::binary);
    std::string line;
    while (std::getline(in, line))
        if (line.rfind(head + "\t", 0) == 0) return line.substr(0, line.size() - 1);
    return {};
}

}  // namespace

class FrmAgeDistTest : public QObject {
    Q_OBJECT
private slots:
    void choicesReachTheControlFileAndThePicture() {
        test::GuiHost gui;
        QVERIFY(gui.loadSourceSample());
        gui.m.Paths[UserTemp] = gui.dir.path() + "/";
        gui.m.Files[FileChartex] = "/opt/chart";
        CalcRun run;
        frmCalc calc(gui.m, gui.host, run);
        auto* search = calc.findChild<QCheckBox*>("chkCalcRate");
        if (search->isChecked()) search->click();
        calc.findChild<QLineEdit*>("txtVolToCut")->setText("900");
        QTest::keyClick(calc.findChild<QLineEdit*>("txtVolToCut"), Qt::Key_Return);
        QVERIFY(gui.m.Calc.CutCount > 0);

        RecordingLauncher launcher;
        frmAgeDist screen(gui.m, gui.host, &launcher);
        QCOMPARE(screen.windowTitle(), QString("Age Distribution Graph"));
        const int year = partsFromDayCount(dateNow()).year;
        auto* year0 = screen.findChild<QLineEdit*>("txtYear_0");
        QCOMPARE(year0->text(), QString::number(year));
        auto* style1 = screen.findChild<QComboBox*>("lstFillStyle_1");
        QCOMPARE(style1->count(), 8);
        QCOMPARE(style1->itemText(7), QString("Diagonal Cross"));
        QVERIFY(screen.findChild<QRadioButton*>("optFillType_0")->isChecked());
        QCOMPARE(screen.findChild<QRadioButton*>("optFillType_2")->text(),
                 QString("Pattern Only (monochrome)"));

        screen.findChild<QLineEdit*>("txtYear_1")->setText(QString(" %1 ").arg(year + 3));
        screen.findChild<QLineEdit*>("txtYear_5")->setText("");
        style1->setCurrentIndex(6);
        test::whenModalShown([](QWidget* modal) {
            auto* dialog = qobject_cast<QColorDialog*>(modal);
            if (!dialog) qFatal("no colour dialog");
            dialog->setCurrentColor(QColor(10, 20, 30));
            dialog->accept();
        });
        screen.findChild<QPushButton*>("picCol_1")->click();

        const std::string file = gui.m.Paths[UserTemp] + "areagraph.txt";
        screen.findChild<QPushButton*>("cmdNewGraph")->click();
        QCOMPARE(launcher.opened, std::vector<std::string>{"/opt/chart " + file});
        const std::string y = std::to_string(year);
        QCOMPARE(tableRow(file, "Title"), "Title\t" + y + "\t" + std::to_string(year + 3) + "\t" +
                                              std::to_string(year + 20) + "\t" +
                                              std::to_string(year + 30) + "\t" +
                                              std::to_string(year + 40) + "\t0000");
        const std::string chosen = "#" + std::to_string(rgb(10, 20, 30));
        QVERIFY(tableRow(file, "FColor")
                    .rfind("FColor\t#" + std::to_string(rgb(0, 128, 0)) + "\t" + chosen + "\t",
                           0) == 0);
        QCOMPARE(tableRow(file, "Pattern"), std::string("Pattern\t0\t6\t0\t0\t0\t0"));

        screen.findChild<QRadioButton*>("optFillType_2")->click();
        screen.findChild<QPushButton*>("cmdNewGraph")->click();
        QCOMPARE(tableRow(file, "BColor"),
                 std::string("BColor\tblack\tblack\tblack\tblack\tblack\tblack"));

        screen.findChild<QPushButton*>("cmdGraph")->click();
        frmGraph* graph = screen.graphWindow();
        QVERIFY(graph && graph->isVisible());
        const GraphPicture& picture = graph->findChild<GraphView*>("picGraph")->picture();
        QCOMPARE(picture.legend.size(), std::size_t(5));  // the blank year left out
        QCOMPARE(picture.legend[1].fill, int16_t(6));
        QCOMPARE(picture.legend[1].colour, 0);  // pattern only: black
        QVERIFY(gui.shown().empty());
    }
};

QTEST_MAIN(FrmAgeDistTest)
#include "frm_age_dist_test.moc"
