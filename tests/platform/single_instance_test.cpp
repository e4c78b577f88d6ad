#include <gtest/gtest.h>

#include "platform/single_instance.hpp"
#include "support/temp_dir.hpp"

namespace arborex {
namespace {

TEST(SingleInstance, TheFirstCopyHoldsTheLockUntilItEnds) {
    test::TempDir dir;
    const QString lock = QString::fromStdString(dir.file("arborex.lock"));
    {
        SingleInstance first(lock);
        EXPECT_FALSE(first.anotherRunning());
        EXPECT_FALSE(first.anotherRunning());  // asking again does not find itself
        SingleInstance second(lock);
        EXPECT_TRUE(second.anotherRunning());
    }
    SingleInstance later(lock);
    EXPECT_FALSE(later.anotherRunning());
}

}  // namespace
}  // namespace arborex
