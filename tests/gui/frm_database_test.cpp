#include <QAction>
#include <QComboBox>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTreeWidget>
#include <QtTest>
#include <fstream>

#include "gui_fixture.hpp"
#include "modal_driver.hpp"
#include "ui/frm_database.hpp"

using namespace arborex;

namespace {

struct FakeTable {
    std::string name;
    std::vector<std::string> fields;
    std::vector<TableReader::Record> records;
};

// The tables of one file, handed out as a database driver would.
class FakeReader final : public TableReader {
public:
    std::vector<FakeTable> content;
    std::string refusal;  // when set, every read fails with this sentence

    std::vector<std::string> tables(const std::string&) override {
        refuseWhenAsked();
        std::vector<std::string> names;
        for (const FakeTable& table : content) names.push_back(table.name);
        return names;
    }
    std::vector<std::string> fields(const std::string&, const std::string& table) override {
        refuseWhenAsked();
        return find(table).fields;
    }
    void readRecords(const std::string&, const std::string& table,
                     const std::function<bool(const Record&, double)>& each) override {
        refuseWhenAsked();
        const FakeTable& t = find(table);
        for (std::size_t r = 0; r < t.records.size(); ++r)
            if (!each(t.records[r], static_cast<double>(r + 1) / t.records.size())) return;
    }

private:
    void refuseWhenAsked() const {
        if (!refusal.empty()) throw TableReadError(refusal);
    }
    const FakeTable& find(const std::string& table) const {
        for (const FakeTable& t : content)
            if (t.name == table) return t;
        throw TableReadError("no table " + table);
    }
};

// An inventory extract in the provincial layout: the map sheet is found by name, area and site
// index by their alternate keys, the polygon number and height only by the user's choice.
FakeTable inventory() {
    return {
        "Layers$",
        {"MAP_ID", "POLYGON_NUMBER", "POLYGON_AREA", "SITE_INDEX", "EST_HEIGHT_SPP1"},
        {{"093A012", "17", "12.5", "18.2", "21"}, {"093A012", "18", "3.25", std::nullopt, "9"}}};
}

struct DatabaseScreen {
    test::GuiHost gui;
    FakeReader reader;
    std::string path;
    std::unique_ptr<frmDatabase> screen;

    DatabaseScreen() {
        gui.installEmptyProject();
        path = gui.dir.file("inventory.xlsx");
        std::ofstream(path) << "";
        reader.content = {inventory()};
    }
    void open() { screen = std::make_unique<frmDatabase>(gui.m, gui.host, reader, path); }
    QTreeWidget* list() { return screen->findChild<QTreeWidget*>("lsvColumns"); }
    QStringList row(int r) {
        QTreeWidgetItem* item = list()->topLevelItem(r);
        return {item->text(0), item->text(1), item->text(2)};
    }
    QComboBox* chooser(int unmatched) {
        return screen->findChild<QComboBox*>(QString("cmbMap_%1").arg(unmatched));
    }
    void choose(int unmatched, const char* key) {
        QComboBox* box = chooser(unmatched);
        box->setCurrentIndex(box->findText(key));
    }
    // Runs "Import Data", answering nothing: no question is expected.
    void import() { screen->findChild<QPushButton*>("cmdImport")->click(); }
};

}  // namespace

class FrmDatabaseTest : public QObject {
    Q_OBJECT
private slots:
    // Matched variables first, in catalogue order, then each unmatched field with its chooser.
    void showsTheMatchingBeforeTheImport() {
        DatabaseScreen s;
        s.open();
        QVERIFY(s.screen->opened());
        QCOMPARE(s.screen->windowTitle(), "Database Importer: " + QString::fromStdString(s.path));
        QTreeWidgetItem* header = s.list()->headerItem();
        QCOMPARE(QStringList({header->text(0), header->text(1), header->text(2)}),
                 QStringList({"Arborex", "File", "Description"}));
        QCOMPARE(s.list()->topLevelItemCount(), 5);
        QCOMPARE(s.row(0), QStringList({"AREA", "POLYGON_AREA", "Net Polygon Area (#.# ha)"}));
        QCOMPARE(s.row(1),
                 QStringList({"VSITEINDEX", "SITE_INDEX", "VDYP, Site Index (#.# or {blank})"}));
        const char* unmatched[] = {"MAP_ID", "POLYGON_NUMBER", "EST_HEIGHT_SPP1"};
        for (int u = 0; u < 3; ++u) {
            QCOMPARE(s.row(2 + u),
                     QStringList({"", unmatched[u], "No Matching Arborex Variable found"}));
            QComboBox* box = s.chooser(u);
            QVERIFY(box);
            QCOMPARE(box->currentText(), QString());
            QCOMPARE(box->itemText(1), QString("NAME"));
            QCOMPARE(box->itemText(box->count() - 3), QString("MAPSHEET"));
            QCOMPARE(box->itemText(box->count() - 1), QString("MAPSTAND"));
        }
        QCOMPARE(s.screen->findChild<QProgressBar*>("barPercent")->value(), 0);
    }

