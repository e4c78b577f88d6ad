// The "Harvest Age" and "Silviculture System" screens on a selection of a two-polygon project:
// "Alpha" with a current VDYP curve whose MAI culminates at 80, "Beta" with its VDYP curve
// imported but not confirmed and no volume in it.

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QtTest>
#include <cstdlib>

#include "gui_fixture.hpp"
#include "ui/frm_harv_age.hpp"
#include "ui/frm_silvi.hpp"
#include "yield/harvest_ages.hpp"

using namespace arborex;

namespace {

using Pair = std::array<int16_t, 2>;

struct TwoPolygons {
    test::GuiHost gui;

    TwoPolygons() {
        Model& m = gui.m;
        ResetVars(m);
        SetDefaults(m);
        m.LastPoly = 1;
        EmptyArrays(m);
        ResizePolygonArrays(m, 2);
        for (std::size_t p = 0; p < 2; ++p) {
            m.PolyC[p].MINCUTAGE = {-1, -1};
            m.PolyC[p].MINCUTVOL = m.PolyC[p].MINCUTDBH = {-1.0f, -1.0f};
            m.Poly[p].HAR = {-1, -1};
            m.Poly[p].MGNT = {0, 1};
            m.Poly[p].PCPERC = m.Poly[p].PCNEXT = -1;
        }
        m.Poly[0].NAME = "Alpha";
        m.Poly[0].YIELDSTATE = {3, 0};
        m.Poly[1].NAME = "Beta";
        m.Poly[1].YIELDSTATE = {2, 0};
        for (int k = 0; k <= 300; ++k) {
            YieldRow& row = m.VYield(0, k);
            row.Vol = static_cast<int16_t>(k * 24 + 12);
            row.Dia = static_cast<int16_t>(k * 3 + 6);
            row.Mai = 5.0f - 0.012f * static_cast<float>(std::abs(k - 80));
        }
        m.Settings.PCperc = 25;
        m.Settings.PCnext = 20;
        UpdateYields(m);
    }
    PolyData& poly(int p) { return gui.m.Poly[static_cast<std::size_t>(p)]; }
};

template <class T>
T* child(QWidget& screen, const char* name) {
    T* found = screen.findChild<T*>(name);
    if (!found) qFatal("no control %s", name);
    return found;
}

void activate(QWidget& screen) {
    screen.show();
    screen.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&screen));
}

// Typed into a field as a user would, then left for `next`.
void typeAndLeave(QWidget& screen, const char* field, const QString& text, const char* next) {
    auto* edit = child<QLineEdit>(screen, field);
    edit->setFocus(Qt::TabFocusReason);
    edit->selectAll();
    QTest::keyClicks(edit, text);
    child<QWidget>(screen, next)->setFocus(Qt::TabFocusReason);
}

}  // namespace

class FrmHarvAgeTest : public QObject {
    Q_OBJECT
private slots:
    void harvestAgeShowsTheMethodsAndTheSelection() {
        TwoPolygons s;
        frmHarvAge none(s.gui.m, s.gui.host, {});
        QCOMPARE(none.windowTitle(), QString("Harvest Age"));
        auto* methods = child<QComboBox>(none, "cmbMethod");
        QCOMPARE(methods->count(), 11);
        QCOMPARE(methods->currentIndex(), 0);
        QCOMPARE(methods->itemText(10),
                 QString::fromUtf8("% below culmination mai (m³/ha/yr) (before culmination)"));
        QCOMPARE(child<QLabel>(none, "lblStatus")->text(),
                 QString("No polygons are selected\nPlease select one or more polygons and try "
                         "again"));
        none.show();
        child<QPushButton>(none, "cmdUpdateHar")->click();  // nothing to update: stays open
        QVERIFY(none.isVisible());

        frmHarvAge one(s.gui.m, s.gui.host, {1});
        QCOMPARE(child<QLabel>(one, "lblStatus")->text(),
                 QString("Polygon 'Beta' will be updated with the current Harvest Age Settings"));
        frmHarvAge two(s.gui.m, s.gui.host, {1, 0});
        QCOMPARE(child<QLabel>(two, "lblStatus")->text(),
                 QString("2 Polygons will be updated with the current Harvest Age Settings"));
    }

