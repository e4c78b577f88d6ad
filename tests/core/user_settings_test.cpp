#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "frame/file_locations.hpp"
#include "frame/settings_lock.hpp"
#include "frame/settings_store.hpp"
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

std::optional<std::string> userValue(test::FakeHost& host, const char* section, const char* key) {
    return host.settings.read(SettingsRoot::User, section, key);
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
    PutRegistryStr(store, "HARVEST", "MINAGE", "65", false);
    EXPECT_EQ(getRegLng(store, "HARVEST", "MINAGE", 40, false), 65);
    PutRegistryStr(store, "HARVEST", "MINAGE", "sixty", false);
    EXPECT_EQ(getRegLng(store, "HARVEST", "MINAGE", 40, false), 40);
    EXPECT_EQ(store.read(SettingsRoot::User, "HARVEST", "MINAGE"), "sixty");  // left as it was
    PutRegistryStr(store, "HARVEST", "MINAGE", "", false);
    EXPECT_EQ(getRegLng(store, "HARVEST", "MINAGE", 40, false), 40);  // empty is not a number
    PutRegistryStr(store, "HARVEST", "MINAGE", "99999999999", false);
    EXPECT_EQ(getRegLng(store, "HARVEST", "MINAGE", 40, false), 40);
    PutRegistryStr(store, "HARVEST", "MINAGE", "62.5", false);
    EXPECT_EQ(getRegLng(store, "HARVEST", "MINAGE", 40, false), 62);  // half to even
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
        EXPECT_EQ(userValue(pc.host, "FILES", key), "");
    EXPECT_EQ(userValue(pc.host, "HARVEST", "SPLIT"), "100.0");
    EXPECT_EQ(userValue(pc.host, "HARVEST", "PCADJUSTFACT"), "0.80");
    EXPECT_EQ(userValue(pc.host, "COLORS", "MATURED"), std::to_string(rgb(64, 127, 0)));
    EXPECT_EQ(pc.host.settings.read(SettingsRoot::Machine, "FileLocations", "TIPSYexe"),
              pc.install() + "TIPSY/btipsy.exe");
    EXPECT_EQ(userValue(pc.host, "FileLocations", "UserDocuments"),
              pc.dir.file("home/Documents/Arborex for Windows/"));
    EXPECT_EQ(userValue(pc.host, "FileLocations", "UserTemp"),
              pc.dir.file("home/.local/share/Arborex/temp/"));

    EXPECT_EQ(pc.m.Settings.MINAGE, 40);
    EXPECT_EQ(pc.m.Settings.PCADJUSTFACT, 0.8f);
    EXPECT_EQ(pc.m.Settings.YieldIncAge[1], 10);
    EXPECT_EQ(pc.m.LaunchEditor, 1);
}

TEST(LoadRegistry, StoredValuesOverrideTheDefaults) {
    Machine pc;
    PutRegistryStr(pc.host.settings, "HARVEST", "MINVOL", "175.5", false);
    PutRegistryStr(pc.host.settings, "HARVEST", "PLANHORZ", "not a number", false);
    PutRegistryStr(pc.host.settings, "HARVEST", "MINAGE", "70000", false);  // beyond 16 bits
    PutRegistryStr(pc.host.settings, "TIPSY", "INCAGE", "5", true);
    PutRegistryStr(pc.host.settings, "COLORS", "AGE", "65280", false);
    PutRegistryStr(pc.host.settings, "USER", "COMPANY", "Cedar Creek Ltd.", false);
    PutRegistryStr(pc.host.settings, "FILES", "FILE0", "/plans/a.arx", false);
    pc.start();
    EXPECT_EQ(pc.m.Settings.MINVOL, 175.5f);
    EXPECT_EQ(pc.m.Settings.PLANHORZ, 250);
    EXPECT_EQ(userValue(pc.host, "HARVEST", "PLANHORZ"), "not a number");
    EXPECT_EQ(pc.m.Settings.MINAGE, 40);
    EXPECT_EQ(pc.m.Settings.YieldIncAge[1], 5);
    EXPECT_EQ(pc.m.Settings.COLORS[ColAGE], 65280);
    EXPECT_EQ(pc.m.Header.Company.str(), "Cedar Creek Ltd.");
    EXPECT_EQ(pc.m.LastFiles[0], "/plans/a.arx");
}

