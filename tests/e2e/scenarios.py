# SPDX-License-Identifier: MIT
"""What a user does with the desktop program, and what must come of it."""
import inspect
import os
import pathlib
import subprocess
import time

from gi.repository import Atspi, Gio, GLib

from session import BUILT_IN, MONITORS, OFFICE, OFFICE_MONITOR, STUDIO, Session, preset
from stand_ins import AppearancePortal, turn_loop, wait_until

EVENING = preset(1, "Evening", 0.25, 0.3)
NOON = preset(2, "Noon_&_sun", 1.0, 0.9)


def status_item_opens_and_closes_the_panel(session):
    session.start_with_open_panel()
    wait_until(lambda: session.panel_height() == 171, "two displays")
    box = session.box(session.panel())
    assert box.width == 340 and abs(box.x + box.width / 2 - 640) <= 1 and box.y == 10, (box.x, box.y)
    session.status_bar.call("Activate", "(ii)", 640, 4)
    wait_until(lambda: not session.panel(), "the panel closes")


def status_item_appears_when_a_bar_does(session):
    session.start("--autostart")
    wait_until(session.application, "the program runs")
    session.start()
    wait_until(session.panel, "a start that asks for nothing shows the panel")
    bar = session.show_status_bar()
    assert bar.property("ToolTip")[2] == "Lumenvale — control each display"
    width, height, pixels = bar.property("IconPixmap")[0]
    assert width == height == 24 and len(pixels) == 24 * 24 * 4 and any(pixels)


