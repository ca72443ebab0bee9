#include "host/root/NaturalOrder.h"

#include <algorithm>

namespace host
{
static bool isDigit(char character)
{
    return character >= '0' && character <= '9';
}

// Takes the run of digits off the front of text and returns it without leading zeros.
static std::string_view takeNumber(std::string_view& text)
{
    const size_t size = static_cast<size_t>(std::find_if_not(text.begin(), text.end(), isDigit) - text.begin());
    std::string_view number = text.substr(0, size);
    text.remove_prefix(size);
    number.remove_prefix(std::min(number.find_first_not_of('0'), number.size()));
    return number;
}

bool naturallyBefore(std::string_view left, std::string_view right)
{
    const std::string_view wholeLeft = left;
    const std::string_view wholeRight = right;
    while (!left.empty() && !right.empty()) {
        if (isDigit(left.front()) && isDigit(right.front())) {
            const std::string_view leftNumber = takeNumber(left);
            const std::string_view rightNumber = takeNumber(right);
            if (leftNumber.size() != rightNumber.size())
                return leftNumber.size() < rightNumber.size();
            if (leftNumber != rightNumber)
                return leftNumber < rightNumber;
            continue;
        }
        if (left.front() != right.front())
            return static_cast<unsigned char>(left.front()) < static_cast<unsigned char>(right.front());
        left.remove_prefix(1);
        right.remove_prefix(1);
    }
    if (left.empty() && right.empty()) // equal but for leading zeros
        return wholeLeft.size() != wholeRight.size() ? wholeLeft.size() < wholeRight.size() : wholeLeft < wholeRight;
    return left.empty();
}
} // namespace host
