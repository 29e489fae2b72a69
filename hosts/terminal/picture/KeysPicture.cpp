// SPDX-License-Identifier: MIT
#include "hosts/terminal/picture/Parts.hpp"
#include "hosts/terminal/text/DisplayText.hpp"

#include <algorithm>

namespace vantor::hosts::terminal {

namespace {

constexpr int gap = 3;

using Keys = std::vector<const Scene::Key*>;

/// A key with its words, or alone.
std::string textOf(const Scene::Key& key, bool isShort) {
    const std::string& words = isShort ? key.shortText : key.text;
    return std::string(1, key.key) + ' ' + words;
}

int widthOf(const Keys& keys, bool isShort) {
    int width = -gap;
    for (const Scene::Key* key : keys) {
        width += gap + displayWidth(textOf(*key, isShort));
    }
    return width;
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
Keys fitting(const Scene& scene, int width) {
    Keys keys;
    for (const Scene::Key& key : scene.keys) {
        keys.push_back(&key);
    }
    while (keys.size() > 1 && widthOf(keys, true) > width) {
        keys.erase(leastNeeded(keys));
    }
    return keys;
}

} // namespace

void drawKeys(Sheet& sheet, const Scene& scene, const Box& box) {
    if (!scene.notice.empty()) {
        sheet.text(box, scene.notice, Align::center, strongInk());
        return;
    }
    const Keys keys = fitting(scene, box.width);
    const bool isShort = keys.size() < scene.keys.size() || widthOf(keys, false) > box.width - 2;
    int column = box.column + std::max(0, (box.width - widthOf(keys, isShort)) / 2);
    for (const Scene::Key* key : keys) {
        const std::string text = textOf(*key, isShort);
        const Box place{column, box.row, std::min(displayWidth(text), box.column + box.width - column)};
        sheet.text({column, box.row, 1}, text.substr(0, 1), Align::leading, strongInk());
        sheet.text({column + 2, box.row, place.width - 2}, text.substr(2), Align::leading,
                   captionInk(sheet.look()));
        sheet.clickable(place, key->action);
        column += place.width + gap;
    }
}

} // namespace vantor::hosts::terminal
