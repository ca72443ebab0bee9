#include "host/system/Virtualization.h"

#include <algorithm>
#include <cstring>

#include "host/Kernel.h"
#include "host/Root.h"
#include "host/processor/CpuInfo.h"
#include "report/Text.h"

namespace host
{
namespace
{
struct Name {
    std::string_view sign; // what the source says
    const char* name;
};

// Hypervisor leaf of CPUID: 12 characters.
constexpr uint32_t kFeatureLeaf = 1, kHypervisorLeaf = 0x40000000;
constexpr uint32_t kHypervisorBit = 1U << 31; // of ECX
constexpr Name kCpuidNames[] = {
    {"KVMKVMKVM", "KVM"},       {"Linux KVM Hv", "KVM"},       {"Microsoft Hv", "Hyper-V"},
    {"VMwareVMware", "VMware"}, {"XenVMMXenVMM", "Xen"},       {"TCGTCGTCGTCG", "QEMU"},
    {"bhyve bhyve ", "bhyve"},  {"prl hyperv  ", "Parallels"}, {"VBoxVBoxVBox", "VirtualBox"},
    {"ACRNACRNACRN", "ACRN"},   {"QNXQVMBSQG", "QNX"},         {"SRESRESRESRE", "SRE"},
};

// Beginnings of what the firmware names, in lower case.
constexpr Name kFirmwareNames[] = {
    {"qemu", "QEMU"},
    {"kvm", "KVM"},
    {"vmware", "VMware"},
    {"innotek gmbh", "VirtualBox"},
    {"virtualbox", "VirtualBox"},
    {"xen", "Xen"},
    {"bochs", "Bochs"},
    {"parallels", "Parallels"},
    {"bhyve", "bhyve"},
    {"amazon ec2", "Amazon EC2"},
    {"google compute engine", "Google Compute Engine"},
    {"hyper-v", "Hyper-V"},
    {"virtual machine", "Hyper-V"},
    {"openstack", "KVM"},
    {"rhev hypervisor", "KVM"},
    {"apple virtualization", "Apple Virtualization"},
};

// The leaf's name stands in EBX, ECX, EDX, padded with zeros.
std::string leafName(const CpuidLeaf& leaf)
{
    char bytes[12];
    memcpy(bytes, &leaf[1], sizeof bytes);
    return {bytes, strnlen(bytes, sizeof bytes)};
}

MaybeFact hypervisorOfCpuid(const Kernel& kernel)
{
    const std::optional<CpuidLeaf> features = kernel.cpuid(kFeatureLeaf, 0);
    if (!features || ((*features)[2] & kHypervisorBit) == 0)
        return std::nullopt;
    const std::optional<CpuidLeaf> leaf = kernel.cpuid(kHypervisorLeaf, 0);
    const std::string found = leaf ? leafName(*leaf) : "";
    for (const Name& name : kCpuidNames)
        if (found == name.sign)
            return Fact{name.name, "CPUID"};
    return Fact{"Other", "CPUID"};
}

// /sys/hypervisor: Xen, whose first domain has the hardware.
MaybeFact hypervisorOfKernel(const Root& root)
{
    const MaybeFact type = root.fact("/sys/hypervisor/type");
    if (!type || type->value != "xen")
        return std::nullopt;
    if (root.line("/proc/xen/capabilities").value_or("").find("control_d") != std::string::npos)
        return std::nullopt;
    return Fact{"Xen", type->source};
}

MaybeFact hypervisorOfFirmware(const Root& root)
{
    for (const char* path : {"/sys/class/dmi/id/product_name", "/sys/class/dmi/id/sys_vendor",
                             "/sys/class/dmi/id/board_vendor", "/sys/class/dmi/id/bios_vendor"}) {
        const std::string text = report::lower(root.line(path).value_or(""));
        for (const Name& name : kFirmwareNames)
            if (text.starts_with(name.sign))
                return Fact{name.name, path};
    }
    return std::nullopt;
}

// Whether the processors' flags name a hypervisor, all have the same; absent where no processor can be read.
std::optional<bool> hasHypervisorFlag(const Root& root)
{
    const std::string text = root.read(kCpuinfoPath, kMostCpuinfo).value_or("");
    std::string_view rest = text;
    std::string_view line;
    bool isProcessorSeen = false;
    while (report::takeLine(rest, line)) {
        const auto [key, value] = report::keyValue(line, ':');
        isProcessorSeen = isProcessorSeen || (key == "processor" && !value.empty());
        if (key != "flags")
            continue;
        const std::vector<std::string_view> flags = report::words(value);
        return std::find(flags.begin(), flags.end(), "hypervisor") != flags.end();
    }
    return isProcessorSeen ? std::optional(false) : std::nullopt;
}

// The flag of /proc/cpuinfo, and where a device tree names the hypervisor.
MaybeFact hypervisorOfFlags(const Root& root)
{
    if (const std::optional<std::string> text = root.read("/sys/firmware/devicetree/base/hypervisor/compatible"))
        return Fact{text->starts_with("linux,kvm") ? "KVM"
                    : text->starts_with("xen")     ? "Xen"
                                                   : "Other",
                    "/sys/firmware/devicetree/base/hypervisor/compatible"};
    if (hasHypervisorFlag(root).value_or(false))
        return Fact{"Other", std::string(kCpuinfoPath)};
    return std::nullopt;
}

// "container=lxc" in the environment of the first process, whose values end with zero bytes.
MaybeFact containerOfInit(const Root& root)
{
    constexpr const char* kEnvironment = "/proc/1/environ";
    constexpr std::string_view kName = "container=";
    const std::string environment = root.read(kEnvironment).value_or("");
    for (const std::string_view variable : report::split(environment, '\0'))
        if (variable.starts_with(kName) && variable.size() > kName.size())
            return Fact{std::string(variable.substr(kName.size())), kEnvironment};
    return std::nullopt;
}
} // namespace

MaybeFact hypervisorOf(const Machine& machine)
{
    MaybeFact fact = hypervisorOfCpuid(machine.kernel);
    if (fact && fact->value != "Other" && fact->value != "Hyper-V")
        return fact;
    if (MaybeFact kernel = hypervisorOfKernel(machine.root))
        return kernel;
    // Other hypervisors show Hyper-V's leaf too; the firmware knows better.
    if (MaybeFact firmware = hypervisorOfFirmware(machine.root))
        return firmware;
    return fact ? fact : hypervisorOfFlags(machine.root);
}

MaybeFact virtualizationOf(const Machine& machine)
{
    if (MaybeFact hypervisor = hypervisorOf(machine))
        return hypervisor;
    if (hasHypervisorFlag(machine.root))
        return Fact{"None", std::string(kCpuinfoPath)};
    return std::nullopt;
}

MaybeFact containerOf(const Machine& machine)
{
    if (MaybeFact fact = machine.root.fact("/run/systemd/container"))
        return fact;
    if (MaybeFact fact = containerOfInit(machine.root))
        return fact;
    if (machine.root.exists("/.dockerenv"))
        return Fact{"docker", "/.dockerenv"};
    if (machine.root.exists("/run/.containerenv"))
        return Fact{"podman", "/run/.containerenv"};
    return std::nullopt;
}
} // namespace host
