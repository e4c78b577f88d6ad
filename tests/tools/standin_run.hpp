#pragma once
// Runs a built stand-in model in a folder as Arborex does (no shell), and the file helpers its
// black-box tests share.

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>
#include <vector>

namespace arborex::test {

struct ProgramRun {
    int exitCode = -1;
    std::string errors;  // what it wrote to standard error
};

// `dataFolder` becomes ARBOREX_DATA when given, and is removed from the environment otherwise.
inline ProgramRun runProgram(const std::string& folder, const std::string& program,
                             const std::vector<std::string>& arguments,
                             const std::optional<std::string>& dataFolder = std::nullopt) {
    const std::string errorFile = folder + "/stderr.txt";
    const pid_t child = fork();
    if (child == 0) {
        const int err = open(errorFile.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
        if (err < 0 || dup2(err, 2) < 0 || chdir(folder.c_str()) != 0) _exit(127);
        if (dataFolder)
            setenv("ARBOREX_DATA", dataFolder->c_str(), 1);
        else
            unsetenv("ARBOREX_DATA");
        std::vector<char*> argv = {const_cast<char*>(program.c_str())};
        for (const std::string& a : arguments) argv.push_back(const_cast<char*>(a.c_str()));
        argv.push_back(nullptr);
        execv(program.c_str(), argv.data());
        _exit(127);
    }
    int status = 0;
    ProgramRun run;
    if (child > 0 && waitpid(child, &status, 0) == child && WIFEXITED(status))
        run.exitCode = WEXITSTATUS(status);
    std::ifstream in(errorFile, std::ios::binary);
    run.errors.assign(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
    return run;
}

inline std::string readBytes(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

inline void writeBytes(const std::string& path, const std::string& bytes) {
    std::ofstream(path, std::ios::binary | std::ios::trunc) << bytes;
}

// Lines split at LF; `crlf` is false when any line lacks its CR.
inline std::vector<std::string> splitLines(const std::string& bytes, bool* crlf = nullptr) {
    std::vector<std::string> lines;
    bool allCr = true;
    std::size_t from = 0;
    for (std::size_t at = bytes.find('\n'); at != std::string::npos;
         from = at + 1, at = bytes.find('\n', from)) {
        std::string line = bytes.substr(from, at - from);
        if (!line.empty() && line.back() == '\r')
            line.pop_back();
        else
            allCr = false;
        lines.push_back(line);
    }
    if (from < bytes.size()) {
        lines.push_back(bytes.substr(from));
        allCr = false;
    }
    if (crlf) *crlf = allCr;
    return lines;
}

// Lines joined with CR LF, as Arborex writes its exchange files.
inline std::string crlfText(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines) text += line + "\r\n";
    return text;
}

// Columns `column` (from 1) to column + width - 1, as far as the line reaches.
inline std::string cols(const std::string& line, int column, int width) {
    const std::size_t from = static_cast<std::size_t>(column - 1);
    return from >= line.size() ? std::string() : line.substr(from, static_cast<std::size_t>(width));
}

// Lays `text` into a record from `column`, cut to `width`, left-aligned.
inline void lay(std::string& record, int column, int width, const std::string& text) {
    const std::size_t from = static_cast<std::size_t>(column - 1);
    if (record.size() < from + static_cast<std::size_t>(width))
        record.resize(from + static_cast<std::size_t>(width), ' ');
    record.replace(from, std::min<std::size_t>(text.size(), static_cast<std::size_t>(width)),
                   text.substr(0, static_cast<std::size_t>(width)));
}

}  // namespace arborex::test
