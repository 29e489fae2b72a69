// SPDX-License-Identifier: MIT
#include "hosts/terminal/picture/Parts.hpp"
#include "hosts/terminal/text/DisplayText.hpp"

#include <algorithm>

namespace vantor::hosts::terminal {

namespace {

constexpr int usualGap = 3, narrowGap = 2;

using Keys = std::vector<const Scene::Key*>;

int widthOf(const Scene::Key& key) {
    return displayWidth(key.shown()) + 1 + displayWidth(key.text);
}

/// The keys in rows, one after the other.
std::vector<Keys> rowsOf(const Keys& keys, int width, int gap) {
    std::vector<Keys> rows;
    int column = width; // nothing fits behind it
    for (const Scene::Key* const key : keys) {
        if (column + gap + widthOf(*key) > width) {
            rows.emplace_back();
            column = -gap;
        }
        rows.back().push_back(key);
        column += gap + widthOf(*key);
    }
    return rows;
}

/// Keys in rows, and how far they stand apart.
struct KeyRows {
    std::vector<Keys> rows;
    int gap = usualGap;
};

/// Closer together where that spares a row.
KeyRows rowsOf(const Keys& keys, int width) {
    KeyRows usual{rowsOf(keys, width, usualGap), usualGap};
    KeyRows narrow{rowsOf(keys, width, narrowGap), narrowGap};
    return narrow.rows.size() < usual.rows.size() ? narrow : usual;
}

/// Pages can be opened without a key, so theirs go first, the last one before the others; then the mode's.
Keys::const_iterator leastNeeded(const Keys& keys) {
    for (auto key = keys.end() - 1; key != keys.begin(); --key) {
        if (std::holds_alternative<platform::Source>((*key)->action)) {
            return key;
        }
    }
    return keys.begin() + (keys.size() > 2 ? 1 : 0);
}

/// The keys that fit, in their order; the one to leave and the one to refresh stay longest.
KeyRows fitting(const std::vector<Scene::Key>& all, int width, int most) {
    Keys keys;
    for (const Scene::Key& key : all) {
        keys.push_back(&key);
    }
    KeyRows rows = rowsOf(keys, width);
    while (keys.size() > 1 && static_cast<int>(rows.rows.size()) > most) {
        keys.erase(leastNeeded(keys));
        rows = rowsOf(keys, width);
    }
    return rows;
}

void drawRow(Sheet& sheet, const Keys& keys, int gap, const Box& box) {
    int width = -gap;
    for (const Scene::Key* const key : keys) {
        width += gap + widthOf(*key);
    }
    int column = box.column + std::max(0, (box.width - width) / 2);
    for (const Scene::Key* const key : keys) {
        const Box place{column, box.row, std::min(widthOf(*key), box.column + box.width - column)};
        const int before = displayWidth(key->shown()) + 1;
        sheet.text({column, box.row, before - 1}, key->shown(), Align::leading, strongInk());
        sheet.text({column + before, box.row, place.width - before}, key->text, Align::leading,
                   captionInk(sheet.look()));
        sheet.clickable(place, key->action);
        column += place.width + gap;
    }
}

} // namespace

int keyRows(const std::vector<Scene::Key>& keys, int width, int most) {
    return static_cast<int>(fitting(keys, width, most).rows.size());
}

void drawKeys(Sheet& sheet, const std::vector<Scene::Key>& keys, const std::string& notice, const Box& box) {
    if (!notice.empty()) {
        sheet.text({box.column, box.row + box.height - 1, box.width}, notice, Align::center, strongInk());
        return;
    }
    int row = box.row;
    const KeyRows shown = fitting(keys, box.width, box.height);
    for (const Keys& keysOfRow : shown.rows) {
        drawRow(sheet, keysOfRow, shown.gap, {box.column, row++, box.width});
    }
}

} // namespace vantor::hosts::terminal
