#include "report/redact/Pseudonyms.h"

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <random>
#include <set>

#include "report/Utf8.h"

using namespace report;

namespace
{
const Pseudonyms kPseudonyms("0123456789abcdef");

uint32_t ipv4(const std::string& text)
{
    in_addr address{};
    EXPECT_EQ(inet_pton(AF_INET, text.c_str(), &address), 1) << text;
    return ntohl(address.s_addr);
}

std::string textOf(uint32_t address)
{
    in_addr bytes{htonl(address)};
    char text[INET_ADDRSTRLEN];
    return inet_ntop(AF_INET, &bytes, text, sizeof text);
}

int commonBits(uint32_t a, uint32_t b)
{
    return a == b ? 32 : __builtin_clz(a ^ b);
}

char classOfCharacter(char c)
{
    return isdigit(c) != 0 ? '0' : islower(c) != 0 ? 'a' : isupper(c) != 0 ? 'A' : c;
}
} // namespace

TEST(Pseudonyms, keepLengthAndClassesOfAWord)
{
    for (const std::string text : {"S7E0NX0W612345", "WD-WCC6Y5XKZL1N", "ada", "Ada Lovelace", "x_1.y"}) {
        const std::string made = kPseudonyms.word(text);
        EXPECT_NE(made, text);
        ASSERT_EQ(made.size(), text.size());
        for (size_t i = 0; i < text.size(); ++i)
            EXPECT_EQ(classOfCharacter(made[i]), classOfCharacter(text[i])) << text << ' ' << made;
    }
}

TEST(Pseudonyms, areTheSameInEitherCase)
{
    const std::string lower = kPseudonyms.word("skerry-01");
    std::string upper = lower;
    for (char& c : upper)
        c = static_cast<char>(toupper(c));
    EXPECT_EQ(kPseudonyms.word("SKERRY-01"), upper);
}

TEST(Pseudonyms, areOthersUnderAnotherKey)
{
    EXPECT_NE(Pseudonyms("another key, quite").word("S7E0NX0W612345"), kPseudonyms.word("S7E0NX0W612345"));
    EXPECT_NE(Pseudonyms("another key, quite").address("192.0.2.1"), kPseudonyms.address("192.0.2.1"));
}

TEST(Pseudonyms, areDifferentForDifferentWords)
{
    std::set<std::string> made;
    for (int i = 0; i < 10000; ++i) {
        char text[5];
        snprintf(text, sizeof text, "%04d", i);
        made.insert(kPseudonyms.word(text));
    }
    EXPECT_EQ(made.size(), 10000u);
    made.clear();
    for (char a = 'a'; a <= 'z'; ++a)
        for (char b = 'a'; b <= 'z'; ++b)
            made.insert(kPseudonyms.word(std::string{a, b}));
    EXPECT_EQ(made.size(), 676u);
}

TEST(Pseudonyms, stayHexadecimalAndValidCharacters)
{
    for (const char* text : {"6A1B-22C3", "A1B2C3D4E5F60718", "5002538e40a1b2c3"})
        EXPECT_EQ(kPseudonyms.word(text).find_first_not_of("0123456789abcdefABCDEF-"), std::string::npos) << text;
    const std::string word = "M\xC3\xBCller \xE6\x9D\xB1\xE4\xBA\xAC \xF0\x9F\x98\x80";
    const std::string made = kPseudonyms.word(word);
    EXPECT_EQ(validUtf8(made), made);
    EXPECT_EQ(made.size(), word.size());
    EXPECT_EQ(made.find("\xC3\xBC"), std::string::npos);
}

TEST(Pseudonyms, ofLongWordsAreWhole)
{
    const std::string text(5000, 'a'), made = kPseudonyms.word(text);
    EXPECT_GT(std::set<char>(made.begin() + 4000, made.end()).size(), 20u);
    EXPECT_NE(kPseudonyms.word(text + "b").substr(0, 100), made.substr(0, 100));
}

TEST(Pseudonyms, makeLocalHardwareAddresses)
{
    const std::string made = *kPseudonyms.hardwareAddress("a0:b3:39:11:22:33");
    ASSERT_EQ(made.size(), 17u);
    EXPECT_EQ(std::stoul(made.substr(0, 2), nullptr, 16) & 3U, 2U);
    std::string upper = made, bare;
    for (char& c : upper) {
        if (c != ':')
            bare += c;
        c = c == ':' ? '-' : static_cast<char>(toupper(c));
    }
    EXPECT_EQ(*kPseudonyms.hardwareAddress("A0-B3-39-11-22-33"), upper);
    EXPECT_EQ(*kPseudonyms.hardwareAddress("a0b339112233"), bare);
    for (const char* kept : {"ff:ff:ff:ff:ff:ff", "00:00:00:00:00:00"})
        EXPECT_EQ(*kPseudonyms.hardwareAddress(kept), kept);
    for (const char* none : {"a0:b3:39:11:22", "a0:b3-39:11:22:33", "g0:b3:39:11:22:33", "", "a0:b3:39:11:22:33:"})
        EXPECT_FALSE(kPseudonyms.hardwareAddress(none)) << none;
}

