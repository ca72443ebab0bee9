#include "report/XmlReader.h"

#include <memory>

#include <libxml/globals.h>
#include <libxml/xmlreader.h>

#include "report/Content.h"
#include "report/Text.h"
#include "report/read/RowMaker.h"
#include "report/read/XmlFilter.h"

namespace report
{
namespace
{
// While it lives, the library prints nothing of its own: what has no parser at hand (a decoder that gives up) goes to
// standard error otherwise. The setting is each thread's own.
class Silence
{
public:
    Silence()
    {
        xmlSetStructuredErrorFunc(nullptr, [](void*, xmlErrorPtr) {});
    }
    ~Silence() { xmlSetStructuredErrorFunc(context_, function_); }
    Silence(const Silence&) = delete;
    Silence& operator=(const Silence&) = delete;

private:
    void* context_ = xmlStructuredErrorContext;
    xmlStructuredErrorFunc function_ = xmlStructuredError;
};

struct FreeReader {
    void operator()(xmlTextReader* reader) const { xmlFreeTextReader(reader); }
};

// Where in a report the parser is, and what leads on from there.
enum Place : uint8_t { START, LIST, ROW, NAME, NAMED, VALUE, GROUP, ATTRIBUTE, GROUP_DONE, VALUE_DONE, END, NOWHERE };

struct Step {
    const char* element; // the element that may begin here; null for none, empty for one that the report names
    Place begin;         // where it leads
    Place end;           // where the end of the open element leads
};
constexpr Step kSteps[] = {
    {"serviceDataList", LIST, NOWHERE}, // START
    {"serviceData", ROW, END},          // LIST
    {"name", NAME, NOWHERE},            // ROW
    {nullptr, NOWHERE, NAMED},          // NAME
    {"value", VALUE, NOWHERE},          // NAMED
    {"", GROUP, NOWHERE},               // VALUE
    {"", ATTRIBUTE, GROUP_DONE},        // GROUP
    {nullptr, NOWHERE, GROUP},          // ATTRIBUTE
    {nullptr, NOWHERE, VALUE_DONE},     // GROUP_DONE
    {nullptr, NOWHERE, LIST},           // VALUE_DONE
    {nullptr, NOWHERE, NOWHERE},        // END
};
static_assert(std::size(kSteps) == NOWHERE);

std::string_view view(const xmlChar* text)
{
    return text != nullptr ? reinterpret_cast<const char*>(text) : std::string_view();
}

// Whether the parser complains of bytes that are no characters, or none that XML allows.
bool isOfCodeSet(int error)
{
    return error == XML_ERR_INVALID_CHAR || error == XML_ERR_INVALID_ENCODING || error == XML_ERR_INVALID_CHARREF ||
           error == XML_ERR_UNKNOWN_ENCODING || error == XML_ERR_UNSUPPORTED_ENCODING;
}

class XmlParse
{
public:
    XmlParse(Input& input, ReportSink& sink, ReadProblem& problem) : filter_(input), sink_(sink), rows_(sink, problem)
    {
    }
    ReadResult run();

private:
    static int readFiltered(void* self, char* out, int capacity);
    static void takeError(void* self, xmlErrorPtr error);

    bool takeNode();
    bool beginElement();
    bool beginGroup();
    bool beginAttribute();
    bool endElement();
    bool takeText();
    bool takeXmlAttributes();
    bool takeXmlAttribute(std::string_view name, std::string_view value);
    void finishValue();
    std::string expectedHere() const;
    bool isUtf8() const;
    std::string_view nodeName() const { return view(xmlTextReaderConstName(reader_.get())); }
    bool fail(std::string message, ProblemKind kind = ProblemKind::FORM)
    {
        return rows_.fail(line_, std::move(message), kind);
    }
    ReadResult result(int parsed);

