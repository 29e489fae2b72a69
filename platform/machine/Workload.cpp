// SPDX-License-Identifier: MIT
#include "platform/machine/Workload.hpp"

namespace vantor::platform {

Workload& currentWorkload() {
    Workload* const workload = Current<Workload>::get();
    if (workload == nullptr) {
        fatalStop("no workload was put in place");
    }
    return *workload;
}

} // namespace vantor::platform
