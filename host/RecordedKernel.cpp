#include "host/RecordedKernel.h"

#include <cerrno>
#include <cstring>

namespace host
{
// The recording's own files, in its top folder.
static bool isOwnFile(std::string_view path)
{
    return path == kKernelFile;
}

nlohmann::json RecordedKernel::answer(std::string_view question, std::string_view argument) const
{
    const nlohmann::json* answer = recording_.find(question, argument);
    return answer != nullptr ? *answer : nlohmann::json();
}

int RecordedErrors::errorOf(std::string_view path) const
{
    if (isOwnFile(path))
        return ENOENT;
    const auto found = recording_.errors.find(path);
    return found != recording_.errors.end() ? found->second : 0;
}

Answer<std::string> RecordedErrors::read(const RootFolder& folder, std::string_view path, size_t limit)
{
    const int error = errorOf(path);
    return error == 0 ? folder.read(path, limit) : Answer<std::string>::failed(error);
}

Answer<std::vector<std::string>> RecordedErrors::lines(const RootFolder& folder, std::string_view path,
                                                       const LineChoice& isWanted, size_t lineLimit)
{
    const int error = errorOf(path);
    return error == 0 ? folder.lines(path, isWanted, lineLimit) : Answer<std::vector<std::string>>::failed(error);
}

Answer<std::vector<Entry>> RecordedErrors::list(const RootFolder& folder, std::string_view path, size_t limit)
{
    const int error = errorOf(path);
    if (error != 0)
        return Answer<std::vector<Entry>>::failed(error);
    Answer<std::vector<Entry>> answer = folder.list(path, limit);
    const bool isTop = path.find_first_not_of('/') == std::string_view::npos;
    if (isTop)
        std::erase_if(answer.value, [](const Entry& entry) { return isOwnFile("/" + entry.name); });
    return answer;
}

// An answer of the tree, or the recorded error where the tree has none.
template <class T>
static Answer<T> orError(Answer<T> answer, int error)
{
    return answer.error == 0 || error == 0 ? std::move(answer) : Answer<T>::failed(error);
}

Answer<std::string> RecordedErrors::link(const RootFolder& folder, std::string_view path)
{
    return orError(folder.link(path), errorOf(path));
}

Answer<std::string> RecordedErrors::realPath(const RootFolder& folder, std::string_view path)
{
    return orError(folder.realPath(path), errorOf(path));
}

Answer<EntryKind> RecordedErrors::kind(const RootFolder& folder, std::string_view path)
{
    return isOwnFile(path) ? Answer<EntryKind>::failed(ENOENT) : orError(folder.kind(path), errorOf(path));
}

bool readKernelRecording(const std::string& folder, KernelRecording& recording, std::string& reason)
{
    const RootFolder root(folder);
    if (!root.isOpen()) {
        reason = folder + ": " + strerror(errno);
        return false;
    }
    const Answer<std::string> file = root.read(kKernelFile, kKernelFileLimit);
    const std::string name = folder + std::string(kKernelFile) + ": ";
    if (file.error == ENOENT)
        return true;
    if (file.error != 0 || file.isCut) {
        reason = name + (file.isCut ? "too long" : strerror(file.error));
        return false;
    }
    if (parseKernelRecording(file.value, recording, reason))
        return true;
    reason = name + reason;
    return false;
}
} // namespace host
