#include <QAction>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QtTest>
#include <filesystem>

#include "frame/startup.hpp"
#include "gui_fixture.hpp"
#include "modal_driver.hpp"
#include "model/polygon_lifecycle.hpp"
#include "model/project_file.hpp"
#include "model/species_binding.hpp"
#include "support/test_install.hpp"
#include "ui/frm_arbo.hpp"
#include "ui/frm_polygon.hpp"

using namespace arborex;

namespace {

// A project of `count` polygons P1, P2, ... over the installed reference data: each one a
// natural stand of 50 ha with two VDYP species, its curves current. The last one was on screen
// when the screen was last open.
struct PolygonScreen {
    test::GuiHost gui;
    std::unique_ptr<frmPolygon> screen;

    explicit PolygonScreen(int count = 3) {
        gui.installEmptyProject();
        gui.m.Settings.REGENDELAY = 20;
        for (int i = 1; i <= count; ++i) {
            PolyData data;
            PolyCalc calc;
            PolyMgmt mgmt;
            projectFollowingPolygon(data, calc, mgmt);
            data.NAME = "P" + std::to_string(i);
            data.AREA = 50.0f;
            data.VS[0] = "PL";
            data.VS[1] = "SX";
            data.VP = {70, 30, 0, 0, 0, 0};
            data.YIELDSTATE = {3, 3};
            calc.VX = {1, 1, 1, 1, 1, 1};
            appendPolygon(gui.m, data, calc, mgmt);
        }
        findSpecIDX(gui.m);
        gui.m.CurPoly = static_cast<int16_t>(count - 1);
    }
    PolyData& poly(int p) { return gui.m.Poly[static_cast<std::size_t>(p)]; }
    void open() {
        screen = std::make_unique<frmPolygon>(gui.m, gui.host);
        screen->show();
        activate();
    }
    // Gives the screen the focus again (after a box), so that fields can be entered and left.
    void activate() {
        screen->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(screen.get()));
    }
    template <typename T = QLineEdit>
    T* child(const QString& name) {
        T* found = screen->findChild<T*>(name);
        if (!found) qFatal("no control %s", qPrintable(name));
        return found;
    }
    QString text(const QString& name) { return child(name)->text(); }
    QListWidget* list() { return child<QListWidget>("lstMapPoly"); }
    QStringList rows() {
        QStringList texts;
        for (int i = 0; i < list()->count(); ++i) texts << list()->item(i)->text();
        return texts;
    }
    // Types into a field as a user would (focus, all selected, replaced), and leaves it for the
    // next field.
    void enter(const QString& name, const QString& typed, const QString& next = "txtPData_1") {
        QLineEdit* edit = child(name);
        edit->setFocus(Qt::TabFocusReason);
        QCoreApplication::processEvents();  // the select-all on focus
        QTest::keyClicks(edit, typed);
        if (typed.isEmpty()) QTest::keyClick(edit, Qt::Key_Delete);
        child(next)->setFocus(Qt::TabFocusReason);
    }
    void trigger(const char* action) { child<QAction>(action)->trigger(); }
};

}  // namespace

class FrmPolygonTest : public QObject {
    Q_OBJECT
private slots:
    void opensOnThePolygonLastShownWithTheModelsValues() {
        PolygonScreen s;
        s.open();
        QCOMPARE(
            s.screen->windowTitle(),
            QString("Polygon Data - ") + QString::fromStdString(s.gui.m.Files[FileDisplayName]));
        QCOMPARE(s.rows(), QStringList({"P1", "P2", "P3"}));
        QCOMPARE(s.list()->currentRow(), 2);
        QCOMPARE(s.gui.m.CurPoly, int16_t{2});
        QCOMPARE(s.text("txtPData_0"), QString("50.0"));
        QCOMPARE(s.text("txtPData_3"), QString("[20]"));
        QCOMPARE(s.text("txtVSpec_0"), QString("PL"));
        QCOMPARE(s.child<QComboBox>("lstVSpec_1")->currentIndex(), int{s.poly(2).VSIDX[1]});
        QCOMPARE(s.child<QLabel>("lblVPerSum")->text(), QString("100"));
        QCOMPARE(s.child<QLabel>("lblCommThin")->text(), QString("Disabled"));
        // Both managements have a curve to view, and the treatments apply to any polygon.
        for (const char* name : {"cmdYield_0", "cmdYield_1", "cmdCT", "cmdFert"})
            QVERIFY(s.child<QPushButton>(name)->isEnabled());
    }

