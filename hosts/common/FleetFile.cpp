// SPDX-License-Identifier: MIT
#include "hosts/common/FleetFile.hpp"

#include "hosts/common/HttpConfig.hpp"
#include "hosts/common/JsonDepth.hpp"
#include "platform/core/PrintableText.hpp"

#include <algorithm>
#include <filesystem>
#include <utility>

namespace vantor::hosts::common {

namespace {

using Json = nlohmann::json;
namespace remote = platform::remote;

constexpr std::size_t mostSources = 64;
constexpr std::size_t mostNodes = 10000;

std::optional<double> seconds(const Json& source) {
    const auto found = source.find("every");
    if (found == source.end()) {
        return std::nullopt;
    }
    const double value = found->is_number() ? found->get<double>() : 0;
    if (!(value >= 0.1 && value <= 3600)) {
        throw ListMistake("every is no number of seconds from 0.1 to 3600");
    }
    return value;
}

/// A member that is a list of lines of text.
std::vector<std::string> lines(const Json& source, const char* key) {
    const auto found = source.find(key);
    if (found == source.end()) {
        return {};
    }
    if (!found->is_array() || found->size() > mostNodes) {
        throw ListMistake(std::string(key) + " is no list, or a very long one");
    }
    std::vector<std::string> texts;
    for (const Json& entry : *found) {
        texts.push_back(lineOfText(entry, key));
    }
    return texts;
}

remote::NodeAddress address(const std::string& written) {
    std::string problem;
    std::optional<remote::NodeAddress> address = remote::nodeAddress(written, problem);
    if (!address) { // what stands before an @ may be a password
        const bool isTold = written.find('@') == std::string::npos;
        throw ListMistake(
            "nodes: " + (isTold ? "\"" + platform::printableText(written, 128) + "\": " : std::string()) +
            problem);
    }
    return *std::move(address);
}

remote::PrometheusQueries queries(const Json& json, std::vector<std::string>& notes) {
    noteUnknown(json, {"up", "memory", "storage", "processor", "received", "sent", "age"}, notes);
    return {.up = textMember(json, "up"),
            .memory = textMember(json, "memory"),
            .storage = textMember(json, "storage"),
            .processor = textMember(json, "processor"),
            .received = textMember(json, "received"),
            .sent = textMember(json, "sent"),
            .age = textMember(json, "age")};
}

remote::PrometheusOptions prometheus(const Json& source, std::vector<std::string>& notes) {
    remote::PrometheusOptions options;
    options.url = textMember(source, "prometheus");
    options.select = textMember(source, "select");
    if (source.contains("identity")) {
        options.identity = lines(source, "identity");
    }
    if (const Json* const own = objectMember(source, "queries")) {
        options.queries = queries(*own, notes);
    }
    return options;
}

FleetListed listed(const Json& source, const std::string& folder, std::vector<std::string>& notes) {
    if (!source.is_object()) {
        throw ListMistake("a source is no object");
    }
    FleetListed listed;
    listed.name = platform::printableText(textMember(source, "name"), 64);
    listed.name = listed.name.empty() ? "fleet" : listed.name;
    listed.every = seconds(source);
    if (const Json* const config = objectMember(source, "http_config")) {
        listed.httpConfig = config->dump(-1, ' ', true, Json::error_handler_t::replace);
    }
    if (source.contains("prometheus")) {
        noteUnknown(source, {"name", "prometheus", "select", "identity", "queries", "every", "http_config"},
                    notes);
        listed.prometheus = prometheus(source, notes);
        return listed;
    }
    noteUnknown(source, {"name", "nodes", "file_sd", "every", "http_config"}, notes);
    for (const std::string& written : lines(source, "nodes")) {
        listed.nodes.push_back(address(written));
    }
    for (const std::string& pattern : lines(source, "file_sd")) {
        listed.files.push_back((std::filesystem::path(folder) / pattern).string());
    }
    if (listed.nodes.empty() && listed.files.empty()) {
        throw ListMistake("the source \"" + listed.name +
                          "\" has neither \"prometheus\" nor \"nodes\" nor \"file_sd\"");
    }
    return listed;
}

} // namespace

const remote::NodeAddress* FleetListed::node(std::string_view called) const {
    std::string problem;
    const std::optional<remote::NodeAddress> address = remote::nodeAddress(called, problem);
    const auto found = std::ranges::find_if(nodes, [&](const remote::NodeAddress& known) {
        return known.name == called || (address && known.url == address->url);
    });
    return found != nodes.end() ? &*found : nullptr;
}

std::optional<std::vector<FleetListed>> fleetSources(std::string_view text, const std::string& folder,
                                                     std::string& problem, std::vector<std::string>& notes) {
    if (nestsTooDeep(text)) {
        problem = "nests its lists too deep";
        return std::nullopt;
    }
    const Json file = Json::parse(text, nullptr, false);
    const auto sources = file.is_object() ? file.find("sources") : file.end();
    if (!file.is_object() || sources == file.end() || !sources->is_array() || sources->empty() ||
        sources->size() > mostSources) {
        problem = "is no JSON object with a list of \"sources\", 1 to 64";
        return std::nullopt;
    }
    std::vector<FleetListed> all;
    try {
        noteUnknown(file, {"sources"}, notes);
        for (const Json& source : *sources) {
            all.push_back(listed(source, folder, notes));
        }
        return all;
    } catch (const ListMistake& mistake) {
        problem = mistake.what();
    }
    return std::nullopt;
}

std::optional<std::shared_ptr<const remote::Access>> accessOf(const FleetListed& source,
                                                              const std::string& folder, std::string& problem,
                                                              std::vector<std::string>& notes) {
    if (source.httpConfig.empty()) {
        return nullptr;
    }
    try {
        return accessFrom(Json::parse(source.httpConfig), folder, notes);
    } catch (const ListMistake& mistake) {
        problem = mistake.what();
    } catch (const Json::exception&) { // a value of another kind than its key takes
        problem = "http_config has a value of the wrong kind";
    }
    return std::nullopt;
}

} // namespace vantor::hosts::common