TEST(LoadRegistry, ANewUserGetsTheSampleFolderAndItsProjects) {
    Machine bare;
    bare.start();
    const std::string samples = bare.dir.file("home/Documents/Arborex for Windows/sample");
    EXPECT_TRUE(fs::is_directory(samples));  // no sample folder installed: an empty folder
    EXPECT_TRUE(fs::is_empty(samples));
    EXPECT_EQ(bare.host.status.texts.at(0), "Setting up new user: pat");

    Machine pc;
    fs::create_directories(pc.dir.file("install/sample"));
    touch(pc.dir.file("install/sample/Woodlot.arx"));
    pc.start();
    EXPECT_TRUE(fs::exists(pc.dir.file("home/Documents/Arborex for Windows/sample/Woodlot.arx")));

    // The second start is no new user: nothing is shown or copied again.
    fs::remove(pc.dir.file("home/Documents/Arborex for Windows/sample/Woodlot.arx"));
    pc.host.status.texts.clear();
    pc.start();
    EXPECT_TRUE(pc.host.status.texts.empty());
    EXPECT_FALSE(fs::exists(pc.dir.file("home/Documents/Arborex for Windows/sample/Woodlot.arx")));
}

TEST(LoadRegistry, AFolderAnOldInstallerLeftIsNotInherited) {
    Machine pc;
    PutRegistryStr(pc.host.settings, "FileLocations", "UserDocuments", "C:\\mkerr_b\\docs", false);
    PutRegistryStr(pc.host.settings, "FileLocations", "UserTemp", "C:\\mkerr_b\\temp", false);
    pc.start();
    EXPECT_EQ(pc.m.Paths[UserDocuments], pc.dir.file("home/Documents/Arborex for Windows/"));
    EXPECT_EQ(pc.m.Paths[UserTemp], pc.dir.file("home/.local/share/Arborex/temp/"));
    EXPECT_EQ(userValue(pc.host, "FileLocations", "UserTemp"), pc.m.Paths[UserTemp]);

    Machine kept;
    PutRegistryStr(kept.host.settings, "FileLocations", "UserDocuments", "/srv/plans", false);
    kept.start();
    EXPECT_EQ(kept.m.Paths[UserDocuments], "/srv/plans/");
    EXPECT_TRUE(kept.host.status.texts.empty());
}

TEST(DefaultPaths, TheMachinesDocumentsFolderExpandsUserVariables) {
    Machine pc;
    PutRegistryStr(pc.host.settings, "FileLocations", "DefaultUserDocuments",
                   "%UserProfile%/Plans/%UserName%", true);
    pc.m.Paths[ArborexFolder] = pc.install();
    DefaultPaths(pc.m, pc.host);
    EXPECT_EQ(pc.m.Paths[DefaultUserDocuments], pc.dir.file("home/Plans/pat"));
    EXPECT_EQ(pc.m.Paths[UserDocuments], pc.dir.file("home/Plans/pat/"));
    EXPECT_EQ(pc.m.Files[FileVDYPexe], pc.install() + "VDYP/vdypbat.exe");
    EXPECT_EQ(pc.m.Files[FileManual], pc.install() + "AXRM31.pdf");
}

