#include "host/text/DevicePath.h"

namespace host
{
std::vector<std::string> ancestorsOf(std::string_view path)
{
    constexpr std::string_view kTop = "/sys/devices";
    std::vector<std::string> ancestors;
    while (path.size() > kTop.size() && path.starts_with(kTop)) {
        ancestors.emplace_back(path);
        path = path.substr(0, path.rfind('/'));
    }
    return ancestors;
}
} // namespace host
