#include "codeset/FileOwner.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <unistd.h>

namespace
{

// The descriptor that the next file gets.
int nextDescriptor()
{
    const int descriptor = dup(STDERR_FILENO);
    close(descriptor);
    return descriptor;
}

} // namespace

TEST(FileOwner, aRegularFileIsOpenAsLongAsItIsOwned)
{
    char path[] = "/tmp/invhw_owner_XXXXXX";
    close(mkstemp(path));
    const int before = nextDescriptor();
    {
        const FileOwner file = openRegularFile(path);
        ASSERT_NE(file, nullptr);
        EXPECT_EQ(fileno(file.get()), before);
    }
    EXPECT_EQ(nextDescriptor(), before);
    unlink(path);
}

TEST(FileOwner, whatIsNoRegularFileIsClosedAtOnce)
{
    const int before = nextDescriptor();
    EXPECT_EQ(openRegularFile("/dev/null"), nullptr);
    EXPECT_EQ(openRegularFile("/tmp"), nullptr);
    EXPECT_EQ(openRegularFile("/nowhere/file"), nullptr);
    EXPECT_EQ(nextDescriptor(), before);
}
