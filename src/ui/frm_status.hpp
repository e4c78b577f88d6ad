#pragma once
// The modeless status screen of long work: a line of text and a percentage bar. Every call pumps
// the event queue, which is what keeps the single-threaded program alive while it works.

#include <QWidget>

#include "base/status.hpp"

class QLabel;
class QProgressBar;

namespace arborex {

class frmStatus final : public QWidget, public StatusScreen {
    Q_OBJECT
public:
    explicit frmStatus(QWidget* parent = nullptr);
    ~frmStatus() override;

    // StatusScreen. These hide QWidget::show() and QWidget::close() on purpose: callers use the
    // status operations, which also manage the wait cursor.
    void show(const std::string& text) override;
    void setText(const std::string& text) override;
    void setPercent(int percent) override;
    void close() override;

private:
    QLabel* lblStatus_;
    QProgressBar* picPercent_;
    bool cursorSet_ = false;
};

}  // namespace arborex
