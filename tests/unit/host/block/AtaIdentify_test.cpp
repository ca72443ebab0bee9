#include "host/block/AtaIdentify.h"

#include <gtest/gtest.h>
#include <map>

using namespace host;

namespace
{
// The kernel's text of a block with some words set, eight words a line.
std::string blockText(const std::map<size_t, uint16_t>& words, size_t count = AtaIdentify::kWords)
{
    std::string text;
    for (size_t i = 0; i < count; ++i) {
        char word[8];
        const auto found = words.find(i);
        snprintf(word, sizeof word, "%04x%c", found != words.end() ? found->second : 0, i % 8 == 7 ? '\n' : ' ');
        text += word;
    }
    return text;
}

void setText(std::map<size_t, uint16_t>& words, size_t first, std::string text, size_t count)
{
    text.resize(2 * count, ' ');
    for (size_t i = 0; i < count; ++i)
        words[first + i] =
            static_cast<uint16_t>(static_cast<uint8_t>(text[2 * i]) << 8 | static_cast<uint8_t>(text[2 * i + 1]));
}
} // namespace

TEST(AtaIdentify, readsTextsAndNumbers)
{
    std::map<size_t, uint16_t> words{{1, 16383}, {3, 16}, {6, 63}, {76, 0x850E}, {128, 0x0023}};
    setText(words, 10, "    WD-ABC123", 10);
    setText(words, 23, "01.01A01", 4);
    setText(words, 27, "Disk Model 4000", 20);
    const std::optional<AtaIdentify> identify = AtaIdentify::parse(blockText(words));
    ASSERT_TRUE(identify);
    EXPECT_EQ(identify->serialNumber(), "WD-ABC123");
    EXPECT_EQ(identify->firmwareRevision(), "01.01A01");
    EXPECT_EQ(identify->model(), "Disk Model 4000");
    EXPECT_EQ(identify->cylinders(), 16383);
    EXPECT_EQ(identify->heads(), 16);
    EXPECT_EQ(identify->sectors(), 63);
    EXPECT_TRUE(identify->isSerial());
    EXPECT_TRUE(identify->hasSecurity());
    EXPECT_TRUE(identify->isSecurityEnabled());
}

TEST(AtaIdentify, tellsKindsApart)
{
    const auto parsed = [](size_t word, uint16_t value) { return *AtaIdentify::parse(blockText({{word, value}})); };
    EXPECT_FALSE(parsed(76, 0).isSerial());
    EXPECT_FALSE(parsed(76, 0xFFFF).isSerial());
    EXPECT_TRUE(parsed(76, 2).isSerial());
    EXPECT_TRUE(parsed(0, 0x85C0).isPacketDevice());
    EXPECT_FALSE(parsed(0, 0x0040).isPacketDevice());
    EXPECT_FALSE(parsed(128, 0).hasSecurity());
    EXPECT_TRUE(parsed(128, 1).hasSecurity());
    EXPECT_FALSE(parsed(128, 1).isSecurityEnabled());
    EXPECT_EQ(parsed(10, 0x4100).serialNumber(), "A") << "a zero byte ends a text";
    EXPECT_EQ(parsed(0, 0).model(), "");
}

TEST(AtaIdentify, takesExactlyItsWords)
{
    const std::string whole = blockText({});
    EXPECT_TRUE(AtaIdentify::parse(whole));
    EXPECT_FALSE(AtaIdentify::parse(""));
    EXPECT_FALSE(AtaIdentify::parse(blockText({}, 255)));
    EXPECT_FALSE(AtaIdentify::parse(blockText({}, 257)));
    for (const char* word : {"12345", "xyz1", "-001", "0x01"})
        EXPECT_FALSE(AtaIdentify::parse(std::string(word) + whole.substr(4))) << word;
}
