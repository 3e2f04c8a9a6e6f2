"""Reads a running program's screens through the accessibility interface, as a screen reader does.

Plain D-Bus calls to the accessibility bus; nothing is cached, so all results are current.
"""

import gi

gi.require_version("Gio", "2.0")
from gi.repository import Gio, GLib  # noqa: E402

PREFIX = "org.a11y.atspi."
ROOT = "/org/a11y/atspi/accessible/root"

# Bits of a node's state, in the order of the accessibility interface.
STATES = {name: bit for bit, name in enumerate(
    "invalid active armed busy checked collapsed defunct editable enabled expandable expanded "
    "focusable focused has_tooltip horizontal iconified modal multi_line multiselectable opaque "
    "pressed resizable selectable selected sensitive showing single_line stale transient vertical "
    "visible manages_descendants indeterminate".split())}


class Gone(Exception):
    """The program, or the node of its screen, no longer exists."""


class Bus:
    """The accessibility bus that belongs to the message bus at `session`."""

    def __init__(self, session):
        flags = (Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT |
                 Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION)
        session = Gio.DBusConnection.new_for_address_sync(session, flags, None, None)
        address = session.call_sync("org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress",
                                    None, None, Gio.DBusCallFlags.NONE, 20000, None).unpack()[0]
        self.connection = Gio.DBusConnection.new_for_address_sync(address, flags, None, None)

    def call(self, owner, path, interface, method, arguments=None):
        try:
            return self.connection.call_sync(owner, path, interface, method, arguments, None,
                                             Gio.DBusCallFlags.NONE, 5000, None).unpack()
        except GLib.Error as error:
            raise Gone(f"{owner} {path} {method}: {error.message}") from None

    def hear_focus(self):
        """Starts recording focus changes. Returns a function that returns the nodes that have received the
        focus since then, in order."""
        self.call(PREFIX + "Registry", "/org/a11y/atspi/registry", PREFIX + "Registry",
                  "RegisterEvent",
                  GLib.Variant("(sass)", ("object:state-changed:focused", [], "")))
        focused = []

        def hear(_connection, sender, path, _interface, _signal, arguments):
            what, now = arguments.unpack()[:2]
            if what == "focused" and now:
                focused.append(Node(self, sender, path))

        self.connection.signal_subscribe(None, PREFIX + "Event.Object", "StateChanged", None, None,
                                         Gio.DBusSignalFlags.NONE, hear)

        def heard():
            while GLib.MainContext.default().iteration(False):
                pass
            return focused

        return heard

    def program(self, pid):
        """The root node of the program with this process id; None while it isn't there."""
        programs = self.call(PREFIX + "Registry", ROOT, PREFIX + "Accessible", "GetChildren")[0]
        for owner, path in programs:
            try:
                known = self.call("org.freedesktop.DBus", "/org/freedesktop/DBus",
                                  "org.freedesktop.DBus", "GetConnectionUnixProcessID",
                                  GLib.Variant("(s)", (owner,)))[0]
            except Gone:
                continue
            if known == pid:
                return Node(self, owner, path)
        return None


class Node:
    """One node of a screen as a screen reader sees it."""

    def __init__(self, bus, owner, path):
        self.bus, self.owner, self.path = bus, owner, path

    def _call(self, interface, method, arguments=None):
        return self.bus.call(self.owner, self.path, PREFIX + interface, method, arguments)

    def _property(self, interface, name):
        return self.bus.call(self.owner, self.path, "org.freedesktop.DBus.Properties", "Get",
                             GLib.Variant("(ss)", (PREFIX + interface, name)))[0]

    @property
    def name(self):
        return self._property("Accessible", "Name")

    @property
    def description(self):
        return self._property("Accessible", "Description")

    @property
    def role(self):
        return self._call("Accessible", "GetRoleName")[0]

    @property
    def text(self):
        """The text of the node, such as a text box's."""
        return self._call("Text", "GetText", GLib.Variant("(ii)", (0, -1)))[0]

    def states(self):
        low, high = self._call("Accessible", "GetState")[0]
        bits = low | high << 32
        return {name for name, bit in STATES.items() if bits >> bit & 1}

    def act(self, name):
        """Carries out one of the node's actions."""
        actions = self._call("Action", "GetActions")[0]
        index = next(i for i, action in enumerate(actions) if action[0] == name)
        self._call("Action", "DoAction", GLib.Variant("(i)", (index,)))

    def box(self):
        """Left, top, width and height on the screen, in pixels."""
        return self._call("Component", "GetExtents", GLib.Variant("(u)", (0,)))[0]

    def children(self):
        return [Node(self.bus, owner, path)
                for owner, path in self._call("Accessible", "GetChildren")[0]
                if not path.endswith("/null")]

    def child_count(self):
        return self._property("Accessible", "ChildCount")

    def child(self, index):
        owner, path = self._call("Accessible", "GetChildAtIndex",
                                 GLib.Variant("(i)", (index,)))[0]
        return Node(self.bus, owner, path)

    def walk(self, depth=8):
        """This node and all visible nodes below it. Lists are not entered: their entries can be
        very many."""
        yield self
        if depth > 0 and self.role not in ("list", "table"):
            for child in self.children():
                if "showing" in child.states():
                    yield from child.walk(depth - 1)

    def find(self, role=None, name=None):
        """The first match among this node and the visible nodes below it, or None."""
        for node in self.walk():
            if (role is None or node.role == role) and (name is None or node.name == name):
                return node
        return None
