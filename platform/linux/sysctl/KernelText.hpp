// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Readers of the texts that the kernel and the system publish. Pure; absent where a text is not of its form.
namespace vantor::platform::linux::sysctl {

/// The numbers of processors, ascending.
using CpuList = std::vector<unsigned>;

/// "0-3,8" as the files under /sys/devices/system/cpu have it; an empty text is an empty list.
[[nodiscard]] std::optional<CpuList> parseCpuList(std::string_view text);

/// The size of a cache in bytes: "48K", "2M", "512".
[[nodiscard]] std::optional<std::uint64_t> parseCacheSize(std::string_view text);

/// One block of /proc/cpuinfo: name to value, blanks around both removed.
using CpuinfoBlock = std::map<std::string, std::string, std::less<>>;
/// The blocks of /proc/cpuinfo. Some processors (ARM, PowerPC) close with a block about the whole machine.
[[nodiscard]] std::vector<CpuinfoBlock> parseCpuinfo(std::string_view text);

/// The value of a name in a block; empty where there is none.
[[nodiscard]] std::string_view fieldOf(const CpuinfoBlock& block, std::string_view name);
/// In the first block that has one.
[[nodiscard]] std::string_view firstField(const std::vector<CpuinfoBlock>& cpuinfo, std::string_view name);

/// "0xd0b", up to eight digits, small letters as the kernel writes them.
[[nodiscard]] std::optional<std::uint64_t> hexadecimal(std::string_view text);

/// A frequency in Hz: "2445.404" is in MHz, with "MHz" behind it or without, and up to six decimals.
[[nodiscard]] std::optional<std::uint64_t> parseMegahertz(std::string_view text);

/// The room of all devices in /proc/swaps in bytes; 0 where there is none. The file has it in KiB.
[[nodiscard]] std::optional<std::uint64_t> parseSwaps(std::string_view text);

/// A field of os-release(5): NAME=value, the value bare or in shell quotes. The last line of a name counts.
[[nodiscard]] std::optional<std::string> parseOsRelease(std::string_view text, std::string_view name);

/// Whether a list of words separated by blanks ("flags" of /proc/cpuinfo) holds a word.
[[nodiscard]] bool hasWord(std::string_view words, std::string_view word);

} // namespace vantor::platform::linux::sysctl
