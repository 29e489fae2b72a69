// SPDX-License-Identifier: MIT
#include "platform/linux/InterfaceReader.hpp"

#include <algorithm>
#include <utility>

namespace vantor::platform::linux {

namespace {
/// A card's kind changes when it becomes another one's fast path; nothing announces that cheaply.
constexpr std::chrono::minutes checkAgain{1};
/// So many links may each be looked up in several files of /sys within one refresh.
constexpr std::size_t fewLinks = 32;

bool isReal(LinkKind kind) {
    return kind == LinkKind::physical || kind == LinkKind::modem;
}

bool counts(LinkKind kind) {
    return isReal(kind) || kind == LinkKind::wayOut;
}
} // namespace

InterfaceReader::InterfaceReader(const MachineOptions& options, FailureBoard& failures)
    : m_options(options),
      m_failures(failures),
      m_netDev(options.tree.path("proc/net/dev"), Shape::manyRecords),
      m_classifier(options.tree) {}

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
        Links::value_type* const link = find(counters->name, m_listed.size());
        if (link == nullptr) {
            ++m_newLinks;
        } else if (std::exchange(link->second.seen, m_pass) == m_pass) {
            continue; // listed twice
        }
        m_listed.push_back({*counters, link});
    }
    if (m_listed.empty() && !isEmptyLinkList(content.text)) { // no traffic would be an invented figure
        m_failures.fail(Source::network, m_netDev.path() + ": lists no link that can be read");
        return false;
    }
    return true;
}

InterfaceReader::Links::value_type* InterfaceReader::find(std::string_view name, std::size_t place) {
    if (place < m_order.size() && m_order[place]->first == name) {
        return m_order[place];
    }
    const auto known = m_links.find(name);
    return known == m_links.end() ? nullptr : &*known;
}

bool InterfaceReader::countedLinkMissing() const {
    return std::any_of(m_links.begin(), m_links.end(), [this](const Links::value_type& link) {
        return link.second.number && link.second.seen != m_pass;
    });
}

void InterfaceReader::forgetMissing() {
    m_order.clear();
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
    std::unordered_set<std::string> withoutDevice;
    if (m_newLinks > fewLinks && m_hasClassifier) {
        withoutDevice = m_classifier.withoutDevice();
        withoutDevice.erase("lo");
    }
    std::erase_if(m_listed, [this, &withoutDevice](Listed& listed) {
        if (listed.link != nullptr) {
            return false;
        }
        const auto [known, isNew] = m_links.try_emplace(std::string(listed.counters.name));
        listed.link = &*known;
        if (isNew) {
            const bool isOther = withoutDevice.count(known->first) != 0;
            setKind(known->second, known->first, isOther ? LinkKind::other : kindOf(known->first));
        }
        return !isNew; // listed twice
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

/// Without a card or a modem the links that carry a default route count; with one they do not.
void InterfaceReader::chooseWaysOut() {
    const std::set<std::string> chosen = m_real == 0 ? m_classifier.waysOut() : std::set<std::string>();
    m_waysOut = 0;
    for (const Listed& listed : m_listed) {
        auto& [name, link] = *listed.link;
        const bool isOne = chosen.contains(name) && !isReal(link.kind) && link.kind != LinkKind::loopback;
        if (isOne && link.kind == LinkKind::other) {
            setKind(link, name, LinkKind::wayOut);
        } else if (!isOne && link.kind == LinkKind::wayOut) {
            setKind(link, name, LinkKind::other);
        }
        m_waysOut += isOne ? 1 : 0;
    }
}

/// The counters of what counts, and for the platform's list so many entries a link as hold them.
std::vector<InterfaceAddress> InterfaceReader::entries() {
    std::vector<InterfaceAddress> result;
    result.reserve(m_listed.size());
    NetworkTotals totals;
    for (const Listed& listed : m_listed) {
        Link& link = listed.link->second;
        const LinkCounters& counters = listed.counters;
        if (!link.number) {
            result.push_back({link.name, AF_LINK, static_cast<std::uint32_t>(counters.receivedBytes),
                              static_cast<std::uint32_t>(counters.sentBytes)});
            continue;
        }
        TrafficTotals& total = link.kind == LinkKind::modem ? totals.modems : totals.cards;
        total.receivedBytes += counters.receivedBytes;
        total.sentBytes += counters.sentBytes;
        link.received.advance(counters.receivedBytes);
        link.sent.advance(counters.sentBytes);
        const std::size_t parts = std::max(link.received.parts(), link.sent.parts());
        for (std::size_t i = 0; i < parts; ++i) {
            result.push_back({link.name, AF_LINK, link.received.part(i), link.sent.part(i)});
        }
    }
    m_totals = totals;
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
    // A link may be there before its route is.
    if (changed || due || (m_real == 0 && m_waysOut == 0)) {
        chooseWaysOut();
    }
    if (changed || m_order.empty()) {
        m_order.clear();
        for (const Listed& listed : m_listed) {
            m_order.push_back(listed.link);
        }
    }
    return entries();
}

std::optional<NetworkTotals> InterfaceReader::totals() {
    const std::lock_guard lock(m_mutex);
    return m_totals;
}

} // namespace vantor::platform::linux
