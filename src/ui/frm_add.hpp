#pragma once
// "Add Polygon": a new polygon's name, and the polygon to copy, or none for the default
// polygon. The screen stays open after a refusal so that the name can be put right.

#include <QDialog>

#include "base/host.hpp"
#include "model/model.hpp"

class QLineEdit;
class QListWidget;

namespace arborex {

class frmAdd final : public QDialog {
    Q_OBJECT
public:
    // Lists the live polygons as sources to copy, none selected.
    frmAdd(Model& m, Host& host, QWidget* parent = nullptr);

    // Adds the polygon; a blank or taken name is told and nothing changes. Accepts the screen
    // once the polygon stands.
    void cmdAdd_Click();
    // The polygon added, -1 until one is.
    int addedPolygon() const { return added_; }

signals:
    // The typed name is held by `polygon` (deleted polygons included).
    void duplicateFound(int polygon);

private:
    Model& m_;
    Host& host_;
    QLineEdit* txtPoly_;
    QListWidget* lstDefaults_;
    int added_ = -1;
};

}  // namespace arborex
