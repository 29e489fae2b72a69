// SPDX-License-Identifier: MIT
#include "platform/machine/Machine.hpp"

namespace vantor::platform {

Machine& currentMachine() {
    Machine* const machine = Current<Machine>::get();
    if (machine == nullptr) {
        fatalStop("no machine was put in place");
    }
    return *machine;
}

} // namespace vantor::platform
