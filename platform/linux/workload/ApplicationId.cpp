// SPDX-License-Identifier: MIT
#include "platform/linux/workload/ApplicationId.hpp"

#include <algorithm>
#include <charconv>
#include <cstdint>

namespace vantor::platform::linux {

namespace {

using std::string_view;

/// Undoes systemd's escapes (systemd-escape(1)): "\x2d" is "-".
std::string unescaped(string_view text) {
    std::string result;
    while (!text.empty()) {
        unsigned value = 0;
        const bool isEscape =
            text.starts_with("\\x") && text.size() >= 4 &&
            std::from_chars(text.data() + 2, text.data() + 4, value, 16).ptr == text.data() + 4;
        result.push_back(isEscape ? static_cast<char>(static_cast<std::uint8_t>(value)) : text.front());
        text.remove_prefix(isEscape ? 4 : 1);
    }
    return result;
}

bool isFileName(string_view name) {
    return !name.empty() && name.front() != '.' && name.size() < 200 &&
           std::ranges::none_of(name, [](char c) { return c == '/' || static_cast<std::uint8_t>(c) < 0x20; });
}

string_view before(string_view text, char last) {
    return text.substr(0, text.rfind(last));
}

string_view after(string_view text, char last) {
    return text.substr(text.rfind(last) + 1);
}

bool take(string_view& text, string_view prefix, string_view suffix = {}) {
    if (text.size() < prefix.size() + suffix.size() || !text.starts_with(prefix) || !text.ends_with(suffix)) {
        return false;
    }
    text.remove_prefix(prefix.size());
    text.remove_suffix(suffix.size());
    return true;
}

bool isNumber(string_view text) {
    return !text.empty() && std::ranges::all_of(text, [](char c) { return c >= '0' && c <= '9'; });
}

/// The id in one component of the path, still escaped; empty where it names none.
std::string escapedIdIn(string_view name) {
    if (take(name, "snap.", ".scope") || take(name, "snap.", ".service")) {
        constexpr std::size_t uuid = 36; // with dashes of its own
        const bool hasUuid = name.size() > uuid + 1 && name[name.size() - uuid - 1] == '-';
        std::string id(hasUuid ? name.substr(0, name.size() - uuid - 1) : name);
        const std::size_t dot = id.find('.');
        return dot == std::string::npos ? "" : id.replace(dot, 1, "_");
    }
    if (take(name, "gnome-launched-", ".scope")) {
        const std::size_t end = name.find(".desktop-");
        return std::string(end == string_view::npos ? string_view() : name.substr(0, end));
    }
    if (take(name, "dbus-", ".service")) {
        return std::string(after(name.substr(0, name.find('@')), '-'));
    }
    if (take(name, "app-", ".scope")) {
        return name.find('-') == string_view::npos ? "" : std::string(after(before(name, '-'), '-'));
    }
    if (take(name, "app-", ".service")) {
        string_view id = name.substr(0, name.find('@'));
        if (isNumber(after(id, '-')) && id.find('-') != string_view::npos) { // an older way: a number behind
            id = before(id, '-');
        }
        return std::string(after(id, '-'));
    }
    if (take(name, "app-", ".slice")) { // a terminal's tabs are groups below its own
        return std::string(after(name, '-'));
    }
    return take(name, "", "@autostart.service") ? std::string(name) : "";
}

} // namespace

std::optional<std::string> applicationIdOf(std::string_view groupPath) {
    while (!groupPath.empty()) {
        const string_view component = after(groupPath, '/');
        if (std::string id = unescaped(escapedIdIn(component)); isFileName(id)) {
            return id;
        }
        groupPath.remove_suffix(std::min(component.size() + 1, groupPath.size()));
    }
    return std::nullopt;
}

} // namespace vantor::platform::linux
