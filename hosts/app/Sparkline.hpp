// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/app/Look.hpp"
#include "metrics/CpuStatus.hpp"

#include <QWidget>
#include <vector>

namespace vantor::hosts::app {

/// The processor's shares of the last minute, one above the other, the newest at the end of the line. Below a
/// heading, with the last figure of each share beside it.
class Sparkline final : public QWidget, public Looked {
    Q_OBJECT

public:
    Sparkline();

    /// Shares two seconds apart, the oldest first.
    void setMinute(std::vector<CpuUsage> minute);
    void setLook(const Look& look) override;
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    [[nodiscard]] QRectF plot() const;
    void paintHeading(QPainter& painter) const;
    void paintLegend(QPainter& painter) const;
    void paintScale(QPainter& painter, const QRectF& plot) const;
    void paintShares(QPainter& painter, const QRectF& plot) const;

    Look m_look;
    std::vector<CpuUsage> m_minute;
};

/// A column for each processor, as tall as it is busy; where there are too many for columns, a square each,
/// the darker the busier.
class ProcessorBars final : public QWidget, public Looked {
    Q_OBJECT

public:
    ProcessorBars();

    /// Percent of each.
    void setProcessors(std::vector<double> busy);
    void setLook(const Look& look) override;
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void paintColumns(QPainter& painter, const QRectF& place) const;
    void paintSquares(QPainter& painter, const QRectF& place) const;

    Look m_look;
    std::vector<double> m_busy;
};

} // namespace vantor::hosts::app
