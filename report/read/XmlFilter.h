#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <string_view>

#include "report/Reader.h"
#include "report/read/Input.h"

namespace report
{
/// The bytes of an XML report on their way to the XML parser. Three things that `invhw` writes raw are escaped where
/// they may stand, in a value of a version 1 group of its catalog: "]]>", and the two texts of Partition's FSType that
/// hold "&" and "<". A carriage return in a value becomes a reference, since a parser would make a line feed of it. All
/// else passes as it is. What no report has ends the stream with a problem: document types, very long tags and texts,
/// and the end of the file within the report.
class XmlFilter
{
public:
    /// Nothing is owned.
    explicit XmlFilter(Input& input) : input_(input) {}

    /// Up to so many bytes; 0 at the end, -1 when there is a problem.
    int read(char* out, int capacity);

    /// The line of the next start tag, in their order, for each tag once.
    uint64_t takeTagLine();

    uint64_t line() const { return line_; }
    /// What ended the stream, empty when nothing did; and whether it was the end of the file.
    const std::string& problem() const { return problem_; }
    ProblemKind problemKind() const { return problemKind_; }
    bool isCutOff() const { return isCutOff_; }
    /// Whether read() told of the problem: what the parser complains of from then on follows from it.
    bool hasTold() const { return hasTold_; }

private:
    void refill(size_t room);
    bool pump();
    bool pumpText(std::string_view bytes);
    bool pumpMarkup();
    bool pumpTag(std::string_view tag);
    bool pumpUntil(std::string_view end, const char* what);
    bool pumpRawText();
    void endOfInput();
    void startTag(std::string_view tag);
    void emitValueText(std::string_view text);
    void pass(size_t bytes);
    bool fail(std::string message, ProblemKind kind = ProblemKind::FORM);
    bool isInValue() const;

    Input& input_;
    std::string out_;
    size_t given_ = 0; // bytes of out_ that were read
    uint64_t line_ = 1;
    std::deque<uint64_t> tagLines_;
    size_t depth_ = 0; // open elements
    bool hasRoot_ = false;
    bool isFirstVersion_ = false; // of the open group
    bool isPartition_ = false;
    size_t textBytes_ = 0; // since the last tag
    size_t brackets_ = 0;  // "]" at the end of the text so far
    std::string problem_;
    ProblemKind problemKind_ = ProblemKind::FORM;
    bool isCutOff_ = false;
    bool isPadded_ = false;
    bool hasTold_ = false;
    bool isAtEnd_ = false;
};
} // namespace report
