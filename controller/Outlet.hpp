// SPDX-License-Identifier: MIT
#pragma once

#include "platform/core/FatalStop.hpp"

#include <memory>

namespace vantor {

/// A view that the interface file must have connected; a null one is fatal.
template<class View>
[[nodiscard]] const std::shared_ptr<View>& outlet(const std::shared_ptr<View>& view) {
    if (view == nullptr) {
        platform::fatalStop("an outlet of the report interface is not connected");
    }
    return view;
}

} // namespace vantor
