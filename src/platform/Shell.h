// SPDX-License-Identifier: MIT
// How the desktop lets a program show itself: status item, Dock, floating panel. One small interface each,
// implemented per system and called by the application delegate on the main thread. Coordinates are those of
// Qt: device-independent, y grows downward.
#pragma once

#include "base/Geometry.h"
#include "platform/WindowSystem.h"
#include "preferences/StartupService.h"
#include "presets/HotKeyService.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <tl/expected.hpp>
#include <vector>

namespace lumenvale {

/// One row of a menu that the system shows for us.
struct MenuEntry {
    std::string id; ///< distinct and stable within its menu; empty: a separator, and nothing else counts
    std::string title;
    bool isCheckable = false; ///< one of several, of which one at most is checked
    bool isChecked = false;
    std::function<void()> action;
    std::vector<std::string> arguments; ///< of the program: started with them, it does the same
};
using Menu = std::vector<MenuEntry>;

/// Rows from the top, each pixel 0xAARRGGBB, not premultiplied.
struct Bitmap {
    int width = 0;
    int height = 0;
    std::vector<std::uint32_t> pixels;
};

/// What a status item shows and whom it calls.
struct StatusItemContent {
    std::string title; ///< for screen readers
    std::string toolTip;
    /// The image in black on nothing, at the given pixels per point. The system tints it for its bar.
    std::function<Bitmap(double scale)> image;
    std::function<void()> activated;
    /// The wheel was turned over the item: whole steps, up is positive. Systems without it never call.
    std::function<void(int steps)> scrolled;
    /// Asked each time the system needs the item's menu. Systems whose items open no menu never ask.
    std::function<Menu()> menu;
};

/// Is shown as long as it exists.
class StatusItem {
public:
    virtual ~StatusItem() = default;

    /// Where it is: its frame, or the point at which the user last activated it; none while unknown.
    virtual std::optional<Rect> frame() const = 0;

    /// What `menu` returns has changed.
    virtual void menuChanged() = 0;
};

class StatusBar {
public:
    virtual ~StatusBar() = default;

    /// Null where the system has no place for status items. One that has none yet, but may get one, makes an
    /// item that appears then.
    virtual std::unique_ptr<StatusItem> createItem(StatusItemContent content) = 0;

    /// Whether items are shown now; none until the system has answered.
    virtual std::optional<bool> showsItems() = 0;

    /// Calls `changed` when `showsItems` may answer otherwise, until the next call; an empty one ends it.
    virtual void observe(std::function<void()> changed) = 0;
};

enum class ActivationPolicy { accessory, regular }; ///< without and with a Dock icon

struct DockContent {
    std::function<void()> reopen;       ///< the icon was clicked
    std::function<void()> menuWillOpen; ///< the pointer is where the menu opens; not told by every system
    std::function<Menu()> menu;         ///< asked each time the system needs the icon's menu
};

/// The program's icon among those of the other programs: Dock, launcher, dash.
class Dock {
public:
    virtual ~Dock() = default;

    /// To be called before the first `setActivationPolicy`.
    virtual void setContent(DockContent content) = 0;
    virtual void setActivationPolicy(ActivationPolicy policy) = 0;
    /// What `menu` returns has changed.
    virtual void menuChanged() = 0;
    /// Closes the icon's menu if it is open.
    virtual void cancelTracking() = 0;
};

/// Watches for something as long as it exists.
class EventMonitor {
public:
    virtual ~EventMonitor() = default;
};

/// `QWidget::winId` of a window.
using WindowHandle = std::uintptr_t;

/// What the system does for a panel's look.
struct PanelGround {
    bool isDrawn = false;     ///< it draws ground, edge, corners and shadow; nothing else counts then
    bool canBlend = true;     ///< false: every window covers what is behind it
    bool isBlurred = false;   ///< what is behind a translucent window is blurred, so that texts on it can be read
    bool isPlaced = true;     ///< windows stand where they ask to; else where the system finds room
    bool needsShadow = false; ///< a window that is larger than its panel can draw a shadow, and nothing else does
};

class PanelWindows {
public:
    virtual ~PanelWindows() = default;

