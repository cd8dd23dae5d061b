// SPDX-License-Identifier: MIT
#include "ui/settings/SettingsFooter.h"

#include "ui/controls/Buttons.h"
#include "ui/controls/Labels.h"
#include "ui/controls/Layouts.h"

#include <QBasicTimer>
#include <QPainter>
#include <QProgressBar>
#include <QRegularExpression>
#include <QTimerEvent>
#include <algorithm>
#include <utility>

namespace lumenvale {

namespace {

constexpr int footerHeight = 54;

/// A wheel of spokes. It turns, and wakes the program for that, only while it is on the screen.
class ProgressIndicator final : public QProgressBar {
public:
    /// `name` tells screen readers, and the pointer, what is under way.
    explicit ProgressIndicator(const QString& name)
    {
        setRange(0, 0);
        setTextVisible(false);
        setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
        setAccessibleName(name);
        setToolTip(name);
    }

    QSize sizeHint() const override { return {16, 16}; }

protected:
    void showEvent(QShowEvent* event) override
    {
        turning.start(turnMilliseconds / spokes, this);
        QProgressBar::showEvent(event);
    }
    void hideEvent(QHideEvent* event) override
    {
        turning.stop();
        QProgressBar::hideEvent(event);
    }
    void timerEvent(QTimerEvent* event) override
    {
        if (event->timerId() != turning.timerId()) {
            QProgressBar::timerEvent(event);
            return;
        }
        foremost = (foremost + 1) % spokes;
        update();
    }
    void paintEvent(QPaintEvent*) override
    {
        constexpr double inner = 3.5;
        constexpr double outer = 7.0;
        constexpr double thickness = 1.75;
        constexpr double faintest = 0.2;
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.translate(QRectF(rect()).center());
        QColor colour = Theme::of(this).text;
        for (int spoke = 0; spoke < spokes; ++spoke) {
            const int age = (foremost - spoke + spokes) % spokes;
            colour.setAlphaF(static_cast<float>(std::max(faintest, 0.85 - 0.13 * age)));
            painter.setPen(QPen(colour, thickness, Qt::SolidLine, Qt::RoundCap));
            painter.drawLine(QPointF(0, -inner), QPointF(0, -outer));
            painter.rotate(360.0 / spokes);
        }
    }

private:
    static constexpr int spokes = 8;
    static constexpr int turnMilliseconds = 800;

    QBasicTimer turning;
    int foremost = 0; ///< the darkest spoke, clockwise from the top
};

std::string localTime(BuildInfo::Time time)
{
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(time.time_since_epoch()).count();
    return buildTimeText(QDateTime::fromSecsSinceEpoch(seconds), QLocale()).toStdString();
}

} // namespace

QString buildTimeText(const QDateTime& time, const QLocale& locale)
{
    // Qt has no middle formats: these are the long ones, without the day of the week and the time zone.
    static const QRegularExpression weekday("^dddd[\\s,،]*|[\\s,،]*dddd");
    static const QRegularExpression zone(R"(\s*\(?t+\)?\s*)");
    const QString date = locale.dateFormat(QLocale::LongFormat).remove(weekday).replace("MMMM", "MMM");
    const QString clock = locale.timeFormat(QLocale::LongFormat).remove(zone);
    return locale.toString(time.date(), date) + ", " + locale.toString(time.time(), clock);
}

SettingsFooter::SettingsFooter(DisplayStore& store, PresetEditor& editor, Clock& clock, const BuildInfo& build)
    : store(store), editor(editor), clock(clock), build(build), version(new TextLabel(TextRole::name)),
      built(new TextLabel(TextRole::caption, TextColour::secondary)),
      message(new TextLabel(TextRole::digits, TextColour::secondary)),
      progress(new ProgressIndicator("Refreshing…")), later([this] { redraw(); })
{
    setMinimumHeight(footerHeight);
    for (TextLabel* label : {version, built}) {
        label->setWordWrap(false);
        label->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    }
    version->setText(qString("Lumenvale " + build.version));
    auto* refresh = new SmallButton("arrow.clockwise", "Refresh", {});
    refresh->setToolTip("Read brightness and detect displays again");
    connect(refresh, &QAbstractButton::clicked, this, [&store] { store.requestRefresh(); });

    QVBoxLayout* texts = makeColumn(nullptr, 3);
    texts->addStretch(1);
    texts->addWidget(version);
    texts->addWidget(built);
    texts->addStretch(1);
    QHBoxLayout* line = makeLine(this, 16, {16, 4, 16, 4});
    line->addLayout(texts);
    line->addWidget(message, 1);
    line->addWidget(progress);
    line->addWidget(refresh);
    connect(&everyMinute, &QTimer::timeout, this, [this] { redraw(); });
    later.follow(store.isRefreshing);
    later.follow(editor.message);
    redraw();
}

void SettingsFooter::redraw()
{
    const auto label = buildLabel(build, clock.wallTime(), localTime);
    built->setText(qString(label.value_or("")));
    built->setVisible(label.has_value());
    message->setText(qString(editor.message.get().value_or("")));
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
