// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

/// The pages and actions of the Vantor app that the widget can ask for.
namespace vantor::DeepLink {

inline constexpr std::string_view showCpu = "vantor://action?showCpu";
inline constexpr std::string_view showStorage = "vantor://action?showStorage";
inline constexpr std::string_view cleanRam = "vantor://action?cleanRam";
inline constexpr std::string_view showRam = "vantor://action?showRam";

} // namespace vantor::DeepLink
