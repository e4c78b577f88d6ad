#pragma once
// The desktop program's boxes and file choosers: every question that the core or a screen asks
// ends up here as a Qt dialog over the parent screen.

#include <QStringList>

#include "base/prompt.hpp"

class QWidget;

namespace arborex {

// Turns a "Label (*.ext)|*.ext|..." filter into Qt's list of "Label (*.ext)" entries. The
// patterns after each "|" rule; a label's own parenthesised patterns are replaced by them, and
// ";" between patterns becomes a blank. A label without patterns matches every file.
QStringList toQtFilters(const std::string& filter);

class QtPrompt final : public Prompt {
public:
    explicit QtPrompt(QWidget* parent = nullptr) : parent_(parent) {}
    // The screen that boxes are shown over.
    void setParent(QWidget* parent) { parent_ = parent; }

    Answer ask(const std::string& title, const std::string& text, Buttons buttons,
               Answer defaultAnswer, Icon icon) override;
    std::optional<std::string> input(const std::string& title, const std::string& text,
                                     const std::string& proposed) override;
    std::optional<FileChoice> openFile(const FileRequest& request) override;
    std::optional<FileChoice> saveFile(const FileRequest& request) override;
    // The error screen frmError, modal over the parent.
    ErrorChoice reportError(const FailureReport& failure) override;
    // The message screen frmMsg, modal over the parent.
    int16_t messageScreen(const std::string& title, const std::string& text,
                          const std::string& list, int16_t buttons, int16_t defaultButton) override;

private:
    std::optional<FileChoice> chooseFile(const FileRequest& request, bool save);
    QWidget* parent_;
};

}  // namespace arborex
