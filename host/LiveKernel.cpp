#include "host/LiveKernel.h"

#include <algorithm>
#include <cerrno>
#include <iterator>

#include <nlohmann/json.hpp>

#include "host/kernel/Questions.h"
#include "host/record/ErrorNames.h"
#include "report/Utf8.h"

namespace host
{
namespace
{
struct Question {
    std::string_view name;
    nlohmann::json (*ask)(const std::string& argument);
    const char* call = nullptr; // of a question that every machine answers
};

constexpr Question kQuestions[] = {
    {"addresses", askAddresses, "RTM_GETADDR"},
    {"birthTime", askBirthTime},
    {"blockContent", askBlockContent},
    {"clock", askClock},
    {"cpuid", askCpuid},
    {"fileSystemSize", askFileSystemSize, "statvfs"},
    {"keyboardRepeat", askKeyboardRepeat, "EVIOCGREP"},
    {"linkDriver", askLinkDriver},
    {"links", askLinks, "RTM_GETLINK"},
    {"modificationTime", askModificationTime},
    {"names", askNames, "uname"},
    {"nvmeHealth", askNvmeHealth, "NVME_IOCTL_ADMIN_CMD"},
    {"pageSize", askPageSize},
    {"routes", askRoutes, "RTM_GETROUTE"},
    {"services", askServices, "org.freedesktop.systemd1"},
    {"userId", askUserId},
};

// A folder on which something is mounted may be gone or covered: then it is nobody's trouble.
nlohmann::json failure(const char* call, int error)
{
    return error == ENOENT ? nlohmann::json() : nlohmann::json{{"error", errorName(error)}, {"call", call}};
}

// Answers are lists of plain objects at most.
void makeTextsValid(nlohmann::json& value)
{
    if (std::string* text = value.get_ptr<std::string*>())
        *text = report::validUtf8(*text);
    else if (value.is_structured())
        for (nlohmann::json& member : value)
            makeTextsValid(member);
}
} // namespace

nlohmann::json LiveKernel::answer(std::string_view question, std::string_view argument) const
{
    const auto found = std::find_if(std::begin(kQuestions), std::end(kQuestions),
                                    [&](const Question& q) { return q.name == question; });
    if (found == std::end(kQuestions))
        return nullptr;
    nlohmann::json answer = found->ask(std::string(argument));
    if (answer.is_null() && found->call != nullptr)
        return failure(found->call, errno);
    makeTextsValid(answer);
    return answer;
}
} // namespace host
