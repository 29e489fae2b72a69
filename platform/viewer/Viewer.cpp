// SPDX-License-Identifier: MIT
#include "platform/viewer/Viewer.hpp"

namespace vantor::platform {

Viewer& currentViewer() {
    Viewer* const viewer = Current<Viewer>::get();
    if (viewer == nullptr) {
        fatalStop("no viewer was put in place");
    }
    return *viewer;
}

} // namespace vantor::platform
