#include "report/read/XmlFilter.h"

#include <algorithm>
#include <cstring>

#include "report/Catalog.h"
#include "report/read/RowMaker.h"

namespace report
{
namespace
{
constexpr size_t kMostTagBytes = Input::kBlock - 1;

// Elements that are open in a value: serviceDataList, serviceData, value, the group, the attribute.
constexpr size_t kGroupDepth = 4;
constexpr size_t kValueDepth = 5;

// The texts of an enumeration that invhw writes raw, as they follow their start tag.
struct RawText {
    std::string_view raw, escaped;
};
constexpr RawText kRawTexts[] = {
    {"UNIX-AT&T System V/386 | SCO UNIX</FSType>", "UNIX-AT&amp;T System V/386 | SCO UNIX</FSType>"},
    {"Minix < 1.4b</FSType>", "Minix &lt; 1.4b</FSType>"},
};
constexpr std::string_view kRawElement = "<FSType>";

// Bytes of a tag up to its ">", which may stand in a quoted value; npos when it does not end in these bytes.
size_t tagEnd(std::string_view bytes)
{
    for (size_t i = 1; i < bytes.size(); ++i) {
        if (bytes[i] == '>')
            return i + 1;
        if (bytes[i] != '"' && bytes[i] != '\'')
            continue;
        i = bytes.find(bytes[i], i + 1);
        if (i == std::string_view::npos)
            return i;
    }
    return std::string_view::npos;
}

std::string_view tagName(std::string_view tag)
{
    tag.remove_prefix(1);
    return tag.substr(0, tag.find_first_of(" \t\r\n/>"));
}
} // namespace

bool XmlFilter::fail(std::string message, ProblemKind kind)
{
    problemKind_ = kind;
    problem_ = std::move(message);
    return false;
}

// Goes over bytes of the input, which out_ has in some form.
void XmlFilter::pass(size_t bytes)
{
    const std::string_view passed = input_.peek(0).substr(0, bytes);
    line_ += static_cast<uint64_t>(std::count(passed.begin(), passed.end(), '\n'));
    input_.skip(bytes);
}

bool XmlFilter::isInValue() const
{
    return depth_ == kValueDepth;
}

void XmlFilter::emitValueText(std::string_view text)
{
    while (!text.empty()) {
        const size_t special = std::min(text.find_first_of("]>\r"), text.size());
        if (special > 0)
            brackets_ = 0;
        out_ += text.substr(0, special);
        text.remove_prefix(special);
        if (text.empty())
            return;
        const char c = text[0];
        if (c == '>' && brackets_ >= 2 && isFirstVersion_)
            out_ += "&gt;";
        else if (c == '\r')
            out_ += "&#13;";
        else
            out_ += c;
        brackets_ = c == ']' ? brackets_ + 1 : 0;
        text.remove_prefix(1);
    }
}

bool XmlFilter::pumpText(std::string_view bytes)
{
    const std::string_view text = bytes.substr(0, bytes.find('<'));
    textBytes_ += text.size();
    if (textBytes_ > kMostTextBytes)
        return fail("a text of more than " + std::to_string(kMostTextBytes) + " bytes", ProblemKind::SIZE);
    if (isInValue())
        emitValueText(text);
    else
        out_ += text;
    pass(text.size());
    return true;
}

// The texts that are not well-formed stand right behind their start tag.
bool XmlFilter::pumpRawText()
{
    for (const RawText& text : kRawTexts) {
        if (!input_.peek(text.raw.size()).starts_with(text.raw))
            continue;
        out_ += text.escaped;
        pass(text.raw.size());
        --depth_;
        return true;
    }
    return true;
}

void XmlFilter::startTag(std::string_view tag)
{
    tagLines_.push_back(line_);
    ++depth_;
    hasRoot_ = true;
    if (depth_ != kGroupDepth)
        return;
    const Group* group = findGroup(tagName(tag));
    isFirstVersion_ = group != nullptr && group->id < FIRST_ADDED_GROUP_ID &&
                      (tag.find(" version=\"1\"") != tag.npos || tag.find(" version='1'") != tag.npos);
    isPartition_ = isFirstVersion_ && group->element == "Partition";
}

bool XmlFilter::pumpTag(std::string_view tag)
{
    const bool isEnd = tag[1] == '/';
    const bool isEmpty = !isEnd && tag[tag.size() - 2] == '/';
    if (!isEnd)
        startTag(tag);
    if ((isEnd || isEmpty) && depth_ > 0)
        --depth_;
    const bool mayBeRaw = isPartition_ && isInValue() && tag == kRawElement;
    out_ += tag;
    textBytes_ = brackets_ = 0;
    pass(tag.size());
    return !mayBeRaw || pumpRawText();
}

// A comment, a processing instruction or a CDATA section up to its end.
bool XmlFilter::pumpUntil(std::string_view end, const char* what)
{
    const std::string_view bytes = input_.peek(Input::kBlock).substr(0, Input::kBlock);
    const size_t place = bytes.find(end, 2);
    if (place == bytes.npos && bytes.size() >= Input::kBlock)
        return fail(std::string(what) + " of more than " + std::to_string(Input::kBlock) + " bytes", ProblemKind::SIZE);
    if (place == bytes.npos) {
        isAtEnd_ = true;
        return true;
    }
    out_ += bytes.substr(0, place + end.size());
    brackets_ = 0;
    pass(place + end.size());
    return true;
}

bool XmlFilter::pumpMarkup()
{
    const std::string_view bytes = input_.peek(sizeof "<![CDATA[" - 1);
    if (bytes.starts_with("<!--"))
        return pumpUntil("-->", "a comment");
    if (bytes.starts_with("<?"))
        return pumpUntil("?>", "a processing instruction");
    if (bytes.starts_with("<![CDATA["))
        return pumpUntil("]]>", "a CDATA section");
    if (bytes.starts_with("<!"))
        return fail("a document type, which no report has");
    size_t end = tagEnd(bytes);
    if (end == bytes.npos)
        end = tagEnd(input_.peek(Input::kBlock));
    if (end <= kMostTagBytes) // no end is beyond every bound
        return pumpTag(input_.peek(0).substr(0, end));
    if (input_.peek(0).size() >= Input::kBlock)
        return fail("a tag of more than " + std::to_string(kMostTagBytes) + " bytes", ProblemKind::SIZE);
    isAtEnd_ = true; // within a tag
    return true;
}

// All that came before is given first, so that a problem in it is found first.
void XmlFilter::endOfInput()
{
    if (input_.error() != 0)
        fail(strerror(input_.error()));
    else if (!hasRoot_ && input_.peek(0).empty())
        fail("nothing but blanks: expected <serviceDataList>");
    else if (hasRoot_ && depth_ == 0 && !input_.peek(0).empty())
        fail("the file goes on behind </serviceDataList>");
    else if (depth_ > 0 || !hasRoot_)
        isCutOff_ = !fail("the report is cut off: the file ends before </serviceDataList>");
}

bool XmlFilter::pump()
{
    const std::string_view bytes = input_.peek();
    if (bytes.empty()) {
        isAtEnd_ = true;
        return true;
    }
    return bytes[0] == '<' ? pumpMarkup() : pumpText(bytes);
}

// Fills out_ anew. The parser takes its input in pieces and leaves a last, shorter one when reading fails: blanks in
// front of the failure make it go over all that came before.
void XmlFilter::refill(size_t room)
{
    constexpr size_t kLargerThanAPiece = 8192;
    out_.clear();
    given_ = 0;
    while (out_.size() < room && !isAtEnd_ && problem_.empty())
        pump();
    if (!out_.empty())
        return;
    if (isAtEnd_ && problem_.empty())
        endOfInput();
    hasTold_ = isPadded_;
    isPadded_ = !problem_.empty();
    if (isPadded_ && !hasTold_)
        out_.assign(kLargerThanAPiece, ' ');
}

int XmlFilter::read(char* out, int capacity)
{
    const auto room = static_cast<size_t>(std::max(capacity, 0));
    if (given_ == out_.size())
        refill(room);
    if (out_.empty())
        return hasTold_ ? -1 : 0;
    const size_t bytes = std::min(room, out_.size() - given_);
    memcpy(out, out_.data() + given_, bytes);
    given_ += bytes;
    return static_cast<int>(bytes);
}

uint64_t XmlFilter::takeTagLine()
{
    if (tagLines_.empty())
        return line_; // only of what is not well-formed
    const uint64_t line = tagLines_.front();
    tagLines_.pop_front();
    return line;
}
} // namespace report
