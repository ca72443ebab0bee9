#include "linux/NetworkAdapterGroup.h"

#include <gtest/gtest.h>

#include "tests/unit/LogCapture.h"

TEST(NetworkAdapter, thePrefixOfTheNameTellsTheType)
{
    static const struct {
        const char* name;
        uint32_t type;
        const char* log;
    } cases[] = {
        {"eth0", 3, "\ntype=ethernet"},    {"eth0:1", 3, "\ntype=ethernet"},
        {"eth", 3, "\ntype=ethernet"},     {"tr0", 4, "\ntype=tokenring"},
        {"trunk0", 4, "\ntype=tokenring"}, {"slip0", 6, "\ntype=SLIP"},
        {"escon1", 7, "\ntype=ESCON"},     {"ctc0", 8, "\ntype=ctc (channel to channel)"},
        {"iucv0", 9, "\ntype=IUCV"},       {"ppp0", 10, "\ntype=ppp"},
        {"sit0", 2, "\ntype=unknown"},     {"tun0", 2, "\ntype=unknown"},
        {"veth0", 2, "\ntype=unknown"},    {"Eth0", 2, "\ntype=unknown"},
        {"et", 2, "\ntype=unknown"},       {"", 2, "\ntype=unknown"},
    };
    for (const auto& c : cases) {
        const LogCapture log;
        EXPECT_EQ(adapterType(c.name), c.type) << c.name;
        EXPECT_EQ(log.text(), c.log) << c.name;
    }
}