def colours_follow_the_desktop(session):
    portal = AppearancePortal(session.bus, dark=True)
    try:
        box = session.box(session.start_with_open_panel())
        def lightness():
            return sum(session.colour_at(box.x + box.width // 2, box.y + box.height - 12)) / 3
        wait_until(lambda: lightness() < 90, "the panel is dark")
        portal.choose(dark=False)
        wait_until(lambda: lightness() > 200, "the panel becomes light")
    finally:
        portal.close()


def dragging_and_stepping_reach_the_monitor(session):
    session.start_with_open_panel()
    session.drag_slider("Studio 27", 0.8)
    reached = wait_until(lambda: session.brightness(STUDIO) >= 78 and session.brightness(STUDIO), "the drag is written")
    assert reached <= 82, reached
    session.click(session.button("Decrease Studio 27 brightness"))
    wait_until(lambda: session.brightness(STUDIO) == reached - 1, "one step down is written")
    session.click(session.button("Increase Built-in Display brightness"))
    wait_until(lambda: abs(session.brightness(BUILT_IN) - 0.626) < 1e-9, "one fine step up is written")


def panel_follows_the_monitors_own_buttons(session):
    session.start_with_open_panel()
    session.write_monitor(STUDIO, dict(MONITORS[STUDIO], ddc={"maximum": 100, "current": 77}))
    wait_until(lambda: any(each.get_name() == "77%" for each in session.controls()), "the panel shows 77%")


def panel_grows_and_shrinks_in_place(session):
    session.start_with_open_panel()
    wait_until(lambda: session.panel_height() == 171, "two displays")
    before = session.box(session.panel())
    session.write_monitor(OFFICE, OFFICE_MONITOR)
    wait_until(lambda: session.panel_height() == 229 and session.slider("Office 4K"), "a third display")
    after = session.box(session.panel())
    assert (after.x, after.y, after.width) == (before.x, before.y, before.width)
    os.remove(os.path.join(session.folder, OFFICE))
    wait_until(lambda: session.panel_height() == 171 and not session.slider("Office 4K"), "two displays again")


def escape_and_a_click_outside_close_the_panel(session):
    session.start_with_open_panel()
    for key in ("Escape", "alt+F4"):
        session.xdotool("key", key)
        wait_until(lambda: not session.panel(), f"{key} closes the panel")
        session.open_panel()
    session.click_at(100, 700)
    wait_until(lambda: not session.panel(), "a click elsewhere closes the panel")
    # The same click on the status item that closed the panel does not open it again.
    time.sleep(0.6)
    session.open_panel()
    session.click_at(640, 4)
    session.status_bar.call("Activate", "(ii)", 640, 4)
    wait_until(lambda: not session.panel(), "the click on the item closes the panel")
    turn_loop()
    assert not session.panel()


def preset_row_applies_the_preset(session):
    session.write_preferences([EVENING, NOON])
    session.start_with_open_panel()
    session.click(wait_until(lambda: session.button("Evening"), "the preset's row"))
    wait_until(lambda: session.brightness(STUDIO) == 30 and session.brightness(BUILT_IN) == 0.25, "Evening is applied")
    assert not session.panel()
    rows = {row.get("label"): row for _, row in session.status_bar.menu()}
    assert rows["Evening"]["toggle-state"] == 1 and "toggle-state" not in rows["Noon__&__sun"], rows
    session.status_bar.choose("Noon__&__sun")
    wait_until(lambda: session.brightness(STUDIO) == 90, "Noon is applied from the item's menu")


def item_menu_and_wheel_do_what_they_say(session):
    session.show_status_bar()
    session.start()
    labels = [row.get("label", "-") for _, row in session.status_bar.menu()]
    assert labels == ["Brightness…", "-", "Settings…", "Quit Lumenvale"], labels
    session.status_bar.choose("Brightness…")
    wait_until(session.panel, "the panel opens from the menu")
    wait_until(lambda: session.value("Studio 27") is not None, "the displays are known")
    session.status_bar.call("Scroll", "(is)", -120, "vertical")
    wait_until(lambda: abs(session.brightness(BUILT_IN) - 0.575) < 1e-9, "the wheel dims the main display")
    session.status_bar.choose("Quit Lumenvale")
    assert wait_until(lambda: session.processes[0].poll() is not None, "the program ends")
    assert session.processes[0].returncode == 0


def launcher_reaches_the_program(session):
    session.write_preferences([EVENING], appPresentation="both")
    session.show_status_bar()
    session.start()
    entry = session.home + "/data/applications/app.lumenvale.Lumenvale.Simulated.desktop"
    wait_until(lambda: os.path.exists(entry), "the launcher's entry")
    wait_until(lambda: session.run("list").returncode == 0, "the displays are known")

    def call(method, signature, *arguments):
        session.bus.call_sync("app.lumenvale.Lumenvale.Simulated", "/app/lumenvale/Lumenvale/Simulated",
                              "org.freedesktop.Application", method, GLib.Variant(signature, arguments), None,
                              Gio.DBusCallFlags.NONE, 5000, None)

    call("Activate", "(a{sv})", {})
    wait_until(session.panel, "the launcher opens the panel")
    call("ActivateAction", "(sava{sv})", "preset-" + EVENING["id"], [], {})
    wait_until(lambda: session.brightness(STUDIO) == 30, "the launcher applies a preset")
    assert session.stop() == 0
    assert not os.path.exists(entry)


def other_programs_watch_and_set_through_the_bus(session):
    session.write_preferences([EVENING])
    session.start()
    name, path = "app.lumenvale.Lumenvale.Simulated", "/app/lumenvale/Lumenvale/Simulated/Displays"

    def call(interface, method, *texts):
        answer = session.bus.call_sync(name, path, interface, method, GLib.Variant(f"({'s' * len(texts)})", texts), None,
                                       Gio.DBusCallFlags.NONE, 5000, None)
        return answer.unpack()

    def described(xml):
        interface = Gio.DBusNodeInfo.new_for_xml(xml).lookup_interface("app.lumenvale.Lumenvale.Displays")
        return [sorted((each.name, [arg.name for arg in getattr(each, kind)]) for each in members)
                for members, kind in ((interface.methods, "in_args"), (interface.signals, "args"))] + [
                    sorted((each.name, [note.value for note in each.annotations]) for each in interface.properties)]

    wait_until(lambda: session.bus.call_sync(
        "org.freedesktop.DBus", "/", "org.freedesktop.DBus", "NameHasOwner", GLib.Variant("(s)", (name,)), None,
        Gio.DBusCallFlags.NONE, 5000, None).unpack()[0], "the program has its name")
    file = pathlib.Path(__file__).parents[2] / "packaging/linux/app.lumenvale.Lumenvale.Displays.xml"
    assert described(file.read_text("utf-8")) == described(call("org.freedesktop.DBus.Introspectable", "Introspect")[0])
    call("app.lumenvale.Lumenvale.Displays", "Set", "Studio", "42%")  # which waits until the displays are known
    log = pathlib.Path(session.home, "watched")
    with log.open("w") as output:
        session.processes.append(
            subprocess.Popen(session.command("watch", "Studio"), env=session.environment(), stdout=output))
    wait_until(lambda: log.read_text() == "42%\n", "the brightness is printed")
    call("app.lumenvale.Lumenvale.Displays", "Set", "Studio", "+8%")
    wait_until(lambda: log.read_text().endswith("50%\n") and session.brightness(STUDIO) == 50, "it is set and told")
    assert session.stop() == 0
    wait_until(lambda: session.run("set", "Studio", "60%").returncode == 0, "it is set without the program")
    session.write_monitor(OFFICE, OFFICE_MONITOR)  # which has the displays read anew, instead of every half minute
    wait_until(lambda: log.read_text() == "42%\n50%\n60%\n", "it is read without the program")
    with log.open("w") as output:
        session.processes.append(subprocess.Popen(session.command("watch", "Studio"), stdout=output, env=dict(
            session.environment(), DBUS_SESSION_BUS_ADDRESS="unix:path=/nowhere")))
    wait_until(lambda: log.read_text() == "60%\n", "it is read without a bus")


def second_copy_hands_over_and_ends(session):
    session.write_preferences([EVENING])
    session.start("--autostart")
    wait_until(session.application, "the program runs")
    second = session.run()
    assert (second.returncode, second.stdout, second.stderr) == (0, "", ""), second
    wait_until(session.panel, "the second copy brings the panel")
    assert session.run("--apply-preset", "Evening").returncode == 0
    wait_until(lambda: session.brightness(STUDIO) == 30, "the second copy applies a preset")


def a_slow_monitor_keeps_neither_panel_nor_quitting_waiting(session):
    session.start_with_open_panel()
    slow = dict(MONITORS[STUDIO], ddc={"maximum": 100, "current": 42, "delayMs": 2000})
    session.write_monitor(STUDIO, slow)
    session.drag_slider("Studio 27", 0.9)
    time.sleep(0.15)  # the write is on its way
    begin = time.monotonic()
    session.drag_slider("Built-in Display", 0.3)
    wait_until(lambda: abs(session.value("Built-in Display") - 30) < 3, "the other slider follows at once")
    assert time.monotonic() - begin < 2, "the panel waits for the monitor"
    assert session.brightness(BUILT_IN) == 0.625, "the monitor was not slow"
    begin = time.monotonic()
    assert session.stop() == 0
    assert time.monotonic() - begin < 1, "quitting waits for the monitor"


def settings_open_at_the_first_start_only(session):
    session.write_preferences(hasOpenedSettings=False)
    session.start()
    wait_until(session.application, "the program runs")

    window = wait_until(lambda: session.window("Displays"), "the settings window opens")
    assert (session.box(window).width, session.box(window).height) == (800, 580)
    session.stop()
    session.start()
    wait_until(session.panel, "the program shows itself again")
    assert not session.window("Displays")


def screen_reader_finds_every_control(session):
    session.write_preferences([EVENING])
    session.start_with_open_panel()
    wait_until(lambda: session.value("Studio 27") is not None, "the sliders show")
    shown = {(each.get_role(), each.get_name()) for each in session.controls()}
    buttons = {name for role, name in shown if role == Atspi.Role.PUSH_BUTTON}
    names = [monitor["name"] for monitor in MONITORS.values()]
    assert {name for role, name in shown if role == Atspi.Role.SLIDER} == {name + " brightness" for name in names}, shown
    assert buttons >= {f"{way} {name} brightness" for way in ("Decrease", "Increase") for name in names}, buttons
    assert buttons >= {"Evening", "Settings", "Quit Lumenvale"} and "" not in buttons, buttons
    value = session.slider("Studio 27").get_value_iface()
    share = value.get_current_value() / value.get_maximum_value()
    assert abs(share - 0.42) < 0.005, share
    value.set_current_value(value.get_maximum_value() * 0.6)
    wait_until(lambda: session.brightness(STUDIO) == 60, "the screen reader's value is written")
    action = session.button("Increase Studio 27 brightness").get_action_iface()
    action.do_action(0)
    wait_until(lambda: session.brightness(STUDIO) == 61, "the screen reader's press is written")


def with_shortcut(a_preset):
    """Control, Option and K, as the settings record them."""
    return dict(a_preset, shortcut={
        "functionKey": 0, "command": False, "option": True, "control": True, "shift": False,
        "recordedKeyCode": 40, "recordedKeyLabel": "K"})


def shortcut_applies_its_preset_from_any_program(session):
    session.write_preferences([with_shortcut(EVENING), NOON])
    session.show_status_bar()
    session.start()
    wait_until(session.application, "the program runs")
    other = Session(session.program)
    try:
        other.write_preferences([with_shortcut(NOON)], hasOpenedSettings=False)
        other.start()
        window = wait_until(lambda: other.window("Displays"), "another program's window has the focus")
        for lock in (None, "Caps_Lock", "Num_Lock"):
            if lock:
                session.xdotool("key", lock)
            session.write_monitor(STUDIO, MONITORS[STUDIO])
            session.xdotool("key", "ctrl+alt+k")
            wait_until(lambda: session.brightness(STUDIO) == 30, f"the shortcut works with {lock or 'no lock'}")
        session.xdotool("key", "Caps_Lock", "key", "Num_Lock")
        assert other.brightness(STUDIO) == 42, "the key is the first program's"

        other.click(other.find(Atspi.Role.PAGE_TAB, "Presets"))
        row = wait_until(lambda: next((each for each in other.controls(window)
                                       if (each.get_name() or "").startswith("Noon_&_sun")), None), "the preset's row")
        other.click(row)
        taken = "Ctrl+Alt+K is already used by the desktop or another program."
        wait_until(lambda: any(each.get_name() == taken for each in other.controls(window)), "the refusal shows")
        wait_until(lambda: other.brightness(STUDIO) == 90, "selecting the preset applies it")
    finally:
        other.close()
    session.write_monitor(STUDIO, MONITORS[STUDIO])
    session.open_panel()
    session.xdotool("keydown", "ctrl", "keydown", "alt", "keydown", "k", "keydown", "k", "sleep", "0.4", "keyup", "k",
                    "keyup", "alt", "keyup", "ctrl")
    wait_until(lambda: session.brightness(STUDIO) == 30, "a held key applies it")
    assert session.panel(), "a key that is grabbed is no loss of the focus"


def all_scenarios():
    """In the order in which they stand here."""
    functions = [each for each in list(globals().values()) if inspect.isfunction(each)]
    return [each for each in functions if list(inspect.signature(each).parameters) == ["session"]]
