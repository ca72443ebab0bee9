#include "host/firmware/ProcessorSockets.h"

namespace host
{
namespace
{
constexpr uint8_t kCentralProcessor = 3;
constexpr uint8_t kPopulated = 1U << 6; // of the status

bool holdsProcessor(const Structure& structure)
{
    constexpr size_t kType = 5, kStatus = 24;
    return structure.byte(kType) == kCentralProcessor && (structure.byte(kStatus).value_or(0) & kPopulated) != 0;
}

template <typename T>
std::optional<uint64_t> unlessZero(std::optional<T> value)
{
    return value && *value != 0 ? std::optional<uint64_t>(*value) : std::nullopt;
}

// A byte that says "look there" with its largest value, or with another where the standard says so, and a word that is
// there since 2.6 or 3.0.
std::optional<uint64_t> extended(const Structure& structure, size_t byteOffset, size_t wordOffset, uint8_t seeWord)
{
    const std::optional<uint8_t> byte = structure.byte(byteOffset);
    if (byte == seeWord)
        return unlessZero(structure.word(wordOffset));
    return unlessZero(byte);
}

ProcessorSocket socketOf(const Structure& structure)
{
    constexpr uint8_t kSeeFamily2 = 0xFE, kSeeCount2 = 0xFF;
    ProcessorSocket processor;
    processor.socket = structure.string(4);
    processor.family = extended(structure, 6, 40, kSeeFamily2);
    processor.manufacturer = structure.string(7);
    processor.version = structure.string(16);
    processor.externalClock = unlessZero(structure.word(18));
    processor.maximumSpeed = unlessZero(structure.word(20));
    processor.currentSpeed = unlessZero(structure.word(22));
    processor.upgrade = unlessZero(structure.byte(25));
    processor.serialNumber = structure.string(32);
    processor.cores = extended(structure, 35, 42, kSeeCount2);
    processor.threads = extended(structure, 37, 46, kSeeCount2);
    return processor;
}
} // namespace

std::vector<ProcessorSocket> processorSocketsOf(const StructureTable& table)
{
    std::vector<ProcessorSocket> sockets;
    for (const Structure* structure : table.all(SMBIOS_PROCESSOR))
        if (holdsProcessor(*structure))
            sockets.push_back(socketOf(*structure));
    return sockets;
}
} // namespace host
