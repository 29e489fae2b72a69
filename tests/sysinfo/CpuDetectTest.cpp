// SPDX-License-Identifier: MIT
#include "sysinfo/CpuDetect/CpuDetect.hpp"

#include "Output.hpp"
#include "ScriptedSysctl.hpp"
#include "platform/gpu/MTLDevice.hpp"
#include "sysinfo/SystemValues/SysctlQueryStorage.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <functional>
#include <sstream>

namespace vantor::CpuDetect {
namespace {

using platform::SysctlValue;
using testing::ElementsAre;
using tests::logOf;
using tests::number;
using tests::ScriptedSysctl;
using tests::text;
using Uname = UnameReimplemented;
using Letter = Uname::UnameCommandLineArgs;

/// Detections are kept for the life of a process, so each test has one of its own.
void inOwnProcess(const std::function<void()>& work) {
    EXPECT_EXIT(
        {
            work();
            std::exit(testing::Test::HasFailure() ? 1 : 0);
        },
        testing::ExitedWithCode(0), "");
}

TEST(CpuArchitecture, TypesThatShareABitAreIntelFirst) {
    const auto decided = [](std::uint32_t type, std::int32_t subtype = 0, std::uint32_t family = 0) {
        const auto found = architectureFor({static_cast<std::int32_t>(type), subtype, family});
        return found ? found->description() : "none";
    };
    for (const std::uint32_t type : {7U, 12U, 0x0100000CU, 18U, 0x01000012U, 1U}) {
        EXPECT_EQ(decided(type), "x86_64") << type;
    }
    EXPECT_EQ(decided(8, 100, 0xED76D8AA), "arm64");
    EXPECT_EQ(decided(16), "ppc64");
    EXPECT_EQ(decided(16, 4), "ppc970"); // 4 is a bit of 100
    EXPECT_EQ(decided(16, 0, 2), "ppc970");
    EXPECT_EQ(decided(0), "none");
    EXPECT_EQ(decided(32, 100), "none");
}

TEST(CpuArchitecture, CasesKnowTheirKind) {
    using A = CpuArchitecture;
    EXPECT_EQ(A::fromRawValue("ppc970"), A::ppcG5);
    EXPECT_EQ(A::fromRawValue("x86"), std::nullopt);
    std::string wide;
    std::string generic;
    for (unsigned i = 0; i < 10; ++i) {
        const A each(static_cast<A::Case>(i));
        wide += each.is64Bit() ? '1' : '0';
        generic += each.genericProcessorType().description() + " ";
        EXPECT_EQ(A::fromRawValue(each.id()), each);
        EXPECT_EQ(each.isPPC() + each.isIntel() + each.isArm(), 1);
    }
    EXPECT_EQ(wide, "0000110101");
    EXPECT_EQ(generic, "ppc ppc ppc ppc ppc ppc i386 i386 arm arm ");
    std::ostringstream out;
    out << A::arm64 << ' ' << A(A::ppcG3);
    EXPECT_EQ(out.str(), "arm64 ppc750");
    EXPECT_EQ(PackagesBase::description(std::vector{A::arm64}), "[arm64]");
#ifdef VANTOR_BUILT_FOR_KNOWN_ARCHITECTURE
    EXPECT_EQ(A::currentExecutableArchitectures(), std::vector{A::binaryCurrent()});
#else
    EXPECT_EQ(A::currentExecutableArchitectures(), std::nullopt);
#endif
}

TEST(CpuArchitecture, CurrentReadsOnceAndLogs) {
    inOwnProcess([] {
        ScriptedSysctl source({{"hw.cputype", number(0x0100000C)},
                               {"hw.cpusubtype", number(2)},
                               {"hw.cpufamily", number(0x1B588BB3)}});
        EXPECT_EQ(logOf([] { EXPECT_EQ(CpuArchitecture::current(), CpuArchitecture::intel64); }),
                  "[CPUDetect] Detected CPU type number: 16777228\n"
                  "[CPUDetect] Detected CPU subtype number: 2\n"
                  "[CPUDetect] Detected CPU family number: 458787763\n"
                  "[CPUDetect] Detected cpu architecture of the current process is: x86_64\n");
        EXPECT_THAT(source.asked(), ElementsAre("hw.cputype", "hw.cpusubtype", "hw.cpufamily"));
        EXPECT_EQ(logOf([] { EXPECT_EQ(CpuArchitecture::machineCurrent(), CpuArchitecture::intel64); }),
                  "[CPUDetect] The actual cpu architecture of the current machine is: x86_64\n");
        EXPECT_TRUE(source.asked().empty());
    });
}

TEST(CpuArchitecture, AFailedDetectionSaysWhatIsMissingAndIsTriedAgain) {
    inOwnProcess([] {
        const auto current = [] { EXPECT_EQ(CpuArchitecture::current(), std::nullopt); };
        {
            const ScriptedSysctl source({});
            EXPECT_EQ(logOf(current), " ERROR:  Can't get the cpu type value\n");
        }
        {
            const ScriptedSysctl source({{"hw.cputype", number(7)}});
            EXPECT_EQ(logOf(current), "[CPUDetect] Detected CPU type number: 7\n"
                                      " ERROR:  Can't get the cpu subtype value\n");
        }
        {
            const ScriptedSysctl source({{"hw.cputype", number(7)}, {"hw.cpusubtype", number(4)}});
            EXPECT_THAT(logOf(current),
                        testing::EndsWith(" ERROR:  ERROR: Can't get the cpu family value\n"));
        }
        const ScriptedSysctl source(
            {{"hw.cputype", number(0)}, {"hw.cpusubtype", number(0)}, {"hw.cpufamily", number(0)}});
        EXPECT_THAT(logOf(current), testing::EndsWith("current process is: [Arch not detected]\n"));
        EXPECT_TRUE(HWInfo::CPU::is64Bit()); // nothing known counts as 64 bits
        GeneralPrinter::enabled = false;
        EXPECT_EQ(logOf(current), "");
    });
}

TEST(HWInfo, ReadsTheFiguresOfEachKindOfCore) {
    const ScriptedSysctl source({{"hw.logicalcpu", number(8)},
                                 {"hw.perflevel0.physicalcpu", number(2)},
                                 {"hw.perflevel1.l1dcachesize", number(32768)},
                                 {"hw.perflevel1.l1icachesize", number(65536)},
                                 {"hw.perflevel1.l2cachesize", number(2097152)},
                                 {"hw.cpu64bit_capable", number(0)},
                                 {"hw.memsize", SysctlValue::of8(3ULL << 30)}});
    EXPECT_EQ(HWInfo::CPU::threadsCount(), 8U);
    EXPECT_EQ(HWInfo::CPU::coresCount(), std::nullopt);
    EXPECT_EQ(HWInfo::CPU::PerformanceCores::coresCount(), 2U);
    EXPECT_EQ(HWInfo::CPU::EfficiencyCores::l1DataCacheAmmount(), 32768U);
    EXPECT_EQ(HWInfo::CPU::EfficiencyCores::l1InstructionCacheAmmount(), 65536U);
    EXPECT_EQ(HWInfo::CPU::EfficiencyCores::l2CacheAmmount(), 2097152U);
    EXPECT_FALSE(HWInfo::CPU::is64Bit());
    EXPECT_EQ(HWInfo::ramAmmount(), 3ULL << 30);
}

struct FixedDevice final : platform::MTLDeviceSource {
    std::optional<platform::MTLDevice> device;
    std::optional<platform::MTLDevice> systemDefaultDevice() override { return device; }
};

TEST(GPUDetection, DescribesTheDefaultDevice) {
    FixedDevice source;
    const platform::Current<platform::MTLDeviceSource> scope(source);
    EXPECT_EQ(GPUDetection::systemDefault(), std::nullopt);
    EXPECT_EQ(HWInfo::CPU::name(), std::nullopt);
    source.device = {"A15 GPU", 5, 3ULL << 30, std::nullopt};
    EXPECT_EQ(GPUDetection::systemDefault()->infoString(), "A15 GPU 3 GB (Unified)");
    EXPECT_EQ(HWInfo::CPU::name(), "A15 ");
    source.device = {"GPU of GPUs", 8, 5, false};
    EXPECT_EQ(GPUDetection::systemDefault()->infoString(), "GPU of GPUs 8 bytes");
    EXPECT_EQ(HWInfo::CPU::name(), " of s");
}

TEST(GPUDetection, WritesBytesInEnglish) {
    EXPECT_EQ(byteSizeText(0), "Zero KB");
    EXPECT_EQ(byteSizeText(1), "1 byte");
    EXPECT_EQ(byteSizeText(1023), "1,023 bytes");
    EXPECT_EQ(byteSizeText(1073689395), "1,023.9 MB");
    EXPECT_EQ(byteSizeText(8573157376), "7.98 GB");
    EXPECT_EQ(byteSizeText(~std::uint64_t{0}), "16 EB");
}

const ScriptedSysctl::Values unameValues{{"kern.ostype", text("Linux")},  {"kern.hostname", text("box")},
                                         {"kern.osrelease", text("6.1")}, {"kern.version", text("#1 SMP")},
                                         {"hw.machine", text("aarch64")}, {"hw.cputype", number(0x0100000C)},
                                         {"hw.cpusubtype", number(1)},    {"hw.cpufamily", number(0)}};

TEST(Uname, JoinsTheLettersInTheCallersOrder) {
    inOwnProcess([] {
        const ScriptedSysctl source(unameValues);
        GeneralPrinter::enabled = false;
        EXPECT_EQ(Uname::uname({Letter::a}), "Linux box 6.1 #1 SMP aarch64");
        EXPECT_EQ(Uname::uname({Letter::p, Letter::a}), "Linux box 6.1 #1 SMP aarch64");
        EXPECT_EQ(Uname::uname({Letter::m, Letter::s, Letter::m}), "aarch64 Linux");
        EXPECT_EQ(Uname::uname({}), "Linux");
        EXPECT_EQ(Uname::uname({Letter::p}), "i386"); // as `CpuArchitecture` has it
        EXPECT_EQ(Uname::uname<Uname::Dictionary>({Letter::v, Letter::r}),
                  (Uname::Dictionary{{Letter::v, "#1 SMP"}, {Letter::r, "6.1"}}));
    });
}

TEST(Uname, FetchesOnceUnlessForced) {
    inOwnProcess([] {
        ScriptedSysctl source(unameValues);
        EXPECT_EQ(
            logOf([] { (void)Uname::uname({Letter::s}); }),
            "[CPUDetect] uname data is: UTSNameReimplemented(sysname: \"Linux\", nodename: \"box\", release: "
            "\"6.1\", version: \"#1 SMP\", machine: \"aarch64\")\n"
            "[CPUDetect] Obtained uname dictionary: [s: \"Linux\"]\n");
        const auto firstReads = source.asked();
        EXPECT_THAT(firstReads, ElementsAre("kern.ostype", "kern.ostype", "kern.hostname", "kern.hostname",
                                            "kern.osrelease", "kern.osrelease", "kern.version",
                                            "kern.version", "hw.machine", "hw.machine"));
        (void)Uname::uname({Letter::a});
        EXPECT_TRUE(source.asked().empty());
        (void)Uname::uname({Letter::a}, true);
        EXPECT_EQ(source.asked(), firstReads);

        const ScriptedSysctl partial({{"kern.ostype", text("Other")}});
        EXPECT_EQ(logOf([] { EXPECT_EQ(Uname::uname({Letter::a}, true), std::nullopt); }),
                  " ERROR:  Can't get the nodename data for uname\n");
        EXPECT_EQ(Uname::uname({Letter::n}), "box"); // what was fetched before is kept
    });
}

} // namespace
} // namespace vantor::CpuDetect
