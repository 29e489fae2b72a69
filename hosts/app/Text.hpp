// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/app/Look.hpp"

#include <QLabel>
#include <cstdint>

namespace vantor::hosts::app {

enum class Ink : std::uint8_t { text, secondary };
enum class Side : std::uint8_t { start, end };

/// A text in one of the app's sizes. Plain: nothing in it is taken for markup. It stands at the start or the
/// end of its line by the direction of the window, not of what it says, and is read out as part of the page.
class Text final : public QLabel, public Looked {
    Q_OBJECT // or looking for one finds any label

        public : explicit Text(double points, Ink ink = Ink::text, QFont::Weight weight = QFont::Normal);

    /// At the end of its line: a figure above another one.
    [[nodiscard]] Text* atEnd();
    /// A sentence: goes on in the next line where one is too short.
    [[nodiscard]] Text* wrapped();
    /// Replaces the text where it differs.
    void display(const QString& text);
    void setLook(const Look& look) override;

private:
    void align();

    const double m_points;
    const Ink m_ink;
    const QFont::Weight m_weight;
    Side m_side = Side::start;
};

} // namespace vantor::hosts::app
