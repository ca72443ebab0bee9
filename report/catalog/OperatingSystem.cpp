#include "report/catalog/Groups.h"
#include "report/catalog/Table.h"

namespace report
{
namespace
{
// clang-format off
constexpr AttributeDef kAttributes[] = {
    known(OPERATING_SYSTEM_NAME, PLAIN, "", "`/etc/os-release` (else `/usr/lib/os-release`), PRETTY_NAME; else NAME"),
    known(OPERATING_SYSTEM_TYPE, PLAIN, "", "LINUX; Linux PPC on POWER"),
    known(OPERATING_SYSTEM_MAJOR_VERSION, PLAIN, "", "kernel release, before the first dot"),
    known(OPERATING_SYSTEM_MINOR_VERSION, PLAIN, "", "kernel release, between the first two dots"),
    known(OPERATING_SYSTEM_SUB_VERSION, PLAIN, "", "kernel release, after the second dot"),
    known(OPERATING_SYSTEM_INSTALL_DATE, PLAIN, "", "birth time (`statx`) of `/`; else of `/etc/machine-id`"),
    known(OPERATING_SYSTEM_REGISTERED_ORGANIZATION, PLAIN, "", "not produced by invhwctl"),
    known(OPERATING_SYSTEM_REGISTERED_OWNER, PLAIN, "", "not produced by invhwctl"),
    known(OPERATING_SYSTEM_PRODUCT_ID, PLAIN, "", "`/etc/os-release` (else `/usr/lib/os-release`), ID and VERSION_ID: \"debian 12\""),
    known(OPERATING_SYSTEM_ARCH, PLAIN, "", "`uname` machine"),
    known(OPERATING_SYSTEM_KERNEL_MODE, PLAIN, "", "`/sys/kernel/address_bits`; else from `uname` machine"),
    known(OPERATING_SYSTEM_DESCRIPTION, PLAIN, "", "as Name"),
    known(OPERATING_SYSTEM_LANGUAGE_VERSION, PLAIN, "", "`/etc/locale.conf` (else `/etc/default/locale`), LC_ALL or LANG"),
    known(OPERATING_SYSTEM_LOCALE_ID, PLAIN, "", "`/etc/locale.conf` (else `/etc/default/locale`), LC_ALL or LANG"),
    known(OPERATING_SYSTEM_MESSAGES_LOCALE, PLAIN, "", "`/etc/locale.conf` (else `/etc/default/locale`), LC_ALL, LC_MESSAGES or LANG"),
    known(OPERATING_SYSTEM_LAST_BOOT_UP_TIME, VOLATILE, "", "`/proc/stat`, \"btime\""),
    text(OPERATING_SYSTEM_DISTRIBUTION_ID, "Distribution ID", 64, PLAIN, "`/etc/os-release` (else `/usr/lib/os-release`), ID"),
    text(OPERATING_SYSTEM_VERSION_ID, "Version ID", 64, PLAIN, "`/etc/os-release` (else `/usr/lib/os-release`), VERSION_ID"),
    text(OPERATING_SYSTEM_PRETTY_NAME, "Pretty Name", 255, PLAIN, "`/etc/os-release` (else `/usr/lib/os-release`), PRETTY_NAME"),
    text(OPERATING_SYSTEM_KERNEL_RELEASE, "Kernel Release", 128, PLAIN, "`uname` release"),
    text(OPERATING_SYSTEM_KERNEL_VERSION, "Kernel Version", 255, PLAIN, "`uname` version"),
    text(OPERATING_SYSTEM_COMMAND_LINE, "Command Line", 4096, IDENTIFYING, "`/proc/cmdline`, secrets masked"),
    dateTime(OPERATING_SYSTEM_BOOT_TIME, "Boot Time", VOLATILE, "`/proc/stat`, \"btime\""),
    text(OPERATING_SYSTEM_MACHINE_ID, "Machine ID", 36, IDENTIFYING, "`/etc/machine-id`; else `/var/lib/dbus/machine-id`"),
    text(OPERATING_SYSTEM_VIRTUALIZATION, "Virtualization", 64, PLAIN, "CPUID, `/sys/hypervisor/type` or the firmware's names: the hypervisor, or None"),
    text(OPERATING_SYSTEM_CONTAINER, "Container", 64, PLAIN, "`/run/systemd/container`, `/proc/1/environ`, `/.dockerenv`, `/run/.containerenv`"),
    text(OPERATING_SYSTEM_INIT_SYSTEM, "Init System", 64, PLAIN, "`/run/systemd/system`; else `/proc/1/comm`"),
    text(OPERATING_SYSTEM_SECURITY_MODULE, "Security Module", 255, PLAIN, "`/sys/kernel/security/lsm`"),
    text(OPERATING_SYSTEM_LOCKDOWN, "Lockdown", 32, PLAIN, "`/sys/kernel/security/lockdown`, the word in brackets"),
    yesNo(OPERATING_SYSTEM_REBOOT_PENDING, "Reboot Pending", VOLATILE, "`/run/reboot-required` exists; of systems that have dpkg only"),
};
// clang-format on
static_assert(isWellFormed(kAttributes), "OperatingSystem: bad row");
} // namespace

constexpr GroupDef OPERATING_SYSTEM_GROUP = {
    .id = GROUP_OPERATING_SYSTEM,
    .name = nullptr,
    .attributes = kAttributes,
    .keys = {},
    .pairing = {},
    .version = 2,
    .source = "`/etc/os-release`, `/proc`, `/etc/machine-id`, CPUID",
};
} // namespace report
