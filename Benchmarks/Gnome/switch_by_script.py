#!/usr/bin/python3
"""switch_by_script.py CONNECTOR WIDTH HEIGHT: what a user's script does: reads the state, changes one
monitor's mode, moves its neighbour on the right along, and applies it."""
import sys

from gi.repository import Gio, GLib

NAME = "org.gnome.Mutter.DisplayConfig"
PATH = "/org/gnome/Mutter/DisplayConfig"

connector, width, height = sys.argv[1], int(sys.argv[2]), int(sys.argv[3])
bus = Gio.bus_get_sync(Gio.BusType.SESSION)


def call(method, parameters=None):
    return bus.call_sync(NAME, PATH, NAME, method, parameters, None, 0, 30000, None)


serial, monitors, logical_monitors, _ = call("GetCurrentState").unpack()
current = {}
for (name, *_), modes, _ in monitors:
    for mode in modes:
        is_wanted = name == connector and mode[1:3] == (width, height)
        if is_wanted or (name != connector and mode[6].get("is-current")):
            current[name] = mode[0]
layout = []
for x, y, scale, transform, primary, (monitor, *_), _ in logical_monitors:
    name = monitor[0]
    layout.append((0 if name == connector else width, y, 1.0, transform, primary,
                   [(name, current[name], {})]))
call("ApplyMonitorsConfig", GLib.Variant("(uua(iiduba(ssa{sv}))a{sv})", (serial, 1, layout, {})))
