// SPDX-License-Identifier: MIT
#include "ui/settings/GeneralSettings.h"

#include "ui/controls/Buttons.h"
#include "ui/controls/Labels.h"
#include "ui/controls/Layouts.h"
#include "ui/controls/ScrollPage.h"
#include "ui/controls/Switches.h"

#include <QGuiApplication>
#include <algorithm>

namespace lumenvale {

namespace {

constexpr int cardWidth = 560;

/// Title and description at the left, a control at the right.
QWidget* makeRow(const QString& title, const QString& description, QWidget* control)
{
    QVBoxLayout* texts = makeColumn(nullptr, 3);
    auto* name = new TextLabel(TextRole::body);
    name->setText(title);
    auto* detail = new TextLabel(TextRole::digits, TextColour::secondary);
    detail->setText(description);
    texts->addWidget(name);
    texts->addWidget(detail);
    auto* row = new QWidget;
    QHBoxLayout* line = makeLine(row, 16);
    line->addLayout(texts, 1);
    if (control)
        line->addWidget(control, 0, Qt::AlignVCenter);
    return row;
}

} // namespace

GeneralSettings::GeneralSettings(GeneralPreferences& preferences, const Words& words)
    : preferences(preferences), later([this] { redraw(); })
{
    auto* content = new QWidget;
    QVBoxLayout* cards = makeColumn(content, 16, {24, 24, 24, 24});
    for (QWidget* card : {makePresentationCard(words), makeStartupCard(words)}) {
        card->setMaximumWidth(cardWidth);
        QHBoxLayout* centred = makeLine(nullptr);
        centred->addStretch(1);
        centred->addWidget(card, 100);
        centred->addStretch(1);
        cards->addLayout(centred);
    }
    cards->addStretch(1);
    makeColumn(this)->addWidget(new ScrollPage(content));

    later.follow(preferences.presentation);
    later.follow(preferences.hasStatusArea);
    later.follow(preferences.startupStatus);
    later.follow(preferences.startupError);
    // An approval given in the system's settings shows when the user comes back.
    connect(qGuiApp, &QGuiApplication::applicationStateChanged, this, [this](Qt::ApplicationState state) {
        if (state == Qt::ApplicationActive)
            this->preferences.refreshStartupStatus();
    });
    redraw();
}

QWidget* GeneralSettings::makePresentationCard(const Words& words)
{
    QStringList choices;
    for (const std::string_view each : words.presentations)
        choices.append(qString(each));
    presentation = new SegmentedControl("Show in", choices);
    presentation->onChoice = [this](int index) {
        preferences.setPresentation(allPresentations.at(static_cast<std::size_t>(index)));
    };
    auto* card = new Card;
    card->rows()->addWidget(makeRow("Show in", qString(words.presentationHelp), presentation));
    noStatusArea = new TextLabel(TextRole::digits, TextColour::secondary);
    noStatusArea->setText(qString(words.noStatusArea));
    card->rows()->addWidget(noStatusArea);
    return card;
}

QWidget* GeneralSettings::makeStartupCard(const Words& words)
{
    startup = new ToggleSwitch("Launch at Startup");
    connect(startup, &QAbstractButton::clicked, this, [this](bool on) { preferences.setLaunchAtStartup(on); });
    auto* card = new Card;
    card->rows()->addWidget(makeRow("Launch at Startup", qString(words.startupHelp), startup));
    auto* open = new SmallButton({}, qString(words.approvalButton), {});
    connect(open, &QAbstractButton::clicked, this, [this] { preferences.openLoginItems(); });
    approval = makeRow("Approval needed", qString(words.approvalHelp), open);
    card->rows()->addWidget(approval);
    unavailable = new TextLabel(TextRole::digits, TextColour::secondary);
    unavailable->setText(qString(words.startupUnavailable));
    card->rows()->addWidget(unavailable);
    failure = new TextLabel(TextRole::digits, TextColour::failure);
    card->rows()->addWidget(failure);
    return card;
}

void GeneralSettings::redraw()
{
    const auto* const chosen =
        std::find(allPresentations.begin(), allPresentations.end(), preferences.presentation.get());
    presentation->setChoice(static_cast<int>(chosen - allPresentations.begin()));
    noStatusArea->setVisible(!preferences.hasStatusArea.get());
    const StartupStatus status = preferences.startupStatus.get();
    startup->setChecked(status == StartupStatus::enabled || status == StartupStatus::requiresApproval);
    approval->setVisible(status == StartupStatus::requiresApproval);
    unavailable->setVisible(status == StartupStatus::unavailable);
    failure->setText(QString::fromStdString(preferences.startupError.get().value_or("")));
    failure->setVisible(preferences.startupError.get().has_value());
}

} // namespace lumenvale
