#pragma once
// Drives a screen that the code under test opens with exec(): `act` runs on the application's
// modal dialog as soon as it shows, and must close it. A dialog that never shows fails the test.

#include <QApplication>
#include <QPushButton>
#include <QTimer>
#include <QtTest>
#include <functional>
#include <memory>

namespace arborex::test {

inline void whenModalShown(std::function<void(QWidget*)> act) {
    auto* timer = new QTimer;
    auto ticks = std::make_shared<int>(0);
    timer->setInterval(10);
    QObject::connect(timer, &QTimer::timeout, [timer, ticks, act = std::move(act)] {
        QWidget* modal = QApplication::activeModalWidget();
        if (!modal && ++*ticks < 500) return;
        timer->stop();
        timer->deleteLater();
        if (!modal) qFatal("no modal dialog showed");
        act(modal);
    });
    timer->start();
}

// Presses the named button of the modal dialog once it shows.
inline void clickWhenModalShown(const char* buttonName) {
    whenModalShown([buttonName](QWidget* modal) {
        auto* button = modal->findChild<QPushButton*>(buttonName);
        if (!button) qFatal("no button %s", buttonName);
        button->click();
    });
}

}  // namespace arborex::test
