#include "linux/storage/DriveNodes.h"

#include <fstream>
#include <gtest/gtest.h>
#include <string>

#include "tests/unit/LogCapture.h"

namespace
{

// A folder of device nodes: empty files that are called like some.
class Nodes : public testing::Test
{
protected:
    void SetUp() override { ASSERT_NE(mkdtemp(folder_), nullptr); }
    void TearDown() override { ASSERT_EQ(system(("rm -r " + std::string(folder_)).c_str()), 0); }

    std::string prefix() const { return std::string(folder_) + "/sg"; }
    void make(const std::string& suffix) const { std::ofstream(prefix() + suffix); }
    std::string next(bool letters) const
    {
        const OwnedText path = getNextDrive(prefix().c_str(), letters);
        return path == nullptr ? "none" : std::string(path.get()).substr(prefix().size());
    }

private:
    char folder_[32] = "/tmp/nodes_testXXXXXX";
};

} // namespace

TEST_F(Nodes, areEnumeratedToTheFirstGapAndThenAnew)
{
    make("0");
    make("1");
    make("3");
    EXPECT_EQ(next(false), "0");
    EXPECT_EQ(next(false), "1");
    EXPECT_EQ(next(false), "none");
    EXPECT_EQ(next(false), "0");
    EXPECT_EQ(next(false), "1");
    EXPECT_EQ(next(false), "none");
}

TEST_F(Nodes, haveLettersFromAOnInLetterMode)
{
    make("a");
    make("b");
    make("0");
    EXPECT_EQ(next(true), "a");
    EXPECT_EQ(next(true), "b");
    EXPECT_EQ(next(true), "none");
    EXPECT_EQ(next(false), "0");
    EXPECT_EQ(next(false), "none");
}

TEST_F(Nodes, haveTheNextCharactersBehindZ)
{
    for (char c = 'a'; c <= '{'; ++c)
        make(std::string(1, c));
    for (char c = 'a'; c <= '{'; ++c)
        EXPECT_EQ(next(true), std::string(1, c));
    EXPECT_EQ(next(true), "none");
}

TEST_F(Nodes, endAt255ForTheRestOfTheProcess)
{
    for (int number = 0; number <= 256; ++number)
        make(std::to_string(number));
    auto enumerate = [this] {
        for (int number = 0; number < 255; ++number) {
            if (next(false) != std::to_string(number))
                exit(1);
        }
        const LogCapture log;
        const bool blocked = next(false) == "none" && next(true) == "none";
        const std::string line = "\n this is the pre-increment value  lastdrive  = 255 "
                                 "\n we have already processed a possibly valid dev/sg255";
        exit(blocked && log.text() == line + line ? 0 : 2);
    };
    EXPECT_EXIT(enumerate(), testing::ExitedWithCode(0), "");
}
