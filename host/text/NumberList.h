#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace host
{
/// The number of a list of numbers and ranges ("0-3,8"), as /sys has it, at most 65536 of them; and the numbers
/// themselves, ascending, each once.
size_t countOfList(std::string_view list);
std::vector<uint32_t> numbersOfList(std::string_view list);
} // namespace host
