#include "host/record/Redaction.h"

#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>

#include <nlohmann/json.hpp>

#include "host/Scan.h"
#include "host/printer/PrintersConf.h"
#include "host/record/KernelRecording.h"
#include "host/record/RecordingFolder.h"
#include "host/text/Secrets.h"
#include "report/Text.h"
#include "report/Writer.h"
#include "report/catalog/AttributeIds.h"

namespace host
{
namespace
{
namespace fs = std::filesystem;
using nlohmann::json;

// A value and its pseudonym, where a report says which file the value came from: values that are too short to be
// searched for everywhere are found there.
struct KnownValue {
    std::string text, pseudonym;
};

class RecordingRedaction
{
public:
    RecordingRedaction(std::string recording, const std::string& key) : recording_(std::move(recording)), values_(key)
    {
    }

    bool learn(std::string& reason);
    bool write(const std::string& target, std::string& reason) const;

private:
    void learnSources(const report::GroupRows& group, const report::Row& row);
    bool writeEntry(RecordingFolder& writer, const fs::directory_entry& entry, std::string& reason) const;
    std::string redactedFile(const std::string& path, std::string content) const;
    std::string redactedText(const std::string& path, const std::string& content) const;
    std::string redactedKernel(const std::string& content) const;
    json redactedAnswer(const json& answer, std::string_view name, int prefixLength) const;
    std::string redactedAnswerText(const std::string& text, std::string_view name, int prefixLength) const;

