#include "tool/OutputFile.h"

#include <csignal>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>
#include <sys/resource.h>
#include <sys/stat.h>

using namespace tool;

namespace
{
class OutputFile : public testing::Test
{
protected:
    void SetUp() override
    {
        std::string name = testing::TempDir() + "invhw-output-XXXXXX";
        ASSERT_NE(mkdtemp(name.data()), nullptr);
        folder_ = name;
        file_ = (folder_ / "report").string();
    }
    void TearDown() override { std::filesystem::remove_all(folder_); }

    static std::string contentOf(const std::string& path)
    {
        std::ostringstream content;
        content << std::ifstream(path).rdbuf();
        return content.str();
    }
    size_t files() const
    {
        return static_cast<size_t>(std::distance(std::filesystem::directory_iterator(folder_), {}));
    }

    std::filesystem::path folder_;
    std::string file_;
    std::string reason_;
};

void writeNew(std::ostream& out)
{
    out << "new";
}

// Ends the process: with 0 when the file was refused, which it says on standard error.
void writeTooMuch(const std::string& path)
{
    const rlimit limit{1 << 16, 1 << 16};
    setrlimit(RLIMIT_FSIZE, &limit);
    signal(SIGXFSZ, SIG_IGN);
    std::string reason;
    const bool written = writeOutput(
        path, [](std::ostream& out) { out << std::string(1 << 20, 'x'); }, reason);
    fputs(reason.c_str(), stderr);
    _exit(written ? 1 : 0);
}
} // namespace

TEST_F(OutputFile, isWrittenWholeForItsOwnerAlone)
{
    std::ofstream(file_) << "old and longer";
    ASSERT_TRUE(writeOutput(file_, writeNew, reason_)) << reason_;
    EXPECT_EQ(contentOf(file_), "new");
    EXPECT_EQ(files(), 1u);
    struct stat status;
    ASSERT_EQ(stat(file_.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0600u);
}

TEST_F(OutputFile, staysAsItWasWhenTheNewOneDoesNotFit)
{
    std::ofstream(file_) << "old";
    EXPECT_EXIT(writeTooMuch(file_), testing::ExitedWithCode(0), "report: File too large");
    EXPECT_EQ(contentOf(file_), "old");
    EXPECT_EQ(files(), 1u);
}

TEST_F(OutputFile, isNamedWhenItCannotBeMade)
{
    EXPECT_FALSE(writeOutput((folder_ / "none" / "report").string(), writeNew, reason_));
    EXPECT_EQ(reason_, (folder_ / "none" / "report").string() + ": No such file or directory");
    EXPECT_FALSE(writeOutput(folder_.string(), writeNew, reason_));
    EXPECT_NE(reason_.find("Is a directory"), std::string::npos) << reason_;
}

TEST_F(OutputFile, thatIsADeviceIsWrittenToAndNotReplaced)
{
    EXPECT_TRUE(writeOutput("/dev/null", writeNew, reason_)) << reason_;
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/null"));
    EXPECT_FALSE(writeOutput("/dev/full", writeNew, reason_));
    EXPECT_EQ(reason_, "/dev/full: No space left on device");
}
