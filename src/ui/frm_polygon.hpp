#pragma once
// "Polygon Data": one polygon's inventory and management at a time, picked from the polygon
// list. Each entry field is stored in the model as it loses focus, through the core's commit
// of that field, and then shows what the model holds ("[20]" for a project setting that
// applies). Leaving a polygon (another row, a list action, closing) commits the focused field
// and confirms the polygon's changes, which marks the curves they make stale.
//
// The screen is modeless. While it is open the desktop program's views hand it the core's
// requests to rebuild the list (a purge, a project loaded from the main screen).

#include <QDialog>
#include <QHash>
#include <QPointer>
#include <array>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "base/host.hpp"
#include "model/model.hpp"
#include "model/polygon_fields.hpp"

class QAction;
class QCheckBox;
class QComboBox;
class QGridLayout;
class QGroupBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QMenu;
class QMenuBar;
class QPlainTextEdit;
class QPushButton;
class QRadioButton;
class QStandardItemModel;

namespace arborex {

class frmHelp;

class frmPolygon final : public QDialog {
    Q_OBJECT
public:
    // Form_Load: the choice lists, the default polygon and the polygon list, with the polygon
    // shown when the screen was last open (CurPoly) on screen again, else the first.
    frmPolygon(Model& m, Host& host, QWidget* parent = nullptr);
    ~frmPolygon() override;

    // Fills every control from CurPoly and takes the snapshot that polychanged compares with.
    // With CurPoly -1 the fields are empty and locked.
    void ShowPolygonData();
    // Commits the entry field that holds the focus, when its text was edited.
    void LoseLastFocus();
    // LoseLastFocus, then polychanged: a refused change is shown restored, a kept one updates
    // the polygon's row. Every action that leaves the polygon runs it first.
    void leavePolygon();
    // Rebuilds the list (DisplayPoly) and shows the polygon of the selected row: the row of
    // `polygon` when it is listed, else the row `lastRow` or the last one.
    void DisplayPoly(int polygon, int lastRow);
    // The core rebuilt or replaced the polygons: confirm what is on screen when that polygon
    // still stands, then list them again with `select` on screen.
    void redisplayPolygons(int select);
    void UpdateCaption();

    void turnOnExtras();
    void DisplaySpec();
    void ShowSpecPercErrV();
    void ShowSpecPercErrT();
    void updateVSI();
    void updateVCC();

    // The polygon commands, also on the buttons beside the list.
    void mniAddPoly_Click();
    void mniDelPoly_Click();
    void mniUndelete_Click();
    void mniRenPoly_Click();
    void mnuSplit_Click();
    void mnuReorder_Click();
    void mniSaveDefault_Click();
    void mnuPrintScreen_Click();
    // Leaves the polygon and opens "Calculate Yield Tables"; afterwards the list and the polygon
    // show the curves' new states and harvest ages.
    void mnuCalcYield_Click();
    // The yield table view of the existing (0) or future (1) management's curve.
    void cmdYield_Click(int index);
    void mniYield_Click();
    // The treatment screens; on return the treatment labels and species rows show what they
    // set, and a changed treatment marks the TIPSY curve out of date.
    void cmdCT_Click();
    void cmdFert_Click();
    // Shows HAR of both managements again, after the yield view changed a target age.
    void refreshTargetAges();

    // The classic delimited format, as on the data grid; after an import the list is shown
    // again. And the data grid, opened over the whole project once this polygon is confirmed.
    void mnuExpCSV_Click();
    void mnuImpCSV_Click();
    void mnuDataGrid_Click();

    // Selects the row of `polygon` in the list, which shows that polygon (after leaving the one
    // on screen). Nothing happens when it is not listed.
    void selectPolygonRow(int polygon);

signals:
    // Polygons were added, deleted or brought back: screens that need polygons may change.
    void polygonsChanged();

public slots:
    // Closing commits and confirms the polygon on screen.
    void done(int result) override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    // An entry field: committed through the core's field table (`ref`), or stored as a
    // catalogue key's value (`key`: PSYU, NCDESC, the species codes).
    struct EntryField {
        QLineEdit* edit;
        std::optional<FieldRef> ref;
        std::string key;
    };
    // A list or option whose choice is stored as a key's value: the entry's text, or its
    // index; `current` finds the entry that shows the polygon's value (-1 for none).
    struct ChoiceField {
        QComboBox* box;
        std::string key;
        bool storesText;
        std::function<int(const Model&, int polygon)> current;
    };
    // A check box stored as a key's 0 or 1.
    struct CheckField {
        QCheckBox* box;
        std::string key;
        std::function<bool(const Model&, int polygon)> current;
    };