    // A field is stored as it is left, and then shows what the model holds.
    void fieldsCommitOnLeavingAndTheBracketsRoundTrip() {
        PolygonScreen s;
        s.open();
        s.enter("txtPData_0", "12.34");
        QCOMPARE(s.poly(2).AREA, 12.3f);
        QCOMPARE(s.text("txtPData_0"), QString("12.3"));

        // Leaving "[20]" keeps the project's setting; a number is the polygon's own; clearing
        // the field gives the setting back.
        const int16_t& delay = s.gui.m.PolyC[2].REGENDELAY;
        s.enter("txtPData_3", "[20]");
        QCOMPARE(delay, int16_t{-1});
        s.enter("txtPData_3", "5");
        QCOMPARE(delay, int16_t{5});
        QCOMPARE(s.text("txtPData_3"), QString("5"));
        s.enter("txtPData_3", "");
        QCOMPARE(delay, int16_t{-1});
        QCOMPARE(s.text("txtPData_3"), QString("[20]"));

        // A species percent off 100 shows the sum in the error colour.
        s.enter("txtVPer_0", "60");
        QCOMPARE(s.poly(2).VP[0], int16_t{60});
        QCOMPARE(s.child<QLabel>("lblVPerSum")->text(), QString("90"));
        QVERIFY(s.child<QLabel>("lblVPerSum")->styleSheet().contains("255, 0, 0"));

        // A typed code binds its species, shown in the list beside it; an unknown code is kept
        // without a species.
        s.enter("txtVSpec_2", "at");
        QCOMPARE(s.poly(2).VS[2].str(), std::string("AT"));
        QVERIFY(s.poly(2).VSIDX[2] > 0);
        QCOMPARE(s.child<QComboBox>("lstVSpec_2")->currentIndex(), int{s.poly(2).VSIDX[2]});
        s.enter("txtVSpec_3", "zz");
        QCOMPARE(s.poly(2).VS[3].str(), std::string("ZZ"));
        QCOMPARE(s.poly(2).VSIDX[3], int16_t{0});
        QVERIFY(s.gui.prompt.script.failures.empty());

        // LoseLastFocus commits the field still being typed in.
        QLineEdit* age = s.child("txtPData_1");
        age->setFocus(Qt::TabFocusReason);
        QTest::keyClicks(age, "77");
        s.screen->LoseLastFocus();
        QCOMPARE(s.poly(2).AGE, int16_t{77});
    }

    void helpFollowsTheFocus() {
        PolygonScreen s;
        s.open();
        s.child("txtPData_0")->setFocus(Qt::TabFocusReason);
        QCOMPARE(s.gui.m.HelpTag, std::string("&AREA"));
        QVERIFY(s.child<QPlainTextEdit>("txtHelp")->toPlainText().startsWith("Net area"));
        s.child("txtHar_1")->setFocus(Qt::TabFocusReason);
        QCOMPARE(s.gui.m.HelpTag, std::string("&HARAGE"));
        QTest::mouseDClick(s.child("txtHar_1"), Qt::LeftButton);
        QVERIFY(s.screen->findChild<QDialog*>("frmHelp")->isVisible());
    }

