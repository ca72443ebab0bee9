// Accounts, live patches and services of copies of machines.

#include <gtest/gtest.h>

#include "report/catalog/AttributeIds.h"
#include "tests/unit/host/Collected.h"

namespace
{
void kernelAnswers(const Tree& tree, const std::string& answers)
{
    tree.file("/invhw-kernel.json", R"({"format": "invhw-kernel", "formatVersion": 1, "answers": {)" + answers + "}}");
}

constexpr const char* kNames =
    R"("names": {"": {"system": "Linux", "node": "h1", "release": "6", "version": "v", "machine": "m"}})";
} // namespace

TEST(UserAccountInfo, tellsStatusAndNoHash)
{
    const Tree tree;
    kernelAnswers(tree, std::string(kNames) + R"(, "clock": {"": 1728000000})"); // day 20000
    tree.file("/etc/passwd", "root:x:0:0:root:/root:/bin/bash\nada:x:1000:1001:Ada L,,:/home/ada:/bin/sh\n"
                             "late:x:1001:1001::/home/late:/bin/sh\nnone:x:5:5::/:/bin/false\nada:x:1:1::/:\n");
    tree.file("/etc/shadow", "root:*:19000:0:99999:7:::\nada:$6$abc$defdefdefdef:19000:9:5:7:::\n"
                             "late:$6$abc$defdefdefdef:19000:0:90:7::20000:\n");
    const Rows rows = collected(tree, GROUP_USER_ACCOUNT_INFO);
    EXPECT_EQ(rows,
              (Rows{"UserName=root|Domain=h1|Description=root|Disabled=Yes|Status=Disabled|PasswordChangeable=Yes|"
                    "PasswordExpires=No|PasswordRequired=Yes|UserID=0|GroupID=0|Home=/root|Shell=/bin/bash",
                    "UserName=ada|Domain=h1|Description=Ada L|Disabled=No|Status=Enabled|PasswordChangeable=No|"
                    "PasswordExpires=Yes|PasswordRequired=Yes|UserID=1000|GroupID=1001|Home=/home/ada|Shell=/bin/sh",
                    "UserName=late|Domain=h1|Disabled=Yes|Status=Disabled|PasswordChangeable=Yes|PasswordExpires=Yes|"
                    "PasswordRequired=Yes|UserID=1001|GroupID=1001|Home=/home/late|Shell=/bin/sh",
                    "UserName=none|Domain=h1|UserID=5|GroupID=5|Home=/|Shell=/bin/false"}));
    for (const std::string& row : rows)
        EXPECT_EQ(row.find("$6$"), std::string::npos);
    EXPECT_EQ(statusOf(tree, GROUP_USER_ACCOUNT_INFO),
              "Group=User Account Info|Result=Collected|Rows=4|Reason=/etc/passwd: an account comes again");
}

TEST(UserAccountInfo, withoutShadowTellsNoStatus)
{
    const Tree tree;
    tree.file("/etc/passwd", "a:x:1:2::/:/bin/sh\nb::3:4::/:\n");
    EXPECT_EQ(collected(tree, GROUP_USER_ACCOUNT_INFO),
              (Rows{"UserName=a|UserID=1|GroupID=2|Home=/|Shell=/bin/sh",
                    "UserName=b|Disabled=No|Status=Enabled|PasswordRequired=No|UserID=3|GroupID=4|Home=/"}));
}

TEST(UserAccountInfo, tellsWhomFailedLogInsLockOut)
{
    const Tree tree;
    kernelAnswers(tree, R"("clock": {"": 1000})");
    tree.file("/etc/passwd", "root:x:0:0::/:\nada:x:1:1::/:\nbob:x:2:2::/:\n");
    tree.file("/etc/shadow", "ada:$6$abc$defdefdefdef:::::::\n");
    std::string record(64, '\0');
    record[54] = 1;
    record[56] = static_cast<char>(0xE0); // 0x3E0, 8 seconds ago
    record[57] = 3;
    tree.file("/run/faillock/ada", record + record + record);
    tree.file("/run/faillock/root", record + record + record);
    EXPECT_EQ(collected(tree, GROUP_USER_ACCOUNT_INFO),
              (Rows{"UserName=root|Lockout=No|UserID=0|GroupID=0|Home=/",
                    "UserName=ada|Disabled=No|Lockout=Yes|Status=Locked Out|PasswordChangeable=Yes|PasswordExpires=No|"
                    "PasswordRequired=Yes|UserID=1|GroupID=1|Home=/",
                    "UserName=bob|Lockout=No|UserID=2|GroupID=2|Home=/"}));
}

TEST(InstalledPatches, tellWhatTheyPatch)
{
    const Tree tree;
    const std::string patch = "/sys/kernel/livepatch/livepatch_42/";
    tree.file(patch + "enabled", "1\n");
    tree.file(patch + "transition", "1\n");
    tree.file(patch + "vmlinux/patched", "1\n");
    tree.folder(patch + "vmlinux/do_exit,1");
    tree.folder(patch + "vmlinux/cmdline_proc_show,2");
    tree.folder(patch + "ext4/ext4_fill_super,1");
    tree.file("/sys/kernel/livepatch/off/enabled", "0\n");
    EXPECT_EQ(collected(tree, GROUP_INSTALLED_PATCHES),
              (Rows{"Index=1|PatchID=livepatch_42|Status=enabled, in transition|"
                    "Description=ext4: ext4_fill_super; vmlinux: cmdline_proc_show, do_exit|"
                    "ID=ba67a293e7a6872b429e0c027d5f4d6c",
                    "Index=2|PatchID=off|Status=disabled|ID=3262d48df5d75e3452f0f16b313b7808"}));
}

