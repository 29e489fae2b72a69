// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/app/Look.hpp"
#include "hosts/qt/Buttons.hpp"

#include <cstdint>

namespace vantor::hosts::app {

enum class ButtonSize : std::uint8_t { large, small };
enum class ButtonRole : std::uint8_t { usual, destructive, chosen };

/// A pill with a text: 40 points high, or 32 within a row.
class ActionButton final : public qt::Button, public Looked {
    Q_OBJECT

public:
    explicit ActionButton(ButtonSize size, ButtonRole role = ButtonRole::usual, QWidget* parent = nullptr);

    void setRole(ButtonRole role);
    /// On a selected row: stands out from it.
    void setOnSelection(bool on) { m_onSelection = on; }
    void setLook(const Look& look) override;
    [[nodiscard]] QSize sizeHint() const override;

protected:
    [[nodiscard]] double textSize() const override;
    void paintEvent(QPaintEvent* event) override;

private:
    Look m_look;
    const ButtonSize m_size;
    ButtonRole m_role;
    bool m_onSelection = false;
};

} // namespace vantor::hosts::app
