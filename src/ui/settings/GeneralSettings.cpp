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

GeneralSettings::GeneralSettings(GeneralPreferences& preferences)
    : preferences(preferences), later([this] { redraw(); })
{
    auto* content = new QWidget;
    QVBoxLayout* cards = makeColumn(content, 16, {24, 24, 24, 24});
    for (QWidget* card : {makePresentationCard(), makeStartupCard()}) {
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
    later.follow(preferences.startupStatus);
    later.follow(preferences.startupError);
    // An approval given in the system's settings shows when the user comes back.
    connect(qGuiApp, &QGuiApplication::applicationStateChanged, this, [this](Qt::ApplicationState state) {
        if (state == Qt::ApplicationActive)
            this->preferences.refreshStartupStatus();
    });
    redraw();
}

QWidget* GeneralSettings::makePresentationCard()
{
    presentation = new SegmentedControl("Show in", {"Menu bar", "Dock", "Menu bar and Dock"});
    presentation->onChoice = [this](int index) {
        preferences.setPresentation(allPresentations.at(static_cast<std::size_t>(index)));
    };
    auto* card = new Card;
    card->rows()->addWidget(
        makeRow("Show in", "Click the menu bar or Dock icon for brightness controls.", presentation));
    return card;
}

QWidget* GeneralSettings::makeStartupCard()
{
    startup = new ToggleSwitch("Launch at Startup");
    connect(startup, &QAbstractButton::clicked, this, [this](bool on) { preferences.setLaunchAtStartup(on); });
    auto* card = new Card;
    card->rows()->addWidget(
        makeRow("Launch at Startup", "Start Lumenvale automatically when you log in to your Mac.", startup));
    auto* open = new SmallButton({}, "Open Login Items…", {});
    connect(open, &QAbstractButton::clicked, this, [this] { preferences.openLoginItems(); });
    approval = makeRow("Approval needed",
                       "Enable Lumenvale in System Settings → General → Login Items to finish setup.", open);
    card->rows()->addWidget(approval);
    unavailable = new TextLabel(TextRole::digits, TextColour::secondary);
    unavailable->setText("macOS could not locate this app as a login item. Try running it from Applications.");
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
    const StartupStatus status = preferences.startupStatus.get();
    startup->setChecked(status == StartupStatus::enabled || status == StartupStatus::requiresApproval);
    approval->setVisible(status == StartupStatus::requiresApproval);
    unavailable->setVisible(status == StartupStatus::unavailable);
    failure->setText(QString::fromStdString(preferences.startupError.get().value_or("")));
    failure->setVisible(preferences.startupError.get().has_value());
}

} // namespace lumenvale
