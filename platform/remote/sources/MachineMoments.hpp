// SPDX-License-Identifier: MIT
#pragma once

#include "platform/remote/answers/QueryAnswer.hpp"
#include "platform/remote/readings/Reading.hpp"

#include <optional>
#include <vector>

namespace vantor::platform::remote {

/// The last two moments at which a machine was measured, out of the samples that a server keeps of it.
struct MachineMoments {
    std::optional<Reading> before; ///< absent where there is one moment alone
    std::optional<Reading> after;
    double beforeSeconds = 0; ///< since 1970, on the server's clock
    double afterSeconds = 0;
    std::optional<double> downSince; ///< seconds since 1970: it answers the server no longer

    [[nodiscard]] bool isEmpty() const { return !after && !downSince; }
};

/// Samples of one moment have the same time. `up` says whether the last attempt brought any. The readings'
/// own times lie as far apart as the moments; the second is at 0. Pure.
[[nodiscard]] MachineMoments machineMoments(const std::vector<AnswerSeries>& series);

} // namespace vantor::platform::remote
