#include "host/block/BlockDevice.h"

#include <algorithm>

#include "host/Root.h"
#include "host/block/UdevProperties.h"

namespace host
{
namespace
{
void fill(MaybeFact& fact, const std::string& value, const std::string& source)
{
    if (!fact && !value.empty())
        fact = Fact{value, source};
}
} // namespace

std::string nodeOf(std::string_view name)
{
    std::string node = "/dev/" + std::string(name);
    std::replace(node.begin(), node.end(), '!', '/');
    return node;
}

std::string numberOf(const Root& root, const std::string& folder)
{
    return root.line(folder + "/dev").value_or("");
}

ContentFacts contentOf(const Machine& machine, const std::string& folder, const std::string& node)
{
    const UdevProperties udev(machine.root, numberOf(machine.root, folder));
    ContentFacts facts{udev.value("ID_FS_TYPE"), udev.value("ID_FS_UUID"), udev.value("ID_FS_LABEL_ENC"),
                       udev.value("ID_PART_TABLE_TYPE")};
    if (!facts.label)
        facts.label = udev.value("ID_FS_LABEL");
    if (facts.type || facts.partitionTable)
        return facts;
    if (const std::optional<BlockContent> content = machine.kernel.blockContent(node)) {
        fill(facts.type, content->type, node);
        fill(facts.uuid, content->uuid, node);
        fill(facts.label, content->label, node);
        fill(facts.partitionTable, content->partitionTable, node);
    }
    return facts;
}
} // namespace host
