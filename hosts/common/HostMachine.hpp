// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/common/HostViewer.hpp"
#include "platform/machine/Machine.hpp"

#include <memory>
#include <string>

namespace vantor::hosts::common {

/// The machine that a host shows and the viewer in front of it, both in place while this lives: the machine
/// that the program runs on and its user, or the demonstration's for a viewer without preferences, in the
/// user's language. The one door through which hosts come to a platform's own machine. Make it first in main,
/// after setlocale.
class HostMachine {
public:
    /// `useLocale` off: English and its number signs, whatever the user's language.
    explicit HostMachine(bool demo, bool useLocale = true);

private:
    std::unique_ptr<platform::Machine> m_machine;
    HostViewer m_viewer;
    platform::Current<platform::Machine> m_currentMachine{*m_machine};
};

/// Whether a file or folder is on a file system of this machine, so that asking for it does not wait for a
/// server that may be gone. Any thread.
[[nodiscard]] bool isOnThisMachine(const std::string& path);

/// The name of the machine that a host shows: what uname(2) calls its node, or "demo".
[[nodiscard]] std::string machineName(bool demo);
/// Where the volume of the storage figures is mounted: "/home", or "/" for the demonstration; empty where
/// that cannot be told.
[[nodiscard]] std::string storageMountPoint(bool demo);

} // namespace vantor::hosts::common
