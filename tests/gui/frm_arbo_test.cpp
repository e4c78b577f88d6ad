#include <QAction>
#include <QCheckBox>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QtTest>
#include <algorithm>
#include <filesystem>
#include <fstream>

#include "gui_fixture.hpp"
#include "model/project_file.hpp"
#include "model/recent_files.hpp"
#include "support/test_install.hpp"
#include "ui/frm_arbo.hpp"
#include "ui/frm_project.hpp"
#include "ui/startup_sequence.hpp"

using namespace arborex;

namespace {

void touch(const std::string& path) {
    std::ofstream(path) << "x";
}

// The main screen over a test host, started the way the program starts it.
struct Session {
    test::GuiHost gui;
    frmArbo main{gui.m, gui.host};
    bool ended = false;
    StartupEnvironment env;
    std::string tempFolder;
    std::string documentsFolder;

    Session() {
        gui.views.setMainScreen(&main);
        main.setEndAction([this] { ended = true; });
        env.programFolder = gui.dir.file("program/");
        test::installProgramFolder(env.programFolder);
        test::setUpUser(gui.system, gui.dir.path());
        tempFolder = gui.dir.file("appdata/Arborex/temp/");
        documentsFolder = gui.dir.file("documents/Arborex for Windows/");
    }
    bool start(const std::string& commandLine = {}) {
        env.commandLine = commandLine;
        return runStartup(gui.m, gui.host, main, env);
    }
    template <typename T>
    T* child(const char* name) {
        T* found = main.findChild<T*>(name);
        if (!found) qFatal("no control %s", name);
        return found;
    }
    QAction* recent(int i) { return child<QAction>(qPrintable(QString("mnLast_%1").arg(i))); }
    // A project of one polygon on disk.
    std::string writeProject(const std::string& name) {
        auto project = std::make_unique<Model>();
        ResetVars(*project);
        SetDefaults(*project);
        EmptyArrays(*project);
        project->LastPoly = 0;
        project->Header.TIPSYVersion = "3.2m";  // else reopening tells of a newer TIPSY
        test::FakeHost quiet;
        const std::string path = gui.dir.file(name);
        SaveArx(*project, quiet, path, kCurrentFileVersion, false);
        return path;
    }
    std::string lastTitle() const { return gui.shown().back().title; }
    std::string lastText() const { return gui.shown().back().text; }
};

}  // namespace

class FrmArboTest : public QObject {
    Q_OBJECT
private slots:
    void startsWithoutProjectBehindTheSplash() {
        Session s;
        QVERIFY(s.start());
        QVERIFY(s.main.isVisible());
        QCOMPARE(s.main.windowTitle(), QString("Arborex for Windows - New Arborex File"));
        auto* about = s.main.findChild<QDialog*>("frmAbout");
        QVERIFY(about && about->isVisible());
        QVERIFY(about->findChild<QLabel*>("lblVersion")->text().contains("3.2.26"));
        QCOMPARE(s.gui.m.RunId.size(), std::size_t{6});
        QVERIFY(std::filesystem::is_directory(s.tempFolder));
        QVERIFY(std::filesystem::is_directory(s.documentsFolder));
        QVERIFY(s.gui.shown().empty());
    }

    void viewButtonsAndTheirCaptions() {
        Session s;
        QVERIFY(s.start());
        const QStringList captions = {"&Project", "Polygon &Data", "C&alculations",
                                      "&Summary", "&Report",       "S&ettings"};
        for (int i = 0; i < 6; ++i) {
            auto* button = s.child<QPushButton>(qPrintable(QString("cmdView_%1").arg(i)));
            QCOMPARE(button->text(), captions[i]);
            QVERIFY(!s.child<QLabel>(qPrintable(QString("lbl_%1").arg(i)))->text().isEmpty());
            // Without a polygon only the project information, the polygons (to add the first)
            // and the settings can open.
            QCOMPARE(button->isEnabled(), i == 0 || i == 1 || i == 5);
        }
        QCOMPARE(s.child<QPushButton>("cmdExit")->text(), QString("E&xit Program"));
        QCOMPARE(s.child<QPushButton>("cmdAbout")->text(), QString("A&bout"));

        QTest::mouseClick(s.child<QPushButton>("cmdView_0"), Qt::LeftButton);
        QTest::mouseClick(s.child<QPushButton>("cmdView_0"), Qt::LeftButton);
        const auto screens = s.main.findChildren<frmProject*>();
        QCOMPARE(screens.size(), 1);  // an open view is brought up, not opened twice
        QVERIFY(screens.first()->isVisible());
    }

