#pragma once
// "Find PSYU by Region and Compartment": the polygon's location codes, and a search of the
// region/compartment table for the FIZ, PSYU block and PSYU that go with them.

#include <QDialog>

#include "base/host.hpp"
#include "model/model.hpp"

class QLineEdit;

namespace arborex {

class frmPSYU final : public QDialog {
    Q_OBJECT
public:
    // Shows REGION, COMP, COMPL, FIZ, PSYUBLOCK and PSYU of the polygon m.CurPoly; empty fields
    // when there is none.
    frmPSYU(Model& m, Host& host, QWidget* parent = nullptr);

    // Loads "Rc_table.dat" from the installation folder once, then fills FIZ, PSYU block and
    // PSYU from the first record of the typed region, compartment and letter. Tells the user
    // when there is no such record and leaves the fields as they were.
    void cmdFindPSYU_Click();
    // Stores the six fields in the polygon on screen (fixed strings cut to their widths, PSYU
    // read as a number) and closes. A PSYU beyond 16 bits goes to the error screen and the
    // screen stays open.
    void cmdOK_Click();

private:
    Model& m_;
    Host& host_;
    QLineEdit* txtRegion_;
    QLineEdit* txtComp_;
    QLineEdit* txtCompL_;
    QLineEdit* txtFIZ_;
    QLineEdit* txtPSYUBlk_;
    QLineEdit* txtPSYU_;
};

}  // namespace arborex
