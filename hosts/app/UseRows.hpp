// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/app/UseModel.hpp"

#include <cstddef>

/// The rows that the lists of both pages have in common, without their figures.
namespace vantor::hosts::app {

[[nodiscard]] UseRow applicationRow(const platform::ApplicationUse& use);
/// For so many applications that are not listed.
[[nodiscard]] UseRow moreRow(std::size_t count);
/// For what is none of the user's applications.
[[nodiscard]] UseRow othersRow();

} // namespace vantor::hosts::app
