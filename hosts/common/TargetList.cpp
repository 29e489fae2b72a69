// SPDX-License-Identifier: MIT
#include "hosts/common/TargetList.hpp"

#include "hosts/common/JsonDepth.hpp"
#include "platform/core/PrintableText.hpp"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <memory>
#include <utility>

namespace vantor::hosts::common {

namespace {

using Json = nlohmann::json;
namespace remote = platform::remote;

using Labels = std::vector<std::pair<std::string, std::string>>;

/// What a group's labels come to.
struct Group {
    std::string scheme = "http";
    std::string path = "/metrics";
    std::string question; ///< what follows the path, with its mark
    std::shared_ptr<Labels> labels = std::make_shared<Labels>();
};

std::string escaped(std::string_view text) {
    constexpr std::string_view plain = "-._~";
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string result;
    for (const char sign : text) {
        const auto byte = static_cast<unsigned char>(sign);
        const bool isPlain = (sign >= 'a' && sign <= 'z') || (sign >= 'A' && sign <= 'Z') ||
                             (sign >= '0' && sign <= '9') || plain.find(sign) != std::string_view::npos;
        result += isPlain ? std::string(1, sign) : std::string{'%', digits[byte >> 4], digits[byte & 15]};
    }
    return result;
}

/// False where the label asks for what is not possible.
bool take(Group& group, const std::string& name, const std::string& value) {
    constexpr std::string_view parameter = "__param_";
    constexpr std::size_t mostLabels = 64;
    constexpr std::size_t longest = 1024;
    if (name == "__scheme__") {
        group.scheme = value;
        return value == "http" || value == "https";
    }
    if (name == "__metrics_path__") {
        group.path = value;
        return value.starts_with('/') && value.find_first_of("?#") == std::string::npos;
    }
    if (name.starts_with(parameter)) {
        group.question += group.question.empty() ? '?' : '&';
        group.question += escaped(std::string_view(name).substr(parameter.size())) + '=' + escaped(value);
    } else if (!name.starts_with("__") && !value.empty()) {
        group.labels->emplace_back(platform::printableText(name, longest),
                                   platform::printableText(value, longest));
    }
    return group.labels->size() <= mostLabels;
}

std::optional<Group> groupFrom(const Json& json) {
    Group group;
    const auto labels = json.find("labels");
    if (labels == json.end()) {
        return group;
    }
    if (!labels->is_object()) {
        return std::nullopt;
    }
    for (const auto& [name, value] : labels->items()) { // ordered by name
        if (!value.is_string() || !take(group, name, value.get_ref<const std::string&>())) {
            return std::nullopt;
        }
    }
    return group;
}

std::optional<remote::NodeAddress> addressFrom(const Json& target, const Group& group) {
    const auto* const text = target.get_ptr<const std::string*>();
    std::string problem;
    if (text == nullptr || text->find('/') != std::string::npos) { // the path is told by a label
        return std::nullopt;
    }
    std::optional<remote::NodeAddress> place = remote::nodeAddress(*text, problem);
    if (place) {
        const std::string origin = place->url.substr(0, place->url.rfind('/'));
        place->url = group.scheme + origin.substr(origin.find(':')) + group.path + group.question;
    }
    // Once more as a whole: a path may not hold just anything.
    return place && remote::nodeAddress(place->url, problem) ? place : std::nullopt;
}

/// What stands before an @ may be a password.
std::string nameOf(const Json& target) {
    const auto* const text = target.get_ptr<const std::string*>();
    return text != nullptr && text->find('@') == std::string::npos
               ? '"' + platform::printableText(*text, 64) + '"'
               : "a target";
}

} // namespace

std::optional<std::vector<remote::NodeTarget>> targetsFrom(std::string_view text, std::string& problem,
                                                           std::string& doubt) {
    const auto refused = [&problem](const char* why) {
        problem = why;
        return std::nullopt;
    };
    if (nestsTooDeep(text)) {
        return refused("nests its lists too deep");
    }
    const Json list = Json::parse(text, nullptr, false);
    if (!list.is_array()) {
        return refused("is no JSON list of groups of \"targets\"");
    }
    std::vector<remote::NodeTarget> targets;
    for (const Json& entry : list) {
        const auto found = entry.is_object() ? entry.find("targets") : entry.end();
        if (!entry.is_object() || found == entry.end() || !found->is_array()) {
            return refused("has a group without a list of \"targets\"");
        }
        const std::optional<Group> group = groupFrom(entry);
        if (!group) {
            return refused("has a group whose \"labels\" cannot be used");
        }
        for (const Json& target : *found) {
            std::optional<remote::NodeAddress> address = addressFrom(target, *group);
            if (!address && doubt.empty()) {
                doubt = nameOf(target) + " is no HOST[:PORT] and left out";
            }
            if (address && targets.size() == mostTargets) {
                return refused("has more than 10,000 targets");
            }
            if (address) {
                targets.push_back({*std::move(address), nullptr, group->labels});
            }
        }
    }
    return targets;
}

} // namespace vantor::hosts::common
