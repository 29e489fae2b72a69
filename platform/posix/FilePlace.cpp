// SPDX-License-Identifier: MIT
#include "platform/posix/FilePlace.hpp"

#include <fcntl.h>
#include <linux/magic.h>
#include <sys/vfs.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <optional>
#include <utility>

namespace vantor::platform::posix {

namespace {

constexpr int mostLinks = 40; // as the kernel has it
constexpr int lookFlags = O_PATH | O_NOFOLLOW | O_CLOEXEC;

bool isOnProc(const Descriptor& folder) {
    struct statfs about {};
    return ::fstatfs(folder.number(), &about) == 0 && about.f_type == PROC_SUPER_MAGIC;
}

class Walk {
public:
    Walk(const std::string& path, MissingFolders missing) : m_path(path), m_rest(path), m_missing(missing) {}

    FilePlace go() {
        beginAtRoot();
        while (m_problem.empty() && !m_isThere) {
            step();
        }
        m_place.problem = std::move(m_problem);
        return std::move(m_place);
    }

private:
    void beginAtRoot() {
        struct stat root {};
        m_place.folder = Descriptor(::open("/", O_PATH | O_DIRECTORY | O_CLOEXEC));
        if (!m_place.folder.isOpen() || ::fstat(m_place.folder.number(), &root) != 0) {
            fail(m_path, errno);
        }
        m_rootsOwner = root.st_uid;
        m_at.clear();
    }

    void fail(const std::string& subject, int error) { m_problem = subject + ": " + errorText(error); }
    /// Where folders are to be made, the one that cannot be had is told; else the file that is not reached.
    void failAt(const std::string& name, int error) {
        fail(m_missing == MissingFolders::areMade ? m_at + '/' + name : m_path, error);
    }

    void step() {
        m_rest.erase(0, m_rest.find_first_not_of('/'));
        const std::string name = m_rest.substr(0, m_rest.find('/'));
        m_rest.erase(0, name.size());
        if (name.empty()) {
            look(".");
        } else if (m_rest.empty()) {
            look(name);
        } else {
            enter(name);
        }
    }

    /// The last name.
    void look(const std::string& name) {
        const Descriptor found(::openat(m_place.folder.number(), name.c_str(), lookFlags));
        m_place.name = name;
        m_place.exists = found.isOpen() && ::fstat(found.number(), &m_place.about) == 0;
        const int error = m_place.exists ? 0 : errno;
        m_place.isKernels = isOnProc(m_place.folder);
        if (error != 0 && error != ENOENT) {
            fail(m_path, error);
        } else if (m_place.exists && S_ISLNK(m_place.about.st_mode) && !m_place.isKernels) {
            follow(found, name, m_place.about);
        } else {
            m_isThere = true;
        }
    }

    Descriptor openFolder(const std::string& name) {
        // Asked for as a folder, one that is mounted when somebody comes by is mounted.
        const auto open = [&] {
            return ::openat(m_place.folder.number(), name.c_str(), lookFlags | O_DIRECTORY);
        };
        int number = open();
        if (number < 0 && errno == ENOENT && m_missing == MissingFolders::areMade &&
            (::mkdirat(m_place.folder.number(), name.c_str(), 0700) == 0 || errno == EEXIST)) {
            number = open();
        }
        return Descriptor(number);
    }

    void enter(const std::string& name) {
        Descriptor next = openFolder(name);
        if (!next.isOpen() && errno == ENOTDIR) {
            const Descriptor found(::openat(m_place.folder.number(), name.c_str(), lookFlags));
            struct stat about {};
            if (!found.isOpen() || ::fstat(found.number(), &about) != 0) {
                failAt(name, errno);
                return;
            }
            if (S_ISLNK(about.st_mode) && !isOnProc(m_place.folder)) {
                follow(found, name, about);
                return;
            }
            next =
                Descriptor(::openat(m_place.folder.number(), name.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
        }
        if (!next.isOpen()) {
            failAt(name, errno);
            return;
        }
        m_place.folder = std::move(next);
        m_at += '/' + name;
    }

    void follow(const Descriptor& link, const std::string& name, const struct stat& about) {
        if (about.st_uid != ::geteuid() && about.st_uid != 0 && about.st_uid != m_rootsOwner) {
            m_problem = (m_rest.empty() ? m_path : m_at + '/' + name) + ": is a link of another user's";
            return;
        }
        std::array<char, PATH_MAX> target{};
        const ssize_t length = ::readlinkat(link.number(), "", target.data(), target.size());
        const bool isTooLong = length == static_cast<ssize_t>(target.size());
        if (length < 0 || isTooLong || ++m_links > mostLinks) {
            fail(m_path, length < 0 ? errno : isTooLong ? ENAMETOOLONG : ELOOP);
            return;
        }
        m_rest.insert(0, target.data(), static_cast<std::size_t>(length));
        if (m_rest.starts_with('/')) {
            beginAtRoot();
        }
    }

    const std::string& m_path;
    std::string m_rest; ///< what is still to be gone
    std::string m_at;   ///< the folder's path as far as it was gone
    MissingFolders m_missing;
    uid_t m_rootsOwner = 0;
    int m_links = 0;
    bool m_isThere = false;
    std::string m_problem;
    FilePlace m_place;
};

} // namespace

FilePlace findPlace(const std::string& path, MissingFolders missing) {
    return Walk(path, missing).go();
}

} // namespace vantor::platform::posix
