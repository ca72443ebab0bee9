#include "report/read/JsonStream.h"

#include <algorithm>

#include "report/read/RowMaker.h"

namespace report
{
namespace
{
// As JSON writes it a character of a text has up to six bytes.
constexpr size_t kMostBytes = 6 * kMostTextBytes;
} // namespace

uint64_t JsonStream::line()
{
    if (counted_ != nullptr && counted_ < gptr()) {
        line_ += static_cast<uint64_t>(std::count(counted_, static_cast<const char*>(gptr()), '\n'));
        counted_ = gptr();
    }
    // A line end that was just taken ends the line of what stands before it.
    const bool isBehindEnd = gptr() != nullptr && gptr() > eback() && gptr()[-1] == '\n';
    return isBehindEnd && line_ > 1 ? line_ - 1 : line_;
}

JsonStream::int_type JsonStream::underflow()
{
    line();
    if (begin_ != nullptr)
        sinceMark_ += static_cast<size_t>(gptr() - begin_);
    input_.skip(static_cast<size_t>(egptr() - eback()));
    const std::string_view bytes = input_.peek().substr(0, Input::kBlock);
    isTooLong_ = sinceMark_ > kMostBytes;
    isAtEnd_ = bytes.empty();
    if (isTooLong_ || isAtEnd_) {
        setg(nullptr, nullptr, nullptr);
        counted_ = begin_ = nullptr;
        return traits_type::eof();
    }
    auto* const begin = const_cast<char*>(bytes.data()); // read only
    setg(begin, begin, begin + bytes.size());
    counted_ = begin_ = begin;
    return traits_type::to_int_type(*begin);
}
} // namespace report
