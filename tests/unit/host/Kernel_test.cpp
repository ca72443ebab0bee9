#include "host/Kernel.h"

#include <gtest/gtest.h>

#include "host/Notes.h"
#include "host/RecordedKernel.h"
#include "tests/unit/Capture.h"
#include "tests/unit/host/Rights.h"

using namespace host;

// The recording of a kernel that gives these answers.
static KernelRecording recordingOf(const std::string& answers)
{
    KernelRecording recording;
    std::string reason;
    EXPECT_TRUE(parseKernelRecording(R"({"format": "invhw-kernel", "formatVersion": 1, "answers": )" + answers + "}",
                                     recording, reason))
        << reason;
    return recording;
}

TEST(Kernel, answersBecomeValues)
{
    const KernelRecording recording = recordingOf(R"({
        "clock": {"": 1763740800}, "userId": {"": 1000}, "pageSize": {"": 16384},
        "names": {"": {"system": "Linux", "node": "h", "release": "6.12", "version": "#1", "machine": "aarch64"}},
        "links": {"": [{"index": 2, "name": "bond0", "hardwareType": 1, "flags": 4099, "mtu": 9000, "kind": "bond",
                        "address": "52:54:00:12:34:aa", "permanentAddress": "52:54:00:12:34:02", "master": 7,
                        "parent": 3, "operationalState": "up"}]},
        "addresses": {"": [{"link": 2, "address": "2001:DB8::0:20", "prefixLength": 64, "scope": 253,
                            "isPermanent": true},
                           {"link": 2, "address": "192.0.2.20", "prefixLength": 24}]},
        "routes": {"": [{"table": 254, "destination": "0.0.0.0", "prefixLength": 0, "gateway": "192.0.2.1", "link": 2,
                         "metric": 100, "type": 1, "scope": 0, "flags": 4},
                        {"destination": "::", "prefixLength": 0, "gateway": "fe80::1"}]},
        "linkDriver": {"eth0": {"driver": "e1000e", "firmwareVersion": "0.8", "busAddress": "0000:00:1f.6", "port": 0}},
        "fileSystemSize": {"/": {"totalBytes": 18446744073709551615, "freeBytes": 5, "availableBytes": 3, "inodes": 10, "freeInodes": 4}},
        "blockContent": {"/dev/sda1": {"type": "ext4", "label": "root", "uuid": "u", "partitionTable": "dos"},
                         "/dev/sda2": {}},
        "cpuid": {"80000002:0": [1, 2, 3, 4294967295]},
        "birthTime": {"/etc/machine-id": 1600000000}, "modificationTime": {"/a.list": 1600000001}})");
    const RecordedKernel kernel(recording);

    EXPECT_TRUE(kernel.isRecording());
    EXPECT_EQ(kernel.clock(), 1763740800);
    EXPECT_EQ(kernel.userId(), 1000u);
    EXPECT_EQ(kernel.pageSize(), 16384u);
    EXPECT_EQ(kernel.names().machine, "aarch64");
    EXPECT_EQ(kernel.names().node, "h");

    const std::vector<Link> links = kernel.links();
    ASSERT_EQ(links.size(), 1u);
    EXPECT_EQ(links[0].index, 2u);
    EXPECT_EQ(links[0].name, "bond0");
    EXPECT_EQ(links[0].hardwareType, 1);
    EXPECT_EQ(links[0].flags, 4099u);
    EXPECT_EQ(links[0].mtu, 9000u);
    EXPECT_EQ(links[0].kind, "bond");
    EXPECT_EQ(links[0].address, "52:54:00:12:34:aa");
    EXPECT_EQ(links[0].permanentAddress, "52:54:00:12:34:02");
    EXPECT_EQ(links[0].master, 7u);
    EXPECT_EQ(links[0].parent, 3u);
    EXPECT_EQ(links[0].operationalState, "up");

    const std::vector<Address> addresses = kernel.addresses();
    ASSERT_EQ(addresses.size(), 2u);
    EXPECT_TRUE(addresses[0].isIPv6);
    EXPECT_EQ(addresses[0].address, "2001:db8::20"); // one way of writing, whatever a recording has
    EXPECT_EQ(addresses[0].prefixLength, 64);
    EXPECT_EQ(addresses[0].scope, 253);
    EXPECT_TRUE(addresses[0].isPermanent);
    EXPECT_FALSE(addresses[1].isIPv6);
    EXPECT_FALSE(addresses[1].isPermanent);

    const std::vector<Route> routes = kernel.routes();
    ASSERT_EQ(routes.size(), 2u);
    EXPECT_EQ(routes[0].table, 254u);
    EXPECT_EQ(routes[0].destination, "0.0.0.0");
    EXPECT_EQ(routes[0].gateway, "192.0.2.1");
    EXPECT_EQ(routes[0].link, 2u);
    EXPECT_EQ(routes[0].metric, 100u);
    EXPECT_EQ(routes[0].type, 1);
    EXPECT_EQ(routes[0].flags, 4u);
    EXPECT_TRUE(routes[1].isIPv6);
    EXPECT_EQ(routes[1].gateway, "fe80::1");

    EXPECT_EQ(kernel.linkDriver("eth0")->driver, "e1000e");
    EXPECT_EQ(kernel.linkDriver("eth0")->firmwareVersion, "0.8");
    EXPECT_EQ(kernel.linkDriver("eth0")->busAddress, "0000:00:1f.6");
    EXPECT_EQ(kernel.linkDriver("eth0")->port, 0);
    EXPECT_EQ(kernel.fileSystemSize("/")->totalBytes, UINT64_MAX);
    EXPECT_EQ(kernel.fileSystemSize("/")->freeBytes, 5u);
    EXPECT_EQ(kernel.fileSystemSize("/")->availableBytes, 3u);
    EXPECT_EQ(kernel.fileSystemSize("/")->inodes, 10u);
    EXPECT_EQ(kernel.fileSystemSize("/")->freeInodes, 4u);
    EXPECT_EQ(kernel.blockContent("/dev/sda1")->type, "ext4");
    EXPECT_EQ(kernel.blockContent("/dev/sda1")->label, "root");
    EXPECT_EQ(kernel.blockContent("/dev/sda1")->uuid, "u");
    EXPECT_EQ(kernel.blockContent("/dev/sda1")->partitionTable, "dos");
    EXPECT_EQ(kernel.blockContent("/dev/sda2")->type, "");
    EXPECT_EQ(kernel.cpuid(0x80000002, 0), (CpuidLeaf{1, 2, 3, UINT32_MAX}));
    EXPECT_EQ(kernel.birthTime("/etc/machine-id"), 1600000000);
    EXPECT_EQ(kernel.modificationTime("/a.list"), 1600000001);
}

