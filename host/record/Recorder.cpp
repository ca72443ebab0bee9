#include "host/record/Recorder.h"

#include <cerrno>

#include "host/accounts/AccountFiles.h"
#include "host/printer/PrintersConf.h"
#include "host/root/PathWalk.h"

namespace host
{
Recorder::Recorder(const std::string& folder, RecordingFolder& writer, KernelRecording& recording)
    : copy_(folder), errors_(recording), writer_(writer), recording_(recording)
{
}

static std::string parentOf(const std::string& path)
{
    const size_t slash = path.rfind('/');
    return slash == 0 || slash == std::string::npos ? "/" : path.substr(0, slash);
}

static std::string childOf(const std::string& folder, std::string_view name)
{
    return (folder == "/" ? std::string() : folder) + '/' + std::string(name);
}

// Writes what is at a path; a file as an empty one.
Recorder::Known Recorder::keep(const RootFolder& folder, const std::string& path, EntryKind kind)
{
    Known known{0, kind, {}};
    if (kind == EntryKind::File) {
        writer_.file(path, "");
    } else if (kind == EntryKind::Folder) {
        writer_.folder(path);
    } else {
        Answer<std::string> target = folder.link(path);
        known.error = target.value.empty() && target.error == 0 ? ENOENT : target.error;
        known.target = std::move(target.value);
        if (known.error == 0)
            writer_.link(path, known.target);
    }
    return known;
}

Recorder::Known Recorder::ask(const RootFolder& folder, const std::string& path)
{
    if (wholeLists_.count(parentOf(path)) != 0)
        return {ENOENT, {}, {}};
    const Answer<EntryKind> kind = folder.kind(path);
    return kind.error != 0 ? Known{kind.error, {}, {}} : keep(folder, path, kind.value);
}

const Recorder::Known& Recorder::at(const RootFolder& folder, const std::string& path)
{
    const auto found = known_.find(path);
    return found != known_.end() ? found->second : known_.emplace(path, ask(folder, path)).first->second;
}

namespace
{
// The names of a path that are still to go, as texts of links are put before them.
class Names
{
public:
    explicit Names(std::string_view path) { putBefore(path); }

