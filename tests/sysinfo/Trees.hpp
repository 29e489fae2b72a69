// SPDX-License-Identifier: MIT
#pragma once

#include "TestTree.hpp"

#include <string>
#include <string_view>

/// Machines as trees of /proc, /sys and /etc. None was captured: each is constructed from the formats that
/// the kernel documents (sysfs-devices-system-cpu, proc(5), os-release(5)), with figures as such machines
/// have them.
namespace vantor::tests {

struct Tree : TestTree {
    void cpu(unsigned number, const std::string& file, std::string_view content) const {
        write("sys/devices/system/cpu/cpu" + std::to_string(number) + "/" + file,
              std::string(content) + "\n");
    }
    void cache(unsigned number, unsigned index, std::string_view level, std::string_view type,
               std::string_view size, std::string_view sharing) const {
        const std::string folder = "cache/index" + std::to_string(index) + "/";
        cpu(number, folder + "level", level);
        cpu(number, folder + "type", type);
        cpu(number, folder + "size", size);
        cpu(number, folder + "shared_cpu_list", sharing);
    }
    void lists(std::string_view possible, std::string_view present, std::string_view online) const {
        const std::string folder = "sys/devices/system/cpu/";
        write(folder + "possible", std::string(possible) + "\n");
        write(folder + "present", std::string(present) + "\n");
        write(folder + "online", std::string(online) + "\n");
    }
};

/// 2 fast cores with two threads each (0-3), 4 frugal ones (4-7) behind one second-level cache, 8 more slots.
inline void makeHybridLaptop(const Tree& tree) {
    tree.lists("0-15", "0-7", "0-7");
    tree.write("sys/devices/cpu_core/cpus", "0-3\n");
    tree.write("sys/devices/cpu_atom/cpus", "4-7\n");
    for (unsigned cpu = 0; cpu < 8; ++cpu) {
        const unsigned first = cpu < 4 ? cpu / 2 * 2 : cpu;
        const std::string core =
            cpu < 4 ? std::to_string(first) + "-" + std::to_string(first + 1) : std::to_string(cpu);
        tree.cpu(cpu, "topology/core_cpus_list", core);
        tree.cpu(cpu, "cpu_capacity", cpu < 2 ? "1024" : cpu < 4 ? "1009" : "623"); // no sign of more levels
        tree.cache(cpu, 0, "1", "Data", cpu < 4 ? "48K" : "32K", core);
        tree.cache(cpu, 1, "1", "Instruction", cpu < 4 ? "32K" : "64K", core);
        tree.cache(cpu, 2, "2", "Unified", cpu < 4 ? "1280K" : "2048K", cpu < 4 ? core : "4-7");
        tree.cache(cpu, 3, "3", "Unified", "12288K", "0-7");
    }
    tree.write(
        "proc/cpuinfo",
        "processor\t: 0\nvendor_id\t: GenuineIntel\ncpu family\t: 6\nmodel\t\t: 154\n"
        "flags\t\t: fpu lm movbe abm bmi1 avx2 bmi2 fma\n\nprocessor\t: 1\nvendor_id\t: GenuineIntel\n");
    tree.write("proc/meminfo", "MemTotal:       16106128 kB\nMemFree:         1203456 kB\n");
    tree.write("sys/class/dmi/id/product_name", "Laptop 14 Gen 3\n");
    tree.write("proc/sys/kernel/ostype", "Linux\n");
    tree.write("proc/sys/kernel/hostname", "lap\n");
    tree.write("proc/sys/kernel/osrelease", "6.1.0-18-amd64\n");
    tree.write("proc/sys/kernel/version", "#1 SMP PREEMPT_DYNAMIC Debian 6.1.76-1 (2024-02-01)\n");
    tree.write("proc/cmdline", "BOOT_IMAGE=/vmlinuz root=/dev/sda1 ro quiet\n");
    tree.write("etc/os-release", "NAME=\"Debian GNU/Linux\"\nVERSION_ID=\"12\"\nID=debian\n");
}

/// 2 fast cores (6-7) and 6 frugal ones (0-5), one of which (5) and one fast one (7) sleep.
inline void makePhone(const Tree& tree) {
    tree.lists("0-7", "0-7", "0-4,6");
    for (unsigned cpu = 0; cpu < 8; ++cpu) {
        tree.cpu(cpu, "cpu_capacity", cpu < 6 ? "402" : "1024");
        if (cpu != 5 && cpu != 7) { // what is offline shows neither topology nor caches
            tree.cpu(cpu, "topology/thread_siblings_list", std::to_string(cpu));
            tree.cache(cpu, 0, "1", "Data", cpu < 6 ? "32K" : "64K", std::to_string(cpu));
            tree.cache(cpu, 1, "1", "Instruction", cpu < 6 ? "32K" : "64K", std::to_string(cpu));
            tree.cache(cpu, 2, "2", "Unified", cpu < 6 ? "128K" : "256K", std::to_string(cpu));
        }
    }
    tree.write("sys/devices/system/cpu/smt/control", "notimplemented\n");
    tree.write("proc/cpuinfo",
               "processor\t: 0\nFeatures\t: fp asimd evtstrm aes crc32\nCPU implementer\t: 0x51\n"
               "CPU part\t: 0x803\n\nHardware\t: Qualcomm Technologies, Inc SDM845\n");
    tree.write("proc/meminfo", "MemTotal:        1801024 kB\n");
    tree.write("sys/firmware/devicetree/base/model", std::string_view("A Phone\0", 8));
    tree.write("usr/lib/os-release", "ID=mobian\nVERSION_ID=13\nBUILD_ID='2024.05'\nRELEASE_TYPE=stable\n");
}

/// 2 sockets of 32 cores with two threads each.
inline void makeServer(const Tree& tree) {
    tree.lists("0-255", "0-127", "0-127");
    for (unsigned cpu = 0; cpu < 128; ++cpu) {
        const unsigned core = cpu % 64;
        const std::string siblings = std::to_string(core) + "," + std::to_string(core + 64);
        tree.cpu(cpu, "topology/thread_siblings_list", siblings);
        tree.cpu(cpu, "topology/physical_package_id", core < 32 ? "0" : "1");
        tree.cpu(cpu, "topology/core_id", std::to_string(core % 32)); // repeats in the second socket
    }
    tree.cache(0, 0, "1", "Data", "32K", "0,64");
    tree.cache(0, 1, "1", "Instruction", "32K", "0,64");
    tree.cache(0, 2, "2", "Unified", "1024K", "0,64");
    tree.write("proc/cpuinfo", "processor\t: 0\nvendor_id\t: AuthenticAMD\ncpu family\t: 25\nmodel\t\t: 17\n"
                               "flags\t\t: fpu lm movbe abm bmi1 avx2 bmi2 fma\n");
    tree.write("proc/meminfo", "MemTotal:       1056443392 kB\n");
}

/// A hardened container: no /sys, a /proc/cpuinfo that a helper has cut to two threads of one core.
inline void makeContainer(const Tree& tree) {
    const std::string block = "vendor_id\t: GenuineIntel\ncpu family\t: 6\nmodel\t\t: 63\n"
                              "physical id\t: 0\ncore id\t\t: 5\nflags\t\t: fpu lm sse2\n\n";
    tree.write("proc/cpuinfo", "processor\t: 0\n" + block + "processor\t: 1\n" + block);
    tree.write("proc/meminfo", "MemTotal:         524288 kB\nMemFree:          100 kB\n");
    tree.write("proc/sys/kernel/hostname", "3f2a91c07be4\n");
    tree.write("etc/os-release", "ID=alpine\nVERSION_ID=3.19.1\n");
}

} // namespace vantor::tests
