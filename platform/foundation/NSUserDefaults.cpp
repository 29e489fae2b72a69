// SPDX-License-Identifier: MIT
#include "platform/foundation/NSUserDefaults.hpp"

#include "platform/core/PrintableText.hpp"
#include "platform/propertylist/PropertyList.hpp"
#include "platform/viewer/Viewer.hpp"

#include <algorithm>
#include <mutex>
#include <utility>
#include <variant>

namespace vantor::platform {

namespace {

bool isTrue(std::string_view text) {
    const auto skip = [&text](std::string_view characters) {
        text.remove_prefix(std::min(text.find_first_not_of(characters), text.size()));
    };
    skip(" \t\n\v\f\r");
    if (!text.empty() && std::string_view("tTyY").find(text.front()) != std::string_view::npos) {
        return true;
    }
    if (text.starts_with('-') || text.starts_with('+')) {
        text.remove_prefix(1);
    }
    skip("0");
    return !text.empty() && text.front() >= '1' && text.front() <= '9';
}

/// What a viewer's file held when it was last opened.
struct LatestList {
    std::mutex mutex;
    std::string bytes;
    std::optional<PropertyListResult> list;
};

/// The same bytes may well be read another time.
bool ranOutOfMemory(const PropertyListResult& list) {
    const auto* const failure = std::get_if<PropertyListFailure>(&list);
    return failure != nullptr && std::string_view(failure->reason) == noMemoryForList;
}

/// The list that a file's bytes hold. A refresh opens the store some ten times, each time afresh, and nearly
/// always finds the bytes that it found before: these are not taken apart again. A file far larger than ours
/// is, so that nothing of it stays in memory.
PropertyListResult listIn(std::string bytes, LatestList& latest) {
    constexpr std::size_t largestKept = 65'536;
    if (bytes.size() > largestKept) {
        return readPropertyList(std::move(bytes));
    }
    const std::scoped_lock lock(latest.mutex);
    if (!latest.list || latest.bytes != bytes || ranOutOfMemory(*latest.list)) {
        latest.bytes = bytes;
        latest.list = readPropertyList(std::move(bytes));
    }
    return *latest.list;
}

} // namespace

std::optional<NSUserDefaults> NSUserDefaults::initWithSuiteName(std::string_view suiteName) {
    Viewer& viewer = currentViewer();
    SuiteFile file = viewer.readSuite(suiteName);
    if (!file.usable) {
        return std::nullopt;
    }
    PropertyListResult list = listIn(std::move(file.content), viewer.associated<LatestList>());
    PropertyListObject* const top = std::get_if<PropertyListObject>(&list);
    if (top == nullptr || top->kind() != PropertyListKind::dictionary) {
        return std::nullopt;
    }
    return NSUserDefaults(std::move(*top));
}

bool NSUserDefaults::boolForKey(std::string_view key) const {
    const std::optional<PropertyListObject> object = objectForKey(key);
    if (!object) {
        return false;
    }
    if (const std::optional<double> number = object->number()) {
        return *number != 0;
    }
    if (const std::optional<std::string_view> text = object->string()) {
        return isTrue(*text);
    }
    return object->boolean().value_or(false);
}

std::optional<std::string> NSUserDefaults::stringForKey(std::string_view key) const {
    const std::optional<PropertyListObject> object = objectForKey(key);
    const std::optional<std::string_view> text = object ? object->string() : std::nullopt;
    return text ? std::optional(std::string(*text)) : std::nullopt;
}

std::optional<PropertyListObject> NSUserDefaults::objectForKey(std::string_view key) const {
    return m_dictionary.objectForKey(key);
}

std::optional<std::string> suiteProblem(std::string_view suiteName) {
    SuiteFile file = currentViewer().readSuite(suiteName);
    if (!file.exists) {
        return std::nullopt;
    }
    // A path may be long; its end is what tells files apart, but a cut in the middle of one would mislead.
    const std::string path = printableText(file.path, 4096) + ": ";
    if (!file.usable) {
        return path + printableText(file.reason);
    }
    const PropertyListResult list = readPropertyList(std::move(file.content));
    if (const auto* const failure = std::get_if<PropertyListFailure>(&list)) {
        return path + "no property list: " + failure->reason + " (byte " + std::to_string(failure->at) + ")";
    }
    if (std::get<PropertyListObject>(list).kind() != PropertyListKind::dictionary) {
        return path + "a property list without a dictionary on top";
    }
    return std::nullopt;
}

} // namespace vantor::platform
