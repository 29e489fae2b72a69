// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/app/Look.hpp"

#include <QWidget>

namespace vantor::hosts::app {

/// A bin in outline, before the name of its row; in no accessible tree, since the name says it.
class TrashSign final : public QWidget, public Looked {
    Q_OBJECT

public:
    void setLook(const Look& look) override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    Look m_look;
};

} // namespace vantor::hosts::app
