// Installed Patches: a row a live patch of the running kernel.

#include "host/Collectors.h"
#include "host/Digest.h"
#include "host/Root.h"
#include "report/catalog/AttributeIds.h"

namespace host
{
namespace
{
constexpr const char* kPatches = "/sys/kernel/livepatch/";

// "vmlinux: cmdline_proc_show, do_exit; ext4: ext4_fill_super". A patch has a folder for each object that it changes,
// and that one for each function: "NAME,POSITION".
std::string patched(const Root& root, const std::string& folder)
{
    std::string text;
    for (const std::string& object : root.list(folder)) {
        std::string functions;
        std::string path = folder;
        path.append("/").append(object);
        for (const std::string& name : root.list(path))
            if (const size_t comma = name.rfind(','); comma != std::string::npos)
                functions += (functions.empty() ? "" : ", ") + name.substr(0, comma);
        if (!functions.empty())
            text.append(text.empty() ? "" : "; ").append(object).append(": ").append(functions);
    }
    return text;
}

std::optional<std::string> statusOf(const Root& root, const std::string& folder)
{
    const std::optional<uint64_t> isEnabled = root.number(folder + "/enabled");
    if (!isEnabled)
        return std::nullopt;
    const std::string status = *isEnabled != 0 ? "enabled" : "disabled";
    return root.number(folder + "/transition").value_or(0) != 0 ? status + ", in transition" : status;
}
} // namespace

void collectInstalledPatches(const Machine& machine, Collection& collection)
{
    uint64_t index = 0;
    for (const std::string& name : machine.root.list(kPatches)) {
        const std::string folder = kPatches + name;
        const std::string description = patched(machine.root, folder);
        RowBuilder row(GROUP_INSTALLED_PATCHES);
        row.number(INSTALLED_PATCHES_INDEX, ++index, kPatches);
        row.text(INSTALLED_PATCHES_PATCH_ID, name, kPatches);
        row.text(INSTALLED_PATCHES_STATUS, statusOf(machine.root, folder), folder);
        row.text(INSTALLED_PATCHES_DESCRIPTION, description, folder);
        row.text(INSTALLED_PATCHES_ID, md5(name + description), folder);
        collection.add(std::move(row));
    }
}
} // namespace host
