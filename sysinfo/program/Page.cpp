// SPDX-License-Identifier: MIT
#include "sysinfo/program/Page.hpp"

#include "sysinfo/SystemValues/Sysctl.hpp"

#include <algorithm>
#include <array>
#include <sstream>
#include <utility>

namespace vantor::sysinfo {

using CpuDetect::CPUID;
using CpuDetect::HWInfo;
using SystemValues::Sysctl;

namespace {

template<class Cores>
CoreLevel levelOf() {
    return {Cores::physicalcpu(),  Cores::physicalcpu_max(), Cores::logicalcpu(),  Cores::logicalcpu_max(),
            Cores::l1icachesize(), Cores::l1dcachesize(),    Cores::l2cachesize(), Cores::cpusperl2()};
}

std::vector<CoreLevel> readLevels() {
    using Level = Sysctl::HW::PerflevelGeneralPurpose;
    const auto count = std::min<std::uint64_t>(Sysctl::HW::nperflevels().value_or(0), 255);
    std::vector<CoreLevel> levels;
    for (std::uint8_t index = 0; index < count; ++index) {
        Level::index = index;
        levels.push_back(levelOf<Level>());
    }
    Level::index = 0;
    return levels;
}

/// The last of "8 2 2 8": threads, and how many share a cache of the first level, the second and the third.
Count readThreadsPerL3() {
    std::istringstream words(Sysctl::HW::getString("cacheconfig").value_or(""));
    std::array<std::uint64_t, 4> counts{};
    for (std::uint64_t& count : counts) {
        words >> count;
    }
    return words && counts.back() != 0 ? Count(counts.back()) : std::nullopt;
}

/// What hypervisors call themselves, and what people call them.
Text hypervisorName() {
    constexpr std::array<std::pair<std::string_view, const char*>, 9> names{{{"KVMKVMKVM", "KVM"},
                                                                             {"TCGTCGTCGTCG", "QEMU"},
                                                                             {"VMwareVMware", "VMware"},
                                                                             {"VBoxVBoxVBox", "VirtualBox"},
                                                                             {"Microsoft Hv", "Hyper-V"},
                                                                             {"XenVMMXenVMM", "Xen"},
                                                                             {"bhyve bhyve", "bhyve"},
                                                                             {" lrpepyh  vr", "Parallels"},
                                                                             {"ACRNACRNACRN", "ACRN"}}};
    const Text own = CPUID::hypervisor();
    const auto found =
        std::ranges::find(names, own.value_or(""), [](const auto& each) { return each.first; });
    return own && found != names.end() ? Text(found->second) : own;
}

Text processorName() {
    Text name = Sysctl::Machdep::getString("cpu.brand_string");
    if (!name) {
        name = CPUID::brandString();
    }
    return name ? Text(name->substr(std::min(name->find_first_not_of(' '), name->size()))) : name;
}

void readProcessor(Page& page) {
    page.processor = processorName();
    page.family = CPUID::standard_family();
    page.number = CPUID::standard_model();
    page.stepping = CPUID::stepping();
    page.packages = Sysctl::HW::getInteger<std::uint64_t>("packages");
    page.cores = HWInfo::CPU::coresCount();
    page.coresInAll = Sysctl::HW::physicalcpu_max();
    page.threads = HWInfo::CPU::threadsCount();
    page.threadsInAll = Sysctl::HW::logicalcpu_max();
    page.threadSlots = Sysctl::HW::ncpu();
    page.frequency = Sysctl::HW::getInteger<std::uint64_t>("cpufrequency");
    page.is64Bit = HWInfo::CPU::is64Bit();
    page.levels = readLevels();
    page.l3 = Sysctl::HW::getInteger<std::uint64_t>("l3cachesize");
    page.threadsPerL3 = readThreadsPerL3();
}

void readSystem(Page& page) {
    page.system = Sysctl::Kern::getString("osproductname");
    page.systemType = Sysctl::Kern::ostype();
    page.release = Sysctl::Kern::osrelease();
    page.version = Sysctl::Kern::version();
    page.productVersion = Sysctl::Kern::osproductversion();
    page.build = Sysctl::Kern::osrevision();
    page.releaseType = Sysctl::Kern::osreleasetype();
}

} // namespace

Page Page::read(bool asksGpu) {
    Page page;
    page.hostname = Sysctl::Kern::hostname();
    page.model = Sysctl::HW::getString("model");
    page.architecture = Sysctl::HW::machine();
    page.hypervisor = hypervisorName();
    page.uptime = Sysctl::Kern::getInteger<std::uint64_t>("uptime");
    readSystem(page);
    readProcessor(page);
    page.memory = Sysctl::HW::getInteger<std::uint64_t>("memsize"); // more than 4 GiB on 32-bit machines too
    page.swap = Sysctl::VM::getInteger<std::uint64_t>("swap_total");
    page.pageSize = Sysctl::HW::pagesize();
    page.gpuAsked = asksGpu;
    if (asksGpu) {
        page.gpu = CpuDetect::GPUDetection::systemDefault();
    }
    return page;
}

} // namespace vantor::sysinfo
