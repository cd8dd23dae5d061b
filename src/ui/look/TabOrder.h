// SPDX-License-Identifier: MIT
// The order in which the keyboard walks through a window.
#pragma once

class QWidget;

namespace lumenvale {

/// Makes Tab go through all controls below `root` as they stand in its layouts. To be called after controls
/// came or moved: the toolkit appends new ones at the end.
void orderTabs(QWidget& root);

} // namespace lumenvale
