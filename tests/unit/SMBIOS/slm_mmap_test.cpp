#include "SMBIOS/slm_mmap.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <string>
#include <sys/mman.h>
#include <unistd.h>
#include <vector>

static void* address(unsigned long value)
{
    return reinterpret_cast<void*>(value);
}

TEST(SlmPages, areAlignedDownAndUp)
{
    const unsigned long page = slm_get_page_size();
    EXPECT_EQ(page, static_cast<unsigned long>(getpagesize()));
    EXPECT_EQ(slm_page_off(address(3 * page + 5)), 5u);
    EXPECT_EQ(slm_page_align(address(3 * page), 1), address(3 * page));
    EXPECT_EQ(slm_page_align(address(3 * page), 2), address(3 * page));
    EXPECT_EQ(slm_page_align(address(3 * page + 5), 1), address(3 * page));
    EXPECT_EQ(slm_page_align(address(3 * page + 5), 0), address(4 * page));
}

class SlmFile : public testing::Test
{
protected:
    explicit SlmFile()
    {
        content_.resize(3 * slm_get_page_size());
        for (size_t i = 0; i < content_.size(); ++i)
            content_[i] = static_cast<char>(i * 7 % 251);
        const int descriptor = mkstemp(path_);
        EXPECT_EQ(write(descriptor, content_.data(), content_.size()), static_cast<ssize_t>(content_.size()));
        close(descriptor);
    }
    ~SlmFile() override { unlink(path_); }

    std::string fileText() const
    {
        std::ifstream stream(path_, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }

    std::string content_;
    char path_[32] = "/tmp/invhw_map_XXXXXX";
    void* handle_ = nullptr;
};

TEST_F(SlmFile, isMappedFromThePageOfTheOffset)
{
    const unsigned long offset = slm_get_page_size() + 100;
    const char* const start = static_cast<char*>(slm_file_mmap(path_, offset, 50, 1, 0, &handle_));
    ASSERT_NE(start, MAP_FAILED);
    EXPECT_EQ(std::string(start + slm_page_off(address(offset)), 50), content_.substr(offset, 50));
    EXPECT_EQ(slm_file_munmap(&handle_), 0);
}

TEST_F(SlmFile, isMappedAsGivenWithoutAlignment)
{
    const char* const start = static_cast<char*>(slm_file_mmap(path_, slm_get_page_size(), 50, 0, 0, &handle_));
    ASSERT_NE(start, MAP_FAILED);
    EXPECT_EQ(std::string(start, 50), content_.substr(slm_get_page_size(), 50));
    EXPECT_EQ(slm_file_munmap(&handle_), 0);
    EXPECT_EQ(slm_file_mmap(path_, 100, 50, 0, 0, &handle_), MAP_FAILED) << "an offset inside a page";
}

TEST_F(SlmFile, takesWritesInWriteMode)
{
    char* const start = static_cast<char*>(slm_file_mmap(path_, 0, 10, 1, 1, &handle_));
    ASSERT_NE(start, MAP_FAILED);
    memcpy(start, "changed", 7);
    EXPECT_EQ(slm_file_munmap(&handle_), 0);
    EXPECT_EQ(fileText().substr(0, 7), "changed");
}

TEST_F(SlmFile, shorterThanTheMappingReadsAsZerosBehindItsEnd)
{
    const unsigned long page = slm_get_page_size();
    const unsigned char* const start =
        static_cast<unsigned char*>(slm_file_mmap(path_, 2 * page, 5 * page, 1, 0, &handle_));
    ASSERT_NE(start, MAP_FAILED);
    EXPECT_EQ(memcmp(start, content_.data() + 2 * page, page), 0);
    EXPECT_EQ(std::vector<unsigned char>(start + page, start + 5 * page), std::vector<unsigned char>(4 * page));
    EXPECT_EQ(slm_file_munmap(&handle_), 0);
}

TEST_F(SlmFile, shorterThanTheMappingKeepsWhatIsWrittenInWriteMode)
{
    const unsigned long page = slm_get_page_size();
    char* const start = static_cast<char*>(slm_file_mmap(path_, page, 5 * page, 1, 1, &handle_));
    ASSERT_NE(start, MAP_FAILED);
    memcpy(start + page - 7, "changed", 7);
    EXPECT_EQ(slm_file_munmap(&handle_), 0);
    EXPECT_EQ(fileText().substr(2 * page - 7, 7), "changed");
    EXPECT_EQ(fileText().size(), content_.size());
}

TEST_F(SlmFile, cannotBeChangedInReadMode)
{
    const int file = open(path_, O_RDONLY);
    for (const unsigned long pages : {3ul, 5ul}) { // the file's own mapping, and a copy, which is longer than the file
        void* const start = slm_file_mmap(path_, 0, pages * slm_get_page_size(), 1, 0, &handle_);
        ASSERT_NE(start, MAP_FAILED);
        EXPECT_EQ(pread(file, start, 1, 0), -1) << pages;
        EXPECT_EQ(errno, EFAULT) << pages;
        EXPECT_EQ(slm_file_munmap(&handle_), 0);
    }
    close(file);
}

TEST_F(SlmFile, cannotBeMappedWithoutLengthOrFile)
{
    EXPECT_EQ(slm_file_mmap(path_, 0, 0, 1, 0, &handle_), MAP_FAILED);
    EXPECT_EQ(slm_file_mmap("/nonexistent/file", 0, 10, 1, 0, &handle_), MAP_FAILED);
    EXPECT_EQ(handle_, nullptr);
}

TEST(SlmPhysical, isNotMadeWhereThereIsNone)
{
    if (access("/dev/mem", F_OK) == 0)
        GTEST_SKIP() << "this computer has it";
    void* handle = nullptr;
    EXPECT_EQ(slm_phys_mmap(0xF0000, 0xF1000, 1, &handle), MAP_FAILED);
    EXPECT_EQ(handle, nullptr);
    EXPECT_NE(access("/dev/mem", F_OK), 0);
}
