#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

// Other values of the same form, by HMAC-SHA-256 (RFC 2104) under a key: who does not have the key learns nothing from
// a pseudonym but its form and that two equal ones stand for equal values. The same key gives the same pseudonyms
// always.

namespace report
{
class Pseudonyms
{
public:
    explicit Pseudonyms(std::string key) : key_(std::move(key)) {}

    /// Of a text as a whole: digits become digits, letters letters of the same case, characters beyond ASCII their
    /// neighbours, all else stays; texts of eight or more hexadecimal digits, of both kinds, stay hexadecimal. Two
    /// texts that differ in more than their case have different pseudonyms.
    std::string word(std::string_view text) const;

    /// Of what the text is, told by its form: an address, a UUID, else a word. What identifierIn() leaves out stays, as
    /// do placeholders (isPlaceholder() in report/Identity.h).
    std::string value(std::string_view text) const;

    /// Of hexadecimal bytes joined by ":" or "-", or of twelve digits: a locally administered address, in the same
    /// form. Absent when the text is none.
    std::optional<std::string> hardwareAddress(std::string_view text) const;

    /// Of a UUID or of 32 hexadecimal digits, the same form; its version and variant stay. It does not matter in which
    /// of the two orders of bytes (RFC 4122, SMBIOS 7.2.1) a UUID stands: the pseudonym's bytes stand in that order.
    std::optional<std::string> uuid(std::string_view text) const;

    /// Of an IPv4 or IPv6 address, or of one with "/" and a prefix length behind it. Addresses that have their first
    /// bits in common have pseudonyms that have as many in common. What is unspecified, loopback or broadcast stays;
    /// private, link-local and multicast addresses stay such. Behind the prefix length, if there is one, bits stay as
    /// they are when they are zeros: a network's address stays one.
    std::optional<std::string> address(std::string_view text) const;

    /// A place of a word that changes: a digit of a number with this radix.
    struct Place {
        size_t at;          // the byte
        unsigned int radix; // at most 64
        unsigned int digit;
        char base; // the byte of the digit 0; 0 for hexadecimal
    };

private:
    using Digest = std::array<unsigned char, 32>;
    Digest digest(std::string_view purpose, std::string_view message) const;
    void turn(std::span<Place> places, std::span<const Place> others, std::string message) const;
    template <size_t N>
    std::array<unsigned char, N> preservingPrefix(const std::array<unsigned char, N>& bytes, size_t from,
                                                  size_t to) const;
    template <size_t N>
    std::string ofAddress(const std::array<unsigned char, N>& bytes, std::optional<size_t> prefixLength) const;
    std::optional<std::string> addressAlone(std::string_view text, std::optional<size_t> prefixLength) const;

    std::string key_;
};

/// A part of the text: without blanks around it, and without "naa.", "eui." and the like in front; of a SCSI name with
/// its vendor ("t10.") the last word.
std::string_view identifierIn(std::string_view text);

/// A text in lower case in the case of another: all of it when that has no letter in lower case, else letter by letter.
std::string inCaseOf(std::string_view pattern, std::string text);

/// The 32 hexadecimal digits, in lower case, of a UUID or of digits alone; empty of anything else.
std::string uuidDigits(std::string_view text);

/// These digits with the bytes of the first three fields turned around.
std::string swappedUuidDigits(std::string_view digits);

/// The digits as RFC 4122 writes them.
std::string dashedUuid(std::string_view digits);
} // namespace report
