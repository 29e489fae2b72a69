// SPDX-License-Identifier: MIT
#pragma once

#include "sysinfo/SystemValues/SysctlFetch.hpp"

#include <optional>
#include <string>

namespace vantor::SystemValues {

/// The kernel's values by whole keys (`Sysctl::getString("kern.ostype")`), and its namespaces, nested as the
/// keys are. A getter reads the key of its own name; absent where the kernel does not know it. Sizes are
/// bytes.
class Sysctl : public SysctlFetchMixin<Sysctl> {
public:
    using Text = std::optional<std::string>;
    using Count = std::optional<PackagesBase::UInt>;

    [[nodiscard]] static std::string namePrefix() { return ""; }

    class HW;
    class Kern;
    class Machdep;
    class VFS;
    class User;
    class VM;
    class Debug;
    class Net;
};

} // namespace vantor::SystemValues
