// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <memory>

namespace vantor::platform {

class UIView;

enum class LayoutAttribute : std::uint8_t { left, right, top, bottom, leading, trailing };

class NSLayoutConstraint;

/// One edge of a view, to make constraints from.
struct NSLayoutAnchor {
    std::weak_ptr<UIView> item;
    LayoutAttribute attribute = LayoutAttribute::left;

    [[nodiscard]] NSLayoutConstraint constraintEqualToAnchor(const NSLayoutAnchor& other,
                                                             double constant = 0) const;
};

/// The rule that the first edge lies `constant` points after the second one, which belongs to the superview
/// of the first one's view. In the tree leading is left and trailing is right; a host mirrors what it shows
/// in right-to-left scripts.
class NSLayoutConstraint {
public:
    NSLayoutConstraint(NSLayoutAnchor first, NSLayoutAnchor second, double constant);

    [[nodiscard]] const NSLayoutAnchor& firstAnchor() const { return m_first; }
    [[nodiscard]] const NSLayoutAnchor& secondAnchor() const { return m_second; }
    [[nodiscard]] double constant() const { return m_constant; }

    /// Installs the constraint on its first item, or takes an equal one off it.
    void setActive(bool active) const;

    bool operator==(const NSLayoutConstraint& other) const;

private:
    NSLayoutAnchor m_first;
    NSLayoutAnchor m_second;
    double m_constant;
};

} // namespace vantor::platform
