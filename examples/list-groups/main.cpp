// Collects every group through the provider and prints its name and how its first row begins.

#include <cstdio>

#include "com/VexUtil.h"
#include "linux/InvVexProv.h"

static void printFirstRow(VexTable* table)
{
    VexTableRow* row = table->getNext();
    if (row == nullptr) {
        printf("  no rows\n");
        return;
    }
    const vexGroupDef* group = table->getGroupDefinitionFromId();
    while (VexTableAttrib* attrib = row->getNext()) {
        printf("  %-24s ", getAttribNameFromId(group, attrib->getId()));
        PrintVexAttribValueToFile(stdout, attrib->getAttribPtr());
        printf("\n");
    }
}

int main()
{
    vexInit(0, 0, nullptr);
    uint32_t* groups = vexGetSupportedTables();
    for (const uint32_t* group = groups; *group != VEX_END; ++group) {
        printf("%s\n", getGroupNameFromId(*group));
        VexTable* table = vexGetTable(*group);
        if (table != nullptr)
            printFirstRow(table);
        else
            printf("  nothing to report\n");
        vexFreeTable(table);
    }
    vexFreeSupportedTables(groups);
    vexTerm();
    return 0;
}
