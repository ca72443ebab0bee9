// Every folder below tests/machines/ is one test: the machine is scanned, and report, log and side files must be those
// that were recorded with it, byte for byte. INVHW_RECORD=1 writes them anew instead; read them before you keep them.
// Arguments are names of folders, for these machines alone.

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>

#include "FakeMachine.h"
#include "tests/Expectation.h"

namespace fs = std::filesystem;

static std::vector<std::string> machineNames()
{
    std::vector<std::string> names;
    for (const fs::directory_entry& entry : fs::directory_iterator(INVHW_MACHINES))
        if (entry.is_directory())
            names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

static int scanCount(const std::string& folder)
{
    int count = 1;
    std::ifstream(folder + "/scans") >> count;
    return count;
}

class RecordedMachine : public testing::TestWithParam<std::string>
{
};

TEST_P(RecordedMachine, givesTheRecordedReport)
{
    const std::string folder = std::string(INVHW_MACHINES) + "/" + GetParam();
    FakeMachine machine = FakeMachine::open(folder);
    ScanResult result;
    for (int scans = scanCount(folder); scans > 0; --scans)
        result = machine.scan();
    ASSERT_FALSE(result.timedOut);
    ASSERT_EQ(result.signal, 0) << result.errors;
    ASSERT_EQ(result.exitStatus, 0) << result.errors;
    expectContent(folder + "/expected.xml", result.report);
    expectContent(folder + "/expected.log", result.log);
    if (fs::exists(folder + "/expected-files"))
        for (const fs::directory_entry& entry : fs::directory_iterator(folder + "/expected-files")) {
            const std::string name = entry.path().filename().string();
            EXPECT_EQ(result.files.count(name), 1u) << name << " was not written";
            expectContent(entry.path().string(), result.files[name]);
        }
}

// A folder's name in the characters that a test's name may have.
static std::string testName(std::string folder)
{
    for (char& c : folder)
        if (isalnum(static_cast<unsigned char>(c)) == 0)
            c = '_';
    return folder;
}

INSTANTIATE_TEST_SUITE_P(machines, RecordedMachine, testing::ValuesIn(machineNames()),
                         [](const auto& machine) { return testName(machine.param); });

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    std::string filter;
    for (int i = 1; i < argc; ++i) {
        if (!fs::exists(std::string(INVHW_MACHINES) + "/" + argv[i] + "/machine.conf")) {
            fprintf(stderr, "there is no machine %s/%s\n", INVHW_MACHINES, argv[i]);
            return 2;
        }
        filter += "*/" + testName(argv[i]) + ":";
    }
    if (!filter.empty())
        GTEST_FLAG_SET(filter, filter);
    const int status = RUN_ALL_TESTS();
    if (testing::UnitTest::GetInstance()->test_to_run_count() > 0)
        return status;
    fprintf(stderr, "no machine was scanned\n");
    return 2;
}