static void expectNothing(const Kernel& kernel)
{
    EXPECT_EQ(kernel.clock(), 0);
    EXPECT_EQ(kernel.userId(), Kernel::kNoUser);
    EXPECT_EQ(kernel.pageSize(), 0u);
    EXPECT_EQ(kernel.names().system, "");
    EXPECT_TRUE(kernel.links().empty());
    EXPECT_TRUE(kernel.addresses().empty());
    EXPECT_TRUE(kernel.routes().empty());
    EXPECT_FALSE(kernel.linkDriver("a"));
    EXPECT_FALSE(kernel.fileSystemSize("a"));
    EXPECT_FALSE(kernel.blockContent("a"));
    EXPECT_FALSE(kernel.cpuid(0xA, 0xB));
    EXPECT_FALSE(kernel.birthTime("a"));
    EXPECT_FALSE(kernel.modificationTime("a"));
}

TEST(Kernel, anAnswerOfAnotherFormIsAnAbsentOne)
{
    expectNothing(RecordedKernel(KernelRecording()));
    for (
        const std::string answer :
        {"null", "true", "\"text\"", "[]", "[[]]", "[1]", "-1", "1.5", "1e300", "18446744073709551615",
         "[1, 2, 3, 4294967296]", "[1, 2, 3, -4]", "[1, 2, 3, 4, 5]",
         R"([{"index": 0, "name": "x"}, {"index": 1, "name": ""}, {"index": 2, "name": "a/b"}, {"index": -1, "name": "x"},
              {"link": 1, "address": "192.0.2.256", "prefixLength": 24},
              {"link": 1, "address": "192.0.2.1", "prefixLength": 33}, {"link": 1, "address": "::1", "prefixLength": 129},
              {"link": 1, "address": "::1"}, {"address": "::1", "prefixLength": 128},
              {"destination": "default", "prefixLength": 0}, {"destination": "::", "prefixLength": "0"}])"}) {
        std::string all = "{";
        for (const char* question : {"clock", "userId", "pageSize", "names", "links", "addresses", "routes"})
            all += "\"" + std::string(question) + "\": {\"\": " + answer + "}, ";
        for (const char* question : {"linkDriver", "fileSystemSize", "blockContent", "birthTime", "modificationTime"})
            all += "\"" + std::string(question) + "\": {\"a\": " + answer + "}, ";
        const KernelRecording recording = recordingOf(all + "\"cpuid\": {\"a:b\": " + answer + "}}");
        SCOPED_TRACE(answer);
        expectNothing(RecordedKernel(recording));
    }
}

