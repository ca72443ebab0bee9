#pragma once

#include "report/Report.h"

namespace report
{
/// How an identifying value is made up, which decides what of it is replaced.
enum class Form : uint8_t {
    NONE,        // identifies nothing
    VALUE,       // an address, a UUID, a serial number, a digest: what it looks like
    HOST,        // the name of a host: labels joined by points
    DOMAIN_NAME, // of a domain
    PERSON,      // the name of an account
    TEXT,        // words of a person
    HOME,        // the path of an account's folder
    LIST,        // words and "name=value", with blanks or commas between them
    URI,         // a scheme, and what follows
    MAPPER_ID,   // pieces joined by "-", long ones identify
    MOUNT,       // a path that may hold a host or an account
    INTERFACE,   // a name that may be made of an address
    DESTINATION, // a network's address, whose prefix length is another value
    MACHINE_KEY, // the digest of another value
};

/// The form of a value; NONE of one that the catalog does not know, or that is no text.
Form formOf(const GroupRows& group, const Value& value);
} // namespace report
