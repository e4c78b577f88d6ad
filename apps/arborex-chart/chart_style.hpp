#pragma once
// How the control language's words for colours, fonts, lines and fills become Qt's: the
// sixteen-colour palette by number, "#" and a colour number (red + 256 green + 65536 blue),
// colour names ("Black", "Light Gray"), font statements ("Arial, 8 , B, I, Black, Center,
// Middle, 90") and the fill patterns of the age distribution screen.

#include <QBrush>
#include <QColor>
#include <QFont>
#include <QPen>
#include <QString>
#include <string>

namespace arborex::chart {

// The colour a cell names; `fallback` when it is empty or names none.
QColor controlColour(const std::string& cell, const QColor& fallback);

// A font statement's font, colour and text angle (degrees, counter-clockwise as written).
struct ControlFont {
    QFont font;
    QColor colour = Qt::black;
    int angle = 0;
};
ControlFont controlFont(const std::string& statement, const ControlFont& fallback);

// "XGridLine=1, Light Gray, 2": whether the grid is drawn and its pen (style 0 solid, 1 dash,
// 2 dot).
struct ControlLine {
    bool visible = false;
    QPen pen;
};
ControlLine controlLine(const std::string& statement);

// The brush of a fill pattern: 0 solid, 1 transparent, 2 horizontal, 3 vertical, 4 upward
// diagonal, 5 downward diagonal, 6 cross, 7 diagonal cross; others solid.
QBrush patternBrush(int pattern, const QColor& colour);

// Latin-1 text of the control file for the screen.
QString latin1(const std::string& text);

}  // namespace arborex::chart
