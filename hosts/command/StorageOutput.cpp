// SPDX-License-Identifier: MIT
#include "hosts/command/StorageOutput.hpp"

#include "actions/ReleaseWords.hpp"
#include "hosts/command/PageText.hpp"
#include "pages/CacheText.hpp"
#include "platform/core/PrintableText.hpp"
#include "platform/foundation/NSLocalizedString.hpp"

#include <array>
#include <cstdlib>
#include <ctime>

namespace vantor::hosts::command {

namespace {

using platform::CacheItem;
using platform::CacheKind;
using platform::CacheNature;
using Json = nlohmann::ordered_json;

constexpr std::size_t longestPath = 4096;

std::string sizeText(std::int64_t bytes) {
    return (bytes < 0 ? "-" : "") + storageSize(static_cast<std::uint64_t>(std::abs(bytes)));
}

/// "2026-11-23", in local time.
std::string dayText(const std::optional<std::int64_t>& time) {
    const std::time_t seconds = time.value_or(0);
    std::tm local{};
    std::array<char, 32> text{};
    if (!time || ::localtime_r(&seconds, &local) == nullptr ||
        std::strftime(text.data(), text.size(), "%Y-%m-%d", &local) == 0) {
        return "";
    }
    return text.data();
}

std::string row(std::int64_t bytes, const std::string& lastUse, const std::string& name) {
    return atRight(sizeText(bytes), 10) + atRight(lastUse, 12) + "  " + name + '\n';
}

std::string cachesText(const StoragePage& page) {
    constexpr std::size_t mostKept = 15;
    std::string text;
    std::size_t kept = 0;
    std::int64_t smaller = 0;
    for (const CacheRow& cache : page.caches) {
        const auto bytes = static_cast<std::int64_t>(cache.item.bytes);
        kept += cache.item.kind == CacheKind::kept ? 1 : 0;
        if (kept > mostKept) {
            smaller += bytes;
            continue;
        }
        const std::string name = cacheName(cache.item) + ": " + cacheSentence(cache.item);
        text += row(bytes, dayText(cache.item.newest), name);
    }
    return smaller > 0 ? text + row(smaller, "", words("storage_SMALLER")) : text;
}

std::string systemText(const StoragePage& page) {
    std::string text;
    for (const platform::SystemCache& cache : page.system) {
        const std::string size = cache.bytes ? storageSize(*cache.bytes) : "?";
        text += atRight(size, 10) + "  " + systemCacheName(cache) + ": " + cache.command + '\n';
    }
    return text.empty() ? text : '\n' + words("storage_ADMINISTRATOR") + '\n' + text;
}

const char* wordFor(CacheKind kind) {
    return kind == CacheKind::harmless ? "harmless" : kind == CacheKind::costly ? "costly" : "kept";
}

const char* wordFor(CacheNature nature) {
    constexpr std::array<const char*, 12> words{"pictures", "working", "downloads", "builds",
                                                "pages",    "models",  "settings",  "unsent",
                                                "media",    "shaders", "history",   "unknown"};
    return words.at(static_cast<std::size_t>(nature));
}

template<class T>
Json orNull(const std::optional<T>& value) {
    return value ? Json(*value) : Json();
}

Json cacheJson(const CacheRow& cache) {
    const CacheItem& item = cache.item;
    return {{"name", item.name.empty() ? Json() : Json(item.name)},
            {"kind", wordFor(item.kind)},
            {"nature", wordFor(item.nature)},
            {"folder", platform::printableText(item.folder, longestPath)},
            {"bytes", item.bytes},
            {"newest", orNull(item.newest)},
            {"oldest", orNull(item.oldest)},
            {"marked", item.isMarked},
            {"usedBy", item.usedBy.empty() ? Json() : Json(item.usedBy)},
            {"releasable", item.isReleasable()},
            {"suggested", cache.isSuggested}};
}

} // namespace

std::string storageText(const StoragePage& page) {
    const VolumeFigures& figures = page.figures;
    using platform::textWithValue;
    const std::string head = textWithValue(words("storage_HEAD", "free", sizeText(figures.free)), "total",
                                           sizeText(figures.total));
    std::string text = textWithValue(head, "share", percentText(figures.fraction() * 100, 0)) + "\n\n" +
                       row(figures.used, "", words("home_USEDSPACE")) +
                       row(figures.releasable, "", words("home_RELEASABLESPACE")) +
                       row(figures.available, "", words("storage_AVAILABLE")) +
                       row(figures.total, "", words("page_ALL")) + '\n' + words("storage_ITEMS") + '\n';
    text += row(page.trash, "", words("storage_TRASH"));
    text += cachesText(page);
    text += page.rest != 0 ? row(page.rest, "", storageRestName(page.rest)) : "";
    text += row(page.offered(), "",
                words("storage_OFFERED", "commands", "vantor clean trash, vantor clean caches"));
    return text + systemText(page);
}

std::string storageJson(const StoragePage& page) {
    const VolumeFigures& figures = page.figures;
    Json json{{"total", figures.total},
              {"used", figures.used},
              {"releasable", figures.releasable},
              {"available", figures.available},
              {"free", figures.free},
              {"reserved", figures.reserved},
              {"trash", page.trash},
              {"caches", Json::array()},
              {"rest", page.rest},
              {"system", Json::array()}};
    for (const CacheRow& cache : page.caches) {
        json["caches"].push_back(cacheJson(cache));
    }
    for (const platform::SystemCache& cache : page.system) {
        json["system"].push_back(
            {{"folder", cache.folder}, {"bytes", orNull(cache.bytes)}, {"command", cache.command}});
    }
    return json.dump() + '\n';
}

} // namespace vantor::hosts::command
