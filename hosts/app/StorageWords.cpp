// SPDX-License-Identifier: MIT
#include "hosts/app/StorageWords.hpp"

#include "controller/ByteText.hpp"
#include "hosts/app/Words.hpp"
#include "hosts/qt/HostText.hpp"

namespace vantor::hosts::app {

namespace {

const char* keyOf(platform::CacheNature nature) {
    using platform::CacheNature;
    switch (nature) {
    case CacheNature::pictures:
        return "app_CACHEPICTURES";
    case CacheNature::working:
        return "app_CACHEWORKING";
    case CacheNature::downloads:
        return "app_CACHEDOWNLOADS";
    case CacheNature::builds:
        return "app_CACHEBUILDS";
    case CacheNature::pages:
        return "app_CACHEPAGES";
    case CacheNature::models:
        return "app_CACHEMODELS";
    case CacheNature::settings:
        return "app_CACHESETTINGS";
    case CacheNature::unsent:
        return "app_CACHEUNSENT";
    case CacheNature::media:
        return "app_CACHEMEDIA";
    case CacheNature::shaders:
        return "app_CACHESHADERS";
    case CacheNature::history:
        return "app_CACHEHISTORY";
    case CacheNature::unknown:
        break;
    }
    return "app_CACHEUNKNOWN";
}

} // namespace

QString storageSize(std::int64_t bytes) {
    return isolated(QString::fromStdString(storageText(bytes)));
}

QString cacheDetail(const platform::CacheItem& item) {
    QString text = item.usedBy.empty() ? qt::hostText(keyOf(item.nature))
                                       : qt::hostText("app_CACHEINUSE", "name", item.usedBy);
    if (item.isMarked) {
        text += QStringLiteral(" · ") + qt::hostText("app_CACHEMARKED");
    }
    return text;
}

QString deletedText(const Deleted& deleted) {
    const QString bytes = storageSize(static_cast<std::int64_t>(deleted.bytes));
    QString text = deleted.gained ? filled("app_DELETED", "size", bytes, "gained",
                                           storageSize(static_cast<std::int64_t>(*deleted.gained)))
                                  : qt::hostText("app_DELETEDONLY", "size", bytes.toStdString());
    if (!deleted.problems.empty()) {
        text += QLatin1Char(' ') +
                qt::hostText("app_STAYED", "n",
                             numberText(static_cast<double>(deleted.problems.size()), 0).toStdString()) +
                QLatin1Char(' ') + QString::fromStdString(deleted.problems.front());
    }
    return text;
}

} // namespace vantor::hosts::app
