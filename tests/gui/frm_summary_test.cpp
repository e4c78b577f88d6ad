// The summary screen over the bundled sample project (15 polygons; 93B045 102 under partial
// cut, 93B045 107 non commercial), driven by control names.

#include <QAction>
#include <QClipboard>
#include <QComboBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>
#include <QTreeWidget>
#include <QtTest>

#include "frame/project_open.hpp"
#include "frame/startup.hpp"
#include "gui_fixture.hpp"
#include "modal_driver.hpp"
#include "ui/frm_arbo.hpp"
#include "ui/frm_summary.hpp"

using namespace arborex;

namespace {

const std::string kSample = std::string(ARBOREX_SOURCE_DIR) + "/samples/sample.arx";

struct SummaryScreen {
    test::GuiHost gui;
    std::unique_ptr<frmSummary> screen;

    SummaryScreen() {
        programDefaults(gui.m);
        gui.m.Paths[ArborexFolder] = std::string(ARBOREX_SOURCE_DIR) + "/data/";
        LoadReferenceData(gui.m, gui.host);
        if (!LoadARX(gui.m, gui.host, kSample)) qFatal("the project does not load");
        screen = std::make_unique<frmSummary>(gui.m, gui.host);
    }
    template <typename T>
    T* child(const QString& name) {
        T* found = screen->findChild<T*>(name);
        if (!found) qFatal("no control %s", qPrintable(name));
        return found;
    }
    QTreeWidget* list() { return child<QTreeWidget>("lsvSum"); }
    QTreeWidgetItem* row(int r) { return list()->topLevelItem(r); }
    QString key(int r) { return row(r)->data(0, Qt::UserRole).toString(); }
    // The rows' keys that are selected, in the list's order.
    QStringList selectedKeys() {
        QStringList keys;
        for (int r = 0; r < list()->topLevelItemCount(); ++r)
            if (row(r)->isSelected()) keys << key(r);
        return keys;
    }
    void select(std::initializer_list<int> rows) {
        list()->clearSelection();
        for (const int r : rows) row(r)->setSelected(true);
    }
    int rowOf(const QString& name) {
        for (int r = 0; r < list()->topLevelItemCount(); ++r)
            if (row(r)->text(0) == name) return r;
        qFatal("no row %s", qPrintable(name));
    }
};

}  // namespace

class FrmSummaryTest : public QObject {
    Q_OBJECT
private slots:
    void showsEveryPolygonAndTheTotal() {
        SummaryScreen s;
        QCOMPARE(s.screen->windowTitle(), QString("Summary - sample"));
        QTreeWidget* list = s.list();
        QCOMPARE(list->columnCount(), 13);
        QCOMPARE(list->headerItem()->text(5), QString("E Vol (m\u00b3/ha)"));
        // The set widths (1440 twips for the name, 720 and 960 for the others) are the least;
        // a caption or cell that needs more widens its column.
        QVERIFY(list->columnWidth(0) >= 96);
        QVERIFY(list->columnWidth(1) >= 48);
        QVERIFY(list->columnWidth(4) >= 64);
        for (int c = 0; c < list->columnCount(); ++c)
            QVERIFY(list->columnWidth(c) >= list->header()->sectionSizeHint(c));
        QCOMPARE(list->topLevelItemCount(), 16);
        QCOMPARE(s.key(1), QString("PG1"));
        QCOMPARE(s.row(1)->text(7), QString("PC"));
        QTreeWidgetItem* total = s.row(15);
        QCOMPARE(s.key(15), QString("TOTAL"));
        QCOMPARE(total->text(1), QString("375.5"));
        QVERIFY(total->font(0).bold());
        QCOMPARE(total->foreground(0).color(), QColor(255, 0, 0));
        QCOMPARE(s.child<QPushButton>("cmdSilvi")->text(), QString("&Silviculture System"));
        QCOMPARE(s.child<QAction>("mnuCopyTable")->text(), QString("&Copy Table"));
        QCOMPARE(s.child<QAction>("mnuSelectAll")->text(), QString("Select &All"));
    }

    void sortingKeepsThePolygonsAndTheTotalStaysLast() {
        SummaryScreen s;
        s.list()->header()->sectionClicked(1);  // by area, smallest first
        QCOMPARE(s.row(0)->text(1), QString("4.1"));
        QCOMPARE(s.key(0), QString("PG13"));
        QCOMPARE(s.row(14)->text(1), QString("58.8"));  // numbers, not text: 58.8 after 9.6
        QCOMPARE(s.key(15), QString("TOTAL"));
        s.list()->header()->sectionClicked(1);  // and back
        QCOMPARE(s.key(0), QString("PG14"));
        QCOMPARE(s.key(15), QString("TOTAL"));
        s.select({0, 1});
        QCOMPARE(s.screen->selection(), (std::vector<int16_t>{14, 4}));
    }

