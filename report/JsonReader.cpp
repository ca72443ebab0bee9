#include "report/JsonReader.h"

#include <cerrno>
#include <cmath>
#include <cstring>
#include <istream>
#include <map>
#include <unordered_map>

#include <nlohmann/json.hpp>

#include "report/Content.h"
#include "report/Utf8.h"
#include "report/read/JsonStream.h"
#include "report/read/RowMaker.h"

namespace report
{
namespace
{
constexpr const char* kFormat = "invhw-report";
constexpr uint64_t kFormatVersion = 1;
constexpr size_t kMostGroups = 10'000;
constexpr size_t kMostSkippedDepth = 8; // of what the first of two passes goes over

// Where in a report the parser is.
enum Place : uint8_t { START, TOP, VERSIONS, GROUPS, ROWS, ROW, SOURCES, KEYS, END };
constexpr const char* kExpected[] = {
    "an object",
    "a member of the report",
    "a version's number",
    "an array of rows",
    "a row, which is an object",
    "a text, a number, true or false",
    "a text that names a source",
    "a text that names a key",
    "nothing more",
};

// Members of the report itself, each at most once.
struct Told {
    bool format = false, formatVersion = false, program = false, date = false, versions = false, groups = false;
};

// Whether XML can hold every character of a text, which is valid UTF-8.
bool canBeXml(const std::string& text)
{
    for (const char c : text)
        if ((static_cast<uint8_t>(c) < 0x20 && c != '\t' && c != '\n' && c != '\r') || c == '\xEF')
            return validUtf8(text) == text;
    return true;
}

class JsonParse final : public nlohmann::json_sax<nlohmann::json>
{
public:
    JsonParse(Input& input, ReportSink& sink, ReadProblem& problem) : stream_(input), sink_(sink), rows_(sink, problem)
    {
    }
    ReadResult run();
    /// The first of two passes: what the report says of itself alone.
    ReadResult runForHeader();
    void takeHeaderOf(const JsonParse& other);
    bool needsHeader() const { return needsHeader_; }

    bool null() override { return unexpected("null"); }
    bool boolean(bool isTrue) override;
    bool number_integer(number_integer_t number) override;
    bool number_unsigned(number_unsigned_t number) override;
    bool number_float(number_float_t number, const string_t& digits) override;
    bool string(string_t& text) override;
    bool binary(binary_t&) override { return false; } // JSON texts have none
    bool start_object(size_t) override;
    bool key(string_t& value) override;
    bool end_object() override;
    bool start_array(size_t) override;
    bool end_array() override;
    bool parse_error(size_t, const std::string&, const nlohmann::detail::exception& error) override;

private:
    bool isSkipping() const { return skipped_ > 0; }
    bool skipInto();
    bool takeMember(const std::string& text);
    bool takeVersion(uint64_t version);
    bool beginGroups();
    bool beginGroup();
    bool endRow();
    bool applySources();
    bool applyKeys();
    bool addValue(Content (*contentOf)(const Attribute*, std::string), std::string text);
    bool once(bool& told);
    bool unexpected(const std::string& found);
    bool fail(std::string message, ProblemKind kind = ProblemKind::FORM)
    {
        return rows_.fail(stream_.line(), std::move(message), kind);
    }

