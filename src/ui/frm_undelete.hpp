#pragma once
// "Undelete Polygons": the deleted polygons by name; Undelete brings back the selected ones at
// once, OK closes. The polygon screen lists its polygons again afterwards.

#include <QDialog>

#include "base/host.hpp"
#include "model/model.hpp"

class QListWidget;

namespace arborex {

class frmUndelete final : public QDialog {
    Q_OBJECT
public:
    frmUndelete(Model& m, Host& host, QWidget* parent = nullptr);

    // Sets DELETE to 0 for every selected polygon and takes it off the list.
    void cmdUndelete_Click();

private:
    Model& m_;
    Host& host_;
    QListWidget* lstDeleted_;
};

}  // namespace arborex
