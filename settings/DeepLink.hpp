// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string_view>

/// The pages and actions of the Vantor app that the widget can ask for. Any program and any web page can send
/// one of these links, so none of them takes an argument, and none may lead to more than is said here.
namespace vantor::DeepLink {

inline constexpr std::string_view showCpu = "vantor://action?showCpu";
inline constexpr std::string_view showStorage = "vantor://action?showStorage";
inline constexpr std::string_view cleanRam = "vantor://action?cleanRam";
inline constexpr std::string_view showRam = "vantor://action?showRam";

/// The pages of the app; the memory page is the first.
enum class Page : std::uint8_t { memory, storage, processor };

/// What a link asks for.
struct Target {
    Page page = Page::memory;
    bool cleansRam = false; ///< memory is to be freed there, which needs no decision and takes nothing away
    bool isKnown = false;   ///< one of the four links; else the first page is all it gets
    bool operator==(const Target&) const = default;
};

/// Reads a link. Only exactly these four texts are known: other letter cases, paths, arguments, blanks, ports
/// or users in them are not.
[[nodiscard]] Target targetOf(std::string_view link);

} // namespace vantor::DeepLink
