// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/app/Look.hpp"

#include <QWidget>
#include <vector>

namespace vantor::hosts::app {

/// One part of a bar. Pale parts stand out too little to be told by their colour alone, so each has a name.
struct BarPart {
    QString name;
    QString figure;
    double fraction = 0;    ///< of the whole bar
    std::size_t color = 0;  ///< which of the look's four
    bool isHatched = false; ///< a shade between this colour and the next
    bool operator==(const BarPart&) const = default;
};

/// What a whole is made of: a bar, and below it the name and the figure of each part, in as many lines as
/// they need.
class PartsBar final : public QWidget, public Looked {
    Q_OBJECT

public:
    explicit PartsBar(QWidget* parent = nullptr);

    void setParts(std::vector<BarPart> parts);
    [[nodiscard]] const std::vector<BarPart>& parts() const { return m_parts; }
    void setLook(const Look& look) override;

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;
    [[nodiscard]] bool hasHeightForWidth() const override { return true; }
    [[nodiscard]] int heightForWidth(int width) const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    /// Where a part's name and figure stand, from the start of the line.
    struct Entry {
        int x = 0;
        int line = 0;
        int nameWidth = 0;
    };
    [[nodiscard]] std::vector<Entry> entriesIn(int width) const;
    [[nodiscard]] QColor colorOf(const BarPart& part) const;
    [[nodiscard]] int widthOf(const BarPart& part) const;
    void paintBar(QPainter& painter) const;
    void paintEntry(QPainter& painter, const BarPart& part, const Entry& entry) const;

    Look m_look;
    std::vector<BarPart> m_parts;
};

} // namespace vantor::hosts::app
