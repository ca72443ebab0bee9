#include "host/system/SystemFiles.h"

#include <gtest/gtest.h>

#include "host/Notes.h"
#include "host/Root.h"
#include "tests/unit/host/Tree.h"

using namespace host;

namespace
{
class SystemFilesOf : public testing::Test
{
protected:
    Tree tree_;
    Notes notes_;
    const Root root_{tree_.folder(), notes_};
};
} // namespace

TEST_F(SystemFilesOf, theBootTimeIsALineOfItsOwn)
{
    EXPECT_EQ(bootTime(root_), std::nullopt);
    tree_.file("/proc/stat", "cpu  1 2\nintr 5 btime 3\nbtime 1700000000\nbtime 2\n");
    EXPECT_EQ(bootTime(root_), 1700000000);
    tree_.file("/proc/stat", "btime x\n");
    EXPECT_EQ(bootTime(root_), std::nullopt);
}

TEST_F(SystemFilesOf, theLocaleIsTheFirstThatIsSet)
{
    EXPECT_FALSE(localeOf(root_, "LC_MESSAGES"));
    tree_.file("/etc/default/locale", "LANG=de_DE.UTF-8\n");
    EXPECT_EQ(localeOf(root_, "LC_MESSAGES")->value, "de_DE.UTF-8");
    tree_.file("/etc/locale.conf", "# LC_ALL=x\nLC_ALL=\nLANG=\"C.UTF-8\"\nLC_MESSAGES=en_GB\n");
    EXPECT_EQ(localeOf(root_, "LC_MESSAGES")->value, "en_GB");
    EXPECT_EQ(localeOf(root_, "LC_CTYPE")->value, "C.UTF-8");
    EXPECT_EQ(localeOf(root_, "LC_CTYPE")->source, "/etc/locale.conf");
    tree_.file("/etc/locale.conf", "LC_ALL=fr_FR\nLANG=x\n");
    EXPECT_EQ(localeOf(root_, "LC_MESSAGES")->value, "fr_FR");
}

TEST_F(SystemFilesOf, theMachineIdIsTheSystemsElseTheBuses)
{
    EXPECT_FALSE(machineId(root_));
    tree_.file("/var/lib/dbus/machine-id", "bus\n");
    EXPECT_EQ(machineId(root_)->value, "bus");
    tree_.file("/etc/machine-id", "\n");
    EXPECT_EQ(machineId(root_)->value, "bus");
    tree_.file("/etc/machine-id", "system\n");
    EXPECT_EQ(machineId(root_)->value, "system");
}
