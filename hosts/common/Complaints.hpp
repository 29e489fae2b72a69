// SPDX-License-Identifier: MIT
#pragma once

#include "platform/machine/Source.hpp"

#include <string>
#include <utility>
#include <vector>

namespace vantor::hosts::common {

/// What a program says on standard error about its sources: a line in English, without control characters,
/// when a source fails, "vantor-term: memory: /proc/meminfo: …", and the next one only after the source has
/// worked in between, even where the reason reads differently meanwhile. Main thread.
class Complaints {
public:
    explicit Complaints(std::string program) : m_program(std::move(program)) {}

    /// A preference file that is there but cannot be used, be it that it cannot be read or that it holds no
    /// list. Asks the current viewer.
    void tellStore();
    /// Tells of those whose source was not failing at the last call.
    void tell(const std::vector<platform::SourceFailure>& failures);

private:
    void write(const platform::SourceFailure& failure) const;

    std::string m_program;
    std::vector<platform::Source> m_told; ///< the sources that were failing at the last call
};

} // namespace vantor::hosts::common
