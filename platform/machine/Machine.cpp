// SPDX-License-Identifier: MIT
#include "platform/machine/Machine.hpp"

#include "platform/core/FatalStop.hpp"

#include <atomic>

namespace vantor::platform {

namespace {
std::atomic<Machine*> current{nullptr};
} // namespace

Machine& currentMachine() {
    Machine* const machine = current.load();
    if (machine == nullptr) {
        fatalStop("no machine was put in place");
    }
    return *machine;
}

MachineScope::MachineScope(Machine& machine) : m_before(current.exchange(&machine)) {}

MachineScope::~MachineScope() {
    current.store(m_before);
}

} // namespace vantor::platform
