#pragma once
// Printing a screen as it stands, which the calculation and polygon screens offer.

class QWidget;

namespace arborex {

// Asks for a printer, then prints `screen` scaled to fit the page, with `hidden` (a note meant
// for the screen, not the paper) hidden meanwhile. Returns false when printing could not start;
// a cancelled dialog is not a failure.
bool printScreen(QWidget& screen, QWidget* hidden = nullptr);

}  // namespace arborex
