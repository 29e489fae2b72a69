// SPDX-License-Identifier: MIT
#include "hosts/qt/PictureFile.hpp"

#include "platform/core/PrintableText.hpp"
#include "platform/posix/FileReplacement.hpp"

#include <QBuffer>
#include <QImage>
#include <QPainter>
#include <QSvgGenerator>
#include <QWidget>
#include <algorithm>
#include <filesystem>
#include <iostream>

namespace vantor::hosts::qt {

namespace {

QByteArray pngBytes(QWidget& widget, double scale) {
    QImage image((QSizeF(widget.size()) * scale).toSize(), QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(scale);
    image.fill(Qt::transparent);
    widget.render(&image, {}, {}, QWidget::DrawChildren);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    return image.save(&buffer, "PNG") ? bytes : QByteArray();
}

QByteArray svgBytes(QWidget& widget, double scale) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    QSvgGenerator generator;
    generator.setOutputDevice(&buffer);
    generator.setResolution(96);
    generator.setTitle(QStringLiteral("Vantor"));
    generator.setSize((QSizeF(widget.size()) * scale).toSize());
    generator.setViewBox(QRectF(QPointF(), QSizeF(widget.size())));
    QPainter painter(&generator);
    widget.render(&painter, {}, {}, QWidget::DrawChildren);
    painter.end();
    return bytes;
}

/// Names are bytes, in no encoding.
int writeWhole(const std::string& name, const QByteArray& bytes, std::string_view program) {
    std::error_code error;
    const std::filesystem::path path = std::filesystem::absolute(name, error);
    const std::optional<std::string> problem =
        bytes.isEmpty() ? "the picture could not be made"
                        : platform::posix::replaceFile(
                              path.native(), {bytes.data(), static_cast<std::size_t>(bytes.size())}, 0666);
    if (problem) {
        std::cerr << program << ": --snapshot: " << platform::printableText(*problem, 4096) << '\n';
    }
    return problem ? 1 : 0;
}

} // namespace

bool isPicture(std::string_view name, std::string_view ending) {
    return name.size() > ending.size() &&
           std::ranges::equal(name.substr(name.size() - ending.size()), ending, [](char a, char b) {
               return (a >= 'A' && a <= 'Z' ? static_cast<char>(a - 'A' + 'a') : a) == b;
           });
}

int writePicture(QWidget& widget, const std::string& name, double scale, std::string_view program) {
    const bool vector = isPicture(name, ".svg");
    return writeWhole(name, vector ? svgBytes(widget, scale) : pngBytes(widget, scale), program);
}

} // namespace vantor::hosts::qt
