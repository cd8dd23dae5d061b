// SPDX-License-Identifier: MIT
// What is known of one display, in cards of rows, with the reasons why it cannot be controlled where it cannot.
#pragma once

#include "displays/Diagnostics.h"
#include "displays/DisplayInfo.h"

#include <QString>
#include <QWidget>
#include <utility>
#include <vector>

namespace lumenvale {

class ElidedLabel;
class SmallButton;
class TextLabel;

/// A name and what it stands for, as the page shows them.
using DetailRow = std::pair<QString, QString>;

/// How the display is controlled: method, brightness, step and range.
std::vector<DetailRow> controlRows(const DisplayInfo& display);
/// What it is: resolutions, connection, serial number, identifier.
std::vector<DetailRow> identityRows(const DisplayInfo& display);
/// Everything of the display in plain text, for a bug report.
QString detailText(const DisplayInfo& display, const std::vector<Finding>& findings);

class DisplayDetail final : public QWidget {
public:
    explicit DisplayDetail(QWidget* parent = nullptr);

    /// `findings` are about this display or the whole system; they are shown where it cannot be controlled.
    void show(const DisplayInfo& display, const std::vector<Finding>& findings);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    class Rows;

    DisplayInfo shown;
    std::vector<Finding> shownFindings;
    ElidedLabel* title;
    Rows* control;
    Rows* identity;
    TextLabel* status;
    TextLabel* problem;
    QWidget* findingList;
    QWidget* content;
    SmallButton* copy;
};

} // namespace lumenvale
