// SPDX-License-Identifier: MIT
#pragma once

#include "sysinfo/PackagesBase/BoolFromInt.hpp"
#include "sysinfo/SystemValues/FileTree.hpp"

#include <concepts>

/// Named values out of a tree of small text files: the name's points lead down the folders. Each supplies the
/// fetch operations and the listings to a type that names its base folder, `subfolder`, which ends in "/".
/// Every failure is absent and one log line.
namespace vantor::SystemValues {

template<class F>
concept HasSubfolder = requires {
    { F::subfolder() } -> std::convertible_to<std::string>;
};
template<class F>
concept HasSubfolderInstance = requires(const F& tree) {
    { tree.subfolder } -> std::convertible_to<std::string>;
};

/// For a type with a static `subfolder()`.
template<class Self>
class FileSystemFetchMixin : public PackagesBase::FetchProtocolDataBoolFromIntMixin<Self> {
public:
    [[nodiscard]] static std::optional<std::string> getString(std::string_view name) {
        return tree().text(name);
    }
    template<PackagesBase::FixedWidthInteger T>
    [[nodiscard]] static std::optional<T> getInteger(std::string_view name) {
        return tree().template integer<T>(name);
    }
    [[nodiscard]] static std::optional<PackagesBase::Data> getData(std::string_view name) {
        return tree().data(name);
    }
    [[nodiscard]] static std::optional<FileTree::Entries> listEntries(std::string_view name) {
        return tree().entries(name);
    }
    [[nodiscard]] static std::optional<FileTree::Names> listDirectoryEntries(std::string_view name) {
        return tree().names(name, true);
    }
    [[nodiscard]] static std::optional<FileTree::Names> listFileEntries(std::string_view name) {
        return tree().names(name, false);
    }
    [[nodiscard]] static std::optional<FileTree::Values> listFileEntriesWithValues(std::string_view name) {
        return tree().values(name);
    }

private:
    static FileTree tree() {
        static_assert(HasSubfolder<Self>, "this type needs a static `std::string subfolder()`");
        return FileTree(Self::subfolder());
    }
};

/// For a type with a field `subfolder`.
template<class Self>
class FileSystemFetchInstanceMixin : public PackagesBase::FetchProtocolDataBoolFromIntInstanceMixin<Self> {
public:
    [[nodiscard]] std::optional<std::string> getString(std::string_view name) const {
        return tree().text(name);
    }
    template<PackagesBase::FixedWidthInteger T>
    [[nodiscard]] std::optional<T> getInteger(std::string_view name) const {
        return tree().template integer<T>(name);
    }
    [[nodiscard]] std::optional<PackagesBase::Data> getData(std::string_view name) const {
        return tree().data(name);
    }
    [[nodiscard]] std::optional<FileTree::Entries> listEntries(std::string_view name) const {
        return tree().entries(name);
    }
    [[nodiscard]] std::optional<FileTree::Names> listDirectoryEntries(std::string_view name) const {
        return tree().names(name, true);
    }
    [[nodiscard]] std::optional<FileTree::Names> listFileEntries(std::string_view name) const {
        return tree().names(name, false);
    }
    [[nodiscard]] std::optional<FileTree::Values> listFileEntriesWithValues(std::string_view name) const {
        return tree().values(name);
    }

private:
    [[nodiscard]] FileTree tree() const {
        static_assert(HasSubfolderInstance<Self>, "this type needs a field `std::string subfolder`");
        return FileTree(static_cast<const Self&>(*this).subfolder);
    }
};

template<class F>
concept FileSystemFetch = PackagesBase::FetchProtocolData<F> && std::derived_from<F, FileSystemFetchMixin<F>>;
template<class F>
concept FileSystemFetchInstance =
    PackagesBase::FetchProtocolDataInstance<F> && std::derived_from<F, FileSystemFetchInstanceMixin<F>>;

/// A tree of files as a value: `BrigeFetcher("/proc/sys/").getString("kernel.hostname")`.
struct BrigeFetcher : FileSystemFetchInstanceMixin<BrigeFetcher> {
    std::string subfolder; ///< the base folder, ending in "/"
    explicit BrigeFetcher(std::string base) : subfolder(std::move(base)) {}
};

} // namespace vantor::SystemValues
