// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace vantor::hosts::common {

/// What a link that wants memory freed gets.
struct LinkLeave {
    enum class Answer {
        yes,     ///< which counts as done
        tooSoon, ///< less than a minute after the last one
        notKept, ///< the time of this one cannot be kept, so that the next one would come at once
    };
    Answer answer = Answer::yes;
    std::string problem; ///< why it cannot be kept, in English: the file and the reason
};

/// Whether a link may have memory freed now: any web page can send one, so once a minute is all they get
/// together, whichever program hears them. The time of the last one is that of the file `freed-by-link` in
/// the user's state folder; where that cannot be written, as in a home that is read-only, links get nothing.
/// Any thread.
[[nodiscard]] LinkLeave mayFreeUpByLink();

} // namespace vantor::hosts::common