// What a live scan was refused, the scan of its recording tells as well.
TEST(Kernel, aRecordedFailureIsNotedAsTheLiveOneWas)
{
    const KernelRecording recording = recordingOf(R"({
        "links": {"": {"error": "EPERM", "call": "RTM_GETLINK"}},
        "fileSystemSize": {"/home/a/gvfs": {"error": "EACCES", "call": "statvfs"}}})");
    Notes notes;
    const RecordedKernel kernel(recording, &notes);
    EXPECT_TRUE(kernel.links().empty());
    EXPECT_FALSE(kernel.fileSystemSize("/home/a/gvfs"));
    EXPECT_FALSE(kernel.isSilent("/home/a/gvfs"));
    EXPECT_TRUE(notes.wasRefused());
    EXPECT_EQ(notes.text(), "RTM_GETLINK: Operation not permitted; statvfs /home/a/gvfs: Permission denied");
    EXPECT_FALSE(RecordedKernel(recording).fileSystemSize("/home/a/gvfs"));
    const KernelRecording failed = recordingOf(R"({"links": {"": {"error": "EIO", "call": "RTM_GETLINK"}},
        "addresses": {"": {"error": 5, "call": ["x"]}}})");
    Notes others;
    const RecordedKernel another(failed, &others);
    EXPECT_TRUE(another.links().empty());
    EXPECT_TRUE(another.addresses().empty());
    EXPECT_FALSE(others.wasRefused());
    EXPECT_EQ(others.text(), "RTM_GETLINK: Input/output error; addresses: Input/output error");
}

TEST(Kernel, aMalformedMemberCostsItselfAlone)
{
    const KernelRecording recording = recordingOf(R"({
        "links": {"": [{"index": 2, "name": "eth0", "hardwareType": 65536, "mtu": "big", "kind": 7,
                        "address": "52:54:00:12:34:A0", "permanentAddress": "52-54-00-12-34-02", "master": 4294967296},
                       {"index": 3, "name": "ib0", "address": "00:", "permanentAddress": "5"}]},
        "routes": {"": [{"destination": "192.0.2.0", "prefixLength": 24, "gateway": "none"}]},
        "linkDriver": {"eth0": {"driver": "e1000e", "port": 256}},
        "fileSystemSize": {"/": {"totalBytes": 10, "freeBytes": 20}}})");
    const RecordedKernel kernel(recording);
    const std::vector<Link> links = kernel.links();
    ASSERT_EQ(links.size(), 2u);
    EXPECT_EQ(links[0].name, "eth0");
    EXPECT_EQ(links[0].hardwareType, 0);
    EXPECT_EQ(links[0].mtu, 0u);
    EXPECT_EQ(links[0].kind, "");
    EXPECT_EQ(links[0].address, "");
    EXPECT_EQ(links[0].permanentAddress, "");
    EXPECT_EQ(links[0].master, 0u);
    EXPECT_EQ(links[1].address, "");
    EXPECT_EQ(links[1].permanentAddress, "");
    ASSERT_EQ(kernel.routes().size(), 1u);
    EXPECT_EQ(kernel.routes()[0].gateway, "");
    EXPECT_EQ(kernel.linkDriver("eth0")->driver, "e1000e");
    EXPECT_FALSE(kernel.linkDriver("eth0")->port);
    EXPECT_EQ(kernel.fileSystemSize("/")->freeBytes, 10u);
}

#if !defined(__SANITIZE_ADDRESS__) // which makes calls of its own
// In a process that dies by any system call but those that give memory and say the result.
TEST(Kernel, aRecordingAsksNothingOfTheLiveMachine)
{
    const KernelRecording recording = recordingOf(
        R"({"clock": {"": 5}, "links": {"": [{"index": 2, "name": "eth0"}]}, "fileSystemSize": {"/": {"totalBytes": 7}}})");
    inChild([&] {
        const RecordedKernel kernel(recording);
        ASSERT_NO_FATAL_FAILURE(allowMemoryOnly());
        const bool isRight = kernel.clock() == 5 && kernel.links().size() == 1 && kernel.addresses().empty() &&
                             kernel.routes().empty() && kernel.names().node.empty() && kernel.userId() == UINT32_MAX &&
                             kernel.pageSize() == 0 && !kernel.linkDriver("lo") && kernel.fileSystemSize("/") &&
                             !kernel.blockContent("/dev/sda") && !kernel.cpuid(0, 0) && !kernel.birthTime("/");
        _exit(isRight ? 0 : 2);
    });
}
#endif
