#include "ui/startup_sequence.hpp"

#include "frame/error_handler.hpp"
#include "frame/file_locations.hpp"
#include "frame/project_open.hpp"
#include "frame/startup.hpp"
#include "frame/user_settings.hpp"
#include "model/colours.hpp"
#include "model/project_file.hpp"
#include "model/recent_files.hpp"
#include "ui/frm_arbo.hpp"

namespace arborex {

namespace {

constexpr const char* kModule = "frmArbo2";

// Offers the ".arx" association. On this platform the association is part of installation
// (packaging/arborex.desktop and arborex-mime.xml), so nobody is asked at start.
void offerFileAssociation() {}

// Step 6: a second copy runs only when the user asks for it.
bool secondCopyAllowed(Host& host, const StartupEnvironment& env) {
    if (!env.anotherCopyRunning || !env.anotherCopyRunning()) return true;
    return host.prompt.ask("Arborex already running",
                           "Arborex is already running.  Would you like to start another.",
                           Buttons::YesNo, Answer::Yes, Icon::Question) == Answer::Yes;
}

}  // namespace

bool runStartup(Model& m, Host& host, frmArbo& main, const StartupEnvironment& env) {
    auto step = [&](const char* routine, const std::function<void()>& work) {
        runGuarded(m, host, routine, kModule, work);
    };

    m.RunId = makeRunId();
    m.Messages = MessageCatalogue{};

    step("ResetVars", [&] { ResetVars(m); });
    bool installed = false;
    step("GetAppPath", [&] { installed = GetAppPath(m, host, env.programFolder); });
    if (!installed) return false;
    step("DefaultPaths", [&] { DefaultPaths(m, host); });
    step("setColours", [&] { setColours(m); });
    step("SetDefaults", [&] { SetDefaults(m); });
    step("LoadRegistry", [&] { LoadRegistry(m, host); });
    step("CheckPaths", [&] { CheckPaths(m, host); });
    step("NewFileName", [&] { NewFileName(m); });

    offerFileAssociation();
    step("LoadReferenceData", [&] { LoadReferenceData(m, host); });

    CommandLine command = parseCommandLine(env.commandLine);
    if (command.logMode) m.LogMode = true;
    dropMissingProject(host.prompt, command.projectPath);

    if (!secondCopyAllowed(host, env)) return false;

    if (command.projectPath.empty()) {
        main.showSplash();
    } else {
        step("LoadARX", [&] {
            if (!LoadARX(m, host, command.projectPath)) return;
            AddLast(m, host, command.projectPath);
            SaveRegLast(m, host.settings);
        });
    }
    main.refreshButtons();
    main.refreshRecentMenu();
    main.UpdateCaption();
    main.show();
    return true;
}

}  // namespace arborex
