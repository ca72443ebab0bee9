#include "host/processor/Topology.h"

#include <gtest/gtest.h>

#include "host/Notes.h"
#include "tests/unit/host/Tree.h"

using namespace host;
using Numbers = std::vector<uint32_t>;

namespace
{
class TopologyOf : public testing::Test
{
protected:
    void processor(uint32_t number, const std::string& package, const std::string& siblings)
    {
        tree_.file(processorPath(number, "topology/physical_package_id"), package + "\n");
        tree_.file(processorPath(number, "topology/core_cpus_list"), siblings + "\n");
    }
    void lists(const std::string& online, const std::string& present)
    {
        tree_.file("/sys/devices/system/cpu/online", online + "\n");
        tree_.file("/sys/devices/system/cpu/present", present + "\n");
    }
    void cache(uint32_t number, const std::string& index, const char* level, const char* type, const char* size,
               const char* shared)
    {
        const std::string folder = processorPath(number, "cache/index" + index + "/");
        tree_.file(folder + "level", level);
        tree_.file(folder + "type", type);
        tree_.file(folder + "size", size);
        tree_.file(folder + "shared_cpu_list", shared);
    }

    Tree tree_;
    Notes notes_;
    const Root root_{tree_.folder(), notes_};
};
} // namespace

TEST_F(TopologyOf, packagesHaveTheirProcessorsCoresAndNodes)
{
    lists("0-3", "0-3");
    processor(0, "0", "0,2");
    processor(1, "7", "1,3");
    processor(2, "0", "0,2");
    processor(3, "7", "1,3");
    tree_.file("/sys/devices/system/node/node0/cpulist", "0,2\n");
    tree_.file("/sys/devices/system/node/node1/cpulist", "1,3\n");
    tree_.file("/sys/devices/system/node/nodes/cpulist", "0-3\n"); // no number
    const std::map<uint32_t, Package> packages = readPackages(root_);
    ASSERT_EQ(packages.size(), 2u);
    EXPECT_EQ(packages.at(0).online, (Numbers{0, 2}));
    EXPECT_EQ(packages.at(0).cores, std::set<std::string>{"0,2"});
    EXPECT_EQ(packages.at(7).online, (Numbers{1, 3}));
    EXPECT_EQ(packages.at(7).nodes, std::set<uint32_t>{1});
}

TEST_F(TopologyOf, processorsOffLineBelongToTheirNodesPackage)
{
    lists("0,1", "0-3");
    processor(0, "0", "0");
    processor(1, "1", "1");
    tree_.file("/sys/devices/system/node/node0/cpulist", "0\n");
    tree_.file("/sys/devices/system/node/node1/cpulist", "1\n");
    tree_.folder(processorPath(3, "node1"));
    const std::map<uint32_t, Package> packages = readPackages(root_);
    EXPECT_TRUE(packages.at(0).offline.empty());
    EXPECT_EQ(packages.at(1).offline, Numbers{3}); // nothing tells where 2 is
}

TEST_F(TopologyOf, theOnlyPackageHasAllThatAreOffLine)
{
    lists("0", "0-2");
    processor(0, "0", "0");
    EXPECT_EQ(readPackages(root_).at(0).offline, (Numbers{1, 2}));
}

TEST_F(TopologyOf, anOrderThatNoKernelHasChangesNothing)
{
    lists("2,0-1,1", "0-2");
    for (uint32_t number = 0; number < 3; ++number)
        processor(number, "0", std::to_string(number));
    const std::map<uint32_t, Package> packages = readPackages(root_);
    EXPECT_EQ(packages.at(0).online, (Numbers{0, 1, 2}));
    EXPECT_TRUE(packages.at(0).offline.empty());
}

TEST_F(TopologyOf, aMachineWithoutTopologyHasOnePackage)
{
    EXPECT_TRUE(readPackages(root_).empty());
    lists("0-1", "0-1");
    const std::map<uint32_t, Package> packages = readPackages(root_);
    ASSERT_EQ(packages.size(), 1u);
    EXPECT_EQ(packages.at(0).online, (Numbers{0, 1}));
    EXPECT_TRUE(packages.at(0).cores.empty());
}

TEST_F(TopologyOf, cachesCountOnceForAllThatShareThem)
{
    for (const uint32_t number : {0u, 1u}) {
        cache(number, "0", "1", "Data", "32K", std::to_string(number).c_str());
        cache(number, "1", "1", "Instruction", "64K", std::to_string(number).c_str());
        cache(number, "2", "2", "Unified", "1M", "0-1");
        cache(number, "3", "3", "Unified", "1G", "0-1");
    }
    Package package;
    package.online = {0, 1};
    const CacheSizes sizes = readCaches(root_, package);
    EXPECT_EQ(sizes.l1d, 64u);
    EXPECT_EQ(sizes.l1i, 128u);
    EXPECT_EQ(sizes.l2, 1024u);
    EXPECT_EQ(sizes.l3, 1048576u);
    EXPECT_EQ(sizes.largest, 1048576u);
}
