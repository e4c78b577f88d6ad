// The data grid over the bundled sample project (15 polygons), driven by control names: cells
// typed through the floating editor, fill down, paste, paste table, advanced columns, export.

#include <QAction>
#include <QClipboard>
#include <QFile>
#include <QGuiApplication>
#include <QHeaderView>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTableView>
#include <QtTest>

#include "exchange/variable_catalogue.hpp"
#include "frame/project_open.hpp"
#include "frame/startup.hpp"
#include "gui_fixture.hpp"
#include "modal_driver.hpp"
#include "platform/gdal/gdal_table_reader.hpp"
#include "ui/frm_arbo.hpp"
#include "ui/frm_polygon.hpp"
#include "ui/frm_spreadsheet.hpp"
#include "ui/frm_spreadsheet_model.hpp"

using namespace arborex;

namespace {

const std::string kSample = std::string(ARBOREX_SOURCE_DIR) + "/samples/sample.arx";

// A dBase III table of text fields, 12 characters each, as an inventory program writes it.
void writeDbf(const std::string& path, const std::vector<std::string>& fields,
              const std::vector<std::vector<std::string>>& rows) {
    constexpr int kWidth = 12;
    auto word = [](QByteArray& out, int value, int bytes) {
        for (int i = 0; i < bytes; ++i) out += static_cast<char>((value >> (8 * i)) & 0xff);
    };
    QByteArray out;
    out += '\x03';
    out += QByteArray("\x7c\x0b\x18", 3);  // last changed 2024-11-24
    word(out, static_cast<int>(rows.size()), 4);
    word(out, 32 + 32 * static_cast<int>(fields.size()) + 1, 2);
    word(out, 1 + kWidth * static_cast<int>(fields.size()), 2);
    out += QByteArray(20, '\0');
    for (const std::string& field : fields) {
        QByteArray descriptor = QByteArray::fromStdString(field).leftJustified(11, '\0', true);
        descriptor += 'C';
        descriptor += QByteArray(4, '\0');
        descriptor += static_cast<char>(kWidth);
        descriptor += QByteArray(15, '\0');
        out += descriptor;
    }
    out += '\r';
    for (const auto& row : rows) {
        out += ' ';
        for (const std::string& cell : row)
            out += QByteArray::fromStdString(cell).leftJustified(kWidth, ' ', true);
    }
    out += '\x1a';
    QFile file(QString::fromStdString(path));
    if (!file.open(QIODevice::WriteOnly) || file.write(out) != out.size()) qFatal("no dbf");
}

struct GridScreen {
    test::GuiHost gui;
    std::unique_ptr<frmSpreadsheet> screen;

    explicit GridScreen(bool withSample = true, bool openGrid = true) {
        if (withSample) {
            programDefaults(gui.m);
            gui.m.Paths[ArborexFolder] = std::string(ARBOREX_SOURCE_DIR) + "/data/";
            LoadReferenceData(gui.m, gui.host);
            if (!LoadARX(gui.m, gui.host, kSample)) qFatal("the project does not load");
        } else {
            gui.installEmptyProject();
        }
        if (!openGrid) return;
        screen = std::make_unique<frmSpreadsheet>(gui.m, gui.host);
        screen->show();
        if (!QTest::qWaitForWindowActive(screen.get())) qFatal("the grid is not active");
    }
    template <typename T>
    T* child(const char* name) {
        T* found = screen->findChild<T*>(name);
        if (!found) qFatal("no control %s", name);
        return found;
    }
    QTableView* grd() { return child<QTableView>("grd"); }
    QLineEdit* txtEdit() { return child<QLineEdit>("txtEdit"); }
    void trigger(const char* menu) { child<QAction>(menu)->trigger(); }
    static int column(const char* key) { return findVariable(key); }
    // The text a cell shows, by polygon and key.
    QString cell(int polygon, const char* key) {
        return grd()->model()->index(polygon, column(key)).data().toString();
    }
    bool pink(int polygon, const char* key) {
        return grd()->model()->index(polygon, column(key)).data(Qt::BackgroundRole) ==
               QVariant(GridModel::WarnBack());
    }
    // Types into a cell as the user does: the first key opens the editor, Enter leaves it.
    void type(int polygon, const char* key, const QString& text) {
        grd()->setCurrentIndex(grd()->model()->index(polygon, column(key)));
        QTest::keyClicks(grd(), text.left(1));
        QVERIFY(txtEdit()->isVisible());
        QTest::keyClicks(txtEdit(), text.mid(1));
        QTest::keyClick(txtEdit(), Qt::Key_Return);
    }
    void select(int top, int bottom, const char* key) {
        QAbstractItemModel* model = grd()->model();
        grd()->setCurrentIndex(model->index(top, column(key)));
        grd()->selectionModel()->select(
            QItemSelection(model->index(top, column(key)), model->index(bottom, column(key))),
            QItemSelectionModel::ClearAndSelect);
    }
    void openEditor(int row, int column) { screen->openEditor(row, column); }
    const PolyData& poly(int p) { return gui.m.Poly[static_cast<std::size_t>(p)]; }
};

}  // namespace

