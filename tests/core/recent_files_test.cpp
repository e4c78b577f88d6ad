#include <gtest/gtest.h>

#include "model/recent_files.hpp"
#include "support/fake_host.hpp"

namespace arborex {
namespace {

TEST(RecentFiles, NewPathsGoOnTopAndTheOldestDropsOff) {
    Model m;
    test::FakeHost host;
    for (const char* p : {"a.arx", "b.arx", "c.arx", "d.arx", "e.arx"}) AddLast(m, host, p);
    EXPECT_EQ(m.LastFiles, (std::array<std::string, 4>{"e.arx", "d.arx", "c.arx", "b.arx"}));
    EXPECT_EQ(host.views.recentChanges, 5);
}

TEST(RecentFiles, AListedPathMovesUpInsteadOfRepeating) {
    Model m;
    test::FakeHost host;
    for (const char* p : {"a.arx", "b.arx", "c.arx"}) AddLast(m, host, p);
    AddLast(m, host, "a.arx");
    EXPECT_EQ(m.LastFiles, (std::array<std::string, 4>{"a.arx", "c.arx", "b.arx", ""}));
    OrderLast(m, host, 2);
    EXPECT_EQ(m.LastFiles, (std::array<std::string, 4>{"b.arx", "a.arx", "c.arx", ""}));
}

TEST(RecentFiles, CaptionsAndTheSettingsRoundTrip) {
    Model m;
    test::FakeHost host;
    AddLast(m, host, "/home/u/woodlot.arx");
    EXPECT_EQ(recentCaption(m, 0), "&0 /home/u/woodlot.arx");
    EXPECT_EQ(recentCaption(m, 1), "&1   -empty-");

    SaveRegLast(m, host.settings);
    EXPECT_EQ(host.settings.read(SettingsRoot::User, "FILES", "file0"), "/home/u/woodlot.arx");
    Model other;
    LoadRegLast(other, host.settings);
    EXPECT_EQ(other.LastFiles, m.LastFiles);
}

}  // namespace
}  // namespace arborex
