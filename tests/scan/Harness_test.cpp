// The harness itself, where it could lie: what a machine has is seen as it was recorded, and what it lacks is not seen
// although the real computer has it. A probe asks, built in the ways that call different functions of the C library.

#include <gtest/gtest.h>

#include "FakeMachine.h"

class Harness : public testing::TestWithParam<const char*>
{
protected:
    // A run of the probe with pairs of action and argument.
    ScanResult probe(const std::vector<std::string>& questions, const std::string& faults = "")
    {
        ScanOptions options;
        options.program = std::string(FAKEMACHINE_PROBES) + GetParam();
        options.arguments = questions;
        options.faults = faults;
        return machine.scan(options);
    }

    // What the probe prints.
    std::string ask(const std::vector<std::string>& questions, const std::string& faults = "")
    {
        const ScanResult result = probe(questions, faults);
        EXPECT_TRUE(result.ended()) << result.errors;
        return result.report;
    }

    FakeMachine machine;
};

INSTANTIATE_TEST_SUITE_P(probe, Harness, testing::Values("large", "small", "time64"),
                         [](const auto& variant) { return std::string(variant.param); });

TEST_P(Harness, filesOfTheRealComputerAreNotSeen)
{
    EXPECT_EQ(ask({"file", "/etc/passwd"}), "fopen: ENOENT\n");
    EXPECT_EQ(ask({"descriptor", "/proc/cpuinfo"}), "open: ENOENT\n");
    EXPECT_EQ(ask({"descriptor", "/etc/../proc//self/../cpuinfo"}), "open: ENOENT\n");
    EXPECT_EQ(ask({"status", "/dev"}), "stat: ENOENT\n");
    EXPECT_EQ(ask({"status", "/etc/passwd"}), "stat: ENOENT\n");
    EXPECT_EQ(ask({"folder", "/etc"}), "opendir: ENOENT\n");
    EXPECT_EQ(ask({"mounts", "/proc/mounts"}), "setmntent: ENOENT\n");
    EXPECT_EQ(ask({"statvfs", "/"}), "statvfs: ENOENT\n");
    EXPECT_EQ(ask({"map", "0xF0000"}), "mmap: EBADF\n");
}

TEST_P(Harness, factsOfTheRealComputerAreNotSeen)
{
    EXPECT_EQ(ask({"system", ""}), "uname: EFAULT\nsysinfo: EFAULT\n1 1 1 1 4096\n1000000000 1000000000 1000000000\n");
    EXPECT_EQ(ask({"network", "10"}), "socket: EAFNOSUPPORT\n");
    EXPECT_EQ(ask({"host", "127.0.0.1"}), "no host\n");
    EXPECT_EQ(ask({"login", ""}), "no record\n");
    EXPECT_EQ(ask({"command", "echo real"}), "[end]\nstatus 127\n");
}

TEST_P(Harness, filesOfTheMachineAreSeen)
{
    machine.file("/etc/issue", "first\nsecond\n").file("/etc/mtab", "/dev/hda1 / ext3 rw 0 0\n");
    EXPECT_EQ(ask({"file", "/etc/issue"}), "first\nsecond\n[end]\n");
    EXPECT_EQ(ask({"descriptor", "/etc//./issue"}), "first\nsecond\n[end]\n");
    EXPECT_EQ(ask({"status", "/etc/issue", "status", "/etc"}), "file\nfolder\n");
    EXPECT_EQ(ask({"mounts", "/etc/mtab"}), "/dev/hda1 / ext3\n");
}

TEST_P(Harness, filesOfTheMachineAreNeverChanged)
{
    machine.file("/etc/issue", "kept\n");
    EXPECT_EQ(ask({"write", "/etc/issue", "file", "/etc/issue"}), "fopen: EROFS\nopen: EROFS\nkept\n[end]\n");
}

TEST_P(Harness, makingAFileOnTheMachineEndsTheProgram)
{
    const ScanResult result = probe({"write", "/etc/new"});
    EXPECT_EQ(result.exitStatus, 125);
    EXPECT_EQ(result.errors, "fakemachine: /etc/new:0: the program would create this file\n");
}

TEST_P(Harness, relativePathsLeadToTheWorkingFolder)
{
    machine.startFile("note", "mine\n");
    EXPECT_EQ(ask({"file", "note", "write", "made", "status", "made"}), "mine\n[end]\nopened\nfile\n");
}

