// SPDX-License-Identifier: MIT
#include "platform/linux/removal/LinuxDisposal.hpp"

#include "platform/core/PrintableText.hpp"
#include "platform/linux/kernel/FileSystem.hpp"
#include "platform/linux/kernel/Folder.hpp"
#include "platform/linux/kernel/FolderWalk.hpp"
#include "platform/linux/kernel/KernelFile.hpp"
#include "platform/linux/kernel/VolumeQuery.hpp"
#include "platform/linux/removal/CacheList.hpp"
#include "platform/linux/removal/Remover.hpp"
#include "platform/linux/removal/SystemCaches.hpp"
#include "platform/linux/removal/TrashFolders.hpp"
#include "platform/linux/removal/TrashInfo.hpp"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace vantor::platform::linux {

namespace {

constexpr std::size_t longestInfo = 16384, longestOrigin = 4096;
constexpr std::string_view ending = ".trashinfo";

posix::Descriptor openTrash(const std::string& path) {
    return Remover::openOwn(AT_FDCWD, path.c_str());
}

/// Lists one trash.
class TrashList {
public:
    TrashList(std::string path, std::vector<TrashItem>& items, const Disposal::KeepGoing& keepGoing)
        : m_path(std::move(path)),
          m_trash(openTrash(m_path)),
          m_items(items),
          m_keepGoing(keepGoing),
          m_walk(fileSystemOf(m_trash.number()).value_or(""), ::geteuid(), keepGoing) {}

    void take() {
        takeFolder("files", false);
        takeFolder("expunged", true);
        takeLostNotes();
    }

private:
    void takeFolder(const char* which, bool isExpunged) {
        Folder folder(Remover::openOwn(m_trash.number(), which));
        while (const char* const name = folder.next()) {
            struct stat about {};
            if (!m_keepGoing()) {
                return;
            }
            if (::fstatat(folder.number(), name, &about, AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT) == 0) {
                TrashItem item = described(name, isExpunged);
                item.identity = identityOf(about);
                item.bytes += sizeOf(folder.number(), name);
                m_items.push_back(std::move(item));
            }
        }
    }

    TrashItem described(const std::string& name, bool isExpunged) {
        TrashItem item{.trash = m_path,
                       .name = name,
                       .isExpunged = isExpunged,
                       .origin = printableText(name, longestOrigin)};
        if (isExpunged) {
            return item;
        }
        const std::string file = "info/" + name + std::string(ending);
        KernelFile note(m_path + '/' + file, Shape::manyRecords);
        if (const std::optional<TrashInfo> info = parseTrashInfo(note.read(longestInfo).text)) {
            item.origin = originOf(info->path).value_or(item.origin);
            item.trashed = info->trashed;
        }
        item.bytes = sizeOf(m_trash.number(), file.c_str());
        return item;
    }

    /// In a volume's own trash paths begin at the volume's top.
    [[nodiscard]] std::optional<std::string> originOf(const std::string& path) const {
        if (path.empty()) {
            return std::nullopt;
        }
        const std::size_t top = m_path.rfind("/.Trash");
        const bool isBelowTop = !path.starts_with('/') && top != std::string::npos;
        return printableText(isBelowTop ? m_path.substr(0, top) + '/' + path : path, longestOrigin);
    }

    std::uint64_t sizeOf(int folder, const char* name) {
        const std::uint64_t before = m_walk.bytes();
        m_walk.addEntry(folder, name);
        return m_walk.bytes() - before;
    }

    /// Notes about items that are gone, as a crash leaves them.
    void takeLostNotes() {
        Folder notes(Remover::openOwn(m_trash.number(), "info"));
        while (const char* const note = notes.next()) {
            std::string name = note;
            if (!name.ends_with(ending)) {
                continue;
            }
            name.resize(name.size() - ending.size());
            struct stat about {};
            const std::string item = "files/" + name;
            if (::fstatat(m_trash.number(), item.c_str(), &about, AT_SYMLINK_NOFOLLOW) != 0 &&
                errno == ENOENT) {
                m_items.push_back({.trash = m_path,
                                   .name = name,
                                   .origin = printableText(name, longestOrigin),
                                   .bytes = sizeOf(notes.number(), note)});
            }
        }
    }

