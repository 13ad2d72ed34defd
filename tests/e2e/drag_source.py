"""A window of another program that offers a text, a link or a file for dragging: drag_source.py KIND VALUE.

Its title says how the drag goes: "Drag source", "Dragging", "Taken" where the place under the mouse would take it.
"""

import sys

import gi

gi.require_version("Gdk", "3.0")
gi.require_version("Gtk", "3.0")
from gi.repository import Gdk, GLib, Gtk  # noqa: E402

kind, value = sys.argv[1:3]
target = {"text": "text/plain;charset=utf-8", "file": "text/uri-list"}[kind]
window = Gtk.Window(title="Drag source")
window.set_default_size(120, 60)
box = Gtk.EventBox()
box.add(Gtk.Label(label="drag me"))
window.add(box)
box.drag_source_set(Gdk.ModifierType.BUTTON1_MASK, [Gtk.TargetEntry.new(target, 0, 0)], Gdk.DragAction.COPY)
box.connect("drag-data-get", lambda _w, _c, data, _i, _t: data.set(data.get_target(), 8, value.encode()))


def begin(_box, context):
    def look():
        window.set_title("Taken" if context.get_selected_action() else "Dragging")
        return True

    window.set_title("Dragging")
    GLib.timeout_add(20, look)


box.connect("drag-begin", begin)
box.connect("drag-end", lambda *_: Gtk.main_quit())  # once the other side has what it wants
window.connect("destroy", Gtk.main_quit)
window.show_all()
window.move(0, 0)
GLib.timeout_add_seconds(60, Gtk.main_quit)
Gtk.main()
