// SPDX-License-Identifier: MIT
#include "ui/SettingsFooter.h"

#include "ui/Labels.h"
#include "ui/SmallButton.h"
#include "ui/TextLabel.h"

#include <QDateTime>
#include <QHBoxLayout>
#include <QLocale>
#include <QPainter>
#include <QVBoxLayout>
#include <utility>

namespace lumenvale {

namespace {

constexpr int footerHeight = 54;

QString localTime(BuildInfo::Time time)
{
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(time.time_since_epoch()).count();
    const QDateTime local = QDateTime::fromSecsSinceEpoch(seconds);
    return QLocale().toString(local.date(), "d MMM yyyy") + ", " + QLocale().toString(local.time(), "HH:mm:ss");
}

} // namespace

SettingsFooter::SettingsFooter(DisplayStore& displayStore, PresetEditor& presetEditor, Clock& time, BuildInfo info)
    : store(displayStore), editor(presetEditor), clock(time), build(std::move(info)),
      version(new TextLabel(TextRole::name)), built(new TextLabel(TextRole::caption, TextColour::secondary)),
      message(new TextLabel(TextRole::digits, TextColour::secondary)),
      progress(new ElidedLabel(TextRole::caption, TextColour::secondary)),
      refresh(new SmallButton("arrow.clockwise", "Refresh", {})), redrawLater([this] { redraw(); })
{
    setMinimumHeight(footerHeight);
    for (TextLabel* label : {version, built}) {
        label->setWordWrap(false);
        label->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    }
    version->setText(QString::fromStdString("Lumenvale " + build.version));
    message->setAccessibleName("Message");
    refresh->setToolTip("Read brightness and detect displays again");
    progress->setText("Refreshing…");
    progress->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);

    auto* texts = new QVBoxLayout;
    texts->setSpacing(3);
    texts->addStretch(1);
    texts->addWidget(version);
    texts->addWidget(built);
    texts->addStretch(1);
    auto* line = new QHBoxLayout(this);
    line->setContentsMargins(16, 4, 16, 4);
    line->setSpacing(16);
    line->addLayout(texts);
    line->addWidget(message, 1);
    line->addWidget(progress);
    line->addWidget(refresh);
    connect(refresh, &QAbstractButton::clicked, this, [this] { store.requestRefresh(); });
    connect(&everyMinute, &QTimer::timeout, this, [this] { redraw(); });
    subscriptions.push_back(store.isRefreshing.subscribe([this](bool) { redrawLater.request(); }));
    subscriptions.push_back(editor.message.subscribe([this](const auto&) { redrawLater.request(); }));
    redraw();
}

void SettingsFooter::redraw()
{
    const auto label =
        buildLabel(build, clock.wallTime(), [](BuildInfo::Time time) { return localTime(time).toStdString(); });
    built->setText(QString::fromStdString(label.value_or("")));
    built->setVisible(label.has_value());
    message->setText(QString::fromStdString(editor.message.get().value_or("")));
    progress->setVisible(store.isRefreshing.get());
}

void SettingsFooter::showEvent(QShowEvent* event)
{
    redraw();
    everyMinute.start(60'000);
    QWidget::showEvent(event);
}

void SettingsFooter::hideEvent(QHideEvent* event)
{
    everyMinute.stop();
    QWidget::hideEvent(event);
}

void SettingsFooter::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(QRect(0, 0, width(), 1), Theme::of(this).hairline);
}

} // namespace lumenvale
