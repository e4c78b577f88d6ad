#include <QCheckBox>
#include <QLineEdit>
#include <QPushButton>
#include <QtTest>

#include "base/errors.hpp"
#include "gui_fixture.hpp"
#include "ui/frm_harv_param.hpp"

using namespace arborex;

namespace {

struct HarvParamScreen {
    test::GuiHost gui;
    std::unique_ptr<frmHarvParam> screen;

    HarvParamScreen() {
        ResetVars(gui.m);
        SetDefaults(gui.m);
        ProjectSettings& s = gui.m.Settings;
        s.MINAGE = 60;
        s.MINVOL = 175.0f;
        s.MINDIA = 17.5f;
        s.REGENDELAY = 3;
        s.PLANHORZ = 200;
        s.PCADJUSTFACT = 0.85f;
        s.PCnext = 25;
        s.PCperc = 30;
        s.PCADJUSTHARVAGE = 1;
        s.SPLIT = 40.0f;
        screen = std::make_unique<frmHarvParam>(gui.m, gui.host);
    }
    QLineEdit* field(const char* name) { return screen->findChild<QLineEdit*>(name); }
    QCheckBox* chkPCAge() { return screen->findChild<QCheckBox*>("chkPCAge"); }
    void click(const char* name) {
        QTest::mouseClick(screen->findChild<QPushButton*>(name), Qt::LeftButton);
    }
    // Shows the screen and gives it the focus, so that fields can be entered and left.
    void activate() {
        screen->show();
        screen->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(screen.get()));
    }
    // Types `text` into a field as a user would: focus, the old text selected, replaced.
    void typeInto(const char* name, const QString& text) {
        QLineEdit* edit = field(name);
        edit->setFocus(Qt::TabFocusReason);
        QCoreApplication::processEvents();  // the select-all on focus
        QCOMPARE(edit->selectedText(), edit->text());
        QTest::keyClicks(edit, text);
    }
    void leaveTo(const char* name) { field(name)->setFocus(Qt::TabFocusReason); }
};

}  // namespace

class FrmHarvParamTest : public QObject {
    Q_OBJECT
private slots:
    void showsTheProjectSettings() {
        HarvParamScreen s;
        QCOMPARE(s.screen->windowTitle(), QString("Harvest Parameters"));
        QCOMPARE(s.field("txtCutVar_0")->text(), QString("60"));
        QCOMPARE(s.field("txtCutVar_1")->text(), QString("175.0"));
        QCOMPARE(s.field("txtCutVar_2")->text(), QString("17.5"));
        QCOMPARE(s.field("txtRegenDelay")->text(), QString("3"));
        QCOMPARE(s.field("txtPlanHorz")->text(), QString("200"));
        QCOMPARE(s.field("txtSetPC_0")->text(), QString("0.85"));
        QCOMPARE(s.field("txtSetPC_1")->text(), QString("25"));
        QCOMPARE(s.field("txtSetPC_2")->text(), QString("30"));
        QCOMPARE(s.field("txtAutoSplit")->text(), QString("40.0"));
        QVERIFY(s.chkPCAge()->isChecked());
        QVERIFY(s.chkPCAge()->text().startsWith("Base subsequent harvest ages on the age"));
    }

    void leavingAFieldClampsIt_data() {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("shown");
        QTest::newRow("re-entry above 50") << "txtSetPC_1"
                                           << "60"
                                           << "50";
        QTest::newRow("percent below 1") << "txtSetPC_2"
                                         << "0"
                                         << "1";
        QTest::newRow("percent rounded") << "txtSetPC_2"
                                         << "12.6"
                                         << "13";
        QTest::newRow("factor above 1.9") << "txtSetPC_0"
                                          << "2.5"
                                          << "1.9";
        QTest::newRow("factor to 1 decimal") << "txtSetPC_0"
                                             << "0.85"
                                             << "0.9";
        QTest::newRow("split above 999.9") << "txtAutoSplit"
                                           << "1500"
                                           << "999.9";
        QTest::newRow("split not a number") << "txtAutoSplit"
                                            << "lots"
                                            << "0.1";
        QTest::newRow("split to 1 decimal") << "txtAutoSplit"
                                            << "12.34"
                                            << "12.3";
        QTest::newRow("minimum age has no clamp") << "txtCutVar_0"
                                                  << "5000"
                                                  << "5000";
        QTest::newRow("horizon has no clamp") << "txtPlanHorz"
                                              << "-4"
                                              << "-4";
    }
    void leavingAFieldClampsIt() {
        QFETCH(QString, name);
        QFETCH(QString, typed);
        QFETCH(QString, shown);
        HarvParamScreen s;
        s.activate();
        const QByteArray field = name.toLatin1();
        s.typeInto(field.constData(), typed);
        QCOMPARE(s.field(field.constData())->text(), typed);
        s.leaveTo(field == "txtRegenDelay" ? "txtCutVar_0" : "txtRegenDelay");
        QCOMPARE(s.field(field.constData())->text(), shown);
    }

