#include "host/block/UdevProperties.h"

#include <gtest/gtest.h>

#include "host/Notes.h"
#include "host/Root.h"
#include "tests/unit/host/Tree.h"

using namespace host;

TEST(UdevProperties, areTheLinesOfTheDevicesFile)
{
    const Tree tree;
    Notes notes;
    const Root root(tree.folder(), notes);
    tree.file("/run/udev/data/b8:1",
              "S:disk/by-id/x\nI:12\nE:ID_FS_TYPE=ext4\nE:ID_FS_LABEL_ENC=my\\x20disk\\x2\\\n"
              "E:EMPTY=\nE:NO_VALUE\nE:A=b=c\nE:TWICE=1\nE:TWICE=2\nG:systemd\nE:X=\\xzz\\x41\n");
    const UdevProperties udev(root, "8:1");
    EXPECT_EQ(udev.value("ID_FS_TYPE")->value, "ext4");
    EXPECT_EQ(udev.value("ID_FS_TYPE")->source, "/run/udev/data/b8:1");
    EXPECT_EQ(udev.value("ID_FS_LABEL_ENC")->value, "my disk\\x2\\");
    EXPECT_EQ(udev.value("A")->value, "b=c");
    EXPECT_EQ(udev.value("TWICE")->value, "2");
    EXPECT_EQ(udev.value("X")->value, "\\xzzA");
    for (const char* name : {"EMPTY", "NO_VALUE", "ID_SERIAL", "disk/by-id/x", ""})
        EXPECT_FALSE(udev.value(name)) << name;
    EXPECT_FALSE(UdevProperties(root, "").value("ID_FS_TYPE"));
    EXPECT_FALSE(UdevProperties(root, "8:2").value("ID_FS_TYPE"));
    EXPECT_EQ(notes.text(), "");
}
