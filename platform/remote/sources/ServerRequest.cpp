// SPDX-License-Identifier: MIT
#include "platform/remote/sources/ServerRequest.hpp"

#include "platform/remote/sources/QuestionText.hpp"

#include <cmath>

namespace vantor::platform::remote {

FetchRequest serverRequest(const PrometheusOptions& options, const std::string& question,
                           std::optional<double> time, double patience) {
    constexpr double slack = 5;                              // seconds for the way there and back
    constexpr std::size_t mostBytes = std::size_t{32} << 20; // `up` of 10,000 machines is 1 to 2 MB
    FetchRequest request;
    request.url = options.url + "/api/v1/query";
    request.takesTurns = true;
    request.accept = "application/json";
    request.access = options.access;
    request.mostBytes = mostBytes;
    request.patience =
        std::chrono::ceil<std::chrono::milliseconds>(std::chrono::duration<double>(patience + slack));
    appendFormField(request.form, "query", question);
    appendFormField(request.form, "timeout", std::to_string(std::lround(patience)) + "s");
    if (time) {
        appendFormField(request.form, "time", secondsText(*time));
    }
    return request;
}

} // namespace vantor::platform::remote
