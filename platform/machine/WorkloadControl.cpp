// SPDX-License-Identifier: MIT
#include "platform/machine/WorkloadControl.hpp"

namespace vantor::platform {

WorkloadControl& currentWorkloadControl() {
    WorkloadControl* const control = Current<WorkloadControl>::get();
    if (control == nullptr) {
        fatalStop("no control of the workload was put in place");
    }
    return *control;
}

} // namespace vantor::platform
