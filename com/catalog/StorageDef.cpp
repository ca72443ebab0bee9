#include "com/VexAttribIds.h"
#include "com/VexCatalog.h"
#include "com/VexEnumValues.h"
#include "com/catalog/CatalogCheck.h"

// clang-format off
// Media kinds. There is no 0x44, and the removable Winchester disk keeps its trailing blank.
constexpr vexEnumDef STORAGE_TYPE_ENUM_DEF[] = {
    {STORAGE_TYPE_UNKNOWN,         "Unknown"},
    {0x02,                         "Other"},
    {STORAGE_TYPE_TAPE_CARTRIDGE,  "Tape Cartridge"},
    {0x04,                         "QIC Cartridge"},
    {0x05,                         "AIT Cartridge"},
    {0x06,                         "DTF Cartridge"},
    {0x07,                         "DAT Cartridge"},
    {0x08,                         "8mm Tape Cartridge"},
    {0x09,                         "19mm Tape Cartridge"},
    {0x0A,                         "DLT Cartridge"},
    {0x0B,                         "Half-Inch Magnetic Tape Cartridge"},
    {0x0C,                         "Cartridge Disk"},
    {0x0D,                         "JAZ Disk"},
    {0x0E,                         "ZIP Disk"},
    {0x0F,                         "SyQuest Disk"},
    {0x10,                         "Winchester Removable Disk "},
    {STORAGE_TYPE_CD_ROM,          "CD-ROM"},
    {0x12,                         "CD-ROM/XA"},
    {0x13,                         "CD-I"},
    {0x14,                         "CD Recordable"},
    {0x15,                         "WORM"},
    {STORAGE_TYPE_MAGNETO_OPTICAL, "Magneto-Optical"},
    {0x17,                         "DVD"},
    {0x18,                         "DVD-RW+"},
    {0x19,                         "DVD-RAM"},
    {0x1A,                         "DVD-ROM"},
    {0x1B,                         "DVD-Video"},
    {0x1C,                         "Divx"},
    {STORAGE_TYPE_FLOPPY,          "Floppy/Diskette"},
    {STORAGE_TYPE_HARD_DISK,       "Hard Disk"},
    {0x1F,                         "Memory Card"},
    {0x20,                         "Hard Copy"},
    {0x21,                         "Clik Disk"},
    {0x22,                         "CD-RW"},
    {0x23,                         "CD-DA"},
    {0x24,                         "CD+"},
    {0x25,                         "DVD Recordable"},
    {0x26,                         "DVD-RW"},
    {0x27,                         "DVD-Audio"},
    {0x28,                         "DVD-5"},
    {0x29,                         "DVD-9"},
    {0x2A,                         "DVD-10"},
    {0x2B,                         "DVD-18"},
    {0x2C,                         "Magneto-Optical Rewriteable"},
    {0x2D,                         "Magneto-Optical Write Once"},
    {0x2E,                         "Magneto-Optical Rewriteable (LIMDOW)"},
    {0x2F,                         "Phase Change Write Once"},
    {0x30,                         "Phase Change Rewriteable"},
    {0x31,                         "Phase Change Dual Rewriteable"},
    {0x32,                         "Ablative Write Once"},
    {0x33,                         "Near Field Recording"},
    {0x34,                         "MiniQic"},
    {0x35,                         "Travan"},
    {0x36,                         "8mm Metal Particle"},
    {0x37,                         "8mm Advanced Metal Evaporate"},
    {0x38,                         "NCTP"},
    {0x39,                         "LTO Ultrium"},
    {0x3A,                         "LTO Accelis"},
    {0x3B,                         "9 Track Tape"},
    {0x3C,                         "18 Track Tape"},
    {0x3D,                         "36 Track Tape"},
    {0x3E,                         "Magstar 3590"},
    {0x3F,                         "Magstar MP"},
    {0x40,                         "D2 Tape"},
    {0x41,                         "Tape - DST Small"},
    {0x42,                         "Tape - DST Medium"},
    {0x43,                         "Tape - DST Large"},
    {0x45,                         "Direct Access Storage Device"},
    {VEX_END,                      nullptr},
};

constexpr vexEnumDef STORAGE_SECURITY_ENABLED_ENUM_DEF[] = {
    {STORAGE_SECURITY_YES,         "Yes"},
    {STORAGE_SECURITY_NO,          "No"},
    {STORAGE_SECURITY_UNSUPPORTED, "Unsupported"},
    {VEX_END,                      nullptr},
};

constexpr vexAttribDef STORAGE_ATTRS_DEF[] = {
    // id                      name                type        max  enumeration
    {STORAGE_INDEX,            "Index",            VEX_ULONG,  0,   nullptr},
    {STORAGE_ID,               "ID",               VEX_STRING, 32,  nullptr},
    {STORAGE_TYPE,             "Type",             VEX_ULONG,  0,   STORAGE_TYPE_ENUM_DEF},
    {STORAGE_MODEL,            "Model",            VEX_STRING, 255, nullptr},
    {STORAGE_MANUFACTURER,     "Manufacturer",     VEX_STRING, 128, nullptr},
    {STORAGE_SERIAL_NUMBER,    "Serial Number",    VEX_STRING, 64,  nullptr},
    {STORAGE_CYLINDERS,        "Cylinders",        VEX_ULONG,  0,   nullptr},
    {STORAGE_SECTORS,          "Sectors",          VEX_ULONG,  0,   nullptr},
    {STORAGE_HEADS,            "Heads",            VEX_ULONG,  0,   nullptr},
    {STORAGE_TOTAL_SIZE,       "Total Size",       VEX_ULONG,  0,   nullptr},
    {STORAGE_SECURITY_ENABLED, "Security Enabled", VEX_ULONG,  0,   STORAGE_SECURITY_ENABLED_ENUM_DEF},
    {VEX_END,                  nullptr,            0,          0,   nullptr},
};

constexpr uint32_t STORAGE_KEYS_DEF[] = {STORAGE_INDEX, STORAGE_ID};
// clang-format on

static_assert(isAscending(STORAGE_TYPE_ENUM_DEF), "type values: bad row");
static_assert(isAscending(STORAGE_SECURITY_ENABLED_ENUM_DEF), "security enabled values: bad row");
static_assert(isWellFormed(STORAGE_ATTRS_DEF), "Storage attributes: bad row");
static_assert(areKeysOf(STORAGE_KEYS_DEF, STORAGE_ATTRS_DEF), "Storage: key without attribute");
