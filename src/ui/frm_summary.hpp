#pragma once
// "Summary": every polygon with its existing and future management, target harvest ages,
// volume and MAI side by side, and the total row. The user selects rows here and changes their
// harvest ages, silviculture system or the project's harvest parameters; the list is then
// shown again with the same rows selected.

#include <QDialog>
#include <functional>
#include <set>
#include <vector>

#include "model/model.hpp"
#include "report/summary_table.hpp"

class QAction;
class QMenu;
class QTreeWidget;
class QTreeWidgetItem;

namespace arborex {

struct Host;

class frmSummary final : public QDialog {
    Q_OBJECT
public:
    frmSummary(Model& m, Host& host, QWidget* parent = nullptr);

    // The columns with their captions and widths (twips at 15 a pixel).
    void setupGrid();
    // Fills the list afresh from the model, total row last; a failure leaves it empty.
    void ShowSummary();
    // Remembers which rows are selected and how many polygon rows there are.
    void SaveSelected();
    // Selects the remembered rows again, unless polygon rows were added or removed since.
    void ShowSelected();
    // The rows again from the model, as another screen may have changed it, keeping the
    // selection where the rows allow.
    void refresh();
    // Caption "Summary - " and the project's name.
    void UpdateCaption();
    // The polygons of the selected rows, in the list's order.
    std::vector<int16_t> selection() const;
    // The rows as shown, for the clipboard.
    const std::vector<SummaryRow>& rows() const { return rows_; }

signals:
    // mnuSave and mnuSaveAs: the main screen saves the project as its own menu does.
    void saveRequested();
    void saveAsRequested();

private:
    QAction* addMenuAction(QMenu* menu, const char* name, const QString& caption,
                           void (frmSummary::*handler)());
    void buildMenus();
    // Widens the columns whose captions or cells do not fit their set widths.
    void fitColumns();
    void buildButtons();
    // Keeps the selection, shows a screen modally, then works out the harvest ages again and
    // shows the list with the same rows selected.
    void runUpdate(const char* routine, const std::function<void()>& showScreen);
    // Asks the main screen to save, then shows the list again: the save purges deleted polygons.
    void saveThroughMainScreen(void (frmSummary::*request)());
    void lsvSum_ColumnClick(int column);

    void mnuHarAge_Click();
    void mnuSilvi_Click();
    void mniHarvParm_Click();
    void mnuCopyTable_Click();
    void mnuSelectAll_Click();
    void mnuOK_Click();
    void mnuSave_Click();
    void mnuSaveAs_Click();

    Model& m_;
    Host& host_;
    QTreeWidget* lsvSum_ = nullptr;
    std::vector<SummaryRow> rows_;
    int sortColumn_ = -1;  // none until a column is clicked
    Qt::SortOrder sortOrder_ = Qt::AscendingOrder;
    // The saved selection: the polygon row count when saved (SelCount) and the selected rows'
    // keys, which follow the rows through a sort.
    int SelCount = -1;
    std::set<QString> SelFlags;
};

}  // namespace arborex
