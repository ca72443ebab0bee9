#pragma once

#include <clocale>
#include <cstdlib>
#include <ctime>
#include <gtest/gtest.h>

/// Runs a test in UTF-8 and UTC, and leaves the C locale behind.
class Utf8AndUtc : public ::testing::Test
{
protected:
    void SetUp() override
    {
        setlocale(LC_ALL, "C.utf8");
        setenv("TZ", "UTC0", 1);
        tzset();
    }
    void TearDown() override
    {
        setlocale(LC_ALL, "C");
        unsetenv("TZ");
        tzset();
    }
};