TEST_P(Harness, foldersListInAFixedOrder)
{
    machine.file("/proc/ide/hdb", "").file("/proc/ide/ide1/x", "").conf("directory /proc/ide/ide0");
    EXPECT_EQ(ask({"folder", "/proc/ide"}), "./\n../\nhdb\nide0/\nide1/\n");
    EXPECT_EQ(ask({"folder", "/proc/ide/ide0"}), "./\n../\n");
    machine.conf("order /proc/ide ide1 ide0");
    EXPECT_EQ(ask({"folder", "/proc/ide"}), "./\n../\nide1/\nide0/\nhdb\n");
    EXPECT_EQ(ask({"folder", "/proc/ide/hdb"}), "opendir: ENOTDIR\n");
}

TEST_P(Harness, errorRulesMakeCallsFail)
{
    machine.file("/a", "text\n").file("/d/e", "").conf("error open /a EACCES").conf("error readdir /d EIO");
    machine.conf("error stat /a EIO").file("/r", "x").conf("error read /r EIO");
    EXPECT_EQ(ask({"file", "/a", "descriptor", "/a", "status", "/a"}), "fopen: EACCES\nopen: EACCES\nstat: EIO\n");
    EXPECT_EQ(ask({"folder", "/d"}), "readdir: EIO\n");
    EXPECT_EQ(ask({"file", "/r"}), "[EIO]\n");
}

TEST_P(Harness, memoryIsReadAndMapped)
{
    machine.memory("at 0xF0000\nbytes 01 02 \"AB\" @6 FF *1\nsize 0x100004\n");
    EXPECT_EQ(ask({"memory", "0xF0000"}), "8: 01 02 41 42 00 00 FF FF\n");
    EXPECT_EQ(ask({"map", "0xF0000"}), "01 02 41 42 00 00 FF FF\n");
    EXPECT_EQ(ask({"memory", "0x100000"}), "4: 00 00 00 00 00 00 00 00\n");
    EXPECT_EQ(ask({"memory", "0x200000"}), "0: 00 00 00 00 00 00 00 00\n");
    EXPECT_EQ(ask({"map", "0xF0001", "map", "0x200000"}), "mmap: EINVAL\nmmap: EINVAL\n");
    EXPECT_EQ(ask({"status", "/dev/mem", "folder", "/dev"}), "char\n./\n../\n");
}

TEST_P(Harness, entryPointAndStructuresAreLaidOut)
{
    machine.memory("structures at 0xE0010\n"
                   "struct type 1 handle 0x0100 {\n byte 1 word 0x0302\n strings \"ab\" \"c\"\n}\n"
                   "struct type 127 length 4 { }\n"
                   "smbios-entry at 0xF0000 table 0xE0010 version 2.4 bcd 0x24\n");
    EXPECT_EQ(ask({"memory", "0xE0010", "memory", "0xE0018"}),
              "8: 01 07 00 01 01 02 03 61\n8: 62 00 63 00 00 7F 04 01\n");
    // "_SM_", checksum, length 31, version 2.4; table of 19 bytes at 0xE0010 with 2 structures, revision 0x24
    EXPECT_EQ(ask({"memory", "0xF0000"}).substr(0, 15), "8: 5F 53 4D 5F ");
    EXPECT_EQ(ask({"memory", "0xF0004"}).substr(6), "1F 02 04 FF 00 00 00\n");
    EXPECT_EQ(ask({"memory", "0xF0016", "memory", "0xF001E"}),
              "8: 13 00 10 00 0E 00 02 00\n8: 24 00 00 00 00 00 00 00\n");
}

TEST_P(Harness, commandsPrintWhatIsListed)
{
    machine.command("/bin/x -a", "out\n", 3).commandFails("/bin/y").commandErrors("/bin/z 2>errors", "bad\n");
    EXPECT_EQ(ask({"command", "/bin/x -a"}), "out\n[end]\nstatus 3\n");
    EXPECT_EQ(ask({"command", "/bin/x"}), "[end]\nstatus 127\n");
    EXPECT_EQ(ask({"command", "/bin/y"}), "popen: ENOMEM\n");
    EXPECT_EQ(ask({"command", "/bin/z 2>errors", "command", "cat errors 2>/dev/null", "command",
                   "rm -f errors 2>/dev/null", "status", "errors"}),
              "[end]\nstatus 1\nbad\n[end]\nstatus 0\n[end]\nstatus 0\nstat: ENOENT\n");
    EXPECT_EQ(ask({"command", "/bin/none 2>errors", "file", "errors"}),
              "[end]\nstatus 127\nsh: /bin/none: not found\n[end]\n");
}

