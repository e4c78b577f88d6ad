#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QtTest>
#include <filesystem>

#include "frame/startup.hpp"
#include "gui_fixture.hpp"
#include "modal_driver.hpp"
#include "model/polygon_lifecycle.hpp"
#include "model/species_binding.hpp"
#include "support/test_install.hpp"
#include "ui/frm_help.hpp"
#include "ui/frm_polygon.hpp"

using namespace arborex;

namespace {

// One managed coastal stand of three TIPSY species, its curves current, on the polygon screen.
struct TreatmentScreens {
    test::GuiHost gui;
    std::unique_ptr<frmPolygon> screen;

    TreatmentScreens() {
        gui.installEmptyProject();
        PolyData data;
        PolyCalc calc;
        PolyMgmt mgmt;
        projectFollowingPolygon(data, calc, mgmt);
        data.NAME = "P1";
        data.AREA = 20.0f;
        data.FIZ = "c";
        data.TS = {Code2("HW"), Code2("CW"), Code2("SX"), Code2(), Code2()};
        data.TP = {50, 30, 20, 0, 0};
        data.MGNT = {1, 1};
        data.YIELDSTATE = {3, 3};
        mgmt.CTHEIGHT = 27.0f;
        mgmt.FINCTYPE = 2;
        mgmt.FINCREASE = 4.0f;
        appendPolygon(gui.m, data, calc, mgmt);
        findSpecIDX(gui.m);
        gui.m.CurPoly = 0;
        screen = std::make_unique<frmPolygon>(gui.m, gui.host);
        screen->show();
    }
    PolyData& poly() { return gui.m.Poly[0]; }
    PolyMgmt& mgmt() { return gui.m.PolyM[0]; }
    template <typename T = QLineEdit>
    T* child(const QString& name) {
        T* found = screen->findChild<T*>(name);
        if (!found) qFatal("no control %s", qPrintable(name));
        return found;
    }
};

template <typename T = QLineEdit>
T* control(QWidget* dialog, const char* name) {
    T* found = dialog->findChild<T*>(name);
    if (!found) qFatal("no control %s", name);
    return found;
}

}  // namespace

class FrmTreatmentsTest : public QObject {
    Q_OBJECT
private slots:
    void commercialThinMakesThePureStandAndStalesTheTipsyCurve() {
        TreatmentScreens s;
        QVERIFY(s.child<QPushButton>("cmdCT")->isEnabled());
        QCOMPARE(s.child<QLabel>("lblCommThin")->text(), QString("Disabled"));
        QStringList seen;
        int heightRow = -1;
        bool frameWasEnabled = true;
        test::whenModalShown([&](QWidget* dialog) {
            seen << dialog->windowTitle() << control<QLabel>(dialog, "lblInfo")->text();
            auto* list = control<QListWidget>(dialog, "lstHeight");
            for (int i = 0; i < list->count(); ++i) seen << list->item(i)->text();
            heightRow = list->currentRow();
            frameWasEnabled = control<QWidget>(dialog, "fraCT")->isEnabled();
            control<QCheckBox>(dialog, "chkCommThin")->setChecked(true);
            auto* density = control(dialog, "txtDensity");
            density->setFocus();
            density->setText("900");
            control<QPushButton>(dialog, "cmdApply")->click();
        });
        s.child<QPushButton>("cmdCT")->click();

        QCOMPARE(seen, QStringList({"Commercial Thin",
                                    "Commercial Thin is only available with pure FD stands on the "
                                    "coast",
                                    "21", "27", "33"}));
        QCOMPARE(heightRow, 1);
        QVERIFY(!frameWasEnabled);
        QCOMPARE(s.child<QLabel>("lblCommThin")->text(),
                 QString("at a Height of 27m to 816stems/ha"));
        QCOMPARE(s.child("txtTSpec_0")->text(), QString("FD"));
        QCOMPARE(s.child("txtTPer_0")->text(), QString("100"));
        QCOMPARE(s.child("txtTSpec_1")->text(), QString(""));
        QCOMPARE(s.child<QLabel>("lblTPerSum")->text(), QString("100"));
        QCOMPARE(s.poly().FIZ.str(), std::string("C"));
        QCOMPARE(s.poly().YIELDSTATE[1], int16_t{1});
        QCOMPARE(s.poly().YIELDSTATE[0], int16_t{3});
        QCOMPARE(s.child<QListWidget>("lstMapPoly")->item(0)->text(), QString("*P1"));

        // Cancel changes nothing and marks nothing.
        s.poly().YIELDSTATE[1] = 3;
        test::clickWhenModalShown("cmdCancel");
        s.child<QPushButton>("cmdCT")->click();
        QCOMPARE(s.poly().YIELDSTATE[1], int16_t{3});
    }

    void fertilizationStoresTheStartAgeOnly() {
        TreatmentScreens s;
        QString title, unit;
        bool methodChecked = false, methodShown = true, noteShown = false, helpShown = false;
        test::whenModalShown([&](QWidget* dialog) {
            title = dialog->windowTitle();
            methodChecked = control<QRadioButton>(dialog, "optMethod_2")->isChecked();
            methodShown = control<QWidget>(dialog, "optMethod_2")->isVisibleTo(dialog) ||
                          control<QWidget>(dialog, "txtIncrease")->isVisibleTo(dialog);
            noteShown = control<QLabel>(dialog, "lbl_0")->isVisibleTo(dialog);
            unit = control<QLabel>(dialog, "lblUnit")->text();
            control<QPushButton>(dialog, "cmdShowHelp")->click();
            auto* help = dialog->findChild<frmHelp*>();
            helpShown = help && help->isVisible();
            control<QCheckBox>(dialog, "chkFert")->setChecked(true);
            auto* start = control(dialog, "txtStartYear");
            start->setFocus();
            start->setText("500");
            control<QPushButton>(dialog, "cmdApply")->click();
        });
        s.child<QPushButton>("cmdFert")->click();

        QCOMPARE(title, QString("TIPSY Fertilization"));
        QVERIFY(methodChecked);
        QVERIFY(!methodShown);
        QVERIFY(noteShown);
        QVERIFY(helpShown);
        QCOMPARE(unit, QString("m"));
        QCOMPARE(s.mgmt().FERT, int16_t{1});
        QCOMPARE(s.mgmt().FSTARTYEAR, int16_t{340});
        QCOMPARE(s.mgmt().FINCTYPE, int16_t{2});
        QCOMPARE(s.mgmt().FINCREASE, 4.0f);
        QCOMPARE(s.child<QLabel>("lblFert")->text(), QString("at age 340 - PFA Standards"));
        QCOMPARE(s.child("txtTSpec_0")->text(), QString("HW"));
        QCOMPARE(s.poly().YIELDSTATE[1], int16_t{1});
        QCOMPARE(s.child<QListWidget>("lstMapPoly")->item(0)->text(), QString("*P1"));
    }

    void theButtonsWaitForAPolygon() {
        TreatmentScreens s;
        s.gui.m.CurPoly = -1;
        s.screen->ShowPolygonData();
        QVERIFY(!s.child<QPushButton>("cmdCT")->isEnabled());
        QVERIFY(!s.child<QPushButton>("cmdFert")->isEnabled());
    }
};

QTEST_MAIN(FrmTreatmentsTest)
#include "frm_treatments_test.moc"