    // Leaving a polygon asks about its changes: No restores every field, species rows
    // included; Yes keeps them and marks the curves they make stale.
    void keepChangesNoRestoresYesKeeps() {
        PolygonScreen s;
        s.open();
        const PolyData before = s.poly(2);
        s.enter("txtVData_0", "21.5");
        s.enter("txtVPer_1", "20");
        s.enter("txtVSpec_1", "FD");
        s.gui.answers().push_back(Answer::No);
        s.list()->setCurrentRow(0);
        QCOMPARE(s.gui.shown().back().title, std::string("Keep Changes?"));
        QVERIFY(s.gui.shown().back().text.find("Site Index") != std::string::npos);
        QCOMPARE(s.poly(2).VSITEINDEX, before.VSITEINDEX);
        QCOMPARE(s.poly(2).VP, before.VP);
        QCOMPARE(s.poly(2).VS, before.VS);
        QCOMPARE(s.poly(2).VSIDX, before.VSIDX);
        QCOMPARE(s.gui.m.CurPoly, int16_t{0});

        s.enter("txtVData_0", "21.5");
        s.gui.answers().push_back(Answer::Yes);
        s.list()->setCurrentRow(1);
        QCOMPARE(s.poly(0).VSITEINDEX, 21.5f);
        QCOMPARE(s.poly(0).YIELDSTATE[0], int16_t{1});
        QCOMPARE(s.rows().first(), QString("*P1"));
        // Nothing changed on P2: no question.
        const std::size_t boxes = s.gui.shown().size();
        s.list()->setCurrentRow(2);
        QCOMPARE(s.gui.shown().size(), boxes);
    }

    void addDuplicateRenameDeleteUndelete() {
        PolygonScreen s;
        s.open();
        // A name that is taken is refused and shows the polygon that holds it.
        test::whenModalShown([&s](QWidget* add) {
            add->findChild<QLineEdit*>("txtPoly")->setText(" p1 ");
            add->findChild<QPushButton*>("cmdAdd")->click();
            QVERIFY(add->isVisible());
            add->findChild<QLineEdit*>("txtPoly")->setText("New");
            add->findChild<QPushButton*>("cmdAdd")->click();
        });
        s.trigger("mniAddPoly");
        QCOMPARE(s.gui.shown().back().text, refusalText(s.gui.m, PolygonRefusal::Duplicate, false));
        QCOMPARE(s.gui.m.LastPoly, int16_t{3});
        QCOMPARE(s.poly(3).NAME.str(), std::string("New"));
        QCOMPARE(s.list()->currentItem()->text(), QString("*New"));  // no curves yet
        QCOMPARE(s.gui.m.CurPoly, int16_t{3});

        s.gui.prompt.script.inputs.push_back(std::string("P2"));
        s.trigger("mniRenPoly");
        QCOMPARE(s.gui.shown().back().text, refusalText(s.gui.m, PolygonRefusal::Duplicate, true));
        s.gui.prompt.script.inputs.push_back(std::string("Renamed"));
        s.trigger("mniRenPoly");
        QCOMPARE(s.poly(3).NAME.str(), std::string("Renamed"));
        QCOMPARE(s.list()->currentItem()->text(), QString("*Renamed"));

        s.list()->setCurrentRow(1);
        QTest::mouseClick(s.child<QPushButton>("cmdPoly_1"), Qt::LeftButton);
        QCOMPARE(s.gui.m.PolyC[1].DELETE, int16_t{1});
        QCOMPARE(s.rows(), QStringList({"P1", "P3", "*Renamed"}));
        QCOMPARE(s.gui.m.CurPoly, int16_t{2});  // the next row takes the selection

        test::whenModalShown([](QWidget* undelete) {
            auto* deleted = undelete->findChild<QListWidget*>("lstDeleted");
            QCOMPARE(deleted->count(), 1);
            deleted->item(0)->setSelected(true);
            undelete->findChild<QPushButton*>("cmdUndelete")->click();
            QCOMPARE(deleted->count(), 0);
            undelete->findChild<QPushButton*>("cmdOk")->click();
        });
        s.trigger("mniUndelete");
        QCOMPARE(s.rows(), QStringList({"P1", "P2", "P3", "*Renamed"}));
    }

