#pragma once
// The prompt of a tool that nobody watches: a question takes its default button, input boxes and
// file choosers are cancelled, and what each box said is written to `log` after `program` and ": ".

#include <ostream>
#include <string>

#include "frame/prompt.hpp"

namespace arborex {

class UnattendedPrompt final : public Prompt {
public:
    UnattendedPrompt(std::string program, std::ostream& log)
        : program_(std::move(program)), log_(log) {}

    Answer ask(const std::string& title, const std::string& text, Buttons, Answer defaultAnswer,
               Icon) override {
        log_ << program_ << ": " << title << ": " << text << '\n';
        return defaultAnswer;
    }
    std::optional<std::string> input(const std::string&, const std::string&,
                                     const std::string&) override {
        return std::nullopt;
    }
    std::optional<FileChoice> openFile(const FileRequest&) override { return std::nullopt; }
    std::optional<FileChoice> saveFile(const FileRequest&) override { return std::nullopt; }

private:
    std::string program_;
    std::ostream& log_;
};

}  // namespace arborex
