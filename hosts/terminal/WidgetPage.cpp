// SPDX-License-Identifier: MIT
#include "hosts/terminal/WidgetPage.hpp"

#include <algorithm>

namespace vantor::hosts::terminal {

using platform::Instant;

WidgetPage::WidgetPage(const std::string& name, std::optional<double> interval, bool isExpanded,
                       common::RemoteNode* node, bool canMove)
    : m_host(name, interval, isExpanded), m_canMove(canMove) {
    if (node != nullptr) {
        m_host.follow(*node);
    }
    static_cast<void>(m_host.sceneAt({})); // keys may come before the first picture
}

std::optional<Instant> WidgetPage::nextChange() const {
    return m_nextStep && m_noticeEnd ? std::min(m_nextStep, m_noticeEnd)
           : m_nextStep              ? m_nextStep
                                     : m_noticeEnd;
}

const Grid& WidgetPage::draw(Size size, const Look& look, Instant now) {
    m_size = size;
    m_picture = drawPicture(m_host.sceneAt(now), size, look, now, m_picture);
    m_noticeEnd = m_host.noticeEnd();
    if (m_noticeEnd && *m_noticeEnd <= now) {
        m_noticeEnd.reset();
    }
    note(now);
    return m_picture.grid;
}

const Grid& WidgetPage::step(const Look& look, Instant now) {
    if (m_noticeEnd && now >= *m_noticeEnd) {
        return draw(m_size, look, now);
    }
    stepPicture(m_picture, m_host.scene(), look, m_drawn, now);
    note(now);
    return m_picture.grid;
}

void WidgetPage::note(Instant now) {
    m_drawn = now;
    m_nextStep = m_canMove ? nextStep(m_host.scene(), m_picture, now) : std::nullopt;
}

void WidgetPage::take(const KeyPress& press, Instant now) {
    constexpr char32_t letterCase = 0x20; // what makes a letter small
    if (press.key == U' ' || press.key == U'\r' || press.key == U'\n') {
        m_host.perform(HostAction::changeMode, now);
        return;
    }
    const bool isLetter = press.key >= U'A';
    for (const Scene::Key& key : m_host.scene().keys) {
        if (static_cast<char32_t>(key.key) == (isLetter ? press.key | letterCase : press.key)) {
            m_host.perform(key.action, now);
            return;
        }
    }
}

void WidgetPage::take(const Click& click, Instant now) {
    if (const std::optional<Action> action = m_picture.actionAt(click.column, click.row)) {
        m_host.perform(*action, now);
    }
}

} // namespace vantor::hosts::terminal
