# SPDX-License-Identifier: MIT
"""One run of the program: its monitors, its process, its windows as a screen reader sees them, and the mouse."""
import json
import os
import pathlib
import shutil
import signal
import subprocess
import tempfile

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, Gio, GLib  # noqa: E402

from stand_ins import StatusBar, turn_loop, wait_until  # noqa: E402

BUILT_IN = "1-built-in.json"
STUDIO = "2-studio.json"
OFFICE = "3-office.json"
MONITORS = {
    BUILT_IN: {
        "name": "Built-in Display", "displayID": 1, "uuid": "0B7E0D3C-5C0A-4D0B-8C1E-3A6A52F1C901",
        "isBuiltIn": True, "isMain": True, "native": {"brightness": 0.625}},
    STUDIO: {
        "name": "Studio 27", "displayID": 2, "uuid": "37D8832A-2D66-02CA-B9F7-8F30A301B230", "vendor": 4268,
        "model": 16589, "serial": 305419896, "ddc": {"maximum": 100, "current": 42}},
}
OFFICE_MONITOR = {
    "name": "Office 4K", "displayID": 3, "uuid": "9C1D6E0F-71B4-4E52-A2D8-6F0C4B85D713", "vendor": 7789,
    "model": 23312, "serial": 271828, "ddc": {"maximum": 100, "current": 10}}


def preset(number, name, built_in, studio):
    return {"id": f"6F0C4B85-71B4-4E52-A2D8-9C1D6E0FD7{number:02}", "name": name, "displayNames": {},
            "values": {MONITORS[BUILT_IN]["uuid"]: built_in, MONITORS[STUDIO]["uuid"]: studio}}


