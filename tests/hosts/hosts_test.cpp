// Every folder below tests/hosts/ is one test: invhwctl scans the recording of that name, and the report must be the
// one that was recorded with it, byte for byte (with long runs of like rows folded). INVHW_RECORD=1 writes it anew
// instead; read it before you keep it. Arguments are names of folders, for these hosts alone.

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "tests/Expectation.h"
#include "tests/ctl/Program.h"

namespace fs = std::filesystem;

static std::vector<std::string> hostNames()
{
    std::vector<std::string> names;
    for (const fs::directory_entry& entry : fs::directory_iterator(INVHW_HOSTS))
        names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

class RecordedHost : public testing::TestWithParam<std::string>
{
};

TEST_P(RecordedHost, givesTheRecordedReport)
{
    const std::string host = std::string(INVHW_HOSTS) + "/" + GetParam();
    Program scan({"scan", "--format", "json", "--deadline", "60", "--root", host});
    const ProgramResult result = scan.run();
    ASSERT_EQ(result.status, 0) << result.errors;
    EXPECT_EQ(result.errors, "");
    fs::create_directories(std::string(INVHW_EXPECTED_HOSTS) + "/" + GetParam());
    expectContent(std::string(INVHW_EXPECTED_HOSTS) + "/" + GetParam() + "/expected.json", foldedLines(result.output));
}

// A folder's name in the characters that a test's name may have.
static std::string testName(std::string folder)
{
    std::replace(folder.begin(), folder.end(), '-', '_');
    return folder;
}

INSTANTIATE_TEST_SUITE_P(hosts, RecordedHost, testing::ValuesIn(hostNames()),
                         [](const auto& host) { return testName(host.param); });

TEST(Expectation, foldsRunsOfLikeLinesAndNothingElse)
{
    std::string run;
    for (int i = 0; i < 150; ++i)
        run +=
            "{\"Index\":" + std::to_string(i + 7) + ",\"Point\":\"/s0" + std::to_string(100 + i) + "\",\"Size\":42}\n";
    EXPECT_EQ(foldedLines("head\n" + run + "tail 1\ntail 2\n"),
              "head\n{\"Index\":7,\"Point\":\"/s0100\",\"Size\":42}\n"
              "@@ and 149 lines with these numbers one larger each: 1 2\ntail 1\ntail 2\n");
    const std::string few = "1\n2\n3\n\n3\n9\n10\n011\n18446744073709551615\n18446744073709551616\n";
    EXPECT_EQ(foldedLines(few), few);
    std::string broken = run;
    broken.replace(broken.find("\"/s0200\""), 8, "\"/s0201\"");
    EXPECT_NE(foldedLines(broken), foldedLines(run));
}

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    std::string filter;
    for (int i = 1; i < argc; ++i) {
        if (!fs::exists(std::string(INVHW_HOSTS) + "/" + argv[i])) {
            fprintf(stderr, "there is no host %s/%s\n", INVHW_HOSTS, argv[i]);
            return 2;
        }
        filter += "*/" + testName(argv[i]) + ":";
    }
    if (!filter.empty())
        GTEST_FLAG_SET(filter, filter);
    const int status = RUN_ALL_TESTS();
    if (testing::UnitTest::GetInstance()->test_to_run_count() > 0)
        return status;
    fprintf(stderr, "no host was scanned\n");
    return 2;
}
