// SPDX-License-Identifier: MIT
#include "WalkList.hpp"

#include <string>

/// The input is what follows the magic.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const vantor::platform::PropertyListResult list =
        vantor::platform::readPropertyList(std::string("bplist00").append(vantor::fuzz::asText(data, size)));
    vantor::fuzz::walk(list);
    vantor::fuzz::writeAgain(list, vantor::platform::PropertyListForm::binary);
    return 0;
}
