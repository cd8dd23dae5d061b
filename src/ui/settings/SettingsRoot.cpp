// SPDX-License-Identifier: MIT
#include "ui/settings/SettingsRoot.h"

#include "ui/controls/Layouts.h"
#include "ui/settings/DisplaySettings.h"
#include "ui/settings/GeneralSettings.h"
#include "ui/settings/SettingsFooter.h"

namespace lumenvale {

SettingsPage::SettingsPage(SettingsTab tab, const SettingsModels& models) : tab(tab)
{
    QVBoxLayout* column = makeColumn(this);
    if (tab == SettingsTab::general)
        column->addWidget(new GeneralSettings(models.preferences, models.words), 1);
    else
        column->addWidget(new DisplaySettings(tab, models), 1);
    column->addWidget(new SettingsFooter(models.store, models.editor, models.clock, models.build));
}

SettingsRoot::SettingsRoot(const std::vector<SettingsTab>& tabs, const SettingsModels& models)
{
    for (const SettingsTab tab : tabs)
        addWidget(new SettingsPage(tab, models));
}

void SettingsRoot::show(SettingsTab tab)
{
    for (int i = 0; i < count(); ++i) {
        if (static_cast<SettingsPage*>(widget(i))->tab == tab)
            setCurrentIndex(i);
    }
}

} // namespace lumenvale
