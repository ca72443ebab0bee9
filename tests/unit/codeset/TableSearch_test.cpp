// Where tables, redirects and aliases are looked for, and what names become.

#include "codeset/TableName.h"

#include "tests/unit/codeset/CodeSetFixture.h"
#include "tests/unit/codeset/SmallTables.h"
#include <sys/stat.h>

namespace
{

class TableSearchTest : public CodeSetTest
{
protected:
    // A table that can be told from others by its name.
    static std::string named(const char* name) { return SmallTables::header(Family::AsciiSbcs, name).bytes(); }

    // The name of the table that opens under the name; empty for none.
    static std::string opened(const std::string& name)
    {
        const Handle handle(name.c_str());
        return handle.handle == nullptr ? "" : kst_get_cs_name(handle);
    }

    static std::string tableName(const char* name)
    {
        char out[64];
        get_table_name(name, out, sizeof out);
        return out;
    }

    // A path of exactly length bytes below the test's folder, whose last part is long enough to fill it up.
    std::string longDirectory(size_t length) const
    {
        std::string path = folder;
        while (path.size() + 101 < length)
            path += "/" + std::string(99, 'd');
        path += "/" + std::string(length - path.size() - 1, 'e');
        return path;
    }
};

TEST_F(TableSearchTest, namesAreUpperCaseLettersAndDigits)
{
    EXPECT_EQ(tableName("iso-8859-1"), "ISO88591");
    EXPECT_EQ(tableName("ANSI_X3.4-1968"), "ANSIX341968");
    EXPECT_EQ(tableName("utf-8"), "UTF8");
    EXPECT_EQ(tableName("QrmCP 437"), "CP437");
    EXPECT_EQ(tableName("qRMCP437"), "CP437");
    EXPECT_EQ(tableName("Q-RM437"), "QRM437") << "the prefix goes before the characters between";
    EXPECT_EQ(tableName("\xC3\xA9/.\\"), "");
}

TEST_F(TableSearchTest, theSystemNamesAreTheLocalesCodeSet)
{
    for (const char* name : {"DOS", "win", "Os"}) {
        setenv("LC_ALL", "C", 1);
        EXPECT_EQ(tableName(name), "ANSIX341968");
        setenv("LC_ALL", "C.UTF-8", 1);
        EXPECT_EQ(tableName(name), "UTF8");
        setenv("LC_ALL", "no_SUCH.LOCALE", 1);
        EXPECT_EQ(tableName(name), "UTF8") << "a locale that does not exist changes nothing";
    }
    EXPECT_EQ(tableName("O-S"), "OS") << "only the plain word";
}

TEST_F(TableSearchTest, theNameIsCutToTheBuffer)
{
    write("aliases", "SHORT ABCDEFGH\n");
    char out[4];
    get_table_name("CP437", out, sizeof out);
    EXPECT_STREQ(out, "CP4");
    get_table_name("short", out, sizeof out);
    EXPECT_STREQ(out, "ABC");
}

TEST_F(TableSearchTest, aliasLinesInAllTheirForms)
{
    write("aliases", "# COMMENT X\n"
                     "#HASH X\n"
                     "\n"
                     "   \n"
                     "ONE ISO88591\n"
                     "  \tTWO\t \tISO88592 trailing words\n"
                     "ONE IGNORED\n"
                     "THREE\n"
                     "FOUR \n"
                     "FIVE ISO88595\r\n"
                     "lower ISO88599\n" +
                         std::string(126, 'x') + " LONG ISO88597\n" + "LAST ISO88598");
    EXPECT_EQ(tableName("one"), "ISO88591") << "the first line wins";
    EXPECT_EQ(tableName("two"), "ISO88592");
    EXPECT_EQ(tableName("three"), "THREE") << "no second word";
    EXPECT_EQ(tableName("four"), "FOUR");
    EXPECT_EQ(tableName("five"), "ISO88595");
    EXPECT_EQ(tableName("#HASH"), "HASH");
    EXPECT_EQ(tableName("lower"), "LOWER") << "names in the file are compared as they stand";
    EXPECT_EQ(tableName("LONG"), "ISO88597") << "the rest of a line of more than 127 bytes is a line of its own";
    EXPECT_EQ(tableName("last"), "LAST") << "a word that ends with the file could be cut";
}

TEST_F(TableSearchTest, aliasesFilesInTheirOrder)
{
    write("aliases", "NAME CURRENT\n");
    EXPECT_EQ(tableName("name"), "CURRENT");
    write("dir/aliases", "NAME DIRECTORY\n");
    kst_set_dir((folder + "/dir").c_str());
    EXPECT_EQ(tableName("name"), "DIRECTORY");
    write("dir/codeset/aliases", "OTHER X\n");
    EXPECT_EQ(tableName("name"), "NAME") << "only the first file that opens counts";
}

TEST_F(TableSearchTest, anAliasesPathMustStayBelow255Characters)
{
    write("aliases", "NAME CURRENT\n");
    const std::string fits = longDirectory(254 - strlen("/aliases"));
    write(fits + "/aliases", "NAME DIRECTORY\n");
    kst_set_dir(fits.c_str());
    EXPECT_EQ(tableName("name"), "DIRECTORY");
    const std::string tooLong = longDirectory(255 - strlen("/aliases"));
    write(tooLong + "/aliases", "NAME DIRECTORY\n");
    kst_set_dir(tooLong.c_str());
    EXPECT_EQ(tableName("name"), "CURRENT");
}

TEST_F(TableSearchTest, theShippedAliasesLeadToTheShippedTables)
{
    kst_set_dir((programFolder() + "/../generic").c_str());
    EXPECT_EQ(opened("latin1"), "ISO88591");
    EXPECT_EQ(opened("Windows-1252"), "CP1252");
    EXPECT_EQ(opened("ascii"), "ANSIX341968");
}

TEST_F(TableSearchTest, theShippedRedirectsNeedNoAliases)
{
    EXPECT_EQ(opened("SJIS"), "SHIFTJIS");
    EXPECT_EQ(opened("euc-cn"), "GB2312");
    EXPECT_EQ(opened("US-ASCII"), "ANSIX341968");
}

TEST_F(TableSearchTest, directoriesInTheirOrder)
{
    setenv("BINDIR", (folder + "/bin").c_str(), 1);
    kst_set_dir((folder + "/dir").c_str());
    std::filesystem::create_directories(folder + "/bin");
    EXPECT_EQ(opened("T1"), "");
    write("T1", named("CURRENT"));
    EXPECT_EQ(opened("T1"), "CURRENT");
    write("generic/codeset/T1", named("BINDIR"));
    EXPECT_EQ(opened("T1"), "BINDIR");
    write("dir/T1", named("DIRECTORY"));
    EXPECT_EQ(opened("T1"), "DIRECTORY");
    write("dir/codeset/T1", named("SUBDIRECTORY"));
    EXPECT_EQ(opened("T1"), "SUBDIRECTORY");
    write("dir/codeset/T1", "");
    EXPECT_EQ(opened("T1"), "DIRECTORY") << "a file that leads to no table is no hit";
}

TEST_F(TableSearchTest, emptySettingsAreNoDirectories)
{
    setenv("BINDIR", "", 1);
    kst_set_dir("");
    EXPECT_EQ(opened("no-such-table"), "");
    EXPECT_EQ(opened(""), "");
}

TEST_F(TableSearchTest, aTablePathMustStayBelow255Characters)
{
    for (const size_t length : {254U, 255U}) {
        const std::string directory = longDirectory(length - strlen("/T1"));
        write(directory + "/T1", named("FOUND"));
        kst_set_dir(directory.c_str());
        EXPECT_EQ(opened("T1"), length < 255 ? "FOUND" : "") << length;
    }
    for (const size_t length : {255U, 256U}) {
        const std::string path = longDirectory(length);
        write(path, named("FOUND"));
        kst_set_dir("");
        EXPECT_EQ(opened(path), length < 256 ? "FOUND" : "") << "a path by itself may have 255";
    }
    EXPECT_EQ(opened("/" + std::string(5000, 'x')), "");
}

TEST_F(TableSearchTest, aNameWithASeparatorIsAPath)
{
    write("lower-case.tbl", named("PATH"));
    EXPECT_EQ(opened("./lower-case.tbl"), "PATH");
    EXPECT_EQ(opened(folder + "/lower-case.tbl"), "PATH");
    EXPECT_EQ(opened("lower-case.tbl"), "") << "without one it is a name";
    write("back\\slash", named("BACKSLASH"));
    EXPECT_EQ(opened("back\\slash"), "BACKSLASH");
    EXPECT_EQ(opened("/UTF8"), "") << "only the bare name is built in";
    EXPECT_EQ(opened("/"), "");
    EXPECT_EQ(opened("/tmp"), "") << "a directory";
    kst_set_dir(folder.c_str());
    write("sub/T", named("BELOW"));
    EXPECT_EQ(opened("sub/T"), "BELOW") << "a path is looked for below the directories too";
}

TEST_F(TableSearchTest, redirectsAreFollowedWithinTheirDirectory)
{
    kst_set_dir((folder + "/dir").c_str());
    write("dir/codeset/FROM", " \tTO\r\n\n");
    write("dir/TO", named("OTHERDIRECTORY"));
    EXPECT_EQ(opened("FROM"), "");
    write("dir/codeset/TO", named("SAMEDIRECTORY"));
    EXPECT_EQ(opened("FROM"), "SAMEDIRECTORY");
}

TEST_F(TableSearchTest, fiveRedirectsAreFollowedAndNoSixth)
{
    write("R6", "R5");
    write("R5", "R4");
    write("R4", "R3");
    write("R3", "R2");
    write("R2", "R1");
    write("R1", named("END"));
    EXPECT_EQ(opened("R6"), "END");
    write("R7", "R6");
    EXPECT_EQ(opened("R7"), "");
}

TEST_F(TableSearchTest, redirectsThatLeadNowhereEnd)
{
    write("LOOP", "LOOP");
    write("PING", "PONG");
    write("PONG", "PING");
    write("EMPTY", "");
    write("BLANK", " \n\x7F\x01");
    write("AWAY", "no such file");
    write("BINARY", std::string(5000, '\xFF'));
    write("SHORT", named("SHORT").substr(0, 1759));
    for (const char* name : {"LOOP", "PING", "EMPTY", "BLANK", "AWAY", "BINARY", "SHORT"})
        EXPECT_EQ(opened(name), "") << name;
}

TEST_F(TableSearchTest, pipesAreNoTablesAndNobodyWaitsForThem)
{
    ASSERT_EQ(mkfifo("PIPE", 0600), 0);
    ASSERT_EQ(mkfifo("aliases", 0600), 0);
    write("FROM", "PIPE");
    EXPECT_EQ(opened("PIPE"), "");
    EXPECT_EQ(opened("FROM"), "");
    EXPECT_EQ(tableName("name"), "NAME");
}

TEST_F(TableSearchTest, aRedirectIsReadUpTo32Bytes)
{
    const std::string name(32, 'N');
    write(name, named("CUT"));
    write("FROM", name + "MORE");
    EXPECT_EQ(opened("FROM"), "CUT");
    write("PADDED", std::string(2, ' ') + name);
    EXPECT_EQ(opened("PADDED"), "") << "the blanks count";
}

} // namespace
