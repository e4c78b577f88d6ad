#include "support/fake_host.hpp"

namespace arborex::test {

Answer ScriptedPrompt::ask(const std::string& title, const std::string& text, Buttons buttons,
                           Answer defaultAnswer, Icon icon) {
    Answer answer = defaultAnswer;
    if (buttons != Buttons::Ok && !answers.empty()) {
        answer = answers.front();
        answers.pop_front();
    }
    shown.push_back({title, text, buttons, defaultAnswer, icon, answer});
    return answer;
}

std::optional<std::string> ScriptedPrompt::input(const std::string& title, const std::string& text,
                                                 const std::string& proposed) {
    shown.push_back({title, text, Buttons::OkCancel, Answer::Ok, Icon::None, Answer::Ok});
    if (inputs.empty()) return proposed;
    auto next = inputs.front();
    inputs.pop_front();
    return next;
}

std::optional<FileChoice> ScriptedPrompt::openFile(const FileRequest&) {
    if (files.empty()) return std::nullopt;
    auto next = files.front();
    files.pop_front();
    return next;
}

std::optional<FileChoice> ScriptedPrompt::saveFile(const FileRequest& request) {
    return openFile(request);
}

ErrorChoice ScriptedPrompt::reportError(const FailureReport& failure) {
    failures.push_back(failure);
    if (errorChoices.empty()) return ErrorChoice::ExitSection;
    ErrorChoice choice = errorChoices.front();
    errorChoices.pop_front();
    return choice;
}

bool ScriptedPrompt::showed(const std::string& fragment) const {
    for (const auto& box : shown)
        if (box.text.find(fragment) != std::string::npos ||
            box.title.find(fragment) != std::string::npos)
            return true;
    return false;
}

void RecordingStatus::show(const std::string& text) {
    open = true;
    texts.push_back(text);
    percents.push_back(0);
}

void RecordingStatus::setText(const std::string& text) {
    texts.push_back(text);
}

void RecordingStatus::setPercent(int percent) {
    percents.push_back(percent);
}

}  // namespace arborex::test
