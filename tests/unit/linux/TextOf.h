#pragma once

#include <cstdio>
#include <string>

#include "linux/TextStream.h"

/// A stream that reads text, which must outlive it.
inline TextStream textOf(std::string& text)
{
    return TextStream(fmemopen(text.data(), text.size(), "r"));
}