    /// As it is now; it may have changed when the next panel opens.
    virtual PanelGround ground() = 0;

    /// Makes a created, not yet visible window a floating panel: above others, in no list of windows, without
    /// making the program the active one.
    virtual void dress(WindowHandle window) = 0;

    /// The panel is this part of the window, with round corners; the rest is its shadow, which takes no clicks.
    /// What is behind it is blurred where the system can. Called after each change of the size.
    virtual void setShape(WindowHandle window, const Rect& panel, double cornerRadius) = 0;

    /// Gives the visible panel the keyboard focus.
    virtual void focus(WindowHandle window) = 0;

    /// Calls `clicked` for each press of a mouse button outside this program's windows or, where the system does
    /// not tell of those, when the panel loses the focus. Null where it tells neither.
    virtual std::unique_ptr<EventMonitor> monitorOutsideClicks(WindowHandle panel,
                                                               std::function<void()> clicked) = 0;

    /// Keeps the desktop's permission to take the focus for the next window that is shown.
    virtual void useActivationToken(const std::string& token) = 0;
};

/// What the user chose for the whole desktop, as far as the desktop tells.
struct AppearanceWish {
    std::optional<bool> isDark;
    std::optional<std::uint32_t> accent; ///< 0xRRGGBB

    bool operator==(const AppearanceWish& other) const = default;
};

class AppearanceSource {
public:
    using Observer = std::function<void(const AppearanceWish&)>;

    virtual ~AppearanceSource() = default;

    /// Calls `observer` when the wish is known and at each change. Call it once.
    virtual void observe(Observer observer) = 0;
};

/// What other programs of the user may ask of this one. The errors are whole sentences for the user.
struct RemoteContent {
    std::function<std::string()> displays; ///< JSON, as `list --json` prints it
    /// Begins to set a display, both named as on the command line.
    std::function<tl::expected<void, std::string>(const std::string& display, const std::string& level)> set;
    std::function<tl::expected<void, std::string>(const std::string& preset)> apply;
};

/// The program as other programs of the user reach it.
class RemoteControl {
public:
    virtual ~RemoteControl() = default;

    /// Calls that come before wait for it. Empty: the program ends.
    virtual void setContent(RemoteContent content) = 0;
    /// What `displays` returns may have changed.
    virtual void displaysChanged() = 0;
};

/// How this copy of the program is named to the system and started by it.
struct ProgramIdentity {
    std::string identifier; ///< "app.lumenvale.Lumenvale"
    std::string objectPath; ///< "/app/lumenvale/Lumenvale"
    std::string name;       ///< "Lumenvale"
    /// Absolute path and arguments that start another copy like this one.
    std::vector<std::string> command;
    std::string simulationFolder; ///< empty: the real displays
};

struct Shell {
    std::unique_ptr<StatusBar> statusBar;
    std::unique_ptr<Dock> dock;
    std::unique_ptr<PanelWindows> panels;
    bool hasDockIcons = false;                    ///< a program with the regular policy has an icon while it runs
    bool hasMenuBar = false;                      ///< the system shows the program's menus, apart from its windows
    std::unique_ptr<AppearanceSource> appearance; ///< null where Qt follows the desktop by itself
    std::unique_ptr<StartupService> startup;      ///< registers the identity's command
    std::unique_ptr<HotKeyService> hotKeys;       ///< null where the system has none
    std::unique_ptr<RemoteControl> remote;        ///< null where programs have no bus to call each other
};

/// Before the application object: has Qt leave to this program when it comes to the front. The error is a sentence
/// for the user: without a desktop Qt would end the program. Defined once per system, like the following.
tl::expected<void, std::string> prepareApplication();

/// True when the process is the host of another program's tests and must not act as the program. Main thread.
bool isTestHost();

// The following after the application object.

/// Null where `makeNativePlatform` asks the system for its screens by itself.
std::unique_ptr<WindowSystem> makeNativeWindowSystem();

Shell makeNativeShell(const ProgramIdentity& identity);

} // namespace lumenvale
