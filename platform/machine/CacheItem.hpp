// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace vantor::platform {

/// Which file or folder is meant, whatever its name comes to stand for.
struct FileIdentity {
    std::uint64_t device = 0;
    std::uint64_t number = 0;
    bool operator==(const FileIdentity&) const = default;
    auto operator<=>(const FileIdentity&) const = default;
};

/// Whether a cache may be released.
enum class CacheKind : std::uint8_t {
    harmless, ///< its program fills it again by itself
    costly,   ///< so it does, but that takes long or is much to load
    kept,     ///< never: it holds what does not come back, or nobody knows
};

/// How a cache comes back, or why it is kept.
enum class CacheNature : std::uint8_t {
    pictures,  ///< small pictures of files: when a folder is shown again
    working,   ///< lists and tables: when a program needs them
    downloads, ///< of packages: loaded again when they are needed
    builds,    ///< of programs: made by the next builds, which take longer
    pages,     ///< of the web: loaded again while browsing
    models,    ///< and other large downloads: loaded again when needed, gigabytes maybe
    settings,  ///< kept: a program's own settings or what it learned
    unsent,    ///< kept: files that may not be uploaded yet
    media,     ///< kept: mail, music or pictures to have without the network
    shaders,   ///< kept: programs draw slowly until it is made again
    history,   ///< kept: earlier versions of files
    unknown,   ///< kept: nobody knows whether it comes back
};

/// A folder that releasing a cache deletes.
struct CacheFolder {
    std::string path = {}; ///< absolute, as bytes
    FileIdentity identity = {};
    bool operator==(const CacheFolder&) const = default;
};

/// A cache of the user's: one that is known by name, or what else is in the cache folder.
struct CacheItem {
    std::string name = {}; ///< printable: "pip"; of one that is not known the name of its file or folder
    CacheKind kind = CacheKind::kept;
    CacheNature nature = CacheNature::unknown;
    std::string folder = {};                 ///< to look at, absolute, as bytes
    std::vector<CacheFolder> folders = {};   ///< what releasing deletes; of one that is kept none
    std::uint64_t bytes = 0;                 ///< what deleting it gives back, counted as the widget does
    std::optional<std::int64_t> newest = {}; ///< when any of its files was last read or written, since 1970
    std::optional<std::int64_t> oldest = {}; ///< and when the one that was so longest ago; in seconds
    bool isMarked =
        false; ///< its folder has a CACHEDIR.TAG, by which its owner says that it can be made again
    std::string usedBy = {}; ///< a program that has to end before, printable; empty: none
    std::int64_t listed = 0; ///< nanoseconds since 1970: what was written later stays

    /// Whether it may be released now, at all.
    [[nodiscard]] bool isReleasable() const { return kind != CacheKind::kept && usedBy.empty(); }
};

/// What the widget counts as releasable, part by part.
struct ReleasableParts {
    std::uint64_t trash = 0;       ///< bytes in the trashes on the documents' volume
    std::vector<CacheItem> caches; ///< in no order
    bool isWhole = true;           ///< false: the count was stopped
    std::string problem = {};      ///< why nothing counts, in English and printable; empty where it does

    [[nodiscard]] std::uint64_t bytes() const {
        std::uint64_t sum = trash;
        for (const CacheItem& item : caches) {
            sum += item.bytes;
        }
        return sum;
    }
};

/// Something that only the administrator can give back.
struct SystemCache {
    enum class What : std::uint8_t { packages, journal };
    What what = What::packages;
    std::string folder = {};
    std::optional<std::uint64_t> bytes = {}; ///< absent where only root may look
    std::string command = {};                ///< to copy: "sudo apt-get clean"
};

} // namespace vantor::platform
