// SPDX-License-Identifier: MIT
#include "hosts/app/StorageWords.hpp"

#include "actions/ReleaseWords.hpp"
#include "controller/ByteText.hpp"
#include "hosts/app/Words.hpp"
#include "hosts/qt/HostText.hpp"

namespace vantor::hosts::app {

QString storageSize(std::int64_t bytes) {
    return isolated(QString::fromStdString(storageText(bytes)));
}

QString deletedText(const Released& deleted) {
    QString text = QString::fromStdString(releaseResult(deleted));
    if (!deleted.problems.empty()) {
        text += QLatin1Char(' ') +
                qt::hostText("app_STAYED", "n",
                             numberText(static_cast<double>(deleted.problems.size()), 0).toStdString()) +
                QLatin1Char(' ') + QString::fromStdString(deleted.problems.front());
    }
    return text;
}

} // namespace vantor::hosts::app
