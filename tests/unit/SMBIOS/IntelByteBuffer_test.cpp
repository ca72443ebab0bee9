#include "SMBIOS/IntelByteBuffer.h"

#include <gtest/gtest.h>

static const unsigned char kBytes[] = {0x78, 0x56, 0x34, 0xF2, 'a', 'b', 0, 0};

TEST(IntelByteBuffer, readsLittleEndianNumbers)
{
    EXPECT_EQ(IntelByteBuffer::readUCHAR(kBytes, 3), 0xF2);
    EXPECT_EQ(IntelByteBuffer::readUSHORT(kBytes, 2), 0xF234);
    EXPECT_EQ(IntelByteBuffer::readULONG(kBytes, 0), 0xF2345678U);
}

TEST(IntelByteBuffer, readsTextsAndBytes)
{
    char text[8] = "-------";
    EXPECT_EQ(IntelByteBuffer::readASCIIZ(kBytes, 4, text), text);
    EXPECT_STREQ(text, "ab");
    EXPECT_STREQ(IntelByteBuffer::readASCIIZ(kBytes, 6, text), "");
    EXPECT_EQ(IntelByteBuffer::getASCIIZLength("ab"), 3);
    EXPECT_EQ(IntelByteBuffer::readCHARArray(kBytes, 4, text, 3), text);
    EXPECT_EQ(std::string(text, 3), std::string("ab\0", 3));
}
