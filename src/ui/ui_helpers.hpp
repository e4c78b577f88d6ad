#pragma once
// Small things every screen does: place itself, caption itself after the project, and move
// text between the core's std::string and Qt.

#include <QString>
#include <string>

#include "model/model.hpp"

class QWidget;

namespace arborex {

// Centers a screen on the desktop that holds it.
void centerme(QWidget& form);
// Sets a screen's caption to title + " - " + the project's display name.
void UpdateCaption(QWidget& form, const Model& m, const std::string& title);

// Paths and program texts travel as UTF-8.
inline QString qs(const std::string& text) {
    return QString::fromStdString(text);
}
inline std::string ss(const QString& text) {
    return text.toStdString();
}

}  // namespace arborex
