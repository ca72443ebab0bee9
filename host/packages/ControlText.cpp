#include "host/packages/ControlText.h"

#include <algorithm>
#include <strings.h>
#include <vector>

#include "report/Text.h"

namespace host
{
namespace
{
bool isSameName(std::string_view left, std::string_view right)
{
    return left.size() == right.size() && strncasecmp(left.data(), right.data(), left.size()) == 0;
}

// Lines of further values begin with a blank.
bool isContinued(std::string_view line)
{
    return line.front() == ' ' || line.front() == '\t';
}

// The paragraph that is being read.
class Paragraph
{
public:
    explicit Paragraph(std::span<const std::string_view> names) : names_(names), values_(names.size()) {}

    void add(std::string_view line)
    {
        isEmpty_ = false;
        const size_t colon = isContinued(line) ? std::string_view::npos : line.find(':');
        if (colon == std::string_view::npos)
            return;
        const std::string_view name = line.substr(0, colon);
        for (size_t i = 0; i < names_.size(); ++i)
            if (isSameName(names_[i], name))
                values_[i] = report::trimmed(line.substr(colon + 1));
    }
    void end(const std::function<void(Values)>& take)
    {
        if (!isEmpty_)
            take(values_);
        std::fill(values_.begin(), values_.end(), std::string_view());
        isEmpty_ = true;
    }

private:
    std::span<const std::string_view> names_;
    std::vector<std::string_view> values_;
    bool isEmpty_ = true;
};
} // namespace

void readControlText(std::string_view text, std::span<const std::string_view> names,
                     const std::function<void(Values values)>& take)
{
    Paragraph paragraph(names);
    std::string_view line;
    while (report::takeLine(text, line)) {
        if (report::trimmed(line).empty())
            paragraph.end(take);
        else
            paragraph.add(line);
    }
    paragraph.end(take);
}
} // namespace host
