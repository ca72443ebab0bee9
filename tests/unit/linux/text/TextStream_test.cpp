#include "linux/text/TextStream.h"

#include <cstring>
#include <gtest/gtest.h>
#include <utility>

static TextStream streamOf(const char* text)
{
    return TextStream(fmemopen(const_cast<char*>(text), strlen(text), "r"));
}

TEST(TextStream, aLineLongerThanTheBufferComesInPieces)
{
    TextStream stream = streamOf("abcdefg\nhi\n");
    char line[5];
    ASSERT_TRUE(stream.readLine(line));
    EXPECT_STREQ(line, "abcd");
    ASSERT_TRUE(stream.readLine(line));
    EXPECT_STREQ(line, "efg\n");
    ASSERT_TRUE(stream.readLine(line));
    EXPECT_STREQ(line, "hi\n");
    EXPECT_FALSE(stream.readLine(line));
}

TEST(TextStream, atEndLooksAheadWithoutTakingAnything)
{
    TextStream stream = streamOf("x");
    EXPECT_FALSE(stream.atEnd());
    EXPECT_FALSE(stream.atEnd());
    char line[5];
    ASSERT_TRUE(stream.readLine(line));
    EXPECT_STREQ(line, "x");
    EXPECT_TRUE(stream.atEnd());
}

TEST(TextStream, aFileThatCannotBeOpenedIsAtItsEndAndHoldsNoLine)
{
    TextStream stream = TextStream::openFile("/no/such/file");
    char line[5];
    EXPECT_FALSE(stream);
    EXPECT_TRUE(stream.atEnd());
    EXPECT_FALSE(stream.readLine(line));
    stream.close();
}

TEST(TextStream, readsWhatACommandPrints)
{
    TextStream stream = TextStream::runCommand("printf 'one\\ntwo\\n'");
    char line[256];
    ASSERT_TRUE(stream.readLine(line));
    EXPECT_STREQ(line, "one\n");
}

TEST(TextStream, aCommandThatPrintsNothingIsAtItsEnd)
{
    TextStream stream = TextStream::runCommand("true");
    EXPECT_TRUE(static_cast<bool>(stream));
    EXPECT_TRUE(stream.atEnd());
}

static int closes = 0;

TEST(TextStream, closesOnceWhateverMovesIt)
{
    closes = 0;
    {
        TextStream first(fopen("/dev/null", "r"), [](FILE* stream) {
            ++closes;
            return fclose(stream);
        });
        TextStream second(std::move(first));
        EXPECT_FALSE(first);
        second.close();
        EXPECT_EQ(closes, 1);
    }
    EXPECT_EQ(closes, 1);
}
