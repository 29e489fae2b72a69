// SPDX-License-Identifier: MIT
#pragma once

#include "platform/remote/answers/QueryAnswer.hpp"
#include "platform/remote/fetch/Fetcher.hpp"

#include <functional>
#include <string>

namespace vantor::platform::remote {

/// What became of a question to a Prometheus server.
struct ServerTold {
    enum class Outcome {
        answered,
        refused, ///< this question alone: it cannot be understood or costs too much
        silent   ///< no server there, none that lets us in, or one with too much to do
    };
    Outcome outcome = Outcome::silent;
    std::string problem;      ///< English and printable; empty where it was answered
    bool hasWarnings = false; ///< something is missing in the answer
};

/// Hands out the series of an answer (readQueryAnswer), or says why there are none. A page, such as a
/// login's, is never taken for figures. Series that were handed out before a problem shows count for nothing.
/// Pure.
[[nodiscard]] ServerTold readServerAnswer(const FetchAnswer& answer,
                                          const std::function<void(const AnswerSeries&)>& take);

} // namespace vantor::platform::remote
