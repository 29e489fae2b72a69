// SPDX-License-Identifier: MIT
#include "platform/foundation/NSKeyedUnarchiver.hpp"

#include "platform/core/PrintableText.hpp"
#include "platform/foundation/ColorArchive.hpp"
#include "platform/propertylist/PropertyList.hpp"

#include <exception>
#include <optional>
#include <utility>
#include <vector>

namespace vantor::platform {

namespace {

constexpr std::int64_t archiveVersion = 100'000;

/// A class as an archive describes it: its name, and whether its chain of ancestors, which starts with the
/// class itself, holds the colour.
struct ClassDescription {
    std::string_view name;
    bool isColor = false;
};

class Archive {
public:
    explicit Archive(PropertyListObject top) : m_top(std::move(top)) {}

    UnarchivedObject decodeRoot();

private:
    [[nodiscard]] std::optional<PropertyListObject> under(std::string_view key, PropertyListKind kind) const;
    [[nodiscard]] bool isArchive() const;
    [[nodiscard]] std::optional<PropertyListObject> referred(const PropertyListObject& reference) const;
    [[nodiscard]] bool refersWell(const PropertyListObject& archived) const;
    [[nodiscard]] std::optional<ClassDescription> classOf(const PropertyListObject& archived) const;
    [[nodiscard]] UnarchivedObject decodeInstance(const PropertyListObject& archived) const;

    PropertyListObject m_top;
    std::optional<PropertyListObject> m_objects;
};

std::optional<PropertyListObject> Archive::under(std::string_view key, PropertyListKind kind) const {
    std::optional<PropertyListObject> value = m_top.objectForKey(key);
    return value && value->kind() == kind ? value : std::nullopt;
}

bool Archive::isArchive() const {
    const std::optional<PropertyListObject> archiver = under("$archiver", PropertyListKind::string);
    const std::optional<PropertyListObject> version = under("$version", PropertyListKind::integer);
    return archiver && archiver->string() == "NSKeyedArchiver" && version &&
           version->integer() == archiveVersion;
}

/// The object behind a UID; absent when there is none under that number.
std::optional<PropertyListObject> Archive::referred(const PropertyListObject& reference) const {
    const std::optional<std::uint64_t> uid = reference.uid();
    return uid && *uid < m_objects->size() ? m_objects->at(static_cast<std::size_t>(*uid)) : std::nullopt;
}

/// Whether every reference in an object, directly or in one of its lists, leads to an object.
bool Archive::refersWell(const PropertyListObject& archived) const {
    const auto leads = [this](const PropertyListObject& value) {
        return value.kind() != PropertyListKind::uid || referred(value).has_value();
    };
    for (std::size_t i = 0; i < archived.size(); ++i) {
        const PropertyListObject value = archived.pairAt(i)->second;
        for (std::size_t j = 0; value.kind() == PropertyListKind::array && j < value.size(); ++j) {
            if (!leads(*value.at(j))) {
                return false;
            }
        }
        if (!leads(value)) {
            return false;
        }
    }
    return true;
}

std::optional<ClassDescription> Archive::classOf(const PropertyListObject& archived) const {
    const std::optional<PropertyListObject> reference = archived.objectForKey("$class");
    const std::optional<PropertyListObject> described = reference ? referred(*reference) : std::nullopt;
    const std::optional<PropertyListObject> name =
        described ? described->objectForKey("$classname") : std::nullopt;
    const std::optional<PropertyListObject> chain =
        described ? described->objectForKey("$classes") : std::nullopt;
    if (!name || !name->string() || !chain || chain->size() == 0) {
        return std::nullopt;
    }
    ClassDescription result{*name->string(), false};
    for (std::size_t i = 0; i < chain->size(); ++i) {
        const std::optional<PropertyListObject> ancestor = chain->at(i);
        if (!ancestor || !ancestor->string()) {
            return std::nullopt;
        }
        result.isColor = result.isColor || ancestor->string() == "UIColor";
    }
    return result;
}

UnarchivedObject Archive::decodeInstance(const PropertyListObject& archived) const {
    const std::optional<ClassDescription> description = classOf(archived);
    if (!description) {
        return DecodingError{"the top object has no class"};
    }
    if (!refersWell(archived)) {
        return DecodingError{"the top object refers to one that does not exist"};
    }
    if (!description->isColor) {
        return OtherClass{printableText(description->name)};
    }
    const std::optional<PropertyListObject> name = archived.objectForKey("UISystemColorName");
    if (std::optional<UIColor> color = colorFromArchive(archived, name ? referred(*name) : std::nullopt)) {
        return *color;
    }
    return DecodingError{"a colour lacks components"};
}

UnarchivedObject Archive::decodeRoot() {
    if (!isArchive()) {
        return DecodingError{"it is no keyed archive"};
    }
    m_objects = under("$objects", PropertyListKind::array);
    const std::optional<PropertyListObject> top = under("$top", PropertyListKind::dictionary);
    if (!m_objects || !top) {
        return DecodingError{"the archive has no objects"};
    }
    const std::optional<PropertyListObject> reference = top->objectForKey("root");
    if (!reference) {
        return DecodingError{"the archive has no root"};
    }
    if (reference->uid() == std::uint64_t{0}) {
        return std::monostate{}; // a nil was archived
    }
    const std::optional<PropertyListObject> root = referred(*reference);
    if (!root) {
        return DecodingError{"the archive's top object does not exist"};
    }
    switch (root->kind()) {
    case PropertyListKind::dictionary:
        return decodeInstance(*root);
    case PropertyListKind::string:
        return OtherClass{"NSString"};
    case PropertyListKind::data:
        return OtherClass{"NSData"};
    case PropertyListKind::date:
        return OtherClass{"NSDate"};
    case PropertyListKind::boolean:
    case PropertyListKind::integer:
    case PropertyListKind::real:
        return OtherClass{"NSNumber"};
    case PropertyListKind::null:
    case PropertyListKind::uid:
    case PropertyListKind::array:
        break;
    }
    return DecodingError{"the top object is of no kind that an archive holds"};
}

} // namespace

UnarchivedObject NSKeyedUnarchiver::unarchiveTopLevelObjectWithData(std::string_view data) noexcept {
    try {
        PropertyListResult list = readPropertyList(std::string(data));
        if (const auto* const failure = std::get_if<PropertyListFailure>(&list)) {
            return DecodingError{std::string("no property list: ") + failure->reason};
        }
        return Archive(std::get<PropertyListObject>(std::move(list))).decodeRoot();
    } catch (const std::exception&) {
        return DecodingError{}; // no memory, so no words either
    }
}

} // namespace vantor::platform
