// SPDX-License-Identifier: MIT
#include "hosts/common/HostMachine.hpp"

#include <utility>

namespace vantor::hosts {

HostMachine::HostMachine(bool demo, platform::LinuxMachine::Options options) : m_linux(std::move(options)) {
    if (demo) {
        m_demo.emplace(m_linux);
    }
    m_scope.emplace(machine());
}

platform::Machine& HostMachine::machine() {
    if (m_demo) {
        return *m_demo;
    }
    return m_linux;
}

} // namespace vantor::hosts