    void projectOnTheCommandLineIsOpenedAndRemembered() {
        Session s;
        const std::string path = s.writeProject("Woodlot 12.arx");
        QVERIFY(s.start("\"" + path + "\""));
        QCOMPARE(s.gui.m.LastPoly, int16_t{0});
        QCOMPARE(s.gui.m.LastFiles[0], path);
        QCOMPARE(s.gui.settings.read(SettingsRoot::User, "FILES", "FILE0").value_or(""), path);
        QCOMPARE(s.main.windowTitle(), QString("Arborex for Windows - Woodlot 12"));
        QVERIFY(!s.main.findChild<QDialog*>("frmAbout"));
        QVERIFY(s.child<QPushButton>("cmdView_0")->isEnabled());

        // With a polygon the calculations open, once however often they are asked for.
        QVERIFY(s.child<QPushButton>("cmdView_2")->isEnabled());
        QTest::mouseClick(s.child<QPushButton>("cmdView_2"), Qt::LeftButton);
        QTest::mouseClick(s.child<QPushButton>("cmdView_2"), Qt::LeftButton);
        const auto screens = s.main.findChildren<QDialog*>("frmCalc");
        QCOMPARE(screens.size(), 1);
        QVERIFY(screens.first()->isVisible());
    }

    void missingCommandLineFileIsToldAndStartGoesOn() {
        Session s;
        const std::string missing = s.gui.dir.file("gone.arx");
        QVERIFY(s.start(missing));
        QCOMPARE(s.gui.shown().size(), std::size_t{1});
        QCOMPARE(s.lastTitle(), std::string("File Not Found!"));
        QCOMPARE(s.lastText(), "File not found: " + missing);
        QCOMPARE(s.gui.m.LastPoly, int16_t{-1});
        QCOMPARE(s.gui.m.LastFiles[0], std::string());
        QVERIFY(s.main.findChild<QDialog*>("frmAbout"));  // as without a path
        QVERIFY(s.main.isVisible());
    }

    void logOptionInAnyCaseAndForm() {
        for (const char* option : {"-log", "/LOG", "/Log"}) {
            Session s;
            QVERIFY(s.start(option));
            QVERIFY2(s.gui.m.LogMode, option);
            QVERIFY(s.gui.shown().empty());  // an option is no project to look for
        }
        Session plain;
        QVERIFY(plain.start("-verbose"));
        QVERIFY(!plain.gui.m.LogMode);
    }

    // /LOG on the command line reaches the calculation screen: a run there leaves log.txt in
    // the user's documents, with its heading, the cutting steps and its end.
    void logOptionLeavesTheCuttingTrailOfARun() {
        Session s;
        const std::string sample = std::string(ARBOREX_SOURCE_DIR) + "/samples/sample.arx";
        QVERIFY(s.start("/LOG \"" + sample + "\""));
        QVERIFY(s.gui.m.LogMode);
        QTest::mouseClick(s.child<QPushButton>("cmdView_2"), Qt::LeftButton);
        auto* search = s.child<QCheckBox>("chkCalcRate");
        if (search->isChecked()) search->click();  // one run at the saved rate
        s.child<QPushButton>("cmdCalculate")->click();

        std::ifstream log(s.documentsFolder + "log.txt");
        QVERIFY(log.is_open());
        std::vector<std::string> lines;
        for (std::string line; std::getline(log, line);) lines.push_back(line);
        QVERIFY(lines.size() > 6);
        QCOMPARE(lines[0], std::string("ARBOREX CALCULATION LOG File"));
        QCOMPARE(lines[3], std::string("--------------------------"));
        QCOMPARE(std::count(lines[4].begin(), lines[4].end(), ','), 7);  // year, polygon, 6 figures
        QCOMPARE(lines[lines.size() - 2], std::string("--------------------------"));
        QCOMPARE(lines.back(), std::string("EOF"));
    }

