#include "host/Frames.h"

#include <cmath>
#include <fcntl.h>
#include <gtest/gtest.h>

#include "report/Utf8.h"
#include "report/Writer.h"
#include "report/catalog/AttributeIds.h"

using namespace host;
using report::DateTime;

namespace
{
constexpr uint32_t kUnknownAttribute = 99999;

// What a worker writes into its pipe; it must fit into one.
std::string stream(const std::function<void(PipeCollection&)>& collect)
{
    int ends[2];
    EXPECT_EQ(pipe2(ends, O_CLOEXEC), 0);
    PipeCollection collection(ends[1]);
    collect(collection);
    close(ends[1]);
    std::string bytes;
    char piece[4096];
    for (ssize_t count = read(ends[0], piece, sizeof piece); count > 0; count = read(ends[0], piece, sizeof piece))
        bytes.append(piece, static_cast<size_t>(count));
    close(ends[0]);
    return bytes;
}

// A row with a value of every kind: text, number, enumeration, number of 64 bits, date-times.
RowBuilder storageRow()
{
    RowBuilder row(GROUP_STORAGE);
    row.number(STORAGE_INDEX, 1, "").text(STORAGE_MODEL, "Gr\xC3\xBC\xC3\x9F <&>", "/sys/block/sda/device/model");
    row.number(STORAGE_SIZE_BYTES, UINT64_MAX, "/sys/block/sda/size").yesNo(STORAGE_ROTATIONAL, false, "x");
    return row;
}

std::string storageStream()
{
    return stream([](PipeCollection& collection) {
        const size_t row = collection.add(storageRow());
        collection.add(RowBuilder(GROUP_STORAGE));
        RowBuilder late(GROUP_STORAGE);
        late.text(STORAGE_SERIAL_NUMBER, "S1", "late");
        collection.amend(row, std::move(late));
        collection.notes().found();
        collection.notes().failed("/dev/sda", EACCES);
        collection.end();
    });
}

// One frame by hand.
template <typename T>
std::string bytesOf(T value)
{
    return {reinterpret_cast<const char*>(&value), sizeof value};
}
std::string frame(char kind, const std::string& payload)
{
    return kind + bytesOf(static_cast<uint32_t>(payload.size())) + payload;
}
std::string textOf(const std::string& text)
{
    return bytesOf(static_cast<uint32_t>(text.size())) + text;
}
std::string textValue(uint32_t attribute, const std::string& text)
{
    return bytesOf(attribute) + '\0' + textOf(text) + textOf("source");
}
std::string numberValue(uint32_t attribute, uint64_t number)
{
    return bytesOf(attribute) + '\1' + bytesOf(number) + textOf("source");
}
std::string realValue(uint32_t attribute, double number)
{
    return bytesOf(attribute) + '\2' + bytesOf(number) + textOf("source");
}
std::string dateTimeValue(uint32_t attribute, const DateTime& t, char hasOffset)
{
    std::string bytes = bytesOf(attribute) + '\3' + bytesOf(t.year);
    for (const uint8_t part : {t.month, t.day, t.hour, t.minute, t.second})
        bytes += static_cast<char>(part);
    return bytes + hasOffset + bytesOf(t.offsetSeconds.value_or(0)) + textOf("source");
}

void expectSame(const report::Row& row, const report::Row& expected)
{
    ASSERT_EQ(row.values.size(), expected.values.size());
    for (size_t i = 0; i < row.values.size(); ++i) {
        EXPECT_EQ(row.values[i].attribute, expected.values[i].attribute);
        EXPECT_EQ(row.values[i].content, expected.values[i].content);
        EXPECT_EQ(row.values[i].source, expected.values[i].source);
    }
}

// What every reader of rows may rely on, whatever came through the pipe.
void expectValid(const std::vector<report::Row>& rows, uint32_t group)
{
    const report::Group& definition = *report::findGroup(group);
    for (const report::Row& row : rows) {
        const report::Attribute* before = nullptr;
        for (const report::Value& value : row.values) {
            ASSERT_NE(value.attribute, nullptr);
            ASSERT_EQ(definition.find(value.attribute->id), value.attribute);
            ASSERT_TRUE(before == nullptr || before->position < value.attribute->position);
            before = value.attribute;
            if (const auto* text = std::get_if<std::string>(&value.content)) {
                ASSERT_EQ(report::validUtf8(*text), *text);
            }
            ASSERT_EQ(report::validUtf8(value.source), value.source);
        }
    }
}

// Hands bytes over in pieces; false when one was refused.
bool takeInPieces(FrameReader& reader, std::string_view bytes, size_t piece)
{
    for (; !bytes.empty(); bytes.remove_prefix(std::min(piece, bytes.size())))
        if (!reader.take(bytes.substr(0, piece)))
            return false;
    return true;
}
} // namespace

