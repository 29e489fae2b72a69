// SPDX-License-Identifier: MIT
#pragma once

#include "platform/viewer/Viewer.hpp"

#include <memory>

namespace vantor::hosts::common {

/// The person who runs the program, in place as the viewer while this lives. For programs that show no
/// machine this is all they need.
class HostViewer {
public:
    /// `demo`: without preferences, for the same pictures everywhere. `useLocale` off: English and its number
    /// signs, whatever the user's language.
    explicit HostViewer(bool demo, bool useLocale = true);

private:
    std::unique_ptr<platform::Viewer> m_viewer;
    platform::Current<platform::Viewer> m_current{*m_viewer};
};

} // namespace vantor::hosts::common
