#pragma once

#include <cstdio>
#include <string>

#include "linux/text/TextStream.h"

/// A stream that reads text, which must outlive it.
inline TextStream textOf(const std::string& text)
{
    return TextStream(fmemopen(const_cast<char*>(text.data()), text.size(), "r")); // only read
}
