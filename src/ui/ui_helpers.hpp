#pragma once
// Small things every screen does: place itself, caption itself after the project, and move
// text between the core's std::string and Qt.

#include <QSize>
#include <QString>
#include <string>

#include "model/model.hpp"

class QWidget;

namespace arborex {

// Centers a screen on the desktop that holds it.
void centerme(QWidget& form);
// Gives a screen its preferred size, or less where the desktop is smaller, so that a laptop's
// screen shows all of it, title bar included; never below the screen's minimum size.
void resizeWithin(QWidget& form, QSize preferred);
// Sets a screen's caption to title + " - " + the project's display name.
void UpdateCaption(QWidget& form, const Model& m, const std::string& title);

// Paths travel as UTF-8, as the file system names them.
inline QString qs(const std::string& text) {
    return QString::fromStdString(text);
}
inline std::string ss(const QString& text) {
    return text.toStdString();
}

// The core's texts (messages, polygon names, list rows, "m\xb3/yr") are Latin-1, one byte a
// character, as the project files and the reference data hold them.
inline QString lq(const std::string& text) {
    return QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size()));
}
inline std::string ls(const QString& text) {
    return text.toLatin1().toStdString();
}

}  // namespace arborex
