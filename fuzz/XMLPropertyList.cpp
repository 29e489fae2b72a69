// SPDX-License-Identifier: MIT
#include "WalkList.hpp"

#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    vantor::fuzz::walk(vantor::platform::readPropertyList(std::string(vantor::fuzz::asText(data, size))));
    return 0;
}