    XmlFilter filter_;
    ReportSink& sink_;
    RowMaker rows_;
    std::unique_ptr<xmlTextReader, FreeReader> reader_;
    Place place_ = START;
    uint64_t line_ = 1;    // of the element that began last
    uint64_t rowLine_ = 0; // of the row
    std::string name_;     // of the row's group
    std::string version_;  // of the group, as its element says
    std::string text_;     // of the open name or attribute
    Value* value_ = nullptr;
    uint64_t errorLine_ = 0; // what the parser complained of first
    std::string error_;
    ProblemKind errorKind_ = ProblemKind::FORM;
};

int XmlParse::readFiltered(void* self, char* out, int capacity)
{
    return static_cast<XmlParse*>(self)->filter_.read(out, capacity);
}

// Of names with a colon the parser complains and goes on: those are no errors of the form.
void XmlParse::takeError(void* self, xmlErrorPtr error)
{
    auto& parse = *static_cast<XmlParse*>(self);
    if (!parse.error_.empty() || parse.filter_.hasTold() || error->domain == XML_FROM_NAMESPACE ||
        error->level < XML_ERR_ERROR)
        return;
    parse.errorLine_ = static_cast<uint64_t>(error->line > 0 ? error->line : 1);
    parse.errorKind_ = isOfCodeSet(error->code) ? ProblemKind::CODE_SET : ProblemKind::FORM;
    parse.error_ = "not well-formed";
    if (error->message != nullptr)
        parse.error_ += ": " + shown(trimmed(error->message));
}

std::string XmlParse::expectedHere() const
{
    const Step& step = kSteps[place_];
    if (step.element == nullptr)
        return "no element";
    return "<" +
           (*step.element != '\0' ? std::string(step.element)
            : place_ == VALUE     ? shown(name_)
                                  : "an attribute") +
           ">";
}

bool XmlParse::isUtf8() const
{
    const std::string encoding = lower(view(xmlTextReaderConstEncoding(reader_.get())));
    return encoding.empty() || encoding == "utf-8" || encoding == "us-ascii" || encoding == "ascii";
}

bool XmlParse::beginElement()
{
    line_ = filter_.takeTagLine();
    const Step& step = kSteps[place_];
    const std::string_view name = nodeName();
    if (step.element == nullptr || (*step.element != '\0' && name != step.element))
        return fail("expected " + expectedHere() + ", found <" + shown(name) + ">");
    if (place_ == START && !isUtf8())
        return fail("expected UTF-8, found the encoding " + shown(view(xmlTextReaderConstEncoding(reader_.get()))),
                    ProblemKind::CODE_SET);
    const bool isEmpty = xmlTextReaderIsEmptyElement(reader_.get()) == 1;
    const Place before = place_;
    place_ = step.begin;
    text_.clear();
    if (place_ == ROW)
        rowLine_ = line_;
    const bool taken = before == VALUE ? beginGroup() : before == GROUP ? beginAttribute() : takeXmlAttributes();
    return taken && (!isEmpty || endElement());
}

bool XmlParse::beginGroup()
{
    if (nodeName() != name_)
        return fail("expected " + shown("<" + name_ + ">") + ", found <" + shown(nodeName()) + ">");
    version_.clear();
    if (!takeXmlAttributes())
        return false;
    const auto version = parseNumber<uint32_t>(version_);
    if (!version)
        return fail("expected version=\"NUMBER\" of <" + shown(name_) + ">, found \"" + shown(version_) + "\"");
    if (!rows_.beginGroup(name_, *version, rowLine_))
        return false;
    rows_.beginRow(rowLine_);
    return true;
}

bool XmlParse::beginAttribute()
{
    value_ = rows_.addValue(nodeName(), line_);
    return value_ != nullptr && takeXmlAttributes();
}

bool XmlParse::takeXmlAttribute(std::string_view name, std::string_view value)
{
    if (place_ == LIST)
        return true; // where others say what the form is
    if (place_ == GROUP && name == "version") {
        version_ = value;
        return true;
    }
    if (place_ == ATTRIBUTE && name == "IsKey" && value == "1") {
        value_->markedKey = true;
        return true;
    }
    if (place_ == ATTRIBUTE && name == "Source") {
        value_->source = value;
        return rows_.addBytes(value.size(), line_);
    }
    return fail("expected no " + shown(name) + "=\"" + shown(value) + "\"");
}

bool XmlParse::takeXmlAttributes()
{
    if (xmlTextReaderHasAttributes(reader_.get()) != 1)
        return true;
    bool taken = true;
    for (int more = xmlTextReaderMoveToFirstAttribute(reader_.get()); taken && more == 1;
         more = xmlTextReaderMoveToNextAttribute(reader_.get()))
        taken = takeXmlAttribute(nodeName(), view(xmlTextReaderConstValue(reader_.get())));
    xmlTextReaderMoveToElement(reader_.get());
    return taken;
}

void XmlParse::finishValue()
{
    value_->content = contentOfText(value_->attribute, std::move(text_));
    value_ = nullptr;
}

bool XmlParse::endElement()
{
    const Place ended = place_;
    if (kSteps[ended].end == NOWHERE)
        return fail("expected " + expectedHere() + ", found the end of the element around it");
    place_ = kSteps[ended].end;
    if (ended == NAME) {
        name_ = std::move(text_);
        return !name_.empty() || fail("expected the name of a group");
    }
    if (ended == ATTRIBUTE)
        finishValue();
    else if (ended == VALUE_DONE)
        rows_.endRow();
    return true;
}

bool XmlParse::takeText()
{
    const std::string_view text = view(xmlTextReaderConstValue(reader_.get()));
    if (place_ != NAME && place_ != ATTRIBUTE)
        return trimmed(text).empty() || fail("expected " + expectedHere() + ", found the text " + shown(trimmed(text)));
    if (text_.size() + text.size() > kMostTextBytes)
        return fail("a text of more than " + std::to_string(kMostTextBytes) + " bytes", ProblemKind::SIZE);
    text_ += text;
    return place_ != ATTRIBUTE || rows_.addBytes(text.size(), line_);
}

bool XmlParse::takeNode()
{
    switch (xmlTextReaderNodeType(reader_.get())) {
    case XML_READER_TYPE_ELEMENT:
        return beginElement();
    case XML_READER_TYPE_END_ELEMENT:
        return endElement();
    case XML_READER_TYPE_TEXT:
    case XML_READER_TYPE_CDATA:
    case XML_READER_TYPE_WHITESPACE:
    case XML_READER_TYPE_SIGNIFICANT_WHITESPACE:
        return takeText();
    case XML_READER_TYPE_COMMENT:
    case XML_READER_TYPE_PROCESSING_INSTRUCTION:
    case XML_READER_TYPE_XML_DECLARATION:
        return true;
    default:
        return fail("expected " + expectedHere() + ", found something else");
    }
}

// What a step found ended the parse; else what came first, the parser's complaint or the filter's.
ReadResult XmlParse::result(int parsed)
{
    if (rows_.hasFailed())
        return ReadResult::MALFORMED;
    if (parsed == 0 && error_.empty() && filter_.problem().empty())
        return ReadResult::WHOLE;
    if (!error_.empty()) {
        rows_.fail(errorLine_, error_, errorKind_);
        return ReadResult::MALFORMED;
    }
    rows_.fail(filter_.line(), filter_.hasTold() ? filter_.problem() : "not well-formed", filter_.problemKind());
    return filter_.hasTold() && filter_.isCutOff() ? ReadResult::CUT_OFF : ReadResult::MALFORMED;
}

ReadResult XmlParse::run()
{
    const Silence silence;
    reader_.reset(xmlReaderForIO(readFiltered, nullptr, this, nullptr, nullptr, XML_PARSE_NONET));
    if (reader_ == nullptr) {
        rows_.fail(0, "no memory for an XML parser");
        return ReadResult::UNREADABLE;
    }
    xmlTextReaderSetStructuredErrorHandler(reader_.get(), takeError, this);
    sink_.header({});
    int parsed = 0;
    while ((parsed = xmlTextReaderRead(reader_.get())) == 1 && takeNode()) {
    }
    return result(parsed);
}
} // namespace

ReadResult readXml(Input& input, ReportSink& sink, ReadProblem& problem)
{
    return XmlParse(input, sink, problem).run();
}
} // namespace report
