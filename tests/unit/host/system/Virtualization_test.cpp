#include "host/system/Virtualization.h"

#include <gtest/gtest.h>

#include "host/Notes.h"
#include "host/RecordedKernel.h"
#include "host/Root.h"
#include "host/TimeZone.h"
#include "tests/unit/host/Tree.h"

using namespace host;

// What is told of a tree, whose processor no leaf is known of.
static std::string virtualization(const Tree& tree)
{
    Notes notes;
    const Root root(tree.folder(), notes);
    const KernelRecording nothing;
    const RecordedKernel kernel(nothing);
    const TimeZone zone = TimeZone::of(root);
    const MaybeFact fact = virtualizationOf({root, kernel, zone, {}});
    return fact ? fact->value + " of " + fact->source : "absent";
}

TEST(VirtualizationOf, isNoneWhereTheProcessorsNameNoHypervisor)
{
    const Tree tree;
    tree.file("/proc/cpuinfo", "processor\t: 0\nflags\t\t: fpu vmx\n");
    EXPECT_EQ(virtualization(tree), "None of /proc/cpuinfo");
    tree.file("/proc/cpuinfo", "processor\t: 0\nFeatures\t: fp asimd\n");
    EXPECT_EQ(virtualization(tree), "None of /proc/cpuinfo");
    tree.file("/proc/cpuinfo", "processor\t: 0\nflags\t\t: fpu hypervisor vmx\n");
    EXPECT_EQ(virtualization(tree), "Other of /proc/cpuinfo");
}

// A file that is there and cannot be read says nothing.
TEST(VirtualizationOf, isAbsentWhereTheProcessorsCannotBeRead)
{
    const Tree tree;
    EXPECT_EQ(virtualization(tree), "absent");
    tree.file("/proc/cpuinfo", "");
    EXPECT_EQ(virtualization(tree), "absent");
    std::filesystem::remove(tree.at("/proc/cpuinfo"));
    tree.fifo("/proc/cpuinfo");
    EXPECT_EQ(virtualization(tree), "absent");
    std::filesystem::remove(tree.at("/proc/cpuinfo"));
    tree.sparse("/proc/cpuinfo", 4096);
    EXPECT_EQ(virtualization(tree), "absent");
}
