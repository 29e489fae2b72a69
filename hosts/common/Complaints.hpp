// SPDX-License-Identifier: MIT
#pragma once

#include "platform/machine/Machine.hpp"

#include <string>
#include <utility>
#include <vector>

namespace vantor::hosts {

/// What a program says on standard error about its sources: each failure once, when it comes up, as one line
/// of harmless text in English, "vantor-term: memory: /proc/meminfo: …". Main thread.
class Complaints {
public:
    explicit Complaints(std::string program) : m_program(std::move(program)) {}

    /// A preference file that is there but cannot be used, be it that it cannot be read or that it holds no
    /// list. Asks the current machine.
    void tellStore();
    /// The failures that were not among those of the last call.
    void tell(const std::vector<platform::SourceFailure>& failures);

private:
    void write(const platform::SourceFailure& failure) const;

    std::string m_program;
    std::vector<platform::SourceFailure> m_told;
};

} // namespace vantor::hosts
