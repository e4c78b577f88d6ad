// The Graph window over the bundled sample: the calculation screen's time volume graph drawn
// only after a calculation, its picture saved as a bitmap and as PNG through the save dialog,
// and the age distribution entry closing it first.

#include <QAction>
#include <QCheckBox>
#include <QClipboard>
#include <QGuiApplication>
#include <QImage>
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
#include "ui/frm_graph.hpp"

using namespace arborex;

namespace {

std::string leadingBytes(const std::string& path, std::size_t count) {
    std::ifstream in(path, std::ios::binary);
    std::string bytes(count, '\0');
    in.read(bytes.data(), static_cast<std::streamsize>(count));
    return bytes;
}

int colouredPixels(const QImage& image) {
    int count = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x) {
            const QColor c = image.pixelColor(x, y);
            if (c.red() != c.green() || c.green() != c.blue()) ++count;
        }
    return count;
}

}  // namespace

class FrmGraphTest : public QObject {
    Q_OBJECT
private slots:
    void timeVolumeGraphIsDrawnSavedAndClosedForTheAgeScreen() {
        test::GuiHost gui;
        QVERIFY(gui.loadSourceSample());
        CalcRun run;
        run.FixedStartYear = 2030;
        frmCalc screen(gui.m, gui.host, run);
        auto* timeVolume = screen.findChild<QAction*>("mniTimeVol_0");
        QCOMPARE(timeVolume->text(), QString("Time Volume Graph"));
        timeVolume->trigger();
        QVERIFY(!screen.findChild<frmGraph*>());  // no calculation yet

        auto* search = screen.findChild<QCheckBox*>("chkCalcRate");
        if (search->isChecked()) search->click();
        screen.findChild<QLineEdit*>("txtVolToCut")->setText("900");
        QTest::keyClick(screen.findChild<QLineEdit*>("txtVolToCut"), Qt::Key_Return);
        QVERIFY(gui.m.Calc.CutCount > 0);
        timeVolume->trigger();
        auto* graph = screen.findChild<frmGraph*>();
        QVERIFY(graph && graph->isVisible());
        QVERIFY(graph->windowTitle().startsWith("Graph"));
        const QImage image = graph->image();
        QVERIFY(colouredPixels(image) > image.width() * image.height() / 20);

        graph->findChild<QAction*>("mnuCopyImage")->trigger();
        QCOMPARE(QGuiApplication::clipboard()->image().size(), image.size());

        const std::string bmp = gui.dir.file("graph.bmp");
        const std::string png = gui.dir.file("graph.png");
        gui.prompt.script.files.push_back(FileChoice{bmp, 1});
        gui.prompt.script.files.push_back(FileChoice{png, 2});
        graph->findChild<QAction*>("mnuSaveImage")->trigger();
        graph->findChild<QAction*>("mnuSaveImage")->trigger();
        QCOMPARE(gui.prompt.fileRequests.size(), std::size_t(2));
        QCOMPARE(gui.prompt.fileRequests[0].title, std::string("Save Graph As"));
        QVERIFY(gui.prompt.fileRequests[0].filter.rfind("Bitmap (*.bmp)|*.bmp", 0) == 0);
        QCOMPARE(leadingBytes(bmp, 2), std::string("BM"));
        QCOMPARE(leadingBytes(png, 4), std::string("\x89PNG"));
        QCOMPARE(QImage(QString::fromStdString(png)).size(), image.size());
        QVERIFY(gui.shown().empty());

        // The age distribution screen first closes the graph window.
        bool graphOpen = true;
        test::whenModalShown([&](QWidget* modal) {
            graphOpen = graph->isVisible();
            modal->findChild<QPushButton*>("cmdOk")->click();
        });
        screen.findChild<QAction*>("mniAgeDist")->trigger();
        QVERIFY(!graphOpen);
    }
};

QTEST_MAIN(FrmGraphTest)
#include "frm_graph_test.moc"
