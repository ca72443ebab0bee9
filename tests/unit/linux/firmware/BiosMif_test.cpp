#include "linux/firmware/BiosMif.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "com/Owned.h"

static std::string shortDate(const char* isoDate)
{
    const OwnedText date(changeFormat(isoDate));
    return date == nullptr ? "null" : date.get();
}

TEST(ChangeFormat, makesMonthDayYear)
{
    EXPECT_EQ(shortDate("2004-07-15"), "07/15/04");
    EXPECT_EQ(shortDate(nullptr), "null");
    EXPECT_EQ(shortDate("2004-07-1"), "null") << "no half date";
    EXPECT_EQ(shortDate(""), "null");
}

static std::string oldDate(const char* line)
{
    const OwnedText date(extractDate(line));
    return date == nullptr ? "null" : date.get();
}

TEST(ExtractDate, takesTheQuotedTextOverTheTemplate)
{
    EXPECT_EQ(oldDate("    Value = \"07/15/04\"\n"), "07/15/04");
    EXPECT_EQ(oldDate("Value = \"UNK\""), "UNKDD/AA");
    EXPECT_EQ(oldDate("Value = \"\""), "MM/DD/AA");
    EXPECT_EQ(oldDate("Value = \"07/15/2004\""), "07/15/2004");
    EXPECT_EQ(oldDate("Value = \"07/15/04\n"), "07/15/04");
    EXPECT_EQ(oldDate("Value = 07/15/04\n"), "MM/DD/AA");
    EXPECT_EQ(oldDate(""), "MM/DD/AA");
    EXPECT_EQ(oldDate(nullptr), "null");
}

// A working folder of its own with a file in it.
class BiosMif : public testing::Test
{
protected:
    BiosMif()
    {
        EXPECT_NE(getcwd(before_, sizeof before_), nullptr);
        EXPECT_NE(mkdtemp(folder_), nullptr);
        EXPECT_EQ(chdir(folder_), 0);
    }
    ~BiosMif() override
    {
        unlink("hwxbios.mif");
        EXPECT_EQ(chdir(before_), 0);
        EXPECT_EQ(rmdir(folder_), 0) << "a file was left behind";
    }

    static void write(const std::string& text)
    {
        FILE* const stream = fopen("hwxbios.mif", "w");
        fwrite(text.data(), 1, text.size(), stream);
        fclose(stream);
    }
    static std::string content()
    {
        std::string text(1 << 20, '\0');
        FILE* const stream = fopen("hwxbios.mif", "r");
        text.resize(fread(text.data(), 1, text.size(), stream));
        fclose(stream);
        return text;
    }
    static struct stat status()
    {
        struct stat result;
        EXPECT_EQ(stat("hwxbios.mif", &result), 0);
        return result;
    }

    char before_[4096];
    char folder_[32] = "/tmp/invhw_mif_XXXXXX";
};

static const std::string kBefore = "Start Component\n  Value = \"not this\"\n  Name = \"BIOS_DATE\"\n  Id = 3\n";
static const std::string kAfter = "  End Attribute\n  Value = \"nor this\"\nEnd Component";
static const std::string kNewLine = "                Value = \"07/15/04\"\n";

TEST_F(BiosMif, takesTheFirmwaresDate)
{
    write(kBefore + "  Value = \"01/02/03\"\n" + kAfter);
    hwxbios_mif_rewrite("2004-07-15");
    EXPECT_EQ(content(), kBefore + kNewLine + kAfter);
}

TEST_F(BiosMif, withTheSameDateIsNotTouched)
{
    write(kBefore + "\tValue = \"07/15/04\"\n" + kAfter);
    const ino_t file = status().st_ino;
    hwxbios_mif_rewrite("2004-07-15");
    EXPECT_EQ(content(), kBefore + "\tValue = \"07/15/04\"\n" + kAfter);
    EXPECT_EQ(status().st_ino, file);
}

