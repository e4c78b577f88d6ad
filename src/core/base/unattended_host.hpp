#pragma once
// The Host of a tool that nobody watches. Its prompt gives a question its default button, cancels
// input boxes and file choosers, and writes what each box said to `log` after `program` and
// ": "; the status is silent, the settings live in memory, and no views are open.

#include <ostream>
#include <string>
#include <utility>

#include "base/environment.hpp"
#include "base/host.hpp"
#include "base/prompt.hpp"
#include "base/settings_store.hpp"
#include "base/status.hpp"

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

struct UnattendedHost {
    UnattendedHost(std::string program, std::ostream& log) : prompt(std::move(program), log) {}
    UnattendedHost(const UnattendedHost&) = delete;
    UnattendedHost& operator=(const UnattendedHost&) = delete;

    UnattendedPrompt prompt;
    SilentStatus status;
    MemorySettings settings;
    HostViews views;
    ProcessEnvironment system;
    Host host{prompt, status, settings, views, system};
};

}  // namespace arborex
