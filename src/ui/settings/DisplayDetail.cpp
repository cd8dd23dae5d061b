// SPDX-License-Identifier: MIT
#include "ui/settings/DisplayDetail.h"

#include "ui/controls/Buttons.h"
#include "ui/controls/Labels.h"
#include "ui/controls/Layouts.h"

#include <QClipboard>
#include <QGridLayout>
#include <QGuiApplication>
#include <cmath>

namespace lumenvale {

namespace {

constexpr int nameColumnWidth = 140;

QString currentMode(const DisplayInfo& display)
{
    if (display.pixelWidth <= 0 || display.pixelHeight <= 0)
        return "Not reported";
    QString text = QString("%1 × %2").arg(display.pixelWidth).arg(display.pixelHeight);
    if (display.logicalWidth > 0 && display.logicalWidth != display.pixelWidth)
        text += QString(" (looks like %1 × %2)").arg(display.logicalWidth).arg(display.logicalHeight);
    if (display.refreshRate > 0)
        text += QString(", %1 Hz").arg(std::round(display.refreshRate * 100) / 100);
    return text;
}

QString brightnessText(const DisplayInfo& display)
{
    const QString raw = qString(rawValueText(display));
    return display.brightness ? raw + " (" + qString(percentageText(display)) + ")" : raw;
}

QString findingText(const Finding& finding)
{
    QString text = qString(finding.text);
    if (!finding.remedy.empty())
        text += "\n" + qString(finding.remedy);
    return text;
}

} // namespace

/// A card of rows whose texts change and whose number does not.
class DisplayDetail::Rows final : public QWidget {
public:
    Rows()
    {
        auto* card = new Card;
        makeColumn(this)->addWidget(card);
        grid = new QGridLayout;
        grid->setHorizontalSpacing(10);
        card->rows()->addLayout(grid);
        setStacked(false);
    }

    /// Each name above its value instead of beside it.
    void setStacked(bool stacked)
    {
        isStacked = stacked;
        grid->setVerticalSpacing(stacked ? 2 : 8);
        grid->setColumnMinimumWidth(0, stacked ? 0 : nameColumnWidth);
        grid->setColumnStretch(0, stacked ? 1 : 0);
        grid->setColumnStretch(1, stacked ? 0 : 1);
        for (std::size_t i = 0; i < values.size(); ++i)
            place(i);
    }

    void show(const std::vector<DetailRow>& rows)
    {
        for (std::size_t i = 0; i < rows.size(); ++i) {
            if (i == values.size())
                addRow(rows[i].first);
            values[i]->setText(rows[i].second);
            values[i]->setAccessibleName(rows[i].first + ": " + rows[i].second);
        }
    }

private:
    void addRow(const QString& name)
    {
        auto* label = new TextLabel(TextRole::body, TextColour::secondary);
        label->setText(name);
        auto* value = new TextLabel(name == "Identifier" ? TextRole::monospaced : TextRole::body);
        value->setMinimumHeight(label->sizeHint().height()); // in line with it, whatever the font
        names.push_back(label);
        values.push_back(value);
        place(values.size() - 1);
    }

    void place(std::size_t index)
    {
        const int row = static_cast<int>(index);
        names[index]->setContentsMargins(0, isStacked && index > 0 ? 6 : 0, 0, 0);
        grid->addWidget(names[index], isStacked ? 2 * row : row, 0, Qt::AlignTop);
        grid->addWidget(values[index], isStacked ? 2 * row + 1 : row, isStacked ? 0 : 1, Qt::AlignTop);
    }

    QGridLayout* grid;
    bool isStacked = false;
    std::vector<TextLabel*> names;
    std::vector<TextLabel*> values;
};

std::vector<DetailRow> controlRows(const DisplayInfo& display, const Words& words)
{
    return {{"Control", qString(methodText(display.method, words))},
            {"Brightness", brightnessText(display)},
            {"Step", qString(stepSizeText(display))},
            {"Range", qString(rangeText(display))}};
}

std::vector<DetailRow> identityRows(const DisplayInfo& display)
{
    return {{"Native resolution", qString(display.nativeResolution)},
            {"Current mode", currentMode(display)},
            {"Connection", qString(display.connection)},
            {"Serial", qString(display.hardwareSerial)},
            {"Identifier", qString(display.id)}};
}

QString detailText(const DisplayInfo& display, const std::vector<Finding>& findings, const Words& words)
{
    QString text = qString(display.name) + "\n";
    for (const auto& rows : {controlRows(display, words), identityRows(display)}) {
        for (const auto& [name, value] : rows)
            text += name + ": " + value + "\n";
    }
    text += QString("Vendor, model, serial number: %1, %2, %3\n")
                .arg(display.vendor)
                .arg(display.model)
                .arg(display.serial);
    text += "Status: " + qString(display.status) + "\n";
    if (display.error)
        text += "Error: " + qString(*display.error) + "\n";
    for (const Finding& finding : findings)
        text += findingText(finding) + "\n";
    return text;
}

DisplayDetail::DisplayDetail(const Words& words)
    : DetailPage(12), words(words), title(new ElidedLabel(TextRole::title)), control(new Rows), identity(new Rows),
      status(new TextLabel(TextRole::digits, TextColour::secondary)), problem(new NoticeLabel),
      findingList(new QWidget),
      copy(new SmallButton("doc.on.doc", "Copy Details", "Copy all details of this display"))
{
    copy->setToolTip("Copy everything on this page, for a bug report");
    connect(copy, &QAbstractButton::clicked, this,
            [this] { QGuiApplication::clipboard()->setText(detailText(shown, shownFindings, this->words)); });
    makeColumn(findingList, 8);
    QHBoxLayout* heading = makeLine(nullptr, 12);
    heading->addWidget(title, 1);
    heading->addWidget(copy, 0, Qt::AlignTop);
    column()->addLayout(heading);
    for (QWidget* section : std::initializer_list<QWidget*>{control, identity, status, problem, findingList})
        column()->addWidget(section);
    column()->addStretch(1);
}

void DisplayDetail::setNarrow(bool narrow)
{
    control->setStacked(narrow);
    identity->setStacked(narrow);
}

void DisplayDetail::show(const DisplayInfo& display, const std::vector<Finding>& findings)
{
    shown = display;
    title->setText(qString(display.name));
    control->show(controlRows(display, words));
    identity->show(identityRows(display));
    status->setText(qString(display.status));
    status->setVisible(display.status != display.error);
    problem->setText(qString(display.error.value_or("")), true);
    problem->setVisible(display.error.has_value());
    if (findings == shownFindings)
        return;
    shownFindings = findings;
    qDeleteAll(findingList->findChildren<TextLabel*>());
    for (const Finding& finding : findings) {
        auto* label =
            new TextLabel(TextRole::digits,
                          finding.kind == Finding::Kind::problem ? TextColour::primary : TextColour::secondary);
        label->setText(findingText(finding));
        findingList->layout()->addWidget(label);
    }
}

} // namespace lumenvale
