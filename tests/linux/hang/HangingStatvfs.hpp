// SPDX-License-Identifier: MIT
#pragma once

/// From now on every statvfs blocks, until it is called with false: then all that block go on.
__attribute__((visibility("default"))) void hangStatvfs(bool hang);

/// How many calls have blocked so far.
__attribute__((visibility("default"))) int statvfsCallsThatHung();
