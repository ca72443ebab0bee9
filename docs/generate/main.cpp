// Writes the documents that describe the report into a folder, or a sample report to standard output, or compares
// reports with the documents:
//
//   invhw_docs FOLDER              REPORT.md and invhw-report.xsd
//   invhw_docs --sample            every group, attribute and enumeration text once
//   invhw_docs --empty REPORT...   fails when an element is empty that is not said to be

#include "docs/generate/AttribSources.h"
#include "docs/generate/Documents.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <string>

static bool writeDocument(const std::string& path, void (*write)(std::ostream&))
{
    std::ofstream file(path, std::ios::binary);
    write(file);
    file.close();
    if (file.fail())
        fprintf(stderr, "%s cannot be written\n", path.c_str());
    return !file.fail();
}

static bool allEmptyElementsAreTold(char** reports)
{
    bool told = true;
    for (; *reports != nullptr; ++reports)
        told = emptyElementsAreTold(*reports) && told;
    return told;
}

int main(int argc, char** argv)
{
    if (argc > 2 && strcmp(argv[1], "--empty") == 0)
        return allEmptyElementsAreTold(argv + 2) ? 0 : 1;
    if (argc != 2) {
        fprintf(stderr, "usage: invhw_docs FOLDER | --sample | --empty REPORT...\n");
        return 2;
    }
    if (strcmp(argv[1], "--sample") == 0) {
        setenv("KST_CODESET", "UTF-8", 1); // needs no table file
        writeSampleReport();
        return 0;
    }
    if (!sourcesAreComplete()) {
        fprintf(stderr, "the table of sources and the catalog differ\n");
        return 1;
    }
    const std::string folder = argv[1];
    const bool written = writeDocument(folder + "/REPORT.md", writeReportDoc) &&
                         writeDocument(folder + "/invhw-report.xsd", writeSchema);
    return written ? 0 : 1;
}
