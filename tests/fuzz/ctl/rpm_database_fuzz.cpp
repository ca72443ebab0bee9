// Any bytes as a header of RPM's, as its file of slots, and as a database's log: no crash; a header that is read has a
// name and a version, headers lie in the file, and a log makes no more of a database than both together have room for.

#include <cstdint>
#include <cstdlib>

#include "host/packages/RpmDatabase.h"
#include "host/packages/RpmHeader.h"

namespace
{
void checkHeader(std::string_view header)
{
    if (const std::optional<host::RpmPackage> package = host::parseRpmHeader(header))
        if (package->name.empty() || package->version.empty() || package->name.size() > header.size())
            abort();
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    checkHeader(bytes);
    host::readRpmNdb(bytes, [&](std::string_view header) {
        if (header.data() < bytes.data() || header.data() + header.size() > bytes.data() + bytes.size())
            abort();
        checkHeader(header);
    });
    std::string database(bytes.substr(0, size / 2));
    host::applySqliteLog(database, bytes.substr(size / 2));
    if (database.size() > 4 * size)
        abort();
    database = bytes;
    host::applySqliteLog(database, bytes);
    return 0;
}
