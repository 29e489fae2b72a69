// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/common/RemoteNode.hpp"
#include "hosts/wall/WallLook.hpp"
#include "hosts/widget/WidgetHost.hpp"

#include <QLabel>
#include <QPushButton>
#include <QWidget>
#include <functional>
#include <memory>

namespace vantor::hosts::widget {

/// One machine of a wall in the wall's window: the widget, fed by that machine, in the middle of the room.
class MachinePage final : public QWidget {
public:
    /// `node` may be null: the machine is gone. `back` is called from a key or button of the page.
    MachinePage(std::unique_ptr<common::RemoteNode> node, std::function<void()> back, QWidget* parent);
    ~MachinePage() override;

    void setLook(const wall::WallLook& look);
    /// Whether somebody can see it. Once the machine has told enough, the page turns the main loop itself.
    void setSeen(bool isSeen);
    /// Called before the page turns the loop in place of its window.
    void setReadyHandler(std::function<void()> ready) { m_ready = std::move(ready); }
    /// The widget; null until the machine has told enough to be shown.
    [[nodiscard]] WidgetHost* host() { return m_host.get(); }

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void takeHost();
    void place();
    [[nodiscard]] double tallest() const; ///< points that the card may take

    std::unique_ptr<common::RemoteNode> m_node;
    std::unique_ptr<WidgetHost> m_host;
    QLabel m_word;
    QPushButton m_back;
    wall::WallLook m_look;
    platform::CGSize m_content;
    std::function<void()> m_ready;
    bool m_isSeen = false;
};

} // namespace vantor::hosts::widget
