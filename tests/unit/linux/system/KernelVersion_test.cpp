#include "linux/system/KernelVersion.h"

#include <gtest/gtest.h>

TEST(KernelVersion, takesAReleaseApart)
{
    static const struct {
        const char* release;
        int32_t major;
        int32_t minor;
        const char* sub;
    } cases[] = {
        {"2.4.21-4.ELsmp", 2, 4, "21-4.ELsmp"},
        {"2.6.9-5.EL", 2, 6, "9-5.EL"},
        {"2.4.18", 2, 4, "18"},
        {"6.1.0-13-amd64", 6, 1, "0-13-amd64"},
        {"2.6.", 2, 6, ""},
        {"2.6", 2, 6, ""}, // fewer than two dots: no sub version
        {"2", 2, 0, ""},   // a missing token leaves 0
        {"", 0, 0, ""},
        {"..", 0, 0, ""},
        {"..7.8", 7, 8, "7.8"}, // empty fields make no token, but their dots count
        {"x.y.z", 0, 0, "z"},
        {"99999999999.-5.1", INT32_MAX, -5, "1"}, // as a 32-bit strtol reads it
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.release);
        const KernelVersion version = parseKernelRelease(c.release);
        EXPECT_EQ(version.major, c.major);
        EXPECT_EQ(version.minor, c.minor);
        EXPECT_EQ(version.sub, c.sub);
    }
}