    void doneStoresTheFields() {
        HarvParamScreen s;
        s.field("txtCutVar_0")->setText("55");
        s.field("txtCutVar_1")->setText("120.5");
        s.field("txtCutVar_2")->setText("12.5 cm");  // the leading number counts
        s.field("txtRegenDelay")->setText("2");
        s.field("txtPlanHorz")->setText("300");
        s.field("txtSetPC_0")->setText("1.2");
        s.field("txtSetPC_1")->setText("30");
        s.field("txtSetPC_2")->setText("12.5");  // half to even
        s.field("txtAutoSplit")->setText("80.5");
        s.chkPCAge()->setChecked(false);
        s.click("cmdDone");
        QCOMPARE(s.screen->result(), int(QDialog::Accepted));
        const ProjectSettings& set = s.gui.m.Settings;
        QCOMPARE(set.MINAGE, int16_t(55));
        QCOMPARE(set.MINVOL, 120.5f);
        QCOMPARE(set.MINDIA, 12.5f);
        QCOMPARE(set.REGENDELAY, int16_t(2));
        QCOMPARE(set.PLANHORZ, int16_t(300));
        QCOMPARE(set.PCADJUSTFACT, 1.2f);
        QCOMPARE(set.PCnext, int16_t(30));
        QCOMPARE(set.PCperc, int16_t(12));
        QCOMPARE(set.SPLIT, 80.5f);
        QCOMPARE(set.PCADJUSTHARVAGE, int16_t(0));
    }

    void enterInAFieldClampsItBeforeStoring() {
        HarvParamScreen s;
        s.activate();
        s.typeInto("txtSetPC_1", "60");
        QTest::keyClick(s.field("txtSetPC_1"), Qt::Key_Return);
        QCOMPARE(s.screen->result(), int(QDialog::Accepted));
        QCOMPARE(s.field("txtSetPC_1")->text(), QString("50"));
        QCOMPARE(s.gui.m.Settings.PCnext, int16_t(50));
    }

    void cancelLeavesTheSettings() {
        HarvParamScreen s;
        s.field("txtCutVar_0")->setText("99");
        s.chkPCAge()->setChecked(false);
        s.click("cmdCancel");
        QCOMPARE(s.screen->result(), int(QDialog::Rejected));
        QCOMPARE(s.gui.m.Settings.MINAGE, int16_t(60));
        QCOMPARE(s.gui.m.Settings.PCADJUSTHARVAGE, int16_t(1));
    }

    void anAgeTooLargeIsAFailureAndStoresNothing() {
        HarvParamScreen s;
        s.screen->show();
        s.field("txtCutVar_1")->setText("99");
        s.field("txtCutVar_0")->setText("40000");
        s.click("cmdDone");  // the error screen's script answers Exit Section
        QCOMPARE(s.gui.prompt.script.failures.size(), std::size_t(1));
        QCOMPARE(s.gui.prompt.script.failures[0].number, int(ErrOverflow));
        QCOMPARE(s.gui.prompt.script.failures[0].location,
                 std::string("cmdDone_Click / frmHarvParam"));
        QVERIFY(s.screen->isVisible());  // left open for the entry to be put right
        QCOMPARE(s.gui.m.Settings.MINAGE, int16_t(60));
        QCOMPARE(s.gui.m.Settings.MINVOL, 175.0f);
    }

    void saveDefaultWritesTheHarvestSection() {
        HarvParamScreen s;
        s.screen->show();
        s.field("txtCutVar_1")->setText("120.5");
        s.field("txtSetPC_1")->setText("15");
        s.field("txtSetPC_2")->setText("35");
        s.click("cmdSaveDefaults");
        QCOMPARE(s.gui.m.Settings.PCnext, int16_t(15));  // the project takes them too
        auto user = [&](const char* key) {
            return s.gui.settings.read(SettingsRoot::User, "HARVEST", key).value_or("(none)");
        };
        QCOMPARE(user("MINAGE"), std::string("60"));
        QCOMPARE(user("MINVOL"), std::string("120.5"));
        QCOMPARE(user("MINDIA"), std::string("17.5"));
        QCOMPARE(user("REGENDELAY"), std::string("3"));
        QCOMPARE(user("PLANHORZ"), std::string("200"));
        QCOMPARE(user("SPLIT"), std::string("40.0"));
        QCOMPARE(user("PCADJUSTFACT"), std::string("0.85"));
        QCOMPARE(user("PCADJUSTHARVAGE"), std::string("1"));
        QCOMPARE(user("PCNEXT"), std::string("15"));
        QCOMPARE(user("PCPERC"), std::string("35"));
        QCOMPARE(user("PCNETDOWN"), std::string("(none)"));  // kept as first filled
        QVERIFY(s.gui.settings.read(SettingsRoot::Machine, "HARVEST", "MINAGE") == std::nullopt);
        QVERIFY(s.screen->isVisible());  // the screen stays open
    }
};

QTEST_MAIN(FrmHarvParamTest)
#include "frm_harv_param_test.moc"
