// A scan of the computer that runs the test: interfaces as ip(8) shows them, PCI devices as lspci(8) lists them.

#include <chrono>
#include <filesystem>
#include <gtest/gtest.h>
#include <sstream>
#include <string>
#include <unistd.h>
#include <vector>

#include "tests/scan/RealScan.h"

namespace fs = std::filesystem;

namespace
{

// An IPv4 address as "ip -o" shows it: name is the label, which is the interface's own name unless it is an alias.
struct Address {
    std::string name;
    std::string address;
    std::string interface;
};

std::vector<Address> runIp()
{
    std::vector<Address> addresses;
    std::istringstream output(outputOf("ip -o -4 addr show 2>/dev/null"));
    std::string line;
    while (std::getline(output, line)) {
        std::istringstream words(line.substr(0, line.find('\\'))); // behind it stand the lifetimes
        std::string index, interface, family, address, label;
        words >> index >> interface >> family >> address;
        while (words >> label) // the last word
            ;
        addresses.push_back({label, address.substr(0, address.find('/')), interface});
    }
    return addresses;
}

// The hardware address of an interface in upper case; empty when it has none of six bytes.
std::string hardwareAddressOf(const std::string& interface)
{
    std::istringstream output(outputOf("ip -o link show dev '" + interface + "' 2>/dev/null"));
    std::string word;
    while (output >> word)
        if (word.starts_with("link/"))
            break;
    output >> word;
    for (char& c : word)
        c = static_cast<char>(toupper(c));
    return word.size() == 17 && word != "00:00:00:00:00:00" ? word : "";
}

// The beginning of a command that runs in a network of its own, which has one address, with this text in
// /etc/resolv.conf.
std::string withResolverSettings(const std::string& folder, const std::string& settings)
{
    writeTextFile(folder + "/resolv.conf", settings);
    writeTextFile(folder + "/nsswitch.conf", "hosts: dns\n");
    return "unshare --user --map-root-user --mount --net sh -c '"
           "mount --bind " +
           folder + "/resolv.conf /etc/resolv.conf && mount --bind " + folder +
           "/nsswitch.conf /etc/nsswitch.conf && ip link set lo up && "
           "ip addr add 10.9.8.7/24 dev lo label lo:1 && exec \"$@\"' sh ";
}

// The beginning of a command that hears what name servers are asked and says nothing.
std::string asSilentNameServers(const std::string& folder)
{
    writeTextFile(folder + "/silent.py", "import os, socket, sys\n"
                                         "server = socket.socket(socket.AF_INET, socket.SOCK_DGRAM)\n"
                                         "server.bind(('', 53))\n"
                                         "server.set_inheritable(True)\n"
                                         "os.execvp(sys.argv[1], sys.argv[1:])\n");
    return "python3 " + folder + "/silent.py ";
}

// The resolver's options in the service's environment, as an assignment for the shell; empty when there are none.
std::string resolverOptionsOfTheService()
{
    const std::string start = "\nEnvironment=\"RES_OPTIONS=";
    const std::string unit = readTextFile(INVHW_SCAN_TESTS "/../../packaging/systemd/invhw.service");
    const size_t place = unit.find(start);
    if (place == std::string::npos)
        return "";
    const size_t value = place + start.size();
    return "RES_OPTIONS='" + unit.substr(value, unit.find('"', value) - value) + "' ";
}

// The first address of each label: the interface requests answer with it for every record of that name.
std::string firstAddressOf(const std::vector<Address>& addresses, const std::string& name)
{
    for (const Address& address : addresses)
        if (address.name == name)
            return address.address;
    return "";
}

} // namespace

TEST(RealNetwork, addressesAgreeWithIp)
{
    const std::vector<Address> shown = runIp();
    if (shown.empty() || shown.size() > 62)
        GTEST_SKIP() << "no ip(8), no address, or more than the scan lists";
    const ScanResult result = scanThisComputer();
    size_t row = 0;
    for (const Address& entry : shown) {
        const std::string address = firstAddressOf(shown, entry.name);
        if (address == "127.0.0.1")
            continue;
        EXPECT_EQ(result.value("IPAddress", row, "Address"), address);
        const std::string hardware = hardwareAddressOf(entry.interface);
        if (!hardware.empty()) {
            EXPECT_EQ(result.value("IPAddress", row, "PermanentMacAddress"), hardware);
        }
        ++row;
    }
    EXPECT_EQ(result.rows("IPAddress").size(), row);
}