TEST(Frames, carryRowsAmendmentsAndTheOutcome)
{
    const std::string bytes = storageStream();
    for (const size_t piece : {size_t{1}, size_t{7}, bytes.size()}) {
        FrameReader reader(GROUP_STORAGE);
        ASSERT_TRUE(takeInPieces(reader, bytes, piece)) << piece;
        ASSERT_EQ(reader.rows().size(), 2u);
        RowBuilder expected = storageRow();
        expected.text(STORAGE_SERIAL_NUMBER, "S1", "late");
        expectSame(reader.rows()[0], expected.row());
        EXPECT_TRUE(reader.rows()[1].values.empty());
        ASSERT_TRUE(reader.outcome());
        EXPECT_TRUE(reader.outcome()->wasFound);
        EXPECT_TRUE(reader.outcome()->wasRefused);
        EXPECT_EQ(reader.outcome()->notes, "/dev/sda: Permission denied");
    }
}

TEST(Frames, carryRealsAndDateTimes)
{
    RowBuilder lpar(GROUP_LPAR);
    lpar.real(LPAR_NODE_CAPACITY, 0.1234567, "a").real(LPAR_LPAR_CAPACITY, 1e300, "b");
    lpar.real(LPAR_SHAREDPOOL_CAPACITY, -2.5, "c");
    const report::Row reals = lpar.row();
    FrameReader lparReader(GROUP_LPAR);
    EXPECT_TRUE(lparReader.take(stream([&](PipeCollection& collection) { collection.add(std::move(lpar)); })));
    ASSERT_EQ(lparReader.rows().size(), 1u);
    expectSame(lparReader.rows()[0], reals);

    RowBuilder system(GROUP_OPERATING_SYSTEM);
    system.dateTime(OPERATING_SYSTEM_INSTALL_DATE, DateTime{2026, 2, 28, 23, 59, 60, -12600}, "x");
    system.dateTime(OPERATING_SYSTEM_BOOT_TIME, DateTime{1, 1, 1, 0, 0, 0, std::nullopt}, "y");
    const report::Row dates = system.row();
    FrameReader systemReader(GROUP_OPERATING_SYSTEM);
    EXPECT_TRUE(systemReader.take(stream([&](PipeCollection& collection) { collection.add(std::move(system)); })));
    ASSERT_EQ(systemReader.rows().size(), 1u);
    expectSame(systemReader.rows()[0], dates);
    EXPECT_FALSE(systemReader.outcome());
}

TEST(Frames, cutAnywhereGiveTheWholeFramesBeforeTheCut)
{
    const std::string bytes = storageStream();
    size_t rowsBefore = 0;
    for (size_t size = 0; size < bytes.size(); ++size) {
        FrameReader reader(GROUP_STORAGE);
        ASSERT_TRUE(reader.take(std::string_view(bytes).substr(0, size))) << size;
        ASSERT_GE(reader.rows().size(), rowsBefore);
        ASSERT_FALSE(reader.outcome());
        rowsBefore = reader.rows().size();
        expectValid(reader.rows(), GROUP_STORAGE);
    }
    EXPECT_EQ(rowsBefore, 2u);
}

