#include "host/memory/ErrorCounts.h"

#include <gtest/gtest.h>

#include "host/Notes.h"
#include "host/Root.h"
#include "report/catalog/AttributeIds.h"
#include "tests/unit/host/Collected.h"
#include "tests/unit/host/firmware/FirmwareBytes.h"

using namespace host;

namespace
{
// What modules get of labels: "-" or the place of the label among them.
std::string chosen(const std::vector<std::string>& labels, const std::vector<ModulePlace>& modules)
{
    std::vector<ErrorCounts> counts;
    for (const std::string& label : labels)
        counts.push_back({label, "", {}, {}});
    std::string text;
    for (const ErrorCounts* one : countsOfModules(counts, modules))
        text += one == nullptr ? "-" : std::to_string(one - counts.data());
    return text;
}

void dimm(const Tree& tree, const std::string& place, const char* label, const char* corrected, const char* uncorrected)
{
    const std::string folder = "/sys/devices/system/edac/mc/" + place + '/';
    tree.file(folder + "dimm_label", label);
    tree.file(folder + "dimm_ce_count", corrected);
    tree.file(folder + "dimm_ue_count", uncorrected);
}

std::string module(uint16_t handle, const std::string& socket, const std::string& bank, uint64_t megabytes)
{
    return StructureBytes(17, 40, handle).put(12, megabytes, 2).string(16, socket).string(17, bank).bytes();
}
} // namespace

TEST(ErrorCounts, goToTheModuleThatTheLabelNames)
{
    EXPECT_EQ(chosen({"DIMM_B1", "DIMM_A1"}, {{"DIMM_A1", "P0"}, {"DIMM_B1", "P0"}, {"DIMM_C1", "P0"}}), "10-");
    EXPECT_EQ(chosen({"P0 DIMM 0", "P1 DIMM 0"}, {{"DIMM 0", "P0"}, {"DIMM 0", "P1"}}), "01");
    EXPECT_EQ(chosen({"DIMM 0 P1"}, {{"DIMM 0", "P0"}, {"DIMM 0", "P1"}}), "-0");
}

TEST(ErrorCounts, goToNoModuleThatMayBeAnother)
{
    EXPECT_EQ(chosen({"DIMM 0"}, {{"DIMM 0", "P0"}, {"DIMM 0", "P1"}}), "--") << "one label, two modules";
    EXPECT_EQ(chosen({"DIMM 0", "P0 DIMM 0"}, {{"DIMM 0", "P0"}}), "-") << "two labels, one module";
    EXPECT_EQ(chosen({"DIMM 0", "P0 DIMM 0", "DIMM 0 P0"}, {{"DIMM 0", "P0"}}), "-");
    EXPECT_EQ(chosen({"mc#0channel#0slot#0", ""}, {{"DIMM 0", "P0"}, {"", "P0"}, {"", ""}}), "---");
    EXPECT_EQ(chosen({"P0 ", " P0"}, {{"", "P0"}}), "-");
    EXPECT_EQ(chosen({}, {{"DIMM 0", "P0"}}), "-");
}

TEST(ErrorCounts, ofRanksAreTheirModules)
{
    const Tree tree;
    dimm(tree, "mc0/rank0", "DIMM_A1\n", "3\n", "0\n");
    dimm(tree, "mc0/rank1", "DIMM_A1\n", "4\n", "1\n");
    dimm(tree, "mc0/rank2", "DIMM_B1\n", "5\n", "x\n");
    dimm(tree, "mc0/csrow0", "DIMM_C1\n", "6\n", "0\n");
    dimm(tree, "mcx/dimm0", "DIMM_D1\n", "6\n", "0\n");
    Notes notes;
    const std::vector<ErrorCounts> counts = readErrorCounts(Root(tree.folder(), notes));
    ASSERT_EQ(counts.size(), 2u);
    EXPECT_EQ(counts[0].label, "DIMM_A1");
    EXPECT_EQ(counts[0].corrected, 7u);
    EXPECT_EQ(counts[0].uncorrected, 1u);
    EXPECT_EQ(counts[1].corrected, 5u);
    EXPECT_FALSE(counts[1].uncorrected);
}

TEST(ErrorCounts, ofALabelOfTwoControllersAreNobodys)
{
    const Tree tree;
    for (const char* controller : {"mc0", "mc1", "mc2"})
        dimm(tree, std::string(controller) + "/dimm0", "DIMM_A1\n", "1\n", "0\n");
    dimm(tree, "mc1/dimm1", "DIMM_B1\n", "2\n", "0\n");
    dimm(tree, "mc1/dimm2", "\n", "2\n", "0\n");
    Notes notes;
    const std::vector<ErrorCounts> counts = readErrorCounts(Root(tree.folder(), notes));
    ASSERT_EQ(counts.size(), 1u);
    EXPECT_EQ(counts[0].label, "DIMM_B1");
}

TEST(MemoryModules, haveTheErrorsThatTheKernelSaw)
{
    const Tree tree;
    tree.file("/sys/firmware/dmi/tables/DMI", module(1, "DIMM_A1", "P0", 16384) + module(2, "DIMM_A2", "P0", 0) +
                                                  module(3, "DIMM_B1", "P0", 16384) + endOfTable());
    dimm(tree, "mc0/dimm0", "DIMM_A1\n", "12\n", "0\n");
    dimm(tree, "mc0/dimm1", "DIMM_A2\n", "13\n", "0\n"); // wrongly labelled: nothing is there
    const Rows rows = collected(tree, GROUP_MEMORY_MODULES);
    ASSERT_EQ(rows.size(), 3u);
    EXPECT_NE(rows[0].find("|CorrectedErrors=12|UncorrectedErrors=0"), std::string::npos) << rows[0];
    EXPECT_EQ(rows[1].find("Errors"), std::string::npos) << rows[1];
    EXPECT_EQ(rows[2].find("Errors"), std::string::npos) << rows[2];
}
