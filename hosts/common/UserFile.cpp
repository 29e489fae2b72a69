// SPDX-License-Identifier: MIT
#include "hosts/common/UserFile.hpp"

#include "hosts/common/HostMachine.hpp"
#include "platform/posix/Descriptor.hpp"
#include "platform/posix/FileReplacement.hpp"
#include "platform/posix/RegularFile.hpp"

#include <unistd.h>

#include <cerrno>
#include <functional>

namespace vantor::hosts::common {

namespace posix = platform::posix;

namespace {

constexpr const char* noHome = "there is no home folder";
constexpr std::size_t longestUserFile = 4096; // bytes of a file that is read

/// What `work` found to be wrong, which is nothing where it gives no text.
std::optional<std::string> problemOf(const std::string& path, const std::function<std::string()>& work) {
    if (path.empty()) {
        return noHome;
    }
    std::optional<std::string> problem = askAbout(path, work);
    if (!problem) {
        return path + noAnswer;
    }
    return problem->empty() ? std::nullopt : problem;
}

} // namespace

std::string userFilePath(const std::string& folder, std::string_view name) {
    return folder.empty() ? std::string() : folder + '/' + std::string(name);
}

std::optional<std::string> writeUserFile(const std::string& path, std::string_view text) {
    return problemOf(path, [&path, text] {
        std::optional<std::string> problem = posix::makeFoldersTo(path);
        return (problem ? problem : posix::replaceFile(path, text)).value_or("");
    });
}

std::string readUserFile(const std::string& path) {
    return path.empty() ? std::string() : askAbout(path, [&path] {
                                              return posix::readRegularFile(path, longestUserFile);
                                          }).value_or("");
}

bool userFileExists(const std::string& path) {
    const auto found = [&path] { return std::string(::access(path.c_str(), F_OK) == 0 ? "yes" : ""); };
    return !path.empty() && askAbout(path, found) == "yes";
}

std::optional<std::string> removeUserFile(const std::string& path) {
    return problemOf(path, [&path] {
        const bool gone = ::unlink(path.c_str()) == 0 || errno == ENOENT || errno == ENOTDIR;
        return gone ? std::string() : path + ": " + posix::errorText(errno);
    });
}

} // namespace vantor::hosts::common
