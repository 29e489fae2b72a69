// SPDX-License-Identifier: MIT
#include "sysinfo/SystemValues/FileTree.hpp"

#include "sysinfo/SystemValues/PlainFile.hpp"
#include "sysinfo/SystemValues/Printer.hpp"

#include <algorithm>
#include <filesystem>
#include <system_error>

namespace vantor::SystemValues {

namespace fs = std::filesystem;

namespace {

void logFailure(const std::error_code& error) {
    Printer::print("Value fetching failed " + error.message());
}

std::optional<std::string> textAt(const std::string& path) {
    Printer::print("Fetching value for linux sysctl pseudofile path: " + path);
    PlainFile content = PlainFile::read(path);
    if (!content.error && !PackagesBase::isUtf8(content.bytes)) {
        content.error = std::make_error_code(std::errc::illegal_byte_sequence);
    }
    if (content.error) {
        logFailure(content.error);
        return std::nullopt;
    }
    if (content.bytes.ends_with('\n')) {
        content.bytes.pop_back();
    }
    Printer::print(content.bytes);
    return content.bytes;
}

} // namespace

std::string FileTree::pathOf(std::string_view name) const {
    std::string below(name);
    std::ranges::replace(below, '.', '/');
    return m_base + below;
}

std::optional<std::string> FileTree::text(std::string_view name) const {
    return textAt(pathOf(name));
}

std::optional<PackagesBase::Data> FileTree::data(std::string_view name) const {
    const PlainFile content = PlainFile::read(pathOf(name));
    if (content.error) {
        logFailure(content.error);
        return std::nullopt;
    }
    PackagesBase::Data data(content.bytes.size());
    std::ranges::transform(content.bytes, data.begin(), [](char c) { return static_cast<std::byte>(c); });
    return data;
}

std::optional<FileTree::Entries> FileTree::entries(std::string_view name) const {
    const std::string path = pathOf(name);
    Printer::print("Listing entries at path: " + path);
    std::error_code error;
    if (!fs::is_directory(path, error)) {
        Printer::print("Specified entry path does not exist: " + path);
        return std::nullopt;
    }
    Entries found;
    fs::directory_iterator entry(path, error);
    for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
        std::error_code gone;
        const fs::file_status status = fs::status(entry->path(), gone);
        if (fs::exists(status)) {
            found.emplace(entry->path().filename().string(), fs::is_directory(status));
        }
    }
    if (error) {
        Printer::print("Error while retriving the contents of path: " + path);
        return std::nullopt;
    }
    Printer::print("Got directory contents: " + PackagesBase::description(found));
    return found;
}

std::optional<FileTree::Names> FileTree::names(std::string_view name, bool folders) const {
    const std::optional<Entries> all = entries(name);
    if (!all) {
        return std::nullopt;
    }
    Names result;
    for (const auto& [entry, isFolder] : *all) {
        if (isFolder == folders) {
            result.push_back(entry);
        }
    }
    return result;
}

std::optional<FileTree::Values> FileTree::values(std::string_view name) const {
    const std::optional<Names> files = names(name, false);
    if (!files) {
        return std::nullopt;
    }
    Values result;
    for (const std::string& file : *files) {
        // By its path, since a file's own name may hold points.
        if (std::optional<std::string> text = textAt(pathOf(name) + "/" + file)) {
            result.emplace(file, *std::move(text));
        }
    }
    return result;
}

} // namespace vantor::SystemValues
