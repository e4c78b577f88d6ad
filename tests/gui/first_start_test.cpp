// A new user's first start of an installed program: a fresh home folder, the real settings files
// and desktop folders under it, and the program folder of an installation. By default that is
// the build tree's bin/ (laid out as an installation); ARBOREX_PROGRAM_FOLDER names another, as
// tests/install_layout.cmake does for a scratch prefix's bin/.

#include <QSettings>
#include <QTreeWidget>
#include <QtTest>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "frame/project_open.hpp"
#include "gui_fixture.hpp"
#include "harvest/calc_session.hpp"
#include "model/polygon_lifecycle.hpp"
#include "platform/app_paths.hpp"
#include "platform/qt_environment.hpp"
#include "report/document_report.hpp"
#include "ui/frm_arbo.hpp"
#include "ui/frm_calc.hpp"
#include "ui/startup_sequence.hpp"

using namespace arborex;
namespace fs = std::filesystem;

namespace {

std::string readAll(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

// The program as a new user meets it: a home folder of its own, the settings files where the
// desktop program keeps them, the boxes scripted.
struct FreshUser {
    test::TempDir home;
    std::string userIni = home.file(".config/Arborex/Arborex.ini");
    QtSettingsStore settings{QString::fromStdString(userIni),
                             QString::fromStdString(home.file("machine/Arborex.ini"))};
    test::RecordingPrompt prompt;
    test::RecordingStatus status;
    QtViews views;
    QtEnvironment system;
    Host host{prompt, status, settings, views, system};
    std::unique_ptr<Model> model = std::make_unique<Model>();
    frmArbo main{*model, host};

    FreshUser() {
        qputenv("HOME", QByteArray::fromStdString(home.path()));
        qputenv("XDG_CONFIG_HOME", QByteArray::fromStdString(home.file(".config")));
        qputenv("XDG_DATA_HOME", QByteArray::fromStdString(home.file(".local/share")));
        qputenv("USER", "forester");
        views.setMainScreen(&main);
    }

    static QString programFolder() {
        const QString named = qEnvironmentVariable("ARBOREX_PROGRAM_FOLDER");
        return named.isEmpty() ? QCoreApplication::applicationDirPath() + "/../bin" : named;
    }

    bool start() {
        StartupEnvironment env;
        env.programFolder = programDataFolder(programFolder());
        return runStartup(*model, host, main, env);
    }
};

}  // namespace

class FirstStartTest : public QObject {
    Q_OBJECT

private slots:
    void aNewUserIsSetUpWithoutAMissingFileAndGetsTheSample() {
        FreshUser user;
        QVERIFY(user.start());
        Model& m = *user.model;

        // No box: every program and help file of the settings is installed. The greeting is on
        // the status screen, which closes by itself.
        QStringList boxes;
        for (const test::ShownBox& box : user.prompt.script.shown)
            boxes << QString::fromStdString(box.text);
        QCOMPARE(boxes, QStringList{});
        QCOMPARE(user.status.texts.front(), std::string("Setting up new user: forester"));
        QVERIFY(!user.status.open);

        // The data is found from the program's own folder.
        QVERIFY(fs::exists(m.Paths[ArborexFolder] + "SPECIEST.DAT"));
        for (int i = FileVDYPexe; i <= FileBTP; ++i)
            QVERIFY2(fs::is_regular_file(m.Files[static_cast<std::size_t>(i)]),
                     m.Files[static_cast<std::size_t>(i)].c_str());

        // The user's settings file lists every setting, the documents folder among them.
        const std::string documents = user.home.file("Documents/Arborex for Windows/");
        QCOMPARE(m.Paths[UserDocuments], documents);
        QCoreApplication::processEvents();  // the store writes its file from the event loop
        QSettings ini(QString::fromStdString(user.userIni), QSettings::IniFormat);
        QCOMPARE(ini.value("FILELOCATIONS/USERDOCUMENTS").toString(),
                 QString::fromStdString(documents));
        // The file's keys are upper case: the store compares them without regard to case.
        for (const char* key : {"USER/COMPANY", "HARVEST/PLANHORZ", "HARVEST/MINAGE", "VDYP/ALTWBS",
                                "TIPSY/OAF1", "DISPLAY/YIELDINC", "COLORS/AGE", "FILES/FILE0",
                                "FILELOCATIONS/USERTEMP", "FILELOCATIONS/ARBOREXFOLDER"})
            QVERIFY2(ini.contains(key), key);
        QVERIFY(fs::is_directory(m.Paths[UserTemp]));

        // The sample is the user's own copy, with its written report beside it.
        const std::string sample = documents + "sample/sample.arx";
        QVERIFY(fs::is_regular_file(sample));
        QVERIFY(fs::is_regular_file(documents + "sample/sample.rtf"));
        QCOMPARE(readAll(sample), readAll(m.Paths[ArborexFolder] + "sample/sample.arx"));
    }

    void theSampleOpensWithItsCurvesLastCalculationAndReport() {
        FreshUser user;
        QVERIFY(user.start());
        Model& m = *user.model;
        const std::string sample = m.Paths[UserDocuments] + "sample/sample.arx";
        QVERIFY(LoadARX(m, user.host, sample));
        user.main.refreshButtons();

        // Every polygon's curves in use are current: nothing to run before a calculation.
        QVERIFY(m.LastPoly >= 0);
        for (const PolyData& polygon : m.Poly) QVERIFY(!curvesNotReady(polygon));

        // The calculation screen shows the saved run, a row a year, without calculating.
        CalcRun run;
        frmCalc calc(m, user.host, run);
        auto* schedule = calc.findChild<QTreeWidget*>("lsvCalc");
        QVERIFY(schedule);
        QCOMPARE(schedule->topLevelItemCount(), m.Calc.CalcHorizon + 1);
        QVERIFY(m.Calc.CutCount > 0);

        // The report is written from the saved run as it stands.
        const std::string report = user.home.file("report.txt");
        createReport(m, ReportFormat::TXT, report);
        QVERIFY(readAll(report).find("sample.arx") != std::string::npos);
    }
};

QTEST_MAIN(FirstStartTest)
#include "first_start_test.moc"