    // "Show Advanced Columns" lists every variable, and a choice made before survives it.
    void advancedColumnsKeepTheChoices() {
        DatabaseScreen s;
        s.open();
        s.choose(1, "POLYGON");
        QAction* advanced = s.screen->findChild<QAction*>("mnuShowAdvanced");
        QCOMPARE(advanced->text(), QString("Show Advanced Columns"));
        advanced->trigger();
        QVERIFY(s.list()->topLevelItemCount() > 50);
        QCOMPARE(s.chooser(1)->currentText(), QString("POLYGON"));
        advanced->trigger();
        QCOMPARE(s.list()->topLevelItemCount(), 5);
        QCOMPARE(s.chooser(1)->currentText(), QString("POLYGON"));
    }

    // The polygon number and height mapped by hand: the names are map sheet and polygon
    // number, the height is set, and the choices come back on the next file of this header.
    void importsWithTheUsersMappingAndRemembersIt() {
        DatabaseScreen s;
        s.open();
        s.choose(1, "POLYGON");
        s.choose(2, "VHEIGHTTOTAL");
        s.import();
        QCOMPARE(s.screen->result(), int(QDialog::Accepted));
        QCOMPARE(s.screen->findChild<QProgressBar*>("barPercent")->value(), 100);
        QCOMPARE(int(s.gui.m.LastPoly), 1);
        QCOMPARE(s.gui.m.Poly[0].NAME.str(), std::string("93A012 17"));
        QCOMPARE(s.gui.m.Poly[0].AREA, 12.5f);
        QCOMPARE(s.gui.m.Poly[0].VSITEINDEX, 18.2f);
        QCOMPARE(s.gui.m.Poly[0].VHEIGHTTOTAL, int16_t(21));
        QCOMPARE(s.gui.m.Poly[1].NAME.str(), std::string("93A012 18"));
        QCOMPARE(s.gui.m.Poly[1].VHEIGHTTOTAL, int16_t(9));
        QCOMPARE(s.screen->run().counts.ImpAdded, 2);
        QVERIFY(s.gui.prompt.script.showed("Import Complete"));

        s.open();
        QCOMPARE(s.chooser(0)->currentText(), QString());
        QCOMPARE(s.chooser(1)->currentText(), QString("POLYGON"));
        QCOMPARE(s.chooser(2)->currentText(), QString("VHEIGHTTOTAL"));
    }

    // Without a name column the user is told, nothing changes, and the screen stays for a
    // choice; "Cancel (Don't Import)" then leaves without change.
    void noNameFieldKeepsTheScreen() {
        DatabaseScreen s;
        s.open();
        s.import();
        QVERIFY(s.gui.prompt.script.showed("No Name field exists, can't import"));
        QCOMPARE(int(s.gui.m.LastPoly), -1);
        QVERIFY(s.screen->findChild<QPushButton*>("cmdImport")->isEnabled());
        QAction* cancel = s.screen->findChild<QAction*>("mnuCancel");
        QCOMPARE(cancel->text(), QString("Cancel (Don't Import)"));
        cancel->trigger();
        QCOMPARE(s.screen->result(), int(QDialog::Rejected));
    }

    // Several tables: the user picks one by its name without "$"; Cancel opens nothing.
    void severalTablesAskWhichOne() {
        DatabaseScreen s;
        s.reader.content.push_back({"Owners$", {"NAME", "OWNERSHIP"}, {}});

        test::whenModalShown([](QWidget* modal) {
            QCOMPARE(modal->objectName(), QString("frmDBChoose"));
            QCOMPARE(modal->windowTitle(), QString("Choose Table to Import"));
            QVERIFY(modal->findChild<QLabel*>()->text() == "Table / Sheet to Import");
            modal->findChild<QPushButton*>("cmdCancel")->click();
        });
        s.open();
        QVERIFY(!s.screen->opened());
        QVERIFY(s.gui.shown().empty());

        test::whenModalShown([](QWidget* modal) {
            auto* table = modal->findChild<QComboBox*>("cmbTable");
            QCOMPARE(table->currentIndex(), 0);
            QCOMPARE(table->itemText(0), QString("Layers"));
            QCOMPARE(table->itemText(1), QString("Owners"));
            table->setCurrentIndex(1);
            modal->findChild<QPushButton*>("cmdDone")->click();
        });
        s.open();
        QVERIFY(s.screen->opened());
        QCOMPARE(s.row(0).at(1), QString("NAME"));
        QCOMPARE(s.row(1).at(1), QString("OWNERSHIP"));
    }

    // A file the reader refuses: its sentence goes to the user and the screen does not open.
    void aDamagedFileIsToldAndNotOpened() {
        DatabaseScreen s;
        s.reader.refusal = "The file is damaged or locked.";
        s.open();
        QVERIFY(!s.screen->opened());
        QVERIFY(s.gui.prompt.script.showed("The file is damaged or locked."));
    }
};

QTEST_MAIN(FrmDatabaseTest)
#include "frm_database_test.moc"
