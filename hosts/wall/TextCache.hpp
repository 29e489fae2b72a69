// SPDX-License-Identifier: MIT
#pragma once

#include <QFont>
#include <QHash>
#include <QStaticText>

class QPainter;

namespace vantor::hosts::wall {

/// Texts that are laid out once and drawn often. Plain: nothing in them is taken for markup.
class TextCache {
public:
    /// Draws a text into a line's room, at its start or its end by the user's language, in the middle of its
    /// height. What is too long ends in an ellipsis. The painter's pen is its colour. The width that it took.
    int draw(QPainter& painter, const QRect& line, const QString& text, const QFont& font,
             Qt::Alignment side = Qt::AlignLeading);
    void clear() { m_texts.clear(); }

private:
    struct Key {
        QString text;
        int size;
        int weight;
        int width;
        bool operator==(const Key&) const = default;
        friend size_t qHash(const Key& key, size_t seed = 0) {
            return qHashMulti(seed, key.text, key.size, key.weight, key.width);
        }
    };
    QHash<Key, QStaticText> m_texts;
};

} // namespace vantor::hosts::wall
