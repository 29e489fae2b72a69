// SPDX-License-Identifier: MIT
#include "platform/remote/fetch/NodeAddress.hpp"

#include "platform/core/PrintableText.hpp"

#include <algorithm>
#include <charconv>
#include <utility>

namespace vantor::platform::remote {

namespace {

constexpr std::size_t longest = 2048; // bytes of an address; no server takes more

std::string lowered(std::string_view text) {
    std::string result(text);
    std::ranges::transform(result, result.begin(), [](char sign) {
        return sign >= 'A' && sign <= 'Z' ? static_cast<char>(sign - 'A' + 'a') : sign;
    });
    return result;
}

bool isPort(std::string_view text) {
    unsigned number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size() && number >= 1 && number <= 65535;
}

/// A host and a port, which is empty where none is given.
struct Place {
    std::string_view host; ///< with the brackets of an IPv6 address
    std::string_view port;
};

std::optional<Place> placeFrom(std::string_view text) {
    std::size_t end = text.find(':');
    if (text.starts_with('[')) {
        const std::size_t bracket = text.find(']');
        if (bracket == std::string_view::npos) {
            return std::nullopt;
        }
        end = bracket + 1 == text.size() ? std::string_view::npos : bracket + 1;
    }
    const Place place{text.substr(0, end),
                      end == std::string_view::npos ? std::string_view() : text.substr(end + 1)};
    const bool hasPort = end != std::string_view::npos;
    const bool isHost = !place.host.empty() && std::ranges::all_of(place.host, [&place](char sign) {
        return (sign >= 'a' && sign <= 'z') || (sign >= 'A' && sign <= 'Z') || (sign >= '0' && sign <= '9') ||
               sign == '-' || sign == '.' || sign == '_' ||
               (place.host.starts_with('[') && (sign == '[' || sign == ']' || sign == ':' || sign == '%'));
    });
    if (!isHost || (hasPort && (text[end] != ':' || !isPort(place.port)))) {
        return std::nullopt;
    }
    return place;
}

struct Parts {
    std::string scheme; ///< empty: none was given
    std::string_view place;
    std::string_view path; ///< with its slash; empty where there is none
};

Parts partsOf(std::string_view text) {
    Parts parts;
    if (const std::size_t colon = text.find("://"); colon != std::string_view::npos) {
        parts.scheme = lowered(text.substr(0, colon));
        text.remove_prefix(colon + 3);
    }
    const std::size_t slash = text.find_first_of("/?#");
    parts.place = text.substr(0, slash);
    parts.path = slash == std::string_view::npos ? std::string_view() : text.substr(slash);
    return parts;
}

bool isWeb(std::string_view scheme) {
    return scheme == "http" || scheme == "https";
}

/// Where something is asked, with what is usual for its kind.
std::optional<NodeAddress> addressOf(std::string_view text, std::string_view usualPort,
                                     std::string_view usualPath, std::string& problem) {
    const auto refused = [&problem](const char* why) {
        problem = why;
        return std::nullopt;
    };
    const Parts parts = partsOf(text);
    if (text.size() > longest ||
        std::ranges::any_of(text, [](char sign) { return sign <= ' ' || sign == 127; })) {
        return refused("an address has no blanks and at most 2048 bytes");
    }
    if (!parts.scheme.empty() && !isWeb(parts.scheme)) {
        return refused("only http:// and https:// are known");
    }
    if (parts.place.find('@') != std::string_view::npos) {
        return refused("names and passwords do not belong into an address");
    }
    const std::optional<Place> place = placeFrom(parts.place);
    if (!place) {
        return refused("this is no HOST[:PORT][/PATH] and no URL");
    }
    NodeAddress address;
    const std::string_view port = !place->port.empty() || !parts.scheme.empty() ? place->port : usualPort;
    address.url = (parts.scheme.empty() ? "http" : parts.scheme) + "://" + std::string(place->host);
    address.url += port.empty() ? "" : ":" + std::string(port);
    address.url += parts.path.empty() || parts.path == "/" ? usualPath : parts.path;
    address.name = place->host;
    address.name += port.empty() || port == usualPort ? "" : ":" + std::string(port);
    address.name = printableText(address.name);
    return address;
}

} // namespace

std::optional<NodeAddress> nodeAddress(std::string_view text, std::string& problem) {
    return addressOf(text, "9100", "/metrics", problem);
}

std::optional<NodeAddress> prometheusAddress(std::string_view text, std::string& problem) {
    std::optional<NodeAddress> address = addressOf(text, "9090", "", problem);
    if (address && address->url.find_first_of("?#") != std::string::npos) {
        problem = "the address of a server has no ? and no #";
        return std::nullopt;
    }
    while (address && address->url.ends_with('/')) {
        address->url.pop_back();
    }
    return address;
}

std::string originOf(std::string_view url) {
    Parts parts = partsOf(url);
    if (const std::size_t at = parts.place.rfind('@'); at != std::string_view::npos) {
        parts.place.remove_prefix(at + 1);
    }
    const std::optional<Place> place = placeFrom(parts.place);
    if (!isWeb(parts.scheme) || !place) {
        return {};
    }
    const std::string_view port = parts.scheme == "https" ? "443" : "80";
    return parts.scheme + "://" + lowered(place->host) + ':' +
           std::string(place->port.empty() ? port : place->port);
}

} // namespace vantor::platform::remote
