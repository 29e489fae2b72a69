// SPDX-License-Identifier: MIT
#include "sysinfo/SystemValues/FileTree.hpp"

#include "sysinfo/SystemValues/Printer.hpp"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <memory>
#include <system_error>

namespace vantor::SystemValues {

namespace fs = std::filesystem;

namespace {

/// More than any kernel parameter; a file without an end is cut off here.
constexpr std::size_t longestFile = std::size_t{16} << 20U;

struct Content {
    std::string bytes;
    std::error_code error;
};

/// Only plain files are opened: a pipe would block, and reading a device may change it.
std::error_code whyNotPlain(const std::string& path) {
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    if (error || !fs::exists(status)) {
        return error ? error : std::make_error_code(std::errc::no_such_file_or_directory);
    }
    if (fs::is_directory(status)) {
        return std::make_error_code(std::errc::is_a_directory);
    }
    return fs::is_regular_file(status) ? std::error_code() : std::make_error_code(std::errc::not_supported);
}

Content read(const std::string& path) {
    if (const std::error_code error = whyNotPlain(path)) {
        return {{}, error};
    }
    const auto closing = [](std::FILE* file) { std::fclose(file); };
    const std::unique_ptr<std::FILE, decltype(closing)> file(std::fopen(path.c_str(), "rb"), closing);
    if (!file) {
        return {{}, {errno, std::generic_category()}};
    }
    Content content;
    std::array<char, 4096> chunk{};
    errno = 0;
    while (const std::size_t count = std::fread(chunk.data(), 1, chunk.size(), file.get())) {
        content.bytes.append(chunk.data(), count);
        if (content.bytes.size() > longestFile) {
            return {{}, std::make_error_code(std::errc::file_too_large)};
        }
    }
    if (std::ferror(file.get()) != 0) {
        return {{}, {errno, std::generic_category()}};
    }
    return content;
}

void logFailure(const std::error_code& error) {
    Printer::print("Value fetching failed " + error.message());
}

std::optional<std::string> textAt(const std::string& path) {
    Printer::print("Fetching value for linux sysctl pseudofile path: " + path);
    Content content = read(path);
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
    const Content content = read(pathOf(name));
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
