// SPDX-License-Identifier: MIT
#pragma once

namespace vantor::platform::linux {

/// Removes what writers that were killed left in an open folder: regular files of this user that
/// `replaceFile` named, whose process is gone, and which nobody holds locked as their writers do. Links are
/// not followed. Whatever stands in the way leaves them there. For who holds the folder's lock; may block as
/// long as a disk does.
void removeLeftBehind(int folder);

} // namespace vantor::platform::linux
