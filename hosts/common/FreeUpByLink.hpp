// SPDX-License-Identifier: MIT
#pragma once

namespace vantor::hosts::common {

/// Whether a link may have memory freed now: any web page can send one, so once a minute is all they get
/// together, whichever program hears them. A yes counts as done. No is the answer, too, where the time of the
/// last one cannot be kept (in `freed-by-link` in the user's state folder). Any thread.
[[nodiscard]] bool mayFreeUpByLink();

} // namespace vantor::hosts::common
