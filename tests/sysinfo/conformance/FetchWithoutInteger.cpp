// SPDX-License-Identifier: MIT
// Must not compile, and must say what is missing.
#include "sysinfo/PackagesBase/BoolFromInt.hpp"

struct Source : vantor::PackagesBase::FetchProtocolBoolFromIntMixin<Source> {
    static std::optional<std::string> getString(std::string_view);
};

int main() {
    return Source::getBool("name").has_value() ? 0 : 1;
}
