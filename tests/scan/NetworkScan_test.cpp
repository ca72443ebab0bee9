// The IP Address and Network Adapter groups in whole scans.

#include <gtest/gtest.h>
#include <string>

#include "FakeMachine.h"
#include "com/Owned.h"
#include "com/md5file.h"

namespace
{

constexpr char kLoopback[] = "interface lo addr 127.0.0.1 mask 255.0.0.0 mac 00:00:00:00:00:00 hwtype 772";
constexpr char kEth0[] = "interface eth0 addr 192.168.1.10 mask 255.255.255.0 mac 00:0C:29:AB:CD:EF hwtype 1";
constexpr char kEth1[] = "interface eth1 addr 10.1.0.1 mask 255.255.0.0 mac 00:50:DA:01:02:03 hwtype 1";

FakeMachine withInterfaces()
{
    FakeMachine machine;
    machine.conf(kLoopback).conf(kEth0).conf(kEth1);
    return machine;
}

ScanResult scanned(FakeMachine& machine)
{
    const ScanResult result = machine.scan();
    EXPECT_TRUE(result.ended()) << result.errors;
    return result;
}

std::string digestOf(const std::string& text)
{
    const OwnedText digest(md5_checksum(text.c_str()));
    return digest.get();
}

// The names of a row's attributes, in the order of the report.
std::string attributesOf(const ScanResult& result, const char* group, size_t row)
{
    std::string names;
    const std::vector<ReportRow> rows = result.rows(group);
    if (row < rows.size())
        for (const auto& value : rows[row].values)
            names += value.first + " ";
    return names;
}

// The gateway that the scan finds in these two of the four files.
std::string gatewayOf(const char* ifcfg, const char* network)
{
    FakeMachine machine;
    machine.conf(kEth0);
    if (*ifcfg != '\0')
        machine.file("/etc/sysconfig/network-scripts/ifcfg-eth0", ifcfg);
    if (*network != '\0')
        machine.file("/etc/sysconfig/network", network);
    return scanned(machine).value("IPAddress", 0, "Gateway");
}

} // namespace

TEST(IpAddressScan, theLoopbackAloneGivesNoRow)
{
    FakeMachine machine;
    machine.conf(kLoopback);
    const ScanResult result = scanned(machine);
    EXPECT_EQ(result.rows("IPAddress").size(), 0U);
    EXPECT_TRUE(result.logHas("\nifc_len=32 count =1\nifr_name=lo\nip addr=127.0.0.1\nMAC addr=00:00:00:00:00:00\n"
                              "subnet=255.0.0.0\ndone parsing resolv.conf...\nEnd Group IpAddress"));
}

TEST(IpAddressScan, rowsAreNumberedWithoutTheSkippedOnesAndShareServersAndGateway)
{
    FakeMachine machine = withInterfaces();
    machine.file("/etc/resolv.conf", "nameserver 192.168.1.1\nnameserver 192.168.1.2\nnameserver 192.168.1.3\n");
    machine.file("/etc/route.conf", "default 192.168.1.254\n");
    const ScanResult result = scanned(machine);
    ASSERT_EQ(result.rows("IPAddress").size(), 2U);
    const char* const addresses[] = {"192.168.1.10", "10.1.0.1"};
    for (size_t row = 0; row < 2; ++row) {
        EXPECT_EQ(result.value("IPAddress", row, "Index"), std::to_string(row + 1));
        EXPECT_EQ(result.value("IPAddress", row, "Address"), addresses[row]);
        EXPECT_EQ(result.value("IPAddress", row, "PrimaryDNS"), "192.168.1.1");
        EXPECT_EQ(result.value("IPAddress", row, "SecondaryDNS"), "192.168.1.2");
        EXPECT_EQ(result.value("IPAddress", row, "Gateway"), "192.168.1.254");
        EXPECT_EQ(attributesOf(result, "IPAddress", row), "Index Address Hostname Domain Subnet Gateway PrimaryDNS "
                                                          "SecondaryDNS PermanentMacAddress ");
    }
    EXPECT_FALSE(result.logHas("192.168.1.3")) << "a third name server is never read";
}

TEST(IpAddressScan, whatIsNotFoundIsLeftOutOrEmpty)
{
    FakeMachine machine;
    machine.conf("interface ppp0 addr 62.155.0.17 mask 255.255.255.255");
    const ScanResult result = scanned(machine);
    EXPECT_EQ(attributesOf(result, "IPAddress", 0), "Index Address Hostname Domain Subnet PermanentMacAddress ");
    EXPECT_EQ(result.value("IPAddress", 0, "Hostname"), "");
    EXPECT_EQ(result.value("IPAddress", 0, "PermanentMacAddress"), "");
    EXPECT_TRUE(result.logHas("\nMAC addr Failed\nhostname=>< domain=><\nsubnet=255.255.255.255\n"));
    EXPECT_TRUE(result.logHas("\nlooking for default gateway... caldera suse suse8 redhat\nEnd Group IpAddress"));
}