class FrmSpreadsheetTest : public QObject {
    Q_OBJECT
private slots:
    void showsAPolygonARowUnderTheKeys() {
        GridScreen s;
        QCOMPARE(s.grd()->model()->rowCount(), 15);
        QCOMPARE(s.grd()->model()->columnCount(), 101);
        QCOMPARE(s.grd()->model()->headerData(1, Qt::Horizontal).toString(), QString("AREA"));
        QCOMPARE(s.grd()->model()->headerData(0, Qt::Vertical).toString(),
                 QString::fromLatin1(s.poly(0).NAME.str()).trimmed());
        QCOMPARE(s.child<QPushButton>("cmdDone")->text(), QString("Return to Polygon Data"));
    }

    void aProjectWithoutPolygonsShowsOnlyTheKeyRow() {
        GridScreen s(false);
        QCOMPARE(s.grd()->model()->rowCount(), 0);
        QCOMPARE(s.grd()->model()->headerData(0, Qt::Horizontal).toString(), QString("NAME"));
        QCOMPARE(s.grd()->model()->headerData(100, Qt::Horizontal).toString(),
                 QString("FStartYear"));
    }

    void aTypedValueIsStoredByTheRulesAndShownPink() {
        GridScreen s;
        s.type(0, "PCPERC", "75");
        QCOMPARE(s.poly(0).PCPERC, int16_t{50});
        QCOMPARE(s.cell(0, "PCPERC"), QString("50"));
        QVERIFY(s.pink(0, "PCPERC"));
        QVERIFY(!s.pink(0, "PCNEXT"));
        // Enter went one row down, with the editor on the next polygon's cell.
        QVERIFY(s.txtEdit()->isVisible());
        QCOMPARE(s.grd()->currentIndex().row(), 1);
        QVERIFY(s.gui.shown().empty());
    }

    void textInAUseSettingsFieldGivesTheSettingBack() {
        GridScreen s;
        s.trigger("mnuAdvanced");  // REGENDELAY is an advanced column
        s.type(2, "REGENDELAY", "soon");
        QCOMPARE(s.gui.m.PolyC[2].REGENDELAY, int16_t{-1});
        const QString shown = s.cell(2, "REGENDELAY");
        QVERIFY2(shown.startsWith("[") && shown.endsWith("]") && shown.size() > 2,
                 qPrintable(shown));
        QVERIFY(s.pink(2, "REGENDELAY"));
    }

    void aChangeOfCaseOnlyLeavesThePolygonAlone() {
        GridScreen s;
        const QString code = s.cell(0, "VS1");
        QVERIFY(!code.isEmpty());
        const auto states = s.poly(0).YIELDSTATE;
        s.type(0, "VS1", code.toLower());
        QCOMPARE(s.poly(0).YIELDSTATE, states);  // a stored species would mark VDYP stale
        QVERIFY(!s.pink(0, "VS1"));
        // A real change does store, and marks the curve.
        s.type(0, "VP1", "1");
        QVERIFY(s.pink(0, "VP1"));
        QCOMPARE(s.poly(0).YIELDSTATE[0], int16_t{1});
    }

