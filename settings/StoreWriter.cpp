// SPDX-License-Identifier: MIT
#include "settings/StoreWriter.hpp"

#include "platform/core/FatalStop.hpp"
#include "platform/core/PrintableText.hpp"
#include "platform/foundation/NSKeyedArchiver.hpp"
#include "platform/foundation/NSKeyedUnarchiver.hpp"
#include "platform/propertylist/PropertyListBuilder.hpp"
#include "platform/propertylist/PropertyListWriter.hpp"
#include "platform/viewer/Viewer.hpp"

#include <algorithm>
#include <utility>
#include <variant>

namespace vantor {

namespace {

using platform::PropertyListBuilder;
using platform::PropertyListForm;
using platform::PropertyListObject;
using platform::UIColor;

/// The bytes under "chartcolor". An archive that the widgets did not take for this colour could end them, so
/// it is read back first.
std::string archiveOf(const UIColor& color) {
    std::string archive = platform::NSKeyedArchiver::archivedDataWithRootObject(color);
    const platform::UnarchivedObject decoded =
        platform::NSKeyedUnarchiver::unarchiveTopLevelObjectWithData(archive);
    const auto* const found = std::get_if<UIColor>(&decoded);
    const platform::RGBA wanted = color.resolved(platform::Appearance::light);
    if (found == nullptr || found->resolved(platform::Appearance::light) != wanted) {
        platform::fatalStop("an archive made of a colour does not hold it");
    }
    return archive;
}

/// A list's dictionary on top, taken apart so that pairs can be exchanged.
class StoreList {
public:
    StoreList() = default;
    explicit StoreList(const PropertyListObject& dictionary) : m_builder(dictionary) {
        for (std::size_t i = 0; i < dictionary.size(); ++i) {
            m_pairs.push_back(*dictionary.pairAt(i));
        }
    }

    void apply(const SettingChange& change) {
        const auto isKey = [&](const auto& pair) { return pair.first.string() == change.setting->key; };
        // Of several pairs with one key the last one counts.
        const auto last = std::find_if(m_pairs.rbegin(), m_pairs.rend(), isKey);
        if (last != m_pairs.rend() && holds(last->second, change.value)) {
            return;
        }
        m_changed = m_changed || last != m_pairs.rend() || change.value.index() != 0;
        std::erase_if(m_pairs, isKey);
        std::erase_if(m_added, [&](const auto& pair) { return pair.first == change.setting->key; });
        if (change.value.index() != 0) {
            m_added.emplace_back(change.setting->key, add(change.value));
        }
    }

    [[nodiscard]] bool changed() const { return m_changed; }

    [[nodiscard]] PropertyListObject finish() {
        PropertyListBuilder::Pairs pairs;
        for (const auto& [key, value] : m_pairs) {
            pairs.emplace_back(key.index(), value.index());
        }
        for (const auto& [key, value] : m_added) {
            pairs.emplace_back(m_builder.string(key), value);
        }
        return m_builder.finish(m_builder.dictionary(pairs));
    }

private:
    static bool holds(const PropertyListObject& stored, const SettingValue& value) {
        if (const bool* const flag = std::get_if<bool>(&value)) {
            return stored.boolean() == *flag;
        }
        if (const double* const seconds = std::get_if<double>(&value)) {
            return stored.string() == secondsText(*seconds);
        }
        const auto* const color = std::get_if<UIColor>(&value);
        return color != nullptr && stored.data() == archiveOf(*color);
    }

    PropertyListBuilder::Number add(const SettingValue& value) {
        if (const bool* const flag = std::get_if<bool>(&value)) {
            return m_builder.boolean(*flag);
        }
        if (const double* const seconds = std::get_if<double>(&value)) {
            return m_builder.string(secondsText(*seconds)); // the widget reads a text here
        }
        return m_builder.data(archiveOf(std::get<UIColor>(value)));
    }

    PropertyListBuilder m_builder;
    std::vector<std::pair<PropertyListObject, PropertyListObject>> m_pairs; // what was found and is kept
    std::vector<std::pair<std::string_view, PropertyListBuilder::Number>> m_added;
    bool m_changed = false;
};

class StoreEdit {
public:
    StoreEdit(const std::vector<SettingChange>& changes, BrokenStore broken)
        : m_changes(changes), m_broken(broken) {}

    [[nodiscard]] platform::SuiteEdit edit(const platform::SuiteFile& file) const {
        if (!file.exists) {
            return written(StoreList(), PropertyListForm::xml, false, "the preferences");
        }
        const std::string name = platform::printableText(file.path, 4096);
        if (!file.usable) {
            return refuse(name + ": " + platform::printableText(file.reason));
        }
        const platform::PropertyListResult list = platform::readPropertyList(file.content);
        const std::string problem = platform::suiteListProblem(list);
        if (problem.empty()) {
            return written(StoreList(std::get<PropertyListObject>(list)),
                           platform::formOfPropertyList(file.content), false, name);
        }
        if (m_broken == BrokenStore::setAside) {
            return written(StoreList(), PropertyListForm::xml, true, name);
        }
        return refuse(name + ": " + problem, true);
    }

private:
    static platform::SuiteEdit refuse(std::string reason, bool couldBeSetAside = false) {
        return {.refusal = std::move(reason), .couldBeSetAside = couldBeSetAside};
    }

    [[nodiscard]] platform::SuiteEdit written(StoreList store, PropertyListForm form, bool setAside,
                                              const std::string& name) const {
        for (const SettingChange& change : m_changes) {
            store.apply(change);
        }
        if (!store.changed() && !setAside) {
            return {};
        }
        platform::PropertyListBytes bytes = platform::writePropertyList(store.finish(), form);
        if (const auto* const failure = std::get_if<platform::PropertyListFailure>(&bytes)) {
            return refuse(name + ": " + failure->reason);
        }
        return {.content = std::move(std::get<std::string>(bytes)), .setAside = setAside};
    }

    const std::vector<SettingChange>& m_changes;
    BrokenStore m_broken;
};

} // namespace

StoreOutcome changeStore(const std::vector<SettingChange>& changes, BrokenStore broken) {
    const platform::SuiteChange change =
        platform::currentViewer().changeSuite(sharedSuiteName, [&](const platform::SuiteFile& file) {
            return StoreEdit(changes, broken).edit(file);
        });
    StoreOutcome outcome{
        .changed = change.changed, .setAside = change.setAside, .couldBeSetAside = change.couldBeSetAside};
    if (change.failure) {
        outcome.failure = platform::printableText(*change.failure, 4096);
    }
    return outcome;
}

} // namespace vantor
