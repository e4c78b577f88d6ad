#pragma once
// The Host of the batch front end: nobody sits at the screen, so no box ever waits. Questions
// are answered from the command line's flags or by their default button, informational boxes
// are collected, and the status line and the views are silent.

#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

#include "base/host.hpp"
#include "model/model.hpp"

namespace arborex::batch {

inline constexpr const char* kMapsheetQuestion = "Remove mapsheet identifier?";
inline constexpr const char* kPurgeQuestion = "Purge Deleted Polygons";

struct ShownBox {
    std::string title;
    std::string text;
    Buttons buttons = Buttons::Ok;
    Icon icon = Icon::None;
    Answer answer = Answer::Ok;
};

// Answers every question at once: the mapsheet question with `removeMapsheet`, the purge
// question with No (a batch run never destroys polygons), any other question with its default
// button. Input boxes and file choosers are cancelled. Every box is kept, in order.
class BatchPrompt final : public Prompt {
public:
    explicit BatchPrompt(Answer removeMapsheet = Answer::No) : removeMapsheet_(removeMapsheet) {}

    Answer ask(const std::string& title, const std::string& text, Buttons buttons,
               Answer defaultAnswer, Icon icon) override;
    std::optional<std::string> input(const std::string&, const std::string&,
                                     const std::string&) override {
        return std::nullopt;
    }
    std::optional<FileChoice> openFile(const FileRequest&) override { return std::nullopt; }
    std::optional<FileChoice> saveFile(const FileRequest&) override { return std::nullopt; }

    const std::vector<ShownBox>& shown() const { return shown_; }
    // The text of the last box with only an OK button, on one line (see oneLine), without a
    // leading line that holds only the failure's number: the reason a failed load gives.
    // Empty when no such box was shown.
    std::string lastMessage() const;
    // Writes each box with only an OK button as "note: <title>: <text>", one line each.
    void writeNotes(std::ostream& err) const;

private:
    Answer removeMapsheet_;
    std::vector<ShownBox> shown_;
};

// A box's text on one line: its non-empty lines, trimmed, joined by "; ".
std::string oneLine(const std::string& text);

// A Host over a BatchPrompt, a silent status, settings in memory and views nobody watches.
class BatchHost {
public:
    explicit BatchHost(Answer removeMapsheet = Answer::No) : prompt_(removeMapsheet) {}
    BatchHost(const BatchHost&) = delete;
    BatchHost& operator=(const BatchHost&) = delete;

    Host& host() { return host_; }
    BatchPrompt& prompt() { return prompt_; }

private:
    BatchPrompt prompt_;
    SilentStatus status_;
    MemorySettings settings_;
    HostViews views_;
    ProcessEnvironment system_;
    Host host_{prompt_, status_, settings_, views_, system_};
};

// The installed reference data: beside the program when the species table is there, else
// "../share/arborex/" from it. With a trailing "/".
std::string installedDataFolder();

}  // namespace arborex::batch
