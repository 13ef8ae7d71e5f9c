"""Hands and eyes of somebody who uses the program with a screen reader. To be imported once a Desktop's environment is this
process's own: the accessibility bus is looked up then, and only once.
"""
import contextlib
import os

from harness import PATIENCE, wait_for


def open_eyes(desktop):
    """Takes over the desktop's buses and screen for this process, and gives its Eyes."""
    for name in ("DISPLAY", "DBUS_SESSION_BUS_ADDRESS", "XDG_RUNTIME_DIR"):
        os.environ[name] = desktop.env[name]
    os.environ.pop("AT_SPI_BUS_ADDRESS", None)
    import gi
    gi.require_version("Atspi", "2.0")
    from gi.repository import Atspi, GLib
    Atspi.set_timeout(int(PATIENCE * 1000), int(PATIENCE * 1000))
    return Eyes(Atspi, GLib.Error)


class Eyes:
    def __init__(self, atspi, gone):
        self._atspi, self._gone = atspi, gone
        atspi.get_desktop(0).set_cache_mask(atspi.Cache.NONE)

    def _application(self, pid):
        desktop = self._atspi.get_desktop(0)
        for index in range(desktop.get_child_count()):
            with contextlib.suppress(Exception):  # one that is just going
                application = desktop.get_child_at_index(index)
                if application is not None and application.get_process_id() == pid:
                    application.set_cache_mask(self._atspi.Cache.NONE)
                    return application
        return None

    def all(self, running):
        """All that the program has on show, as the bus lists it."""
        application = self._application(running.pid)
        return list(self._below(application)) if application else []

    def _below(self, node):
        for index in range(_or(0, node.get_child_count)):
            child = _or(None, lambda: node.get_child_at_index(index))
            if child is not None:
                yield child
                yield from self._below(child)

    def showing(self, node):
        states = _or(None, node.get_state_set)
        return states is not None and states.contains(self._atspi.StateType.SHOWING)

    def lit(self, node):
        """Whether a key that stays down is down."""
        states = _or(None, node.get_state_set)
        return states is not None and states.contains(self._atspi.StateType.CHECKED)

    def focused(self, running):
        """The control that has the keyboard, or None."""
        state = self._atspi.StateType.FOCUSED
        found = [node for node in self.all(running) if _or(False, lambda: node.get_state_set().contains(state))]
        return found[-1] if found else None

    def role_of_focused(self, running):
        here = self.focused(running)
        return None if here is None else _or(None, here.get_role_name)

    def focusable(self, running):
        """The controls that can have the keyboard now."""
        kinds = self._atspi.StateType
        return [node for node in self.all(running)
                if all(node.get_state_set().contains(state) for state in (kinds.SHOWING, kinds.FOCUSABLE, kinds.ENABLED))]

    def find(self, running, name, seconds=PATIENCE, showing=True):
        def look():
            return next((node for node in self.all(running)
                         if _or("", node.get_name) == name and (not showing or self.showing(node))), None)
        return wait_for(f'"{name}" in the program', look, seconds)

    def names(self, running):
        return [node.get_name() for node in self.all(running) if self.showing(node)]

    def actions(self, node):
        action = node.get_action_iface()
        return [action.get_action_name(i) for i in range(action.get_n_actions())] if action else []

    def press(self, running, name):
        node = self.find(running, name)
        wait_for(f'"{name}" to be pressed', lambda: "Press" in self.actions(node))
        node.get_action_iface().do_action(self.actions(node).index("Press"))

    def press_without_waiting(self, running, name):
        """For a key whose press ends only with the dialog that it opens: by the keyboard."""
        node = self.find(running, name)
        node.get_component_iface().grab_focus()
        wait_for(f'the keyboard on "{name}"', lambda: self.focused(running) == node)
        running.desktop.key("space")

    def answer(self, running, button):
        """Presses a button of a box. What comes of it may be the program's end, so that nobody confirms the press."""
        node = self.find(running, button)
        with contextlib.suppress(self._gone):
            node.get_action_iface().do_action(self.actions(node).index("Press"))

    def place(self, node):
        """x, y, width and height on the screen."""
        extents = node.get_component_iface().get_extents(self._atspi.CoordType.SCREEN)
        return extents.x, extents.y, extents.width, extents.height

    def text(self, running, name):
        """What a display shows, as it is told to a person who doesn't see it."""
        return self.find(running, name, showing=False).get_description()

    def windows(self, running):
        application = self._application(running.pid)
        return [] if application is None else [application.get_child_at_index(i)
                                               for i in range(_or(0, application.get_child_count))]

    def message(self, running, seconds=PATIENCE):
        """The text of the message box that is up, or comes up."""
        def look():
            for window in self.windows(running):
                if window is not None and _or("", window.get_role_name) in ("alert", "dialog"):
                    return " ".join(_or("", node.get_name) for node in self._below(window)
                                    if _or("", node.get_role_name) == "label")
            return None
        return wait_for("a message box", look, seconds)


def _or(other, ask):
    """The answer, or `other` when what was asked is gone."""
    try:
        return ask()
    except Exception:  # the bus raises GLib errors of several kinds
        return other
