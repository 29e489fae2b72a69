// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/app/Ring.hpp"
#include "hosts/app/Text.hpp"

#include <QBoxLayout>
#include <QWidget>

namespace vantor::hosts::app {

/// What a page is about: its ring, and beside it one figure, what that is a part of, and a sentence.
class PageHead final : public QWidget {
public:
    PageHead(std::shared_ptr<ArcChartViewModel> model, const QString& caption,
             double figureSize = TextSize::figure);

    void showFigure(const QString& figure, const QString& whole);
    void showSentence(const QString& sentence);
    /// Puts something at the end of the line of the figure.
    void addAtEnd(QLayout* layout);
    /// Puts something at the end of all lines.
    void addBeside(QLayout* layout);
    [[nodiscard]] Ring& ring() { return *m_ring; }
    [[nodiscard]] const Text& figure() const { return *m_figure; }
    [[nodiscard]] const Text& whole() const { return *m_whole; }
    [[nodiscard]] const Text& sentence() const { return *m_sentence; }

private:
    Ring* m_ring;
    Text* m_caption;
    Text* m_figure;
    Text* m_whole;
    Text* m_sentence;
    QBoxLayout* m_top;
    QBoxLayout* m_line;
};

} // namespace vantor::hosts::app
