#include <gtest/gtest.h>

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
