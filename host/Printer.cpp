// Printer: a row a queue of CUPS. The file with the queues has passwords in it, so that root alone may read it.

#include "host/Collectors.h"
#include "host/Digest.h"
#include "host/Root.h"
#include "host/printer/PrintersConf.h"
#include "report/catalog/AttributeIds.h"

namespace host
{
namespace
{
constexpr const char* kQueues = "/etc/cups/printers.conf";

// Filters are named within the server's folder, which distributions have in different places.
std::string filterPath(const Root& root, const std::string& filter)
{
    if (filter.empty() || filter.starts_with('/'))
        return filter;
    for (const char* folder : {"/usr/lib/cups/filter/", "/usr/libexec/cups/filter/"})
        if (root.exists(folder + filter))
            return folder + filter;
    return filter;
}

// A queue without a PPD file prints by what the printer says of itself. No name of a queue has a slash.
void addDriver(const Root& root, const PrintQueue& queue, RowBuilder& row)
{
    const std::string path = "/etc/cups/ppd/" + queue.name + ".ppd";
    const bool isName = queue.name.find('/') == std::string::npos;
    if (const auto lines = isName ? root.lines(path, isPpdFactLine) : std::nullopt) {
        const PpdFacts facts = parsePpd(*lines);
        row.text(PRINTER_DRIVER_NAME, facts.nickName, path);
        row.text(PRINTER_DRIVER_VERSION, facts.fileVersion, path);
        row.text(PRINTER_DRIVER_PATH, filterPath(root, facts.filter), path);
        row.text(PRINTER_DRIVER_DATA_FILE, path, path);
    }
    row.text(PRINTER_DRIVER_NAME, queue.makeModel, kQueues);
}

RowBuilder queueRow(const Root& root, const PrintQueue& queue)
{
    RowBuilder row(GROUP_PRINTER);
    const std::string uri = maskPrinterUri(queue.deviceUri);
    row.text(PRINTER_ID, md5(queue.name), "");
    row.text(PRINTER_NAME, queue.name, kQueues);
    row.text(PRINTER_PORT_NAME, uri, kQueues);
    row.text(PRINTER_DEVICE_URI, uri, kQueues);
    row.text(PRINTER_DESCRIPTION, queue.info, kQueues);
    row.text(PRINTER_IS_LOCAL, localityOf(queue.deviceUri), kQueues);
    row.text(PRINTER_LOCATION, queue.location, kQueues);
    row.yesNo(PRINTER_DEFAULT, queue.isDefault, kQueues);
    addDriver(root, queue, row);
    return row;
}
} // namespace

void collectPrinter(const Machine& machine, Collection& collection)
{
    uint64_t index = 0;
    for (const PrintQueue& queue : parsePrintersConf(machine.root.read(kQueues).value_or(""))) {
        RowBuilder row = queueRow(machine.root, queue);
        row.number(PRINTER_INDEX, ++index, kQueues);
        collection.add(std::move(row));
    }
}
} // namespace host