    void theEditorsKeysMoveOverShownCellsOnly() {
        GridScreen s;
        const int age = GridScreen::column("AGE");
        s.openEditor(1, age);
        QTest::keyClicks(s.txtEdit(), "99");
        QTest::keyClick(s.txtEdit(), Qt::Key_Escape);  // the cell's text back
        QCOMPARE(s.txtEdit()->text(), s.cell(0, "AGE"));
        QTest::keyClick(s.txtEdit(), Qt::Key_Tab);
        QCOMPARE(s.grd()->currentIndex().column(), GridScreen::column("FIZ"));
        // Arrived by a move, the arrows go on moving; hidden columns are passed over.
        QTest::keyClick(s.txtEdit(), Qt::Key_Left);
        QTest::keyClick(s.txtEdit(), Qt::Key_Left);
        QTest::keyClick(s.txtEdit(), Qt::Key_Left);
        QCOMPARE(s.grd()->currentIndex().column(), GridScreen::column("OWNERSHIP"));
        QTest::keyClick(s.txtEdit(), Qt::Key_Up);
        QTest::keyClick(s.txtEdit(), Qt::Key_Up);  // never above the first polygon
        QCOMPARE(s.grd()->currentIndex().row(), 0);
        QTest::keyClick(s.txtEdit(), Qt::Key_End);
        QCOMPARE(s.grd()->currentIndex().row(), 14);
        QCOMPARE(s.grd()->currentIndex().column(), GridScreen::column("TP5"));  // the last shown
        QVERIFY(!s.pink(0, "AGE"));
        QCOMPARE(s.poly(0).AGE, s.cell(0, "AGE").toShort());
    }

    void anotherProjectIsNotEditedUnderTheOldRows() {
        GridScreen s;
        s.gui.m.Files[FileProject] = s.gui.dir.file("other.arx");  // opened meanwhile
        s.grd()->setCurrentIndex(s.grd()->model()->index(0, GridScreen::column("AGE")));
        QTest::keyClicks(s.grd(), "7");
        QVERIFY(!s.txtEdit()->isVisible());  // the rows were shown afresh instead
        QCOMPARE(s.poly(0).AGE, int16_t{85});
        s.type(0, "AGE", "70");
        QCOMPARE(s.poly(0).AGE, int16_t{70});
        // Closing with the editor open stores what it holds.
        QTest::keyClicks(s.txtEdit(), "66");
        s.child<QPushButton>("cmdDone")->click();
        QCOMPARE(s.poly(1).AGE, int16_t{66});
    }

    void fillDownCopiesTheFirstRowOverTheBlock() {
        GridScreen s;
        const QString below = s.cell(6, "AREA");
        s.select(3, 5, "AREA");
        const QString first = s.cell(3, "AREA");
        QVERIFY(s.cell(4, "AREA") != first || s.cell(5, "AREA") != first);
        s.trigger("mnuFillDown");
        for (int p = 3; p <= 5; ++p) {
            QCOMPARE(s.cell(p, "AREA"), first);
            QCOMPARE(s.poly(p).AREA, s.poly(3).AREA);
        }
        QCOMPARE(s.cell(6, "AREA"), below);
    }

    void pasteSetsCellsFromTheCurrentOneAndTellsRefusals() {
        GridScreen s;
        s.grd()->setCurrentIndex(s.grd()->model()->index(1, GridScreen::column("AGE")));
        QGuiApplication::clipboard()->setText("40\tC\r\n55\td\r\n60\tZ\r\n");
        s.trigger("mnuPaste");
        QCOMPARE(s.cell(1, "AGE"), QString("40"));
        QCOMPARE(s.cell(1, "FIZ"), QString("C"));
        QCOMPARE(s.cell(2, "AGE"), QString("55"));
        QCOMPARE(s.cell(2, "FIZ"), QString("D"));
        QCOMPARE(s.poly(3).AGE, int16_t{60});
        QVERIFY(s.gui.prompt.script.showed("FIZ not found: Z"));
        QCOMPARE(s.grd()->model()->rowCount(), 15);  // a paste makes no polygon
    }