    void selectionSurvivesTheListShownAgainUnlessRowsChanged() {
        SummaryScreen s;
        s.select({2, 5});
        s.screen->SaveSelected();
        s.screen->ShowSummary();
        QVERIFY(s.selectedKeys().isEmpty());
        s.screen->ShowSelected();
        QCOMPARE(s.selectedKeys(), (QStringList{"PG2", "PG5"}));

        s.screen->SaveSelected();
        s.gui.m.PolyC[7].DELETE = 1;
        s.screen->ShowSummary();
        s.screen->ShowSelected();
        QCOMPARE(s.list()->topLevelItemCount(), 15);
        QVERIFY(s.selectedKeys().isEmpty());
        QCOMPARE(s.key(7), QString("PG8"));  // the key keeps the polygon's own index
    }

    void selectAllTakesTheTotalRowTooButOnlyPolygonsCount() {
        SummaryScreen s;
        s.child<QAction>("mnuSelectAll")->trigger();
        QCOMPARE(s.selectedKeys().size(), 16);
        QCOMPARE(s.screen->selection().size(), std::size_t{15});
    }

    void harvestAgesActOnTheSelectionAndTheListFollows() {
        SummaryScreen s;
        s.select({0, 2});
        test::whenModalShown([](QWidget* modal) {
            QCOMPARE(modal->objectName(), QString("frmHarvAge"));
            modal->findChild<QComboBox*>("cmbMethod")->setCurrentIndex(7);  // "This Age"
            modal->findChild<QLineEdit*>("txtAmount")->setText("100");
            modal->findChild<QPushButton*>("cmdUpdateHar")->click();
        });
        s.child<QPushButton>("cmdHarvAges")->click();
        QCOMPARE(s.row(0)->text(4), QString("100"));
        QCOMPARE(s.row(0)->text(8), QString("100"));
        QCOMPARE(s.row(1)->text(4), QString("[115] "));  // not selected
        QCOMPARE(s.row(2)->text(4), QString("100"));
        QCOMPARE(s.selectedKeys(), (QStringList{"PG0", "PG2"}));
    }

    void silvicultureActsOnTheSelection() {
        SummaryScreen s;
        s.select({0});
        test::whenModalShown([](QWidget* modal) {
            QCOMPARE(modal->objectName(), QString("frmSilvi"));
            modal->findChild<QRadioButton*>("optCutMeth_1")->click();  // "Partial Cut"
            modal->findChild<QPushButton*>("cmdUpdatePC")->click();
        });
        s.child<QAction>("mnuSilvi")->trigger();
        QCOMPARE(s.row(0)->text(7), QString("PC"));
        QCOMPARE(s.row(0)->text(11), QString("[20]"));
        QCOMPARE(s.row(2)->text(7), QString("TIPSY"));
        QCOMPARE(s.selectedKeys(), QStringList{"PG0"});
    }

    void harvestParametersRecomputeTheCalculatedAges() {
        SummaryScreen s;
        test::whenModalShown([](QWidget* modal) {
            modal->findChild<QLineEdit*>("txtCutVar_0")->setText("130");  // minimum age
            modal->findChild<QPushButton*>("cmdDone")->click();
        });
        s.child<QPushButton>("cmdHarvParam")->click();
        QCOMPARE(s.gui.m.Settings.MINAGE, int16_t{130});
        QCOMPARE(s.row(0)->text(4), QString("[130] "));
    }

    void copyTableAndSaveGoThroughTheirMenus() {
        SummaryScreen s;
        s.child<QAction>("mnuCopyTable")->trigger();
        const QString text = QGuiApplication::clipboard()->text();
        QVERIFY(text.startsWith("Summary - "));
        QVERIFY(text.contains("\r\nTOTAL\t375.5\t\tAvg.\t"));
        QSignalSpy save(s.screen.get(), &frmSummary::saveRequested);
        QSignalSpy saveAs(s.screen.get(), &frmSummary::saveAsRequested);
        s.child<QAction>("mnuSave")->trigger();
        s.child<QAction>("mnuSaveAs")->trigger();
        QCOMPARE(save.count(), 1);
        QCOMPARE(saveAs.count(), 1);
    }

    void theMainScreensSummaryViewOpensOnce() {
        SummaryScreen s;
        frmArbo main(s.gui.m, s.gui.host);
        auto* button = main.findChild<QPushButton*>("cmdView_3");
        QVERIFY(button->isEnabled());
        button->click();
        button->click();
        const auto screens = main.findChildren<frmSummary*>();
        QCOMPARE(screens.size(), 1);
        QVERIFY(screens.first()->isVisible());
        QVERIFY(!screens.first()->isModal());
    }
};

QTEST_MAIN(FrmSummaryTest)
#include "frm_summary_test.moc"
