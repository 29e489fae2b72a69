// SPDX-License-Identifier: MIT
#include "hosts/common/HostMachine.hpp"

namespace vantor::hosts {

HostMachine::HostMachine(bool demo) {
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
