#pragma once

#include <functional>
#include <span>
#include <string_view>

namespace host
{
/// Paragraphs of lines "Name: value" with empty lines between them, as dpkg and apt keep their databases
/// (deb-control(5)). Names are those of the fields that are wanted, in any case of letters. take gets one paragraph's
/// values in the order of the names, each the first line of its field without blanks at its ends, empty where the
/// paragraph has no such field; of a field that comes twice the last one counts. The values are views of the text.
using Values = std::span<const std::string_view>;
void readControlText(std::string_view text, std::span<const std::string_view> names,
                     const std::function<void(Values values)>& take);
} // namespace host