TEST(RealNetwork, adaptersAgreeWithIp)
{
    const std::vector<Address> shown = runIp();
    if (shown.empty() || shown.size() > 256)
        GTEST_SKIP() << "no ip(8), no address, or more than the scan lists";
    const ScanResult result = scanThisComputer();
    for (const ReportRow& row : result.rows("NetworkAdapter")) {
        const std::string model = *row.find("Model");
        const std::string interface = model.substr(0, model.find(':'));
        const std::string hardware = hardwareAddressOf(interface);
        if (!hardware.empty()) {
            EXPECT_EQ(*row.find("PermanentAddress"), hardware) << model;
        }
    }
    for (const Address& entry : shown) {
        size_t count = 0;
        for (const ReportRow& row : result.rows("NetworkAdapter"))
            count += *row.find("Model") == entry.name ? 1 : 0;
        EXPECT_EQ(count != 0, !hardwareAddressOf(entry.interface).empty()) << entry.name;
    }
}

TEST(RealPCI, devicesAgreeWithLspci)
{
    if (fs::exists("/proc/pci"))
        GTEST_SKIP() << "this kernel has a listing of its own";
    if (access("/sbin/lspci", X_OK) != 0)
        GTEST_SKIP() << "no lspci(8)";
    std::istringstream output(outputOf("LC_ALL=C /sbin/lspci -m 2>/dev/null"));
    const ScanResult result = scanThisComputer();
    std::string line;
    size_t row = 0;
    while (std::getline(output, line)) {
        std::vector<std::string> fields;
        std::istringstream parts(line);
        for (std::string part; std::getline(parts, part, '"');)
            fields.push_back(part);
        if (line.size() > 254 || fields.size() < 7 || fields[3].empty() || fields[5].empty())
            continue;
        EXPECT_EQ(result.value("PCIDevice", row, "Name"), fields[3] + " " + fields[5]);
        ++row;
    }
    EXPECT_EQ(result.rows("PCIDevice").size(), row);
}

TEST(RealNetwork, aLongNameInTheSearchListDoesNotEndTheScan)
{
    FakeMachine machine; // for its temporary folder
    const std::string wrapper =
        withResolverSettings(machine.folder(), "search " + std::string(256, 'd') + "\nnameserver 127.0.0.1\n");
    if (outputOf(wrapper + "pwd 2>/dev/null").empty())
        GTEST_SKIP() << "no namespaces for an ordinary user, or no ip(8)";
    const ScanResult result = scanThisComputer(wrapper);
    EXPECT_TRUE(result.report.ends_with("</serviceDataList>"));
    EXPECT_EQ(result.value("IPAddress", 0, "Address"), "10.9.8.7");
    EXPECT_EQ(result.value("IPAddress", 0, "Hostname"), "");
}

TEST(RealNetwork, silentNameServersHoldTheServicesScanForSeconds)
{
    FakeMachine machine; // for its temporary folder
    const std::string folder = machine.folder();
    const std::string wrapper =
        withResolverSettings(folder, "nameserver 127.0.0.1\nnameserver 127.0.0.2\nnameserver 127.0.0.3\n") +
        asSilentNameServers(folder);
    if (outputOf(wrapper + "pwd 2>/dev/null").empty())
        GTEST_SKIP() << "no namespaces for an ordinary user, no ip(8) or no python3";
    const auto start = std::chrono::steady_clock::now();
    const ScanResult result = scanThisComputer(resolverOptionsOfTheService() + wrapper);
    const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - start;
    EXPECT_EQ(result.value("IPAddress", 0, "Address"), "10.9.8.7");
    EXPECT_EQ(result.value("IPAddress", 0, "Hostname"), "");
    EXPECT_LT(seconds.count(), 15.0) << "the C library's own time-outs make it half a minute";
}
