// SPDX-License-Identifier: MIT
#include "ui/settings/SettingsFooter.h"

#include "ui/controls/ProgressIndicator.h"
#include "ui/controls/SmallButton.h"
#include "ui/controls/TextLabel.h"

#include <QDateTime>
#include <QHBoxLayout>
#include <QLocale>
#include <QPainter>
#include <QRegularExpression>
#include <QVBoxLayout>
#include <utility>

namespace lumenvale {

namespace {

constexpr int footerHeight = 54;

std::string localTime(BuildInfo::Time time)
{
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(time.time_since_epoch()).count();
    return buildTimeText(QDateTime::fromSecsSinceEpoch(seconds), QLocale()).toStdString();
}

} // namespace

QString buildTimeText(const QDateTime& time, const QLocale& locale)
{
    // The toolkit has no middle formats: the long ones, without the day of the week and the time zone.
    static const QRegularExpression weekday("^dddd[\\s,،]*|[\\s,،]*dddd");
    static const QRegularExpression zone("\\s*\\(?t+\\)?\\s*");
    const QString date = locale.dateFormat(QLocale::LongFormat).remove(weekday).replace("MMMM", "MMM");
    const QString clock = locale.timeFormat(QLocale::LongFormat).remove(zone);
    return locale.toString(time.date(), date) + ", " + locale.toString(time.time(), clock);
}

SettingsFooter::SettingsFooter(DisplayStore& displayStore, PresetEditor& presetEditor, Clock& time, BuildInfo info)
    : store(displayStore), editor(presetEditor), clock(time), build(std::move(info)),
      version(new TextLabel(TextRole::name)), built(new TextLabel(TextRole::caption, TextColour::secondary)),
      message(new TextLabel(TextRole::digits, TextColour::secondary)),
      progress(new ProgressIndicator("Refreshing…")), refresh(new SmallButton("arrow.clockwise", "Refresh", {})),
      redrawLater([this] { redraw(); })
{
    setMinimumHeight(footerHeight);
    for (TextLabel* label : {version, built}) {
        label->setWordWrap(false);
        label->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    }
    version->setText(QString::fromStdString("Lumenvale " + build.version));
    message->setAccessibleName("Message");
    refresh->setToolTip("Read brightness and detect displays again");

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
    const auto label = buildLabel(build, clock.wallTime(), localTime);
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
