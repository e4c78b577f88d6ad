#pragma once
// The wait cursor of long work done on the interface thread, and a prompt that lifts it for the
// time of each box, so that a question asked mid-run is answered with the ordinary arrow.

#include "base/prompt.hpp"

namespace arborex {

// Shows the wait cursor for its lifetime.
class BusyCursor {
public:
    BusyCursor();
    ~BusyCursor();
    BusyCursor(const BusyCursor&) = delete;
    BusyCursor& operator=(const BusyCursor&) = delete;
};

// Forwards every box to `inner` with the arrow cursor showing.
class ArrowCursorPrompt final : public Prompt {
public:
    explicit ArrowCursorPrompt(Prompt& inner) : inner_(inner) {}

    Answer ask(const std::string& title, const std::string& text, Buttons buttons,
               Answer defaultAnswer, Icon icon) override;
    std::optional<std::string> input(const std::string& title, const std::string& text,
                                     const std::string& proposed) override;
    ErrorChoice reportError(const FailureReport& failure) override;
    int16_t messageScreen(const std::string& title, const std::string& text,
                          const std::string& list, int16_t buttons, int16_t defaultButton) override;
    std::optional<FileChoice> openFile(const FileRequest& request) override;
    std::optional<FileChoice> saveFile(const FileRequest& request) override;

private:
    Prompt& inner_;
};

}  // namespace arborex
