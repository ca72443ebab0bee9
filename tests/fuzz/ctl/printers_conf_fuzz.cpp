// Any text as printers.conf and as a PPD file: no crash, every queue has a name and no line's end in what it says, and
// the user part of a URI is hidden whatever follows it.

#include <cstdint>
#include <cstdlib>

#include "host/printer/PrintersConf.h"
#include "host/text/Secrets.h"
#include "report/Text.h"

static void require(bool isTrue)
{
    if (!isTrue)
        abort();
}

static void checkText(const std::string& text, size_t most)
{
    require(text.size() <= most && text.find('\n') == std::string::npos);
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    for (const host::PrintQueue& queue : host::parsePrintersConf(text)) {
        require(!queue.name.empty());
        for (const std::string* one : {&queue.name, &queue.info, &queue.location, &queue.makeModel, &queue.deviceUri})
            checkText(*one, size);
        const std::string_view locality = host::localityOf(queue.deviceUri);
        require(locality.empty() || locality == "Y" || locality == "N");
        require(host::maskCommandLine("ipp://ada:geheim@" + queue.deviceUri).find("geheim") == std::string::npos ||
                queue.deviceUri.find("geheim") != std::string::npos);
    }
    std::vector<std::string> lines;
    std::string_view rest = text;
    std::string_view line;
    while (report::takeLine(rest, line))
        if (host::isPpdFactLine(line))
            lines.emplace_back(line);
    const host::PpdFacts facts = host::parsePpd(lines);
    for (const std::string* one : {&facts.nickName, &facts.fileVersion, &facts.filter})
        checkText(*one, size);
    return 0;
}
