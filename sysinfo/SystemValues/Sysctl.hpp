// SPDX-License-Identifier: MIT
#pragma once

#include "sysinfo/SystemValues/SysctlHW.hpp"
#include "sysinfo/SystemValues/SysctlRoot.hpp"

/// The namespaces of kernel values: `Sysctl` itself, `Sysctl::HW`, `Sysctl::Kern` and those without named
/// entries.
namespace vantor::SystemValues {

/// The kernel and the system around it.
class Sysctl::Kern : public SysctlFetchMixin<Kern> {
public:
    [[nodiscard]] static std::string namePrefix() { return "kern."; }

    [[nodiscard]] static Text osrevision() { return getString("osrevision"); }
    [[nodiscard]] static Text osproductversioncompat() { return getString("osproductversioncompat"); }
    [[nodiscard]] static Text osproductversion() { return getString("osproductversion"); }
    [[nodiscard]] static Text osreleasetype() { return getString("osreleasetype"); }
    [[nodiscard]] static Text bootargs() { return getString("bootargs"); }
    [[nodiscard]] static Text version() { return getString("version"); }
    [[nodiscard]] static Text hostname() { return getString("hostname"); }
    [[nodiscard]] static Text ostype() { return getString("ostype"); }
    [[nodiscard]] static Text osrelease() { return getString("osrelease"); }
};

class Sysctl::Machdep : public SysctlFetchMixin<Machdep> {
public:
    [[nodiscard]] static std::string namePrefix() { return "machdep."; }
};

class Sysctl::VFS : public SysctlFetchMixin<VFS> {
public:
    [[nodiscard]] static std::string namePrefix() { return "vfs."; }
};

class Sysctl::User : public SysctlFetchMixin<User> {
public:
    [[nodiscard]] static std::string namePrefix() { return "user."; }
};

class Sysctl::VM : public SysctlFetchMixin<VM> {
public:
    [[nodiscard]] static std::string namePrefix() { return "vm."; }
};

class Sysctl::Debug : public SysctlFetchMixin<Debug> {
public:
    [[nodiscard]] static std::string namePrefix() { return "debug."; }
};

class Sysctl::Net : public SysctlFetchMixin<Net> {
public:
    [[nodiscard]] static std::string namePrefix() { return "net."; }
};

} // namespace vantor::SystemValues
