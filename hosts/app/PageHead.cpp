// SPDX-License-Identifier: MIT
#include "hosts/app/PageHead.hpp"

#include <QHBoxLayout>
#include <QVBoxLayout>
#include <utility>

namespace vantor::hosts::app {

PageHead::PageHead(std::shared_ptr<ArcChartViewModel> model, const QString& caption, double figureSize)
    : m_ring(new Ring(std::move(model), largeRing)),
      m_caption(new Text(TextSize::label, Ink::secondary)),
      m_figure(new Text(figureSize)),
      m_whole(new Text(TextSize::whole, Ink::secondary)),
      m_sentence((new Text(TextSize::label, Ink::secondary))->wrapped()),
      m_top(new QHBoxLayout),
      m_line(new QHBoxLayout(this)) {
    m_caption->setText(caption);
    auto* const figures = new QHBoxLayout;
    figures->setSpacing(Grid::unit);
    figures->addWidget(m_figure, 0, Qt::AlignBaseline);
    figures->addWidget(m_whole, 0, Qt::AlignBaseline);
    figures->addStretch();
    auto* const start = new QVBoxLayout;
    start->setSpacing(0);
    start->addWidget(m_caption);
    start->addLayout(figures);
    start->addStretch();
    m_top->setSpacing(Grid::margin);
    m_top->addLayout(start, 1);
    auto* const beside = new QVBoxLayout;
    beside->setSpacing(Grid::unit / 2);
    beside->addLayout(m_top);
    beside->addWidget(m_sentence);
    beside->addStretch();
    m_line->setContentsMargins(0, 0, 0, 0);
    m_line->setSpacing(Grid::margin);
    m_line->addWidget(m_ring, 0, Qt::AlignTop);
    m_line->addLayout(beside, 1);
}

void PageHead::showFigure(const QString& figure, const QString& whole) {
    m_figure->display(figure);
    m_whole->display(whole);
}

void PageHead::showSentence(const QString& sentence) {
    m_sentence->display(sentence);
}

void PageHead::addBeside(QLayout* layout) {
    m_line->addLayout(layout);
}

void PageHead::addAtEnd(QLayout* layout) {
    m_top->addLayout(layout);
}

} // namespace vantor::hosts::app
