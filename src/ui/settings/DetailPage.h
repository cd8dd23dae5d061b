// SPDX-License-Identifier: MIT
// A page beside the sidebar: a column of sections that scrolls, and that moves together where the window is
// narrow.
#pragma once

#include "ui/controls/ScrollPage.h"

class QVBoxLayout;

namespace lumenvale {

class DetailPage : public ScrollPage {
public:
    /// A page narrower than this puts names above what they name, and keeps less room at its sides.
    static constexpr int narrowWidth = 500;

protected:
    /// `spacing` lies between two sections.
    explicit DetailPage(int spacing);

    /// Where the sections stand.
    QVBoxLayout* column() const;
    /// Called whenever the page's size changes.
    virtual void setNarrow(bool narrow) = 0;

    void resizeEvent(QResizeEvent* event) override;
};

} // namespace lumenvale
