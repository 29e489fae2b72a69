// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

namespace vantor::platform::remote {

/// Who asks, and whom to believe: what goes with each question to one origin, and to no other. Never
/// written anywhere. Empty members are not used.
struct Access {
    std::string user = {}; ///< with the password: HTTP's basic authentication
    std::string password = {};
    std::string bearer = {};               ///< a token
    std::string authority = {};            ///< a file of certificates to believe in place of the system's
    std::string certificate = {};          ///< a file: our own
    std::string key = {};                  ///< a file: of that certificate
    bool believesAnybody = false;          ///< no certificate is checked
    std::vector<std::string> headers = {}; ///< "Name: value", without a line's end
};

} // namespace vantor::platform::remote
