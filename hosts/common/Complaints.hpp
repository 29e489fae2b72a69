// SPDX-License-Identifier: MIT
#pragma once

#include "platform/machine/Source.hpp"

#include <string>
#include <utility>
#include <vector>

namespace vantor::hosts::common {

/// What a program says on standard error about its sources: each once when it fails, and again only after it
/// worked in between, whatever becomes of the reason (a mount that did not answer in time does not answer);
/// one line in English without control characters, "vantor-term: memory: /proc/meminfo: …". Main thread.
class Complaints {
public:
    explicit Complaints(std::string program) : m_program(std::move(program)) {}

    /// A preference file that is there but cannot be used, be it that it cannot be read or that it holds no
    /// list. Asks the current viewer.
    void tellStore();
    /// Those whose source was not failing at the last call.
    void tell(const std::vector<platform::SourceFailure>& failures);

private:
    void write(const platform::SourceFailure& failure) const;

    std::string m_program;
    std::vector<platform::Source> m_told; ///< the sources that were failing at the last call
};

} // namespace vantor::hosts::common
