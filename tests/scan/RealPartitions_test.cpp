// A scan of the computer that runs the test: for every file system that df(1) shows, the report has the same sizes.

#include <algorithm>
#include <cstdint>
#include <gtest/gtest.h>
#include <sstream>
#include <string>
#include <unistd.h>
#include <vector>

#include "linux/partition/PartitionNames.h"
#include "tests/scan/RealScan.h"

namespace
{

struct FileSystem {
    std::string mountPoint;
    uint64_t total; // kilobytes
    uint64_t available;
};

// Only those that the report is meant to have.
std::vector<FileSystem> runDf()
{
    std::istringstream output(outputOf("LC_ALL=C df -k --output=fstype,size,avail,target 2>/dev/null"));
    std::vector<FileSystem> result;
    std::string line;
    std::getline(output, line); // titles
    while (std::getline(output, line)) {
        std::istringstream words(line);
        std::string type;
        FileSystem entry;
        if (words >> type >> entry.total >> entry.available >> std::ws && std::getline(words, entry.mountPoint) &&
            !isPseudoFileSystem("", entry.mountPoint.c_str(), type.c_str()))
            result.push_back(entry);
    }
    return result;
}

// The report writes 32-bit numbers as signed ones.
uint32_t number(const std::string& text)
{
    return static_cast<uint32_t>(std::stoll(text));
}

uint64_t saturated(uint64_t kilobytes)
{
    return std::min<uint64_t>(kilobytes, UINT32_MAX);
}

// What is free may change while the scan runs, up and down, so it is compared with what df said before and after, with
// some room around them: the scan writes a log and a report, which are gone again when df looks; and where the two
// answers differ, others write as well.
bool isPlausiblyFree(uint32_t free, const FileSystem& before, const FileSystem& after)
{
    const auto [least, most] = std::minmax(before.available, after.available);
    constexpr uint64_t kFilesOfTheScan = 2048; // kilobytes, with what a file system reserves ahead of writing
    const uint64_t room = std::max(kFilesOfTheScan, least == most ? 0 : before.total / 1000);
    return free >= saturated(least - std::min(least, room)) && free <= saturated(most + room);
}

// The first difference between df and the report, or an empty text.
std::string difference(const std::vector<FileSystem>& before, const std::vector<FileSystem>& after,
                       const std::vector<ReportRow>& rows)
{
    for (const FileSystem& entry : before) {
        const auto later = std::find_if(after.begin(), after.end(),
                                        [&](const FileSystem& other) { return other.mountPoint == entry.mountPoint; });
        const auto row = std::find_if(rows.begin(), rows.end(), [&](const ReportRow& candidate) {
            return *candidate.find("FSMountPoint") == entry.mountPoint;
        });
        if (later == after.end() || row == rows.end())
            return entry.mountPoint + " is missing";
        const uint32_t total = number(*row->find("FSTotalSize"));
        const uint32_t free = number(*row->find("FSFreeSize"));
        if (total != saturated(entry.total) || !isPlausiblyFree(free, entry, *later))
            return entry.mountPoint + ": " + std::to_string(total) + ", of which free " + std::to_string(free);
    }
    return "";
}

} // namespace

TEST(RealPartitions, agreeWithDf)
{
    constexpr int kAttempts = 20; // on a busy computer not every scan falls between two alike answers
    std::string found;
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
        const std::vector<FileSystem> before = runDf();
        const ScanResult result = scanThisComputer();
        ASSERT_FALSE(before.empty());
        if (access("/etc/mtab", R_OK) != 0) { // a container without a mount table has no such group
            EXPECT_TRUE(result.rows("Partition").empty());
            return;
        }
        ASSERT_FALSE(result.rows("Partition").empty());
        found = difference(before, runDf(), result.rows("Partition"));
        if (found.empty())
            return;
    }
    FAIL() << found;
}
