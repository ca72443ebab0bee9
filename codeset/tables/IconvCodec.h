#pragma once

#include <cerrno>
#include <cstdint>
#include <cstring>
#include <iconv.h>
#include <string>
#include <vector>

/// One conversion descriptor of the C library.
class IconvDescriptor
{
public:
    IconvDescriptor(const char* to, const char* from) : descriptor_(iconv_open(to, from)) {}
    ~IconvDescriptor()
    {
        if (isOpen())
            iconv_close(descriptor_);
    }
    IconvDescriptor(const IconvDescriptor&) = delete;
    IconvDescriptor& operator=(const IconvDescriptor&) = delete;

    bool isOpen() const { return descriptor_ != reinterpret_cast<iconv_t>(-1); }

    /// Converts one character from the initial state back to it. 0, or the errno of the failure. Outputs are short:
    /// what does not fit is a failure too.
    int convert(const std::string& in, std::string& out)
    {
        char buffer[64];
        char* next = buffer;
        size_t room = sizeof buffer;
        char* from = const_cast<char*>(in.data()); // only read
        size_t left = in.size();
        iconv(descriptor_, nullptr, nullptr, nullptr, nullptr);
        if (iconv(descriptor_, &from, &left, &next, &room) == static_cast<size_t>(-1))
            return errno;
        if (iconv(descriptor_, nullptr, nullptr, &next, &room) == static_cast<size_t>(-1))
            return errno;
        out.assign(buffer, next);
        return 0;
    }

private:
    iconv_t descriptor_;
};

/// A code set as the C library knows it, character by character.
class IconvCodec
{
public:
    explicit IconvCodec(const char* name) : decoder_("UTF-32LE", name), encoder_(name, "UTF-32LE") {}

    bool isKnown() const { return decoder_.isOpen() && encoder_.isOpen(); }

    /// The code points of the bytes; 0, EILSEQ for no character, EINVAL for an incomplete one.
    int decode(const std::string& bytes, std::vector<uint32_t>& codePoints)
    {
        std::string units;
        const int error = decoder_.convert(bytes, units);
        codePoints.resize(error != 0 ? 0 : units.size() / 4);
        if (!codePoints.empty())
            memcpy(codePoints.data(), units.data(), codePoints.size() * 4);
        return error;
    }

    /// The one code point of the bytes; -1 for none, or more than one.
    int64_t decodeOne(const std::string& bytes)
    {
        std::vector<uint32_t> codePoints;
        return decode(bytes, codePoints) == 0 && codePoints.size() == 1 ? int64_t{codePoints[0]} : -1;
    }

    /// The bytes of the code point, empty when it has none.
    std::string encode(uint32_t codePoint)
    {
        std::string bytes;
        const std::string unit(reinterpret_cast<const char*>(&codePoint), sizeof codePoint);
        return encoder_.convert(unit, bytes) == 0 ? bytes : std::string();
    }

private:
    IconvDescriptor decoder_;
    IconvDescriptor encoder_;
};
