#pragma once

#include <string>

#include "report/Report.h"

namespace report
{
/// What is wrong with a value of an attribute that the catalog knows: the name of the rule, null when nothing is.
struct ValueFault {
    const char* rule = nullptr;
    std::string expected;
};

/// Version 1 is what invhw writes: numbers of 32 bits with a sign, decimal commas, texts of any length.
ValueFault faultOf(const Value& value, bool isFirstVersion);
} // namespace report
