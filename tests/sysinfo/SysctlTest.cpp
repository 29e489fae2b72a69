// SPDX-License-Identifier: MIT
#include "ScriptedSysctl.hpp"
#include "platform/core/WorkItem.hpp"
#include "sysinfo/PackagesBase/Copying.hpp"
#include "sysinfo/SystemValues/SystemValues.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <thread>

namespace vantor::SystemValues {
namespace {

using platform::SysctlValue;
using testing::ElementsAre;
using tests::number;
using tests::ScriptedSysctl;
using tests::text;
using Records = SysctlQueryStorage::Records;

static_assert(SysctlFetch<Sysctl> && SysctlCPUInfo<Sysctl::HW> && SysctlPerflevel<Sysctl::HW::Perflevel1>);
static_assert(std::same_as<decltype(Sysctl::HW::model()), std::optional<PackagesBase::UInt>>);
static_assert(std::same_as<decltype(Sysctl::HW::cputype()), std::optional<std::int32_t>>);
static_assert(std::same_as<decltype(Sysctl::HW::cpufamily()), std::optional<std::uint32_t>>);

class Queries : public testing::Test {
protected:
    Queries() { reset(); }
    ~Queries() override { reset(); }

    static void reset() {
        SysctlQueryStorage::enabled = true;
        SysctlQueryStorage::recoverEveryQueryFromStorage = false;
        SysctlQueryStorage::records = Records{};
    }
};

TEST_F(Queries, EveryNamespacePutsItsPrefixFirst) {
    ScriptedSysctl source({});
    (void)Sysctl::getInteger<int>("whole.key");
    (void)Sysctl::HW::l2cachesize();
    (void)Sysctl::HW::Optional::getInteger<int>("x");
    (void)Sysctl::HW::Optional::ARM::getBool("FEAT_X");
    (void)Sysctl::HW::Perflevel0::cpusperl2();
    (void)Sysctl::HW::Perflevel1::physicalcpu();
    Sysctl::HW::PerflevelGeneralPurpose::index = 12;
    (void)Sysctl::HW::PerflevelGeneralPurpose::logicalcpu_max();
    (void)Sysctl::Kern::osproductversioncompat();
    (void)Sysctl::Machdep::getString("a");
    (void)Sysctl::VFS::getString("a");
    (void)Sysctl::User::getString("a");
    (void)Sysctl::VM::getString("a");
    (void)Sysctl::Debug::getString("a");
    (void)Sysctl::Net::getString("a.b");
    EXPECT_THAT(source.asked(),
                ElementsAre("whole.key", "hw.l2cachesize", "hw.optional.x", "hw.optional.arm.FEAT_X",
                            "hw.perflevel0.cpusperl2", "hw.perflevel1.physicalcpu",
                            "hw.perflevel12.logicalcpu_max", "kern.osproductversioncompat", "machdep.a",
                            "vfs.a", "user.a", "vm.a", "debug.a", "net.a.b"));
    Sysctl::HW::PerflevelGeneralPurpose::index = 0;
}

TEST_F(Queries, ReadTypedValues) {
    ScriptedSysctl source({{"kern.ostype", text("Linux")},
                           {"kern.hostname", text("caf\xE9")},
                           {"hw.model", text("MS-7C37")},
                           {"hw.memsize", SysctlValue::of8(3ULL << 30)},
                           {"hw.cpufamily", number(0xED76D8AA)},
                           {"hw.cpu64bit_capable", number(2)},
                           {"hw.ncpu", number(300)}});
    EXPECT_EQ(Sysctl::getString("kern.ostype"), "Linux");
    EXPECT_EQ(Sysctl::Kern::hostname(), "caf\uFFFD");
    EXPECT_EQ(Sysctl::HW::model(), std::nullopt); // a name does not go into a number
    EXPECT_EQ(Sysctl::HW::memsize(), 3ULL << 30);
    EXPECT_EQ(Sysctl::HW::getInteger<std::int32_t>("memsize"), std::nullopt);
    EXPECT_EQ(Sysctl::HW::cpufamily(), 0xED76D8AA);
    EXPECT_EQ(Sysctl::HW::cpu64bit_capable(), std::nullopt);
    EXPECT_EQ(Sysctl::HW::ncpu(), 300U);
    EXPECT_EQ(Sysctl::HW::getInteger<std::uint8_t>("ncpu"), std::nullopt);
    EXPECT_EQ(Sysctl::getInteger<int>(std::string_view("hw.ncpu\0x", 9)), std::nullopt);
    EXPECT_EQ(SysctlQueryStorage::records.value(), (Records{{"kern.ostype", "Linux"},
                                                            {"kern.hostname", "caf\uFFFD"},
                                                            {"hw.memsize", "3221225472"},
                                                            {"hw.cpufamily", "3983988906"},
                                                            {"hw.cpu64bit_capable", "2"},
                                                            {"hw.ncpu", "300"}}));
}

TEST_F(Queries, ATextAsksForItsSizeFirstAndReadsThen) {
    ScriptedSysctl source({{"kern.version", text("1")}});
    EXPECT_EQ(Sysctl::Kern::version(), "1");
    EXPECT_THAT(source.asked(), ElementsAre("kern.version", "kern.version"));
    EXPECT_EQ(Sysctl::Kern::ostype(), std::nullopt);
    EXPECT_THAT(source.asked(), ElementsAre("kern.ostype"));
}

TEST_F(Queries, AnAbsentTextLeavesTheStoreOrItsKeyAsTheFailingCallSays) {
    ScriptedSysctl source({{"kern.hostname", text("here")}});
    SysctlQueryStorage::records = Records{{"kern.hostname", "old"}, {"kern.ostype", "old"}, {"hw.ncpu", "1"}};
    source.vanishAfterNext("kern.hostname"); // between the size and the value
    EXPECT_EQ(Sysctl::Kern::hostname(), std::nullopt);
    EXPECT_EQ(Sysctl::Kern::ostype(), std::nullopt); // no size: the store is not touched
    EXPECT_EQ(Sysctl::HW::ncpu(), std::nullopt);     // numbers never take a key out
    EXPECT_EQ(SysctlQueryStorage::records.value(), (Records{{"kern.ostype", "old"}, {"hw.ncpu", "1"}}));
}

TEST_F(Queries, ReplayAnswersStoredKeysWithoutTheKernel) {
    ScriptedSysctl source({{"hw.ncpu", number(8)}, {"kern.ostype", text("Linux")}});
    SysctlQueryStorage::records = Records{{"hw.ncpu", "abc"}, {"hw.activecpu", "4"}};
    SysctlQueryStorage::recoverEveryQueryFromStorage = true;
    EXPECT_EQ(Sysctl::HW::getString("ncpu"), "abc");
    EXPECT_EQ(Sysctl::HW::activecpu(), 4U);
    EXPECT_TRUE(source.asked().empty());
    EXPECT_EQ(Sysctl::HW::ncpu(), 8U); // "abc" is no number: asked afresh, and stored
    EXPECT_EQ(Sysctl::Kern::ostype(), "Linux");
    EXPECT_EQ(SysctlQueryStorage::records.value().at("hw.ncpu"), "8");

    SysctlQueryStorage::enabled = false;
    SysctlQueryStorage::records = Records{{"hw.activecpu", "4"}};
    EXPECT_EQ(Sysctl::HW::activecpu(), std::nullopt);
    EXPECT_EQ(Sysctl::HW::ncpu(), 8U);
    EXPECT_EQ(Sysctl::Kern::ostype(), "Linux");
    EXPECT_EQ(SysctlQueryStorage::records.value(), (Records{{"hw.activecpu", "4"}}));
}

TEST_F(Queries, TheStoreIsSharedByThreads) {
    ScriptedSysctl source({{"hw.ncpu", number(8)}, {"kern.ostype", text("Linux")}});
    std::vector<std::thread> threads;
    for (unsigned i = 0; i < 4; ++i) {
        threads.emplace_back(platform::WorkItem([i] {
            for (unsigned round = 0; round < 200; ++round) {
                SysctlQueryStorage::recoverEveryQueryFromStorage = (round + i) % 2 == 0;
                EXPECT_EQ(Sysctl::HW::ncpu(), 8U);
                EXPECT_EQ(Sysctl::Kern::ostype(), "Linux");
                (void)SysctlQueryStorage::records.value();
            }
        }));
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(SysctlQueryStorage::records.value().size(), 2U);
}

/// Leaf 1 of a processor of family 6, model 0x9A, stepping 3, and of one of family 25, model 0x61,
/// stepping 2.
TEST(Cpuid, CutsItsFieldsOutOfTheCachedLeaf) {
    using Registers = CPUID::Registers;
    const auto figures = [](std::uint32_t eax) {
        Registers::queryCache = std::vector<Registers>{{eax, 0, 0, 0, 1, std::nullopt}};
        return std::vector{
            CPUID::standard_family(), CPUID::standard_model(), CPUID::stepping(), CPUID::type(),
            CPUID::extFamily(),       CPUID::extModel(),       CPUID::family(),   CPUID::model()};
    };
    EXPECT_THAT(figures(0x000906A3), ElementsAre(6, 0x9A, 3, 0, 0, 9, 6, 0xA));
    EXPECT_THAT(figures(0x00A60F12), ElementsAre(25, 0x61, 2, 0, 10, 6, 15, 1));
    EXPECT_THAT(figures(0x000F3513),
                ElementsAre(5, 1, 3, 3, 0, 15, 5, 1)); // the extended model does not count
    EXPECT_EQ(CPUID::queryAndReturnEAXBits(1, std::nullopt, 4, 11), 0x51U);
    EXPECT_EQ(CPUID::queryAndReturnEAXBits(1), 0x000F3513U);
    EXPECT_EQ(CPUID::queryAndReturnEAXBits(1, std::nullopt, 5, 4), std::nullopt);
    EXPECT_EQ(CPUID::queryAndReturnEAXBits(1, std::nullopt, 0, 32), std::nullopt);
    Registers::queryCache = std::vector<Registers>{{0x20756D45, 0x72502020, 0, 0, 0x80000002, {}},
                                                   {0, 0, 0, 0, 0x80000003, {}},
                                                   {0, 0, 0, 0, 0x80000004, {}}};
    EXPECT_EQ(CPUID::brandString(), "Emu   Pr");
    Registers::queryCache = std::vector<Registers>{};
}

TEST(Cpuid, RecordsEncodeAndCopy) {
    const CPUID::Registers one{1, 2, 3, 4, 5, std::nullopt};
    const CPUID::Registers two{1, 2, 3, 4, 5, 6};
    EXPECT_EQ(CPUID::Registers::decoded(one.encoded()), one);
    EXPECT_EQ(CPUID::Registers::decoded(two.encoded()), two);
    EXPECT_EQ(CPUID::Registers::decoded({{"eax", 1}}), std::nullopt);
    EXPECT_EQ(PackagesBase::copy(two), two);
    EXPECT_EQ(CPUID::Registers::from(0x7FFFFFFF), std::nullopt); // no processor has that leaf
    const auto features = CPUID::Registers::from(1);
    const bool isGuest = features && (features->ecx >> 31U) != 0;
    EXPECT_EQ(CPUID::Registers::from(0x40000000).has_value(), isGuest);
    EXPECT_EQ(CPUID::Registers::from(0x4000FFFF), std::nullopt);
}

} // namespace
} // namespace vantor::SystemValues
