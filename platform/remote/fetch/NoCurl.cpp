// SPDX-License-Identifier: MIT
#include "platform/remote/fetch/Fetcher.hpp"

namespace vantor::platform::remote {

std::unique_ptr<Fetcher> openFetcher(std::string& problem) {
    problem = "this program was built without libcurl";
    return nullptr;
}

} // namespace vantor::platform::remote
