#include "host/RecordingKernel.h"

namespace host
{
static constexpr std::string_view kFileSystemSize = "fileSystemSize";

bool RecordingKernel::mayHang(std::string_view mountPoint) const
{
    return recording_.find(kFileSystemSize, mountPoint) == nullptr;
}

void RecordingKernel::keepFileSystemSize(std::string_view mountPoint, const std::optional<FileSystemSize>& size) const
{
    nlohmann::json answer = {{"isSilent", true}};
    if (size)
        answer = {{"totalBytes", size->totalBytes},
                  {"freeBytes", size->freeBytes},
                  {"availableBytes", size->availableBytes},
                  {"inodes", size->inodes},
                  {"freeInodes", size->freeInodes}};
    recording_.keep(kFileSystemSize, mountPoint, std::move(answer));
}

nlohmann::json RecordingKernel::answer(std::string_view question, std::string_view argument) const
{
    if (const nlohmann::json* known = recording_.find(question, argument))
        return *known;
    nlohmann::json answer = asked_.answer(question, argument);
    recording_.keep(question, argument, answer);
    return answer;
}
} // namespace host
