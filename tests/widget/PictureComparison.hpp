// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <QFile>
#include <QImage>
#include <QString>
#include <cmath>

namespace vantor::tests {

/// Compares a picture with the one of that name in the documents. Fonts differ a little from machine to
/// machine, so both are looked at as from a distance, and some grey is forgiven. With VANTOR_RENDER in the
/// environment the document's picture is replaced instead.
inline void expectAsInDocuments(const QImage& picture, const std::string& name) {
    const QString path = QString::fromUtf8(VANTOR_PICTURES "/") + QString::fromStdString(name);
    if (qEnvironmentVariableIsSet("VANTOR_RENDER")) {
        ASSERT_TRUE(picture.save(path));
        return;
    }
    const QImage shown(path);
    ASSERT_FALSE(shown.isNull()) << name;
    const auto fromAfar = [&](const QImage& image) {
        return image.convertToFormat(QImage::Format_RGB32)
            .scaled(120, 120 * shown.height() / shown.width(), Qt::IgnoreAspectRatio,
                    Qt::SmoothTransformation);
    };
    const QImage before = fromAfar(shown);
    const QImage after = fromAfar(picture);
    double difference = 0;
    for (int y = 0; y < before.height(); ++y) {
        for (int x = 0; x < before.width(); ++x) {
            const QColor a = before.pixelColor(x, y);
            const QColor b = after.pixelColor(x, y);
            difference +=
                std::abs(a.red() - b.red()) + std::abs(a.green() - b.green()) + std::abs(a.blue() - b.blue());
        }
    }
    EXPECT_LT(difference / (3.0 * before.width() * before.height()), 5) << name << " (of 255)";
}

} // namespace vantor::tests
