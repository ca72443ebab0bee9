#include "SMBIOS/DumpFile.h"

#include <utility>

#include "SMBIOS/TableBuffer.h"

namespace
{

constexpr unsigned kFormat = 1;

// The numbers behind the format line. The declared length is not believed before so many bytes have been read, so that
// a short file cannot claim much memory.
bool readFields(FILE* stream, DumpedTable* table)
{
    unsigned length, numTables, revision;
    if (fscanf(stream, "SMBIOS Length=%X\n", &length) != 1 || length > TableBuffer::kMaxLength)
        return false;
    if (fscanf(stream, "SMBIOS NumTables=%X\n", &numTables) != 1 ||
        fscanf(stream, "SMBIOS Revision=%X\n", &revision) != 1 || fscanf(stream, "SMBIOS Data=") == EOF)
        return false;
    for (unsigned byte; table->bytes.size() < length; table->bytes.push_back(static_cast<unsigned char>(byte)))
        if (fscanf(stream, " %X", &byte) != 1)
            return false;
    table->numTables = static_cast<int>(numTables);
    table->revision = static_cast<int>(revision);
    return true;
}

} // namespace

DumpResult readDump(FILE* stream, DumpedTable* table)
{
    unsigned format;
    if (fscanf(stream, "SMBIOS File Format=%X\n", &format) != 1 || format != kFormat)
        return DumpResult::BadFormat;
    DumpedTable read;
    if (!readFields(stream, &read))
        return DumpResult::Unreadable;
    *table = std::move(read);
    return DumpResult::Read;
}

DumpResult readDumpFile(const char* path, DumpedTable* table)
{
    FILE* const stream = fopen(path, "r");
    if (stream == nullptr)
        return DumpResult::Unreadable;
    const DumpResult result = readDump(stream, table);
    fclose(stream);
    return result;
}

void writeDumpFile(const char* path, const unsigned char* bytes, int length, int numTables, int revision)
{
    FILE* const stream = fopen(path, "w");
    if (stream == nullptr)
        return;
    fprintf(stream, "SMBIOS File Format=0x%04X\n", kFormat);
    fprintf(stream, "SMBIOS Length=0x%04X\n", static_cast<unsigned>(length));
    fprintf(stream, "SMBIOS NumTables=0x%04X\n", static_cast<unsigned>(numTables));
    fprintf(stream, "SMBIOS Revision=0x%02X\n", static_cast<unsigned>(revision));
    fprintf(stream, "SMBIOS Data=");
    for (int i = 0; i < length; ++i) {
        if (i % 16 == 0)
            fprintf(stream, "\n");
        fprintf(stream, "0x%02X ", bytes[i]);
    }
    fprintf(stream, "\n");
    fclose(stream);
}
