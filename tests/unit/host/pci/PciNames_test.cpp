#include "host/pci/PciNames.h"

#include <gtest/gtest.h>

#include "host/Notes.h"
#include "host/Root.h"
#include "tests/unit/host/Tree.h"

using namespace host;

namespace
{
constexpr const char* kText = "# comment\n"
                              "\n"
                              "1af4  Red Hat, Inc.\n"
                              "\t1000  Virtio network device\n"
                              "\t\t1af4 0001  subsystem\n"
                              "8086  Intel Corporation\n"
                              "\t1237  440FX - 82441FX PMC [Natoma]\n"
                              "\t7000  82371SB PIIX3 ISA\n"
                              "ffff  Illegal Vendor ID\n"
                              "C 01  Mass storage controller\n"
                              "\t06  SATA controller\n"
                              "\t\t01  AHCI 1.0\n"
                              "\t01  IDE interface\n"
                              "\t08  Non-Volatile memory controller\n"
                              "\t\t02  NVM Express\n"
                              "C 03  Display controller\n"
                              "\t00  VGA compatible controller\n";

std::vector<std::string> linesOf(std::string_view text)
{
    std::vector<std::string> lines;
    for (size_t end = text.find('\n'); end != std::string_view::npos; end = text.find('\n')) {
        lines.emplace_back(text.substr(0, end));
        text.remove_prefix(end + 1);
    }
    return lines;
}

PciNames wanting()
{
    PciNames names;
    names.want(0x8086, 0x1237);
    names.want(0x1af4, 0x9999);
    names.wantClass(0x010601);
    names.wantClass(0x01ff00);
    names.wantClass(0x030000);
    return names;
}

std::vector<std::string> chosenOf(const std::vector<std::string>& lines)
{
    PciNames names = wanting();
    std::vector<std::string> chosen;
    for (const std::string& line : lines)
        if (names.isWanted(line))
            chosen.push_back(line);
    return chosen;
}

void expectNames(const PciNames& names)
{
    EXPECT_EQ(names.vendor(0x8086), "Intel Corporation");
    EXPECT_EQ(names.device(0x8086, 0x1237), "440FX - 82441FX PMC [Natoma]");
    EXPECT_EQ(names.device(0x8086, 0x7000), "") << "was not wanted";
    EXPECT_EQ(names.vendor(0x1af4), "Red Hat, Inc.");
    EXPECT_EQ(names.device(0x1af4, 0x9999), "");
    EXPECT_EQ(names.vendor(0xffff), "");
    EXPECT_EQ(names.className(0x010601), "SATA controller");
    EXPECT_EQ(names.className(0x01ff00), "Mass storage controller");
    EXPECT_EQ(names.className(0x030000), "VGA compatible controller");
    EXPECT_EQ(names.className(0x0c0330), "");
}
} // namespace

TEST(PciNames, chooseTheLinesThatNameWhatIsWanted)
{
    EXPECT_EQ(chosenOf(linesOf(kText)),
              (std::vector<std::string>{"1af4  Red Hat, Inc.", "8086  Intel Corporation",
                                        "\t1237  440FX - 82441FX PMC [Natoma]", "C 01  Mass storage controller",
                                        "\t06  SATA controller", "C 03  Display controller",
                                        "\t00  VGA compatible controller"}));
}

// A recording keeps the chosen lines alone.
TEST(PciNames, chooseTheSameFromTheChosenLines)
{
    const std::vector<std::string> chosen = chosenOf(linesOf(kText));
    EXPECT_EQ(chosenOf(chosen), chosen);
}

TEST(PciNames, areTheSameOfWholeAndOfChosenLines)
{
    PciNames whole = wanting();
    whole.parse(linesOf(kText));
    expectNames(whole);
    PciNames chosen = wanting();
    chosen.parse(chosenOf(linesOf(kText)));
    expectNames(chosen);
}

TEST(PciNames, ofInterfacesAreNoSubclasses)
{
    PciNames names;
    names.wantClass(0x010100);
    names.wantClass(0x010200);
    names.parse(linesOf(kText));
    EXPECT_EQ(names.className(0x010100), "IDE interface");
    EXPECT_EQ(names.className(0x010200), "Mass storage controller");
}

TEST(PciNames, ofNoVendorAreNone)
{
    PciNames names;
    names.want(0, 1);
    EXPECT_FALSE(names.isWanted("\t0001  of none"));
    names.parse({"\t0001  of none"});
    EXPECT_EQ(names.device(0, 1), "");
}

TEST(PciNames, areNotMixedUpByNumbersThatAreTooLong)
{
    PciNames names;
    names.want(0x8087, 0x1237);
    names.wantClass(0x030000);
    names.parse({"8086  Intel", "\t11237  wrong", "8087  Other", "\t1237  right", "\t10001237  wrong", "C 03  Display",
                 "\t100  wrong"});
    EXPECT_EQ(names.device(0x8087, 0x1237), "right");
    EXPECT_EQ(names.className(0x030000), "Display");
}

TEST(PciNames, ofOddLinesAreNone)
{
    PciNames names = wanting();
    for (const char* line : {"", "\t", "\t\t\t", "C ", "C", "C 1", "zz  x", "\t1237  a device of no vendor", " 8086  x",
                             "-8086  x", "0x8086  x"})
        EXPECT_EQ(names.isWanted(line), std::string_view(line) == "C 1") << line;
    names.parse({"", "\t", "\t\t\t", "C ", "8086", "\t1237"});
    EXPECT_EQ(names.vendor(0x8086), "");
    EXPECT_EQ(names.device(0x8086, 0x1237), "");
}

TEST(PciNames, comeFromTheFirstFileThatIsThere)
{
    const Tree tree;
    Notes notes;
    const Root root(tree.folder(), notes);
    PciNames none = wanting();
    none.read(root);
    EXPECT_EQ(none.source(), "");
    tree.file("/usr/share/hwdata/pci.ids", kText);
    tree.file("/usr/share/pci.ids", "8086  Wrong\n");
    PciNames names = wanting();
    names.read(root);
    EXPECT_EQ(names.source(), "/usr/share/hwdata/pci.ids");
    expectNames(names);
}
