#include "report/CheckValue.h"

#include <algorithm>

#include "report/Content.h"
#include "report/Utf8.h"
#include "report/Writer.h"

namespace report
{
namespace
{
uint64_t mostOf(VexType type)
{
    switch (type) {
    case VEX_UCHAR:
        return UINT8_MAX;
    case VEX_USHORT:
        return UINT16_MAX;
    case VEX_UQUAD:
        return UINT64_MAX;
    default:
        return UINT32_MAX;
    }
}

bool isDigits(std::string_view text)
{
    return !text.empty() && text.find_first_not_of("0123456789") == text.npos;
}

bool isAmong(std::string_view text, const char* const* words)
{
    while (*words != nullptr && text != *words)
        ++words;
    return *words != nullptr;
}

ValueFault faultOfText(const Attribute& attribute, const std::string& text, bool isFirstVersion)
{
    if (isFirstVersion)
        return {};
    if (attribute.words != nullptr && !isAmong(text, attribute.words))
        return {"word", "one of the words that the catalog lists"};
    if (firstCharacters(text, attribute.maxLength).size() < text.size())
        return {"length", "at most " + std::to_string(attribute.maxLength) + " characters"};
    return {};
}

ValueFault faultOfReal(const Value& value, bool isFirstVersion)
{
    if (std::holds_alternative<double>(value.content))
        return {};
    if (!std::holds_alternative<double>(meaningOf(value)))
        return {"type", "a number"};
    const auto& text = std::get<std::string>(value.content);
    const bool isOfALocale = isFirstVersion && text.size() > 7 && text[text.size() - 7] == ',';
    return isOfALocale ? ValueFault() : ValueFault{"number-form", "six digits behind a point"};
}

// A text that its type would not write so.
ValueFault faultOfNumberText(const Value& value, const std::string& text, bool isFirstVersion)
{
    const bool isNegative = text.starts_with('-') && isDigits(std::string_view(text).substr(1));
    if (isDigits(text) && text.size() > 1 && text[0] == '0')
        return {"number-form", "no needless zeros"};
    if (!isNegative && !isDigits(text))
        return value.attribute->enums != nullptr && !value.attribute->isYesNo
                   ? ValueFault{"enumeration", "a text of the enumeration or a number"}
                   : ValueFault{"type", value.attribute->isYesNo ? "Yes or No" : "a number"};
    const bool isNumber = std::holds_alternative<uint64_t>(meaningOf(value));
    if (isNegative && isFirstVersion && isNumber)
        return {};
    if (value.attribute->enums != nullptr && isNumber)
        return {"enumeration", "the text of this number"};
    return {"range", "0 to " + std::to_string(mostOf(value.attribute->type))};
}

ValueFault faultOfNumber(const Value& value, bool isFirstVersion)
{
    if (const auto* text = std::get_if<std::string>(&value.content))
        return faultOfNumberText(value, *text, isFirstVersion);
    const uint64_t number = std::get<uint64_t>(value.content);
    if (value.attribute->isYesNo && number > 1)
        return {"type", "Yes or No"};
    if (number > mostOf(value.attribute->type))
        return {"range", "0 to " + std::to_string(mostOf(value.attribute->type))};
    return {};
}

ValueFault faultOfDateTime(const Value& value)
{
    const auto* text = std::get_if<std::string>(&value.content);
    if (text == nullptr || text->empty())
        return {};
    return {"date-time", "a date-time that exists, in the form of its file"};
}
} // namespace

ValueFault faultOf(const Value& value, bool isFirstVersion)
{
    switch (value.attribute->type) {
    case VEX_STRING:
    case VEX_OCTETSTRING:
        return faultOfText(*value.attribute, valueText(value), isFirstVersion);
    case VEX_DATETIME:
        return faultOfDateTime(value);
    case VEX_FLOAT:
    case VEX_DOUBLE:
        return faultOfReal(value, isFirstVersion);
    default:
        return faultOfNumber(value, isFirstVersion);
    }
}
} // namespace report
