// SPDX-License-Identifier: MIT
#include "platform/remote/sources/MachineTable.hpp"

#include "platform/core/PrintableText.hpp"

#include <algorithm>
#include <cmath>
#include <utility>

namespace vantor::platform::remote {

namespace {

constexpr char separator = '\x1F'; // between the identity's values; not in names that anybody gives
constexpr std::string_view usualPort = ":9100";

using Labels = std::vector<std::pair<std::string, std::string>>;

/// By FleetFigure: the questions for figures come last and in the figures' order.
std::optional<std::size_t> placeOf(FleetQuestion question) {
    constexpr auto first = static_cast<std::size_t>(FleetQuestion::memory);
    static_assert(static_cast<std::size_t>(FleetQuestion::sent) - first ==
                  static_cast<std::size_t>(FleetFigure::sent));
    const auto place = static_cast<std::size_t>(question);
    return place >= first ? std::optional(place - first) : std::nullopt;
}

std::size_t hashOf(const std::vector<AnswerSeries::Label>& labels) {
    std::size_t all = 0;
    for (const AnswerSeries::Label& label : labels) { // the order of labels is free
        const std::size_t name = std::hash<std::string_view>()(label.name);
        all += name ^ (std::hash<std::string_view>()(label.value) * 31);
    }
    return all;
}

std::shared_ptr<const Labels> printableLabels(const std::vector<AnswerSeries::Label>& labels) {
    auto printable = std::make_shared<Labels>();
    for (const AnswerSeries::Label& label : labels) {
        if (label.name != "__name__") {
            printable->emplace_back(printableText(label.name), printableText(label.value));
        }
    }
    std::ranges::sort(*printable);
    return printable;
}

/// Shares that two moments of a counter make may leave their range by a hair.
std::optional<double> figureFrom(double told, std::size_t place) {
    const bool isShare = place <= static_cast<std::size_t>(FleetFigure::processor);
    if (!std::isfinite(told)) {
        return std::nullopt;
    }
    return isShare ? std::clamp(told, 0.0, 1.0) : std::max(told, 0.0);
}

} // namespace

MachineTable::MachineTable(std::vector<std::string> identity) : m_identity(std::move(identity)) {}

void MachineTable::begin() {
    m_hasAges = false;
    for (Entry& entry : m_entries) {
        entry.isSeen = false;
        entry.isUp = false;
        entry.age = untold;
        entry.told.fill(untold);
        entry.volume.clear();
    }
}

void MachineTable::makeKey(const AnswerSeries& row) {
    m_key.clear();
    for (const std::string& label : m_identity) {
        if (&label != &m_identity.front()) {
            m_key += separator;
        }
        m_key += row.label(label);
    }
}

/// Servers give their rows in one order for each question and each time: whose row followed the last one's
/// before is looked at first, which saves nearly all looks into the index and their misses of the cache.
MachineTable::Entry* MachineTable::entryOfKey() {
    Entry* const guess = m_last != nullptr ? m_last->next : nullptr;
    if (guess != nullptr && guess->machine.key == m_key) {
        m_last = guess;
        return guess;
    }
    const auto known = m_entryOf.find(m_key);
    return known == m_entryOf.end() ? nullptr : follow(known->second);
}

MachineTable::Entry* MachineTable::follow(Entry* entry) {
    if (m_last != nullptr) {
        m_last->next = entry;
    }
    m_last = entry;
    return entry;
}

void MachineTable::take(FleetQuestion question, const AnswerSeries& row, Rows& rows) {
    ++rows.all;
    makeKey(row);
    const double value = row.points.back().value;
    if (question == FleetQuestion::up) {
        takeUp(row, rows);
        return;
    }
    Entry* const known = entryOfKey();
    if (known == nullptr) {
        ++rows.unknown;
        return;
    }
    Entry& entry = *known;
    if (question == FleetQuestion::names) {
        const std::string_view name = row.label("nodename");
        m_areNamesNew = m_areNamesNew || !entry.isNamed || entry.nodeName != name;
        entry.nodeName = name;
        entry.isNamed = true;
    } else if (question == FleetQuestion::age) {
        rows.again += std::isnan(entry.age) ? 0 : 1;
        entry.age = std::isnan(entry.age) && std::isfinite(value) ? std::max(value, 0.0) : entry.age;
        m_hasAges = true;
    } else if (const std::optional<std::size_t> figure = placeOf(question); figure && std::isfinite(value)) {
        double& told = entry.told.at(*figure);
        if (!std::isnan(told)) {
            ++rows.again;
            return;
        }
        told = value;
        if (question == FleetQuestion::storage) {
            entry.volume = row.label("mountpoint");
        }
    }
}

void MachineTable::takeUp(const AnswerSeries& row, Rows& rows) {
    if (m_key.find_first_not_of(separator) == std::string::npos) {
        ++rows.unknown;
        return;
    }
    Entry* known = entryOfKey();
    if (known == nullptr) {
        known = &m_entries.emplace_back();
        known->machine.key = m_key;
        m_entryOf.emplace(known->machine.key, known);
        m_isListNew = true;
        follow(known);
    }
    Entry& entry = *known;
    const bool isUp = row.points.back().value > 0;
    if (entry.isSeen) { // a machine that one of two servers reaches is up
        ++rows.again;
        entry.isUp = entry.isUp || isUp;
        return;
    }
    entry.isSeen = true;
    entry.isUp = isUp;
    describe(entry, row);
}

void MachineTable::describe(Entry& entry, const AnswerSeries& row) {
    const std::size_t hash = hashOf(row.labels);
    if (entry.machine.labels != nullptr && entry.labelsHash == hash) {
        return;
    }
    entry.labelsHash = hash;
    entry.machine.labels = printableLabels(row.labels);
    std::string_view instance = row.label("instance");
    if (instance.ends_with(usualPort)) {
        instance.remove_suffix(usualPort.size());
    }
    entry.instance = printableText(instance);
    m_areNamesNew = true;
}

void MachineTable::dropUnseen() {
    const auto gone = std::erase_if(m_entries, [](const Entry& entry) { return !entry.isSeen; });
    m_isListNew = m_isListNew || gone > 0;
}

void MachineTable::finish(std::chrono::nanoseconds asked, bool isPartial) {
    if (!isPartial) {
        dropUnseen();
    }
    if (std::exchange(m_isListNew, false)) {
        std::ranges::sort(m_entries, {},
                          [](const Entry& entry) { return std::string_view(entry.machine.key); });
        m_entryOf.clear();
        m_last = nullptr;
        for (Entry& entry : m_entries) {
            entry.next = nullptr;
            m_entryOf.emplace(entry.machine.key, &entry);
        }
        m_areNamesNew = true;
    }
    if (std::exchange(m_areNamesNew, false)) {
        nameAll();
    }
    for (Entry& entry : m_entries) {
        if (entry.isSeen) {
            settle(entry, asked);
        }
    }
}

/// Rates go on for minutes after a machine has ended, so that they count only where it answers and a reading
/// of its own says how old it is, if the server tells such readings at all.
void MachineTable::settle(Entry& entry, std::chrono::nanoseconds asked) const {
    FleetMachine& machine = entry.machine;
    if (!entry.isUp) {
        if (!machine.downSince) {
            machine.downSince = std::chrono::system_clock::now();
        }
        machine.problem = "its exporter does not answer the server";
        return;
    }
    machine.downSince.reset();
    machine.problem.clear();
    const bool hasAge = std::isfinite(entry.age);
    const bool areRatesOfNow = hasAge || !m_hasAges;
    bool isTold = areRatesOfNow;
    for (std::size_t i = 0; i < machine.figures.size(); ++i) {
        const bool isGauge = i <= static_cast<std::size_t>(FleetFigure::storage);
        machine.figures.at(i) = isGauge || areRatesOfNow ? figureFrom(entry.told.at(i), i) : std::nullopt;
        isTold = isTold || machine.figures.at(i).has_value();
    }
    if (machine.volume != entry.volume) {
        machine.volume = printableText(entry.volume);
    }
    if (isTold) {
        const std::chrono::duration<double> age(hasAge ? entry.age : 0);
        machine.taken = asked - std::chrono::duration_cast<std::chrono::nanoseconds>(age);
    }
}

std::vector<FleetMachine> MachineTable::machines() const {
    std::vector<FleetMachine> all;
    all.reserve(m_entries.size());
    for (const Entry& entry : m_entries) {
        all.push_back(entry.machine);
    }
    return all;
}

std::optional<double> MachineTable::leastAge() const {
    std::optional<double> least;
    for (const Entry& entry : m_entries) {
        if (entry.isUp && std::isfinite(entry.age)) {
            least = std::min(least.value_or(entry.age), entry.age);
        }
    }
    return least;
}

std::vector<std::string> MachineTable::someIdentity() const {
    const auto some = std::ranges::find_if(m_entries, &Entry::isUp);
    return some == m_entries.end() ? std::vector<std::string>() : identityIn(some->machine.key);
}

std::vector<std::string> MachineTable::identityIn(std::string_view key) {
    std::vector<std::string> values;
    for (std::size_t end = 0; end != std::string_view::npos;) {
        end = key.find(separator);
        values.emplace_back(key.substr(0, end));
        key.remove_prefix(end == std::string_view::npos ? key.size() : end + 1);
    }
    return values;
}

} // namespace vantor::platform::remote
