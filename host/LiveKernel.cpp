#include "host/LiveKernel.h"

#include <algorithm>
#include <iterator>

#include <nlohmann/json.hpp>

#include "host/kernel/Questions.h"
#include "report/Utf8.h"

namespace host
{
namespace
{
struct Question {
    std::string_view name;
    nlohmann::json (*ask)(const std::string& argument);
};

constexpr Question kQuestions[] = {
    {"addresses", askAddresses},   {"birthTime", askBirthTime}, {"blockContent", askBlockContent},
    {"clock", askClock},           {"cpuid", askCpuid},         {"fileSystemSize", askFileSystemSize},
    {"linkDriver", askLinkDriver}, {"links", askLinks},         {"names", askNames},
    {"pageSize", askPageSize},     {"routes", askRoutes},       {"userId", askUserId},
};

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
    makeTextsValid(answer);
    return answer;
}
} // namespace host