    // A blank name is refused; a polygon chosen in the list is copied, curves and all.
    void addACopyOfAPolygon() {
        PolygonScreen s(2);
        s.poly(0).VSITEINDEX = 17.5f;
        s.open();
        test::whenModalShown([&s](QWidget* add) {
            add->findChild<QPushButton*>("cmdAdd")->click();
            QCOMPARE(s.gui.shown().back().text,
                     refusalText(s.gui.m, PolygonRefusal::BlankName, false));
            add->findChild<QLineEdit*>("txtPoly")->setText("Copy");
            add->findChild<QListWidget*>("lstDefaults")->item(0)->setSelected(true);
            add->findChild<QPushButton*>("cmdAdd")->click();
        });
        s.trigger("mniAddPoly");
        QCOMPARE(s.rows(), QStringList({"P1", "P2", "Copy"}));  // its curves are current
        QCOMPARE(s.poly(2).VSITEINDEX, 17.5f);
        QCOMPARE(s.text("txtVData_0"), QString("17.5"));
    }

    // Deleting the only row leaves an empty list, nothing on screen and the fields locked.
    void deletingTheOnlyPolygon() {
        PolygonScreen s(1);
        s.open();
        s.trigger("mniDelPoly");
        QCOMPARE(s.list()->count(), 0);
        QCOMPARE(s.gui.m.CurPoly, int16_t{-1});
        QVERIFY(s.text("txtPData_0").isEmpty());
        QVERIFY(!s.child<QAction>("mniDelPoly")->isEnabled());
    }

    void splitAsksThenCutsLargePolygons() {
        PolygonScreen s(1);
        s.open();
        s.gui.answers().push_back(Answer::Ok);
        s.gui.prompt.script.inputs = {std::string("20"), std::string("15")};
        s.trigger("mnuSplit");
        QCOMPARE(s.gui.shown().front().title, std::string("Press CANCEL and use new feature"));
        QCOMPARE(s.rows(), QStringList({"P1", "P1a", "P1b"}));
        QCOMPARE(s.poly(0).AREA, 20.0f);
    }

    // A project of no polygons opens with every field locked, until the first is added.
    void noPolygonLocksEveryField() {
        PolygonScreen s(0);
        s.open();
        QCOMPARE(s.gui.m.CurPoly, int16_t{-1});
        QLineEdit* area = s.child("txtPData_0");
        area->setFocus(Qt::TabFocusReason);
        QTest::keyClicks(area, "12");
        QVERIFY(area->text().isEmpty());
        QVERIFY(!s.child<QComboBox>("lstPData_0")->isEnabled());
        QVERIFY(!s.child<QPushButton>("cmdPoly_1")->isEnabled());

        test::whenModalShown([](QWidget* add) {
            add->findChild<QLineEdit*>("txtPoly")->setText("First");
            add->findChild<QPushButton*>("cmdAdd")->click();
        });
        QTest::mouseClick(s.child<QPushButton>("cmdPoly_0"), Qt::LeftButton);
        QCOMPARE(s.gui.m.CurPoly, int16_t{0});
        QVERIFY(s.child<QComboBox>("lstPData_0")->isEnabled());
        s.activate();
        s.enter("txtPData_0", "12");
        QCOMPARE(s.poly(0).AREA, 12.0f);
    }

