// SPDX-License-Identifier: MIT
#pragma once

/// Gives `parent` a layout without margins and spacing: `box<QVBoxLayout>(page)`. All layouts here are made
/// by it, because they have to fit on a small screen.
template <typename Layout, typename Widget>
Layout *box(Widget *parent)
{
    auto *layout = new Layout(parent);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    return layout;
}
