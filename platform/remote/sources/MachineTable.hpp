// SPDX-License-Identifier: MIT
#pragma once

#include "platform/fleet/FleetSnapshot.hpp"
#include "platform/remote/answers/QueryAnswer.hpp"
#include "platform/remote/sources/FleetQuestions.hpp"

#include <array>
#include <chrono>
#include <cstddef>
#include <deque>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace vantor::platform::remote {

/// The machines that one server knows, merged from its answers by their identity. What does not change
/// (names, labels) is kept from refresh to refresh. Not for several threads at once.
class MachineTable {
public:
    /// What an answer held.
    struct Rows {
        std::size_t all = 0;
        std::size_t again = 0; ///< of a machine that had one already: the first counts
        std::size_t unknown =
            0; ///< of no machine that `up` named, or without a label that tells machines apart
    };

    explicit MachineTable(std::vector<std::string> identity);
    MachineTable(const MachineTable&) = delete; // its entries know each other by address
    MachineTable& operator=(const MachineTable&) = delete;

    /// Forgets what the last refresh told, not what it made known.
    void begin();
    /// A row of an answer to any question but `spacing`. First those of `up`, which say which machines there
    /// are: figures of others are passed over.
    void take(FleetQuestion question, const AnswerSeries& row, Rows& rows);
    /// Makes the answers since `begin` the machines' state. Those that the server no longer names go, unless
    /// the answer was only a part. Of a machine that does not answer the last figures stay. `asked` is when
    /// the questions' moment was, on the steady clock.
    void finish(std::chrono::nanoseconds asked, bool isPartial);

    [[nodiscard]] std::vector<FleetMachine> machines() const; ///< ordered by key
    [[nodiscard]] std::size_t size() const { return m_entries.size(); }
    [[nodiscard]] bool hasNameless() const; ///< one answers whose name has not been asked for
    void noteNamesAsked();
    [[nodiscard]] std::size_t askedTwice() const { return m_askedTwice; } ///< by several jobs
    /// The youngest reading's age in seconds, where ages were told.
    [[nodiscard]] std::optional<double> leastAge() const;
    /// The identity of a machine that answers, to ask it for more; empty where there is none.
    [[nodiscard]] std::vector<std::string> someIdentity() const;
    /// The values of the identity's labels in a machine's key.
    [[nodiscard]] static std::vector<std::string> identityIn(std::string_view key);

private:
    static constexpr double untold = std::numeric_limits<double>::quiet_NaN();
    struct Entry {
        FleetMachine machine;
        std::string instance; ///< for people, without the usual port
        std::string nodeName;
        std::size_t labelsHash = 0;
        bool isSeen = false;
        bool isUp = false;
        bool isNamed = false;
        double age = untold; ///< seconds
        std::array<double, 5> told{untold, untold, untold, untold, untold};
        std::string volume;
        Entry* next = nullptr; ///< whose row came behind this one's the last time
    };
    void makeKey(const AnswerSeries& row);
    [[nodiscard]] Entry* entryOfKey();
    Entry* follow(Entry* entry);
    void takeUp(const AnswerSeries& row, Rows& rows);
    void describe(Entry& entry, const AnswerSeries& row);
    void dropUnseen();
    void nameAll();
    void settle(Entry& entry, std::chrono::nanoseconds asked) const;
    [[nodiscard]] static std::string joinedIdentity(const Entry& entry);

    std::vector<std::string> m_identity;
    std::deque<Entry> m_entries;                            ///< ordered by key after `finish`
    std::unordered_map<std::string_view, Entry*> m_entryOf; ///< by key
    Entry* m_last = nullptr;                                ///< whose row was the last one
    std::string m_key;                                      ///< the row's
    bool m_hasAges = false;
    bool m_isListNew = false;
    bool m_areNamesNew = false;
    std::size_t m_askedTwice = 0;
};

} // namespace vantor::platform::remote
