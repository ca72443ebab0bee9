#pragma once

#include <string_view>

namespace report
{
/// The files report/html/page.css and page.js.
extern const std::string_view PAGE_STYLE;
extern const std::string_view PAGE_SCRIPT;
} // namespace report
