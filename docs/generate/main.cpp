// Writes the documents that describe the report into a folder, or a sample report to standard output:
//
//   invhw_docs FOLDER      REPORT.md and invhw-report.xsd
//   invhw_docs --sample    every group, attribute and enumeration text once

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

int main(int argc, char** argv)
{
    if (argc != 2) {
        fprintf(stderr, "usage: invhw_docs FOLDER | --sample\n");
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
