#include <gtest/gtest.h>

#include <fstream>

#include "frame/settings_lock.hpp"
#include "platform/qt_settings_store.hpp"
#include "support/temp_dir.hpp"

namespace arborex {
namespace {

struct StoreFiles {
    test::TempDir dir;
    QString user = QString::fromStdString(dir.file("user.ini"));
    QString machine = QString::fromStdString(dir.file("machine.ini"));
};

TEST(QtSettingsStore, KeysAndSectionsIgnoreCase) {
    StoreFiles files;
    QtSettingsStore store(files.user, files.machine);
    store.write(SettingsRoot::User, "Harvest", "PCnext", "20");
    EXPECT_EQ(store.read(SettingsRoot::User, "HARVEST", "PCNEXT"), "20");
    EXPECT_EQ(store.read(SettingsRoot::User, "harvest", "pcnext"), "20");
    store.write(SettingsRoot::User, "HARVEST", "PCNEXT", "25");  // the same value, overwritten
    EXPECT_EQ(store.read(SettingsRoot::User, "Harvest", "PCnext"), "25");
}

TEST(QtSettingsStore, AbsentValuesAreNotEmptyValues) {
    StoreFiles files;
    QtSettingsStore store(files.user, files.machine);
    EXPECT_EQ(store.read(SettingsRoot::User, "FILES", "FILE0"), std::nullopt);
    store.write(SettingsRoot::User, "FILES", "FILE0", "");
    EXPECT_EQ(store.read(SettingsRoot::User, "FILES", "FILE0"), "");
    store.write(SettingsRoot::User, "", "Access", "123456");
    EXPECT_EQ(store.read(SettingsRoot::User, "", "ACCESS"), "123456");
}

TEST(QtSettingsStore, TheTwoRootsAreKeptApartAndPersist) {
    StoreFiles files;
    {
        QtSettingsStore store(files.user, files.machine);
        store.write(SettingsRoot::User, "USER", "USER", "Pat");
        store.write(SettingsRoot::Machine, "FileLocations", "VDYPexe", "/opt/vdyp/vdypbat");
        EXPECT_EQ(store.read(SettingsRoot::Machine, "USER", "USER"), std::nullopt);
        EXPECT_EQ(store.read(SettingsRoot::User, "FileLocations", "VDYPexe"), std::nullopt);
    }
    QtSettingsStore reopened(files.user, files.machine);
    EXPECT_EQ(reopened.read(SettingsRoot::User, "USER", "USER"), "Pat");
    EXPECT_EQ(reopened.read(SettingsRoot::Machine, "FILELOCATIONS", "vdypexe"),
              "/opt/vdyp/vdypbat");
}

TEST(QtSettingsStore, AMachineRootThatCannotBeWrittenKeepsWhatItHad) {
    StoreFiles files;
    // A machine file whose folder is a plain file can never be written, even by root.
    std::ofstream(files.dir.file("blocked")) << "x";
    const QString machine = QString::fromStdString(files.dir.file("blocked/machine.ini"));
    QtSettingsStore store(files.user, machine);
    store.write(SettingsRoot::Machine, "VDYP", "MAXAGE", "250");
    EXPECT_EQ(store.read(SettingsRoot::Machine, "VDYP", "MAXAGE"), std::nullopt);
    EXPECT_EQ(takeSettingsLock(store, SettingsRoot::Machine, "123456"), LockResult::NoAccess);
    EXPECT_EQ(takeSettingsLock(store, SettingsRoot::User, "123456"), LockResult::Taken);

    // A second copy of the program, over the same files, finds the user lock.
    QtSettingsStore second(files.user, machine);
    EXPECT_EQ(takeSettingsLock(second, SettingsRoot::User, "654321"), LockResult::InUse);
}

TEST(QtSettingsStore, TextWithSeparatorsComesBackWhole) {
    StoreFiles files;
    const std::string path = "/home/u/My Plans/a, b; c=d \"x\".arx";
    {
        QtSettingsStore(files.user, files.machine)
            .write(SettingsRoot::User, "FILES", "FILE1", path);
    }
    QtSettingsStore reopened(files.user, files.machine);
    EXPECT_EQ(reopened.read(SettingsRoot::User, "FILES", "FILE1"), path);
}

}  // namespace
}  // namespace arborex
