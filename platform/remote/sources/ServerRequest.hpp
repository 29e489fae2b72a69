// SPDX-License-Identifier: MIT
#pragma once

#include "platform/remote/fetch/Fetcher.hpp"
#include "platform/remote/sources/PrometheusOptions.hpp"

#include <optional>
#include <string>

namespace vantor::platform::remote {

/// An instant query of Prometheus's HTTP API, as a POST: questions are longer than some servers take in an
/// address. `time` is the moment that it is about, in seconds since 1970 on the server's clock; absent: the
/// server's now. The server gives it up after `patience` seconds, and so do we a little later. Pure.
[[nodiscard]] FetchRequest serverRequest(const PrometheusOptions& options, const std::string& question,
                                         std::optional<double> time, double patience);

} // namespace vantor::platform::remote
