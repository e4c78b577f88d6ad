#pragma once
// The scrolling help window: a catalogue text at length, for reading beside the screen that
// asked for it. Not modal; the caller owns it and may point it at another tag.

#include <QDialog>
#include <string>

#include "base/messages.hpp"

class QPlainTextEdit;

namespace arborex {

class frmHelp final : public QDialog {
    Q_OBJECT
public:
    // `catalogue` must outlive the window.
    frmHelp(const MessageCatalogue& catalogue, const std::string& tag, QWidget* parent = nullptr);

    // Shows the paragraph form (GetMessage2) of another tag.
    void setTag(const std::string& tag);

    // The text's point size: 9 at first, then each cmdFont steps to the next of 9, 10, 12, 14,
    // 16, and from 16 back to 9.
    int fontSize() const { return fontSize_; }

private:
    void cmdFont_Click();
    void applyFontSize();

    const MessageCatalogue& catalogue_;
    QPlainTextEdit* txtHelp_;
    int fontSize_ = 9;
};

}  // namespace arborex
