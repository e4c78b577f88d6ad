#pragma once
// "Lookup PSYU": the PSYU list by name, for choosing a polygon's PSYU.

#include <QDialog>
#include <cstdint>
#include <string>

#include "model/model.hpp"

class QListWidget;
class QListWidgetItem;
class QPushButton;

namespace arborex {

class frmPSYULookup final : public QDialog {
    Q_OBJECT
public:
    // Lists PSYUList entries 1 to PSYUCount as "name  (number)", in list order.
    explicit frmPSYULookup(const Model& m, QWidget* parent = nullptr);

    // The chosen entry once the screen is accepted (cmdDone, or a double click on an item):
    // its number and trimmed name. 0 and "" before that. cmdDone waits for a selection.
    int16_t selectedNumber() const { return selectedNumber_; }
    const std::string& selectedName() const { return selectedName_; }

private:
    void choose(const QListWidgetItem* item);

    QListWidget* lstPSYU_;
    QPushButton* cmdDone_;
    int16_t selectedNumber_ = 0;
    std::string selectedName_;
};

}  // namespace arborex
