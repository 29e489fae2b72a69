// SPDX-License-Identifier: MIT
// One small type for every protocol that a program of one's own can conform to. Whoever writes one copies its
// type from here; the compiler names what is missing.
#include <vantor/CpuDetect/CpuDetect.hpp>
#include <vantor/PackagesBase/PackagesBase.hpp>
#include <vantor/SystemValues/SystemValues.hpp>

#include <iostream>

using namespace vantor;
using namespace vantor::PackagesBase;

/// A source of values, static and on values alike: it answers each name with its length.
struct Lengths : FetchProtocolDataBoolFromIntMixin<Lengths>,
                 FetchProtocolDataBoolFromIntInstanceMixin<Lengths> {
    static std::optional<std::string> getString(std::string_view name) { return std::string(name); }
    static std::optional<Data> getData(std::string_view name) { return Data(name.size()); }
    template<FixedWidthInteger T>
    static std::optional<T> getInteger(std::string_view name) {
        return intValue<T>(static_cast<double>(name.size()));
    }
    using FetchProtocolDataBoolFromIntMixin<Lengths>::getBool;
};
static_assert(FetchProtocol<Lengths> && FetchProtocolData<Lengths>);
static_assert(FetchProtocolBoolFromInt<Lengths> && FetchProtocolDataBoolFromInt<Lengths>);
static_assert(FetchProtocolInstance<Lengths> && FetchProtocolDataInstance<Lengths>);
static_assert(FetchProtocolBoolFromIntInstance<Lengths> && FetchProtocolDataBoolFromIntInstance<Lengths>);

/// A ratio that stands for values of other types.
struct Ratio : RepresentableMixin<Ratio> {
    int over = 0;
    int under = 1;
    Ratio(int a, int b) : over(a), under(b) {}

    [[nodiscard]] std::optional<std::string> stringValue() const {
        return std::to_string(over) + ":" + std::to_string(under);
    }
    [[nodiscard]] std::optional<bool> boolValue() const { return PackagesBase::boolValue(value()); }
    [[nodiscard]] std::optional<bool> cStyleBoolValue() const { return over != 0; }
    template<FixedWidthInteger T>
    [[nodiscard]] std::optional<T> intValue() const {
        return PackagesBase::intValue<T>(value());
    }
    template<BinaryFloatingPoint T>
    [[nodiscard]] std::optional<T> floatingPointValue() const {
        return static_cast<T>(value());
    }
    [[nodiscard]] Ratio copy() const { return {over, under}; }

private:
    [[nodiscard]] double value() const { return static_cast<double>(over) / under; }
};
static_assert(StringRepresentable<Ratio> && BoolRepresentable<Ratio> && CBoolRepresentable<Ratio>);
static_assert(IntegerRepresentable<Ratio> && UnsignedIntegerRepresentable<Ratio> &&
              UInt64Representable<Ratio>);
static_assert(SignedIntegerRepresentable<Ratio> && Int64Representable<Ratio> && FloatRepresentable<Ratio>);
static_assert(FloatingPointRepresentable<Ratio> && DoubleRepresentable<Ratio> && Float16Representable<Ratio>);
static_assert(Float80Representable<Ratio> && Representable<Ratio> && Copying<std::map<std::string, Ratio>>);

/// Quantities that are detected on every read, once, and at most once in ten seconds.
struct Threads : SimulatableDetectableMixin<Threads> {
    using T = std::optional<UInt>;
    static inline std::optional<T> simulatedStatus;
    static T detectActualStatus() { return CpuDetect::HWInfo::CPU::threadsCount(); }
};
struct Host : SimulatableDetectableOneTimeMixin<Host>, DetectProtocolMixin<Host> {
    using T = Host;
    std::string name;
    static std::optional<T> simulatedStatus, cachedStatus;
    static T detectActualStatus();
};
std::optional<Host> Host::simulatedStatus, Host::cachedStatus;
Host Host::detectActualStatus() {
    Host host;
    host.name = SystemValues::Sysctl::Kern::hostname().value_or("");
    return host;
}
struct Memory : SimulatableDetectableTemporizedMixin<Memory> {
    using T = UInt;
    static inline std::optional<T> simulatedStatus, cachedStatus;
    static inline std::chrono::system_clock::time_point lastStatusUpdate;
    static constexpr double statusRefreshInterval = 10;
    static T detectActualStatus() { return CpuDetect::HWInfo::ramAmmount().value_or(0); }
};
static_assert(SimulatableDetectableBase<Threads> && SimulatableDetectable<Threads>);
static_assert(SimulatableDetectableOneTime<Host> && DetectProtocol<Host>);
static_assert(SimulatableDetectableTemporized<Memory>);

/// Parts of the kernel's tree by name: a plain one, one with processor figures, the third level of cores.
struct Files : SystemValues::SysctlFetchMixin<Files> {
    static std::string namePrefix() { return "fs."; }
};
struct Hardware : SystemValues::SysctlFetchMixin<Hardware>, SystemValues::SysctlCPUInfoMixin<Hardware> {
    static std::string namePrefix() { return "hw."; }
};
struct ThirdLevel : SystemValues::SysctlPerflevelMixin<ThirdLevel> {
    static constexpr std::uint8_t index = 2;
};
struct Processor : CpuDetect::CPUInfoMixin<Processor> {
    using Values = Hardware;
};
static_assert(SystemValues::SysctlFetch<Files> && SystemValues::SysctlCPUInfo<Hardware>);
static_assert(SystemValues::SysctlPerflevel<ThirdLevel> && CpuDetect::CPUInfo<Processor>);

/// Trees of files, static and as a value.
struct KernelFiles : SystemValues::FileSystemFetchMixin<KernelFiles> {
    static std::string subfolder() { return "/proc/sys/kernel/"; }
};
struct Tree : SystemValues::FileSystemFetchInstanceMixin<Tree> {
    std::string subfolder = "/proc/sys/";
};
static_assert(SystemValues::FileSystemFetch<KernelFiles> && SystemValues::FileSystemFetchInstance<Tree>);

int main() {
    CpuDetect::GeneralPrinter::enabled = false;
    SystemValues::GeneralPrinter::enabled = false;
    Threads::simulatedStatus = UInt{64};
    const bool right =
        Lengths::getBool("x") == true && Lengths().getBool("xx") == std::nullopt &&
        Ratio(5, 2).int64Value() == 3 && isBool(Ratio(4, 4)) && Threads::status() == UInt{64} &&
        Host::current()->name == KernelFiles::getString("hostname") &&
        Memory::status() == Memory::cachedStatus && ThirdLevel::namePrefix() == "hw.perflevel2." &&
        Processor::threadsCount() == Hardware::logicalcpu() &&
        Files::getString("file-max") == Tree().getString("fs.file-max");
    std::cout << (right ? "every protocol answers\n" : "a protocol gave a wrong answer\n");
    return right ? 0 : 1;
}
