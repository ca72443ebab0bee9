#include "linux/partition/PartitionSwaps.h"

#include <cstring>

#include "linux/text/TextStream.h"
#include "tests/unit/linux/partition/PartitionRowsFixture.h"
#include "tests/unit/linux/text/TextOf.h"

class PartitionSwaps : public PartitionRowsTest
{
protected:
    void read(const std::string& text)
    {
        TextStream stream = textOf(text);
        addSwapRows(stream);
    }

    void readAreas(const std::string& lines) { read("Filename\tType\tSize\tUsed\tPriority\n" + lines); }

    // Path, size and free size of every row.
    std::vector<std::string> areas()
    {
        std::vector<std::string> result;
        for (VexTableRow* row : rows())
            result.push_back(valueText(*row, PARTITION_DEVICE_NAME) + ' ' + valueText(*row, PARTITION_PHYSICAL_SIZE) +
                             ' ' + valueText(*row, PARTITION_FS_FREE_SIZE));
        return result;
    }

    using Areas = std::vector<std::string>;
};

TEST_F(PartitionSwaps, anUnusedAreaIsFreeAsAWhole)
{
    readAreas("/dev/hda2 partition 524280 0 -1\n");
    ASSERT_EQ(rows().size(), 1u);
    std::vector<std::string> values;
    for (unsigned long id = PARTITION_INDEX; id <= PARTITION_FS_FREE_SIZE; ++id)
        values.push_back(valueText(*rows()[0], id));
    EXPECT_EQ(values, (std::vector<std::string>{"1", "1", "3", "/dev/hda2", "524280", "130", "/dev/hda2", "swap",
                                                "524280", "524280"}));
}

TEST_F(PartitionSwaps, usedKilobytesAreNotFree)
{
    readAreas("/dev/hda2 partition 524280 1000 -1\n/swapfile file 100 100 -2\n/x file 100 101 -3\n");
    EXPECT_EQ(areas(), (Areas{"/dev/hda2 524280 523280", "/swapfile 100 0", "/x 100 0"}));
}

TEST_F(PartitionSwaps, freeSizeIsNegativeFromTheSignBitOn)
{
    readAreas("/a file 2147483647 0 -1\n/b file 2147483648 0 -1\n/c file 4294967295 2147483648 -1\n");
    EXPECT_EQ(areas(), (Areas{"/a 2147483647 2147483647", "/b 2147483648 0", "/c 4294967295 2147483647"}));
}

TEST_F(PartitionSwaps, numbersSaturateAt32Bits)
{
    readAreas("/a file 4294967296 2147483648 -1\n/b file 99999999999999999999 4294967295 -1\n");
    EXPECT_EQ(areas(), (Areas{"/a 4294967295 2147483647", "/b 4294967295 0"}));
}

TEST_F(PartitionSwaps, aDeletedSwapFileHasTwoWordsForItsType)
{
    readAreas("/swapfile (deleted) file 1000 10 -1\n/swap\\040file\\040(deleted) file 1000 20 -1\n");
    EXPECT_EQ(areas(), (Areas{"/swapfile 1000 990", "/swap\\040file\\040(deleted) 1000 980"}));
}

TEST_F(PartitionSwaps, linesWithMissingFieldsAndRemarksAreSkipped)
{
    readAreas("\n/a\n/b file\n/c file 100\n/d file many 0\n/e file 100 x\n/f (deleted) file 100\n"
              "/g (deleted) 100 0\n/g (deleted)\n/h#1 file 100 0\n# /i file 100 0\n/j file 100 0\n");
    EXPECT_EQ(areas(), (Areas{"/j 100 100"}));
}

TEST_F(PartitionSwaps, aLongLineComesInPiecesThatAreLinesOfTheirOwn)
{
    readAreas("/" + std::string(300, 'a') + " file 100 0\n/b file 100 0\n");
    EXPECT_EQ(areas(), (Areas{std::string(46, 'a') + " 100 100", "/b 100 100"}));
}

TEST_F(PartitionSwaps, aHeaderNeedsOneOfItsTitles)
{
    read("nothing of the kind\n/a file 100 0 -1\n");
    read("");
    read("\n/a file 100 0 -1\n");
    EXPECT_EQ(areas(), Areas{});
    read("Used\n/a file 100 0 -1\n");
    EXPECT_EQ(areas(), (Areas{"/a 100 100"}));
}

TEST_F(PartitionSwaps, indexesRunOnBehindTheMounts)
{
    addPartitionRow({});
    readAreas("/a file 100 0 -1\n/b file 100 0 -1\n");
    ASSERT_EQ(rows().size(), 3u);
    EXPECT_EQ(valueText(*rows()[2], PARTITION_INDEX), "3");
}
