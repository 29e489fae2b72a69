// SPDX-License-Identifier: MIT
#include "WalkList.hpp"

#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (vantor::platform::formOfPropertyList(vantor::fuzz::asText(data, size)) !=
        vantor::platform::PropertyListForm::xml) {
        return 0; // the other target's
    }
    const vantor::platform::PropertyListResult list =
        vantor::platform::readPropertyList(std::string(vantor::fuzz::asText(data, size)));
    vantor::fuzz::walk(list);
    vantor::fuzz::writeAgain(list, vantor::platform::PropertyListForm::xml);
    return 0;
}
