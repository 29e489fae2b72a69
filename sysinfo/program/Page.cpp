// SPDX-License-Identifier: MIT
#include "sysinfo/program/Report.hpp"

#include "sysinfo/SystemValues/Sysctl.hpp"

#include <algorithm>

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
    const auto count = std::min<PackagesBase::UInt>(Sysctl::HW::nperflevels().value_or(0), 255);
    std::vector<CoreLevel> levels;
    for (std::uint8_t index = 0; index < count; ++index) {
        Level::index = index;
        levels.push_back(levelOf<Level>());
    }
    Level::index = 0;
    return levels;
}

void readProcessor(Report& report, bool cpuid) {
    if (cpuid) {
        report.processor = CPUID::brandString();
        report.family = CPUID::standard_family();
        report.number = CPUID::standard_model();
        report.stepping = CPUID::stepping();
    }
    report.cores = HWInfo::CPU::coresCount();
    report.coresInAll = Sysctl::HW::physicalcpu_max();
    report.threads = HWInfo::CPU::threadsCount();
    report.threadsInAll = Sysctl::HW::logicalcpu_max();
    report.threadSlots = Sysctl::HW::ncpu();
    report.is64Bit = HWInfo::CPU::is64Bit();
    report.levels = readLevels();
}

void readSystem(Report& report) {
    report.systemType = Sysctl::Kern::ostype();
    report.release = Sysctl::Kern::osrelease();
    report.version = Sysctl::Kern::version();
    report.productVersion = Sysctl::Kern::osproductversion();
    report.build = Sysctl::Kern::osrevision();
    report.releaseType = Sysctl::Kern::osreleasetype();
    report.bootArguments = Sysctl::Kern::bootargs();
}

} // namespace

Report Report::ofThisMachine(const Choices& choices) {
    Report report;
    report.hostname = Sysctl::Kern::hostname();
    report.model = Sysctl::HW::getString("model");
    report.architecture = Sysctl::HW::machine();
    readProcessor(report, choices.cpuid);
    report.memory = HWInfo::ramAmmount();
    report.pageSize = Sysctl::HW::pagesize();
    report.gpuAsked = choices.gpu;
    if (choices.gpu) {
        report.gpu = CpuDetect::GPUDetection::systemDefault();
    }
    readSystem(report);
    return report;
}

} // namespace vantor::sysinfo
