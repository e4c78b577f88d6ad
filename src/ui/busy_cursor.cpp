#include "ui/busy_cursor.hpp"

#include <QApplication>

namespace arborex {

namespace {

// The arrow over whatever cursor is set, for the time of one box.
class ArrowCursor {
public:
    ArrowCursor() : lifted_(QApplication::overrideCursor() != nullptr) {
        if (lifted_) QApplication::setOverrideCursor(Qt::ArrowCursor);
    }
    ~ArrowCursor() {
        if (lifted_) QApplication::restoreOverrideCursor();
    }
    ArrowCursor(const ArrowCursor&) = delete;
    ArrowCursor& operator=(const ArrowCursor&) = delete;

private:
    bool lifted_;
};

}  // namespace

BusyCursor::BusyCursor() {
    QApplication::setOverrideCursor(Qt::WaitCursor);
}

BusyCursor::~BusyCursor() {
    QApplication::restoreOverrideCursor();
}

Answer ArrowCursorPrompt::ask(const std::string& title, const std::string& text, Buttons buttons,
                              Answer defaultAnswer, Icon icon) {
    ArrowCursor arrow;
    return inner_.ask(title, text, buttons, defaultAnswer, icon);
}

std::optional<std::string> ArrowCursorPrompt::input(const std::string& title,
                                                    const std::string& text,
                                                    const std::string& proposed) {
    ArrowCursor arrow;
    return inner_.input(title, text, proposed);
}

ErrorChoice ArrowCursorPrompt::reportError(const FailureReport& failure) {
    ArrowCursor arrow;
    return inner_.reportError(failure);
}

int16_t ArrowCursorPrompt::messageScreen(const std::string& title, const std::string& text,
                                         const std::string& list, int16_t buttons,
                                         int16_t defaultButton) {
    ArrowCursor arrow;
    return inner_.messageScreen(title, text, list, buttons, defaultButton);
}

std::optional<FileChoice> ArrowCursorPrompt::openFile(const FileRequest& request) {
    ArrowCursor arrow;
    return inner_.openFile(request);
}

std::optional<FileChoice> ArrowCursorPrompt::saveFile(const FileRequest& request) {
    ArrowCursor arrow;
    return inner_.saveFile(request);
}

}  // namespace arborex
