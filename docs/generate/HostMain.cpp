// Writes the documents that describe invhwctl's reports into a folder where invhw_docs wrote its own before, or a
// sample report to standard output:
//
//   invhw_host_docs FOLDER SOURCES     the second half of REPORT.md (behind the first), invhw-host.xsd and
//                                      invhw-report.schema.json; names of ids are read from the sources' headers
//   invhw_host_docs --sample xml|json  every group, attribute, word and enumeration text once

#include "docs/generate/HostDocuments.h"

#include <cstdio>
#include <cstring>
#include <fstream>
#include <iostream>
#include <string>

#include "report/Writer.h"

static bool isWritten(std::ofstream& file, const std::string& path)
{
    file.close();
    if (file.fail())
        fprintf(stderr, "%s cannot be written\n", path.c_str());
    return !file.fail();
}

static bool writeDocument(const std::string& path, void (*write)(std::ostream&))
{
    std::ofstream file(path, std::ios::binary);
    write(file);
    return isWritten(file, path);
}

static bool appendHostDoc(const std::string& path, const IdNames& names)
{
    std::ofstream file(path, std::ios::binary | std::ios::app);
    const bool named = writeHostDoc(file, names);
    if (!named)
        fprintf(stderr, "an attribute's id has no name in the headers given\n");
    return isWritten(file, path) && named;
}

static int writeSample(const char* form)
{
    const report::Report sample = hostSample();
    report::XmlWriter xml(std::cout, true);
    report::JsonWriter json(std::cout, true);
    if (strcmp(form, "json") == 0)
        report::write(sample, json);
    else
        report::write(sample, xml);
    return std::cout.flush() ? 0 : 1;
}

static bool readIdNames(const std::string& sources, IdNames* names)
{
    for (const char* header : {"/com/VexAttribIds.h", "/report/catalog/AttributeIds.h"})
        if (!names->read(sources + header)) {
            fprintf(stderr, "%s%s cannot be read\n", sources.c_str(), header);
            return false;
        }
    return true;
}

static bool writeDocuments(const std::string& folder, const IdNames& names)
{
    return appendHostDoc(folder + "/REPORT.md", names) && writeDocument(folder + "/invhw-host.xsd", writeHostSchema) &&
           writeDocument(folder + "/invhw-report.schema.json", writeJsonSchema);
}

int main(int argc, char** argv)
{
    if (argc == 3 && strcmp(argv[1], "--sample") == 0)
        return writeSample(argv[2]);
    if (argc != 3) {
        fprintf(stderr, "usage: invhw_host_docs FOLDER SOURCES | --sample xml|json\n");
        return 2;
    }
    IdNames names;
    return readIdNames(argv[2], &names) && writeDocuments(argv[1], names) ? 0 : 1;
}
