// SPDX-License-Identifier: MIT
#include "platform/linux/LinkClassifier.hpp"

#include "platform/linux/kernel/KernelFile.hpp"
#include "platform/linux/kernel/TextScan.hpp"

#include <dirent.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <memory>

namespace vantor::platform::linux {

namespace {

// Hardware types of include/uapi/linux/if_arp.h.
constexpr std::uint64_t typeEthernet = 1, typeFireWire = 24, typeInfiniBand = 32, typeRawIp = 519;

struct CloseFolder {
    void operator()(DIR* folder) const { ::closedir(folder); }
};

std::optional<std::uint64_t> firstNumber(std::string_view text) {
    const std::optional<Line> line = takeLine(text);
    return line && line->ended ? numberFrom(line->text) : std::nullopt;
}

} // namespace

bool LinkClassifier::available() const {
    return ::access(m_folder.c_str(), F_OK) == 0;
}

bool LinkClassifier::exists(std::string_view name, const char* file) const {
    return ::access((m_folder + std::string(name) + file).c_str(), F_OK) == 0;
}

std::string LinkClassifier::content(std::string_view name, const char* file) const {
    KernelFile source(m_folder + std::string(name) + file, Shape::oneRecord);
    return std::string(source.read(4096).text);
}

LinkKind LinkClassifier::kind(std::string_view name) const {
    if (name == "lo") {
        return LinkKind::loopback;
    }
    if (!exists(name, "/device")) {
        return LinkKind::other;
    }
    const std::string uevent = content(name, "/uevent");
    const std::string_view devType = parseDevType(uevent);
    const std::uint64_t type = firstNumber(content(name, "/type")).value_or(0);
    if (devType == "wwan" || type == typeRawIp || isModemName(name)) {
        return LinkKind::modem;
    }
    // A switch's ports pass their traffic through the card that the switch hangs on (distributed switch
    // architecture), and a card that serves as the fast path of another one is counted there (Hyper-V,
    // failover).
    const bool countedElsewhere = devType == "dsa" || exists(name, "/master/device");
    const bool carriesFrames = type == typeEthernet || type == typeFireWire || type == typeInfiniBand;
    return carriesFrames && !countedElsewhere ? LinkKind::physical : LinkKind::other;
}

std::unordered_set<std::string> LinkClassifier::withoutDevice() const {
    std::unordered_set<std::string> names;
    const std::unique_ptr<DIR, CloseFolder> folder(::opendir(m_virtualFolder.c_str()));
    // NOLINTNEXTLINE(concurrency-mt-unsafe): the folder belongs to this function
    while (const dirent* const entry = folder ? ::readdir(folder.get()) : nullptr) {
        names.emplace(entry->d_name);
    }
    return names;
}

bool LinkClassifier::isVirtualEthernet(std::string_view name) const {
    if (firstNumber(content(name, "/type")) != typeEthernet || exists(name, "/master")) {
        return false;
    }
    // A link with its other end in another name space refers to an index that is not its own.
    const std::optional<std::uint64_t> own = firstNumber(content(name, "/ifindex"));
    const std::optional<std::uint64_t> other = firstNumber(content(name, "/iflink"));
    const std::string uevent = content(name, "/uevent");
    const std::string_view devType = parseDevType(uevent);
    return own && other && own != other && devType != "vlan" && devType != "vxlan";
}

} // namespace vantor::platform::linux
