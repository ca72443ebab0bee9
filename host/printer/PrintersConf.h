#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace host
{
/// A queue of a print server. Texts are empty where nothing is told.
struct PrintQueue {
    std::string name;
    bool isDefault = false;
    std::string info, location, makeModel;
    std::string deviceUri; // as it stands, secrets and all
};

/// The queues of CUPS's printers.conf.
std::vector<PrintQueue> parsePrintersConf(std::string_view text);

/// "Y" for a printer that is plugged into the machine, "N" for one that is reached over the network, by its URI; empty
/// where the URI does not say.
const char* localityOf(std::string_view uri);

/// A printer's URI without its secrets: its user part, and values as maskCommandLine() hides them. A password may have
/// any characters, for nothing checks what was typed: all that stands before the last "@" is hidden.
std::string maskPrinterUri(std::string_view uri);

/// A printers.conf file whose URIs are masked, which says the same of every queue.
std::string maskPrintersConf(std::string_view text);

/// What a printer's PPD file says of its driver.
struct PpdFacts {
    std::string nickName, fileVersion;
    std::string filter; // the program that prints, a path or a name
};

/// True of a line that parsePpd() looks at.
bool isPpdFactLine(std::string_view line);
PpdFacts parsePpd(const std::vector<std::string>& lines);
} // namespace host
