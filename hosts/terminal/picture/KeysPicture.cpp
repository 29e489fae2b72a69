// SPDX-License-Identifier: MIT
#include "hosts/terminal/picture/Parts.hpp"
#include "hosts/terminal/text/DisplayText.hpp"

#include <algorithm>

namespace vantor::terminal {

namespace {

constexpr int gap = 3;

using Wording = std::string Scene::Key::*;

int widthOf(const Scene::Key& key, Wording wording) {
    return 1 + (wording != nullptr ? 1 + displayWidth(key.*wording) : 0);
}

int widthOf(const Scene& scene, Wording wording) {
    int width = -gap;
    for (const Scene::Key& key : scene.keys) {
        width += gap + widthOf(key, wording);
    }
    return width;
}

} // namespace

void drawKeys(Sheet& sheet, const Scene& scene, const Box& box) {
    if (!scene.notice.empty()) {
        sheet.text(box, scene.notice, Align::center, strongInk());
        return;
    }
    const Wording wordings[] = {&Scene::Key::text, &Scene::Key::shortText};
    const auto* const fitting =
        std::ranges::find_if(wordings, [&](Wording wording) { return widthOf(scene, wording) <= box.width; });
    const Wording wording = fitting != std::end(wordings) ? *fitting : nullptr;
    int column = box.column + std::max(0, (box.width - widthOf(scene, wording)) / 2);
    for (const Scene::Key& key : scene.keys) {
        const int width = widthOf(key, wording);
        const Box place{column, box.row, std::min(width, box.width - column)};
        if (place.width < 1) {
            return;
        }
        sheet.text(place, std::string(1, key.key), Align::leading, strongInk());
        if (wording != nullptr) {
            sheet.text({column + 2, box.row, width - 2}, key.*wording, Align::leading,
                       captionInk(sheet.look()));
        }
        sheet.clickable(place, key.action);
        column += width + gap;
    }
}

} // namespace vantor::terminal
