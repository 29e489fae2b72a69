// SPDX-License-Identifier: MIT
#pragma once

#include "platform/views/NSURL.hpp"

#include <functional>

class QObject;

namespace vantor::hosts::qt {

/// Has the desktop open a link with the program that is registered for its scheme, through xdg-utils and
/// never through a command line of our own. `finished` hears on the main thread whether there was such a
/// program; not at all when `owner` is gone first.
void openLink(QObject& owner, const platform::NSURL& url, std::function<void(bool)> finished);

} // namespace vantor::hosts::qt
