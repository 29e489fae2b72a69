// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/app/Ring.hpp"
#include "hosts/app/Sampler.hpp"

#include <QAbstractButton>
#include <array>
#include <functional>

namespace vantor::hosts::app {

/// The way to one page: its ring or sign, its name, and the ring's percentage.
class SidebarEntry final : public QAbstractButton, public Looked {
    Q_OBJECT

public:
    /// Without a model it has the sign of the settings.
    SidebarEntry(const QString& name, std::shared_ptr<ArcChartViewModel> model, QWidget* parent);

    [[nodiscard]] Ring* ring() const { return m_ring; }
    void setPercentage(const QString& text);
    void setLook(const Look& look) override;
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;
    void checkStateSet() override;
    void nextCheckState() override;
    void focusInEvent(QFocusEvent* event) override;

private:
    [[nodiscard]] QColor ground() const;
    [[nodiscard]] QRect placed(int x, int width) const;
    void paintSign(QPainter& painter) const;
    void refreshGround();

    Ring* m_ring = nullptr;
    QString m_percentage;
    Look m_look;
    bool m_keyboardFocus = false;
};

/// The pages, one below the other.
class Sidebar final : public QWidget, public Looked {
public:
    using Models = std::array<std::shared_ptr<ArcChartViewModel>, pageCount>;

    Sidebar(const Models& models, const std::function<void(PageKind)>& chosen);

    [[nodiscard]] SidebarEntry& entry(PageKind page) { return *m_entries.at(static_cast<std::size_t>(page)); }
    void setLook(const Look& look) override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    std::array<SidebarEntry*, pageCount> m_entries{};
    Look m_look;
};

} // namespace vantor::hosts::app
