// SPDX-License-Identifier: MIT
#include "hosts/common/HostMachine.hpp"

#include <utility>

namespace vantor::hosts::common {

HostMachine::HostMachine(bool demo, platform::linux::LinuxMachine::Options options)
    : m_linux(std::move(options)) {
    if (demo) {
        m_demo.emplace(m_linux);
    } else {
        m_linux.startReleasableScan(); // before anybody samples; a short run only takes up what an earlier
                                       // one found
    }
    m_scope.emplace(machine());
}

platform::Machine& HostMachine::machine() {
    if (m_demo) {
        return *m_demo;
    }
    return m_linux;
}

} // namespace vantor::hosts::common