    JsonStream stream_;
    ReportSink& sink_;
    RowMaker rows_;
    bool isForHeader_ = false;
    bool needsHeader_ = false;
    bool hasHeader_ = false; // from another pass
    bool isCutOff_ = false;
    Place place_ = START;
    size_t skipped_ = 0; // open objects and arrays that are gone over
    std::string key_;
    uint64_t keyLine_ = 0;
    Told told_;
    Header header_;
    std::map<std::string, uint32_t, std::less<>> versions_;
    std::vector<std::pair<std::string, std::string>> sources_; // of the row
    std::vector<std::string> keys_;
};

bool JsonParse::unexpected(const std::string& found)
{
    stream_.mark();
    if (isSkipping())
        return true;
    const bool isNamed = place_ == TOP || place_ == VERSIONS || place_ == GROUPS || place_ == ROW || place_ == SOURCES;
    return fail(std::string("expected ") + kExpected[place_] + (isNamed ? " as " + shown(key_) : "") + ", found " +
                found);
}

bool JsonParse::once(bool& told)
{
    if (told)
        return fail(shown(key_) + " comes twice");
    told = true;
    return true;
}

// A member of the report whose value is a text.
bool JsonParse::takeMember(const std::string& text)
{
    if (key_ == "format")
        return once(told_.format) &&
               (text == kFormat || fail("expected the format " + std::string(kFormat) + ", found " + shown(text)));
    if (key_ == "program") {
        header_.program = text;
        return once(told_.program);
    }
    if (key_ != "date")
        return unexpected("the text " + shown(text));
    header_.date = parseRfc3339(text);
    return once(told_.date) &&
           (header_.date || text.empty() || fail("expected a date-time of RFC 3339, found " + shown(text)));
}

bool JsonParse::takeVersion(uint64_t version)
{
    if (hasHeader_)
        return true;
    if (version > UINT32_MAX || versions_.size() >= kMostGroups)
        return fail("expected a version's number as " + shown(key_) + ", found " + std::to_string(version));
    header_.versions.emplace_back(key_, static_cast<uint32_t>(version));
    return versions_.emplace(key_, static_cast<uint32_t>(version)).second || fail(shown(key_) + " comes twice");
}

bool JsonParse::addValue(Content (*contentOf)(const Attribute*, std::string), std::string text)
{
    Value* value = rows_.addValue(key_, keyLine_);
    if (value == nullptr || !rows_.addBytes(text.size(), keyLine_))
        return false;
    value->content = contentOf(value->attribute, std::move(text));
    return true;
}

bool JsonParse::boolean(bool isTrue)
{
    stream_.mark();
    if (isSkipping())
        return true;
    if (place_ != ROW)
        return unexpected(isTrue ? "true" : "false");
    Value* value = rows_.addValue(key_, keyLine_);
    if (value == nullptr)
        return false;
    if (value->attribute != nullptr && value->attribute->isYesNo)
        value->content = uint64_t{isTrue ? 1U : 0U};
    else
        value->content = std::string(isTrue ? "true" : "false");
    return true;
}

bool JsonParse::number_integer(number_integer_t number)
{
    return number >= 0 ? number_unsigned(static_cast<uint64_t>(number))
                       : number_float(static_cast<double>(number), std::to_string(number));
}

bool JsonParse::number_unsigned(number_unsigned_t number)
{
    if (isSkipping() || place_ == ROW)
        return number_float(static_cast<double>(number), std::to_string(number));
    stream_.mark();
    if (place_ == VERSIONS)
        return takeVersion(number);
    if (place_ != TOP || key_ != "formatVersion")
        return unexpected("the number " + std::to_string(number));
    return once(told_.formatVersion) &&
           (number == kFormatVersion || fail("expected the format version 1, found " + std::to_string(number)));
}

bool JsonParse::number_float(number_float_t number, const string_t& digits)
{
    stream_.mark();
    if (isSkipping())
        return true;
    if (place_ != ROW)
        return unexpected("the number " + shown(digits));
    if (!addValue(contentOfText, digits))
        return false;
    Value& value = rows_.row().values.back();
    if (value.attribute != nullptr && (value.attribute->type == VEX_FLOAT || value.attribute->type == VEX_DOUBLE))
        value.content = number;
    return true;
}

bool JsonParse::string(string_t& text)
{
    stream_.mark();
    if (isSkipping())
        return true;
    if (text.size() > kMostTextBytes)
        return fail("a text of more than " + std::to_string(kMostTextBytes) + " bytes", ProblemKind::SIZE);
    if (!canBeXml(text))
        return fail("a text with a character that XML does not allow", ProblemKind::CODE_SET);
    if (place_ == TOP)
        return takeMember(text);
    if (place_ == ROW)
        return addValue(contentOfJsonText, std::move(text));
    if (place_ != SOURCES && place_ != KEYS)
        return unexpected("the text " + shown(text));
    if (sources_.size() + keys_.size() >= 2 * kMostRowValues)
        return fail("more than " + std::to_string(kMostRowValues) + " sources or keys in a row", ProblemKind::SIZE);
    const size_t bytes = key_.size() + text.size();
    if (place_ == SOURCES)
        sources_.emplace_back(key_, std::move(text));
    else
        keys_.push_back(std::move(text));
    return rows_.addBytes(bytes, stream_.line());
}

bool JsonParse::skipInto()
{
    return ++skipped_ <= kMostSkippedDepth || fail("values within values deeper than a report has them");
}

bool JsonParse::key(string_t& value)
{
    stream_.mark();
    if (value.size() > kMostTextBytes)
        return fail("a name of more than " + std::to_string(kMostTextBytes) + " bytes", ProblemKind::SIZE);
    key_ = std::move(value);
    keyLine_ = stream_.line();
    return true;
}

bool JsonParse::beginGroups()
{
    if (!once(told_.groups))
        return false;
    if (isForHeader_)
        return skipInto();
    if (!hasHeader_ && (!told_.versions || !told_.format || !told_.formatVersion || !told_.program)) {
        needsHeader_ = true;
        return false;
    }
    place_ = GROUPS;
    sink_.header(header_);
    return true;
}

bool JsonParse::start_object(size_t)
{
    stream_.mark();
    if (isSkipping())
        return skipInto();
    if (place_ == START) {
        place_ = TOP;
    } else if (place_ == TOP && key_ == "versions") {
        place_ = VERSIONS;
        return once(told_.versions);
    } else if (place_ == TOP && key_ == "groups") {
        return beginGroups();
    } else if (place_ == ROWS) {
        place_ = ROW;
        rows_.beginRow(stream_.line());
    } else if (place_ == ROW && key_ == "Sources") {
        place_ = SOURCES;
    } else {
        return unexpected("an object");
    }
    return true;
}

bool JsonParse::end_object()
{
    stream_.mark();
    if (isSkipping())
        --skipped_;
    else if (place_ == ROW)
        return endRow();
    else
        place_ = place_ == TOP ? END : place_ == SOURCES ? ROW : TOP;
    return true;
}

bool JsonParse::beginGroup()
{
    const auto version = versions_.find(key_);
    if (version == versions_.end())
        return fail("expected a version of " + shown(key_) + " in \"versions\"");
    place_ = ROWS;
    return rows_.beginGroup(key_, version->second, keyLine_);
}

bool JsonParse::start_array(size_t)
{
    stream_.mark();
    if (isSkipping())
        return skipInto();
    if (place_ == GROUPS)
        return beginGroup();
    if (place_ != ROW || key_ != "$key")
        return unexpected("an array");
    if (rows_.group().group != nullptr)
        return fail("expected no $key in a group of the catalog");
    place_ = KEYS;
    return true;
}

bool JsonParse::end_array()
{
    stream_.mark();
    if (isSkipping())
        --skipped_;
    else
        place_ = place_ == KEYS ? ROW : GROUPS;
    return true;
}

bool JsonParse::applySources()
{
    if (sources_.empty())
        return true;
    std::unordered_map<std::string_view, Value*> byName;
    for (Value& value : rows_.row().values)
        byName.emplace(value.name(), &value);
    for (auto& [name, source] : sources_) {
        const auto found = byName.find(name);
        if (found == byName.end())
            return fail("a source of " + shown(name) + ", which the row does not have");
        found->second->source = std::move(source);
    }
    sources_.clear();
    return true;
}

bool JsonParse::applyKeys()
{
    const std::set<std::string_view> keys(keys_.begin(), keys_.end());
    size_t marked = 0;
    for (Value& value : rows_.row().values) {
        value.markedKey = rows_.group().group == nullptr ? keys.count(value.name()) != 0
                                                         : value.attribute != nullptr && isKey(rows_.group(), value);
        marked += value.markedKey ? 1U : 0U;
    }
    keys_.clear();
    return rows_.group().group != nullptr || marked == keys.size() || fail("a key that the row does not have");
}

bool JsonParse::endRow()
{
    if (!applySources() || !applyKeys())
        return false;
    place_ = ROWS;
    rows_.endRow();
    return true;
}

bool JsonParse::parse_error(size_t, const std::string&, const nlohmann::detail::exception& error)
{
    if (stream_.isTooLong())
        return fail("a text of more than " + std::to_string(kMostTextBytes) + " bytes", ProblemKind::SIZE);
    isCutOff_ = stream_.isAtEnd() && place_ != END;
    if (isCutOff_)
        return fail("the report is cut off: the file ends before its last }");
    std::string_view what = error.what();
    constexpr std::string_view kSyntax = "syntax error ";
    if (const size_t place = what.find(kSyntax); place != what.npos)
        what.remove_prefix(place + kSyntax.size());
    const bool isNoUtf8 = what.find("ill-formed UTF-8") != what.npos;
    return fail("not JSON: " + shown(what), isNoUtf8 ? ProblemKind::CODE_SET : ProblemKind::FORM);
}

void JsonParse::takeHeaderOf(const JsonParse& other)
{
    header_ = other.header_;
    versions_ = other.versions_;
    hasHeader_ = true;
}

ReadResult JsonParse::runForHeader()
{
    isForHeader_ = true;
    return run();
}

ReadResult JsonParse::run()
{
    std::istream in(&stream_);
    const bool isWhole = nlohmann::json::sax_parse(in, this);
    if (needsHeader_)
        return ReadResult::MALFORMED;
    if (isWhole && told_.format && told_.formatVersion && told_.versions && told_.groups)
        return ReadResult::WHOLE;
    if (isWhole)
        rows_.fail(0, std::string("expected the member ") + (!told_.format          ? "format"
                                                             : !told_.formatVersion ? "formatVersion"
                                                             : !told_.versions      ? "versions"
                                                                                    : "groups"));
    return isCutOff_ ? ReadResult::CUT_OFF : ReadResult::MALFORMED;
}

// Versions and program stand behind the groups, or nowhere: they are read first, then the groups from the start.
ReadResult readInTwoPasses(Input& input, ReportSink& sink, ReadProblem& problem)
{
    if (!input.rewind()) {
        problem.message = std::string("what stands behind \"groups\" cannot be read first: ") + strerror(errno);
        return ReadResult::UNREADABLE;
    }
    JsonParse headerParse(input, sink, problem);
    const ReadResult result = headerParse.runForHeader();
    if (result != ReadResult::WHOLE)
        return result;
    if (!input.rewind()) {
        problem.message = strerror(errno);
        return ReadResult::UNREADABLE;
    }
    JsonParse parse(input, sink, problem);
    parse.takeHeaderOf(headerParse);
    return parse.run();
}
} // namespace

ReadResult readJson(Input& input, ReportSink& sink, ReadProblem& problem)
{
    JsonParse parse(input, sink, problem);
    const ReadResult result = parse.run();
    return parse.needsHeader() ? readInTwoPasses(input, sink, problem) : result;
}
} // namespace report
