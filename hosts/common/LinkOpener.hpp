// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/common/LinkHandlers.hpp"
#include "platform/views/NSURL.hpp"

#include <functional>
#include <memory>
#include <string>

namespace vantor::hosts::common {

/// Has the desktop open links, each with the program that is registered for its scheme: looks whether there
/// is one, then hands the link to xdg-open(1), which is started by its path. Both happen on a thread of their
/// own, so that nothing here waits. Main thread.
class LinkOpener {
public:
    /// What a desktop has for links.
    struct Programs {
        std::string open;      ///< the path of xdg-open; empty: there is none
        LinkHandlers handlers; ///< what it opens links with
        /// In the folders that a system installs programs to; PATH does not count.
        static Programs installed();
    };

    explicit LinkOpener(Programs programs = Programs::installed());
    /// From here on nobody is called back, and what is still being looked up is given up.
    ~LinkOpener();
    LinkOpener(const LinkOpener&) = delete;
    LinkOpener& operator=(const LinkOpener&) = delete;

    /// Whether there is a desktop and xdg-open. What it does with a link is another question.
    [[nodiscard]] bool canOpen() const;

    using Finished = std::function<void(bool opened)>;
    /// `finished` hears in a later turn of the main loop whether the link was opened: false without a
    /// desktop, without a program for the scheme, or when that fails to start. A link that is being opened
    /// already is not opened a second time, and both callers hear the same.
    void open(const platform::NSURL& url, Finished finished);

    /// `heard` hears in a later turn of the main loop whether a program is registered for a scheme, such as
    /// "vantor". No program is started for that.
    void ask(const std::string& scheme, std::function<void(bool isThere)> heard);

    struct Lookups;

private:
    const Programs m_programs;
    const std::shared_ptr<Lookups> m_lookups;
};

} // namespace vantor::hosts::common
