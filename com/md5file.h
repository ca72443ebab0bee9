#pragma once

#include <cstddef>
#include <cstdint>

// The MD5 message digest (RFC 1321), used to make stable keys for things that have no natural one.

/// An incremental digest. Start with md5file_clear.
struct md5file_context {
    uint32_t state[4];       // A, B, C, D
    uint64_t length;         // bytes added so far
    unsigned char block[64]; // the bytes of the block that is not yet full
};

/// Resets the context to the standard initial state.
void md5file_clear(md5file_context* context);
/// Adds count bytes.
void md5file_addn(md5file_context* context, const void* bytes, size_t count);
/// Adds the bytes of a NUL-terminated text, without its terminator.
void md5file_add(md5file_context* context, const char* text);
/// Finishes the context and writes the 16 digest bytes.
void md5file_hash(md5file_context* context, unsigned char digest[16]);
/// Finishes the context and writes the digest as 32 lower-case hexadecimal digits and a NUL into out (33 bytes).
void md5file_sprint_hash(md5file_context* context, char* out);

/// The digest of text as 32 lower-case hexadecimal digits in a text that the caller frees with free(); null when text
/// is null or empty or memory is short.
char* md5_checksum(const char* text);
