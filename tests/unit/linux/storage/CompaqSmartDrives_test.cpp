#include "linux/storage/CompaqSmartDrives.h"

#include <gtest/gtest.h>

#include "tests/unit/linux/text/TextOf.h"

namespace
{

using Sizes = std::vector<uint32_t>;

Sizes sizesOf(std::string text)
{
    TextStream status = textOf(text);
    return readSmartDiskSizes(status);
}

} // namespace

TEST(SmartRAIDStatus, everyLineWithBlocksIsADisk)
{
    EXPECT_EQ(sizesOf("cciss0: Compaq\nc0d0: blksz=512 nr_blocks=1024\nc0d1: blksz=512 nr_blocks=2048\n"),
              (Sizes{512, 1024}));
    EXPECT_EQ(sizesOf("cciss0: Compaq\n"), Sizes{});
}

TEST(SmartRAIDStatus, theSizeIsBlockSizeTimesBlocksDividedFirst)
{
    const char* text = "cciss0: Compaq Smart Array 5i\n"
                       "cciss/c0d0: blksz=512 nr_blocks=71122560\n"
                       "cciss/c0d1: blksz=512 nr_blocks=2047\n";
    EXPECT_EQ(sizesOf(text), (Sizes{35560960, 512}));
}

TEST(SmartRAIDStatus, aLineWithoutItsFiguresHasNoSize)
{
    EXPECT_EQ(sizesOf("c0d0: nr_blocks\n"), Sizes{0});
    EXPECT_EQ(sizesOf("c0d0: nr_blocks=71122560\n"), Sizes{0});
    EXPECT_EQ(sizesOf("c0d0: blksz=512 nr_blocks\n"), Sizes{0});
    EXPECT_EQ(sizesOf("nr_blocks"), Sizes{0});
}

TEST(SmartRAIDStatus, theSizeWrapsAt32Bits)
{
    EXPECT_EQ(sizesOf("c0d0: blksz=1024 nr_blocks=4294967295\n"), Sizes{0xFFFFFC00});
    EXPECT_EQ(sizesOf("c0d0: blksz=4096 nr_blocks=4294967295\n"), Sizes{0xFFFFF000});
}