TEST_F(BiosMif, withAnUnknownDateIsAlwaysReplaced)
{
    write(kBefore + "  Value = \"UNKNOWN\"\n" + kAfter);
    hwxbios_mif_rewrite("2004-07-15");
    EXPECT_EQ(content(), kBefore + kNewLine + kAfter);
    write(kBefore + "  Value = \"07/15/04\" UNKNOWN\n" + kAfter);
    hwxbios_mif_rewrite("2004-07-15");
    EXPECT_EQ(content(), kBefore + kNewLine + kAfter);
}

TEST_F(BiosMif, withoutDateLineStaysAsItIs)
{
    for (const char* text : {"", "Name = \"BIOS_DATE\"\n", "Value = \"01/02/03\"\nName = \"BIOS_DATE\"\n",
                             "Value = \"01/02/03\"\n", "Name = \"BIOS_DATE\" Value = \"01/02/03\"\n"}) {
        write(text);
        hwxbios_mif_rewrite("2004-07-15");
        EXPECT_EQ(content(), text);
    }
}

TEST_F(BiosMif, staysAsItIsWithoutAWholeDate)
{
    write(kBefore + "  Value = \"UNKNOWN\"\n" + kAfter);
    hwxbios_mif_rewrite("2004");
    hwxbios_mif_rewrite(nullptr);
    EXPECT_EQ(content(), kBefore + "  Value = \"UNKNOWN\"\n" + kAfter);
}

TEST_F(BiosMif, thatIsMissingIsNotMade)
{
    hwxbios_mif_rewrite("2004-07-15");
    EXPECT_NE(access("hwxbios.mif", F_OK), 0);
}

TEST_F(BiosMif, keepsEveryByteOfLongLinesAndOfManyLines)
{
    std::string before = std::string(10000, 'x') + "\n" + std::string("a\0b\n", 4);
    for (int i = 0; i < 20000; ++i)
        before += "line\r\n";
    const std::string after = std::string(100000, 'y') + std::string(3, '\0') + "\n\n\xFF";
    write(before + kBefore + "  Value = \"01/02/03\"\n" + after);
    hwxbios_mif_rewrite("2004-07-15");
    EXPECT_EQ(content(), before + kBefore + kNewLine + after);
}

TEST_F(BiosMif, keepsItsMode)
{
    write(kBefore + "  Value = \"01/02/03\"\n");
    ASSERT_EQ(chmod("hwxbios.mif", 0640), 0);
    hwxbios_mif_rewrite("2004-07-15");
    EXPECT_EQ(content(), kBefore + kNewLine);
    EXPECT_EQ(status().st_mode & 07777, 0640u);
    EXPECT_EQ(status().st_uid, geteuid());
}

TEST_F(BiosMif, readersSeeTheOldFileOrTheNewOne)
{
    write(kBefore + "  Value = \"01/02/03\"\n");
    FILE* const reader = fopen("hwxbios.mif", "r");
    hwxbios_mif_rewrite("2004-07-15");
    char text[200] = "";
    EXPECT_GT(fread(text, 1, sizeof text - 1, reader), 0u);
    EXPECT_EQ(std::string(text), kBefore + "  Value = \"01/02/03\"\n") << "not written in place";
    fclose(reader);
}

TEST_F(BiosMif, thatIsAPipeDoesNotHoldTheScanUp)
{
    ASSERT_EQ(mkfifo("hwxbios.mif", 0666), 0);
    hwxbios_mif_rewrite("2004-07-15");
    EXPECT_TRUE(S_ISFIFO(status().st_mode));
}

TEST_F(BiosMif, onAFullDiskStaysWhole)
{
    write(kBefore + "  Value = \"01/02/03\"\n");
    FILE* const mif = fopen("hwxbios.mif", "r");
    MifChange change;
    ASSERT_TRUE(findMifChange(mif, "2004-07-15", &change));
    FILE* const full = fopen("/dev/full", "w");
    setvbuf(full, nullptr, _IONBF, 0);
    EXPECT_FALSE(copyMifChanged(mif, full, change));
    fclose(full);
    fclose(mif);
    EXPECT_EQ(content(), kBefore + "  Value = \"01/02/03\"\n");
}
