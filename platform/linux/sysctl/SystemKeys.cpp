// SPDX-License-Identifier: MIT
#include "platform/linux/figures/MemInfo.hpp"
#include "platform/linux/kernel/TextScan.hpp"
#include "platform/linux/sysctl/NamedKeys.hpp"

namespace vantor::platform::linux::sysctl {

namespace {

using From = const Sources&;
using Names = SystemCalls::Names;

SysctlAnswer file(From from, std::string_view path) {
    return textAnswer(from.tree.line(path));
}

/// A name of the kernel's: its file, which belongs to the container that asks, else the system call.
SysctlAnswer kernelName(From from, std::string_view path, std::string Names::*name) {
    const auto found = from.tree.line(path);
    return textAnswer(found ? *found : from.calls.uname().*name);
}

/// The firmware's name of the machine: DMI on PCs, the device tree elsewhere.
SysctlAnswer model(From from) {
    SysctlAnswer name = file(from, "sys/class/dmi/id/product_name");
    return name.error == 0 ? name : file(from, "sys/firmware/devicetree/base/model");
}

SysctlAnswer osRelease(From from, std::string_view field) {
    KernelTree::Content content = from.tree.read("etc/os-release");
    if (content.error != 0) {
        content = from.tree.read("usr/lib/os-release");
    }
    return textAnswer(parseOsRelease(content.text, field));
}

/// "93784.42 700123.08": the seconds since the start first, without those asleep.
SysctlAnswer uptime(From from) {
    const std::string text = from.tree.line("proc/uptime").value_or("");
    std::string_view rest = text;
    return number8(numberFrom(takeUntil(rest, '.')));
}

constexpr NamedKey keys[] = {
    {"hw.machine", [](From from) { return textAnswer(from.calls.uname().machine); }},
    {"hw.memsize",
     [](From from) { return number8(parseMemInfo(from.tree.read("proc/meminfo").text).memTotal); }},
    {"hw.model", model},
    {"hw.pagesize", [](From from) { return number8(from.calls.pageSize()); }},
    {"kern.bootargs", [](From from) { return file(from, "proc/cmdline"); }},
    {"kern.hostname",
     [](From from) { return kernelName(from, "proc/sys/kernel/hostname", &Names::nodename); }},
    {"kern.osproductname", [](From from) { return osRelease(from, "PRETTY_NAME"); }},
    {"kern.osproductversion", [](From from) { return osRelease(from, "VERSION_ID"); }},
    {"kern.osproductversioncompat", [](From from) { return osRelease(from, "VERSION_ID"); }},
    {"kern.osrelease",
     [](From from) { return kernelName(from, "proc/sys/kernel/osrelease", &Names::release); }},
    {"kern.osreleasetype", [](From from) { return osRelease(from, "RELEASE_TYPE"); }},
    {"kern.osrevision", [](From from) { return osRelease(from, "BUILD_ID"); }},
    {"kern.ostype", [](From from) { return kernelName(from, "proc/sys/kernel/ostype", &Names::sysname); }},
    {"kern.uptime", uptime},
    {"kern.version", [](From from) { return kernelName(from, "proc/sys/kernel/version", &Names::version); }},
    {"vm.swap_total", [](From from) { return number8(parseSwaps(from.tree.read("proc/swaps").text)); }},
};

} // namespace

std::span<const NamedKey> systemKeys() {
    return keys;
}

} // namespace vantor::platform::linux::sysctl