TEST(GetAppPath, AsksUntilAFolderHoldsTheSpeciesTable) {
    Machine pc;
    // Found beside the program, in any case, and remembered.
    ASSERT_TRUE(GetAppPath(pc.m, pc.host, pc.dir.file("install")));
    EXPECT_EQ(pc.m.Paths[ArborexFolder], pc.install());
    EXPECT_EQ(userValue(pc.host, "FileLocations", "ArborexFolder"), pc.install());

    Machine lost;
    lost.host.prompt.inputs = {std::string(lost.dir.file("nowhere")), lost.dir.file("install")};
    ASSERT_TRUE(GetAppPath(lost.m, lost.host, lost.dir.file("home")));
    EXPECT_EQ(lost.m.Paths[ArborexFolder], lost.install());
    ASSERT_EQ(lost.host.prompt.shown.size(), 2u);
    EXPECT_EQ(lost.host.prompt.shown[0].title, "Arborex Not Found (speciest.dat)");
    EXPECT_EQ(lost.host.prompt.shown[0].text,
              "'Speciest.dat' not found.  Please enter the path to Arborex: ");

    Machine gaveUp;
    gaveUp.host.prompt.inputs = {std::string()};
    EXPECT_FALSE(GetAppPath(gaveUp.m, gaveUp.host, gaveUp.dir.file("home")));
    Machine cancelled;
    cancelled.host.prompt.inputs = {std::nullopt};
    EXPECT_FALSE(GetAppPath(cancelled.m, cancelled.host, cancelled.dir.file("home")));
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
    const std::string& text = pc.host.prompt.shown[0].text;
    EXPECT_EQ(text, "File not found: " + pc.install() + "TIPSY/btipsy.exe\n" + "File not found: " +
                        pc.install() + "VDYP/vdyp.hlp\n" + "File not found: " + pc.install() +
                        "TIPSY/TIPSY32.hlp\n" + "File not found!\n" +
                        "File not found: " + pc.install() + "TIPSY/arborex2.btp");
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
    pc.m.Settings.PCnext = 25;
    pc.m.Settings.PCperc = 35;
    pc.m.Settings.PCNETDOWN = 5;
    pc.m.Settings.SPLIT = 12.25f;
    pc.m.Settings.MINVOL = 180.5f;
    SaveRegHarvest(pc.m, pc.host.settings);
    EXPECT_EQ(userValue(pc.host, "HARVEST", "PCNEXT"), "25");
    EXPECT_EQ(userValue(pc.host, "HARVEST", "PCperc"), "35");  // the same value by any case
    EXPECT_EQ(userValue(pc.host, "HARVEST", "PCNETDOWN"), "20");
    EXPECT_EQ(userValue(pc.host, "HARVEST", "SPLIT"), "12.3");  // written as "0.0"
    EXPECT_EQ(userValue(pc.host, "HARVEST", "MINVOL"), "180.5");

    Model fresh;
    SetDefaults(fresh);
    ResetVars(fresh);
    fresh.Paths = pc.m.Paths;
    LoadRegistry(fresh, pc.host);
    EXPECT_EQ(fresh.Settings.PCnext, 25);
    EXPECT_EQ(fresh.Settings.PCperc, 35);
}

TEST(SaveSettings, ProjectInfoAndTheSettingsScreensGroups) {
    Machine pc;
    pc.start();
    pc.m.Header.User = "Pat Logger";
    pc.m.Header.Licence = "W1234";
    pc.m.Header.Scenario = "7";
    SaveRegProjectInfo(pc.m, pc.host.settings);
    EXPECT_EQ(userValue(pc.host, "USER", "USER"), "Pat Logger");
    EXPECT_EQ(userValue(pc.host, "USER", "ARBOREX"), "W1234");

    pc.m.Settings.YieldMaxAge[0] = 250;
    pc.m.Settings.YIELDINC = 5;
    SaveRegSettings(pc.m, pc.host.settings, false);
    EXPECT_EQ(userValue(pc.host, "DISPLAY", "YIELDINC"), "5");
    EXPECT_EQ(pc.host.settings.read(SettingsRoot::Machine, "VDYP", "MAXAGE"), "300");
    SaveRegSettings(pc.m, pc.host.settings, true);
    EXPECT_EQ(pc.host.settings.read(SettingsRoot::Machine, "VDYP", "MAXAGE"), "250");
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
