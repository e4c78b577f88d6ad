#include "ui/startup_sequence.hpp"

#include "frame/error_handler.hpp"
#include "frame/recent_files.hpp"
#include "frame/startup.hpp"
#include "model/colours.hpp"
#include "model/project_file.hpp"
#include "platform/app_paths.hpp"
#include "ui/frm_arbo.hpp"

namespace arborex {

namespace startup {

void GetAppPath(Model& m, const StartupEnvironment& env) {
    m.Paths[ArborexFolder] = env.programFolder;
}

void DefaultPaths(Model& m, const StartupEnvironment& env) {
    m.Paths[UserTemp] = env.tempFolder;
    m.Paths[UserDocuments] = env.documentsFolder;
    const std::string& folder = m.Paths[ArborexFolder];
    m.Files[FileVDYPexe] = folder + "VDYP/vdypbat.exe";
    m.Files[FileTIPSYexe] = folder + "TIPSY/btipsy.exe";
    m.Files[FileVDYPhelp] = folder + "VDYP/vdyp.hlp";
    m.Files[FileTIPSYhelp] = folder + "TIPSY/TIPSY32.hlp";
    m.Files[FileManual] = folder + "AXRM31.pdf";
    m.Files[FileChartex] = folder + "chartex.exe";
    m.Files[FileBTP] = folder + "TIPSY/arborex2.btp";
}

void LoadRegistry(Model& m, Host& host) {
    LoadRegLast(m, host.settings);
}

void CheckPaths(Model& m) {
    makeFolder(m.Paths[UserTemp]);
    makeFolder(m.Paths[UserDocuments]);
}

// Offers the ".arx" association. On this platform the association is part of installation
// (packaging/arborex.desktop and arborex-mime.xml), so nobody is asked at start.
static void offerFileAssociation() {}

// Choices, message catalogue, species tables and the PSYU list come from Paths[0]; their
// loaders are not part of this build yet. The curve rows follow the settings read above.
static void loadReferenceData(Model& m) {
    SetAgeInc(m);
}

}  // namespace startup

namespace {

constexpr const char* kModule = "frmArbo2";

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
    step("GetAppPath", [&] { startup::GetAppPath(m, env); });
    step("DefaultPaths", [&] { startup::DefaultPaths(m, env); });
    step("setColours", [&] { setColours(m); });
    step("SetDefaults", [&] { SetDefaults(m); });
    step("LoadRegistry", [&] { startup::LoadRegistry(m, host); });
    step("CheckPaths", [&] { startup::CheckPaths(m); });
    step("NewFileName", [&] { NewFileName(m); });

    startup::offerFileAssociation();
    step("LoadChoices", [&] { startup::loadReferenceData(m); });

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
