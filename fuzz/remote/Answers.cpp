// SPDX-License-Identifier: MIT
#include "Fuzz.hpp"
#include "platform/remote/answers/QueryAnswer.hpp"

using namespace vantor::platform::remote;
using vantor::fuzz::require;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::size_t series = 0;
    const QueryAnswer answer =
        readQueryAnswer(vantor::fuzz::asText(data, size), [&series](const AnswerSeries& taken) {
            ++series;
            require(!taken.points.empty() && taken.labels.size() <= 128);
        });
    require(series == answer.series && answer.isWhole == answer.problem.empty());
    return 0;
}
