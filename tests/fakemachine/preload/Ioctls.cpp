// The ioctls whose answers are one record: a table of their numbers and names, and a function that writes each record
// as the kernel lays it out.

#include "preload/Ioctls.h"

#include <algorithm>
#include <cerrno>
#include <cstring>

#include "preload/Record.h"

namespace fakemachine
{

static constexpr size_t kIdentitySize = 512;
static constexpr size_t kFloppyNameSize = 16;

static uint64_t numberOf(const IoctlAnswer& answer, const char* name)
{
    const auto found = answer.numbers.find(name);
    return found == answer.numbers.end() ? 0 : found->second;
}

static std::string identity(const IoctlAnswer& answer)
{
    std::string block(kIdentitySize, '\0');
    for (const auto& [offset, bytes] : answer.bytes)
        if (offset < kIdentitySize)
            block.replace(offset, std::min(bytes.size(), kIdentitySize - offset), bytes, 0,
                          std::min(bytes.size(), kIdentitySize - offset));
    return block;
}

// Each writes its record at argument and returns 0, or the errno with which the ioctl fails.

static int writeGeometry(const IoctlAnswer& answer, void* argument)
{
    Record(argument)
        .add(numberOf(answer, "heads"), 1)
        .add(numberOf(answer, "sectors"), 1)
        .add(numberOf(answer, "cylinders"), 2)
        .add(0, sizeof(long) - 4)
        .add(numberOf(answer, "start"), sizeof(long));
    return 0;
}

static int writeIdentity(const IoctlAnswer& answer, void* argument)
{
    memcpy(argument, identity(answer).data(), kIdentitySize);
    return 0;
}

static int writeDriveReply(const IoctlAnswer& answer, void* argument)
{
    // The fourth byte says how many sectors the caller has room for.
    memcpy(static_cast<char*>(argument) + 4, identity(answer).data(),
           static_cast<unsigned char*>(argument)[3] == 0 ? 0 : kIdentitySize);
    Record(argument).add(0x50, 1).add(0, 2); // status: ready; no error, no sectors left
    return 0;
}

template <size_t PointerSize>
static int writeFloppyParameters(const IoctlAnswer& answer, void* argument)
{
    Record record(argument);
    for (const char* name : {"size", "sect", "head", "track", "stretch"})
        record.add(numberOf(answer, name), 4);
    for (const char* name : {"gap", "rate", "spec1", "fmt_gap"})
        record.add(numberOf(answer, name), 1);
    record.add(0, PointerSize); // where the kernel keeps the format's name
    return 0;
}

static int writeFloppyType(const IoctlAnswer& answer, void* argument)
{
    strncpy(static_cast<char*>(argument), answer.text.c_str(), kFloppyNameSize);
    return 0;
}

static int writeSectors(const IoctlAnswer& answer, void* argument)
{
    if (sizeof(long) == 4 && answer.value > UINT32_MAX)
        return EFBIG;
    Record(argument).add(answer.value, sizeof(long));
    return 0;
}

static int writeBytes(const IoctlAnswer& answer, void* argument)
{
    Record(argument).add(answer.value, 8);
    return 0;
}

static int writeIdLun(const IoctlAnswer& answer, void* argument)
{
    Record(argument)
        .add(numberOf(answer, "id"), 1)
        .add(numberOf(answer, "lun"), 1)
        .add(numberOf(answer, "channel"), 1)
        .add(numberOf(answer, "host"), 1)
        .add(numberOf(answer, "unique"), 4);
    return 0;
}

static int writeScsiId(const IoctlAnswer& answer, void* argument)
{
    Record record(argument);
    for (const char* name : {"host", "channel", "id", "lun", "type"})
        record.add(numberOf(answer, name), 4);
    record.add(1, 2).add(1, 2).add(0, 8); // commands per unit, queue depth, nothing
    return 0;
}

// The answer to this one is its result; its argument is a number.
static constexpr uint32_t kDriveStatus = 0x5326;
static constexpr char kDriveStatusName[] = "CDROM_DRIVE_STATUS";

static int writeNothing(const IoctlAnswer&, void*)
{
    return 0;
}

namespace
{
struct Ioctl {
    uint32_t request;
    const char* name;
    int (*write)(const IoctlAnswer& answer, void* argument);
};
} // namespace

// Those whose number holds the size of a long or of a record with a pointer come in both forms.
static constexpr Ioctl kIoctls[] = {
    {0x301, "HDIO_GETGEO", writeGeometry},
    {0x30D, "HDIO_GET_IDENTITY", writeIdentity},
    {0x31F, "HDIO_DRIVE_CMD", writeDriveReply},
    {0x801C0204, "FDGETPRM", writeFloppyParameters<4>},
    {0x80200204, "FDGETPRM", writeFloppyParameters<8>},
    {0x8010020F, "FDGETDRVTYP", writeFloppyType},
    {0x1260, "BLKGETSIZE", writeSectors},
    {0x80041272, "BLKGETSIZE64", writeBytes},
    {0x80081272, "BLKGETSIZE64", writeBytes},
    {0x5382, "SCSI_IOCTL_GET_IDLUN", writeIdLun},
    {0x2276, "SG_GET_SCSI_ID", writeScsiId},
    {kDriveStatus, kDriveStatusName, writeNothing},
};

bool isIoctlName(const std::string& name)
{
    return std::any_of(std::begin(kIoctls), std::end(kIoctls), [&](const Ioctl& ioctl) { return name == ioctl.name; });
}

static int writeAnswer(const IoctlAnswers& answers, uint32_t request, void* argument)
{
    for (const Ioctl& ioctl : kIoctls) {
        if (ioctl.request != request)
            continue;
        const auto found = answers.find(ioctl.name);
        if (found == answers.end())
            return ENOTTY;
        return found->second.error != 0 ? found->second.error : ioctl.write(found->second, argument);
    }
    return ENOTTY;
}

int answerIoctl(const IoctlAnswers& answers, uint32_t request, void* argument)
{
    const int error = writeAnswer(answers, request, argument);
    if (error == 0)
        return request == kDriveStatus ? static_cast<int>(answers.at(kDriveStatusName).value) : 0;
    errno = error;
    return -1;
}

} // namespace fakemachine
