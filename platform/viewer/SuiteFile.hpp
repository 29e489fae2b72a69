// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace vantor::platform {

/// A preference file's content, or why there is none.
struct SuiteFile {
    std::string path;    ///< where it is; empty when nothing is there
    std::string content; ///< the bytes; empty when absent
    bool exists = false; ///< false: nothing is there, which is no failure
    bool usable = false; ///< true: `content` holds the whole file
    std::string reason;  ///< what is wrong with a file that is there and not usable, in English
};

} // namespace vantor::platform
