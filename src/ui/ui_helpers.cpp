#include "ui/ui_helpers.hpp"

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>

namespace arborex {

void centerme(QWidget& form) {
    QScreen* screen = form.screen() ? form.screen() : QGuiApplication::primaryScreen();
    if (!screen) return;
    QRect frame = form.frameGeometry();
    frame.moveCenter(screen->availableGeometry().center());
    form.move(frame.topLeft());
}

void resizeWithin(QWidget& form, QSize preferred) {
    QScreen* screen = form.screen() ? form.screen() : QGuiApplication::primaryScreen();
    if (screen) {
        constexpr int kDecoration = 40;  // title bar and frame that the window manager adds
        const QSize room = screen->availableGeometry().size() - QSize(kDecoration / 2, kDecoration);
        preferred = preferred.boundedTo(room);
    }
    form.resize(preferred.expandedTo(form.minimumSizeHint()));
}

void UpdateCaption(QWidget& form, const Model& m, const std::string& title) {
    form.setWindowTitle(qs(title + " - " + m.Files[FileDisplayName]));
}

}  // namespace arborex
