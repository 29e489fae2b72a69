// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <utility>
#include <vector>

namespace vantor::platform {

/// Makes an object that is never destroyed, not even with the static ones: workers may still use it while the
/// program ends. It stays within reach, so that a search for lost memory does not name it. For objects of
/// which there are few. Not for several threads at once.
template<class T, class... Arguments>
T& makeForEver(Arguments&&... arguments) {
    static auto& kept = *new std::vector<std::unique_ptr<T>>;
    return *kept.emplace_back(std::make_unique<T>(std::forward<Arguments>(arguments)...));
}

} // namespace vantor::platform
