// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/app/Sampler.hpp"
#include "hosts/app/UseModel.hpp"

#include <cstddef>
#include <functional>
#include <string>
#include <utility>

/// The rows that the lists of both pages have in common, without their figures.
namespace vantor::hosts::app {

/// What tells an application from the others, in one list and the next.
[[nodiscard]] std::string applicationKey(const platform::ApplicationUse& use);

/// The two figures of a process.
using ProcessFigures = std::function<std::pair<QString, QString>(const ProcessRow&)>;
/// `behind`: what is behind the applications that are unfolded.
[[nodiscard]] UseRow applicationRow(const platform::ApplicationUse& use, const Unfolded& behind,
                                    const ProcessFigures& figures);
/// For so many applications that are not listed.
[[nodiscard]] UseRow moreRow(std::size_t count);
/// For what is none of the user's applications.
[[nodiscard]] UseRow othersRow();

} // namespace vantor::hosts::app