    // Building the screen (frm_polygon_layout.cpp).
    void buildMenus(QMenuBar* bar);
    QWidget* buildListPanel();
    QGroupBox* buildCommonGroup();
    QGroupBox* buildHarvestGroup();
    QGroupBox* buildVdypGroup();
    QGroupBox* buildTipsyGroup();
    QGroupBox* buildNcGroup();
    QWidget* buildHelpPane();
    QLineEdit* addEntry(const QString& name, std::optional<FieldRef> ref, const std::string& key,
                        const char* help, int width);
    QComboBox* addChoice(const QString& name, const std::string& key, bool storesText,
                         std::function<int(const Model&, int)> current, const char* help);
    QCheckBox* addCheck(const QString& name, const QString& caption, const std::string& key,
                        std::function<bool(const Model&, int)> current, const char* help);
    QPushButton* addButton(const QString& name, const QString& caption, const char* help);
    QComboBox* addSpeciesList(int row, bool tipsy);
    void fillChoiceLists();

    // Fields (frm_polygon_fields.cpp).
    void showFields();
    void showEntry(const EntryField& field);
    std::string entryText(const EntryField& field) const;
    void showChoices();
    void lockFields(bool locked);
    void commitEntry(QLineEdit* edit);
    void commitChoice(const ChoiceField& field, int index);
    void commitCheck(const CheckField& field);
    void commitSpecies(int row, bool tipsy, int tableIndex);
    void bindSpecies(int row, bool tipsy, const std::string& typed);
    void commitValue(const char* routine, const std::string& key, const std::string& text);
    void showTreatmentLabels();
    void showHelpTag(const std::string& tag);
    void openHelp();
    const EntryField* entryOf(const QObject* widget) const;

    // List and menu actions (frm_polygon_actions.cpp).
    void lstMapPoly_Click();
    int rowOf(int polygon) const;
    void refreshRow(int polygon);
    void openPsyuLookup();
    void openPsyuFinder();
    bool act(const char* routine, const std::function<void()>& step);

    Model& m_;
    Host& host_;

    QListWidget* lstMapPoly_ = nullptr;
    std::array<QPushButton*, 4> cmdPoly_{};
    std::vector<EntryField> entries_;
    std::vector<ChoiceField> choices_;
    QHash<const QObject*, QString> helpTags_;
    std::array<QLineEdit*, 4> txtPData_{};
    std::array<QLineEdit*, 7> txtVData_{};
    std::array<QLineEdit*, 6> txtVSpec_{};
    std::array<QComboBox*, 6> lstVSpec_{};
    std::array<QLineEdit*, 6> txtVPer_{};
    std::array<QCheckBox*, 6> chkIncVol_{};
    std::array<QLineEdit*, 5> txtTSpec_{};
    std::array<QComboBox*, 5> lstTSpec_{};
    std::array<QLineEdit*, 5> txtTPer_{};
    std::array<QLineEdit*, 5> txtTHeight_{};
    std::array<QLineEdit*, 5> txtTSite_{};
    std::array<QLineEdit*, 5> txtTGW_{};
    std::array<QRadioButton*, 2> optCutMeth_{};
    QCheckBox* chkTRT_ = nullptr;
    std::vector<CheckField> checks_;
    std::array<QPushButton*, 2> cmdYield_{};
    QPushButton* cmdCT_ = nullptr;
    QPushButton* cmdFert_ = nullptr;
    QPushButton* cmdPSYULookup_ = nullptr;
    QPushButton* cmdPSYUFind_ = nullptr;
    QLabel* lblPSYUName_ = nullptr;
    QLabel* lblCommThin_ = nullptr;
    QLabel* lblFert_ = nullptr;
    QLabel* lblVPerSum_ = nullptr;
    QLabel* lblTPerSum_ = nullptr;
    QLabel* lblNoChange_ = nullptr;
    QPlainTextEdit* txtHelp_ = nullptr;
    QStandardItemModel* speciesV_ = nullptr;  // shared by the six VDYP species lists
    QStandardItemModel* speciesT_ = nullptr;
    QPointer<frmHelp> help_;
    bool quiet_ = false;  // control changes of the screen's own making
};

}  // namespace arborex