    void secondCopyOnlyWhenTheUserAsks() {
        Session no;
        no.env.anotherCopyRunning = [] { return true; };
        no.gui.answers().push_back(Answer::No);
        QVERIFY(!no.start());
        QCOMPARE(no.lastTitle(), std::string("Arborex already running"));
        QCOMPARE(no.lastText(),
                 std::string("Arborex is already running.  Would you like to start another."));
        QCOMPARE(no.gui.shown().back().buttons, Buttons::YesNo);
        QVERIFY(!no.main.isVisible());

        Session yes;
        yes.env.anotherCopyRunning = [] { return true; };
        yes.gui.answers().push_back(Answer::Yes);
        QVERIFY(yes.start());
        QVERIFY(yes.main.isVisible());
    }

    void recentListMovesAListedPathUp() {
        Session s;
        QVERIFY(s.start());
        const std::string a = s.gui.dir.file("a.arx"), b = s.gui.dir.file("b.arx");
        touch(a);
        touch(b);
        AddLast(s.gui.m, s.gui.host, a);
        AddLast(s.gui.m, s.gui.host, b);
        AddLast(s.gui.m, s.gui.host, a);
        QCOMPARE(s.recent(0)->text(), QString::fromStdString("&0 " + a));
        QCOMPARE(s.recent(1)->text(), QString::fromStdString("&1 " + b));
        QCOMPARE(s.recent(2)->text(), QString("&2   -empty-"));
        QCOMPARE(s.recent(3)->text(), QString("&3   -empty-"));
        QVERIFY(s.recent(0)->isVisible() && s.recent(1)->isVisible());
        QVERIFY(!s.recent(2)->isVisible() && !s.recent(3)->isVisible());
    }

    void recentEntryOfAMissingFileIsDisabled() {
        Session s;
        const std::string kept = s.gui.dir.file("kept.arx");
        touch(kept);
        s.gui.settings.write(SettingsRoot::User, "FILES", "FILE0", s.gui.dir.file("removed.arx"));
        s.gui.settings.write(SettingsRoot::User, "FILES", "FILE1", kept);
        QVERIFY(s.start());
        QVERIFY(s.recent(0)->isVisible());
        QVERIFY(!s.recent(0)->isEnabled());
        QVERIFY(s.recent(1)->isEnabled());
    }

    void recentEntryOpensAndMovesToTheTop() {
        Session s;
        const std::string first = s.writeProject("first.arx");
        const std::string second = s.writeProject("second.arx");
        s.gui.settings.write(SettingsRoot::User, "FILES", "FILE0", first);
        s.gui.settings.write(SettingsRoot::User, "FILES", "FILE1", second);
        QVERIFY(s.start());
        s.recent(1)->trigger();
        QCOMPARE(s.gui.m.LastPoly, int16_t{0});
        QCOMPARE(s.gui.m.LastFiles[0], second);
        QCOMPARE(s.gui.m.LastFiles[1], first);
        QCOMPARE(s.gui.settings.read(SettingsRoot::User, "FILES", "FILE0").value_or(""), second);
        QCOMPARE(s.main.windowTitle(), QString("Arborex for Windows - second"));
        QCOMPARE(s.recent(0)->text(), QString::fromStdString("&0 " + second));

        // With polygons in memory an empty entry does nothing, not even the caution box.
        s.recent(3)->trigger();
        QVERIFY(s.gui.shown().empty());
        // Declining the caution keeps the project.
        s.gui.answers().push_back(Answer::Cancel);
        s.recent(1)->trigger();
        QCOMPARE(s.lastTitle(), std::string("Arborex for Windows - Caution"));
        QCOMPARE(s.lastText(), std::string("Caution - Opening a ARX file will replace polygons "
                                           "currently in memory"));
        QCOMPARE(s.gui.m.LastFiles[0], second);
    }

    void newAndOpenAskBeforeReplacingPolygons() {
        Session s;
        QVERIFY(s.start(s.writeProject("held.arx")));
        s.gui.answers().push_back(Answer::Cancel);
        s.child<QAction>("mniNew")->trigger();
        QCOMPARE(s.lastTitle(), std::string("Arborex for Windows - Caution"));
        QCOMPARE(s.lastText(), std::string("Caution - Creating a new project will erase all "
                                           "current data from memory."));
        QCOMPARE(s.gui.m.LastPoly, int16_t{0});

        s.gui.answers().push_back(Answer::Cancel);
        s.child<QAction>("mniOpen")->trigger();
        QCOMPARE(s.lastText(), std::string("Caution - Opening a ARX file will replace polygons "
                                           "currently in memory"));
        QVERIFY(s.gui.prompt.fileRequests.empty());  // no dialog after Cancel

        s.gui.answers().push_back(Answer::Ok);
        s.child<QAction>("mniNew")->trigger();
        QCOMPARE(s.gui.m.LastPoly, int16_t{-1});
        QCOMPARE(s.main.windowTitle(), QString("Arborex for Windows - New Arborex File"));
        QVERIFY(!s.child<QPushButton>("cmdView_2")->isEnabled());

        // Without polygons nothing is asked before the dialog.
        const std::size_t boxes = s.gui.shown().size();
        s.child<QAction>("mniOpen")->trigger();
        QCOMPARE(s.gui.shown().size(), boxes);
        QCOMPARE(s.gui.prompt.fileRequests.back().title, std::string("ARX"));
        QCOMPARE(s.gui.prompt.fileRequests.back().filter, std::string("ARBOREX (*.arx)|*.arx"));
    }

