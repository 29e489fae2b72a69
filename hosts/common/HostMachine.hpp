// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/common/HostViewer.hpp"
#include "platform/machine/Machine.hpp"

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
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
    /// For another machine, which must outlive this, and this one's user.
    explicit HostMachine(platform::Machine& other, bool useLocale = true);

private:
    std::unique_ptr<platform::Machine> m_machine; ///< null for another machine
    HostViewer m_viewer;
    platform::Current<platform::Machine> m_currentMachine;
};

/// What `work` tells about a file or folder. Where that is on no file system of this machine a child process
/// does it: absent where a server that may be gone gives no answer within a second. Any thread.
[[nodiscard]] std::optional<std::string> askAbout(const std::string& path,
                                                  const std::function<std::string()>& work);
/// Whether a path is on a file system of this machine, so that no server has to answer. Any thread.
[[nodiscard]] bool isOnThisMachine(const std::string& path);
/// Whether the file system of a folder answers by then, be it that there is no such folder. Any thread.
[[nodiscard]] bool answers(const std::string& folder, std::chrono::milliseconds limit);
/// What is said of one that does not, after its name.
inline constexpr const char* noAnswer = ": its file system does not answer";

/// The name of the machine that a host shows: what uname(2) calls its node, or "demo".
[[nodiscard]] std::string machineName(bool demo);
/// Where the volume of the storage figures is mounted: "/home", or "/" for the demonstration; empty where
/// that cannot be told.
[[nodiscard]] std::string storageMountPoint(bool demo);

} // namespace vantor::hosts::common