TEST(ServiceInfo, comesFromUnitFilesAndLinks)
{
    const Tree tree;
    const std::string lib = "/usr/lib/systemd/system/", etc = "/etc/systemd/system/";
    tree.folder("/run/systemd/system");
    tree.file(lib + "ssh.service",
              "[Unit]\nDescription=Secure \\\n  Shell\n[Service]\nType=notify\n"
              "ExecStart=-/usr/sbin/sshd -D --password hunter2\n[Install]\nWantedBy=multi-user.target\n");
    tree.link(etc + "multi-user.target.wants/ssh.service", lib + "ssh.service");
    tree.link(etc + "sshd.service", lib + "ssh.service");
    tree.file(lib + "off.service", "[Service]\nExecStart=/bin/off\nUser=nobody\n[Install]\nWantedBy=a.target\n");
    tree.file(lib + "static.service", "[Service]\nBusName=x\nExecStart=/bin/s\n");
    tree.link(etc + "gone.service", "/dev/null");
    tree.file(lib + "gone.service", "[Service]\nExecStart=/bin/gone\n");
    tree.link(etc + "dangling.service", lib + "nothing.service");
    tree.file(lib + "getty@.service", "[Service]\nExecStart=/sbin/agetty %I\n[Install]\nWantedBy=getty.target\n");
    tree.link(etc + "getty.target.wants/getty@tty1.service", lib + "getty@.service");
    tree.file(etc + "getty@.service.d/more.conf", "[Service]\nExecStart=\nExecStart=/sbin/agetty --noclear %I\n");
    EXPECT_EQ(collected(tree, GROUP_SERVICE_INFO),
              (Rows{"ServiceName=getty@tty1.service|PathName=/sbin/agetty --noclear %I|ServiceType=simple|"
                    "StartMode=enabled|StartName=root|UnitFileState=enabled",
                    "ServiceName=gone.service|StartMode=masked|UnitFileState=masked",
                    "ServiceName=off.service|PathName=/bin/off|ServiceType=simple|StartMode=disabled|StartName=nobody|"
                    "UnitFileState=disabled",
                    "ServiceName=ssh.service|DisplayName=Secure  Shell|Description=Secure  Shell|"
                    "PathName=/usr/sbin/sshd -D --password ***|ServiceType=notify|StartMode=enabled|StartName=root|"
                    "UnitFileState=enabled",
                    "ServiceName=static.service|PathName=/bin/s|ServiceType=dbus|StartMode=static|StartName=root|"
                    "UnitFileState=static"}));
}

TEST(ServiceInfo, isWhatTheManagerAnsweredAndTheFilesOfTheRest)
{
    const Tree tree;
    tree.folder("/run/systemd/system");
    tree.file("/usr/lib/systemd/system/off.service", "[Service]\nExecStart=/bin/off\n");
    tree.file("/usr/lib/systemd/system/ssh.service", "[Service]\nExecStart=/bin/old\n");
    kernelAnswers(tree, R"("services": {"": [{"name": "ssh.service", "description": "Shell", "activeState": "active",
        "subState": "running", "unitFileState": "enabled-runtime", "type": "notify",
        "commandLine": "/usr/sbin/sshd token=abc", "user": "sshd"}, {"name": ""}, 7]})");
    EXPECT_EQ(collected(tree, GROUP_SERVICE_INFO),
              (Rows{"ServiceName=off.service|PathName=/bin/off|ServiceType=simple|Started=No|StartMode=static|"
                    "StartName=root|State=inactive|Status=dead|UnitFileState=static",
                    "ServiceName=ssh.service|DisplayName=Shell|Description=Shell|PathName=/usr/sbin/sshd token=***|"
                    "ServiceType=notify|Started=Yes|StartMode=enabled|StartName=sshd|State=active|Status=running|"
                    "UnitFileState=enabled-runtime"}));
}

TEST(ServiceInfo, ofScripts)
{
    const Tree tree;
    tree.file("/etc/init.d/ssh", "#!/bin/sh\n### BEGIN INIT INFO\n# Provides: sshd\n# Short-Description: Shell\n"
                                 "# Description: Secure shell\n### END INIT INFO\n");
    tree.file("/etc/init.d/cron", "#!/bin/sh\n# chkconfig: 345 90 60\n# description: runs jobs\n");
    tree.file("/etc/init.d/functions", "# of all scripts\n");
    tree.file("/etc/init.d/own", "#!/bin/sh\n");
    tree.link("/etc/rc2.d/S20ssh", "../init.d/ssh");
    tree.link("/etc/rc3.d/S99own", "../init.d/own");
    tree.link("/etc/rc3.d/K01cron", "../init.d/cron");
    EXPECT_EQ(collected(tree, GROUP_SERVICE_INFO),
              (Rows{"ServiceName=cron|DisplayName=runs jobs|Description=runs jobs|PathName=/etc/init.d/cron|"
                    "StartMode=disabled",
                    "ServiceName=own|PathName=/etc/init.d/own|StartMode=enabled",
                    "ServiceName=ssh|DisplayName=Shell|Description=Secure shell|PathName=/etc/init.d/ssh|"
                    "StartMode=enabled"}));
}
