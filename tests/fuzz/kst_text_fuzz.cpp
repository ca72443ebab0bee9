// Any text in any shipped code set: what is written as UTF-8 is UTF-8, and conversion in pieces gives the same bytes
// and counts as conversion at once. The first byte chooses the code set, the second and third the lengths of the
// pieces.

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "codeset/kst.h"
#include "codeset/tables/CodeSets.h"

using Converter = int (*)(kst_handle, const char**, size_t*, char**, size_t*);
using OneShot = size_t (*)(kst_handle, const char*, long, char*, size_t);

static kst_handle openCodeSet(size_t number)
{
    static constexpr size_t kCount = std::size(kShippedCodeSets);
    static kst_handle handles[kCount + 1] = {};
    number %= kCount + 1;
    if (handles[number] == nullptr) {
        const auto program = std::filesystem::read_symlink("/proc/self/exe");
        setenv("BINDIR", program.parent_path().c_str(), 1);
        handles[number] = kst_cs_new(number < kCount ? kShippedCodeSets[number].table : "UTF8");
    }
    return handles[number];
}

static std::string inOne(OneShot convert, kst_handle handle, const std::string& text)
{
    std::string out(text.size() * 5 + 8, '\0');
    out.resize(convert(handle, text.data(), static_cast<long>(text.size()), out.data(), out.size()));
    return out;
}

static std::string inPieces(Converter convert, kst_handle handle, const std::string& text, size_t piece, size_t room)
{
    std::string result;
    std::string buffer(room, '\0');
    convert(handle, nullptr, nullptr, nullptr, nullptr);
    for (size_t start = 0, given = 0; given < text.size();) {
        given = std::min(given + piece, text.size());
        int outcome = KST_OUTPUT_FULL;
        while (outcome == KST_OUTPUT_FULL) {
            const char* src = text.data() + start;
            char* dst = buffer.data();
            size_t left = given - start;
            size_t roomLeft = room;
            outcome = convert(handle, &src, &left, &dst, &roomLeft);
            start = given - left;
            result.append(buffer.data(), dst);
        }
        if ((outcome == KST_DONE) != (start == given))
            abort();
    }
    char* dst = buffer.data();
    size_t roomLeft = room;
    convert(handle, nullptr, nullptr, &dst, &roomLeft);
    return result.append(buffer.data(), dst);
}

static std::string convertBothWays(kst_handle handle, OneShot oneShot, Converter restartable, const std::string& text,
                                   size_t piece, size_t room)
{
    const unsigned long before = kst_get_subst_count(handle);
    const std::string whole = inOne(oneShot, handle, text);
    const unsigned long between = kst_get_subst_count(handle);
    if (inPieces(restartable, handle, text, piece, room) != whole ||
        kst_get_subst_count(handle) - between != between - before)
        abort();
    return whole;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    if (size < 3)
        return 0;
    const kst_handle handle = openCodeSet(data[0]);
    if (handle == nullptr)
        return 0; // left out where this C library does not have it
    const size_t piece = 1 + data[1] % 16u;
    const size_t room = 4 + data[2] % 16u;
    const std::string text(reinterpret_cast<const char*>(data) + 3, size - 3);
    const std::string utf8 = convertBothWays(handle, kst_to_utf8, kst_to_utf8_r, text, piece, room);
    const kst_handle checker = openCodeSet(std::size(kShippedCodeSets));
    const unsigned long broken = kst_get_subst_count(checker);
    if (inOne(kst_to_utf8, checker, utf8) != utf8 || kst_get_subst_count(checker) != broken)
        abort();
    convertBothWays(handle, kst_from_utf8, kst_from_utf8_r, utf8, piece, room);
    convertBothWays(handle, kst_from_utf8, kst_from_utf8_r, text, piece, room);
    return 0;
}
