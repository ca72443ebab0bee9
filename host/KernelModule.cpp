// Kernel Module: a row a loaded module.

#include "host/Collectors.h"
#include "host/Root.h"
#include "report/Text.h"
#include "report/catalog/AttributeIds.h"

namespace host
{
namespace
{
constexpr const char* kModules = "/proc/modules";

// There where the kernel checks modules' signatures, and only there is an unsigned one marked.
constexpr const char* kSignatureCheck = "/sys/module/module/parameters/sig_enforce";

// "ext4 1032192 2 - Live 0x0000000000000000 (OE)": name, size, users, who they are, state, address, and the letters
// that it taints the kernel with, if any.
RowBuilder moduleRow(const Root& root, const std::vector<std::string_view>& words, bool isChecked)
{
    constexpr size_t kTaint = 6;
    const std::string name(words[0]);
    RowBuilder row(GROUP_KERNEL_MODULE);
    row.text(KERNEL_MODULE_NAME, name, kModules);
    row.text(KERNEL_MODULE_VERSION, root.fact("/sys/module/" + name + "/version"));
    row.number(KERNEL_MODULE_SIZE_BYTES, report::parseNumber(words[1]), kModules);
    const std::string_view taint = words.size() > kTaint ? words[kTaint] : "";
    if (isChecked)
        row.yesNo(KERNEL_MODULE_SIGNED, taint.find('E') == std::string_view::npos, kModules);
    row.yesNo(KERNEL_MODULE_OUT_OF_TREE, taint.find('O') != std::string_view::npos, kModules);
    return row;
}
} // namespace

void collectKernelModule(const Machine& machine, Collection& collection)
{
    const std::string text = machine.root.read(kModules).value_or("");
    const bool isChecked = machine.root.exists(kSignatureCheck);
    std::string_view rest = text, line;
    while (report::takeLine(rest, line)) {
        const std::vector<std::string_view> words = report::words(line);
        if (words.size() >= 2 && words[0].find('/') == std::string_view::npos)
            collection.add(moduleRow(machine.root, words, isChecked));
    }
}
} // namespace host
