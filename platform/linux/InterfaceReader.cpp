// SPDX-License-Identifier: MIT
#include "platform/linux/InterfaceReader.hpp"

#include <algorithm>
#include <utility>

namespace vantor::platform::linux_machine {

namespace {
/// A card's kind changes when it becomes another one's fast path; nothing announces that cheaply.
constexpr std::chrono::minutes checkAgain{1};

bool isReal(LinkKind kind) {
    return kind == LinkKind::physical || kind == LinkKind::modem;
}

bool counts(LinkKind kind) {
    return isReal(kind) || kind == LinkKind::virtualEthernet;
}
} // namespace

InterfaceReader::InterfaceReader(const MachineOptions& options, FailureBoard& failures)
    : m_options(options),
      m_failures(failures),
      m_netDev(options.procRoot + "/net/dev", Shape::manyRecords),
      m_classifier(options.sysRoot) {}

/// Reads the kernel's list and marks the links in it as seen.
bool InterfaceReader::list() {
    const KernelFile::Content content = m_netDev.read();
    if (content.error != 0) {
        m_failures.fail(Source::network, m_netDev.reason(content.error));
        return false;
    }
    ++m_pass;
    m_listed.clear();
    m_newLinks = 0;
    std::string_view text = content.text;
    while (const std::optional<LinkCounters> counters = takeLink(text)) {
        if (const auto known = m_links.find(counters->name); known == m_links.end()) {
            ++m_newLinks;
        } else if (std::exchange(known->second.seen, m_pass) == m_pass) {
            continue; // listed twice
        }
        m_listed.push_back(*counters);
    }
    return true;
}

bool InterfaceReader::countedLinkMissing() const {
    return std::any_of(m_links.begin(), m_links.end(), [this](const Links::value_type& link) {
        return link.second.number && link.second.seen != m_pass;
    });
}

void InterfaceReader::forgetMissing() {
    for (auto link = m_links.begin(); link != m_links.end();) {
        if (link->second.seen == m_pass) {
            ++link;
        } else {
            release(link->second);
            link = m_links.erase(link);
        }
    }
}

void InterfaceReader::release(Link& link) {
    if (link.number) {
        pool(link.kind).give(*link.number);
        link.number.reset();
    }
    m_real -= isReal(link.kind) ? 1 : 0;
    link.kind = LinkKind::other;
}

LinkKind InterfaceReader::kindOf(std::string_view name) const {
    return m_hasClassifier ? m_classifier.kind(name) : kindByName(name);
}

void InterfaceReader::setKind(Link& link, std::string_view name, LinkKind kind) {
    release(link);
    link.kind = kind;
    m_real += isReal(kind) ? 1 : 0;
    if (counts(kind)) {
        link.number = pool(kind).take();
        link.name = numberedName(kind, *link.number);
    } else {
        link.name = unnumberedName(kind, name);
    }
}

void InterfaceReader::addNew() {
    m_hasClassifier = m_classifier.available();
    std::erase_if(m_listed, [this](const LinkCounters& counters) {
        const auto [known, isNew] = m_links.try_emplace(std::string(counters.name));
        Link& link = known->second;
        if (isNew) {
            link.added = link.seen = m_pass;
            setKind(link, counters.name, kindOf(counters.name));
        }
        return !isNew && link.added == m_pass; // listed twice
    });
}

void InterfaceReader::checkKinds() {
    for (auto& [name, link] : m_links) {
        if (isReal(link.kind)) {
            if (const LinkKind kind = kindOf(name); kind != link.kind) {
                setKind(link, name, kind);
            }
        }
    }
}

/// Without a card or a modem the virtual Ethernets are the way out; with one they are not.
void InterfaceReader::chooseWayOut() {
    const bool needed = m_real == 0 && m_hasClassifier;
    for (const LinkCounters& counters : m_listed) {
        Link& link = m_links.find(counters.name)->second;
        if (needed && link.kind == LinkKind::other && m_classifier.isVirtualEthernet(counters.name)) {
            setKind(link, counters.name, LinkKind::virtualEthernet);
        } else if (!needed && link.kind == LinkKind::virtualEthernet) {
            setKind(link, counters.name, LinkKind::other);
        }
    }
}

std::vector<InterfaceAddress> InterfaceReader::entries() const {
    std::vector<InterfaceAddress> result;
    result.reserve(m_listed.size());
    for (const LinkCounters& counters : m_listed) {
        result.push_back({m_links.find(counters.name)->second.name, AF_LINK,
                          static_cast<std::uint32_t>(counters.receivedBytes),
                          static_cast<std::uint32_t>(counters.sentBytes)});
    }
    return result;
}

std::optional<std::vector<InterfaceAddress>> InterfaceReader::read() {
    const std::lock_guard lock(m_mutex);
    if (!list() || (countedLinkMissing() && !list())) {
        return std::nullopt;
    }
    m_failures.clear(Source::network);
    const std::chrono::nanoseconds now = m_options.clock();
    const bool due = m_checked && now - *m_checked >= checkAgain;
    bool changed = m_newLinks > 0;
    if (m_listed.size() - m_newLinks != m_links.size()) {
        forgetMissing();
        changed = true;
    }
    if (m_newLinks > 0) {
        addNew();
    }
    if (due) {
        checkKinds();
    }
    if (due || !m_checked) {
        m_checked = now;
    }
    if (changed || due) {
        chooseWayOut();
    }
    return entries();
}

} // namespace vantor::platform::linux_machine
