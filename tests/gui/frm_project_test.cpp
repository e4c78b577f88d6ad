#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QtTest>

#include "gui_fixture.hpp"
#include "ui/frm_project.hpp"

using namespace arborex;

namespace {

struct ProjectScreen {
    test::GuiHost gui;
    std::unique_ptr<frmProject> screen;

    ProjectScreen() {
        ResetVars(gui.m);
        SetDefaults(gui.m);
        gui.m.Header.Scenario = "Base case";
        gui.m.Header.Company = "Cedar Creek Woodlot Ltd.";
        gui.m.Header.StartDate = 46023.0;  // Jan 1, 2026
        screen = std::make_unique<frmProject>(gui.m, gui.host);
    }
    QLineEdit* field(int i) { return screen->findChild<QLineEdit*>(QString("txtInfo_%1").arg(i)); }
    void click(const char* name) {
        QTest::mouseClick(screen->findChild<QPushButton*>(name), Qt::LeftButton);
    }
};

}  // namespace

class FrmProjectTest : public QObject {
    Q_OBJECT
private slots:
    void showsTheHeader() {
        ProjectScreen s;
        QCOMPARE(s.field(0)->text(), QString("Base case"));
        QCOMPARE(s.field(3)->text(), QString("Cedar Creek Woodlot Ltd."));
        QCOMPARE(s.screen->findChild<QLabel*>("lblDate_0")->text(), QString("Jan 1, 2026"));
    }

    void okStoresFieldsCutTo32Characters() {
        ProjectScreen s;
        s.field(4)->setText("A user name that runs well past thirty-two characters");
        s.field(2)->setText("Prince George");
        s.click("cmdSaveExit");
        QCOMPARE(s.screen->result(), int(QDialog::Accepted));
        // 32 characters, the trailing blank trimmed on reading back
        QCOMPARE(s.gui.m.Header.User.str(), std::string("A user name that runs well past"));
        QCOMPARE(s.gui.m.Header.District.str(), std::string("Prince George"));
    }

    void cancelLeavesTheHeader() {
        ProjectScreen s;
        s.field(0)->setText("Changed");
        s.click("cmdCancel");
        QCOMPARE(s.screen->result(), int(QDialog::Rejected));
        QCOMPARE(s.gui.m.Header.Scenario.str(), std::string("Base case"));
    }

    void saveDefaultKeepsNamesForNewProjects() {
        ProjectScreen s;
        s.field(1)->setText("W1234");
        s.click("cmdSaveIni");
        QCOMPARE(s.gui.settings.read(SettingsRoot::User, "USER", "ARBOREX").value_or(""),
                 std::string("W1234"));
        QCOMPARE(s.gui.settings.read(SettingsRoot::User, "USER", "COMPANY").value_or(""),
                 std::string("Cedar Creek Woodlot Ltd."));
        QVERIFY(s.gui.settings.read(SettingsRoot::Machine, "USER", "ARBOREX") == std::nullopt);
    }
};

QTEST_MAIN(FrmProjectTest)
#include "frm_project_test.moc"
