// SPDX-License-Identifier: MIT
#include "platform/foundation/NSKeyedArchiver.hpp"

#include "platform/propertylist/PropertyListBuilder.hpp"
#include "platform/propertylist/PropertyListWriter.hpp"

#include <new>
#include <variant>

namespace vantor::platform {

namespace {

using Number = PropertyListBuilder::Number;

// The places in the list of objects, by which they refer to each other.
constexpr std::uint64_t colorPlace = 1, classPlace = 2;
constexpr std::int64_t writtenVersion = 100'000;

Number colorObject(PropertyListBuilder& list, const UIColor& color) {
    return list.dictionary({{list.string("$class"), list.uid(classPlace)},
                            {list.string("UIColorComponentCount"), list.integer(4)},
                            {list.string("UIRed"), list.real(color.red())},
                            {list.string("UIGreen"), list.real(color.green())},
                            {list.string("UIBlue"), list.real(color.blue())},
                            {list.string("UIAlpha"), list.real(color.alpha())}});
}

Number classObject(PropertyListBuilder& list) {
    const Number name = list.string("UIColor");
    return list.dictionary({{list.string("$classname"), name},
                            {list.string("$classes"), list.array({name, list.string("NSObject")})}});
}

} // namespace

std::string NSKeyedArchiver::archivedDataWithRootObject(const UIColor& color) {
    PropertyListBuilder list;
    const Number objects = list.array({list.string("$null"), colorObject(list, color), classObject(list)});
    const Number top = list.dictionary({{list.string("root"), list.uid(colorPlace)}});
    const Number archive = list.dictionary({{list.string("$version"), list.integer(writtenVersion)},
                                            {list.string("$archiver"), list.string("NSKeyedArchiver")},
                                            {list.string("$top"), top},
                                            {list.string("$objects"), objects}});
    PropertyListBytes bytes = writePropertyList(list.finish(archive), PropertyListForm::binary);
    if (auto* const whole = std::get_if<std::string>(&bytes)) {
        return std::move(*whole);
    }
    throw std::bad_alloc(); // nothing else is in the way of so small a list
}

} // namespace vantor::platform