TEST(Pseudonyms, ofUuidsStandInTheOrderOfTheirBytes)
{
    const std::string text = "4c4c4544-0051-3510-8052-b6c04f4d3732", raw = "44454C4C510010358052B6C04F4D3732";
    const std::string made = *kPseudonyms.uuid(text), madeRaw = *kPseudonyms.uuid(raw);
    EXPECT_EQ(uuidDigits(made), swappedUuidDigits(uuidDigits(madeRaw)));
    EXPECT_EQ(made[14], '3'); // the version
    EXPECT_NE(made, text);
    EXPECT_EQ(madeRaw.find_first_of("abcdef"), std::string::npos);
    EXPECT_EQ(*kPseudonyms.uuid("00000000-0000-0000-0000-000000000000"), "00000000-0000-0000-0000-000000000000");
    EXPECT_FALSE(kPseudonyms.uuid("4c4c4544-0051-3510-8052-b6c04f4d373"));
    EXPECT_FALSE(kPseudonyms.uuid("4c4c45440-051-3510-8052-b6c04f4d3732"));
}

TEST(Pseudonyms, keepNetworksTogether)
{
    std::mt19937 random(5);
    for (int i = 0; i < 300; ++i) {
        const uint32_t a = static_cast<uint32_t>(0x0B000000U + random() % 0x30000000U);
        const uint32_t b = a ^ (1U << random() % 16) ^ (random() % 2 == 0 ? 1U : 0U);
        if (a == b)
            continue;
        EXPECT_EQ(commonBits(ipv4(*kPseudonyms.address(textOf(a))), ipv4(*kPseudonyms.address(textOf(b)))),
                  commonBits(a, b))
            << textOf(a) << ' ' << textOf(b);
    }
}

TEST(Pseudonyms, keepTheClassOfAnAddress)
{
    for (const char* kept : {"0.0.0.0", "127.0.0.1", "127.0.0.53", "255.255.255.255", "::", "::1"})
        EXPECT_EQ(*kPseudonyms.address(kept), kept);
    const std::pair<const char*, const char*> starts[] = {
        {"10.1.2.3", "10."},   {"192.168.1.9", "192.168."}, {"169.254.7.7", "169.254."}, {"fe80::1", "fe80::"},
        {"ff02::fb", "ff02:"}, {"fd12:3456::1", "fd"},      {"2001:4860::8", ""},
    };
    for (const auto& [text, start] : starts) {
        EXPECT_TRUE(kPseudonyms.address(text)->starts_with(start)) << text << ' ' << *kPseudonyms.address(text);
        EXPECT_NE(*kPseudonyms.address(text), text);
    }
    std::mt19937 random(6);
    for (int i = 0; i < 2000; ++i) { // a public address stays one
        const uint32_t made =
            ipv4(*kPseudonyms.address(textOf(static_cast<uint32_t>(0x0B000000U + random() % 0x30000000U))));
        EXPECT_TRUE(made >> 24 != 10 && made >> 24 != 127 && made >> 24 != 0 && made >> 28 < 14 &&
                    made >> 16 != 0xC0A8 && made >> 16 != 0xA9FE && made >> 20 != 0xAC1)
            << textOf(made);
    }
}

TEST(Pseudonyms, keepTheZerosOfANetwork)
{
    const std::string network = *kPseudonyms.address("192.168.178.0/24"), host = *kPseudonyms.address("192.168.178.41");
    EXPECT_TRUE(network.ends_with(".0/24"));
    EXPECT_EQ(network.substr(0, network.rfind('.')), host.substr(0, host.rfind('.')));
    EXPECT_TRUE(kPseudonyms.address("2001:4860:1::/48")->ends_with("::/48"));
    EXPECT_EQ(*kPseudonyms.address("0.0.0.0/0"), "0.0.0.0/0");
    for (const char* none : {"10.0.0.1/x", "10.0.0", "10.0.0.1.1", "", "/24", "10.0.0.1/999"})
        EXPECT_FALSE(kPseudonyms.address(none)) << none;
}

TEST(Pseudonyms, ofValuesKeepWhatStandsAroundThem)
{
    EXPECT_EQ(kPseudonyms.value("eui.0025384531b0a1c2"), "eui." + kPseudonyms.word("0025384531b0a1c2"));
    EXPECT_EQ(kPseudonyms.value("t10.ATA     Model 7      S1234567"),
              "t10.ATA     Model 7      " + kPseudonyms.word("S1234567"));
    EXPECT_EQ(kPseudonyms.value("  S1234567 "), "  " + kPseudonyms.word("S1234567") + " ");
    for (const char* kept : {"", " ", "To be filled by O.E.M.", "Default string", "None", "0000000", "No Asset Tag"})
        EXPECT_EQ(kPseudonyms.value(kept), kept);
}
