#include "host/Root.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>

#include "host/Notes.h"
#include "host/RootWatcher.h"

namespace host
{
// Blanks of a line; texts of a device tree end with a zero byte.
static constexpr std::string_view kBlanks("\0 \t\r\n\v\f", 7);

static constexpr std::array kAbsent{ENOENT, ENOTDIR, ENAMETOOLONG};

// With these, attributes of the kernel say that a device has nothing to tell, or is gone again.
static constexpr std::array kNothingToTell{EINVAL, ENODATA, EOPNOTSUPP, ENODEV, ENXIO, EIO, EAGAIN, ESRCH};

template <class List>
static bool holds(const List& list, int error)
{
    return std::find(list.begin(), list.end(), error) != list.end();
}

static bool isAttribute(std::string_view path)
{
    return path.starts_with("/sys/") || path.starts_with("/proc/");
}

static std::string withText(std::string_view path, std::string_view text)
{
    return std::string(path) + ": " + std::string(text);
}

static RootWatcher& unwatched()
{
    static RootWatcher watcher;
    return watcher;
}

Root::Root(const std::string& folder, Notes& notes, RootWatcher* watcher)
    : folder_(folder), notes_(notes), watcher_(watcher != nullptr ? *watcher : unwatched())
{
    if (!isOpen())
        notes_.failed(folder, errno);
}

// True when there is a value; else says why there is none, where that is worth a note.
template <class T>
bool Root::hasAnswer(const Answer<T>& answer, std::string_view path) const
{
    if (answer.error == 0) {
        notes_.found();
        return true;
    }
    if (holds(kAbsent, answer.error) || (isAttribute(path) && holds(kNothingToTell, answer.error)))
        return false;
    if (answer.error == kNoRegularFile)
        notes_.note(withText(path, "no regular file"));
    else
        notes_.failed(path, answer.error);
    return false;
}

std::optional<std::string> Root::read(std::string_view path, size_t limit) const
{
    Answer<std::string> answer = watcher_.read(folder_, path, limit);
    if (!hasAnswer(answer, path))
        return std::nullopt;
    if (answer.isCut)
        notes_.note(withText(path, "longer than " + std::to_string(limit) + " bytes"));
    return std::move(answer.value);
}

std::optional<std::string> Root::line(std::string_view path) const
{
    const Answer<std::string> answer = watcher_.read(folder_, path, kLineLimit);
    if (!hasAnswer(answer, path))
        return std::nullopt;
    std::string_view line = answer.value;
    const size_t end = line.find('\n');
    if (end == std::string_view::npos && answer.isCut)
        notes_.note(withText(path, "its line is longer than " + std::to_string(kLineLimit) + " bytes"));
    line = line.substr(0, end);
    line.remove_prefix(std::min(line.find_first_not_of(kBlanks), line.size()));
    line = line.substr(0, line.find_last_not_of(kBlanks) + 1);
    return line.empty() ? std::nullopt : std::optional<std::string>(line);
}

MaybeFact Root::fact(std::string_view path) const
{
    std::optional<std::string> value = line(path);
    if (!value)
        return std::nullopt;
    return Fact{std::move(*value), std::string(path)};
}

std::optional<std::vector<std::string>> Root::lines(std::string_view path, const LineChoice& isWanted) const
{
    Answer<std::vector<std::string>> answer = watcher_.lines(folder_, path, isWanted, kLineLimit);
    if (!hasAnswer(answer, path))
        return std::nullopt;
    if (answer.isCut)
        notes_.note(withText(path, "not read to its end"));
    return std::move(answer.value);
}

std::optional<uint64_t> Root::number(std::string_view path) const
{
    const std::optional<std::string> text = line(path);
    if (!text)
        return std::nullopt;
    const bool isHexadecimal = text->starts_with("0x") || text->starts_with("0X");
    const char* const begin = text->data() + (isHexadecimal ? 2 : 0);
    const char* const end = text->data() + text->size();
    uint64_t number = 0;
    const auto [stop, error] = std::from_chars(begin, end, number, isHexadecimal ? 16 : 10);
    return error == std::errc() && stop == end ? std::optional(number) : std::nullopt;
}

std::vector<std::string> Root::list(std::string_view path) const
{
    Answer<std::vector<Entry>> answer = watcher_.list(folder_, path, kNameLimit);
    std::vector<std::string> names;
    if (!hasAnswer(answer, path))
        return names;
    if (answer.isCut)
        notes_.note(withText(path, "more than " + std::to_string(kNameLimit) + " names"));
    names.reserve(answer.value.size());
    for (Entry& entry : answer.value)
        names.push_back(std::move(entry.name));
    return names;
}

std::optional<std::string> Root::link(std::string_view path) const
{
    Answer<std::string> answer = watcher_.link(folder_, path);
    if (answer.error == EINVAL || !hasAnswer(answer, path)) // EINVAL: no link
        return std::nullopt;
    return std::move(answer.value);
}

std::optional<std::string> Root::linkName(std::string_view path) const
{
    const std::optional<std::string> target = link(path);
    if (!target)
        return std::nullopt;
    const std::string_view whole = std::string_view(*target).substr(0, target->find_last_not_of('/') + 1);
    const std::string_view name = whole.substr(whole.rfind('/') + 1);
    return name.empty() ? std::nullopt : std::optional<std::string>(name);
}

std::optional<std::string> Root::realPath(std::string_view path) const
{
    Answer<std::string> answer = watcher_.realPath(folder_, path);
    if (!hasAnswer(answer, path))
        return std::nullopt;
    return std::move(answer.value);
}

bool Root::exists(std::string_view path) const
{
    return hasAnswer(watcher_.kind(folder_, path), path);
}
} // namespace host
