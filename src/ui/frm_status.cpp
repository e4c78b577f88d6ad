#include "ui/frm_status.hpp"

#include <QApplication>
#include <QLabel>
#include <QProgressBar>
#include <QVBoxLayout>
#include <algorithm>

#include "ui/ui_helpers.hpp"

namespace arborex {

frmStatus::frmStatus(QWidget* parent)
    : QWidget(parent, Qt::Tool | Qt::WindowTitleHint | Qt::CustomizeWindowHint),
      lblStatus_(new QLabel(this)),
      picPercent_(new QProgressBar(this)) {
    setObjectName("frmStatus");
    setWindowTitle("Status");
    lblStatus_->setObjectName("lblStatus");
    lblStatus_->setMinimumWidth(360);
    lblStatus_->setWordWrap(true);
    picPercent_->setObjectName("picPercent");
    picPercent_->setRange(0, 100);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(lblStatus_);
    layout->addWidget(picPercent_);
}

frmStatus::~frmStatus() {
    if (cursorSet_) QApplication::restoreOverrideCursor();
}

void frmStatus::show(const std::string& text) {
    lblStatus_->setText(qs(text));
    picPercent_->setValue(0);
    // A second show while shown must not stack a second cursor that one close cannot undo.
    if (!cursorSet_) {
        QApplication::setOverrideCursor(Qt::WaitCursor);
        cursorSet_ = true;
    }
    if (!isVisible()) {
        QWidget::show();
        centerme(*this);
    }
    raise();
    QCoreApplication::processEvents();
}

void frmStatus::setText(const std::string& text) {
    lblStatus_->setText(qs(text));
    QCoreApplication::processEvents();
}

void frmStatus::setPercent(int percent) {
    picPercent_->setValue(std::clamp(percent, 0, 100));
    QCoreApplication::processEvents();
}

void frmStatus::close() {
    QWidget::close();
    if (cursorSet_) {
        QApplication::restoreOverrideCursor();
        cursorSet_ = false;
    }
    QCoreApplication::processEvents();
}

}  // namespace arborex
