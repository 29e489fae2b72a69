// SPDX-License-Identifier: MIT
#include "hosts/widget/Snapshot.hpp"

#include "hosts/common/Failures.hpp"
#include "hosts/common/HeadlessLoop.hpp"
#include "hosts/common/Pause.hpp"
#include "hosts/widget/Readiness.hpp"
#include "hosts/widget/WidgetHost.hpp"
#include "platform/core/PrintableText.hpp"
#include "platform/posix/FileReplacement.hpp"

#include <QBuffer>
#include <QImage>
#include <QPainter>
#include <QSvgGenerator>
#include <filesystem>
#include <iostream>

namespace vantor::hosts::widget {

namespace {

constexpr double longestWait = 3.7; // seconds
constexpr double tallest = 4096;    // points that a file offers in height

QByteArray pngBytes(WidgetCard& card, double scale) {
    QImage image((QSizeF(card.size()) * scale).toSize(), QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(scale);
    image.fill(Qt::transparent);
    card.render(&image, {}, {}, QWidget::DrawChildren);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    return image.save(&buffer, "PNG") ? bytes : QByteArray();
}

QByteArray svgBytes(WidgetCard& card, double scale) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    QSvgGenerator generator;
    generator.setOutputDevice(&buffer);
    generator.setResolution(96);
    generator.setTitle(QStringLiteral("Vantor"));
    generator.setSize((QSizeF(card.size()) * scale).toSize());
    generator.setViewBox(QRectF(QPointF(), QSizeF(card.size())));
    QPainter painter(&generator);
    card.render(&painter, {}, {}, QWidget::DrawChildren);
    painter.end();
    return bytes;
}

/// Names are bytes, in no encoding.
int writeWhole(const std::string& name, const QByteArray& bytes) {
    std::error_code error;
    const std::filesystem::path path = std::filesystem::absolute(name, error);
    const std::optional<std::string> problem =
        bytes.isEmpty() ? "the picture could not be made"
                        : platform::posix::replaceFile(
                              path.native(), {bytes.data(), static_cast<std::size_t>(bytes.size())}, 0666);
    if (problem) {
        std::cerr << "vantor-widget: --snapshot: " << platform::printableText(*problem, 4096) << '\n';
    }
    return problem ? 1 : 0;
}

} // namespace

int writeSnapshot(const Options& options) {
    std::optional<common::VirtualTime> time;
    if (options.demo) {
        time.emplace();
    }
    WidgetHost host;
    {
        const Readiness ready(host.controller());
        const auto done = [&ready] { return ready.isReached(); };
        // A machine that does not answer in time is shown as it is.
        const auto resumed = [&host](platform::Instant now) { common::resumeWidget(host.controller(), now); };
        (void)(time ? time->turnUntil(done, longestWait) : common::turnUntil(done, longestWait, resumed));
    }
    host.update();

    const bool dark = options.appearance == AppearanceChoice::dark;
    using Mode = platform::NCWidgetDisplayMode;
    host.setTheme(qt::Theme::of(dark ? platform::Appearance::dark : platform::Appearance::light, 1, {}));
    host.setMode(options.expanded.value_or(true) ? Mode::expanded : Mode::compact, tallest);
    WidgetCard& card = host.card();
    card.setAttribute(Qt::WA_DontShowOnScreen);
    card.show(); // lays everything out
    card.animator().settle();

    const bool isWhole = common::currentFailures().empty();
    const bool vector = isPicture(*options.snapshot, ".svg");
    const int status =
        writeWhole(*options.snapshot, vector ? svgBytes(card, options.scale) : pngBytes(card, options.scale));
    return isWhole ? status : 1;
}

} // namespace vantor::hosts::widget
