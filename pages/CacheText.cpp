// SPDX-License-Identifier: MIT
#include "pages/CacheText.hpp"

#include "platform/foundation/NSLocalizedString.hpp"

namespace vantor {

using platform::CacheItem;
using platform::CacheNature;
using platform::NSLocalizedString;

namespace {

const char* keyOf(CacheNature nature) {
    switch (nature) {
    case CacheNature::pictures:
        return "cache_PICTURES";
    case CacheNature::working:
        return "cache_WORKING";
    case CacheNature::downloads:
        return "cache_DOWNLOADS";
    case CacheNature::builds:
        return "cache_BUILDS";
    case CacheNature::pages:
        return "cache_PAGES";
    case CacheNature::models:
        return "cache_MODELS";
    case CacheNature::settings:
        return "cache_SETTINGS";
    case CacheNature::unsent:
        return "cache_UNSENT";
    case CacheNature::media:
        return "cache_MEDIA";
    case CacheNature::shaders:
        return "cache_SHADERS";
    case CacheNature::history:
        return "cache_HISTORY";
    case CacheNature::unknown:
        break;
    }
    return "cache_UNKNOWN";
}

} // namespace

std::string cacheName(const CacheItem& item) {
    return item.name.empty() ? NSLocalizedString("cache_LOOSE") : item.name;
}

std::string cacheSentence(const CacheItem& item) {
    const std::string text = item.usedBy.empty() ? NSLocalizedString(keyOf(item.nature))
                                                 : platform::textWithValue(NSLocalizedString("cache_RUNNING"),
                                                                           "program", item.usedBy);
    return item.isMarked ? text + " · " + NSLocalizedString("cache_MARKED") : text;
}

std::string systemCacheName(const platform::SystemCache& cache) {
    const bool isJournal = cache.what == platform::SystemCache::What::journal;
    return NSLocalizedString(isJournal ? "storage_JOURNAL" : "storage_PACKAGES");
}

std::string storageRestName(std::int64_t rest) {
    return NSLocalizedString(rest < 0 ? "storage_GIVENBACK" : "storage_REST");
}

} // namespace vantor
