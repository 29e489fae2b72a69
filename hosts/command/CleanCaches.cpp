// SPDX-License-Identifier: MIT
#include "hosts/command/CleanCaches.hpp"

#include "actions/ReleaseCaches.hpp"
#include "actions/ReleaseWords.hpp"
#include "hosts/command/Deleting.hpp"
#include "hosts/command/ExitStatus.hpp"
#include "hosts/command/Output.hpp"
#include "hosts/command/PageText.hpp"
#include "hosts/common/HostDisposal.hpp"
#include "hosts/common/HostViewer.hpp"
#include "pages/CacheText.hpp"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <memory>

namespace vantor::hosts::command {

namespace {

using platform::CacheItem;
using platform::CacheKind;

struct Arguments {
    std::vector<std::string> names;
    DeletionWish wish;

    [[nodiscard]] bool asksFor(const CacheItem& item) const {
        return names.empty() ? item.kind == CacheKind::harmless
                             : std::ranges::find(names, item.name) != names.end();
    }
};

std::string joined(const std::vector<std::string>& names) {
    std::string text;
    for (const std::string& name : names) {
        text += (text.empty() ? "" : ", ") + name;
    }
    return text;
}

/// False, and said, where a name is none of a cache that may ever be released.
bool areKnown(const std::vector<std::string>& names) {
    const std::vector<std::string> known = platform::currentDisposal().cacheNames();
    for (const std::string& name : names) {
        if (std::ranges::find(known, name) == known.end()) {
            complain('"' + name + "\" is no cache that may be released. These are: " + joined(known) + '.');
            return false;
        }
    }
    return true;
}

void list(const ReleaseCaches& caches) {
    constexpr std::size_t width = 10;
    std::string text;
    for (const CacheItem& item : caches.items()) {
        std::string name = cacheName(item);
        name += ": " + cacheSentence(item);
        text += atRight(storageSize(item.bytes), width) + "  " + name + '\n';
    }
    print(text + atRight(storageSize(caches.bytes()), width) + "  " + words("page_ALL") + '\n');
}

int cleanCaches(const Arguments& arguments) {
    if (!canDelete(arguments.wish) || !areKnown(arguments.names)) {
        return wrongUsage;
    }
    platform::ReleasableParts parts = platform::currentDisposal().releasableParts([] { return true; });
    if (!parts.problem.empty()) {
        complain(parts.problem + '.');
        return refused;
    }
    std::vector<CacheItem> wanted;
    bool isWaiting = false;
    for (CacheItem& item : parts.caches) {
        if (!arguments.asksFor(item) || item.bytes == 0) {
            continue;
        }
        if (!item.usedBy.empty()) {
            complain(cacheName(item) + ": " + cacheSentence(item));
            isWaiting = true;
        }
        wanted.push_back(std::move(item));
    }
    const ReleaseCaches caches(std::move(wanted));
    const bool isRefused = isWaiting && !arguments.names.empty();
    if (caches.items().empty()) {
        print(words("command_NOTHING") + '\n');
        return isRefused ? refused : nothingThere;
    }
    const int status = deleteListed(
        arguments.wish, caches.bytes(), [&] { list(caches); },
        [&](const auto& keepGoing) { return caches.run(keepGoing); });
    return status == done && isRefused ? refused : status;
}

} // namespace

void addCleanCaches(CLI::App& clean, Action& action) {
    CLI::App* const caches = clean.add_subcommand(
        "caches", "Delete caches that come back by themselves: all harmless ones, or those that are named");
    caches->group("Commands");
    const auto given = std::make_shared<Arguments>();
    caches->add_option("NAME", given->names, "A cache, as vantor storage calls it")->type_name("");
    caches->add_flag("--dry-run", given->wish.dryRun, "List what would be deleted, and delete nothing");
    caches->add_flag("--yes", given->wish.yes, "Do not ask");
    caches->callback([&action, given] {
        action = [given] {
            const common::HostViewer viewer(false);
            const common::HostDisposal disposal;
            return cleanCaches(*given);
        };
    });
}

} // namespace vantor::hosts::command