    void harvestAgeUpdatesTheSelectedTargets() {
        TwoPolygons s;
        s.gui.m.Settings.MINAGE = 95;  // worked out again by the update
        frmHarvAge screen(s.gui.m, s.gui.host, {0, 1});
        child<QComboBox>(screen, "cmbMethod")->setCurrentIndex(1);
        child<QLineEdit>(screen, "txtAmount")->setText("10");
        child<QCheckBox>(screen, "chkYld_1")->setChecked(false);
        child<QPushButton>(screen, "cmdUpdateHar")->click();
        QCOMPARE(screen.result(), int(QDialog::Accepted));
        QCOMPARE(s.poly(0).HAR, (Pair{95, -1}));  // culmination 80 + 10, held to the criteria
        QCOMPARE(s.poly(1).HAR, (Pair{-1, -1}));  // no volume: skipped

        frmHarvAge again(s.gui.m, s.gui.host, {0});
        child<QComboBox>(again, "cmbMethod")->setCurrentIndex(1);
        child<QLineEdit>(again, "txtAmount")->setText("10");
        child<QCheckBox>(again, "chkIgnor")->setChecked(true);
        child<QPushButton>(again, "cmdUpdateHar")->click();
        QCOMPARE(s.poly(0).HAR, (Pair{90, -1}));
    }

    void silvicultureStartsFromTheFirstSelectedPolygon() {
        TwoPolygons s;
        s.poly(1).SILVI = 1;
        s.poly(1).PCPERC = 30;
        frmSilvi screen(s.gui.m, s.gui.host, {1, 0});
        QCOMPARE(screen.windowTitle(), QString("Silviculture System"));
        QCOMPARE(child<QLabel>(screen, "lblStatus")->text(),
                 QString("2 Polygons will be updated with the current Silviculture Settings"));
        QVERIFY(child<QRadioButton>(screen, "optCutMeth_1")->isChecked());
        QCOMPARE(child<QLineEdit>(screen, "txtPC_0")->text(), QString("30"));
        QCOMPARE(child<QLineEdit>(screen, "txtPC_1")->text(), QString("[20]"));
        QVERIFY(child<QLineEdit>(screen, "txtPC_0")->isEnabled());
        child<QRadioButton>(screen, "optCutMeth_0")->click();
        QVERIFY(!child<QLineEdit>(screen, "txtPC_0")->isEnabled());
        QVERIFY(!child<QLineEdit>(screen, "txtPC_1")->isEnabled());

        frmSilvi none(s.gui.m, s.gui.host, {});
        QVERIFY(child<QRadioButton>(none, "optCutMeth_0")->isChecked());
        QCOMPARE(child<QLineEdit>(none, "txtPC_0")->text(), QString("[25]"));
    }

    void partialCutClampsItsFieldsAndRefusesWithoutVdyp() {
        TwoPolygons s;
        s.poly(0).MGNT = {1, 1};
        frmSilvi screen(s.gui.m, s.gui.host, {0, 1});
        activate(screen);
        child<QRadioButton>(screen, "optCutMeth_1")->click();
        typeAndLeave(screen, "txtPC_1", "5", "txtPC_0");
        QCOMPARE(child<QLineEdit>(screen, "txtPC_1")->text(), QString("10"));
        typeAndLeave(screen, "txtPC_0", "abc", "txtPC_1");
        QCOMPARE(child<QLineEdit>(screen, "txtPC_0")->text(), QString("[25]"));
        child<QPushButton>(screen, "cmdUpdatePC")->click();
        QCOMPARE(screen.result(), int(QDialog::Accepted));

        QCOMPARE(s.poly(0).SILVI, int16_t(1));
        QCOMPARE(s.poly(0).PCPERC, int16_t(-1));
        QCOMPARE(s.poly(0).PCNEXT, int16_t(10));
        QCOMPARE(s.poly(0).MGNT, (Pair{0, 0}));
        QCOMPARE(s.poly(1).SILVI, int16_t(0));  // VDYP not current: left as it was
        QCOMPARE(s.gui.shown().size(), std::size_t(1));
        QCOMPARE(s.gui.shown()[0].title, std::string("No VDYP Avaliable?"));
        QVERIFY(s.gui.prompt.script.showed("Partial cut will not be used on these polygons"));
        QVERIFY(s.gui.prompt.script.showed("Beta"));
    }
};

QTEST_MAIN(FrmHarvAgeTest)
#include "frm_harv_age_test.moc"