    std::string recording_;
    report::IdentifyingValues values_;
    std::map<std::string, std::vector<KnownValue>, std::less<>> known_; // by the path in the recording
};

// The rows' values, once as they are and once redacted, tell which file's content becomes what.
void RecordingRedaction::learnSources(const report::GroupRows& group, const report::Row& row)
{
    report::Row redacted = row;
    values_.replace(group, redacted);
    for (size_t i = 0; i < row.values.size(); ++i) {
        const report::Value& value = row.values[i];
        std::error_code error;
        if (!value.source.starts_with('/') || valueText(value) == valueText(redacted.values[i]))
            continue;
        const std::string path = fs::weakly_canonical(recording_ + value.source, error).string();
        if (!error && path.starts_with(recording_ + "/"))
            known_[path.substr(recording_.size())].push_back({valueText(value), valueText(redacted.values[i])});
    }
}

// A group that did not come whole may hold what nobody then knows. Of mounts the sizes alone come late.
bool isLearnt(const report::GroupRows& group, const report::Row& row, std::string& reason)
{
    const report::Value* name = row.find(uint32_t{SCAN_STATUS_GROUP_NAME});
    const report::Value* result = row.find(uint32_t{SCAN_STATUS_RESULT});
    if (group.group->id != GROUP_SCAN_STATUS || name == nullptr || result == nullptr)
        return true;
    const std::string how = valueText(*result);
    if (how != "Failed" && (how != "Timed Out" || valueText(*name) == "Partition"))
        return true;
    reason = valueText(*name) + ": its scan has not ended, what identifies in it is not known";
    return false;
}

bool RecordingRedaction::learn(std::string& reason)
{
    ScanOptions options;
    options.root = recording_;
    options.deadlineSeconds = 30;
    report::Report report;
    std::error_code error;
    recording_ = fs::canonical(recording_, error).string();
    if (error) {
        reason = error.message();
        return false;
    }
    if (!scan(options, report, reason))
        return false;
    for (const report::GroupRows& group : report.groups)
        for (const report::Row& row : group.rows)
            if (!isLearnt(group, row, reason) || !values_.gather(group, row)) {
                if (reason.empty())
                    reason = "more identifying values than can be searched for";
                return false;
            }
    values_.finish();
    for (const report::GroupRows& group : report.groups)
        for (const report::Row& row : group.rows)
            learnSources(group, row);
    return true;
}

template <typename Made>
std::string linewise(std::string_view text, const Made& made)
{
    std::string result;
    std::string_view line;
    while (!text.empty()) {
        const bool hasEnd = text.find('\n') != text.npos;
        report::takeLine(text, line);
        result += made(line) + (hasEnd ? "\n" : "");
    }
    return result;
}

// "\\040" and the like stand for characters that separate fields.
std::string unescaped(std::string_view field)
{
    std::string text;
    for (size_t i = 0; i < field.size(); ++i) {
        const auto code = field[i] == '\\' ? report::parseNumber<uint8_t>(field.substr(i + 1, 3), 8) : std::nullopt;
        text += code ? static_cast<char>(*code) : field[i];
        i += code ? 3 : 0;
    }
    return text;
}

std::string escaped(std::string_view text)
{
    std::string field;
    for (const char c : text)
        field += c == ' '    ? "\\040"
                 : c == '\t' ? "\\011"
                 : c == '\n' ? "\\012"
                 : c == '\\' ? "\\134"
                             : std::string(1, c);
    return field;
}

// "36 35 98:0 / /mnt rw,noatime master:1 - ext3 /dev/root rw,errors=continue" (proc_pid_mountinfo(5))
std::string redactedMount(const report::IdentifyingValues& values, std::string_view line)
{
    constexpr size_t kOptions = 5;
    std::string result;
    const std::vector<std::string_view> fields = report::split(line, ' ');
    for (size_t i = 0; i < fields.size(); ++i) {
        const bool isOptions = i == kOptions || (i > kOptions && i + 1 == fields.size());
        const std::string field = unescaped(fields[i]);
        const std::string made = isOptions ? values.list(maskOptions(field)) : values.replaced(maskUri(field));
        result += (i == 0 ? "" : " ") + escaped(made);
    }
    return result;
}

// "DeviceURI URI" of a queue whose secrets are masked: the URI as a whole identifies.
std::string redactedPrinter(const report::IdentifyingValues& values, std::string_view line)
{
    constexpr std::string_view kUri = "DeviceURI ";
    return line.starts_with(kUri) ? std::string(kUri) + values.uri(line.substr(kUri.size())) : values.replaced(line);
}

// "name:password:user:group:description:home:shell" (passwd(5)), and the same of shadow(5), whose digests go.
std::string redactedAccount(const report::IdentifyingValues& values, std::string_view line)
{
    constexpr size_t kPassword = 1, kDescription = 4, kHome = 5, kFields = 7;
    std::string result;
    const std::vector<std::string_view> fields = report::split(line, ':');
    for (size_t i = 0; i < fields.size(); ++i) {
        std::string made(fields[i]);
        const size_t digest = made.find('$');
        if (i == 0)
            made = values.pseudonyms().word(made);
        else if (i == kPassword && digest != made.npos)
            made.replace(made.find('$', digest + 1) + 1, made.npos, "redacted");
        else if (i == kDescription && fields.size() == kFields)
            made = values.pseudonyms().word(made.substr(0, made.find(',')));
        else if (i == kHome && fields.size() == kFields)
            made = values.home(made);
        result += (i == 0 ? "" : ":") + made;
    }
    return result;
}

// "nameserver 192.0.2.1", "search example.org" (resolv.conf(5))
std::string redactedResolver(const report::IdentifyingValues& values, std::string_view line)
{
    std::string result;
    const std::vector<std::string_view> words = report::split(line, ' ');
    for (size_t i = 0; i < words.size(); ++i) {
        const bool isName = i > 0 && (words[0] == "nameserver" || words[0] == "search" || words[0] == "domain");
        result += (i == 0 ? "" : " ") + (isName ? values.host(words[i]) : values.replaced(words[i]));
    }
    return result;
}

// Of an environment nothing is asked but whether it is a container's.
std::string redactedEnvironment(std::string_view environment)
{
    std::string result;
    for (const std::string_view variable : report::split(environment, '\0'))
        if (variable.starts_with("container="))
            result += std::string(variable) + '\0';
    return result;
}

std::string RecordingRedaction::redactedText(const std::string& path, const std::string& content) const
{
    if (path == "/proc/cmdline")
        return linewise(content, [this](std::string_view line) { return values_.list(maskCommandLine(line)); });
    if (path.ends_with("/mountinfo"))
        return linewise(content, [this](std::string_view line) { return redactedMount(values_, line); });
    if (path.ends_with("/resolv.conf"))
        return linewise(content, [this](std::string_view line) { return redactedResolver(values_, line); });
    if (path == "/etc/passwd" || path == "/etc/shadow")
        return linewise(content, [this](std::string_view line) { return redactedAccount(values_, line); });
    if (path == "/etc/cups/printers.conf")
        return linewise(maskPrintersConf(content),
                        [this](std::string_view line) { return redactedPrinter(values_, line); });
    if (path.ends_with("/edid"))
        return redactedEdid(content, values_);
    if (path.ends_with("/id") && path.find("/ata_device/") != path.npos)
        return redactedIdentify(content, values_);
    if (path.ends_with("/environ"))
        return redactedEnvironment(content);
    if (path.ends_with("/hostname") || path.ends_with("/domainname"))
        return linewise(content, [this](std::string_view line) { return values_.host(line); });
    return values_.replaced(content);
}

// Values that stand in the file still, for they are short, are replaced where they stand alone in it.
std::string RecordingRedaction::redactedFile(const std::string& path, std::string content) const
{
    if (path == kKernelFile)
        return redactedKernel(content);
    if (path == "/sys/firmware/dmi/tables/DMI")
        return redactedStructureTable(std::move(content), values_);
    std::string result = redactedText(path, content);
    const auto known = known_.find(path);
    if (known == known_.end() || result != content)
        return result;
    for (const KnownValue& value : known->second) {
        const size_t at = report::lower(result).find(report::lower(value.text));
        if (at != result.npos && !value.text.empty())
            result.replace(at, value.text.size(), value.pseudonym);
    }
    return result;
}

std::string RecordingRedaction::redactedAnswerText(const std::string& text, std::string_view name,
                                                   int prefixLength) const
{
    const bool isNetwork = name == "destination" && prefixLength >= 0;
    if (const auto made = values_.pseudonyms().address(isNetwork ? text + "/" + std::to_string(prefixLength) : text))
        return isNetwork ? made->substr(0, made->find('/')) : *made;
    if (const auto made = values_.pseudonyms().hardwareAddress(text))
        return *made;
    if (name == "node")
        return values_.host(text);
    return name == "uuid" ? values_.pseudonyms().value(text) : values_.replaced(text);
}

json RecordingRedaction::redactedAnswer(const json& answer, std::string_view name, int prefixLength) const
{
    if (answer.is_string())
        return redactedAnswerText(answer.get<std::string>(), name, prefixLength);
    if (!answer.is_structured())
        return answer;
    json result = answer;
    if (answer.is_object() && answer.contains("prefixLength") && answer["prefixLength"].is_number_integer())
        prefixLength = answer["prefixLength"].get<int>();
    for (auto member = result.begin(); member != result.end(); ++member)
        *member = redactedAnswer(*member, answer.is_object() ? std::string_view(member.key()) : name, prefixLength);
    return result;
}

std::string RecordingRedaction::redactedKernel(const std::string& content) const
{
    KernelRecording recording, redacted;
    std::string reason;
    if (!parseKernelRecording(content, recording, reason))
        return ""; // no scan takes it either
    for (const auto& [question, arguments] : recording.answers)
        for (const auto& [argument, answer] : arguments)
            redacted.keep(question, values_.replaced(argument), redactedAnswer(answer, question, -1));
    for (const auto& [path, error] : recording.errors)
        redacted.errors[values_.replaced(path)] = error;
    return printKernelRecording(redacted);
}

bool RecordingRedaction::writeEntry(RecordingFolder& writer, const fs::directory_entry& entry,
                                    std::string& reason) const
{
    std::error_code error;
    const std::string path = entry.path().string().substr(recording_.size());
    const std::string name = values_.replaced(path);
    if (entry.is_symlink(error)) {
        writer.link(name, values_.replaced(fs::read_symlink(entry.path(), error).string()));
    } else if (entry.is_directory(error)) {
        writer.folder(name);
    } else {
        std::ifstream file(entry.path(), std::ios::binary);
        std::ostringstream content;
        content << file.rdbuf();
        if (!file.good()) // an empty file fails the copy alone
            error = entry.file_size(error) != 0 ? std::make_error_code(std::errc::io_error) : std::error_code();
        writer.file(name, redactedFile(path, content.str()));
    }
    if (error)
        reason = path + ": " + error.message();
    return !error;
}

bool RecordingRedaction::write(const std::string& target, std::string& reason) const
{
    RecordingFolder writer(target);
    std::error_code error;
    for (fs::recursive_directory_iterator entry(recording_, error), end; !error && entry != end; entry.increment(error))
        if (!writeEntry(writer, *entry, reason))
            return false;
    reason = error ? error.message() : writer.trouble();
    return reason.empty();
}
} // namespace

bool redactRecording(const std::string& recording, const std::string& target, const std::string& key,
                     std::string& reason)
{
    RecordingRedaction redaction(recording, key);
    return redaction.learn(reason) && redaction.write(target, reason);
}
} // namespace host