    void pasteTableImportsNewPolygons() {
        GridScreen s;
        QGuiApplication::clipboard()->setText(
            "NAME\tAREA\tAGE\r\nNEW 1\t12.5\t30\r\nNEW 2\t3\t45\r\n");
        s.trigger("mnuPasteTable");
        QCOMPARE(s.gui.m.LastPoly, int16_t{16});
        QCOMPARE(s.grd()->model()->rowCount(), 17);
        QCOMPARE(s.grd()->model()->headerData(16, Qt::Vertical).toString(), QString("NEW 2"));
        QCOMPARE(s.cell(15, "AREA"), QString("12.5"));
        QVERIFY(s.gui.prompt.script.showed("Import Complete"));
    }

    void advancedColumnsComeAndGo() {
        GridScreen s;
        QTableView* grd = s.grd();
        QVERIFY(!grd->isColumnHidden(GridScreen::column("AREA")));
        QVERIFY(grd->isColumnHidden(GridScreen::column("DELETE")));
        QVERIFY(grd->isColumnHidden(GridScreen::column("SORT")));
        s.trigger("mnuAdvanced");
        QVERIFY(s.child<QAction>("mnuAdvanced")->isChecked());
        QVERIFY(!grd->isColumnHidden(GridScreen::column("DELETE")));
        QVERIFY(!grd->isColumnHidden(GridScreen::column("FStartYear")));
        QVERIFY(grd->isColumnHidden(GridScreen::column("SORT")));
        s.trigger("mnuAdvanced");
        QVERIFY(grd->isColumnHidden(GridScreen::column("DELETE")));
    }

    void exportWritesTheKeyRowFirst() {
        GridScreen s;
        const std::string path = s.gui.dir.file("grid.txt");
        s.gui.prompt.script.files.push_back(FileChoice{path, 1});
        s.trigger("mnuExport");
        const FileRequest& request = s.gui.prompt.fileRequests.back();
        QCOMPARE(QString::fromStdString(request.title), QString("Export as Text File"));
        QCOMPARE(QString::fromStdString(request.proposedName), QString("sample.txt"));
        QFile file(QString::fromStdString(path));
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QList<QByteArray> lines = file.readAll().split('\n');
        QVERIFY(lines[0].startsWith("NAME\tAREA\tDELETE\t\t\tOWNERSHIP\t"));
        QVERIFY(lines[0].endsWith("FStartYear\t\r"));
        QVERIFY(lines[1].startsWith(QByteArray(s.poly(0).NAME.str().c_str()).trimmed() + "\t"));
        QCOMPARE(lines.size(), 17);  // the key row, 15 polygons, the end

        // A second export over the file asks first; No leaves it.
        s.gui.prompt.script.files.push_back(FileChoice{path, 1});
        s.gui.answers().push_back(Answer::No);
        QFile::resize(QString::fromStdString(path), 0);
        s.trigger("mnuExport");
        QVERIFY(s.gui.prompt.script.showed("Overwrite existing file?"));
        QCOMPARE(QFileInfo(QString::fromStdString(path)).size(), 0);
    }

    void importReadsTheExportBackAndRefusesBadNames() {
        GridScreen s;
        const std::string path = s.gui.dir.file("grid.txt");
        s.gui.prompt.script.files.push_back(FileChoice{path, 1});
        s.trigger("mnuExport");
        s.type(0, "AGE", "7");
        QVERIFY(s.pink(0, "AGE"));

        // Every name is a duplicate: updated, the export's text gives the age back.
        s.gui.prompt.script.files.push_back(FileChoice{path, 1});
        s.gui.answers().push_back(Answer::Yes);
        s.trigger("mnuImport");
        const FileRequest& request = s.gui.prompt.fileRequests.back();
        QCOMPARE(QString::fromStdString(request.title), QString("Import Data File"));
        QVERIFY(QString::fromStdString(request.filter).endsWith("|Shapefile (*.shp)|*.shp"));
        QVERIFY(s.gui.prompt.script.showed("Update polygons?"));
        QVERIFY(s.gui.prompt.script.showed("15\tDuplicate Polygons Updated."));
        QCOMPARE(s.gui.m.LastPoly, int16_t{14});
        QCOMPARE(s.cell(0, "AGE"), QString("85"));
        QVERIFY(!s.pink(0, "AGE"));  // the grid was rebuilt

        s.gui.prompt.script.files.push_back(FileChoice{s.gui.dir.file("gone.txt"), 1});
        s.trigger("mnuImport");
        QCOMPARE(QString::fromStdString(s.gui.shown().back().text), QString("File Not Found"));
        const std::string longName = s.gui.dir.file("inventory.dbf");
        QFile(QString::fromStdString(longName)).open(QIODevice::WriteOnly);
        s.gui.prompt.script.files.push_back(FileChoice{longName, 1});
        s.trigger("mnuImport");
        QCOMPARE(QString::fromStdString(s.gui.shown().back().text),
                 QString("DBF filenames must be shorter then 8 chars"));
    }

