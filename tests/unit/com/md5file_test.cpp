#include "com/md5file.h"

#include <gtest/gtest.h>
#include <string>

#include "com/Owned.h"

namespace
{
std::string digestOf(const std::string& text)
{
    md5file_context context;
    md5file_clear(&context);
    md5file_addn(&context, text.data(), text.size());
    char digits[33];
    md5file_sprint_hash(&context, digits);
    return digits;
}
} // namespace

TEST(Md5, testSuiteOfRfc1321)
{
    const struct {
        const char* text;
        const char* digest;
    } cases[] = {
        {"", "d41d8cd98f00b204e9800998ecf8427e"},
        {"a", "0cc175b9c0f1b6a831c399e269772661"},
        {"abc", "900150983cd24fb0d6963f7d28e17f72"},
        {"message digest", "f96b697d7cb7938d525a2f31aaf161d0"},
        {"abcdefghijklmnopqrstuvwxyz", "c3fcd3d76192e4007dfb496cca67e13b"},
        {"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789", "d174ab98d277d9f5a5611c2c9f419d9f"},
        {"12345678901234567890123456789012345678901234567890123456789012345678901234567890",
         "57edf4a22be3c955ac49da2e2107b67a"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(digestOf(c.text), c.digest) << c.text;
}

TEST(Md5, lengthsAroundTheBlockSize)
{
    const struct {
        size_t length;
        const char* digest;
    } cases[] = {
        {55, "04364420e25c512fd958a70738aa8f72"},  {56, "668a72d5ba17f08e62dabcafad6db14b"},
        {57, "693037871c4a9d3d8685018905cb530a"},  {63, "7dc2ca208106a2f703567bdff99d8981"},
        {64, "c1bb4f81d892b2d57947682aeb252456"},  {65, "1bc932052302d074bdec39795fe00cf6"},
        {119, "ab347a5f68c8a443cfcddc633f12c24f"}, {120, "fb98667f98096de92620b64f46e1c5b5"},
        {128, "d69cb61a6ee87200676eb0d4b90edbcb"}, {1000, "398533d48111e9f664b1f64cb10c4b63"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(digestOf(std::string(c.length, 'x')), c.digest) << c.length;
}

TEST(Md5, splitAdditionsGiveTheSameDigest)
{
    const std::string text = "The quick brown fox jumps over the lazy dog; then it rests, and the dog reads on and on "
                             "until a hundred and thirty bytes are full.";
    ASSERT_GT(text.size(), 128U);
    const std::string whole = digestOf(text);
    for (size_t cut = 0; cut <= text.size(); ++cut) {
        md5file_context context;
        md5file_clear(&context);
        md5file_addn(&context, text.data(), cut);
        md5file_add(&context, text.c_str() + cut);
        char digits[33];
        md5file_sprint_hash(&context, digits);
        EXPECT_EQ(digits, whole) << "cut at " << cut;
    }
}

TEST(Md5, digestBytesStandInDigestOrder)
{
    md5file_context context;
    md5file_clear(&context);
    md5file_add(&context, "abc");
    unsigned char digest[16];
    md5file_hash(&context, digest);
    EXPECT_EQ(digest[0], 0x90);
    EXPECT_EQ(digest[15], 0x72);
}

TEST(Md5Checksum, isLowerCaseHexOfTheText)
{
    EXPECT_STREQ(OwnedText(md5_checksum("abc")).get(), "900150983cd24fb0d6963f7d28e17f72");
}

TEST(Md5Checksum, emptyAndNullTextGiveNull)
{
    EXPECT_EQ(md5_checksum(""), nullptr);
    EXPECT_EQ(md5_checksum(nullptr), nullptr);
}
