#pragma once

class TextStream;

/// What /etc/resolv.conf says; texts it does not say stay as they are.
struct ResolvConf {
    char domain[256] = "";
    char nameServer1[16] = ""; // an IPv4 address has at most 15 characters
    char nameServer2[16] = "";
};

/// Reads "nameserver" lines up to the second IPv4 name server and, while the domain is empty, "domain" lines.
void readResolvConf(TextStream& stream, ResolvConf* settings);
