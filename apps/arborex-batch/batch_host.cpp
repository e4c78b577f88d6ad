#include "batch_host.hpp"

#include <filesystem>
#include <ostream>

#include "base/file_names.hpp"
#include "base/text.hpp"
#include "frame/file_locations.hpp"

namespace arborex::batch {

namespace {

bool isWholeNumber(const std::string& text) {
    if (text.empty()) return false;
    for (char c : text)
        if (c < '0' || c > '9') return false;
    return true;
}

std::vector<std::string> nonEmptyLines(const std::string& text) {
    std::vector<std::string> lines;
    std::string line;
    for (char c : text + "\n") {
        if (c == '\n' || c == '\r') {
            line = trim(line);
            if (!line.empty()) lines.push_back(line);
            line.clear();
        } else {
            line += c;
        }
    }
    return lines;
}

std::string joined(const std::vector<std::string>& lines, std::size_t first) {
    std::string text;
    for (std::size_t i = first; i < lines.size(); ++i)
        text += (text.empty() ? "" : "; ") + lines[i];
    return text;
}

}  // namespace

Answer BatchPrompt::ask(const std::string& title, const std::string& text, Buttons buttons,
                        Answer defaultAnswer, Icon icon) {
    Answer answer = defaultAnswer;
    if (buttons == Buttons::Ok)
        answer = Answer::Ok;
    else if (title == kMapsheetQuestion)
        answer = removeMapsheet_;
    else if (title == kPurgeQuestion)
        answer = Answer::No;
    shown_.push_back({title, text, buttons, icon, answer});
    return answer;
}

std::string oneLine(const std::string& text) {
    return joined(nonEmptyLines(text), 0);
}

std::string BatchPrompt::lastMessage() const {
    for (auto box = shown_.rbegin(); box != shown_.rend(); ++box) {
        if (box->buttons != Buttons::Ok) continue;
        const std::vector<std::string> lines = nonEmptyLines(box->text);
        // A read failure shows its number on a line of its own above the text.
        const bool numbered = lines.size() > 1 && isWholeNumber(lines.front());
        return joined(lines, numbered ? 1 : 0);
    }
    return {};
}

void BatchPrompt::writeNotes(std::ostream& err) const {
    for (const ShownBox& box : shown_)
        if (box.buttons == Buttons::Ok)
            err << "note: " << oneLine(box.title) << ": " << oneLine(box.text) << '\n';
}

std::string installedDataFolder() {
    std::error_code ec;
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", ec);
    const std::string beside = withTrailingSlash(program.parent_path().string());
    if (ec || !findFileNoCase(beside, "speciest.dat").empty()) return beside;
    return beside + "../share/arborex/";
}

}  // namespace arborex::batch
