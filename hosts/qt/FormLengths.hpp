// SPDX-License-Identifier: MIT
#pragma once

#include <QMargins>
#include <vector>

class QLayout;
class QLayoutItem;
class QWidget;

namespace vantor::hosts::qt {

struct Theme;

/// The margins and spacings of a form's layouts. A form gives them in points; a theme says how many pixels a
/// point has.
class FormLengths {
public:
    /// Takes the lengths down as they stand in the form.
    explicit FormLengths(QWidget& form);

    /// Writes them into the layouts in the pixels of a theme.
    void scale(const Theme& theme);

private:
    struct Lengths {
        QLayout* layout;
        QMargins margins;
        int spacing;
        int verticalSpacing; // of a grid
    };
    std::vector<Lengths> m_lengths;
};

/// The least width, in pixels, of what a box layout or one of its items holds, with what is hidden counted as
/// well: a row that comes and goes does not change it.
[[nodiscard]] int leastWidth(QLayoutItem& item);

} // namespace vantor::hosts::qt
