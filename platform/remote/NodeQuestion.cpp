// SPDX-License-Identifier: MIT
#include "platform/remote/NodeQuestion.hpp"

#include "platform/remote/readings/ReadingFrom.hpp"

#include <utility>

namespace vantor::platform::remote {

namespace {

/// A third of the exporter's work and of the bytes. Others are on by default since long, or fail alone.
constexpr std::string_view filter = "?collect[]=cpu&collect[]=meminfo&collect[]=filesystem&collect[]=netdev"
                                    "&collect[]=netclass&collect[]=uname&collect[]=stat&collect[]=zfs";
constexpr std::string_view accepted = "text/plain;version=0.0.4;q=0.9,*/*;q=0.1";

/// Absent for what is no exporter's answer: a page, a picture, JSON.
std::optional<ExpositionFormat> formatOf(const std::string& contentType) {
    if (contentType.starts_with("application/openmetrics-text")) {
        return ExpositionFormat::openMetrics;
    }
    const bool isText = contentType.empty() || contentType.starts_with("text/plain");
    return isText ? std::optional(ExpositionFormat::text) : std::nullopt;
}

} // namespace

bool mayFilter(const NodeAddress& address) {
    return address.url.find('?') == std::string::npos;
}

FetchRequest nodeQuestion(const NodeAddress& address, std::shared_ptr<const Access> access, bool isFiltered) {
    FetchRequest request;
    request.url = address.url;
    request.url += isFiltered ? filter : "";
    request.accept = accepted;
    request.access = std::move(access);
    return request;
}

NodeTold nodeTold(const FetchAnswer& answer, bool wasFiltered) {
    constexpr int fine = 200;
    constexpr int badRequest = 400;
    NodeTold told;
    if (!answer.problem.empty()) {
        told.problem = answer.problem;
        return told;
    }
    if (answer.status != fine) {
        told.isFilterUnknown = wasFiltered && answer.status == badRequest;
        told.problem = "it answers with status " + std::to_string(answer.status);
        return told;
    }
    const std::optional<ExpositionFormat> format = formatOf(answer.contentType);
    if (format) {
        told.reading = readingFrom(answer.body, *format, answer.taken);
    }
    if (!told.reading || told.reading->isEmpty()) {
        told.reading.reset();
        told.problem = "there is no node_exporter at this address";
    } else if (!told.reading->memory) {
        told.reading.reset();
        told.problem = "its node_exporter tells no memory figures";
    }
    return told;
}

} // namespace vantor::platform::remote
