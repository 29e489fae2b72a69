// SPDX-License-Identifier: MIT
#include "platform/views/NSLayoutConstraint.hpp"

#include "platform/views/UIView.hpp"

#include <utility>

namespace vantor::platform {

namespace {

bool same(const NSLayoutAnchor& a, const NSLayoutAnchor& b) {
    return a.attribute == b.attribute && a.item.lock() == b.item.lock();
}

} // namespace

NSLayoutConstraint NSLayoutAnchor::constraintEqualToAnchor(const NSLayoutAnchor& other,
                                                           double constant) const {
    return {*this, other, constant};
}

NSLayoutConstraint::NSLayoutConstraint(NSLayoutAnchor first, NSLayoutAnchor second, double constant)
    : m_first(std::move(first)), m_second(std::move(second)), m_constant(constant) {}

bool NSLayoutConstraint::operator==(const NSLayoutConstraint& other) const {
    return m_constant == other.m_constant && same(m_first, other.m_first) && same(m_second, other.m_second);
}

void NSLayoutConstraint::setActive(bool active) const {
    const std::shared_ptr<UIView> item = m_first.item.lock();
    if (item == nullptr) {
        return;
    }
    std::erase(item->m_constraints, *this);
    if (active) {
        item->m_constraints.push_back(*this);
    }
}

} // namespace vantor::platform
