// SPDX-License-Identifier: MIT
// What is known of one display, in cards of rows, with the reasons why it cannot be controlled where it cannot.
#pragma once

#include "base/Words.h"
#include "displays/Diagnostics.h"
#include "displays/DisplayInfo.h"
#include "ui/settings/DetailPage.h"

#include <QString>
#include <utility>
#include <vector>

namespace lumenvale {

class ElidedLabel;
class NoticeLabel;
class SmallButton;
class TextLabel;

/// A name and what it stands for, as the page shows them.
using DetailRow = std::pair<QString, QString>;

/// How the display is controlled: method, brightness, step and range.
std::vector<DetailRow> controlRows(const DisplayInfo& display, const Words& words);
/// What it is: resolutions, connection, serial number, identifier.
std::vector<DetailRow> identityRows(const DisplayInfo& display);
/// Everything of the display in plain text, for a bug report.
QString detailText(const DisplayInfo& display, const std::vector<Finding>& findings, const Words& words);

class DisplayDetail final : public DetailPage {
public:
    /// `words` must outlive the view.
    explicit DisplayDetail(const Words& words);

    /// `findings` are about this display or the whole system; they are shown where it cannot be controlled.
    void show(const DisplayInfo& display, const std::vector<Finding>& findings);

protected:
    void setNarrow(bool narrow) override;

private:
    class Rows;

    const Words& words;
    DisplayInfo shown;
    std::vector<Finding> shownFindings;
    ElidedLabel* title;
    Rows* control;
    Rows* identity;
    TextLabel* status;
    NoticeLabel* problem;
    QWidget* findingList;
    SmallButton* copy;
};

} // namespace lumenvale
