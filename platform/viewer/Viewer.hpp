// SPDX-License-Identifier: MIT
#pragma once

#include "platform/core/AssociatedState.hpp"
#include "platform/core/Current.hpp"
#include "platform/viewer/LocaleSigns.hpp"
#include "platform/viewer/SuiteEdit.hpp"
#include "platform/viewer/SuiteFile.hpp"

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace vantor::platform {

/// The person in front of the screen: what is theirs whichever machine is shown, namely preferences, language
/// and the way they write numbers. Preferences, captions and byte texts ask the current viewer. Any thread.
class Viewer : public AssociatedState {
public:
    virtual ~Viewer() = default;

    /// The file behind a preference suite as it is now; never null. The same object as the last time says
    /// that the file did not change meanwhile.
    virtual std::shared_ptr<const SuiteFile> readSuite(std::string_view suiteName) = 0;

    /// Where that file is, whether it is there or not; empty for a viewer without one.
    virtual std::string suitePath(std::string_view suiteName) = 0;

    /// Replaces that file as a whole by what `edit` makes of it. No other writer comes in between: `edit`
    /// gets what was read after the lock was taken, and a change of theirs is in it. Whoever reads meanwhile,
    /// or after a crash, finds the old file or the new one.
    virtual SuiteChange changeSuite(std::string_view suiteName, const SuiteEditor& edit) = 0;

    /// A caption in the viewer's language; absent where there is no translation.
    virtual std::optional<std::string> localizedString(std::string_view key) = 0;

    /// How the viewer writes numbers. Constant while the process runs.
    virtual const LocaleSigns& localeSigns() = 0;
};

/// The viewer that a `Current<Viewer>` has put in place: on this thread, or where the running block was
/// submitted. Without one: fatal.
Viewer& currentViewer();

} // namespace vantor::platform
