#include "tool/Commands.h"

#include "host/Scan.h"

namespace tool
{
void printVersion(std::ostream& out)
{
    out << host::kProgram << "\nbuilt with " << INVHW_LIBRARIES << '\n';
}
} // namespace tool
