#include "com/VexAttribIds.h"
#include "com/VexCatalog.h"
#include "com/VexEnumValues.h"
#include "com/catalog/CatalogCheck.h"

// clang-format off
constexpr vexEnumDef ADAPTER_TYPE_ENUM_DEF[] = {
    {1,                               "Unknown"},
    {NETWORK_ADAPTER_TYPE_OTHER,      "Other"},
    {NETWORK_ADAPTER_TYPE_ETHERNET,   "Ethernet Adapter"},
    {NETWORK_ADAPTER_TYPE_TOKEN_RING, "Token Ring Adapter"},
    {5,                               "Fibre Channel Adapter"},
    {NETWORK_ADAPTER_TYPE_SLIP,       "Serial Line IP"},
    {NETWORK_ADAPTER_TYPE_ESCON,      "Enterprise Systems Connection"},
    {NETWORK_ADAPTER_TYPE_CTC,        "Channel to channel interface"},
    {NETWORK_ADAPTER_TYPE_IUCV,       "IUCV"},
    {NETWORK_ADAPTER_TYPE_PPP,        "PPP Adapter"},
    {11,                              "CSMA CD Adapter"},
    {12,                              "Token Passing Bus Adapter"},
    {13,                              "Metro Net Adapter"},
    {14,                              "ISO HDLC Adapter"},
    {15,                              "Character Syncronous Adapter"},
    {16,                              "Qrm Channel to Channel Adapter"},
    {17,                              "FDDI Adapter"},
    {19,                              "Loopback Adapter"},
    {VEX_END,                         nullptr},
};

constexpr vexAttribDef NET_ADPTR_ATTRS_DEF[] = {
    // id                               name                 type          max  enumeration
    {NETWORK_ADAPTER_INDEX,             "Index",             VEX_ULONG,    0,   nullptr},
    {NETWORK_ADAPTER_ID,                "ID",                VEX_STRING,   32,  nullptr},
    {NETWORK_ADAPTER_PERMANENT_ADDRESS, "Permanent Address", VEX_STRING,   64,  nullptr},
    {NETWORK_ADAPTER_CURRENT_ADDRESS,   "Current Address",   VEX_STRING,   64,  nullptr},
    {NETWORK_ADAPTER_TYPE,              "Type",              VEX_ULONG,    0,   ADAPTER_TYPE_ENUM_DEF},
    {NETWORK_ADAPTER_MODEL,             "Model",             VEX_STRING,   255, nullptr},
    {NETWORK_ADAPTER_MANUFACTURER,      "Manufacturer",      VEX_STRING,   128, nullptr},
    {NETWORK_ADAPTER_INSTALL_DATE,      "Install Date",      VEX_DATETIME, 0,   nullptr},
    {NETWORK_ADAPTER_CONNECTOR_TYPE,    "Connector Type",    VEX_STRING,   128, nullptr},
    {VEX_END,                           nullptr,             0,            0,   nullptr},
};

constexpr uint32_t NETWORK_ADAPTER_KEYS_DEF[] = {NETWORK_ADAPTER_ID};
// clang-format on

static_assert(isAscending(ADAPTER_TYPE_ENUM_DEF), "type values: bad row");
static_assert(isWellFormed(NET_ADPTR_ATTRS_DEF), "Network Adapter attributes: bad row");
static_assert(areKeysOf(NETWORK_ADAPTER_KEYS_DEF, NET_ADPTR_ATTRS_DEF), "Network Adapter: key without attribute");