TEST(IpAddressScan, aNameWithoutDotTakesTheDomainOfResolvConf)
{
    FakeMachine machine = withInterfaces();
    machine.conf("host 192.168.1.10 gate").conf("host 10.1.0.1 gate.lab.example.com");
    machine.file("/etc/resolv.conf", "domain office.example\n");
    const ScanResult result = scanned(machine);
    EXPECT_EQ(result.value("IPAddress", 0, "Hostname"), "gate");
    EXPECT_EQ(result.value("IPAddress", 0, "Domain"), "office.example");
    EXPECT_EQ(result.value("IPAddress", 1, "Hostname"), "gate");
    EXPECT_EQ(result.value("IPAddress", 1, "Domain"), "lab.example.com");
}

TEST(IpAddressScan, anOverlongNameIsCut)
{
    FakeMachine machine = withInterfaces();
    machine.conf("host 192.168.1.10 " + std::string(5000, 'h'));
    machine.conf("host 10.1.0.1 h." + std::string(5000, 'd'));
    const ScanResult result = scanned(machine);
    EXPECT_TRUE(result.logHas("\nhostname=>" + std::string(255, 'h') + "< domain=><\n"));
    EXPECT_TRUE(result.logHas("\nhostname=>h< domain=>" + std::string(253, 'd') + "<\n"));
}

TEST(IpAddressScan, aLongNameInTheSearchListDoesNotEndTheScan)
{
    for (const char* word : {"search ", "domain "}) {
        FakeMachine machine = withInterfaces();
        machine.conf("host 10.1.0.1 gate.lab.example.com");
        machine.file("/etc/resolv.conf", word + std::string(256, 'd') + "\n");
        EXPECT_EQ(scanned(machine).value("IPAddress", 1, "Hostname"), "gate") << word;
    }
}

TEST(IpAddressScan, whenLookUpsHaveTakenHalfAMinuteTheOtherAddressesHaveNoName)
{
    FakeMachine machine;
    machine.conf("host-seconds 11");
    for (const char* number : {"1", "2", "3", "4", "5"})
        machine.conf(std::string("interface eth") + number + " addr 10.0.0." + number + " mask 255.0.0.0")
            .conf(std::string("host 10.0.0.") + number + " pc" + number + ".lab.example");
    machine.file("/etc/resolv.conf", "domain office.example\n");
    const ScanResult result = scanned(machine);
    const char* const names[] = {"pc1", "pc2", "pc3", "", ""};
    for (size_t row = 0; row < std::size(names); ++row) {
        EXPECT_EQ(result.value("IPAddress", row, "Hostname"), names[row]);
        EXPECT_EQ(result.value("IPAddress", row, "Domain"), row < 3 ? "lab.example" : "office.example");
    }
    EXPECT_TRUE(result.logHas("\nip addr=10.0.0.4\nMAC addr Failed\nhostname=>< domain=><\nsubnet=255.0.0.0\n"));
}

TEST(IpAddressScan, anIPv6NameServerIsDropped)
{
    FakeMachine machine;
    machine.conf(kEth0).file("/etc/resolv.conf", "nameserver fe80::20c:29ff:feab:cdef\nnameserver 192.168.1.1\n");
    const ScanResult result = scanned(machine);
    EXPECT_EQ(result.value("IPAddress", 0, "PrimaryDNS"), "192.168.1.1");
    EXPECT_FALSE(result.has("IPAddress", 0, "SecondaryDNS"));
}

TEST(IpAddressScan, theFirstFileWithAGatewayWins)
{
    EXPECT_EQ(gatewayOf("GATEWAY=10.0.0.1\n", "GATEWAY=10.0.0.2\n"), "10.0.0.1");
    EXPECT_EQ(gatewayOf("#GATEWAY=10.0.0.1\n", "GATEWAY=10.0.0.2\n"), "10.0.0.2");
    EXPECT_EQ(gatewayOf("", "GATEWAYDEV=eth0\nGATEWAY=10.0.0.2\n"), "10.0.0.2");
    EXPECT_EQ(gatewayOf("GATEWAYDEV=eth0\nGATEWAY=10.0.0.1\n", ""), "0") << "the digit of the device's name";
    EXPECT_EQ(gatewayOf("", ""), "(no value)");
}

TEST(IpAddressScan, withoutSocketOrInterfaceListThereIsNoRow)
{
    for (const char* call : {"socket", "SIOCGIFCONF"}) {
        FakeMachine machine = withInterfaces();
        machine.conf(std::string("error ") + call + " * EPERM");
        const ScanResult result = scanned(machine);
        EXPECT_EQ(result.rows("IPAddress").size(), 0U) << call;
        EXPECT_EQ(result.rows("NetworkAdapter").size(), 0U) << call;
        EXPECT_TRUE(result.logHas("\nBegin Group IpAddress getTable()\nEnd Group IpAddress getTable()\n")) << call;
        EXPECT_TRUE(result.logHas("\nBegin Group NetworkAdapter getTable()\nifc_len=8192\nEnd Group NetworkAdapter"));
    }
}

