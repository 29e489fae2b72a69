// SPDX-License-Identifier: MIT
#include "hosts/qt/LinkOpener.hpp"

#include <QProcess>
#include <QString>
#include <utility>

namespace vantor::hosts::qt {

namespace {

QString schemeHandlerKind(const QString& link) {
    return QStringLiteral("x-scheme-handler/") + link.section(QLatin1Char(':'), 0, 0);
}

} // namespace

void openLink(QObject& owner, const platform::NSURL& url, std::function<void(bool)> finished) {
    const QString link = QString::fromStdString(url.absoluteString());
    auto* query = new QProcess(&owner);
    const auto conclude = [query, link, finished = std::move(finished)](bool answered) {
        query->deleteLater();
        const bool known = answered && !query->readAllStandardOutput().trimmed().isEmpty();
        finished(known && QProcess::startDetached(QStringLiteral("xdg-open"), {link}));
    };
    QObject::connect(query, &QProcess::finished, query,
                     [conclude](int code, QProcess::ExitStatus) { conclude(code == 0); });
    QObject::connect(query, &QProcess::errorOccurred, query, [conclude](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart) { // every other error ends in `finished` as well
            conclude(false);
        }
    });
    query->start(QStringLiteral("xdg-mime"),
                 {QStringLiteral("query"), QStringLiteral("default"), schemeHandlerKind(link)});
}

} // namespace vantor::hosts::qt
