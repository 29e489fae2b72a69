// SPDX-License-Identifier: MIT
// Must not compile, and must say what is missing.
#include "sysinfo/PackagesBase/RepresentableMixin.hpp"

struct Level : vantor::PackagesBase::RepresentableMixin<Level> {
    std::optional<bool> boolValue() const;
    std::optional<bool> cStyleBoolValue() const;
};

int main() {
    return Level().isBool() ? 0 : 1;
}
