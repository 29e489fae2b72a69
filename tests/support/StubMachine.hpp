// SPDX-License-Identifier: MIT
#pragma once

#include "platform/machine/Machine.hpp"

#include <map>
#include <string>
#include <utility>

namespace vantor::tests {

/// A machine whose every answer is a member that the test sets. It puts itself in place while it lives.
class StubMachine final : public platform::Machine {
public:
    platform::SuiteFile suite;
    std::vector<platform::SourceFailure> failing;
    std::vector<std::string> documents;
    std::optional<platform::VolumeCapacities> capacities;
    std::map<std::string, std::string, std::less<>> translations;
    platform::LocaleSigns signs;
    std::uint64_t memory = 0;
    bool onMac = false;

    /// Puts content under the preference suite.
    void store(std::string content) { suite = {"/home/user/store.plist", std::move(content), true, true}; }

    platform::kern_return_t hostPageSize(std::uint64_t& size) override {
        size = 4096;
        return platform::KERN_SUCCESS;
    }
    platform::kern_return_t hostVirtualMemory(platform::vm_statistics64& /*record*/) override {
        return platform::KERN_FAILURE;
    }
    platform::kern_return_t hostCpuLoad(platform::host_cpu_load_info& /*record*/) override {
        return platform::KERN_FAILURE;
    }
    std::uint64_t physicalMemory() override { return memory; }
    bool isiOSAppOnMac() override { return onMac; }
    std::optional<std::vector<platform::InterfaceAddress>> interfaceAddresses() override { return {}; }
    std::vector<std::string> documentDirectories() override { return documents; }
    std::optional<platform::VolumeCapacities> volumeCapacities(const std::string& /*path*/) override {
        return capacities;
    }
    platform::SuiteFile readSuite(std::string_view /*suiteName*/) override { return suite; }
    std::optional<std::string> localizedString(std::string_view key) override {
        const auto found = translations.find(key);
        return found != translations.end() ? std::optional(found->second) : std::nullopt;
    }
    const platform::LocaleSigns& localeSigns() override { return signs; }
    std::vector<platform::SourceFailure> failures() override { return failing; }

private:
    platform::MachineScope m_scope{*this};
};

} // namespace vantor::tests
