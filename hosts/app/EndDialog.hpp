// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/app/Look.hpp"
#include "hosts/app/Sheet.hpp"
#include "platform/machine/Workload.hpp"

#include <functional>

namespace vantor::hosts::app {

/// Asks whether an application is to end, ends it, and says what that gave back. Ending it by force is a
/// second decision, which is offered when it still runs after some seconds. `changed` hears that it was told
/// to end. Gives the dialog, which is shown and goes away by itself.
Sheet* askToEnd(QWidget* parent, const Look& look, const platform::ApplicationUse& application,
                const std::function<void()>& changed);

} // namespace vantor::hosts::app
