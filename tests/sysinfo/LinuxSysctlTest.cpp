// SPDX-License-Identifier: MIT
#include "TestTree.hpp"
#include "platform/linux/sysctl/CpuNumbers.hpp"
#include "platform/linux/sysctl/KernelText.hpp"
#include "platform/linux/sysctl/LinuxSysctlSource.hpp"
#include "platform/linux/sysctl/ProcSysKey.hpp"
#include "platform/sysctl/sysctlbyname.hpp"

#include <gtest/gtest.h>

#include <cerrno>
#include <map>
#include <optional>
#include <utility>

namespace vantor::platform {
namespace {

using linux::sysctl::CpuNumbers;
using linux::sysctl::LinuxSysctlSource;
using tests::TestTree;
using Path = std::filesystem::path;

/// A machine of tests/linux/trees.
Path tree(const char* name) {
    return Path(VANTOR_TEST_DATA) / "../linux/trees" / name;
}

LinuxSysctlSource sourceOn(const Path& root, const std::string& machine) {
    return {root,
            {[machine] {
                 return linux::sysctl::SystemCalls::Names{"Linux", "n", "r", "v", machine};
             },
             [] { return std::uint64_t{16384}; }}};
}

using Numbers = std::map<std::string, std::optional<std::uint64_t>>;

void expectNumbers(LinuxSysctlSource& source, const Numbers& expected) {
    for (const auto& [key, number] : expected) {
        const SysctlAnswer answer = source.read(key);
        EXPECT_EQ(answer.error, number ? 0 : ENOENT) << key;
        EXPECT_EQ(answer.value.number, number.value_or(0)) << key;
    }
}

std::string textOf(LinuxSysctlSource& source, const std::string& key) {
    const SysctlAnswer answer = source.read(key);
    return answer.error == 0 ? answer.value.text : "error " + std::to_string(answer.error);
}

TEST(LinuxSysctl, HybridLaptop) {
    LinuxSysctlSource source = sourceOn(tree("laptop"), "x86_64");
    expectNumbers(source, {{"hw.ncpu", 16},
                           {"hw.logicalcpu", 8},
                           {"hw.logicalcpu_max", 8},
                           {"hw.physicalcpu", 6},
                           {"hw.nperflevels", 2},
                           {"hw.l1dcachesize", 48 << 10},
                           {"hw.l2cachesize", 1280 << 10},
                           {"hw.l3cachesize", 12 << 20},
                           {"hw.packages", 1},
                           {"hw.cpufrequency", 4'700'000'000},
                           {"hw.perflevel0.physicalcpu", 2},
                           {"hw.perflevel0.logicalcpu", 4},
                           {"hw.perflevel0.cpusperl2", 2},
                           {"hw.perflevel1.physicalcpu_max", 4},
                           {"hw.perflevel1.logicalcpu_max", 4},
                           {"hw.perflevel1.l1icachesize", 64 << 10},
                           {"hw.perflevel1.l2cachesize", 2 << 20},
                           {"hw.perflevel1.cpusperl2", 4},
                           {"hw.perflevel2.physicalcpu", std::nullopt},
                           {"hw.perflevel0.other", std::nullopt},
                           {"hw.perflevelx.physicalcpu", std::nullopt},
                           {"hw.perflevel0", std::nullopt},
                           {"hw.memsize", 16215908ULL * 1024},
                           {"hw.pagesize", 16384},
                           {"vm.swap_total", 12582904ULL * 1024},
                           {"kern.uptime", 93784},
                           {"hw.cputype", 7},
                           {"hw.cpusubtype", 8},
                           {"hw.cpufamily", 0},
                           {"hw.cpu64bit_capable", 1},
                           {"hw.cpusomething", std::nullopt}});
    EXPECT_EQ(textOf(source, "hw.machine"), "x86_64");
    EXPECT_EQ(textOf(source, "machdep.cpu.brand_string"), "12th Gen Intel(R) Core(TM) i5-1235U");
    EXPECT_EQ(textOf(source, "hw.cacheconfig"), "8 2 2 8");
    EXPECT_EQ(textOf(source, "hw.model"), "Laptop 14 Gen 3");
    EXPECT_EQ(textOf(source, "kern.osproductname"), "Debian GNU/Linux 12 (bookworm)");
    EXPECT_EQ(textOf(source, "kern.hostname"), "lap");
    EXPECT_EQ(textOf(source, "kern.version"), "#1 SMP PREEMPT_DYNAMIC Debian 6.1.76-1 (2024-02-01)");
    EXPECT_EQ(textOf(source, "kern.bootargs"), "BOOT_IMAGE=/vmlinuz root=/dev/sda1 ro quiet");
    EXPECT_EQ(textOf(source, "kern.osproductversion"), "12");
    EXPECT_EQ(source.read("kern.osreleasetype").error, ENOENT);
}

/// The levels of a phone, one core of each asleep, do not depend on how its kernel lists what sleeps.
TEST(LinuxSysctl, PhoneWithTwoLevels) {
    for (const char* layout : {"phone", "phone-6.8"}) {
        SCOPED_TRACE(layout);
        LinuxSysctlSource source = sourceOn(tree(layout), "aarch64");
        expectNumbers(source, {{"hw.ncpu", 8},
                               {"hw.activecpu", 6},
                               {"hw.physicalcpu", 6},
                               {"hw.physicalcpu_max", 8},
                               {"hw.nperflevels", 2},
                               {"hw.perflevel0.logicalcpu", 1},
                               {"hw.perflevel0.logicalcpu_max", 2},
                               {"hw.perflevel0.physicalcpu_max", 2},
                               {"hw.perflevel0.l1dcachesize", 64 << 10},
                               {"hw.perflevel1.physicalcpu", 5},
                               {"hw.perflevel1.physicalcpu_max", 6},
                               {"hw.perflevel1.l2cachesize", 128 << 10},
                               {"hw.cpufrequency", 2'803'200'000},
                               {"hw.cputype", 0x0100000C},
                               {"hw.cpusubtype", 1}});
        EXPECT_EQ(textOf(source, "hw.model"), "A Phone");
        EXPECT_EQ(textOf(source, "machdep.cpu.brand_string"), "Kryo 3xx Gold + Kryo 3xx Silver");
    }
    LinuxSysctlSource source = sourceOn(tree("phone"), "aarch64");
    EXPECT_EQ(textOf(source, "kern.osrevision"), "2024.05");
    EXPECT_EQ(textOf(source, "kern.osreleasetype"), "stable");
    EXPECT_EQ(textOf(source, "kern.ostype"), "Linux"); // no file: the system call's
}

TEST(LinuxSysctl, ServerWithTwoSockets) {
    const TestTree server;
    std::filesystem::copy(tree("two-sockets"), server.root(), std::filesystem::copy_options::recursive);
    LinuxSysctlSource source = sourceOn(server.root(), "x86_64");
    expectNumbers(source, {{"hw.ncpu", 16},
                           {"hw.logicalcpu_max", 8},
                           {"hw.physicalcpu", 4},
                           {"hw.nperflevels", 1},
                           {"hw.perflevel0.physicalcpu", 4},
                           {"hw.perflevel1.physicalcpu", std::nullopt},
                           {"hw.l2cachesize", 1 << 20},
                           {"hw.packages", 2},
                           {"hw.cpufrequency", 2'445'404'000}});
    server.write("sys/devices/system/cpu/online", "0-3\n"); // threads switched off are not cores asleep
    server.write("sys/devices/system/cpu/smt/control", "off\n");
    expectNumbers(source, {{"hw.physicalcpu", 4}, {"hw.physicalcpu_max", 4}, {"hw.logicalcpu", 4}});
}

TEST(LinuxSysctl, ContainerWithoutSys) {
    LinuxSysctlSource source = sourceOn(tree("container"), "x86_64");
    expectNumbers(source, {{"hw.ncpu", 2},
                           {"hw.logicalcpu", 2},
                           {"hw.physicalcpu", 1},
                           {"hw.nperflevels", 1},
                           {"hw.perflevel0.physicalcpu", 1},
                           {"hw.packages", 1},
                           {"hw.cpufrequency", std::nullopt},
                           {"hw.l2cachesize", std::nullopt},
                           {"hw.perflevel0.cpusperl2", std::nullopt},
                           {"hw.memsize", 2097152ULL * 1024},
                           {"hw.cpusubtype", 4},
                           {"hw.cpufamily", 0x10B282DC}});
    EXPECT_EQ(textOf(source, "kern.hostname"), "3f2a91c07be4");
    for (const char* key : {"hw.model", "hw.cacheconfig", "machdep.cpu.brand_string"}) {
        EXPECT_EQ(source.read(key).error, ENOENT) << key;
    }

    const TestTree empty;
    LinuxSysctlSource blind = sourceOn(empty.root(), "riscv64");
    expectNumbers(blind, {{"hw.ncpu", std::nullopt},
                          {"hw.physicalcpu", std::nullopt},
                          {"hw.nperflevels", std::nullopt},
                          {"hw.memsize", std::nullopt},
                          {"hw.cputype", std::nullopt},
                          {"hw.cpusubfamily", std::nullopt}});
}

TEST(LinuxSysctl, ProcessorNumbersOfOtherMachines) {
    const auto ofBlock = [](const char* machine, const char* cpuinfo) {
        const CpuNumbers found = CpuNumbers::from(machine, linux::sysctl::parseCpuinfo(cpuinfo));
        return std::vector<std::uint32_t>{found.type.value_or(0), found.subtype.value_or(0),
                                          found.family.value_or(0)};
    };
    using Three = std::vector<std::uint32_t>;
    EXPECT_EQ(ofBlock("aarch64", "Features\t: fp paca\nCPU implementer\t: 0x61\nCPU part\t: 0x023\n"),
              (Three{0x0100000C, 2, 0x1B588BB3}));
    EXPECT_EQ(ofBlock("armv7l", "CPU implementer\t: 0x41\n"), (Three{12, 9, 0}));
    EXPECT_EQ(ofBlock("ppc64", "cpu\t\t: PPC970FX, altivec supported\n"),
              (Three{0x01000012, 100, 0xED76D8AA}));
    EXPECT_EQ(ofBlock("ppc", "cpu\t\t: 7447A, altivec supported\n"), (Three{18, 11, 0x77C184AE}));
    EXPECT_EQ(ofBlock("i686", "vendor_id\t: GenuineIntel\nflags\t\t: fpu\n"), (Three{7, 3, 0}));
}

TEST(LinuxSysctl, EveryOtherKeyIsAFileBelowProcSys) {
    const TestTree files;
    files.write("proc/sys/vm/swappiness", "60\n");
    files.write("proc/sys/net/ipv4/conf/eth0.100/forwarding", "1\n");
    files.write("proc/secret", "no\n");
    LinuxSysctlSource source = sourceOn(files.root(), "x86_64");
    EXPECT_EQ(textOf(source, "vm.swappiness"), "60");
    EXPECT_EQ(textOf(source, "net.ipv4.conf.eth0/100.forwarding"), "1");
    EXPECT_EQ(textOf(source, "net/ipv4/conf/eth0.100/forwarding"), "1");
    for (const char* bad : {"", ".", "vm..swappiness", "vm.swappiness.deeper", ".//.secret",
                            "vm/../../secret", "/proc/secret", "vm.", "kern.boottime"}) {
        EXPECT_EQ(source.read(bad).error, ENOENT) << bad;
    }
    EXPECT_EQ(source.read("vm").error, EISDIR);

    using Keys = std::vector<std::string>;
    EXPECT_EQ(source.keys("vm"), (Keys{"vm.swap_total", "vm.swappiness"}));
    EXPECT_EQ(source.keys("net.ipv4"), (Keys{"net.ipv4.conf.eth0/100.forwarding"}));
    EXPECT_EQ(source.keys("vm.swappiness"), (Keys{"vm.swappiness"}));
    for (const char* none : {"v", "vm.swap", "../..", "vm/../..", "/"}) {
        EXPECT_EQ(source.keys(none), Keys()) << none;
    }
    EXPECT_EQ(sourceOn(tree("phone"), "aarch64").keys("hw.perflevel1").size(), 8U);
}

struct FixedSource : SysctlSource {
    SysctlAnswer value;
    SysctlAnswer read(std::string_view) override { return value; }
};

/// The number as a T, or the error of the call. The bytes around it must stay as they were.
template<class T>
std::pair<std::optional<T>, int> numberOf(const SysctlAnswer& value) {
    FixedSource source;
    source.value = value;
    const Current<SysctlSource> scope(source);
    std::array<T, 3> buffer{1, 1, 1};
    std::size_t length = sizeof(T);
    if (sysctlbyname("key", &buffer[1], &length, nullptr, 0) != 0) {
        EXPECT_EQ(buffer, (std::array<T, 3>{1, 1, 1}));
        return {std::nullopt, errno};
    }
    EXPECT_EQ(length, sizeof(T));
    EXPECT_EQ(buffer, (std::array<T, 3>{1, buffer[1], 1}));
    return {buffer[1], 0};
}

/// On machines of either order of bytes and of any word size.
TEST(Sysctlbyname, GivesANumberInEveryWidthThatHoldsIt) {
    const auto inFile = [](const char* text) { return linux::sysctl::procSysValue(text); };
    for (const SysctlValue& two : {SysctlValue::of4(200), SysctlValue::of8(200), inFile("200\n")}) {
        EXPECT_EQ(numberOf<std::uint8_t>(two).first, 200);
        EXPECT_EQ(numberOf<std::int8_t>(two).second, ERANGE);
        EXPECT_EQ(numberOf<short>(two).first, 200);
        EXPECT_EQ(numberOf<std::int32_t>(two).first, 200);
        EXPECT_EQ(numberOf<std::uint64_t>(two).first, 200U);
    }
    EXPECT_EQ(numberOf<std::uint32_t>(SysctlValue::of8(3'000'000'000)).first, 3'000'000'000);
    EXPECT_EQ(numberOf<std::int32_t>(SysctlValue::of8(3'000'000'000)).second, ERANGE);
    EXPECT_EQ(numberOf<std::int8_t>(inFile("-128")).first, -128);
    EXPECT_EQ(numberOf<std::int8_t>(inFile("-129")).second, ERANGE);
    EXPECT_EQ(numberOf<std::int64_t>(inFile("-1")).first, -1);
    EXPECT_EQ(numberOf<std::uint64_t>(inFile("-1")).second, ERANGE);
    EXPECT_EQ(numberOf<std::uint64_t>(inFile("18446744073692774399")).first, 18446744073692774399U);
    EXPECT_EQ(numberOf<std::int64_t>(inFile("18446744073692774399")).second, ERANGE);
    EXPECT_EQ(numberOf<int>(SysctlAnswer()).second, ENOENT);
}

TEST(Sysctlbyname, NeverGivesATextAsANumber) {
    for (const std::string text : {"", "a", "1\t0", "MS-7C37", "exactly8"}) {
        FixedSource source;
        source.value = SysctlValue::ofText(text);
        const Current<SysctlSource> scope(source);
        EXPECT_EQ(numberOf<std::uint64_t>(source.value).second, EINVAL);
        EXPECT_EQ(numberOf<std::uint16_t>(source.value).second, EINVAL);
        std::size_t length = 0;
        EXPECT_EQ(sysctlbyname("key", nullptr, &length, nullptr, 0), 0);
        std::string buffer(length, '\xFF');
        EXPECT_EQ(sysctlbyname("key", buffer.data(), &length, nullptr, 0), 0);
        EXPECT_EQ(buffer.c_str(), text);
        if (length > 3) {
            EXPECT_EQ(sysctlbyname("key", buffer.data(), &(length = 3), nullptr, 0), -1);
            EXPECT_EQ(errno, ENOMEM);
        }
    }
    EXPECT_EQ(linux::sysctl::procSysValue("4096\t131072\n").kind, SysctlValue::Kind::text);
    EXPECT_EQ(linux::sysctl::procSysValue("60\n\n").text, "60\n");
    std::size_t length = 4;
    const int fresh = 1;
    EXPECT_EQ(sysctlbyname("kern.hostname", nullptr, &length, &fresh, sizeof fresh), -1);
    EXPECT_EQ(errno, EPERM);
}

TEST(KernelText, RefusesWhatIsNotOfItsForm) {
    using namespace linux::sysctl;
    EXPECT_EQ(parseCpuList("0-2,5,1"), (CpuList{0, 1, 2, 5}));
    EXPECT_EQ(parseCpuList(""), CpuList{});
    for (const char* bad : {"-", "2-1", "a", "0-4000000000", "0,,x"}) {
        EXPECT_EQ(parseCpuList(bad), std::nullopt) << bad;
    }
    EXPECT_EQ(parseCacheSize("2M"), 2U << 20);
    EXPECT_EQ(parseCacheSize("K"), std::nullopt);
    EXPECT_EQ(parseCacheSize("99999999999999999999K"), std::nullopt);
    EXPECT_EQ(parseOsRelease("# c\nA=\"x\\\"y\"z\nA='q\\'\n", "A"), "q\\");
    EXPECT_EQ(parseMegahertz("3425.000000MHz"), 3'425'000'000U);
    EXPECT_EQ(parseMegahertz("5200"), 5'200'000'000U);
    EXPECT_EQ(parseMegahertz("2.4 GHz"), std::nullopt);
    EXPECT_EQ(parseOsRelease("A=\"x\\\"y\"z\n", "A"), "x\"yz");
}

} // namespace
} // namespace vantor::platform
