#pragma once
// "Database Importer": a spreadsheet, dBase, Access, GIS or text table opened for the import.
// It shows how the table's fields match the variable catalogue before anything changes, lets
// the user take an unmatched field as a variable or a name column (remembered for files with
// the same header), and imports on "Import Data".

#include <QDialog>
#include <string>

#include "base/host.hpp"
#include "base/table_reader.hpp"
#include "exchange/database_import.hpp"
#include "exchange/field_mapping.hpp"
#include "model/model.hpp"

class QAction;
class QComboBox;
class QProgressBar;
class QPushButton;
class QTreeWidget;

namespace arborex {

class frmDatabase final : public QDialog {
    Q_OBJECT
public:
    // Opens `path` through `reader` (GetColumnHeader; several tables ask frmDBChoose) and
    // shows the matching. When the file cannot be opened the user has been told and opened()
    // is false: the caller does not show the screen.
    frmDatabase(Model& m, Host& host, TableReader& reader, const std::string& path,
                QWidget* parent = nullptr);

    bool opened() const { return opened_; }
    // The counters of the import once "Import Data" has run.
    const PolygonImport& run() const { return run_; }

    // Rebuilds lsvColumns: matched variables (every variable with the entry checked), then
    // the unmatched fields, each with its chooser.
    void mnuShowAdvanced_Click();
    // Remembers the user's choices for this header, applies them, and imports. The screen
    // closes accepted after an import, and stays open when the import could not start (no
    // name field: the user may still choose one).
    void cmdImport_Click();

    // Closing the window leaves without change, but not while an import runs.
    void reject() override;

private:
    void buildMenus();
    void buildControls();
    QComboBox* mappingBox(int unmatched, const std::string& field);
    void mappingChosen(const std::string& field, const QString& key);

    Model& m_;
    Host& host_;
    TableReader& reader_;
    DatabaseImport db_;
    FieldMapping mapping_;  // the choices on screen, preselected from the remembered ones
    PolygonImport run_;
    bool opened_ = false;
    bool importing_ = false;

    QTreeWidget* lsvColumns_ = nullptr;
    QAction* mnuShowAdvanced_ = nullptr;
    QAction* mnuCancel_ = nullptr;
    QProgressBar* barPercent_ = nullptr;
    QPushButton* cmdImport_ = nullptr;
};

}  // namespace arborex
