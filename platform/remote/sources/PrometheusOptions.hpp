// SPDX-License-Identifier: MIT
#pragma once

#include "platform/remote/fetch/Access.hpp"

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace vantor::platform::remote {

/// Questions of the user's own, in PromQL, in place of the usual ones; empty: the usual one. Each answers
/// with one row for a machine, which has the identity's labels: shares from 0 to 1, bytes a second, for `up`
/// 1 or 0 with all labels to group and filter by, for `age` the seconds since the machine was last measured.
struct PrometheusQueries {
    std::string up = {};
    std::string memory = {};
    std::string storage = {}; ///< a row's label "mountpoint" names the volume
    std::string processor = {};
    std::string received = {};
    std::string sent = {};
    std::string age = {};
};

/// A Prometheus server, or what speaks its HTTP API, and which of its machines are meant.
struct PrometheusOptions {
    std::string name = {};   ///< what the user calls it; printable
    std::string url = {};    ///< without "/api/v1/…" and the last slash (prometheusAddress)
    std::string select = {}; ///< matchers that selectorFrom took: `job="node",dc="a"`; empty: all
    std::vector<std::string> identity{"job", "instance"}; ///< labels that together tell a machine from others
    PrometheusQueries queries = {};
    std::optional<std::chrono::duration<double>> every = {}; ///< absent: by the server's own interval
    std::shared_ptr<const Access> access = {};
};

/// What is wrong with the selector or the identity, in English; empty where nothing is. Pure.
[[nodiscard]] std::string problemWith(const PrometheusOptions& options);

} // namespace vantor::platform::remote
