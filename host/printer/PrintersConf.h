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

/// What a printer's PPD file says of its driver.
struct PpdFacts {
    std::string nickName, fileVersion;
    std::string filter; // the program that prints, a path or a name
};

/// True of a line that parsePpd() looks at.
bool isPpdFactLine(std::string_view line);
PpdFacts parsePpd(const std::vector<std::string>& lines);
} // namespace host
