#include "ui/print_screen.hpp"

#include <QPainter>
#include <QPrintDialog>
#include <QPrinter>
#include <QWidget>
#include <algorithm>

namespace arborex {

bool printScreen(QWidget& screen, QWidget* hidden) {
    QPrinter printer(QPrinter::HighResolution);
    QPrintDialog dialog(&printer, &screen);
    if (dialog.exec() != QDialog::Accepted) return true;
    if (hidden) hidden->hide();
    QPainter painter;
    const bool printing = painter.begin(&printer);
    if (printing) {
        const QRect page = painter.viewport();
        const double scale = std::min(static_cast<double>(page.width()) / screen.width(),
                                      static_cast<double>(page.height()) / screen.height());
        painter.scale(scale, scale);
        screen.render(&painter);
        painter.end();
    }
    if (hidden) hidden->show();
    return printing;
}

}  // namespace arborex