TEST_P(Harness, systemFactsAreTheMachines)
{
    for (const char* line :
         {"uname sysname Linux", "uname nodename n", "uname release 2.4.21", "uname version \"#1 SMP\"",
          "uname machine i686", "sysinfo totalram 4096", "sysinfo freeram 5", "nprocs 2", "nprocs_conf 4",
          "pagesize 8192", "clock 1066737909", "statvfs / frsize 1024 blocks 9000000000 bfree 7 bavail 6"})
        machine.conf(line);
    EXPECT_EQ(ask({"system", ""}),
              "Linux|n|2.4.21|#1 SMP|i686\n4096 5 0 1\n2 4 2 4 8192\n1066737909 1066737909 1066737909\n");
    if (GetParam() != std::string("small")) {
        EXPECT_EQ(ask({"statvfs", "/"}), "1024 9000000000 7 6\n");
    }
}

TEST_P(Harness, interfacesAnswerWhatTheyHave)
{
    machine.conf("interface lo addr 127.0.0.1 mask 255.0.0.0 mac 00:00:00:00:00:00")
        .conf("interface eth0 mac 00:0C:29:AB:CD:EF")
        .conf("host 10.0.0.1 gate.example.com");
    EXPECT_EQ(ask({"network", "10"}), "lo\n7F 00 00 01\nFF 00 00 00\n00 00 00 00 00 00\n"
                                      "eth0\neth0: EADDRNOTAVAIL\neth0: EADDRNOTAVAIL\n00 0C 29 AB CD EF\n");
    EXPECT_EQ(ask({"network", "1"}), "lo\n7F 00 00 01\nFF 00 00 00\n00 00 00 00 00 00\n");
    EXPECT_EQ(ask({"host", "10.0.0.1", "host", "10.0.0.2"}), "gate.example.com\nno host\n");
    machine.conf("error SIOCGIFCONF * EIO");
    EXPECT_EQ(ask({"network", "1"}), "SIOCGIFCONF: EIO\n");
}

TEST_P(Harness, loginRecordsAreSoughtByTheLibrary)
{
    machine.conf("login USER_PROCESS 5 line tty1").conf("login RUN_LVL 1066730000 line ~ id ~~ user runlevel");
    EXPECT_EQ(ask({"login", ""}), "1 1066730000 ~\n");
}

TEST_P(Harness, deviceNodesAnswer)
{
    machine.device("/dev/hda", "HDIO_GETGEO heads 255 sectors 63 cylinders 1023\n"
                               "HDIO_GET_IDENTITY serial \"AB\" word 128 0x0301\n"
                               "HDIO_DRIVE_CMD bytes 0 5A 00\nBLKGETSIZE 1000\nBLKGETSIZE64 512000\n"
                               "SCSI_IOCTL_GET_IDLUN host 1 channel 2 id 3 lun 4\nFDGETDRVTYP error EIO\n");
    machine.device("/dev/ro", "kind char\nopen read-only EROFS\n").device("/dev/no", "open ENXIO\n");
    EXPECT_EQ(ask({"status", "/dev/hda", "status", "/dev/ro", "folder", "/dev"}),
              "block\nchar\n./\n../\nhda\nno\nro\n");
    EXPECT_EQ(ask({"control", "/dev/hda,301,4"}), "FF 3F FF 03\n");
    EXPECT_EQ(ask({"control", "/dev/hda,30D,23"}).substr(60), "41 42 20\n");
    EXPECT_EQ(ask({"control", "/dev/hda,31F,6"}), "50 00 00 01 5A 00\n");
    EXPECT_EQ(ask({"control", "/dev/hda,1260,4"}), "E8 03 00 00\n");
    EXPECT_EQ(ask({"control", "/dev/hda,80041272,8"}), "00 D0 07 00 00 00 00 00\n");
    EXPECT_EQ(ask({"control", "/dev/hda,5382,4"}), "03 04 02 01\n");
    EXPECT_EQ(ask({"control", "/dev/hda,8010020F,4", "control", "/dev/hda,801C0204,4"}), "ioctl: EIO\nioctl: ENOTTY\n");
    EXPECT_EQ(ask({"control", "/dev/no,301,4", "write", "/dev/ro"}), "open: ENXIO\nfopen: EROFS\nopen: EROFS\n");
}

TEST_P(Harness, floppyRecordsFitTheRequest)
{
    machine.device("/dev/fd0", "FDGETPRM size 2880 sect 18 head 2 track 80 gap 0x1B spec1 0xCF fmt_gap 0x6C\n"
                               "FDGETDRVTYP \"H1440\"\n");
    const std::string fields = "40 0B 00 00 12 00 00 00 02 00 00 00 50 00 00 00 00 00 00 00 1B 00 CF 6C\n";
    EXPECT_EQ(ask({"control", "/dev/fd0,801C0204,24"}), fields);
    EXPECT_EQ(ask({"control", "/dev/fd0,80200204,24"}), fields);
    EXPECT_EQ(ask({"control", "/dev/fd0,8010020F,6"}), "48 31 34 34 30 00\n");
}

