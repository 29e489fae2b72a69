// SPDX-License-Identifier: MIT
// What a program of one's own does with the libraries: read figures, conform to the protocols, add a
// namespace, detect with a cache, replay a recording. Ends with 0 where everything went as its checks say.
#include <vantor/CpuDetect/CpuDetect.hpp>
#include <vantor/PackagesBase/PackagesBase.hpp>
#include <vantor/SystemValues/SystemValues.hpp>

#include <iostream>

using namespace vantor;
using CpuDetect::HWInfo;
using SystemValues::Recording;
using SystemValues::Replay;
using SystemValues::Sysctl;

/// A temperature that stands for other values.
struct Celsius : PackagesBase::RepresentableMixin<Celsius> {
    double degrees;
    explicit Celsius(double value) : degrees(value) {}

    [[nodiscard]] std::optional<std::string> stringValue() const {
        return PackagesBase::stringValue(degrees).value() + " C";
    }
    [[nodiscard]] std::optional<bool> boolValue() const { return std::nullopt; }
    [[nodiscard]] std::optional<bool> cStyleBoolValue() const { return degrees != 0; }
    template<PackagesBase::FixedWidthInteger T>
    [[nodiscard]] std::optional<T> intValue() const {
        return PackagesBase::intValue<T>(degrees);
    }
    template<PackagesBase::BinaryFloatingPoint T>
    [[nodiscard]] std::optional<T> floatingPointValue() const {
        return static_cast<T>(degrees);
    }
    [[nodiscard]] Celsius copy() const { return Celsius(degrees); }
};
static_assert(PackagesBase::Representable<Celsius> && PackagesBase::Copying<Celsius>);

/// A part of the kernel's tree under a name of one's own.
struct RandomNumbers : SystemValues::SysctlFetchMixin<RandomNumbers> {
    static std::string namePrefix() { return "kernel.random."; }
};
static_assert(SystemValues::SysctlFetch<RandomNumbers>);

/// The same part as files.
struct RandomFiles : SystemValues::FileSystemFetchMixin<RandomFiles> {
    static std::string subfolder() { return "/proc/sys/kernel/random/"; }
};
static_assert(SystemValues::FileSystemFetch<RandomFiles>);

/// Memory, asked at most once a minute; a test would simulate it.
struct Memory : PackagesBase::SimulatableDetectableTemporizedMixin<Memory> {
    using T = std::uint64_t;
    static inline std::optional<T> simulatedStatus;
    static inline std::optional<T> cachedStatus;
    static inline std::chrono::system_clock::time_point lastStatusUpdate;
    static constexpr double statusRefreshInterval = 60;
    static T detectActualStatus() { return HWInfo::ramAmmount().value_or(0); }
};
static_assert(PackagesBase::SimulatableDetectableTemporized<Memory>);

/// The cores of each kind, the fastest first: "4 + 8".
std::string coresByKind() {
    using Level = Sysctl::HW::PerflevelGeneralPurpose;
    std::string text;
    for (unsigned level = 0; level < Sysctl::HW::nperflevels().value_or(0); ++level) {
        Level::index = static_cast<std::uint8_t>(level);
        text += (level > 0 ? " + " : "") + std::to_string(Level::physicalcpu().value_or(0));
    }
    return text;
}

/// Whether a recording of this machine, sent as text, answers as the machine does.
bool replaysItself() {
    const std::optional<std::string> host = Sysctl::Kern::hostname();
    std::string why;
    const auto received = Recording::fromText(Recording::ofThisMachine().text(), why);
    if (!received) {
        return false;
    }
    const Replay replay(*received);
    return Sysctl::Kern::hostname() == host && !Sysctl::VM::getString("a value that nobody recorded");
}

int main() {
    CpuDetect::GeneralPrinter::enabled = false;
    SystemValues::GeneralPrinter::enabled = false;

    std::cout << "machine   " << Sysctl::HW::machine().value_or("?") << '\n'
              << "processor " << Sysctl::Machdep::getString("cpu.brand_string").value_or("?") << '\n'
              << "cores     " << coresByKind() << '\n'
              << "threads   " << HWInfo::CPU::threadsCount().value_or(0) << '\n'
              << "memory    " << CpuDetect::byteSizeText(Memory::status()) << '\n'
              << "system    " << CpuDetect::UnameReimplemented::uname({}).value_or("?") << '\n'
              << "pool      " << RandomNumbers::getInteger<int>("poolsize").value_or(0) << " bits\n"
              << "21.5 is   " << Celsius(21.5).int64Value().value() << '\n';

    const bool sameFromFiles = RandomNumbers::getString("poolsize") == RandomFiles::getString("poolsize");
    Memory::simulatedStatus = 1024;
    const bool simulated = Memory::status() == 1024;
    return sameFromFiles && simulated && replaysItself() && Sysctl::HW::machine() &&
                   Celsius(21.5).int64Value() == 22
               ? 0
               : 1;
}
