#include "linux/firmware/BiosMif.h"

#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "com/Owned.h"
#include "com/VexDebug.h"
#include "linux/text/TextParse.h"

namespace
{

constexpr char kMifName[] = "hwxbios.mif";
constexpr char kTemplate[] = "MM/DD/AA";

// Bytes of one piece of a line: what fgets leaves of a buffer of 255.
constexpr size_t kMostPiece = 254;

// The lines of the log go with the ComponentID group.
constexpr uint32_t kMifMask = DEBUG_COMPONENTID;

// Reads the next line, or the next piece of a long one. False at the end.
bool readPiece(FILE* stream, std::string* piece)
{
    piece->clear();
    for (int c = 0; c != '\n' && piece->size() < kMostPiece;) {
        c = getc(stream);
        if (c == EOF)
            break;
        *piece += static_cast<char>(c);
    }
    return !piece->empty();
}

// Finds the first line with a value behind the line that names the BIOS date. A NUL ends a line for these searches.
bool findDateLine(FILE* mif, std::string* line, off_t* offset)
{
    bool named = false;
    for (*offset = 0; readPiece(mif, line); *offset += static_cast<off_t>(line->size())) {
        if (named && contains(line->c_str(), "Value = \""))
            return true;
        named = named || contains(line->c_str(), "BIOS_DATE");
    }
    return false;
}

// Copies count bytes, or all that there are when count is -1.
bool copyBytes(FILE* from, FILE* to, off_t count)
{
    char buffer[4096];
    while (count != 0) {
        const size_t wanted =
            count < 0 || count > static_cast<off_t>(sizeof buffer) ? sizeof buffer : static_cast<size_t>(count);
        const size_t got = fread(buffer, 1, wanted, from);
        if (got == 0)
            return count < 0 && ferror(from) == 0;
        if (fwrite(buffer, 1, got, to) != got)
            return false;
        if (count > 0)
            count -= static_cast<off_t>(got);
    }
    return true;
}

// Opens the file for reading and tells its owner and mode; null when it is not there or a device (a pipe planted under
// its name would hold the scan up). A folder opens, and has no lines.
FILE* openMif(struct stat* status)
{
    const int descriptor = open(kMifName, O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (descriptor < 0)
        return nullptr;
    const bool isSafe = fstat(descriptor, status) == 0 && (S_ISREG(status->st_mode) || S_ISDIR(status->st_mode));
    FILE* const stream = isSafe ? fdopen(descriptor, "r") : nullptr;
    if (stream == nullptr)
        close(descriptor);
    return stream;
}

// Fills the new file, which gets the old one's owner and mode, down to the disk. Closes the descriptor.
bool writeMif(int descriptor, FILE* mif, const struct stat& original, const MifChange& change)
{
    FILE* const stream = fdopen(descriptor, "w");
    if (stream == nullptr) {
        close(descriptor);
        return false;
    }
    const bool written = fchown(descriptor, original.st_uid, original.st_gid) == 0 &&
                         fchmod(descriptor, original.st_mode & 07777) == 0 && copyMifChanged(mif, stream, change) &&
                         fflush(stream) == 0 && fsync(descriptor) == 0;
    return fclose(stream) == 0 && written;
}

// Puts a new file in the old one's place, so that a reader sees the one or the other, also after a crash.
bool replaceMif(FILE* mif, const struct stat& original, const MifChange& change)
{
    if (access(kMifName, W_OK) != 0)
        return false;
    char scratch[] = "hwxbios.mif.XXXXXX";
    const int descriptor = mkostemp(scratch, O_CLOEXEC);
    if (descriptor < 0)
        return false;
    if (writeMif(descriptor, mif, original, change) && rename(scratch, kMifName) == 0)
        return true;
    unlink(scratch);
    return false;
}

void updateMif(FILE* mif, const struct stat& original, const char* isoDate)
{
    MifChange change;
    if (!findMifChange(mif, isoDate, &change)) {
        VEX_LOG(kMifMask, VEX_LEVEL_DETAIL, "\n  Leaving hwxbios_mif_rewrite [hwxbios.mif not replaced].");
        return;
    }
    VEX_LOG(kMifMask, VEX_LEVEL_DETAIL, "\n  Replaced BIOS Date is: %s", OwnedText(changeFormat(isoDate)).get());
    VEX_LOG(kMifMask, VEX_LEVEL_DETAIL, "\n  Rewriting hwxbios.mif file.");
    if (replaceMif(mif, original, change))
        VEX_LOG(kMifMask, VEX_LEVEL_DETAIL, "\n  Rewriting completed.");
    else
        VEX_LOG(kMifMask, VEX_LEVEL_DETAIL, "\n  It is not possible to open hwxbios.mif to rewrite.");
}

} // namespace

char* changeFormat(const char* isoDate)
{
    if (isoDate == nullptr || strlen(isoDate) < 10)
        return nullptr;
    const char date[] = {isoDate[5], isoDate[6], '/', isoDate[8], isoDate[9], '/', isoDate[2], isoDate[3], '\0'};
    return strdup(date);
}

char* extractDate(const char* line)
{
    if (line == nullptr)
        return nullptr;
    std::string date = kTemplate;
    const char* const quote = strchr(line, '"');
    if (quote != nullptr) {
        const char* const text = quote + 1;
        const char* const endQuote = strchr(text, '"');
        const size_t length = endQuote == nullptr ? strcspn(text, "\r\n") : static_cast<size_t>(endQuote - text);
        date.replace(0, length, text, length);
    }
    return strdup(date.c_str());
}

bool findMifChange(FILE* mif, const char* isoDate, MifChange* change)
{
    std::string line;
    const OwnedText date(changeFormat(isoDate));
    if (date == nullptr || !findDateLine(mif, &line, &change->offset))
        return false;
    const OwnedText oldDate(extractDate(line.c_str()));
    if (!contains(line.c_str(), "UNKNOWN") && (oldDate == nullptr || strcmp(date.get(), oldDate.get()) == 0))
        return false;
    change->oldLength = line.size();
    change->newLine = std::string("                Value = \"") + date.get() + "\"\n";
    return true;
}

bool copyMifChanged(FILE* from, FILE* to, const MifChange& change)
{
    return fseeko(from, 0, SEEK_SET) == 0 && copyBytes(from, to, change.offset) &&
           fwrite(change.newLine.data(), 1, change.newLine.size(), to) == change.newLine.size() &&
           fseeko(from, change.offset + static_cast<off_t>(change.oldLength), SEEK_SET) == 0 && copyBytes(from, to, -1);
}

void hwxbios_mif_rewrite(const char* isoDate)
{
    VEX_LOG(kMifMask, VEX_LEVEL_DETAIL, "\n  Entering hwxbios_mif_rewrite.");
    VEX_LOG(kMifMask, VEX_LEVEL_DETAIL, "\n  Date is: %s", isoDate == nullptr ? "" : isoDate);
    struct stat original;
    FILE* const mif = openMif(&original);
    if (mif == nullptr) {
        VEX_LOG(kMifMask, VEX_LEVEL_DETAIL, "\n  hwxbios.mif not found.");
        return;
    }
    updateMif(mif, original, isoDate);
    fclose(mif);
}
