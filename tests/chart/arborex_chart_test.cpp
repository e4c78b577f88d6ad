// arborex-chart over the control files of a calculated project: each of the seven result
// graphs, the time volume graph and the age distribution drawn into pictures of the size asked
// with something drawn in the plot, the three file forms written, and the built program's
// answers to good, empty, cut short, garbage and unknown-statement files.

#include <QImage>
#include <QProcess>
#include <QtTest>
#include <fstream>
#include <sstream>

#include "base/dates.hpp"
#include "chart_app.hpp"
#include "chart_builder.hpp"
#include "chart_output.hpp"
#include "harvest/calculate.hpp"
#include "model/colours.hpp"
#include "report/graph_files.hpp"
#include "support/calc_fixture.hpp"
#include "support/temp_dir.hpp"

using namespace arborex;

namespace {

// 5 March 2030, 2:07 pm: the run's start year is 2030 too.
const double kNow = dayCountFromParts({2030, 3, 5, 14, 7, 0});

// Stands of every age, so that each of the sixty years cuts.
std::vector<test::TestStand> forest() {
    std::vector<test::TestStand> stands;
    for (int16_t age = 0; age <= 120; age = static_cast<int16_t>(age + 8))
        stands.push_back({"S" + std::to_string(age), 12.0f, age, 0, 0, 2.5f, 70});
    return stands;
}

struct Project : test::CalcFixture {
    Project() : CalcFixture(forest()) {
        setColours(m);
        m.Ref.SpeciesV.back().Desc = "Lodgepole pine";
        m.Ref.SpeciesT.back().Desc = "Lodgepole pine";
        m.Settings.PLANHORZ = 60;
        m.Header.Licence = "A12345";
        m.Header.Scenario = "Base case";
        screen.txtVolToCut = "400";
        prepare();
    }
};

void writeText(const std::string& path, const std::string& text) {
    std::ofstream(path, std::ios::binary) << text;
}

// The share of pixels in the middle of the picture, where the plot lies, that are not white.
double inkInPlot(const QImage& image) {
    const QRect plot(image.width() / 8, image.height() / 6, image.width() * 5 / 8,
                     image.height() * 2 / 3);
    int ink = 0;
    for (int y = plot.top(); y <= plot.bottom(); ++y)
        for (int x = plot.left(); x <= plot.right(); ++x)
            if (image.pixel(x, y) != qRgb(255, 255, 255)) ++ink;
    return static_cast<double>(ink) / (plot.width() * plot.height());
}

struct Run {
    int code;
    QStringList errorLines;
};

Run runProgram(const QStringList& arguments, const QString& runtimeFolder) {
    QProcess process;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert("QT_QPA_PLATFORM", "offscreen");
    env.insert("XDG_RUNTIME_DIR", runtimeFolder);
    process.setProcessEnvironment(env);
    process.start(ARBOREX_CHART_PROGRAM, arguments);
    process.waitForFinished(60000);
    const QString err = QString::fromLocal8Bit(process.readAllStandardError());
    return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
            err.split('\n', Qt::SkipEmptyParts)};
}

}  // namespace

class ArborexChartTest : public QObject {
    Q_OBJECT

    test::TempDir dir;
    std::vector<std::pair<std::string, std::string>> files;  // name, control text

private slots:
    void initTestCase() {
        Project p;
        QVERIFY(cmdCalculate(p.session));
        for (int i = 0; i < kResultGraphCount; ++i)
            files.emplace_back("graph" + std::to_string(i), resultGraphText(p.m, p.run, i, kNow));
        files.emplace_back("tvgraph", timeVolumeGraphText(p.m, kNow));
        files.emplace_back("areagraph", ageGraphText(p.m, defaultAgeGraphRequest(2030), kNow));
        std::filesystem::permissions(dir.path(), std::filesystem::perms::owner_all);
    }

    void eachGraphIsDrawnWithItsPlot() {
        const char* keep = std::getenv("ARBOREX_CHART_PICTURES");
        for (const auto& [name, text] : files) {
            const GraphControl control = readGraphControl(text);
            QCOMPARE(chart::undrawableReason(control, text), std::string());
            QCOMPARE(control.warnings.size(), std::size_t{0});
            const QImage image = chart::renderImage(control, QSize(900, 600));
            QCOMPARE(image.size(), QSize(900, 600));
            if (keep) image.save(QString("%1/%2.png").arg(keep, name.c_str()));
            QVERIFY2(inkInPlot(image) > 0.01, name.c_str());
        }
    }

    void theThreeFileForms() {
        const auto& [name, text] = files[7];  // tvgraph
        const std::string control = dir.file(name + ".txt");
        writeText(control, text);
        const QString out = QString::fromStdString(dir.file("tv"));
        std::ostringstream err;
        QCOMPARE(chart::runChart({QString::fromStdString(control), "--png", out + ".png", "--svg",
                                  out + ".svg", "--pdf", out + ".pdf", "--size", "640x480"},
                                 err),
                 0);
        QCOMPARE(err.str(), std::string());
        QCOMPARE(QImage(out + ".png").size(), QSize(640, 480));
        QFile svg(out + ".svg"), pdf(out + ".pdf");
        QVERIFY(svg.open(QIODevice::ReadOnly) && svg.readAll().contains("<svg"));
        QVERIFY(pdf.open(QIODevice::ReadOnly) && pdf.read(5) == "%PDF-");
    }

    void theProgramAsABlackBox() {
        const QString runtime = QString::fromStdString(dir.path());
        const std::string& tv = files[7].second;
        struct Case {
            const char* name;
            std::string text;
            int lines;  // on stderr
            bool drawn;
        };
        std::string unknown = tv;
        unknown.insert(unknown.find("*graph"), "Frobnicate\r\n");
        const Case cases[] = {
            {"good", tv, 0, true},
            {"unknown", unknown, 1, true},
            {"empty", "", 1, false},
            {"cut", tv.substr(0, tv.size() * 2 / 3), 1, false},
            {"header-only", tv.substr(0, tv.find("*graph")), 1, false},
            {"garbage", std::string("\x89PNG\r\n\x1a\n\0\0\xff\xfe garbage=1 *table\t3", 28), 1,
             false},
        };
        for (const Case& c : cases) {
            const std::string input = dir.file(std::string(c.name) + ".txt");
            const QString png = QString::fromStdString(dir.file(std::string(c.name) + ".png"));
            writeText(input, c.text);
            const Run run = runProgram({QString::fromStdString(input), "--png", png}, runtime);
            QVERIFY2((run.code == 0) == c.drawn, c.name);
            QVERIFY2(run.errorLines.size() == c.lines, qPrintable(run.errorLines.join("|")));
            QCOMPARE(QFile::exists(png), c.drawn);
            if (c.drawn) QCOMPARE(QImage(png).size(), QSize(1100, 850));  // the page's size
        }
        QVERIFY(runProgram({"--png"}, runtime).code == chart::kChartUsage);
        QVERIFY(runProgram({dir.file("good.txt").c_str(), "--size", "9x9"}, runtime).code ==
                chart::kChartUsage);
    }
};

QTEST_MAIN(ArborexChartTest)
#include "arborex_chart_test.moc"