    std::string m_path;
    posix::Descriptor m_trash;
    std::vector<TrashItem>& m_items;
    const Disposal::KeepGoing& m_keepGoing;
    FolderWalk m_walk; ///< one, since files may have names in several items
};

} // namespace

TrashContents LinuxDisposal::trashItems(const KeepGoing& keepGoing) {
    TrashContents contents;
    std::string dataHome = m_places.folders.data;
    if (!dataHome.empty() && !m_paths.answers(dataHome + "/Trash")) {
        contents.problems.push_back(printableText(dataHome, longestOrigin) +
                                    "/Trash: its file system does not answer");
        dataHome.clear();
    }
    std::vector<std::string> mounts = localMounts(m_places.tree.read("proc/self/mountinfo").text);
    // The way to a volume of this machine's own may lead through somebody else's.
    std::erase_if(mounts, [this](const std::string& mount) { return !m_paths.isLocal(mount); });
    const bool homeAnswers = m_paths.answers(m_places.folders.home);
    const TrashPlaces places{std::move(dataHome), homeAnswers ? m_places.folders.home : std::string(),
                             std::move(mounts)};
    for (const std::string& trash : trashFolders(places, ::geteuid())) {
        TrashList(trash, contents.items, keepGoing).take();
    }
    return contents;
}

/// The file goes first, then its note: a crash in between leaves a note without a file, which does no harm.
Removal LinuxDisposal::remove(const TrashItem& item, const KeepGoing& keepGoing) {
    const auto refused = [&item](const std::string& reason) {
        return Removal{.problem = printableText(item.name) + ": " + reason};
    };
    if (item.name.empty() || item.name.find('/') != std::string::npos || item.name == "." ||
        item.name == "..") {
        return refused("is no name in a trash");
    }
    const posix::Descriptor trash = openTrash(item.trash);
    const posix::Descriptor files = Remover::openOwn(trash.number(), item.isExpunged ? "expunged" : "files");
    Remover remover(keepGoing);
    if (item.identity && (!files.isOpen() || !remover.remove(files.number(), item.name, *item.identity))) {
        return files.isOpen() ? remover.outcome() : refused("its trash is gone");
    }
    const posix::Descriptor notes = Remover::openOwn(trash.number(), "info");
    const std::string note = item.name + std::string(ending);
    struct stat about {};
    // Another item may have been trashed under this name meanwhile: the note is then that one's.
    const bool isTaken =
        files.isOpen() && ::fstatat(files.number(), item.name.c_str(), &about, AT_SYMLINK_NOFOLLOW) == 0;
    Removal outcome = remover.outcome();
    if (item.isExpunged || isTaken || !notes.isOpen() ||
        ::fstatat(notes.number(), note.c_str(), &about, AT_SYMLINK_NOFOLLOW) != 0) {
        return outcome;
    }
    if (::unlinkat(notes.number(), note.c_str(), 0) == 0) {
        outcome.bytes += static_cast<std::uint64_t>(about.st_blocks) * 512;
    } else if (errno != ENOENT) {
        outcome.problem = printableText(note) + ": " + posix::errorText(errno);
    }
    return outcome;
}

ReleasableParts LinuxDisposal::releasableParts(const KeepGoing& keepGoing) {
    return countAndKeep(m_places, m_paths, keepGoing).parts;
}

std::vector<std::string> LinuxDisposal::cacheNames() {
    std::vector<std::string> names;
    for (const KnownCache& cache : knownCaches()) {
        names.emplace_back(cache.name);
    }
    return names;
}

Removal LinuxDisposal::remove(const CacheItem& item, const KeepGoing& keepGoing) {
    return CacheList(m_places.tree, m_places.folders, m_paths).remove(item, keepGoing);
}

std::vector<SystemCache> LinuxDisposal::systemCaches() {
    return findSystemCaches(m_places.tree);
}

std::optional<VolumeSpace> LinuxDisposal::volumeOf(const std::string& folder) {
    const posix::Descriptor descriptor(::open(folder.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    const std::optional<std::string> identity = fileSystemOf(descriptor.number());
    const std::optional<VolumeFigures> figures = queryVolume(folder).figures;
    if (!identity || !figures) {
        return std::nullopt;
    }
    return VolumeSpace{*identity, static_cast<std::uint64_t>(figures->available)};
}

} // namespace vantor::platform::linux