TEST(Frames, withAnyBitFlippedGiveValidRowsOrNone)
{
    const std::string bytes = storageStream();
    for (size_t at = 0; at < bytes.size(); ++at) {
        for (int change = 1; change < 256; change <<= 1) {
            std::string damaged = bytes;
            damaged[at] = static_cast<char>(damaged[at] ^ change);
            FrameReader reader(GROUP_STORAGE);
            takeInPieces(reader, damaged, damaged.size());
            ASSERT_LE(reader.rows().size(), 2u);
            expectValid(reader.rows(), GROUP_STORAGE);
        }
        std::string without = bytes;
        without.erase(at, 1);
        FrameReader reader(GROUP_STORAGE);
        takeInPieces(reader, without, without.size());
        expectValid(reader.rows(), GROUP_STORAGE);
    }
}

TEST(Frames, thatMakeNoSenseEndTheReading)
{
    const std::string good = frame('R', numberValue(STORAGE_INDEX, 7));
    const std::string cases[] = {
        frame('X', ""),
        frame('\0', ""),
        'R' + bytesOf(uint32_t{(16U << 20) + 1}),
        'R' + bytesOf(UINT32_MAX),
        frame('R', "abc"),
        frame('R', bytesOf(uint32_t{STORAGE_INDEX})),
        frame('R', bytesOf(uint32_t{STORAGE_INDEX}) + '\4' + bytesOf(uint64_t{1}) + textOf("")),
        frame('R', numberValue(kUnknownAttribute, 1)),
        frame('R', numberValue(OPERATING_SYSTEM_BOOT_TIME + 500, 1)),
        frame('R', textValue(STORAGE_INDEX, "1")), // a text for a number
        frame('R', numberValue(STORAGE_MODEL, 1)), // a number for a text
        frame('R', realValue(STORAGE_INDEX, 1)),   // a real for a whole number
        frame('R', textValue(STORAGE_MODEL, "")),  // no worker writes an empty text
        frame('R', bytesOf(uint32_t{STORAGE_MODEL}) + '\0' + bytesOf(UINT32_MAX) + "x"),
        frame('R', bytesOf(uint32_t{STORAGE_MODEL}) + '\0' + textOf("x") + bytesOf(uint32_t{9}) + "short"),
        frame('A', bytesOf(uint64_t{1}) + numberValue(STORAGE_INDEX, 1)), // there is no row 1
        frame('A', bytesOf(UINT64_MAX) + numberValue(STORAGE_INDEX, 1)),
        frame('A', "short"),
        frame('A', bytesOf(uint64_t{0}) + "rubbish"),
        frame('O', ""),
        frame('O', "\1"),
        frame('O', "\2\1"),
        frame('O', "\1\2"),
    };
    for (size_t i = 0; i < std::size(cases); ++i) {
        FrameReader reader(GROUP_STORAGE);
        EXPECT_FALSE(reader.take(good + cases[i])) << i;
        ASSERT_EQ(reader.rows().size(), 1u) << i;
        expectValid(reader.rows(), GROUP_STORAGE);
        EXPECT_FALSE(reader.outcome()) << i;
    }
}

TEST(Frames, takeNoDateTimeThatAReportCannotHold)
{
    const DateTime good{2026, 11, 21, 11, 35, 34, 3600};
    const auto changed = [&](auto change) {
        DateTime t = good;
        change(t);
        return t;
    };
    const DateTime bad[] = {
        changed([](DateTime& t) { t.year = -1; }),
        changed([](DateTime& t) { t.year = 10000; }),
        changed([](DateTime& t) { t.month = 0; }),
        changed([](DateTime& t) { t.month = 13; }),
        changed([](DateTime& t) { t.day = 0; }),
        changed([](DateTime& t) { t.day = 32; }),
        changed([](DateTime& t) { t.hour = 24; }),
        changed([](DateTime& t) { t.minute = 60; }),
        changed([](DateTime& t) { t.second = 61; }),
        changed([](DateTime& t) { t.offsetSeconds = INT32_MIN; }),
        changed([](DateTime& t) { t.offsetSeconds = 100000; }),
    };
    const auto isTaken = [](const DateTime& t, char hasOffset) {
        FrameReader reader(GROUP_OPERATING_SYSTEM);
        return reader.take(frame('R', dateTimeValue(OPERATING_SYSTEM_BOOT_TIME, t, hasOffset)));
    };
    EXPECT_TRUE(isTaken(good, 1));
    EXPECT_TRUE(isTaken(good, 0));
    EXPECT_FALSE(isTaken(good, 2));
    for (const DateTime& t : bad)
        EXPECT_FALSE(isTaken(t, 1)) << report::rfc3339(t);
}