TEST_P(Harness, scsiCommandsGetTheirReplies)
{
    machine.device("/dev/sga", "kind char\nSG_IO 12 00 00 00 60 00 = 00 *7 \"SEAGATE ST336607LW      0006\"\n"
                               "sg 12 00 = 00 *7 \"STREAM  \"\nsg 1A 00 04 read-count 40 =\n");
    machine.device("/dev/sgb", "SG_IO 12 00 00 00 60 00 error ENXIO\nsg 12 write-count 7\nsg 1A 00 04 error ENODEV\n"
                               "sg 1A 00 03 read-error EIO\n");
    EXPECT_EQ(ask({"scsi", "/dev/sga", "scsi", "/dev/sgb"}), "SEAGATE ST336607LW      0006\nSG_IO: ENXIO\n");
    EXPECT_EQ(ask({"stream", "/dev/sga"}), "42 291 0/0/00: STREAM  \n42 40 0/0/00: \n42 291 5/0/00: \n");
    EXPECT_EQ(ask({"stream", "/dev/sgb"}), "7 291 0/0/00: \n-1 -1 0/0/00: \n42 -1 0/0/00: \n");
}

TEST_P(Harness, aRefusedScsiCommandComesWithTheDataOfTheReplyBefore)
{
    machine.device("/dev/sga", "kind char\nsg 12 00 = 00 *7 \"STREAM  \"\nsg 1A 00 04 status 2 sense 70 00 05\n"
                               "sg 1A 00 03 status 8 = 00 *7 \"STATUS  \"\n");
    EXPECT_EQ(ask({"stream", "/dev/sga"}),
              "42 291 0/0/00: STREAM  \n42 291 0/1/70: STREAM  \n42 291 0/4/00: STATUS  \n");
}

TEST_P(Harness, chosenCallsFail)
{
    machine.file("/a", "text\n");
    EXPECT_EQ(ask({"file", "/a"}, "1:EMFILE"), "fopen: EMFILE\n");
    EXPECT_EQ(ask({"file", "/a"}, "2:EIO"), "[EIO]\n");
    EXPECT_EQ(ask({"file", "/a"}, "2:EOF"), "[end]\n");
    EXPECT_EQ(ask({"file", "/a"}, "2:SHORT"), "text\n[end]\n");
    EXPECT_EQ(ask({"descriptor", "/a"}, "2:EINTR"), "[EINTR]\n");
}

TEST(HarnessScan, callsAreCounted)
{
    FakeMachine machine;
    ScanOptions options;
    options.countFile = machine.folder() + "/calls";
    machine.scan(options);
    const std::string calls = readTextFile(options.countFile);
    EXPECT_EQ(calls.substr(0, 2), "1 ");
    EXPECT_NE(calls.find(" fopen /etc/redhat-release\n"), std::string::npos);
    EXPECT_NE(calls.find("\nm "), std::string::npos);
}

TEST(HarnessScan, aScanThatHangsIsKilled)
{
    FakeMachine machine;
    ScanOptions options;
    options.program = "/bin/sleep";
    options.arguments = {"60"};
    options.secondsAllowed = 1;
    const ScanResult result = machine.scan(options);
    EXPECT_TRUE(result.timedOut);
    EXPECT_FALSE(result.ended());
}

TEST(HarnessScan, aFaultInTheRecordIsLoud)
{
    FakeMachine machine;
    machine.conf("clokc 5");
    const ScanResult result = machine.scan();
    EXPECT_EQ(result.exitStatus, 125);
    EXPECT_NE(result.errors.find("machine.conf:1: unknown directive clokc"), std::string::npos);
}

TEST(HarnessScan, reportValuesAreFound)
{
    FakeMachine machine;
    machine.file("/etc/redhat-release", "A&B <C>\n");
    const ScanResult result = machine.scan();
    EXPECT_EQ(result.value("OperatingSystem", 0, "Name"), "A&B <C> ");
    EXPECT_EQ(result.rows("OperatingSystem").size(), 1u);
    EXPECT_EQ(result.value("OperatingSystem", 1, "Name"), "(no row)");
    EXPECT_EQ(result.value("OperatingSystem", 0, "Nome"), "(no value)");
    EXPECT_TRUE(result.has("OperatingSystem", 0, "SubVersion"));
    EXPECT_EQ(result.rows("UNIXSystemParams").size(), 0u);
}
