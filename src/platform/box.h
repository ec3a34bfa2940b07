// SPDX-License-Identifier: MIT
#pragma once

/// Lays the children of `parent` out without margins and spacing, as every box of this program is, on a small
/// screen as on a large one: `box<QVBoxLayout>(page)`.
template <typename Layout, typename Widget>
Layout *box(Widget *parent)
{
    auto *layout = new Layout(parent);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    return layout;
}
