// SPDX-License-Identifier: MIT
#include "hosts/qt/UserFile.hpp"

#include <QSaveFile>
#include <array>
#include <cstdlib>
#include <fstream>
#include <system_error>

namespace vantor::hosts::qt {

namespace {

constexpr std::size_t longest = 4096; // bytes of a file that is worth reading

std::filesystem::path absolute(const char* variable) {
    const char* value = std::getenv(variable);
    std::filesystem::path path(value == nullptr ? "" : value);
    return path.is_absolute() ? path : std::filesystem::path();
}

} // namespace

std::filesystem::path userFolder(const char* variable, const char* belowHome) {
    const std::filesystem::path named = absolute(variable);
    return named.empty() ? absolute("HOME") / belowHome : named;
}

std::optional<std::string> writeUserFile(const std::filesystem::path& path, const std::string& text) {
    if (!path.is_absolute()) {
        return "there is no home folder";
    }
    std::error_code error;
    std::filesystem::create_directories(path.parent_path(), error);
    QSaveFile file(QString::fromStdString(path.string()));
    const auto size = static_cast<qint64>(text.size());
    if (!file.open(QIODevice::WriteOnly) || file.write(text.data(), size) != size || !file.commit()) {
        return path.string() + ": " + file.errorString().toStdString();
    }
    return std::nullopt;
}

std::string readUserFile(const std::filesystem::path& path) {
    std::error_code error;
    if (!std::filesystem::is_regular_file(path, error)) {
        return {};
    }
    std::array<char, longest> buffer{};
    std::ifstream file(path, std::ios::binary);
    file.read(buffer.data(), buffer.size());
    return {buffer.data(), static_cast<std::size_t>(file.gcount())};
}

} // namespace vantor::hosts::qt
