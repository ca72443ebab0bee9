#pragma once

#include <map>
#include <string>
#include <string_view>

#include <nlohmann/json.hpp>

namespace host
{
/// What a recording holds besides its files.
struct KernelRecording {
    using Answers = std::map<std::string, nlohmann::json, std::less<>>; // by argument

    std::map<std::string, Answers, std::less<>> answers; // by question
    std::map<std::string, int, std::less<>> errors;      // errno by path

    /// Null when there is none.
    const nlohmann::json* find(std::string_view question, std::string_view argument) const;

    /// An answer that is there already is replaced.
    void keep(std::string_view question, std::string_view argument, nlohmann::json answer);
};

/// Its file, at the top of the recording, and how much of that is read.
constexpr std::string_view kKernelFile = "/invhw-kernel.json";
constexpr size_t kKernelFileLimit = size_t{64} * 1024 * 1024;

/// Parses the file: {"format": "invhw-kernel", "formatVersion": 1, "answers": {QUESTION: {ARGUMENT: ANSWER}}, "errors":
/// {PATH: "EACCES"}}; answers and errors may be missing. Paths and arguments are written as ByteText.h says. Returns
/// false, with what was expected, when the text is anything else.
bool parseKernelRecording(std::string_view text, KernelRecording& recording, std::string& reason);

/// The text of such a file.
std::string printKernelRecording(const KernelRecording& recording);
} // namespace host
