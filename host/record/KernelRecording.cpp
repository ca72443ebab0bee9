#include "host/record/KernelRecording.h"

#include "host/record/BoundedJson.h"
#include "host/record/ByteText.h"
#include "host/record/ErrorNames.h"

namespace host
{
using nlohmann::json;

static constexpr const char* kFormat = "invhw-kernel";
static constexpr int kFormatVersion = 1;

const json* KernelRecording::find(std::string_view question, std::string_view argument) const
{
    const auto arguments = answers.find(question);
    if (arguments == answers.end())
        return nullptr;
    const auto answer = arguments->second.find(argument);
    return answer != arguments->second.end() ? &answer->second : nullptr;
}

void KernelRecording::keep(std::string_view question, std::string_view argument, json answer)
{
    answers[std::string(question)][std::string(argument)] = std::move(answer);
}

static bool parseAnswers(json& file, KernelRecording& recording, std::string& reason)
{
    for (auto& [question, arguments] : file.items()) {
        if (!arguments.is_object()) {
            reason = "\"answers\", \"" + question + "\": expected an object of arguments and answers";
            return false;
        }
        KernelRecording::Answers& answers = recording.answers[question];
        for (auto& [argument, answer] : arguments.items())
            answers[bytesOfText(argument)] = std::move(answer);
    }
    return true;
}

static bool parseErrors(const json& file, KernelRecording& recording, std::string& reason)
{
    for (const auto& [path, name] : file.items()) {
        const std::optional<int> error =
            name.is_string() ? errorNumber(name.get_ref<const std::string&>()) : std::nullopt;
        if (!error) {
            reason = "\"errors\", \"" + path + "\": expected the name of an error, such as \"EACCES\"";
            return false;
        }
        recording.errors[bytesOfText(path)] = *error;
    }
    return true;
}

bool parseKernelRecording(std::string_view text, KernelRecording& recording, std::string& reason)
{
    json file;
    if (!parseBounded(text, {}, file, reason))
        return false;
    if (!file.is_object() || file.value("format", json()) != kFormat ||
        file.value("formatVersion", json()) != kFormatVersion) {
        reason = "expected \"format\": \"invhw-kernel\" and \"formatVersion\": 1";
        return false;
    }
    json answers = file.value("answers", json::object());
    const json errors = file.value("errors", json::object());
    if (!answers.is_object() || !errors.is_object()) {
        reason = "expected objects as \"answers\" and \"errors\"";
        return false;
    }
    KernelRecording parsed;
    if (!parseAnswers(answers, parsed, reason) || !parseErrors(errors, parsed, reason))
        return false;
    recording = std::move(parsed);
    return true;
}

std::string printKernelRecording(const KernelRecording& recording)
{
    json answers = json::object();
    for (const auto& [question, arguments] : recording.answers)
        for (const auto& [argument, answer] : arguments)
            answers[question][textOfBytes(argument)] = answer;
    json errors = json::object();
    for (const auto& [path, error] : recording.errors)
        errors[textOfBytes(path)] = errorName(error);
    const nlohmann::ordered_json file = {{"format", kFormat},
                                         {"formatVersion", kFormatVersion},
                                         {"answers", std::move(answers)},
                                         {"errors", std::move(errors)}};
    return file.dump(1, ' ', false, json::error_handler_t::replace) + "\n";
}
} // namespace host