    bool isEmpty() const { return names_.empty(); }
    std::string take()
    {
        std::string name = std::move(names_.back());
        names_.pop_back();
        return name;
    }
    void putBefore(std::string_view path)
    {
        while (!path.empty()) {
            const size_t slash = path.rfind('/');
            const size_t begin = slash == std::string_view::npos ? 0 : slash + 1;
            const std::string_view name = path.substr(begin);
            if (!name.empty() && name != ".")
                names_.emplace_back(name);
            path = path.substr(0, begin == 0 ? 0 : slash);
        }
    }

private:
    std::vector<std::string> names_; // the next one last
};
} // namespace

// Goes along a path by what the recording has, which gets what is missing of it.
Recorder::Place Recorder::find(const RootFolder& folder, std::string_view path, bool followLast)
{
    Place place{0, "/", EntryKind::Folder};
    Names names(path);
    for (int links = 0; !names.isEmpty();) {
        const std::string name = names.take();
        if (name == "..") {
            place.path = parentOf(place.path);
            continue;
        }
        const std::string next = childOf(place.path, name);
        const Known& known = at(folder, next);
        if (known.error == 0 && known.kind == EntryKind::Link && (followLast || !names.isEmpty())) {
            if (++links > PathWalk::kMostLinks)
                return {ELOOP, {}, {}};
            if (known.target.front() == '/')
                place.path = "/";
            names.putBefore(known.target);
            continue;
        }
        if (known.error != 0 || (known.kind != EntryKind::Folder && !names.isEmpty()))
            return {known.error != 0 ? known.error : ENOTDIR, {}, {}};
        place = {0, next, known.kind};
    }
    return place;
}

// The recording's answer, which is made the live one where that was an error.
template <class T>
Answer<T> Recorder::settle(std::string_view path, int error, Answer<T> answer)
{
    if (error == 0 || answer.error == error)
        return answer;
    recording_.errors.insert_or_assign(std::string(path), error);
    return Answer<T>::failed(error);
}

// Hashes of passwords are nobody's business, and no report says anything of them but that they are there; nor are the
// passwords by which printers are reached.
static std::string withoutSecrets(std::string_view path, std::string_view real, std::string&& content)
{
    const auto isFile = [&](std::string_view name) { return path == name || real == name; };
    if (isFile("/etc/shadow") || isFile("/etc/passwd"))
        return withoutHashes(content);
    return isFile("/etc/cups/printers.conf") ? maskPrintersConf(content) : std::move(content);
}

// One byte more than the limit is kept, so that a file which is cut is cut again. Returns the error of reading.
int Recorder::keepContent(const RootFolder& folder, std::string_view path, const std::string& real, size_t limit)
{
    Content& content = contents_[real];
    if (content.error != 0 || content.limit > limit)
        return content.error;
    Answer<std::string> file = folder.read(path, limit + 1);
    content.error = file.error;
    const bool isWhole = file.value.size() <= limit;
    content.limit = isWhole ? SIZE_MAX : limit + 1;
    if (file.error == 0)
        writer_.file(real, withoutSecrets(path, real, std::move(file.value)));
    return content.error;
}

Answer<std::string> Recorder::read(const RootFolder& folder, std::string_view path, size_t limit)
{
    const Place place = find(folder, path, true);
    const int error = place.is(EntryKind::File) ? keepContent(folder, path, place.path, limit) : place.error;
    return settle(path, error, errors_.read(copy_, path, limit));
}

void Recorder::keepLines(const std::string& real)
{
    std::string text;
    for (const auto& [number, line] : lines_[real])
        text += line + '\n';
    writer_.file(real, text);
}

// A choice may be asked once only: the lines that it takes are the answer, and what the recording gets.
Answer<std::vector<std::string>> Recorder::lines(const RootFolder& folder, std::string_view path,
                                                 const LineChoice& isWanted, size_t lineLimit)
{
    const Place place = find(folder, path, true);
    if (!place.is(EntryKind::File))
        return settle(path, place.error, errors_.lines(copy_, path, isWanted, lineLimit));
    NumberedLines& kept = lines_[place.path];
    size_t number = 0;
    const auto choose = [&](std::string_view line) {
        ++number;
        const bool isChosen = isWanted(line);
        if (isChosen)
            kept.emplace(number, line);
        return isChosen;
    };
    Answer<std::vector<std::string>> answer = folder.lines(path, choose, lineLimit);
    if (answer.error != 0)
        return settle(path, answer.error, Answer<std::vector<std::string>>{});
    if (contents_.count(place.path) == 0)
        keepLines(place.path);
    return answer;
}

// One name more than the limit is kept, as of contents. Returns the error of listing.
int Recorder::keepList(const RootFolder& folder, const std::string& real, size_t limit)
{
    const auto [listed, isFirst] = lists_.try_emplace(real, 0);
    if (!isFirst)
        return listed->second;
    const Answer<std::vector<Entry>> list = folder.list(real, limit + 1);
    listed->second = list.error;
    for (const Entry& entry : list.value) {
        const std::string child = childOf(real, entry.name);
        const auto [known, isNew] = known_.try_emplace(child);
        if (isNew)
            known->second = keep(folder, child, entry.kind);
    }
    if (list.error == 0 && !list.isCut)
        wholeLists_.insert(real);
    return list.error;
}

Answer<std::vector<Entry>> Recorder::list(const RootFolder& folder, std::string_view path, size_t limit)
{
    const Place place = find(folder, path, true);
    const int error = place.is(EntryKind::Folder) ? keepList(folder, place.path, limit) : place.error;
    return settle(path, error, errors_.list(copy_, path, limit));
}

Answer<std::string> Recorder::link(const RootFolder& folder, std::string_view path)
{
    const Place place = find(folder, path, false);
    return settle(path, place.error, errors_.link(copy_, path));
}

Answer<std::string> Recorder::realPath(const RootFolder& folder, std::string_view path)
{
    const Place place = find(folder, path, true);
    return settle(path, place.error, errors_.realPath(copy_, path));
}

Answer<EntryKind> Recorder::kind(const RootFolder& folder, std::string_view path)
{
    const Place place = find(folder, path, false);
    return settle(path, place.error, errors_.kind(copy_, path));
}
} // namespace host
