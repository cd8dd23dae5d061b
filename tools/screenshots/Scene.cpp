// SPDX-License-Identifier: MIT
#include "screenshots/Scene.h"

#include <QGraphicsBlurEffect>
#include <QGraphicsPathItem>
#include <QGraphicsScene>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QPixmap>
#include <QWidget>
#include <cmath>

namespace lumenvale {

namespace {

constexpr double shadowBlur = 30.0;
constexpr double shadowOffset = 12.0;
constexpr double shadowOpacity = 0.32;

QPainterPath roundedPath(const QRectF& box, double radius)
{
    QPainterPath path;
    path.addRoundedRect(box, radius, radius);
    return path;
}

} // namespace

Scene::Scene(QSizeF size, double scale) : picture((size * scale).toSize(), QImage::Format_ARGB32_Premultiplied)
{
    picture.setDevicePixelRatio(scale);
    const double half = (size.width() + size.height()) / 4.0;
    const QPointF middle(size.width() / 2, size.height() / 2);
    QLinearGradient gradient(middle - QPointF(half, half), middle + QPointF(half, half));
    gradient.setColorAt(0.0, QColor(0x3A, 0x5A, 0x92));
    gradient.setColorAt(0.48, QColor(0x7B, 0x5D, 0xA6));
    gradient.setColorAt(1.0, QColor(0xDA, 0x90, 0x69));
    QPainter painter(&picture);
    painter.fillRect(QRectF(QPointF(), size), gradient);
}

void Scene::add(QWidget& window, QPointF position, double radius)
{
    const QRectF frame(position, QSizeF(window.size()));
    drawShadow(frame, radius);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.drawPixmap(position, window.grab());
}

void Scene::drawShadow(const QRectF& window, double radius)
{
    QGraphicsScene scene;
    auto* item = scene.addPath(roundedPath(window.translated(0, shadowOffset), radius), Qt::NoPen, Qt::black);
    auto* blur = new QGraphicsBlurEffect;
    blur->setBlurRadius(shadowBlur * picture.devicePixelRatio());
    item->setGraphicsEffect(blur);
    QImage layer(picture.size(), QImage::Format_ARGB32_Premultiplied);
    layer.fill(Qt::transparent);
    layer.setDevicePixelRatio(picture.devicePixelRatio());
    const QRectF all(QPointF(), picture.deviceIndependentSize());
    QPainter layerPainter(&layer);
    scene.render(&layerPainter, all, all);
    layerPainter.setCompositionMode(QPainter::CompositionMode_Clear); // nothing shows through the window
    layerPainter.setRenderHint(QPainter::Antialiasing);
    layerPainter.fillPath(roundedPath(window, radius), Qt::black);
    layerPainter.end();
    QPainter painter(&picture);
    painter.setOpacity(shadowOpacity);
    painter.drawImage(QPointF(), layer);
}

} // namespace lumenvale
