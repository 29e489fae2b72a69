// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

namespace vantor::hosts::wall {

class WallView;

/// Makes walls known to screen readers, as tables: a row a machine in the order of the wall, columns for its
/// name, state and figures. A cell becomes an object when somebody asks for it. It may be repeated.
void installWallAccessibility();

/// Which rows there are has changed. Nothing happens where nobody listens, here and below.
void tellOfNewRows(WallView& view);
/// The cursor is on another row.
void tellOfCursor(WallView& view, std::size_t row);

} // namespace vantor::hosts::wall
