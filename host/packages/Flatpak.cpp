#include "host/packages/Flatpak.h"

namespace host
{
std::string_view newestRelease(std::string_view metainfo)
{
    constexpr std::string_view kRelease = "<release ", kVersion = "version=";
    const size_t begin = metainfo.find(kRelease);
    if (begin == std::string_view::npos)
        return {};
    const std::string_view element = metainfo.substr(begin, metainfo.substr(begin).find('>'));
    const size_t version = element.find(kVersion);
    if (version == std::string_view::npos || version + kVersion.size() >= element.size())
        return {};
    const std::string_view value = element.substr(version + kVersion.size());
    const size_t end = value.find(value.front(), 1);
    const bool isQuoted = value.front() == '"' || value.front() == '\'';
    return isQuoted && end != std::string_view::npos ? value.substr(1, end - 1) : std::string_view();
}
} // namespace host
