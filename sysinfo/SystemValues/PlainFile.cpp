// SPDX-License-Identifier: MIT
#include "sysinfo/SystemValues/PlainFile.hpp"

#include <array>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <memory>

namespace vantor::SystemValues {

namespace fs = std::filesystem;

namespace {

constexpr std::size_t longest = std::size_t{16} << 20U;

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

} // namespace

PlainFile PlainFile::read(const std::string& path) {
    if (const std::error_code error = whyNotPlain(path)) {
        return {{}, error};
    }
    const auto closing = [](std::FILE* file) { std::fclose(file); };
    const std::unique_ptr<std::FILE, decltype(closing)> file(std::fopen(path.c_str(), "rb"), closing);
    if (!file) {
        return {{}, {errno, std::generic_category()}};
    }
    PlainFile content;
    std::array<char, 4096> chunk{};
    errno = 0;
    while (const std::size_t count = std::fread(chunk.data(), 1, chunk.size(), file.get())) {
        content.bytes.append(chunk.data(), count);
        if (content.bytes.size() > longest) {
            return {{}, std::make_error_code(std::errc::file_too_large)};
        }
    }
    if (std::ferror(file.get()) != 0) {
        return {{}, {errno, std::generic_category()}};
    }
    return content;
}

} // namespace vantor::SystemValues
