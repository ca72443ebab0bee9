#include "report/catalog/Groups.h"
#include "report/catalog/Table.h"

namespace report
{
namespace
{
constexpr const char* kBases[] = {"System UUID", "Serial Number", "Machine ID", "MAC Address", nullptr};

// clang-format off
constexpr AttributeDef kAttributes[] = {
    word(MACHINE_IDENTITY_BASIS, "Basis", 16, kBases, PLAIN, "what the key is made from"),
    text(MACHINE_IDENTITY_MACHINE_KEY, "Machine Key", 64, IDENTIFYING, "SHA-256 of \"basis:value\" in lower-case hexadecimal"),
};
// clang-format on

constexpr uint32_t kKeys[] = {MACHINE_IDENTITY_BASIS};

static_assert(isWellFormed(kAttributes), "Machine Identity: bad row");
static_assert(areIdsOf(kKeys, kAttributes), "Machine Identity: key without attribute");
} // namespace

constexpr GroupDef MACHINE_IDENTITY_GROUP = {
    .id = GROUP_MACHINE_IDENTITY,
    .name = "Machine Identity",
    .attributes = kAttributes,
    .keys = kKeys,
    .pairing = {},
    .version = 1,
    .source = "a row a basis that exists, the best first",
};
} // namespace report
