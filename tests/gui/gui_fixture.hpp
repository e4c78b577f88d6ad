#pragma once
// What a screen test needs around a screen: a Host whose prompt is scripted and records the
// file requests, a settings store over temporary INI files (never the real user's), the Qt
// views, and a fresh model. Everything lives in one temporary folder.

#include <QString>
#include <deque>
#include <filesystem>
#include <memory>
#include <vector>

#include "frame/project_open.hpp"
#include "frame/startup.hpp"
#include "model/model.hpp"
#include "platform/qt_settings_store.hpp"
#include "support/fake_host.hpp"
#include "support/temp_dir.hpp"
#include "support/test_install.hpp"
#include "ui/qt_views.hpp"

namespace arborex::test {

// The scripted prompt, also keeping every file request for inspection.
class RecordingPrompt final : public Prompt {
public:
    ScriptedPrompt script;
    std::vector<FileRequest> fileRequests;

    Answer ask(const std::string& title, const std::string& text, Buttons buttons,
               Answer defaultAnswer, Icon icon) override {
        return script.ask(title, text, buttons, defaultAnswer, icon);
    }
    std::optional<std::string> input(const std::string& title, const std::string& text,
                                     const std::string& proposed) override {
        return script.input(title, text, proposed);
    }
    std::optional<FileChoice> openFile(const FileRequest& request) override {
        fileRequests.push_back(request);
        return script.openFile(request);
    }
    std::optional<FileChoice> saveFile(const FileRequest& request) override {
        fileRequests.push_back(request);
        return script.saveFile(request);
    }
    ErrorChoice reportError(const FailureReport& failure) override {
        return script.reportError(failure);
    }
};

struct GuiHost {
    TempDir dir;
    QtSettingsStore settings{QString::fromStdString(dir.file("user.ini")),
                             QString::fromStdString(dir.file("machine.ini"))};
    RecordingPrompt prompt;
    RecordingStatus status;
    QtViews views;
    FixedEnvironment system;
    Host host{prompt, status, settings, views, system};
    std::unique_ptr<Model> model = std::make_unique<Model>();
    Model& m = *model;

    const std::vector<ShownBox>& shown() const { return prompt.script.shown; }
    std::deque<Answer>& answers() { return prompt.script.answers; }

    // The program's defaults over an installed program folder and an empty documents folder,
    // with the reference data read and no polygon: where the polygon screens start.
    void installEmptyProject() {
        programDefaults(m);
        m.Paths[ArborexFolder] = dir.file("program/");
        m.Paths[UserDocuments] = dir.file("documents/");
        installProgramFolder(m.Paths[ArborexFolder]);
        std::filesystem::create_directories(m.Paths[UserDocuments]);
        LoadReferenceData(m, host);
        EmptyArrays(m);
    }

    // The program's defaults over the source tree's reference data, with the bundled sample
    // project loaded. False when it does not load.
    bool loadSourceSample() {
        programDefaults(m);
        m.Paths[ArborexFolder] = std::string(ARBOREX_SOURCE_DIR) + "/data/";
        LoadReferenceData(m, host);
        return LoadARX(m, host, std::string(ARBOREX_SOURCE_DIR) + "/samples/sample.arx");
    }
};

}  // namespace arborex::test
