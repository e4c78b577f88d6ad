#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <tuple>

#include "base/settings_store.hpp"
#include "frame/file_locations.hpp"
#include "frame/settings_lock.hpp"
#include "frame/user_settings.hpp"
#include "model/colours.hpp"
#include "model/model.hpp"
#include "support/fake_host.hpp"
#include "support/temp_dir.hpp"

namespace arborex {
namespace {

namespace fs = std::filesystem;

void touch(const std::string& path) {
    std::ofstream(path) << "x";
}

// A machine with an installation folder holding the TIPSY species table, and a user with a
// home and application data folder, all under one temporary folder.
struct Machine {
    test::TempDir dir;
    test::FakeHost host;
    std::unique_ptr<Model> model = std::make_unique<Model>();
    Model& m = *model;

    Machine() {
        fs::create_directories(dir.file("install"));
        fs::create_directories(dir.file("home/Documents"));
        touch(dir.file("install/SPECIEST.DAT"));
        host.system.variables = {{"APPDATA", dir.file("home/.local/share")},
                                 {"USERNAME", "pat"},
                                 {"USERPROFILE", dir.file("home")}};
        host.system.documents = dir.file("home/Documents");
    }
    std::string install() const { return dir.file("install/"); }
    std::string documents() const { return dir.file("home/Documents/Arborex for Windows/"); }
    std::string temp() const { return dir.file("home/.local/share/Arborex/temp/"); }
    std::optional<std::string> user(const char* section, const char* key) {
        return host.settings.read(SettingsRoot::User, section, key);
    }
    std::optional<std::string> machine(const char* section, const char* key) {
        return host.settings.read(SettingsRoot::Machine, section, key);
    }
    void put(const char* section, const char* key, const std::string& value, bool root = false) {
        PutRegistryStr(host.settings, section, key, value, root);
    }
    // Start-up's settings steps, in their order.
    void start() {
        ResetVars(m);
        ASSERT_TRUE(GetAppPath(m, host, install()));
        DefaultPaths(m, host);
        setColours(m);
        SetDefaults(m);
        LoadRegistry(m, host);
    }
};

TEST(SettingsReads, SelfFillingAndTheNumericRule) {
    MemorySettings store;
    EXPECT_EQ(getRegistryStr(store, "HARVEST", "MINAGE", false), "");
    EXPECT_EQ(getRegStr(store, "USER", "USER", "nobody", false), "nobody");
    EXPECT_EQ(store.read(SettingsRoot::User, "USER", "USER"), "nobody");  // written back

    EXPECT_EQ(getRegLng(store, "HARVEST", "MINAGE", 40, false), 40);
    EXPECT_EQ(store.read(SettingsRoot::User, "harvest", "minage"), "40");  // keys ignore case
    // Text that is no number in range, empty text included, gives the fallback and stays.
    for (auto [stored, value] : {std::pair{"65", 65},
                                 {"sixty", 40},
                                 {"", 40},
                                 {"99999999999", 40},
                                 {"62.5", 62}}) {  // half to even
        PutRegistryStr(store, "HARVEST", "MINAGE", stored, false);
        EXPECT_EQ(getRegLng(store, "HARVEST", "MINAGE", 40, false), value) << stored;
        EXPECT_EQ(store.read(SettingsRoot::User, "HARVEST", "MINAGE"), stored);
    }
    // The machine root is a root of its own.
    EXPECT_EQ(getRegLng(store, "VDYP", "MAXAGE", 300, true), 300);
    EXPECT_EQ(store.read(SettingsRoot::Machine, "VDYP", "MAXAGE"), "300");
    EXPECT_EQ(store.read(SettingsRoot::User, "VDYP", "MAXAGE"), std::nullopt);
}

TEST(LoadRegistry, AFirstRunFillsTheStoreWithEveryKey) {
    Machine pc;
    pc.start();
    for (const SettingDef& def : settingsTable()) {
        const auto root = def.machine ? SettingsRoot::Machine : SettingsRoot::User;
        EXPECT_TRUE(pc.host.settings.read(root, def.section, def.key).has_value())
            << def.section << "/" << def.key;
    }
    for (const char* key : {"FILE0", "FILE1", "FILE2", "FILE3"})
        EXPECT_EQ(pc.user("FILES", key), "");
    EXPECT_EQ(pc.user("HARVEST", "SPLIT"), "100.0");
    EXPECT_EQ(pc.user("HARVEST", "PCADJUSTFACT"), "0.80");
    EXPECT_EQ(pc.user("COLORS", "MATURED"), std::to_string(rgb(64, 127, 0)));
    EXPECT_EQ(pc.machine("FileLocations", "TIPSYexe"), pc.install() + "TIPSY/btipsy");
    EXPECT_EQ(pc.user("FileLocations", "UserDocuments"), pc.documents());
    EXPECT_EQ(pc.user("FileLocations", "UserTemp"), pc.temp());

    const ProjectSettings& s = pc.m.Settings;
    EXPECT_EQ(std::tie(s.MINAGE, s.PCADJUSTFACT, s.YieldIncAge[1], pc.m.LaunchEditor),
              std::make_tuple(40, 0.8f, 10, 1));
}

TEST(LoadRegistry, StoredValuesOverrideTheDefaults) {
    Machine pc;
    pc.put("HARVEST", "MINVOL", "175.5");
    pc.put("HARVEST", "PLANHORZ", "not a number");
    pc.put("HARVEST", "MINAGE", "70000");  // beyond 16 bits
    pc.put("TIPSY", "INCAGE", "5", true);
    pc.put("COLORS", "AGE", "65280");
    pc.put("USER", "COMPANY", "Cedar Creek Ltd.");
    pc.put("FILES", "FILE0", "/plans/a.arx");
    pc.start();
    const ProjectSettings& s = pc.m.Settings;
    EXPECT_EQ(std::tie(s.MINVOL, s.PLANHORZ, s.MINAGE, s.YieldIncAge[1], s.COLORS[ColAGE]),
              std::make_tuple(175.5f, 250, 40, 5, 65280));
    EXPECT_EQ(pc.user("HARVEST", "PLANHORZ"), "not a number");
    EXPECT_EQ(pc.m.Header.Company.str(), "Cedar Creek Ltd.");
    EXPECT_EQ(pc.m.LastFiles[0], "/plans/a.arx");
}

TEST(LoadRegistry, ANewUserGetsTheSampleFolderAndItsProjects) {
    Machine bare;
    bare.start();
    const std::string samples = bare.documents() + "sample";
    EXPECT_TRUE(fs::is_directory(samples));  // no sample folder installed: an empty folder
    EXPECT_TRUE(fs::is_empty(samples));
    EXPECT_EQ(bare.host.status.texts.at(0), "Setting up new user: pat");

    Machine pc;
    fs::create_directories(pc.dir.file("install/sample"));
    touch(pc.dir.file("install/sample/Woodlot.arx"));
    pc.start();
    const std::string copied = pc.documents() + "sample/Woodlot.arx";
    EXPECT_TRUE(fs::exists(copied));

    // The second start is no new user: nothing is shown or copied again.
    fs::remove(copied);
    pc.host.status.texts.clear();
    pc.start();
    EXPECT_TRUE(pc.host.status.texts.empty());
    EXPECT_FALSE(fs::exists(copied));
}

TEST(LoadRegistry, AFolderAnOldInstallerLeftIsNotInherited) {
    Machine pc;
    pc.put("FileLocations", "UserDocuments", "C:\\mkerr_b\\docs");
    pc.put("FileLocations", "UserTemp", "C:\\mkerr_b\\temp");
    pc.start();
    EXPECT_EQ(pc.m.Paths[UserDocuments], pc.documents());
    EXPECT_EQ(pc.m.Paths[UserTemp], pc.temp());
    EXPECT_EQ(pc.user("FileLocations", "UserTemp"), pc.m.Paths[UserTemp]);

    Machine kept;
    kept.put("FileLocations", "UserDocuments", "/srv/plans");
    kept.start();
    EXPECT_EQ(kept.m.Paths[UserDocuments], "/srv/plans/");
    EXPECT_TRUE(kept.host.status.texts.empty());
}

TEST(DefaultPaths, TheMachinesDocumentsFolderExpandsUserVariables) {
    Machine pc;
    pc.put("FileLocations", "DefaultUserDocuments", "%UserProfile%/Plans/%UserName%", true);
    pc.m.Paths[ArborexFolder] = pc.install();
    DefaultPaths(pc.m, pc.host);
    EXPECT_EQ(pc.m.Paths[DefaultUserDocuments], pc.dir.file("home/Plans/pat"));
    EXPECT_EQ(pc.m.Paths[UserDocuments], pc.dir.file("home/Plans/pat/"));
    EXPECT_EQ(pc.m.Files[FileVDYPexe], pc.install() + "VDYP/vdypbat");
    EXPECT_EQ(pc.m.Files[FileManual], pc.install() + "AXRM31.pdf");
    EXPECT_EQ(pc.m.Files[FileChartex], pc.install() + "arborex-chart");  // data beside it
}

TEST(DefaultPaths, TheGraphingProgramIsArborexChartBesideTheProgram) {
    // Paths[0] as the program finds it in an installation or the build tree: PREFIX/bin/ holds
    // the programs, PREFIX/share/arborex/ the data.
    for (const char* data : {"/usr/share/arborex/", "/usr/bin/../share/arborex/"}) {
        Machine pc;
        pc.m.Paths[ArborexFolder] = data;
        DefaultPaths(pc.m, pc.host);
        EXPECT_EQ(pc.m.Files[FileChartex], "/usr/bin/arborex-chart") << data;
        EXPECT_EQ(pc.m.Files[FileManual].rfind("/usr/share/doc/arborex/guide/index.", 0), 0u)
            << data;  // the user's guide, HTML or Markdown
    }
}

TEST(GetAppPath, AsksUntilAFolderHoldsTheSpeciesTable) {
    Machine pc;
    // Found beside the program, in any case, and remembered.
    ASSERT_TRUE(GetAppPath(pc.m, pc.host, pc.dir.file("install")));
    EXPECT_EQ(pc.m.Paths[ArborexFolder], pc.install());
    EXPECT_EQ(pc.user("FileLocations", "ArborexFolder"), pc.install());

    Machine lost;
    lost.host.prompt.inputs = {std::string(lost.dir.file("nowhere")), lost.dir.file("install")};
    ASSERT_TRUE(GetAppPath(lost.m, lost.host, lost.dir.file("home")));
    EXPECT_EQ(lost.m.Paths[ArborexFolder], lost.install());
    ASSERT_EQ(lost.host.prompt.shown.size(), 2u);
    EXPECT_EQ(lost.host.prompt.shown[0].title, "Arborex Not Found (speciest.dat)");
    EXPECT_EQ(lost.host.prompt.shown[0].text,
              "'Speciest.dat' not found.  Please enter the path to Arborex: ");

    // An empty answer and a cancel both give up.
    for (const std::optional<std::string>& answer :
         {std::optional<std::string>(""), std::optional<std::string>()}) {
        Machine gaveUp;
        gaveUp.host.prompt.inputs = {answer};
        EXPECT_FALSE(GetAppPath(gaveUp.m, gaveUp.host, gaveUp.dir.file("home")));
    }
}

TEST(CheckPaths, MakesTheFoldersAndListsMissingProgramsInOneBox) {
    Machine pc;
    pc.start();
    touch(pc.m.Files[FileManual]);
    fs::create_directories(pc.install() + "VDYP");
    touch(pc.m.Files[FileVDYPexe]);
    pc.m.Files[FileChartex].clear();
    CheckPaths(pc.m, pc.host);
    EXPECT_TRUE(fs::is_directory(pc.m.Paths[UserTemp]));
    EXPECT_TRUE(fs::is_directory(pc.m.Paths[UserDocuments]));
    EXPECT_TRUE(pc.host.prompt.failures.empty());
    ASSERT_EQ(pc.host.prompt.shown.size(), 1u);
    const std::string missing = "File not found: " + pc.install();
    EXPECT_EQ(pc.host.prompt.shown[0].text,
              missing + "TIPSY/btipsy\n" + missing + "VDYP/vdyp.hlp\n" + missing +
                  "TIPSY/TIPSY32.hlp\nFile not found!\n" + missing + "TIPSY/arborex2.btp");
}

TEST(CheckPaths, AFolderThatCannotBeWrittenGoesToTheErrorScreen) {
    Machine pc;
    pc.start();
    touch(pc.dir.file("blocker"));
    pc.m.Paths[UserTemp] = pc.dir.file("blocker/temp/");  // under a file: cannot be made
    pc.host.prompt.errorChoices = {ErrorChoice::Ignore};
    CheckPaths(pc.m, pc.host);
    ASSERT_EQ(pc.host.prompt.failures.size(), 1u);
    EXPECT_EQ(pc.host.prompt.failures[0].location, "CheckPaths / modNew");
    EXPECT_TRUE(fs::is_directory(pc.m.Paths[UserDocuments]));  // Ignore went on with the next
    EXPECT_EQ(checkPathRW(pc.m.Paths[UserDocuments], pc.m.RunId), "");
}

TEST(SaveSettings, HarvestKeysAreSpelledInCapitalsAndNetDownKeepsItsFirstValue) {
    Machine pc;
    pc.start();
    ProjectSettings& s = pc.m.Settings;
    s.PCnext = 25;
    s.PCperc = 35;
    s.PCNETDOWN = 5;
    s.SPLIT = 12.25f;
    s.MINVOL = 180.5f;
    SaveRegHarvest(pc.m, pc.host.settings);
    // PCperc is the same value by any case; SPLIT is written as "0.0".
    for (auto [key, value] : {std::pair{"PCNEXT", "25"},
                              {"PCperc", "35"},
                              {"PCNETDOWN", "20"},
                              {"SPLIT", "12.3"},
                              {"MINVOL", "180.5"}})
        EXPECT_EQ(pc.user("HARVEST", key), value) << key;

    Model fresh;
    SetDefaults(fresh);
    ResetVars(fresh);
    fresh.Paths = pc.m.Paths;
    LoadRegistry(fresh, pc.host);
    EXPECT_EQ(std::tie(fresh.Settings.PCnext, fresh.Settings.PCperc), std::make_tuple(25, 35));
}

TEST(SaveSettings, ProjectInfoAndTheSettingsScreensGroups) {
    Machine pc;
    pc.start();
    pc.m.Header.User = "Pat Logger";
    pc.m.Header.Licence = "W1234";
    pc.m.Header.Scenario = "7";
    SaveRegProjectInfo(pc.m, pc.host.settings);
    EXPECT_EQ(pc.user("USER", "USER"), "Pat Logger");
    EXPECT_EQ(pc.user("USER", "ARBOREX"), "W1234");

    pc.m.Settings.YieldMaxAge[0] = 250;
    pc.m.Settings.YIELDINC = 5;
    SaveRegSettings(pc.m, pc.host.settings, false);
    EXPECT_EQ(pc.user("DISPLAY", "YIELDINC"), "5");
    EXPECT_EQ(pc.machine("VDYP", "MAXAGE"), "300");
    SaveRegSettings(pc.m, pc.host.settings, true);
    EXPECT_EQ(pc.machine("VDYP", "MAXAGE"), "250");
}

TEST(SettingsLock, ASecondCopyFindsTheLockAndAUserWithoutRightsIsTold) {
    MemorySettings store;
    EXPECT_EQ(takeSettingsLock(store, SettingsRoot::User, "123456"), LockResult::Taken);
    EXPECT_EQ(takeSettingsLock(store, SettingsRoot::User, "654321"), LockResult::InUse);
    EXPECT_EQ(lockMessage(SettingsRoot::User, LockResult::InUse),
              "User access is already in use by another user");
    releaseSettingsLock(store, SettingsRoot::User);
    EXPECT_EQ(takeSettingsLock(store, SettingsRoot::User, "654321"), LockResult::Taken);

    store.machineReadOnly = true;
    EXPECT_EQ(takeSettingsLock(store, SettingsRoot::Machine, "123456"), LockResult::NoAccess);
    EXPECT_EQ(lockMessage(SettingsRoot::Machine, LockResult::NoAccess),
              "You do not have access to the administrative settings");
    EXPECT_EQ(lockMessage(SettingsRoot::Machine, LockResult::InUse),
              "Admin access is already in use by another user");
}

TEST(FindAssociatedApp, AsksTheDesktopAboutAScratchFile) {
    Machine pc;
    fs::create_directories(pc.dir.file("home/.local/share"));
    pc.host.system.applications = {{".txt", "/usr/bin/gedit"}};
    EXPECT_EQ(FindAssociatedApp(pc.host, ".txt"), "/usr/bin/gedit");
    EXPECT_EQ(FindAssociatedApp(pc.host, ".bmp"), "");
    EXPECT_FALSE(fs::exists(pc.dir.file("home/.local/share/test.txt")));  // cleaned up
}

}  // namespace
}  // namespace arborex
