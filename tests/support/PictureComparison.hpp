// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <QFile>
#include <QImage>
#include <QString>
#include <algorithm>
#include <cmath>
#include <utility>

namespace vantor::tests {

/// How much colour two pictures have apart, in the patch where they differ most, of 255. Texts are grey, so
/// fonts do not count; a ring of another colour, or one that starts elsewhere, does.
inline double worstColourDifference(const QImage& a, const QImage& b) {
    constexpr int patch = 6; // pixels
    const auto colour = [](const QColor& c) { return std::pair(c.red() - c.green(), c.green() - c.blue()); };
    double worst = 0;
    for (int top = 0; top + patch <= a.height(); top += patch / 2) {
        for (int left = 0; left + patch <= a.width(); left += patch / 2) {
            double difference = 0;
            for (int i = 0; i < patch * patch; ++i) {
                const QPoint at(left + i % patch, top + i / patch);
                const auto [ra, ba] = colour(a.pixelColor(at));
                const auto [rb, bb] = colour(b.pixelColor(at));
                difference += std::abs(ra - rb) + std::abs(ba - bb);
            }
            worst = std::max(worst, difference / (patch * patch));
        }
    }
    return worst;
}

/// Compares a picture with the one of that name in the documents. Fonts differ a little from machine to
/// machine, so both are looked at as from a distance, and some grey is forgiven, but no colour, unless the
/// caller knows that another font moves what is coloured. With VANTOR_RENDER in the environment the
/// document's picture is replaced instead.
inline void expectAsInDocuments(const QImage& picture, const std::string& name, bool isFontKnown = true) {
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
    const bool sameFonts =
        isFontKnown && picture.size() == shown.size(); // a wider one moves everything a little
    EXPECT_LT(difference / (3.0 * before.width() * before.height()), sameFonts ? 5 : 8)
        << name << " (of 255)";
    if (!sameFonts) {
        GTEST_SKIP() << name << ": another font has moved the rings here, so their colours are not compared";
    }
    EXPECT_LT(worstColourDifference(before, after), 2.5) << name << " (of 255)";
}

} // namespace vantor::tests
