// Any bytes as what a worker wrote: no crash, rows are valid ones of their group, and it does not matter how the bytes
// are cut. The first byte chooses the group, the second the size of the pieces.

#include <cstdint>
#include <cstdlib>

#include "host/Frames.h"
#include "report/Utf8.h"

using namespace host;

static void require(bool isTrue)
{
    if (!isTrue)
        abort();
}

static void checkValue(const report::Group& group, const report::Value& value)
{
    require(value.attribute != nullptr && group.find(value.attribute->id) == value.attribute);
    require(report::validUtf8(value.source) == value.source);
    if (const auto* text = std::get_if<std::string>(&value.content))
        require(report::validUtf8(*text) == *text && !text->empty());
    if (const auto* time = std::get_if<report::DateTime>(&value.content))
        require(time->year >= 0 && time->year <= 9999 && time->month >= 1 && time->month <= 12);
}

static void checkRow(const report::Group& group, const report::Row& row)
{
    const report::Attribute* before = nullptr;
    for (const report::Value& value : row.values) {
        checkValue(group, value);
        require(before == nullptr || before->position < value.attribute->position);
        before = value.attribute;
    }
}

static bool takeInPieces(FrameReader& reader, std::string_view bytes, size_t piece)
{
    for (; !bytes.empty(); bytes.remove_prefix(std::min(piece, bytes.size())))
        if (!reader.take(bytes.substr(0, piece)))
            return false;
    return true;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    if (size < 3)
        return 0;
    const report::Group& group = report::catalog()[data[0] % report::catalog().size()];
    const std::string_view bytes(reinterpret_cast<const char*>(data) + 2, size - 2);
    FrameReader whole(group.id);
    FrameReader pieces(group.id);
    const bool isGood = whole.take(bytes);
    require(takeInPieces(pieces, bytes, size_t{1} + data[1]) == isGood);
    require(whole.rows().size() == pieces.rows().size() && whole.outcome().has_value() == pieces.outcome().has_value());
    for (size_t i = 0; i < whole.rows().size(); ++i) {
        checkRow(group, whole.rows()[i]);
        require(whole.rows()[i].values.size() == pieces.rows()[i].values.size());
    }
    return 0;
}
