#include "report/catalog/Groups.h"
#include "report/catalog/Table.h"

namespace report
{
namespace
{
// clang-format off
constexpr AttributeDef kAttributes[] = {
    known(IPX_ADDRESS_INDEX, PLAIN, "", "not produced by invhwctl"),
    known(IPX_ADDRESS_ADDRESS, IDENTIFYING, "", "not produced by invhwctl"),
    known(IPX_ADDRESS_NETWORK_NUMBER, PLAIN, "", "not produced by invhwctl"),
    known(IPX_ADDRESS_NODE_ADDRESS, IDENTIFYING, "", "not produced by invhwctl"),
    known(IPX_ADDRESS_LINK_SPEED, PLAIN, "", "not produced by invhwctl"),
    known(IPX_ADDRESS_MAX_PACKET_SIZE, PLAIN, "", "not produced by invhwctl"),
};
// clang-format on
static_assert(isWellFormed(kAttributes), "IPXAddress: bad row");
} // namespace

constexpr GroupDef IPX_ADDRESS_GROUP = {
    .id = GROUP_IPX_ADDRESS,
    .name = nullptr,
    .attributes = kAttributes,
    .keys = {},
    .pairing = {},
    .version = 2,
    .source = "not produced by invhwctl: kernels have no IPX since 4.18",
};
} // namespace report
