#include "report/Identity.h"

#include <gtest/gtest.h>

using namespace report;

namespace
{

std::vector<std::string> basesOf(const IdentityFacts& facts)
{
    std::vector<std::string> bases;
    for (const Identity& identity : identitiesOf(facts))
        bases.emplace_back(identity.basis);
    return bases;
}
} // namespace

TEST(Identity, hasARowForEveryBasisBestFirst)
{
    const IdentityFacts facts{"4C4C4544-0042-3510-8051-B4C04F4E3332",
                              " BQ5N2 ",
                              "0a1b2c3d4e5f60718293a4b5c6d7e8f9\n",
                              {"3c:ec:ef:00:00:02", "3C:EC:EF:00:00:01"},
                              false};
    const std::vector<Identity> identities = identitiesOf(facts);
    ASSERT_EQ(identities.size(), 4u);
    EXPECT_STREQ(identities[0].basis, "System UUID");
    EXPECT_EQ(identities[0].key, sha256("System UUID:4c4c4544-0042-3510-8051-b4c04f4e3332"));
    EXPECT_EQ(identities[1].key, sha256("Serial Number:BQ5N2"));
    EXPECT_EQ(identities[2].key, sha256("Machine ID:0a1b2c3d4e5f60718293a4b5c6d7e8f9"));
    EXPECT_EQ(identities[3].key, sha256("MAC Address:3c:ec:ef:00:00:01"));
}

TEST(Identity, ofAContainerIsItsMachineIdAlone)
{
    const IdentityFacts facts{"4c4c4544-0042-3510-8051-b4c04f4e3332",
                              "BQ5N2",
                              "0a1b2c3d4e5f60718293a4b5c6d7e8f9",
                              {"3c:ec:ef:00:00:02"},
                              true};
    EXPECT_EQ(basesOf(facts), std::vector<std::string>{"Machine ID"});
}

TEST(Identity, leavesPlaceholdersOut)
{
    for (const char* value :
         {"", "   ", "0", "00000000", "FFFFFFFF-FFFF-FFFF-FFFF-FFFFFFFFFFFF", "00000000-0000-0000-0000-000000000000",
          "To be filled by O.E.M.", "To Be Filled By O.E.M.", "Default string", "None", "none ",
          "03000200-0400-0500-0006-000700080009", "1111111", "Not Specified", "System Serial Number", "0123456789",
          "N/A", "............"})
        EXPECT_TRUE(isPlaceholder(value)) << value;
    for (const char* value : {"BQ5N2", "VMware-56 4d", "1234", "Nonesuch1", "4c4c4544-0042-3510-8051-b4c04f4e3332"})
        EXPECT_FALSE(isPlaceholder(value)) << value;
}

TEST(Identity, takesOnlyAddressesThatAMakerGave)
{
    EXPECT_TRUE(basesOf({"", "", "", {"02:42:ac:11:00:02"}, false}).empty()); // locally administered
    EXPECT_TRUE(basesOf({"", "", "", {"01:00:5e:00:00:01"}, false}).empty()); // a group
    EXPECT_TRUE(basesOf({"", "", "", {"00:00:00:00:00:00"}, false}).empty());
    EXPECT_TRUE(basesOf({"", "", "", {"80:00:02:08:fe:80:00:00"}, false}).empty()); // InfiniBand
    EXPECT_EQ(basesOf({"", "", "", {"00:50:56:00:00:01"}, false}), std::vector<std::string>{"MAC Address"});
}

TEST(Identity, takesOnlyWhatHasItsForm)
{
    EXPECT_TRUE(basesOf({"4c4c4544", "", "uninitialized", {}, false}).empty());
}

TEST(UuidOfRaw, changesTheOrderOfThreeFields)
{
    EXPECT_EQ(uuidOfRaw("33221100554477668899AABBCCDDEEFF"), "00112233-4455-6677-8899-aabbccddeeff");
    EXPECT_EQ(uuidOfRaw("00112233445566778899aabbccddeeff", false), "00112233-4455-6677-8899-aabbccddeeff");
    EXPECT_EQ(uuidOfRaw("00112233-4455-6677-8899-aabbccddeeff"), "");
    EXPECT_EQ(uuidOfRaw("4c4c4544"), "");
}

TEST(Sha256, isTheKnownDigest)
{
    EXPECT_EQ(sha256(""), "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
    EXPECT_EQ(sha256("abc"), "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
}
