// The main screen's Report view: enabled with a polygon, it asks for the file with the report's
// dialog and opens what it wrote in the desktop's program, or says where it is. And the Help
// menu's manual, opened the same way.

#include <QAction>
#include <QPushButton>
#include <QtTest>
#include <filesystem>
#include <fstream>

#include "base/document_launcher.hpp"
#include "gui_fixture.hpp"
#include "model/model.hpp"
#include "ui/frm_arbo.hpp"

using namespace arborex;

namespace {

struct RecordingLauncher final : DocumentLauncher {
    std::vector<std::string>* opened;
    explicit RecordingLauncher(std::vector<std::string>* log) : opened(log) {}
    bool openDocument(const std::string& path) override {
        opened->push_back(path);
        return true;
    }
    bool openWith(const std::string& program, const std::string& path) override {
        opened->push_back(program + " " + path);
        return true;
    }
};

}  // namespace

class FrmArboReportTest : public QObject {
    Q_OBJECT
private slots:
    void reportViewWritesAndOpensTheChosenFile() {
        test::GuiHost gui;
        programDefaults(gui.m);
        EmptyArrays(gui.m);
        gui.m.LastPoly = 0;
        gui.m.Poly[0].NAME = "P1";
        gui.m.Paths[UserDocuments] = gui.dir.path();
        gui.m.Files[FileDisplayName] = "Woodlot";
        frmArbo main(gui.m, gui.host);
        std::vector<std::string> opened;
        main.setDocumentLauncher(std::make_unique<RecordingLauncher>(&opened));
        main.refreshButtons();
        auto* button = main.findChild<QPushButton*>("cmdView_4");
        QVERIFY(button && button->isEnabled());

        const std::string path = gui.dir.file("report.rtf");
        gui.prompt.script.files = {FileChoice{path, 1}};
        QTest::mouseClick(button, Qt::LeftButton);
        QCOMPARE(gui.prompt.fileRequests.size(), std::size_t{1});
        const FileRequest& request = gui.prompt.fileRequests[0];
        QCOMPARE(request.title, std::string("Create Report"));
        QCOMPARE(request.filter,
                 std::string("Rich Text File (*.rtf)|*.rtf|Text file (*.txt)|*.txt"));
        QCOMPARE(request.filterIndex, 1);
        QCOMPARE(request.folder, gui.dir.path());
        QCOMPARE(request.proposedName, std::string("Woodlot"));
        QVERIFY(std::filesystem::exists(path));
        QCOMPARE(gui.m.Files[FileLastReport], path);
        QCOMPARE(opened, std::vector<std::string>{path});

        gui.m.LaunchEditor = 0;
        gui.prompt.script.files = {FileChoice{gui.dir.file("report.txt"), 2}};
        QTest::mouseClick(button, Qt::LeftButton);
        QCOMPARE(gui.shown().back().text,
                 "Your report was saved as: " + gui.dir.file("report.txt"));
    }

    // Help, Arborex Manual opens the manual the settings name when it is there, and otherwise
    // the guide installed beside the program (or, without one, still the named manual).
    void manualOpensTheNamedFileOrTheInstalledGuide() {
        test::GuiHost gui;
        programDefaults(gui.m);
        EmptyArrays(gui.m);
        frmArbo main(gui.m, gui.host);
        std::vector<std::string> opened;
        main.setDocumentLauncher(std::make_unique<RecordingLauncher>(&opened));
        auto* manual = main.findChild<QAction*>("mnuHelpArbo");
        QVERIFY(manual);

        const std::string own = gui.dir.file("manual.pdf");
        std::ofstream(own) << "manual";
        gui.m.Files[FileManual] = own;
        manual->trigger();
        QCOMPARE(opened, std::vector<std::string>{own});

        gui.m.Files[FileManual] = gui.dir.file("missing.pdf");
        manual->trigger();
        QCOMPARE(opened.size(), std::size_t{2});
        const bool guide = opened[1].find("/share/doc/arborex/guide/index.") != std::string::npos;
        QVERIFY(guide || opened[1] == gui.m.Files[FileManual]);
    }
};

QTEST_MAIN(FrmArboReportTest)
#include "frm_arbo_report_test.moc"
