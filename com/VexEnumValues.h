#pragma once

#include <cstdint>

// Values of enumerated attributes that collectors report or look at. The catalog's rows give each its text and use the
// same names; values that nothing on this platform produces stand there as numbers only.

/// "Family" of a processor.
enum ProcessorFamily : uint32_t {
    PROCESSOR_FAMILY_UNKNOWN = 2,
    PROCESSOR_FAMILY_8086 = 3,
    PROCESSOR_FAMILY_80486 = 6,
    PROCESSOR_FAMILY_80487 = 10,
    PROCESSOR_FAMILY_PENTIUM = 11,
    PROCESSOR_FAMILY_PENTIUM_PRO = 12,
    PROCESSOR_FAMILY_PENTIUM_II = 13,
    PROCESSOR_FAMILY_PENTIUM_MMX = 14,
    PROCESSOR_FAMILY_CELERON = 15,
    PROCESSOR_FAMILY_PENTIUM_II_XEON = 16,
    PROCESSOR_FAMILY_PENTIUM_III = 17,
    PROCESSOR_FAMILY_MEDIAGX = 20,
    PROCESSOR_FAMILY_6X86 = 21,
    PROCESSOR_FAMILY_GXM = 22,
    PROCESSOR_FAMILY_6X86MX = 23,
    PROCESSOR_FAMILY_K5 = 25,
    PROCESSOR_FAMILY_K6 = 26,
    PROCESSOR_FAMILY_K6_2 = 27,
    PROCESSOR_FAMILY_K6_3 = 28,
    PROCESSOR_FAMILY_K7 = 29,
    PROCESSOR_FAMILY_ATHLON_64 = 131,
    PROCESSOR_FAMILY_OPTERON = 132,
    PROCESSOR_FAMILY_PENTIUM_4 = 178,
    PROCESSOR_FAMILY_XEON = 179,
    PROCESSOR_FAMILY_PENTIUM_M = 185,
};

/// "Interface" of a processor: the last code that reports know.
enum ProcessorInterface : uint32_t {
    PROCESSOR_INTERFACE_SOCKET_940 = 17,
};

/// "Type" of an operating system.
enum OperatingSystemType : uint32_t {
    OPERATING_SYSTEM_TYPE_LINUX = 37,
    OPERATING_SYSTEM_TYPE_LINUX_PPC = 67,
};

/// "Type" of a drive.
enum StorageType : uint32_t {
    STORAGE_TYPE_UNKNOWN = 0x01,
    STORAGE_TYPE_TAPE_CARTRIDGE = 0x03,
    STORAGE_TYPE_CD_ROM = 0x11,
    STORAGE_TYPE_MAGNETO_OPTICAL = 0x16,
    STORAGE_TYPE_FLOPPY = 0x1D,
    STORAGE_TYPE_HARD_DISK = 0x1E,
};

/// "Security Enabled" of a drive.
enum StorageSecurity : uint32_t {
    STORAGE_SECURITY_YES = 0,
    STORAGE_SECURITY_NO = 1,
    STORAGE_SECURITY_UNSUPPORTED = 2,
};

/// "Type" of a network adapter.
enum NetworkAdapterType : uint32_t {
    NETWORK_ADAPTER_TYPE_OTHER = 2,
    NETWORK_ADAPTER_TYPE_ETHERNET = 3,
    NETWORK_ADAPTER_TYPE_TOKEN_RING = 4,
    NETWORK_ADAPTER_TYPE_SLIP = 6,
    NETWORK_ADAPTER_TYPE_ESCON = 7,
    NETWORK_ADAPTER_TYPE_CTC = 8, // channel to channel
    NETWORK_ADAPTER_TYPE_IUCV = 9,
    NETWORK_ADAPTER_TYPE_PPP = 10,
};

/// "Time Zone Plus Minus".
enum RegionalSign : uint32_t {
    REGIONAL_PLUS = 1, // east of UTC, or UTC
    REGIONAL_MINUS = 2,
};

/// "Daylight": whether the time zone has a rule for summer.
enum RegionalDaylight : uint32_t {
    REGIONAL_DAYLIGHT_TRUE = 1,
    REGIONAL_DAYLIGHT_FALSE = 2,
};

/// "Enclosure Type": the first and the last that have a text.
enum EnclosureType : uint32_t {
    SMBIOS_ENCLOSURE_OTHER = 1,
    SMBIOS_ENCLOSURE_MULTI_SYSTEM = 25,
};

/// "PowerOn Password".
enum PowerOnPassword : uint32_t {
    SMBIOS_POWERON_PASSWORD_UNSUPPORTED = 2,
    SMBIOS_POWERON_PASSWORD_UNKNOWN = 3,
};

/// "Type" of a partition.
enum PartitionType : uint32_t {
    PARTITION_TYPE_LOGICAL_DRIVE = 1,
    PARTITION_TYPE_REMOTE_DRIVE = 2,
};

/// "Media Type" of a partition.
enum PartitionMediaType : uint32_t {
    PARTITION_MEDIA_UNKNOWN = 0,
    PARTITION_MEDIA_REMOVABLE_DISK = 2,
    PARTITION_MEDIA_LOCAL_DISK = 3,
    PARTITION_MEDIA_REMOTE_DRIVE = 4,
    PARTITION_MEDIA_CDROM = 5,
};

/// "FS Type" of a partition.
enum FileSystemType : uint32_t {
    PARTITION_FS_TYPE_NTFS = 0x07, // and HPFS
    PARTITION_FS_TYPE_FAT32 = 0x0B,
    PARTITION_FS_TYPE_FAT16 = 0x0E,
    PARTITION_FS_TYPE_VERITAS = 0x42,
    PARTITION_FS_TYPE_SYSTEM_V = 0x63,
    PARTITION_FS_TYPE_LINUX_SWAP = 0x82,
    PARTITION_FS_TYPE_LINUX_NATIVE = 0x83,
    PARTITION_FS_TYPE_JFS = 0x102,
    PARTITION_FS_TYPE_NFS = 0x104,
    PARTITION_FS_TYPE_AFS = 0x105,
    PARTITION_FS_TYPE_UFS = 0x106,
    PARTITION_FS_TYPE_CDROM = 0x108,
    PARTITION_FS_TYPE_TMPFS = 0x10B,
    PARTITION_FS_TYPE_REISERFS = 0x118,
    PARTITION_FS_TYPE_SUBMOUNT = 0x119,
    PARTITION_FS_TYPE_SAMBA = 0x11A,
    PARTITION_FS_TYPE_UNKNOWN = 0xFFFF,
};
