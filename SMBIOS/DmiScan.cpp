#include "SMBIOS/DmiScan.h"

#include <cctype>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <vector>

#include "SMBIOS/IntelByteBuffer.h"
#include "com/BIOSROM.h"
#include "com/VexDebug.h"

namespace
{

constexpr unsigned long kSegmentAddress = 0xF0000;
constexpr int kSegmentSize = 0x10000;
constexpr char kAnchor[] = "_DMI_";

// An anchor at either end of the segment finds zeros for the fields that would lie outside.
constexpr int kZerosAround = 16;

// What stands behind an anchor, and the versions before it.
struct DmiAnchor {
    int tableLength;
    int structureCount;
    unsigned offsetWord;
    unsigned segmentWord;
    uint32_t tableAddress;
    int majorVersion;
    int minorVersion;
};

DmiAnchor readAnchor(const unsigned char* anchor)
{
    DmiAnchor fields;
    fields.tableLength = IntelByteBuffer::readUSHORT(anchor, 6);
    fields.offsetWord = IntelByteBuffer::readUSHORT(anchor, 8);
    fields.segmentWord = IntelByteBuffer::readUSHORT(anchor, 10);
    fields.tableAddress = IntelByteBuffer::readULONG(anchor, 8);
    fields.structureCount = IntelByteBuffer::readUSHORT(anchor, 12);
    const int bcdRevision = anchor[14];
    // Without a revision of its own: the version of the "_SM_" structure that encloses the anchor.
    fields.majorVersion = bcdRevision != 0 ? bcdRevision >> 4 : anchor[-10];
    fields.minorVersion = bcdRevision != 0 ? bcdRevision & 0x0F : anchor[-9];
    return fields;
}

void traceAnchor(int offset, const DmiAnchor& anchor)
{
    const int revision = anchor.majorVersion << 8 | anchor.minorVersion;
    VEX_LOG(DEBUG_SMBIOS, VEX_LEVEL_MAIN, "\nFound _DMI_ at 000F:%04X", static_cast<unsigned>(offset));
    VEX_LOG(DEBUG_SMBIOS, VEX_LEVEL_MAIN, "\ntablelen=%d", anchor.tableLength);
    VEX_LOG(DEBUG_SMBIOS, VEX_LEVEL_MAIN, "\ntableaddr=%08X seg=%04X off=%04X", anchor.tableAddress, anchor.segmentWord,
            anchor.offsetWord);
    VEX_LOG(DEBUG_SMBIOS, VEX_LEVEL_MAIN, "\nnumTables=%d", anchor.structureCount);
    VEX_LOG(DEBUG_SMBIOS, VEX_LEVEL_MAIN, "\nrevision=%04X  maj=%d min=%d", static_cast<unsigned>(revision),
            anchor.majorVersion, anchor.minorVersion);
    VEX_LOG(DEBUG_SMBIOS, VEX_LEVEL_MAIN, "\nGrabbing memory from absolute location %08X, length %d",
            anchor.tableAddress, anchor.tableLength);
}

// One line of the table's dump: up to 16 bytes as numbers and as text.
void traceLine(const unsigned char* bytes, int offset, int count)
{
    char numbers[16 * 3 + 1] = "";
    char text[16 + 1] = "";
    char* number = numbers;
    for (int i = 0; i < count; ++i, number += 3) {
        const unsigned char byte = bytes[offset + i];
        snprintf(number, 4, "%02X ", byte);
        text[i] = isprint(byte) != 0 ? static_cast<char>(byte) : '.';
    }
    VEX_LOG(DEBUG_SMBIOS, VEX_LEVEL_MAIN, "\n%04X %s --- >%s<", static_cast<unsigned>(offset), numbers, text);
}

void traceTable(const unsigned char* bytes, int length)
{
    if (!vexDebugWanted(DEBUG_SMBIOS, VEX_LEVEL_MAIN))
        return;
    for (int offset = 0; offset < length; offset += 16)
        traceLine(bytes, offset, length - offset < 16 ? length - offset : 16);
}

// Fills table from the anchor; false when its memory cannot be read.
bool readTable(const DmiAnchor& anchor, DmiTable* table)
{
    table->majorVersion = anchor.majorVersion;
    table->minorVersion = anchor.minorVersion;
    table->revision = anchor.majorVersion << 8 | anchor.minorVersion;
    table->totalLength = anchor.tableLength;
    table->numTables = anchor.structureCount;
    table->data = TableBuffer(anchor.tableLength);
    return BIOSROM().getPhysMem(table->data.bytes(), 0, anchor.tableAddress, anchor.tableLength) != 0;
}

bool readFirstGoodTable(const unsigned char* segment, DmiTable* table)
{
    const unsigned char* const end = segment + kSegmentSize;
    const unsigned char* next = segment;
    while (true) {
        const void* found = memmem(next, static_cast<size_t>(end - next), kAnchor, sizeof kAnchor - 1);
        if (found == nullptr)
            return false;
        next = static_cast<const unsigned char*>(found);
        const DmiAnchor anchor = readAnchor(next);
        traceAnchor(static_cast<int>(next - segment), anchor);
        if (readTable(anchor, table))
            return true;
        ++next;
    }
}

} // namespace

bool scanForDmi(DmiTable* table)
{
    const VexGroupFrame frame(DEBUG_SMBIOS, "SMBIOS");
    VEX_LOG(DEBUG_SMBIOS, VEX_LEVEL_DETAIL, "\nReading F0000 segment.");
    std::vector<unsigned char> buffer(kSegmentSize + 2 * kZerosAround);
    unsigned char* const segment = buffer.data() + kZerosAround;
    if (BIOSROM().getPhysMem(segment, 0, kSegmentAddress, kSegmentSize) == 0)
        return false;
    VEX_LOG(DEBUG_SMBIOS, VEX_LEVEL_DETAIL, "\nLooking for _DMI_ signature.");
    if (!readFirstGoodTable(segment, table))
        return false;
    traceTable(table->data.bytes(), table->totalLength);
    return true;
}
