// SPDX-License-Identifier: MIT
#include "platform/foundation/NSUserDefaults.hpp"

#include "platform/core/PrintableText.hpp"
#include "platform/propertylist/PropertyList.hpp"
#include "platform/viewer/Viewer.hpp"

#include <algorithm>
#include <memory>
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

/// The same bytes may well be read another time.
bool ranOutOfMemory(const PropertyListResult& list) {
    const auto* const failure = std::get_if<PropertyListFailure>(&list);
    return failure != nullptr && std::string_view(failure->reason) == noMemoryForList;
}

/// What a viewer's file held when it was last read. A refresh opens the store some ten times and nearly
/// always finds the file, or at least the bytes, that it found before: these are not taken apart again.
class LatestList {
public:
    /// The list in the file; nothing where there is none to be had.
    std::optional<PropertyListObject> take(std::shared_ptr<const SuiteFile> file) {
        const std::scoped_lock lock(m_mutex);
        if (file == m_file && m_list && !ranOutOfMemory(*m_list)) {
            return top();
        }
        m_problem.reset();
        if (!file->usable) {
            if (file->exists) {
                tell(file->path, printableText(file->reason));
            }
            m_file.reset();
            return std::nullopt;
        }
        if (!m_file || !m_list || m_file->content != file->content || ranOutOfMemory(*m_list)) {
            m_list = readPropertyList(file->content);
        }
        m_file = std::move(file);
        if (const std::string problem = suiteListProblem(*m_list); !problem.empty()) {
            tell(m_file->path, problem);
        }
        std::optional<PropertyListObject> found = top();
        if (m_file->content.size() > largestKept) { // far larger than ours is: nothing of it stays in memory
            m_file.reset();
            m_list.reset();
        }
        return found;
    }
    std::optional<std::string> problem() {
        const std::scoped_lock lock(m_mutex);
        return m_problem;
    }

private:
    static constexpr std::size_t largestKept = 65'536;

    void tell(const std::string& path, const std::string& problem) {
        // A path may be long; its end is what tells files apart, but a cut in the middle would mislead.
        m_problem = printableText(path, 4096) + ": " + problem;
    }

    [[nodiscard]] std::optional<PropertyListObject> top() const {
        return m_problem ? std::nullopt : std::optional(std::get<PropertyListObject>(*m_list));
    }

    std::mutex m_mutex;
    std::shared_ptr<const SuiteFile> m_file; ///< that `m_list` was made of
    std::optional<PropertyListResult> m_list;
    std::optional<std::string> m_problem;
};

} // namespace

std::optional<NSUserDefaults> NSUserDefaults::initWithSuiteName(std::string_view suiteName) {
    Viewer& viewer = currentViewer();
    std::optional<PropertyListObject> top = viewer.associated<LatestList>().take(viewer.readSuite(suiteName));
    return top ? std::optional(NSUserDefaults(*std::move(top))) : std::nullopt;
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

std::optional<std::string> suiteProblem() {
    return currentViewer().associated<LatestList>().problem();
}

std::string suiteListProblem(const PropertyListResult& list) {
    if (const auto* const failure = std::get_if<PropertyListFailure>(&list)) {
        return std::string("no property list: ") + failure->reason + " (byte " + std::to_string(failure->at) +
               ")";
    }
    const bool isDictionary = std::get<PropertyListObject>(list).kind() == PropertyListKind::dictionary;
    return isDictionary ? "" : "a property list without a dictionary on top";
}

} // namespace vantor::platform