TEST(Frames, takeNoRealThatIsNone)
{
    for (const double number : {std::nan(""), HUGE_VAL, -HUGE_VAL}) {
        FrameReader reader(GROUP_LPAR);
        EXPECT_FALSE(reader.take(frame('R', realValue(LPAR_NODE_CAPACITY, number)))) << number;
    }
}

TEST(Frames, textsAndSourcesOfAnyBytesBecomeValidOnes)
{
    const std::string value = bytesOf(uint32_t{STORAGE_MODEL}) + '\0' + textOf("a\xFF\x01") + textOf("/sys/\xFF\n");
    FrameReader reader(GROUP_STORAGE);
    EXPECT_TRUE(reader.take(frame('R', value)));
    ASSERT_EQ(reader.rows().size(), 1u);
    expectValid(reader.rows(), GROUP_STORAGE);
    EXPECT_EQ(std::get<std::string>(reader.rows()[0].values[0].content), "a\xEF\xBF\xBD\xEF\xBF\xBD");
    EXPECT_EQ(reader.rows()[0].values[0].source, "/sys/\xEF\xBF\xBD\n");
}

TEST(Frames, nothingComesAfterTheOutcomeHoweverItIsCut)
{
    const std::string outcome = frame('O', std::string(2, '\0'));
    for (const std::string& rest : {frame('R', ""), frame('O', std::string(2, '\0')), std::string("x")}) {
        for (const size_t piece : {size_t{1}, outcome.size(), outcome.size() + rest.size()}) {
            FrameReader reader(GROUP_STORAGE);
            EXPECT_FALSE(takeInPieces(reader, outcome + rest, piece)) << piece;
            EXPECT_TRUE(reader.rows().empty());
            EXPECT_TRUE(reader.outcome());
        }
    }
}

TEST(Frames, thatAreHeldAreTheSameBytes)
{
    const auto rows = [](PipeCollection& collection) {
        for (int i = 0; i < 3; ++i)
            collection.add(storageRow());
        RowBuilder late(GROUP_STORAGE);
        late.text(STORAGE_SERIAL_NUMBER, "S1", "late");
        collection.amend(1, std::move(late));
    };
    const auto held = [&rows](PipeCollection& collection) {
        const RowsTogether together(collection);
        rows(collection);
    };
    EXPECT_FALSE(stream(rows).empty());
    EXPECT_EQ(stream(held), stream(rows));
}

TEST(Frames, waitForOthersOnlyWhileTheyAreHeldAndFew)
{
    int ends[2];
    ASSERT_EQ(pipe2(ends, O_CLOEXEC | O_NONBLOCK), 0);
    PipeCollection collection(ends[1]);
    const auto arrived = [&ends] {
        char bytes[65536];
        return std::max<ssize_t>(read(ends[0], bytes, sizeof bytes), 0);
    };
    collection.add(storageRow());
    EXPECT_GT(arrived(), 0);
    collection.hold();
    collection.add(storageRow());
    EXPECT_EQ(arrived(), 0);
    for (int i = 0; i < 500; ++i)
        collection.add(storageRow());
    EXPECT_GT(arrived(), 0);
    collection.add(storageRow());
    EXPECT_EQ(arrived(), 0);
    collection.release();
    EXPECT_GT(arrived(), 0);
    collection.add(storageRow());
    EXPECT_GT(arrived(), 0);
    close(ends[0]);
    close(ends[1]);
}

TEST(Frames, oneGroupIsBounded)
{
    std::string empty;
    for (size_t i = 0; i < 10000; ++i)
        empty += frame('R', "");
    FrameReader reader(GROUP_STORAGE);
    for (size_t i = 0; i < FrameReader::kMostRows / 10000; ++i)
        ASSERT_TRUE(reader.take(empty));
    EXPECT_EQ(reader.rows().size(), FrameReader::kMostRows);
    EXPECT_FALSE(reader.take(frame('R', "")));
    EXPECT_EQ(reader.rows().size(), FrameReader::kMostRows);
}
