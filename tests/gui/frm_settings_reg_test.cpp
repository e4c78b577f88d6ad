#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QtTest>

#include "frame/file_locations.hpp"
#include "frame/settings_lock.hpp"
#include "frame/user_settings.hpp"
#include "gui_fixture.hpp"
#include "model/colours.hpp"
#include "support/test_install.hpp"
#include "ui/frm_settings_reg.hpp"

using namespace arborex;

namespace {

// A started program's settings, over the test's own INI files.
struct SettingsSession {
    test::GuiHost gui;

    SettingsSession() {
        test::setUpUser(gui.system, gui.dir.path());
        test::installProgramFolder(gui.dir.file("program/"));
        gui.m.RunId = "123456";
        ResetVars(gui.m);
        GetAppPath(gui.m, gui.host, gui.dir.file("program/"));
        DefaultPaths(gui.m, gui.host);
        setColours(gui.m);
        SetDefaults(gui.m);
        LoadRegistry(gui.m, gui.host);
    }
    // The field of a setting on its tab.
    static QLineEdit* field(frmSettingsReg& screen, const char* section, const char* key) {
        for (QLineEdit* edit : screen.findChildren<QLineEdit*>())
            if (edit->toolTip() == QString("%1 \\ %2").arg(section, key)) return edit;
        qFatal("no field %s/%s", section, key);
    }
    std::string stored(SettingsRoot root, const char* section, const char* key) {
        return gui.settings.read(root, section, key).value_or("<absent>");
    }
};

}  // namespace

class FrmSettingsRegTest : public QObject {
    Q_OBJECT
private slots:
    void tabsShowTheStoreAndDoneStoresChanges() {
        SettingsSession s;
        frmSettingsReg screen(s.gui.m, s.gui.host);
        auto* tabs = screen.findChild<QTabWidget*>("tsMenu");
        QCOMPARE(tabs->tabText(0), QString("User Settings"));
        QCOMPARE(tabs->tabText(1), QString("Administrative Settings"));
        QVERIFY(screen.findChild<QLineEdit*>("txtUser_0"));
        QVERIFY(screen.findChild<QLineEdit*>("txtAdmin_0"));
        QVERIFY(screen.findChild<QLabel*>("picColor_19"));
        QCOMPARE(s.stored(SettingsRoot::User, "", "Access"), std::string("123456"));

        QLineEdit* step = SettingsSession::field(screen, "DISPLAY", "YIELDINC");
        QCOMPARE(step->text(), QString("10"));
        step->setText("5");
        QLineEdit* maxAge = SettingsSession::field(screen, "VDYP", "MAXAGE");
        QCOMPARE(maxAge->text(), QString("300"));
        maxAge->setText("250");
        QTest::mouseClick(screen.findChild<QPushButton*>("cmdDone"), Qt::LeftButton);

        QCOMPARE(screen.result(), int(QDialog::Accepted));
        QCOMPARE(s.stored(SettingsRoot::User, "DISPLAY", "YIELDINC"), std::string("5"));
        QCOMPARE(s.gui.m.Settings.YIELDINC, int16_t{5});  // applies at once
        QCOMPARE(s.stored(SettingsRoot::Machine, "VDYP", "MAXAGE"), std::string("250"));
        QCOMPARE(s.gui.m.Settings.YieldMaxAge[0], int16_t{300});  // from the next project
        QCOMPARE(s.stored(SettingsRoot::User, "", "Access"), std::string(""));  // released
        QCOMPARE(s.stored(SettingsRoot::Machine, "", "Access"), std::string(""));
    }

    void aValueThatIsNotANumberIsRefused() {
        SettingsSession s;
        frmSettingsReg screen(s.gui.m, s.gui.host);
        SettingsSession::field(screen, "TIPSY", "OAF1")->setText("fifteen");
        QVERIFY(!screen.cmdDone_Click());
        QCOMPARE(s.gui.shown().back().text,
                 std::string("OAF1 default (%) must be a whole number from -32768 to 32767."));
        QCOMPARE(s.stored(SettingsRoot::User, "TIPSY", "OAF1"), std::string("15"));
    }

    void aSecondCopyFindsTheLocksAndCannotEdit() {
        SettingsSession s;
        takeSettingsLock(s.gui.settings, SettingsRoot::User, "999999");
        takeSettingsLock(s.gui.settings, SettingsRoot::Machine, "999999");
        {
            frmSettingsReg screen(s.gui.m, s.gui.host);
            QCOMPARE(s.gui.shown().size(), std::size_t{2});
            QCOMPARE(s.gui.shown()[0].text,
                     std::string("User access is already in use by another user"));
            QCOMPARE(s.gui.shown()[1].text,
                     std::string("Admin access is already in use by another user"));
            QVERIFY(!screen.editable(SettingsRoot::User));
            QVERIFY(screen.findChild<QLineEdit*>("txtUser_0")->isReadOnly());
            QVERIFY(screen.findChild<QLineEdit*>("txtAdmin_0")->isReadOnly());
            QVERIFY(!screen.findChild<QPushButton*>("cmdColor_0")->isEnabled());
        }
        // The other copy's locks stay when this screen closes.
        QCOMPARE(s.stored(SettingsRoot::User, "", "Access"), std::string("999999"));
    }
};

QTEST_MAIN(FrmSettingsRegTest)
#include "frm_settings_reg_test.moc"
