#pragma once

#include <string_view>

namespace host
{
/// The version of the newest release that an application's description tells (share/metainfo/ID.metainfo.xml, which
/// begins with it); empty without one. A view of the text.
std::string_view newestRelease(std::string_view metainfo);
} // namespace host
