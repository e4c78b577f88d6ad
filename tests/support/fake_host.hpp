#pragma once
// A Host for tests: scripted answers to questions, a record of everything shown, an in-memory
// settings store. No test ever blocks on a box.

#include <deque>
#include <string>
#include <vector>

#include "base/host.hpp"

namespace arborex::test {

struct ShownBox {
    std::string title;
    std::string text;
    Buttons buttons;
    Answer defaultAnswer;
    Icon icon;
    Answer answer;
};

class ScriptedPrompt final : public Prompt {
public:
    // Answers given in order to boxes with more than one button; when the script runs out the
    // box's default button is pressed.
    std::deque<Answer> answers;
    std::deque<std::optional<std::string>> inputs;
    std::deque<std::optional<FileChoice>> files;
    std::vector<ShownBox> shown;
    // Choices on the error screen, in order; Exit Section when the script runs out.
    std::deque<ErrorChoice> errorChoices;
    std::vector<FailureReport> failures;

    Answer ask(const std::string& title, const std::string& text, Buttons buttons,
               Answer defaultAnswer, Icon icon) override;
    std::optional<std::string> input(const std::string& title, const std::string& text,
                                     const std::string& proposed) override;
    std::optional<FileChoice> openFile(const FileRequest& request) override;
    std::optional<FileChoice> saveFile(const FileRequest& request) override;
    ErrorChoice reportError(const FailureReport& failure) override;

    // True when some box's text or title contains `fragment`.
    bool showed(const std::string& fragment) const;
};

class RecordingStatus final : public StatusScreen {
public:
    std::vector<std::string> texts;
    std::vector<int> percents;
    bool open = false;
    void show(const std::string& text) override;
    void setText(const std::string& text) override;
    void setPercent(int percent) override;
    void close() override { open = false; }
};

class RecordingViews final : public HostViews {
public:
    int recentChanges = 0;
    bool polygonScreen = false;
    std::vector<int> redisplays;
    void recentFilesChanged() override { ++recentChanges; }
    bool polygonScreenOpen() override { return polygonScreen; }
    void redisplayPolygons(int select) override { redisplays.push_back(select); }
};

class FakeHost {
public:
    ScriptedPrompt prompt;
    RecordingStatus status;
    MemorySettings settings;
    RecordingViews views;
    FixedEnvironment system;
    Host host{prompt, status, settings, views, system};
    operator Host&() { return host; }  // NOLINT: lets a FakeHost stand where a Host is taken
};

}  // namespace arborex::test
