#pragma once
// The data grid: the whole project as one table, a row per polygon and a column per variable of
// the catalogue. Every cell the user changes goes through ImportItem and shows again what the
// model then holds, so a refused value is visible at once; cells changed by hand stay pink until
// the grid is rebuilt. Imports, pasted tables and the classic format come in here too.
//
// The table is a model/view pair over the core's cell texts, so that thousands of polygons open
// and scroll at once; the keys head the columns and the names head the rows, both fixed.

#include <QDialog>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "base/host.hpp"
#include "exchange/grid_export.hpp"
#include "model/model.hpp"

class QAction;
class QKeyEvent;
class QLineEdit;
class QMenu;
class QMenuBar;
class QPushButton;
class QTableView;

namespace arborex {

class GridModel;

class frmSpreadsheet final : public QDialog {
    Q_OBJECT
public:
    // Form_Load: the catalogue, the columns, the advanced columns hidden, every polygon shown.
    frmSpreadsheet(Model& m, Host& host, QWidget* parent = nullptr);
    ~frmSpreadsheet() override;

    // The columns: 101, keyed by the catalogue; never-shown variables have no key.
    void setupGrid();
    // Column widths by VarShow and "Advanced Columns".
    void ShowAdvanced();
    // Every cell afresh from the model; the pink marks go.
    void ShowPolygons();
    // The model shown again after another screen changed it, keeping the pink marks while the
    // polygons are the same ones.
    void refresh();
    // Caption "Data Grid - " and the project's name.
    void UpdateCaption();

    // Opens the floating editor over a cell (grid row 1 is polygon 0), as a double click does
    // (`typed` empty: the cell's text) or a typed key (`typed`: that text).
    void openEditor(int gridRow, int column, const QString& typed = {});
    // Closes the editor, storing its text in the polygon when it differs from the cell.
    void closeEditor();

    void mnuImport_Click();
    void mnuExport_Click();
    void mnuImportOld_Click();
    void mnuExportOld_Click();
    void mnuPasteTable_Click();
    void mnuCopyTable_Click();
    void mnuCopy_Click();
    void mnuPaste_Click();
    void mnuFillDown_Click();
    void mnuAdvanced_Click();
    void frmSpreadsheet_Form_DblClick();

    GridModel& gridModel() const { return *model_; }

    int16_t DupMode = -1;
    int16_t EditPoly = -1;
    int16_t EditRow = 0;
    int16_t EditCol = 0;
    int16_t EditState = 0;

signals:
    // An import added or changed polygons: screens that list them refresh.
    void polygonsChanged();

public slots:
    // Closing stores what the editor holds first.
    void done(int result) override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void buildMenus(QMenuBar* bar);
    QAction* addAction(QMenu* menu, const char* name, const QString& caption,
                       void (frmSpreadsheet::*handler)());
    bool guarded(const char* routine, const std::function<void()>& step);
    // A column's width: enough for its key.
    int keyWidth(int column) const;

    // The editor (frm_spreadsheet_editor.cpp).
    bool editorKey(QKeyEvent* key);
    void moveEditor(int rows, int columns);
    void moveEditorTo(int gridRow, int column);
    void placeEditor();
    void commitEdit();
    int visibleColumn(int from, int step) const;

    // The selected block in grid rows and columns, normalised; false when nothing is selected.
    bool selectedBlock(int& row1, int& col1, int& row2, int& col2) const;
    // Writes the changed cells, tells their messages, and shows the polygon screen afresh when
    // its polygon was among them.
    void showChanges(const std::vector<GridChange>& changes);
    // The grid and the polygon screen after an import.
    void afterImport();
    // The grid no longer matches the model's polygons (another project, a purge): rebuilt.
    bool gridIsStale();
    void importTextFile(const std::string& path);
    // TxtToColumns on a file's or the clipboard's text, then the grid shown again.
    void runTextImport(const std::string& TextBuffer, const char* routine);
    void importDatabaseFile(const std::string& path);

    Model& m_;
    Host& host_;
    GridModel* model_ = nullptr;
    QTableView* grd_ = nullptr;
    QLineEdit* txtEdit_ = nullptr;
    QPushButton* cmdDone_ = nullptr;
    QAction* mnuAdvanced_ = nullptr;
    bool typing_ = false;       // the editor's arrows and Home/End stay in its text
    bool closing_ = false;      // the editor is being closed: its focus loss is not a second close
    std::string shownProject_;  // the project file whose polygons the rows show
};

}  // namespace arborex
