// SPDX-License-Identifier: MIT
#pragma once

#include "platform/machine/Disposal.hpp"

#include <memory>

namespace vantor::hosts::common {

/// What the program's user can throw away for good on this machine, in place as the disposal while this
/// lives. `demo`: what is made up, of which nothing real is ever deleted.
class HostDisposal {
public:
    explicit HostDisposal(bool demo = false);

private:
    std::unique_ptr<platform::Disposal> m_disposal;
    platform::Current<platform::Disposal> m_current{*m_disposal};
};

} // namespace vantor::hosts::common