    void psyuLookupAndSavingTheDefault() {
        PolygonScreen s;
        s.open();
        test::whenModalShown([](QWidget* lookup) {
            auto* list = lookup->findChild<QListWidget*>("lstPSYU");
            list->setCurrentRow(1);
            lookup->findChild<QPushButton*>("cmdDone")->click();
        });
        QTest::mouseClick(s.child<QPushButton>("cmdPSYULookup"), Qt::LeftButton);
        QCOMPARE(s.poly(2).PSYU, int16_t{102});
        QCOMPARE(s.text("txtVData_4"), QString("102"));
        QCOMPARE(s.child<QLabel>("lblPSYUName")->text(), QString("Quadra"));

        s.trigger("mniSaveDefault");
        QCOMPARE(s.child<QPlainTextEdit>("txtHelp")->toPlainText(),
                 QString("Current polygon saved as default"));
        QCOMPARE(s.gui.m.DefaultPoly.PSYU, int16_t{102});
        QVERIFY(std::filesystem::exists(s.gui.m.Paths[UserDocuments] + "DEFAULT.DEF"));
    }

    // Below the first user level changes are kept without a question.
    void userLevelZeroKeepsWithoutAsking() {
        PolygonScreen s;
        s.gui.m.Settings.USERLEVEL = 0;
        s.open();
        s.enter("txtTData_0", "2000");
        s.list()->setCurrentRow(0);
        QVERIFY(s.gui.shown().empty());
        QCOMPARE(s.poly(2).DENSITY, 2000);
        QCOMPARE(s.poly(2).YIELDSTATE[1], int16_t{1});
    }

    // From the main screen: Polygon Data opens even for an empty project, and a purge there
    // rebuilds the open screen's list.
    void openedFromTheMainScreenFollowsAPurge() {
        PolygonScreen s;
        frmArbo main(s.gui.m, s.gui.host);
        s.gui.views.setMainScreen(&main);
        auto* button = main.findChild<QPushButton*>("cmdView_1");
        QVERIFY(button->isEnabled());
        QTest::mouseClick(button, Qt::LeftButton);
        auto* screen = main.findChild<frmPolygon*>("frmPolygon");
        QVERIFY(screen && screen->isVisible());
        auto* list = screen->findChild<QListWidget*>("lstMapPoly");
        list->setCurrentRow(0);
        screen->mniDelPoly_Click();
        QCOMPARE(list->count(), 2);
        main.findChild<QAction*>("mnuPurge")->trigger();
        QCOMPARE(s.gui.m.LastPoly, int16_t{1});
        QCOMPARE(list->item(0)->data(Qt::UserRole).toInt(), 0);
        QCOMPARE(list->item(0)->text(), QString("P2"));
        QCOMPARE(s.gui.m.Poly[static_cast<std::size_t>(s.gui.m.CurPoly)].NAME.str(),
                 list->currentItem()->text().toStdString());
        screen->close();
    }

    // A project opened or begun on the main screen replaces the open screen's list.
    void aNewOrOpenedProjectReplacesTheList() {
        PolygonScreen s;
        const std::string path = s.gui.dir.file("three.arx");
        SaveArx(s.gui.m, s.gui.host, path, kCurrentFileVersion, false);
        frmArbo main(s.gui.m, s.gui.host);
        s.gui.views.setMainScreen(&main);
        main.view(1);
        auto* screen = main.findChild<frmPolygon*>("frmPolygon");
        auto* list = screen->findChild<QListWidget*>("lstMapPoly");

        s.gui.answers().push_back(Answer::Ok);
        main.findChild<QAction*>("mniNew")->trigger();
        QCOMPARE(list->count(), 0);
        QCOMPARE(s.gui.m.CurPoly, int16_t{-1});
        QVERIFY(screen->findChild<QLineEdit*>("txtPData_0")->text().isEmpty());

        s.gui.prompt.script.files.push_back(FileChoice{path, 1});
        main.findChild<QAction*>("mniOpen")->trigger();
        QCOMPARE(list->count(), 3);
        QCOMPARE(list->currentItem()->text(), QString("P3"));
        QCOMPARE(screen->findChild<QLineEdit*>("txtPData_0")->text(), QString("50.0"));
        QVERIFY(screen->windowTitle().endsWith("three"));
        screen->close();
    }
};

QTEST_MAIN(FrmPolygonTest)
#include "frm_polygon_test.moc"
