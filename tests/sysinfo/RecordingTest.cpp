// SPDX-License-Identifier: MIT
#include "sysinfo/SystemValues/Recording.hpp"

#include "ScriptedSysctl.hpp"
#include "sysinfo/CpuDetect/CpuDetect.hpp"
#include "sysinfo/SystemValues/SystemValues.hpp"

#include <gtest/gtest.h>

namespace vantor::SystemValues {
namespace {

using CpuDetect::CpuArchitecture;
using CpuDetect::GPUDetection;
using CpuDetect::UnameReimplemented;
using platform::MTLDevice;
using platform::SysctlValue;
using tests::number;
using tests::ScriptedSysctl;
using tests::text;

const ScriptedSysctl::Values here{
    {"hw.cputype", number(7)},       {"hw.cpusubtype", number(8)},
    {"hw.cpufamily", number(0)},     {"hw.machine", text("x86_64")},
    {"hw.ncpu", number(8)},          {"hw.memsize", SysctlValue::of8(1ULL << 34)},
    {"kern.ostype", text("Linux")},  {"kern.hostname", text("here")},
    {"kern.osrelease", text("6.1")}, {"kern.version", text("#1")}};

/// Detects what the libraries keep for the life of a process.
std::string everythingKept() {
    return CpuArchitecture::current().value_or(CpuArchitecture::ppc).description() + " " +
           UnameReimplemented::uname({UnameReimplemented::UnameCommandLineArgs::n}).value_or("no name") +
           " " + CPUID::brandString().value_or("no brand");
}

class Recordings : public testing::Test {
protected:
    Recordings() {
        CpuDetect::GeneralPrinter::enabled = false;
        CPUID::Registers::queryCache = std::vector<CPUID::Registers>{};
        SysctlQueryStorage::records = SysctlQueryStorage::Records{};
    }
    ScriptedSysctl source{here};
};

TEST_F(Recordings, ReplayShowsNothingOfThisMachine) {
    const std::string kept = everythingKept();
    const auto records = SysctlQueryStorage::records.value();
    (void)source.asked();
    {
        Recording phone;
        phone.records = {{"hw.machine", "aarch64"}, {"hw.ncpu", "abc"}, {"kern.ostype", "Linux"}};
        phone.device = MTLDevice{"A15 GPU", 3ULL << 30, 0, true};
        const Replay replay(phone);
        EXPECT_EQ(Sysctl::HW::machine(), "aarch64");
        EXPECT_EQ(Sysctl::HW::ncpu(), std::nullopt); // no number, and the kernel is not asked instead
        EXPECT_EQ(Sysctl::HW::memsize(), std::nullopt);
        EXPECT_EQ(everythingKept(), "ppc no name no brand");
        EXPECT_EQ(CPUID::Registers::from(1, std::nullopt, true), std::nullopt);
        EXPECT_EQ(GPUDetection::systemDefault()->name, "A15 GPU");
        EXPECT_EQ(querySysctlKeys("hw"), (std::vector<std::string>{"hw.machine", "hw.ncpu"}));
        {
            const Replay another(Recording{{}, {{0x000906A3, 0, 0, 0, 1, {}}}, {}});
            EXPECT_EQ(CPUID::standard_model(), 0x9AU);
            EXPECT_EQ(GPUDetection::systemDefault(), std::nullopt);
        }
        EXPECT_EQ(Sysctl::HW::machine(), "aarch64");
    }
    EXPECT_TRUE(source.asked().empty());
    EXPECT_EQ(SysctlQueryStorage::records.value(), records);
    EXPECT_EQ(Sysctl::HW::ncpu(), 8U);
    EXPECT_EQ(everythingKept(), kept);
}

TEST_F(Recordings, AMachineComesBackFromItsText) {
    Recording recording = Recording::ofThisMachine();
    EXPECT_EQ(recording.records.at("hw.memsize"), "17179869184");
    EXPECT_EQ(recording.records.at("hw.machine"), "x86_64");
    EXPECT_EQ(recording.records.size(), here.size());
    std::string why;
    EXPECT_EQ(Recording::fromText(recording.text(), why), recording);
    recording.device.emplace(); // asked, and there is none
    EXPECT_EQ(Recording::fromText(recording.text(), why), recording);
    recording.device = MTLDevice{"A15 GPU", 3ULL << 30, 0, true};
    EXPECT_EQ(Recording::fromText(recording.text(), why), recording);
    for (const char* bad : {"", "[]", "{", R"({"vantor-sysinfo": 2, "records": {}, "cpuid": []})",
                            R"({"vantor-sysinfo": 1, "records": 5, "cpuid": []})",
                            R"({"vantor-sysinfo": 1, "records": {}, "cpuid": [{"eax": "x"}]})"}) {
        why.clear();
        EXPECT_EQ(Recording::fromText(bad, why), std::nullopt) << bad;
        EXPECT_NE(why, "") << bad;
    }
}

} // namespace
} // namespace vantor::SystemValues
