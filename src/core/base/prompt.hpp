#pragma once
// Every box or question that logic asks mid-routine goes through this interface: Qt boxes in
// the desktop program, scripted answers in tests, flags or defaults in the batch front end.

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace arborex {

enum class Buttons { Ok, OkCancel, YesNo, YesNoCancel };
enum class Answer { Ok, Cancel, Yes, No };
enum class Icon { None, Information, Exclamation, Critical, Question };

// A file chooser's request. `filter` uses the "Label (*.ext)|*.ext|..." form; `filterIndex`
// is 1-based, as is the index a chooser returns.
struct FileRequest {
    std::string title;
    std::string filter;
    int filterIndex = 1;
    std::string folder;
    std::string proposedName;
    bool overwritePrompt = false;
};

// What the user chose on the error screen.
enum class ErrorChoice { Ignore = 1, Retry = 2, ExitSection = 3 };

// An unexpected failure as the error screen shows it.
struct FailureReport {
    int number = 0;
    std::string message;   // the text for the number, with any detail
    std::string location;  // routine + " / " + module
    // Saves the project under a name the user chooses ("Backup my data now"); the screen stays
    // open afterwards. Empty when there is nothing to save.
    std::function<void()> backup;
};

// The catalogue's message screen's buttons, by bit: 1 OK, 2 Cancel, 4 Yes, 8 No. The same
// values are the results: MsgResult is 2 to the power of the pressed button's index.
enum MsgButton : int16_t { MsgOk = 1, MsgCancel = 2, MsgYes = 4, MsgNo = 8 };

struct FileChoice {
    std::string path;
    int filterIndex = 1;
};

class Prompt {
public:
    virtual ~Prompt() = default;

    // A modal message box; returns the button pressed. `defaultAnswer` is the focused button.
    virtual Answer ask(const std::string& title, const std::string& text, Buttons buttons,
                       Answer defaultAnswer, Icon icon) = 0;

    // A box with only an OK button.
    void tell(const std::string& title, const std::string& text, Icon icon = Icon::None) {
        ask(title, text, Buttons::Ok, Answer::Ok, icon);
    }

    // An input box; nullopt when cancelled.
    virtual std::optional<std::string> input(const std::string& title, const std::string& text,
                                             const std::string& proposed) = 0;

    // The error screen: Retry, Ignore or Exit Section. Without a screen of its own a prompt
    // shows the failure in a box and leaves the section.
    virtual ErrorChoice reportError(const FailureReport& failure) {
        tell("ERROR",
             "Error " + std::to_string(failure.number) + ": " + failure.message + "\n" +
                 failure.location,
             Icon::Critical);
        return ErrorChoice::ExitSection;
    }

    // The message screen: `text` above, `list` (free text, often polygon names) in a scrolling
    // box below, the buttons of the mask `buttons`, and the button of index `defaultButton`
    // focused. Returns the pressed button's MsgButton value. Without a screen of its own a
    // prompt shows an ordinary box with the list under the text.
    virtual int16_t messageScreen(const std::string& title, const std::string& text,
                                  const std::string& list, int16_t buttons, int16_t defaultButton);

    // File choosers; nullopt when cancelled.
    virtual std::optional<FileChoice> openFile(const FileRequest& request) = 0;
    virtual std::optional<FileChoice> saveFile(const FileRequest& request) = 0;
};

}  // namespace arborex
