// SPDX-License-Identifier: MIT
#include "hosts/widget/Snapshot.hpp"

#include "controller/ReportInterface.hpp"
#include "controller/Sections.hpp"
#include "hosts/common/HeadlessLoop.hpp"
#include "hosts/widget/DesktopContext.hpp"
#include "hosts/widget/ReportCard.hpp"
#include "platform/core/PrintableText.hpp"

#include <QBuffer>
#include <QImage>
#include <QPainter>
#include <QSaveFile>
#include <QSvgGenerator>
#include <algorithm>
#include <cmath>
#include <iostream>

namespace vantor::hosts::widget {

namespace {

constexpr double longestWait = 3.7; // seconds
constexpr double tallest = 4096;    // what a file offers in height

/// Every figure has a text and every ring has arrived.
bool isComplete(TEReportTableViewController& controller, platform::Instant now) {
    return std::ranges::all_of(sections, [&](const Section& section) {
        const ArcChartView* const chart = chartOf(controller, section);
        return (chart == nullptr || !chart->animation().isRunningAt(now)) &&
               std::ranges::none_of(section.rows, [&](const SectionRow& row) {
                   return (controller.*row.figure.label)->text().empty();
               });
    });
}

void waitForFigures(TEReportTableViewController& controller, bool demo) {
    const auto done = [&controller] { return isComplete(controller, platform::RunLoop::main().now()); };
    if (demo) {
        hosts::common::VirtualTime time;
        controller.view();
        (void)time.turnUntil(done, longestWait);
    } else {
        controller.view();
        (void)hosts::common::turnUntil(done, longestWait); // a machine that does not answer is shown as it is
    }
}

QByteArray pngBytes(ReportCard& card, double scale) {
    QImage image((QSizeF(card.size()) * scale).toSize(), QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(scale);
    image.fill(Qt::transparent);
    card.render(&image, {}, {}, QWidget::DrawChildren);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    return image.save(&buffer, "PNG") ? bytes : QByteArray();
}

QByteArray svgBytes(ReportCard& card, double scale) {
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

int report(const std::string& file, const QString& problem) {
    std::cerr << "vantor-widget: cannot write " << platform::printableText(file) << ": "
              << platform::printableText(problem.toStdString()) << '\n';
    return 1;
}

int writeWhole(const std::string& name, const QByteArray& bytes) {
    QSaveFile file(QString::fromLocal8Bit(name.c_str()));
    if (bytes.isEmpty()) {
        return report(name, QStringLiteral("the picture could not be made"));
    }
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit()) {
        return report(name, file.errorString());
    }
    return 0;
}

} // namespace

int writeSnapshot(const Options& options) {
    const auto controller = ReportInterface::instantiate();
    controller->setExtensionContext(std::make_shared<DesktopContext>([](const auto&, const auto&) {}));
    waitForFigures(*controller, options.demo);

    const bool dark = options.appearance == AppearanceChoice::dark;
    const bool expanded = options.expanded.value_or(true);
    ReportCard card(controller);
    card.setTheme(qt::Theme::of(dark ? platform::Appearance::dark : platform::Appearance::light, 1, {}));
    card.setCanExpand(true);
    const double width = card.neededWidth();
    card.setExpanded(expanded);
    using Mode = platform::NCWidgetDisplayMode;
    controller->widgetActiveDisplayModeDidChange(expanded ? Mode::expanded : Mode::compact,
                                                 {width, expanded ? tallest : 110});
    card.setContentSize(controller->preferredContentSize());
    card.setAttribute(Qt::WA_DontShowOnScreen);
    card.show(); // lays everything out
    card.animator().settle();

    const bool vector = options.snapshot->ends_with(".svg");
    const int status =
        writeWhole(*options.snapshot, vector ? svgBytes(card, options.scale) : pngBytes(card, options.scale));
    platform::RunLoop::main().clear();
    return status;
}

} // namespace vantor::hosts::widget
