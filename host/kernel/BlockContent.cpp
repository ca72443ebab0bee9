#include "host/kernel/BlockContent.h"

#include <blkid.h>
#include <fcntl.h>
#include <memory>
#include <sys/stat.h>

#include <nlohmann/json.hpp>

#include "host/Descriptor.h"
#include "host/kernel/Questions.h"

namespace host
{
namespace
{
// The library's names of what is told.
struct Tag {
    const char* name;
    const char* tag;
};
constexpr Tag kTags[] = {{"type", "TYPE"}, {"label", "LABEL"}, {"uuid", "UUID"}, {"partitionTable", "PTTYPE"}};
} // namespace

// By descriptor and without the library's cache, which other programs write.
nlohmann::json probeBlockContent(int device)
{
    const std::unique_ptr<blkid_struct_probe, void (*)(blkid_probe)> probe(blkid_new_probe(), blkid_free_probe);
    if (probe == nullptr || blkid_probe_set_device(probe.get(), device, 0, 0) != 0)
        return nullptr;
    blkid_probe_enable_superblocks(probe.get(), 1);
    blkid_probe_set_superblocks_flags(probe.get(), BLKID_SUBLKS_TYPE | BLKID_SUBLKS_LABEL | BLKID_SUBLKS_UUID);
    blkid_probe_enable_partitions(probe.get(), 1);
    nlohmann::json content = nlohmann::json::object();
    if (blkid_do_safeprobe(probe.get()) != 0) // nothing there, or signs of more than one thing
        return content;
    for (const Tag& tag : kTags) {
        const char* text = nullptr;
        if (blkid_probe_lookup_value(probe.get(), tag.tag, &text, nullptr) == 0)
            content[tag.name] = text;
    }
    return content;
}

nlohmann::json askBlockContent(const std::string& device)
{
    struct stat status;
    if (stat(device.c_str(), &status) != 0 || !S_ISBLK(status.st_mode)) // opening something else may change it
        return nullptr;
    const Descriptor opened(open(device.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    if (!opened.isOpen() || fstat(opened.get(), &status) != 0 || !S_ISBLK(status.st_mode))
        return nullptr;
    return probeBlockContent(opened.get());
}
} // namespace host
