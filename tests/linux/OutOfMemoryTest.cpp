// SPDX-License-Identifier: MIT
#include "FailingAllocation.hpp"
#include "TreeMachine.hpp"

#include <gtest/gtest.h>

#include <functional>
#include <memory>

// Each reader on a machine that runs out of memory once, at every point where it takes some: it gives what it
// always gives, or its source fails, and the next reading is whole again.
namespace vantor::tests {
namespace {

namespace fs = std::filesystem;

/// One reader's figures as a number, so that the test itself takes no memory; 0 where it has none.
struct Reader {
    platform::Source source;
    std::uint64_t (*read)(TreeMachine& machine);
    friend void PrintTo(const Reader& reader, std::ostream* out) { *out << sourceName(reader.source); }
};

std::uint64_t memory(TreeMachine& machine) {
    platform::vm_statistics64 record{};
    return machine->hostVirtualMemory(record) == platform::KERN_SUCCESS
               ? std::uint64_t{record.free_count} << 32U | record.compressor_page_count
               : 0;
}

std::uint64_t processor(TreeMachine& machine) {
    platform::host_cpu_load_info ticks{};
    machine->hostCpuLoad(ticks);
    return ticks.user > 0 ? 1 : 0; // how many is a matter of the clock
}

std::uint64_t network(TreeMachine& machine) {
    const auto links = machine->interfaceAddresses();
    std::uint64_t figures = 0;
    for (std::size_t i = 0; links && i < links->size(); ++i) {
        figures = figures * 31 + std::hash<std::string>()(*(*links)[i].name) + (*links)[i].receivedBytes;
    }
    return figures;
}

/// The calls of one report tell the same, or a used figure would stand beside a total of nothing.
std::uint64_t volume(TreeMachine& machine) {
    std::uint64_t told = 0;
    for (int i = 0; i < 3; ++i) {
        told += machine->volumeCapacities(machine->documentDirectories()->at(0)) ? 1 : 0;
        machine.pass(std::chrono::milliseconds(20)); // long enough for them to be asked for again
    }
    return told == 1 || told == 2 ? 99 : told;
}

class OutOfMemory : public testing::TestWithParam<Reader> {};

TEST_P(OutOfMemory, failsTheSourceAndNothingElse) {
    const Reader& reader = GetParam();
    const TestTree tree;
    fs::copy(fs::path(VANTOR_TEST_DATA) / "trees/laptop", tree.root(), fs::copy_options::recursive);
    TreeMachine healthy(tree.root());
    const std::uint64_t expected = reader.read(healthy);
    ASSERT_NE(expected, 0U);

    using Outcome = std::pair<std::unique_ptr<TreeMachine>, std::uint64_t>;
    const std::size_t failed = failEachAllocation(
        [&] { return std::make_unique<TreeMachine>(tree.root()); },
        [&](std::unique_ptr<TreeMachine> machine) {
            const std::uint64_t figures = reader.read(*machine);
            return Outcome(std::move(machine), figures);
        },
        [&](const Outcome& outcome, bool hasFailed) {
            const auto& [machine, figures] = outcome;
            if (figures != expected) {
                EXPECT_TRUE(hasFailed);
                EXPECT_EQ(figures, 0U);
                EXPECT_EQ(machine->machine().failures(),
                          std::vector{platform::SourceFailure({reader.source, "out of memory"})});
            }
            machine->pass(std::chrono::seconds(2));
            EXPECT_EQ(reader.read(*machine), expected);
            EXPECT_EQ(machine->failedSources(), "");
        });
    EXPECT_GT(failed, 0U);
}

INSTANTIATE_TEST_SUITE_P(Readers, OutOfMemory,
                         testing::Values(Reader{"memory", memory}, Reader{"processor", processor},
                                         Reader{"network", network}, Reader{"storage", volume}));

} // namespace
} // namespace vantor::tests