    void savingAnOlderVersionWarnsAndProposesAName() {
        Session s;
        QVERIFY(s.start());
        const std::string target = s.gui.dir.file("old.arx");
        s.gui.answers().push_back(Answer::Ok);
        s.gui.prompt.script.files.push_back(FileChoice{target, 1});
        s.child<QAction>("mniSaveV200")->trigger();
        QCOMPARE(s.lastTitle(), std::string("SOME DATA MAYBE LOST"));
        QCOMPARE(s.lastText(),
                 std::string("Caution Saving the file in a previous file format will ONLY Save "
                             "the information relevent to that version."));
        QCOMPARE(s.gui.prompt.fileRequests.back().proposedName,
                 std::string("New Arborex File (Version 2.00)"));
        QVERIFY(s.gui.prompt.script.failures.empty());
        QVERIFY(std::filesystem::exists(target));

        s.gui.answers().push_back(Answer::Cancel);
        const std::size_t requests = s.gui.prompt.fileRequests.size();
        s.child<QAction>("mniSaveV111")->trigger();
        QCOMPARE(s.gui.prompt.fileRequests.size(), requests);  // no name asked after Cancel

        s.gui.answers().push_back(Answer::Ok);
        s.child<QAction>("mniSaveV111")->trigger();
        QCOMPARE(s.gui.prompt.fileRequests.back().proposedName,
                 std::string("New Arborex File (Version 1.11)"));
    }

    void cancellingTheExitBoxKeepsEverythingOpen() {
        Session s;
        QVERIFY(s.start());
        touch(s.tempFolder + "graph.txt");
        QTest::mouseClick(s.child<QPushButton>("cmdView_0"), Qt::LeftButton);

        s.gui.answers().push_back(Answer::Cancel);
        QTest::mouseClick(s.child<QPushButton>("cmdExit"), Qt::LeftButton);
        QCOMPARE(s.lastTitle(), std::string("Exit from Arborex for Windows"));
        QCOMPARE(s.lastText(), std::string("Do you want to leave Arborex for Windows"));
        QCOMPARE(s.gui.shown().back().buttons, Buttons::OkCancel);

        s.gui.answers().push_back(Answer::Cancel);
        QVERIFY(!s.main.close());  // the window's own close goes through the same box
        QCOMPARE(s.gui.shown().size(), std::size_t{2});

        QVERIFY(!s.ended);
        QVERIFY(s.main.isVisible());
        QVERIFY(s.main.findChild<frmProject*>()->isVisible());
        QVERIFY(std::filesystem::exists(s.tempFolder + "graph.txt"));
    }

    void confirmingTheExitDeletesTheExchangeFiles() {
        Session s;
        QVERIFY(s.start());
        touch(s.tempFolder + "VDYPIN.dat");
        touch(s.tempFolder + "TIPSYout.err");
        touch(s.tempFolder + "notes.txt");
        s.gui.answers().push_back(Answer::Ok);
        s.child<QAction>("mniExit")->trigger();
        QVERIFY(s.ended);
        QVERIFY(!std::filesystem::exists(s.tempFolder + "VDYPIN.dat"));
        QVERIFY(!std::filesystem::exists(s.tempFolder + "TIPSYout.err"));
        QVERIFY(std::filesystem::exists(s.tempFolder + "notes.txt"));
        // Once ending, closing the window asks nothing more.
        QVERIFY(s.main.close());
        QCOMPARE(s.gui.shown().size(), std::size_t{1});
    }
};

QTEST_MAIN(FrmArboTest)
#include "frm_arbo_test.moc"
