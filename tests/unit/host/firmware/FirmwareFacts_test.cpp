#include "host/firmware/FirmwareFacts.h"

#include <gtest/gtest.h>

#include "host/Root.h"
#include "tests/unit/host/Tree.h"
#include "tests/unit/host/firmware/FirmwareBytes.h"

using namespace host;

namespace
{
constexpr const char* kTable = "/sys/firmware/dmi/tables/DMI";
constexpr const char* kEntryPoint = "/sys/firmware/dmi/tables/smbios_entry_point";

StructureBytes systemWith(const std::string& uuid)
{
    StructureBytes bytes(SMBIOS_SYSTEM, 27);
    bytes.string(4, "Maker").string(5, "Product");
    for (size_t i = 0; i < uuid.size(); ++i)
        bytes.put(8 + i, static_cast<uint8_t>(uuid[i]), 1);
    return bytes;
}

std::string entryPoint(char minor)
{
    return std::string("_SM_\0\x1F\2", 7) + minor + std::string(23, '\0');
}

class FirmwareFactsOf : public testing::Test
{
protected:
    FirmwareFacts facts() { return {root_, notes_}; }

    Tree tree_;
    Notes notes_;
    const Root root_{tree_.folder(), notes_};
};
} // namespace

TEST_F(FirmwareFactsOf, comeFromTheTableElseFromTheKernelsFiles)
{
    tree_.file(kTable, systemWith("").bytes() + endOfTable());
    tree_.file("/sys/class/dmi/id/sys_vendor", "Other\n");
    tree_.file("/sys/class/dmi/id/product_version", "V2\n");
    const FirmwareFacts firmware = facts();
    EXPECT_EQ(firmware.text(SMBIOS_SYSTEM, 4, "sys_vendor")->value, "Maker");
    EXPECT_EQ(firmware.text(SMBIOS_SYSTEM, 4, "sys_vendor")->source, kTable);
    EXPECT_EQ(firmware.text(SMBIOS_SYSTEM, 6, "product_version")->value, "V2");
    EXPECT_EQ(firmware.text(SMBIOS_SYSTEM, 6, "product_version")->source, "/sys/class/dmi/id/product_version");
    EXPECT_FALSE(firmware.text(SMBIOS_SYSTEM, 6, nullptr));
    EXPECT_FALSE(firmware.text(SMBIOS_SYSTEM, 7, "product_serial"));
    EXPECT_EQ(notes_.text(), "");
}

TEST_F(FirmwareFactsOf, aTableThatIsCutOffIsNoted)
{
    tree_.file(kTable, systemWith("").bytes() + "\1\x1B");
    EXPECT_EQ(facts().text(SMBIOS_SYSTEM, 5, nullptr)->value, "Product");
    EXPECT_EQ(notes_.text(), std::string(kTable) + ": structure 1 is cut off");
}

TEST_F(FirmwareFactsOf, uuidsAreReadInTheOrderOfTheirVersion)
{
    const std::string raw("\x33\x22\x11\x00\x55\x44\x77\x66\x88\x99\xAA\xBB\xCC\xDD\xEE\xFF", 16);
    tree_.file(kTable, systemWith(raw).bytes() + endOfTable());
    tree_.file(kEntryPoint, entryPoint(6));
    EXPECT_EQ(facts().rawUuid()->value, "33221100554477668899AABBCCDDEEFF");
    EXPECT_EQ(facts().systemUuid()->value, "00112233-4455-6677-8899-aabbccddeeff");
    tree_.file(kEntryPoint, entryPoint(4));
    EXPECT_EQ(facts().systemUuid()->value, "33221100-5544-7766-8899-aabbccddeeff");
    tree_.file(kEntryPoint, entryPoint(31));
    EXPECT_EQ(facts().systemUuid()->value, "33221100-5544-7766-8899-aabbccddeeff") << "2.31 is 2.3";
}

TEST_F(FirmwareFactsOf, uuidsThatSayNothingAreNone)
{
    tree_.file("/sys/class/dmi/id/product_uuid", "4C4C4544-0042-3510-8051-B4C04F4E3332\n");
    EXPECT_EQ(facts().systemUuid()->value, "4c4c4544-0042-3510-8051-b4c04f4e3332");
    for (const char byte : {'\0', '\xFF'}) {
        tree_.file(kTable, systemWith(std::string(16, byte)).bytes() + endOfTable());
        EXPECT_FALSE(facts().rawUuid());
        EXPECT_FALSE(facts().systemUuid());
    }
    tree_.file(kTable, StructureBytes(SMBIOS_SYSTEM, 8).bytes() + endOfTable()); // 2.0 has none
    EXPECT_FALSE(facts().rawUuid());
}

TEST_F(FirmwareFactsOf, chassisTypesAreReadWithoutTheirLock)
{
    std::string source;
    EXPECT_EQ(facts().chassisType(source), std::nullopt);
    tree_.file("/sys/class/dmi/id/chassis_type", "10\n");
    EXPECT_EQ(facts().chassisType(source), 10);
    EXPECT_EQ(source, "/sys/class/dmi/id/chassis_type");
    tree_.file("/sys/class/dmi/id/chassis_type", "999\n");
    EXPECT_EQ(facts().chassisType(source), std::nullopt);
    tree_.file(kTable, StructureBytes(SMBIOS_CHASSIS, 13).put(5, 0x97, 1).bytes() + endOfTable());
    EXPECT_EQ(facts().chassisType(source), 0x17);
    EXPECT_EQ(source, kTable);
}

TEST(IsoDate, takesTheFirmwaresDatesAlone)
{
    const struct {
        const char *date, *expected;
    } cases[] = {
        {"04/01/2014", "2014-04-01"},
        {"4/1/2014", "2014-04-01"},
        {"12/31/98", "1998-12-31"},
        {"13/01/2014", ""},
        {"00/01/2014", ""},
        {"01/32/2014", ""},
        {"01/00/2014", ""},
        {"2014-04-01", ""},
        {"04/01/2014/", ""},
        {"04/01/14x", ""},
        {"a/b/cdef", ""},
        {"//", ""},
        {"", ""},
        {"-4/01/2014", ""},
        {"04/01/201", ""},
        {"04/01/20145", ""},
        {"99999999999999999999/01/2014", ""},
    };
    for (const auto& c : cases)
        EXPECT_EQ(isoDate(c.date), c.expected) << c.date;
}