    void aDatabaseTableComesInThroughTheImporter() {
        if (!tableReaderAvailable()) QSKIP("built without GDAL");
        GridScreen s;
        const std::string path = s.gui.dir.file("poly.dbf");
        writeDbf(path, {"NAME", "AREA", "SITE_INDEX"},
                 {{"DB 1", "12.5", "21.5"}, {"DB 2", "3", ""}});
        s.gui.prompt.script.files.push_back(FileChoice{path, 6});
        QString caption;
        test::whenModalShown([&caption](QWidget* importer) {
            caption = importer->windowTitle();
            importer->findChild<QPushButton*>("cmdImport")->click();
        });
        s.trigger("mnuImport");
        QCOMPARE(caption, "Database Importer: " + QString::fromStdString(path));
        QVERIFY(s.gui.prompt.script.showed("2\tPolygons Added."));
        QCOMPARE(s.grd()->model()->rowCount(), 17);  // the grid reloaded
        QCOMPARE(s.grd()->model()->headerData(15, Qt::Vertical).toString(), QString("DB 1"));
        QCOMPARE(s.cell(15, "AREA"), QString("12.5"));
        QCOMPARE(s.cell(15, "VSITEINDEX"), QString("21.5"));  // by its alternate key
    }

    void thePolygonScreenOpensTheGridAndHearsOfItsImports() {
        GridScreen s(true, false);
        frmArbo main(s.gui.m, s.gui.host);
        s.gui.views.setMainScreen(&main);
        main.view(1);
        frmPolygon* polygons = main.polygonScreen();
        auto* list = polygons->findChild<QListWidget*>("lstMapPoly");
        QCOMPARE(list->count(), 15);
        polygons->findChild<QAction*>("mnuDataGrid")->trigger();
        auto* grid = main.findChild<frmSpreadsheet*>();
        QVERIFY(grid && grid->isVisible());
        main.view(5);
        QCOMPARE(main.findChildren<frmSpreadsheet*>().size(), 1);  // brought up again

        QGuiApplication::clipboard()->setText("NAME\tAREA\r\nNEW 1\t2\r\n");
        grid->findChild<QAction*>("mnuPasteTable")->trigger();
        QCOMPARE(list->count(), 16);

        // The classic format from the polygon screen: ", " written, "," read.
        const std::string exported = s.gui.dir.file("classic.csv");
        s.gui.prompt.script.files.push_back(FileChoice{exported, 2});
        polygons->findChild<QAction*>("mnuExpCSV")->trigger();
        QFile file(QString::fromStdString(exported));
        QVERIFY(file.open(QIODevice::ReadOnly));
        QVERIFY(file.readLine().startsWith("NAME, AREA, DELETE, OWNERSHIP, "));
        const std::string older = s.gui.dir.file("older.csv");
        QFile written(QString::fromStdString(older));
        QVERIFY(written.open(QIODevice::WriteOnly));
        written.write("NAME,AREA,AGE,FIZ\r\nOLD 1,5,20,I\r\n");
        written.close();
        s.gui.prompt.script.files.push_back(FileChoice{older, 2});
        polygons->findChild<QAction*>("mnuImpCSV")->trigger();
        QCOMPARE(list->count(), 17);
        main.view(5);
        QCOMPARE(grid->gridModel().rowCount(), 17);
        QCOMPARE(grid->gridModel().headerData(16, Qt::Vertical, Qt::DisplayRole).toString(),
                 QString("OLD 1"));
    }
};

QTEST_MAIN(FrmSpreadsheetTest)
#include "frm_spreadsheet_test.moc"
