// SPDX-License-Identifier: MIT
#include "platform/core/PrintableText.hpp"
#include "platform/remote/sources/MachineTable.hpp"

#include <algorithm>
#include <string_view>
#include <unordered_map>

namespace vantor::platform::remote {

std::string MachineTable::joinedIdentity(const Entry& entry) {
    std::string all;
    for (const std::string& value : identityIn(entry.machine.key)) {
        all += (all.empty() || value.empty() ? "" : " ") + printableText(value);
    }
    return all.empty() ? "\u2013" : all; // a question of the user's own may name none
}

/// What a machine calls itself where no other does, else its address, else all that tells it apart.
void MachineTable::nameAll() {
    std::unordered_map<std::string_view, std::size_t> own;
    std::unordered_map<std::string_view, std::size_t> addresses;
    for (const Entry& entry : m_entries) {
        ++own[entry.nodeName];
        ++addresses[entry.instance];
    }
    m_askedTwice = 0;
    for (Entry& entry : m_entries) {
        const bool isOnlyOne = addresses[entry.instance] == 1 && !entry.instance.empty();
        m_askedTwice += isOnlyOne ? 0 : 1;
        if (!entry.nodeName.empty() && own[entry.nodeName] == 1) {
            entry.machine.name = printableText(entry.nodeName);
        } else {
            entry.machine.name = isOnlyOne ? entry.instance : joinedIdentity(entry);
        }
    }
}

void MachineTable::noteNamesAsked() {
    for (Entry& entry : m_entries) {
        entry.isNamed = entry.isNamed || entry.isUp;
    }
}

bool MachineTable::hasNameless() const {
    return std::ranges::any_of(m_entries, [](const Entry& entry) { return entry.isUp && !entry.isNamed; });
}

} // namespace vantor::platform::remote