class Session:
    def __init__(self, program):
        self.program = program
        self.folder = tempfile.mkdtemp(prefix="lumenvale-e2e-")
        self.home = tempfile.mkdtemp(prefix="lumenvale-home-")
        self.processes = []
        self.bus = Gio.bus_get_sync(Gio.BusType.SESSION)
        self.status_bar = None
        for name, monitor in MONITORS.items():
            self.write_monitor(name, monitor)

    # The program

    def command(self, *arguments):
        return [self.program, "--simulate", self.folder, *arguments]

    def environment(self):
        return dict(os.environ, HOME=self.home, QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1",
                    XDG_CONFIG_HOME=self.home + "/config", XDG_DATA_HOME=self.home + "/data")

    def write_preferences(self, presets=(), **others):
        """Before the first start."""
        with open(self.folder + "/preferences.json", "w", encoding="utf-8") as file:
            json.dump({"hasOpenedSettings": True, "brightnessPresets": list(presets), **others}, file)

    def start(self, *arguments):
        if not os.path.exists(self.folder + "/preferences.json"):
            self.write_preferences()
        with open(self.home + "/log", "a", encoding="utf-8") as log:
            process = subprocess.Popen(self.command(*arguments), env=self.environment(), stdout=log, stderr=log)
        self.processes.append(process)
        return process

    def run(self, *arguments):
        return subprocess.run(self.command(*arguments), env=self.environment(), capture_output=True, text=True,
                              timeout=20, check=False)

    def show_status_bar(self):
        self.status_bar = StatusBar(self.bus)
        return self.status_bar

    def start_with_open_panel(self):
        self.show_status_bar()
        self.start()
        panel = self.open_panel()
        wait_until(lambda: self.value("Studio 27") is not None, "the displays are known, the panel has its size")
        return panel

    def open_panel(self, x=640, y=4):
        """As a click on the status item does."""
        self.status_bar.call("Activate", "(ii)", x, y)
        return wait_until(self.panel, "the panel opens")

    # The monitors

    def write_monitor(self, name, monitor):
        part = pathlib.Path(self.folder, "." + name + ".part")
        part.write_text(json.dumps(monitor), encoding="utf-8")
        part.replace(part.with_name(name))

    def brightness(self, name):
        monitor = json.loads(pathlib.Path(self.folder, name).read_text(encoding="utf-8"))
        return monitor["native"]["brightness"] if "native" in monitor else monitor["ddc"]["current"]

    # What a screen reader sees

    def application(self):
        desktop = Atspi.get_desktop(0)
        running = {each.pid for each in self.processes if each.poll() is None}
        for index in range(desktop.get_child_count()):
            each = desktop.get_child_at_index(index)
            if each and each.get_process_id() in running:
                return each
        return None

    def controls(self, root=None):
        """Every accessible below `root` that is showing."""
        root = root or self.application()
        if not root:
            return
        try:
            root.clear_cache()
            children = [root.get_child_at_index(index) for index in range(root.get_child_count())]
            for child in children:
                if child and child.get_state_set().contains(Atspi.StateType.SHOWING):
                    yield child
                    yield from self.controls(child)
        except GLib.Error:  # it went while we looked
            return

    def find(self, role, name):
        return next((each for each in self.controls() if each.get_role() == role and each.get_name() == name), None)

    def slider(self, display):
        return self.find(Atspi.Role.SLIDER, display + " brightness")

    def button(self, name):
        return self.find(Atspi.Role.PUSH_BUTTON, name)

    def window(self, contains):
        """The showing window that has a control of this name."""
        app = self.application()
        windows = [app.get_child_at_index(index) for index in range(app.get_child_count())] if app else []
        return next((each for each in windows
                     if each and any(inner.get_name() == contains for inner in self.controls(each))), None)

    def panel(self):
        return self.window("Quit Lumenvale")

    def panel_height(self):
        panel = self.panel()
        return self.box(panel).height if panel else 0

    def value(self, display):
        slider = self.slider(display)
        return slider.get_value_iface().get_current_value() if slider else None

    @staticmethod
    def box(accessible):
        return accessible.get_component_iface().get_extents(Atspi.CoordType.SCREEN)

    @staticmethod
    def colour_at(x, y):
        pixel = subprocess.run(["import", "-window", "root", "-crop", f"1x1+{x}+{y}", "-depth", "8", "rgb:-"],
                               check=True, capture_output=True, timeout=20).stdout
        return tuple(pixel[:3])

    # The mouse and the keyboard

    @staticmethod
    def xdotool(*arguments):
        subprocess.run(["xdotool", *map(str, arguments)], check=True, timeout=10)

    def click(self, accessible):
        box = self.box(accessible)
        self.click_at(box.x + box.width // 2, box.y + box.height // 2)

    def click_at(self, x, y):
        self.xdotool("mousemove", x, y, "click", 1)

    def drag_slider(self, display, fraction):
        """From the middle of the knob to `fraction` of the scale."""
        slider = self.slider(display)
        box = self.box(slider)
        value = slider.get_value_iface()
        share = value.get_current_value() / value.get_maximum_value()
        knob = 18
        length = box.width - knob
        y = box.y + box.height // 2
        start = round(box.x + knob / 2 + share * length)
        end = round(box.x + knob / 2 + fraction * length)
        self.xdotool("mousemove", start, y, "mousedown", 1)
        for step in range(1, 11):
            self.xdotool("mousemove", round(start + (end - start) * step / 10), y)
        self.xdotool("mouseup", 1)

    # Ending

    def keep_evidence(self, name):
        """A screenshot and the log, for who looks into a failure."""
        picture = os.path.join(tempfile.gettempdir(), f"lumenvale-{name}.png")
        subprocess.run(["import", "-window", "root", picture], check=False, timeout=20)
        print("screenshot:", picture)
        print("log:", pathlib.Path(self.home, "log").read_text(encoding="utf-8"))

    def stop(self, process=None):
        """Asks the first, or this, process to end; its status."""
        process = process or self.processes[0]
        if process.poll() is None:
            process.send_signal(signal.SIGTERM)
            try:
                process.wait(10)
            except subprocess.TimeoutExpired:
                process.kill()
        return process.wait()

    def close(self):
        for each in self.processes:
            self.stop(each)
        if self.status_bar:
            self.status_bar.close()
        turn_loop()
        shutil.rmtree(self.folder, ignore_errors=True)
        shutil.rmtree(self.home, ignore_errors=True)
