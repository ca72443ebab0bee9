#pragma once

#include "codeset/tables/CodeSets.h"
#include "codeset/tables/IconvCodec.h"
#include "codeset/tables/TableImage.h"

/// Puts the arrays towards Unicode into the table, by the code set's family.
void addForwardArrays(TableImage& table, Family family, IconvCodec& codec);
