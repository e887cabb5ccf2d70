"""A client of Zentrel: the operations as methods, the loaded device as attributes.

    from zentrel import Zentrel

    with Zentrel() as bench:
        bench.SelectPart("QVX2874")
        bench.SetVCOFrequency("PLL1", 2450.0)
        print(bench.Part.PLLs["PLL1"].VCOFrequency)
        bench.Part.PrgmBits["N"].Value = 122
        bench.LoadPart()

Needs python3-dbus. Arguments and results are Python's own numbers, texts and truth values. An error
of the program comes as ZentrelError, whose `name` tells the kind ("NotFound"). A call that may
change its argument gives the result and the argument, in this order.
"""

import xml.etree.ElementTree

import dbus

BUS_NAME = "org.zentrel.Zentrel"
ERROR_PREFIX = "org.zentrel.Error."
FOREVER = 2147483.0  # seconds; a burst may run for days

_PLAIN = {
    dbus.Boolean: bool,
    dbus.Double: float,
    dbus.Int16: int,
    dbus.Int32: int,
    dbus.String: str,
}
_TYPES = {"b": dbus.Boolean, "d": dbus.Double, "i": dbus.Int32, "n": dbus.Int16, "s": dbus.String}


class ZentrelError(Exception):
    """What the program answered instead of a result."""

    def __init__(self, error):
        super().__init__(error.get_dbus_message())
        full = error.get_dbus_name()
        self.name = full[len(ERROR_PREFIX):] if full.startswith(ERROR_PREFIX) else full


def path_element(key):
    """A key as an element of an object path: what isn't a letter or digit becomes its code."""
    if isinstance(key, int):
        return str(key)
    if not key:
        return "_"
    plain = lambda at, byte: chr(byte).isalpha() or (at > 0 and chr(byte).isdigit())
    codes = enumerate(key.encode())
    return "".join(chr(b) if b < 128 and plain(at, b) else f"_{b:02x}" for at, b in codes)


class Remote:
    """One object of the program, its members as attributes."""

    def __init__(self, bus, path):
        object.__setattr__(self, "_bus", bus)
        object.__setattr__(self, "_path", path)
        object.__setattr__(self, "_members", None)

    def __repr__(self):
        return f"<{self._path}>"

    def __dir__(self):
        return sorted(self._known())

    def __getattr__(self, name):
        kind, interface = self._known().get(name, (None, None))
        if kind == "child":
            return Remote(self._bus, f"{self._path}/{name}")
        if kind == "property":
            return self._call("org.freedesktop.DBus.Properties", "Get", "ss", [interface, name])
        if kind is None:
            raise AttributeError(f"{self._path} has no member {name}")
        return lambda *arguments: self._method(interface, name, kind, arguments)

    def __setattr__(self, name, value):
        kind, interface = self._known().get(name, (None, None))
        if kind != "property":
            raise AttributeError(f"{self._path} has no property {name}")
        self._call("org.freedesktop.DBus.Properties", "Set", "ssv", [interface, name, value])

    def __getitem__(self, key):
        """What a collection holds under a key, or at a position from 1."""
        item = Remote(self._bus, f"{self._path}/{path_element(key)}")
        item._known()  # raises ZentrelError where there is nothing
        return item

    def __bool__(self):
        return True  # an object, whether or not it counts anything

    def __len__(self):
        return self.Count

    def __iter__(self):
        return (self[position] for position in range(1, self.Count + 1))

    def _method(self, interface, name, forms, arguments):
        signature = next((form for form in forms if len(form) == len(arguments)), None)
        if signature is None:
            known = " or ".join(f"({', '.join(form)})" for form in forms)
            raise TypeError(f"{name} takes {known}, not {arguments}")
        typed = [_TYPES[t](a) if t in _TYPES else a for t, a in zip(signature, arguments)]
        return self._call(interface, name, "".join(signature), typed)

    def _call(self, interface, name, signature, arguments):
        try:
            answer = self._bus.call_blocking(BUS_NAME, self._path, interface, name, signature,
                                             arguments, timeout=FOREVER)
        except dbus.DBusException as error:
            raise ZentrelError(error) from None
        return self._plain(answer)

    def _plain(self, value):
        if isinstance(value, dbus.ObjectPath):
            return Remote(self._bus, str(value))
        if isinstance(value, dbus.Dictionary):
            return {str(key): self._plain(one) for key, one in value.items()}
        if isinstance(value, (dbus.Array, list, tuple)):
            return type(value)(map(self._plain, value)) if isinstance(value, tuple) else [
                self._plain(one) for one in value]
        return _PLAIN.get(type(value), lambda same: same)(value)

    def _known(self):
        """Member name to kind: "property", "child", or the signatures that a method takes."""
        if self._members is None:
            text = self._call("org.freedesktop.DBus.Introspectable", "Introspect", "", [])
            object.__setattr__(self, "_members", _read_members(text))
        return self._members


def _read_members(text):
    root = xml.etree.ElementTree.fromstring(text)
    members = {node.get("name"): ("child", None) for node in root.findall("node")}
    for interface in root.findall("interface"):
        name = interface.get("name")
        if name.startswith("org.freedesktop."):
            continue
        for entry in interface.findall("property"):
            members[entry.get("name")] = ("property", name)
        for entry in interface.findall("method"):
            forms = members.get(entry.get("name"), ([], None))[0]
            forms = forms if isinstance(forms, list) else []
            forms.append([arg.get("type") for arg in entry.findall("arg")
                          if arg.get("direction") == "in"])
            members[entry.get("name")] = (forms, name)
    return members


class Zentrel(Remote):
    """The program, started if it doesn't run. Holds an Application object of its own, so that the
    window stays as long as this client; `attach=True` uses the running program and holds nothing."""

    def __init__(self, attach=False, bus=None):
        connection = bus or dbus.SessionBus()
        if attach:
            super().__init__(connection, "/org/zentrel/Application")
        else:
            front = Remote(connection, "/org/zentrel")
            super().__init__(connection, front.Create()._path)
        object.__setattr__(self, "_attached", attach)

    def __enter__(self):
        return self

    def __exit__(self, *failure):
        self.close()

    @property
    def Part(self):
        """The loaded device, with everything public."""
        return Remote(self._bus, "/org/zentrel/Part")

    def close(self):
        """Lets the program go; the last client's end closes its window."""
        if not self._attached:
            object.__setattr__(self, "_attached", True)
            if self._bus.name_has_owner(BUS_NAME):  # else the call would start another program
                self._call("org.zentrel.Client", "Release", "", [])