TEST(IpAddressScan, anInterfaceWithoutAddressOrNetmaskGivesNoRow)
{
    FakeMachine machine;
    machine.conf("interface eth0 mask 255.0.0.0").conf("interface eth1 addr 10.0.0.1").conf(kEth1);
    const ScanResult result = scanned(machine);
    EXPECT_EQ(result.rows("IPAddress").size(), 0U) << "every question about eth1 is answered by the first of that name";
    EXPECT_TRUE(result.logHas("\nifr_name=eth0\nsubnet=255.0.0.0\ndone parsing resolv.conf...\nifr_name=eth1\n"));
}

TEST(IpAddressScan, theListIsCutAt62Interfaces)
{
    FakeMachine machine;
    for (int i = 1; i <= 80; ++i)
        machine.conf("interface eth" + std::to_string(i) + " addr 10.0.0." + std::to_string(i) +
                     " mask 255.0.0.0 mac 02:00:00:00:00:01 hwtype 1");
    const ScanResult result = scanned(machine);
    EXPECT_EQ(result.rows("IPAddress").size(), 62U);
    EXPECT_TRUE(result.logHas("\nifc_len=1984 count =62\n"));
    EXPECT_EQ(result.rows("NetworkAdapter").size(), 80U);
    EXPECT_TRUE(result.logHas("\nifc_len=8192\nifc_len=2560 count =80\n"));
}

TEST(NetworkAdapterScan, anAdapterHasARowAndTheLoopbackHasNone)
{
    FakeMachine machine;
    machine.conf(kLoopback).conf(kEth0);
    const ScanResult result = scanned(machine);
    ASSERT_EQ(result.rows("NetworkAdapter").size(), 1U);
    EXPECT_EQ(attributesOf(result, "NetworkAdapter", 0), "Index ID PermanentAddress CurrentAddress Type Model ");
    EXPECT_EQ(result.value("NetworkAdapter", 0, "Index"), "1");
    EXPECT_EQ(result.value("NetworkAdapter", 0, "ID"), digestOf("00:0C:29:AB:CD:EFeth0"));
    EXPECT_EQ(result.value("NetworkAdapter", 0, "PermanentAddress"), "00:0C:29:AB:CD:EF");
    EXPECT_EQ(result.value("NetworkAdapter", 0, "CurrentAddress"), "00:0C:29:AB:CD:EF");
    EXPECT_EQ(result.value("NetworkAdapter", 0, "Type"), "Ethernet Adapter");
    EXPECT_EQ(result.value("NetworkAdapter", 0, "Model"), "eth0");
}

TEST(NetworkAdapterScan, theNameTellsTheType)
{
    FakeMachine machine;
    for (const char* name : {"tr0", "trunk0", "sit0", "tun0", "ppp0"})
        machine.conf(std::string("interface ") + name + " addr 10.0.0.1 mask 255.0.0.0 mac 02:00:00:00:00:01 hwtype 1");
    const ScanResult result = scanned(machine);
    const char* const types[] = {"Token Ring Adapter", "Token Ring Adapter", "Other", "Other", "PPP Adapter"};
    for (size_t row = 0; row < std::size(types); ++row)
        EXPECT_EQ(result.value("NetworkAdapter", row, "Type"), types[row]);
}

TEST(NetworkAdapterScan, anAliasHasARowWithTheSameAddressAndAnotherID)
{
    FakeMachine machine;
    machine.conf(kEth0).conf("interface eth0:1 addr 192.168.1.11 mask 255.255.255.0 mac 00:0C:29:AB:CD:EF hwtype 1");
    const ScanResult result = scanned(machine);
    ASSERT_EQ(result.rows("NetworkAdapter").size(), 2U);
    EXPECT_EQ(result.value("NetworkAdapter", 0, "PermanentAddress"),
              result.value("NetworkAdapter", 1, "PermanentAddress"));
    EXPECT_NE(result.value("NetworkAdapter", 0, "ID"), result.value("NetworkAdapter", 1, "ID"));
    EXPECT_EQ(result.value("NetworkAdapter", 1, "Model"), "eth0:1");
}

TEST(NetworkAdapterScan, anInterfaceThatDoesNotAnswerIsSkipped)
{
    FakeMachine machine;
    machine.conf("interface ppp0 addr 10.0.0.1 mask 255.0.0.0").conf(kEth0);
    const ScanResult result = scanned(machine);
    ASSERT_EQ(result.rows("NetworkAdapter").size(), 1U);
    EXPECT_EQ(result.value("NetworkAdapter", 0, "Index"), "1");
    EXPECT_TRUE(result.logHas("\nifr_name=ppp0\nMAC addr FAILED\nifr_name=eth0\nMAC addr=00:0C:29:AB:CD:EF\n"
                              "type=ethernet\nEnd Group NetworkAdapter"));
}
