// Numbers are little-endian.

#include "host/packages/RpmDatabase.h"

namespace host
{
namespace
{
constexpr size_t kPage = 4096, kHeaderSize = 32, kSlot = 16, kBlock = 16, kBlobHead = 16;
constexpr std::string_view kMagic = "RpmP", kSlotMagic = "Slot", kBlobMagic = "BlbS";
constexpr uint32_t kMostSlotPages = 16384; // four million packages

// The little-endian number of four bytes at an offset that lies in the bytes.
uint32_t wordAt(std::string_view bytes, size_t offset)
{
    uint32_t word = 0;
    for (size_t i = 4; i > 0; --i)
        word = word << 8 | static_cast<uint8_t>(bytes[offset + i - 1]);
    return word;
}

// A slot: mark, number of the package, first block and count of blocks. Before the header stand a mark, the package's
// number, a generation and the header's length.
void readSlot(std::string_view database, std::string_view slot, const TakeHeader& take)
{
    const uint64_t offset = uint64_t{wordAt(slot, 8)} * kBlock, size = uint64_t{wordAt(slot, 12)} * kBlock;
    if (!slot.starts_with(kSlotMagic) || offset == 0 || offset > database.size() || size > database.size() - offset)
        return;
    const std::string_view blob = database.substr(offset, size);
    if (blob.size() < kBlobHead || !blob.starts_with(kBlobMagic) || wordAt(blob, 4) != wordAt(slot, 4))
        return;
    const uint32_t length = wordAt(blob, 12);
    if (length <= blob.size() - kBlobHead)
        take(blob.substr(kBlobHead, length));
}
} // namespace

std::string readRpmNdb(std::string_view database, const TakeHeader& take)
{
    if (database.size() < kPage || !database.starts_with(kMagic))
        return "no RPM database";
    const uint64_t pages = wordAt(database, 12);
    const uint64_t end = pages * kPage;
    if (pages > kMostSlotPages || end > database.size())
        return "its slots are not in it";
    for (size_t slot = kHeaderSize; slot + kSlot <= end; slot += kSlot)
        readSlot(database, database.substr(slot, kSlot), take);
    return "";
}
} // namespace host
