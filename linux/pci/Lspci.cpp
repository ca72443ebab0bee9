#include "linux/pci/Lspci.h"

#include <cstring>
#include <string_view>

namespace
{

// The text between the n-th double quote (from 1) and the next one; empty when either is missing.
std::string_view textBehindQuote(std::string_view line, int n)
{
    size_t quote = line.find('"');
    for (int i = 1; i < n && quote != std::string_view::npos; ++i)
        quote = line.find('"', quote + 1);
    if (quote == std::string_view::npos)
        return {};
    const size_t end = line.find('"', quote + 1);
    if (end == std::string_view::npos)
        return {};
    return line.substr(quote + 1, end - quote - 1);
}

// The text behind the first "-r" of the line, which may also stand inside a name: kept as it always was.
std::string_view revisionText(const char* line)
{
    const char* const option = strstr(line, "-r");
    if (option == nullptr)
        return {};
    const char* const text = option + strlen("-r");
    return {text, strcspn(text, " \n")};
}

} // namespace

bool parseLspciLine(const char* line, LspciDevice* device)
{
    const std::string_view vendorName = textBehindQuote(line, 3);
    const std::string_view deviceName = textBehindQuote(line, 5);
    if (vendorName.empty() || deviceName.empty())
        return false;
    device->name.assign(vendorName).append(" ").append(deviceName);
    const std::string_view revision = revisionText(line);
    device->revision.clear();
    if (!revision.empty())
        device->revision.append("0x").append(revision);
    return true;
}
