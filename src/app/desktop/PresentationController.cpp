// SPDX-License-Identifier: MIT
#include "app/desktop/PresentationController.h"

#include "ui/look/Symbols.h"

#include <QImage>
#include <utility>

namespace lumenvale {

namespace {

Bitmap statusBitmap(double scale)
{
    const QImage image = statusImage(Qt::black, scale).convertToFormat(QImage::Format_ARGB32);
    Bitmap bitmap = {image.width(), image.height(), {}};
    for (int y = 0; y < image.height(); ++y) {
        const auto* row = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        bitmap.pixels.insert(bitmap.pixels.end(), row, row + image.width());
    }
    return bitmap;
}

} // namespace

PresentationController::PresentationController(Shell& shell, GeneralPreferences& preferences,
                                               StatusItemContent content)
    : shell(shell), preferences(preferences), content(std::move(content))
{
    this->content.title = "Lumenvale";
    this->content.toolTip = "Lumenvale — control each display";
    this->content.image = statusBitmap;
}

PresentationController::~PresentationController()
{
    shell.statusBar->observe(nullptr);
    preferences.presentationChanged = nullptr;
    setStatusItem(nullptr);
}

void PresentationController::start()
{
    preferences.presentationChanged = [this](AppPresentation presentation) { apply(presentation); };
    shell.statusBar->observe([this] { updateStatusArea(); });
    apply(preferences.presentation.get());
}

void PresentationController::apply(AppPresentation presentation)
{
    if (presentation == AppPresentation::dock)
        setStatusItem(nullptr);
    else if (!statusItem)
        setStatusItem(shell.statusBar->createItem(content));
    updateActivationPolicy();
    applied();
}

void PresentationController::updateActivationPolicy()
{
    preferences.hasStatusArea.setIfChanged(shell.statusBar->showsItems().value_or(true));
    const bool isOnlyItem =
        preferences.presentation.get() == AppPresentation::menuBar && preferences.hasStatusArea.get();
    shell.dock->setActivationPolicy(isOnlyItem ? ActivationPolicy::accessory : ActivationPolicy::regular);
}

void PresentationController::updateStatusArea()
{
    if (preferences.hasStatusArea.get() != shell.statusBar->showsItems().value_or(true))
        updateActivationPolicy();
    statusAreaChanged();
}

std::optional<bool> PresentationController::showsIcon() const
{
    const bool isInDock = preferences.presentation.get() != AppPresentation::menuBar;
    if (isInDock && shell.hasDockIcons)
        return true;
    return statusItem ? shell.statusBar->showsItems() : false;
}

void PresentationController::setStatusItem(std::unique_ptr<StatusItem> item)
{
    if (!item && !statusItem)
        return;
    statusItemChanged(item.get());
    statusItem = std::move(item);
}

} // namespace lumenvale
