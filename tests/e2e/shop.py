"""A shop in a folder: program folder, Posdata, a store, and settings of its own."""

import json
import os
import pathlib
import shutil
import stat
import subprocess

WHITE = 16777215
BUTTON_FACE = -2147483633
BUTTON_TEXT = -2147483630


class Build:
    """The programs under test, and the stores of which every case gets a copy."""

    def __init__(self, folder, work):
        self.folder = pathlib.Path(folder).resolve()
        self.work = pathlib.Path(work)
        self._stores = {}

    def program(self, name):
        for path in (self.folder / name, *self.folder.glob(f"*/{name}"),
                     *self.folder.glob(f"*/*/{name}")):
            if path.is_file() and os.access(path, os.X_OK):
                return path
        raise RuntimeError(f"{name} isn't built in {self.folder}")

    def store(self, *options):
        """A store database made with these options; created once, and not to be changed."""
        if options not in self._stores:
            path = self.work / f"store{len(self._stores)}.mdb"
            subprocess.run([self.program("makestore"), path, *options], check=True,
                           stdout=subprocess.DEVNULL)
            self._stores[options] = path
        return self._stores[options]


class Shop:
    """One case's program folder. Some of its file names have an unusual letter case, as in real shops."""

    def __init__(self, build, folder, store=()):
        self.folder = pathlib.Path(folder)
        self.posdata = self.folder / "Posdata"
        self.posdata.mkdir(parents=True)
        self.settings = self.folder / "settings"
        self.program = self.folder / "keystrand"
        shutil.copy(build.program("keystrand"), self.program)
        self.database = self.folder / "Stores" / "Demo" / "MASTER.mdb"
        self.database.parent.mkdir(parents=True)
        shutil.copy(build.store(*store), self.database)
        self.write_settings("[comms]\nstorename=Demo\n")

    # The settings store and the profile files

    def write_settings(self, text):
        file = self.settings / "program-settings" / "tavenor.ini"
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_text(text)

    def touch_buttons_setting(self, section, key):
        return profile_value(self.posdata / "FastTouchButtons.ini", section, key)

    # Layout files

    def layout(self, level):
        """The bytes of a level's layout file ("" for the large editor's); None if there is none."""
        path = self.posdata / f"FastMovers{level}.txt"
        return path.read_bytes() if path.exists() else None

    def write_layout(self, level, data):
        (self.posdata / f"FastMovers{level}.txt").write_bytes(data)

    # The communications program

    def install_communications(self):
        """Installs a stand-in that records the settings at its start; returns a function that lists its records."""
        path = self.folder / "tavenor_comms.exe"
        path.write_text('#!/bin/sh\nd=$(dirname "$0")\n'
                        'cat "$XDG_CONFIG_HOME/program-settings/tavenor.ini" >"$d/found.$$.part"\n'
                        'echo "arguments: $#" >>"$d/found.$$.part"\n'
                        'mv "$d/found.$$.part" "$d/found.$$"\n')
        path.chmod(path.stat().st_mode | stat.S_IXUSR | stat.S_IXGRP | stat.S_IXOTH)
        return lambda: sorted(self.folder.glob("found.*[0-9]"))

    # The store, read by an independent reader

    def rows(self, table):
        """The rows of a table as mdbtools reads them, as dictionaries; a null is None."""
        output = subprocess.run(
            ["mdb-json", str(self.database), table], check=True, capture_output=True).stdout
        return [json.loads(line) for line in output.decode("utf-8").splitlines()]

    def files(self):
        """All files of the shop but the program, with their bytes, to check that nothing changed."""
        return {str(path.relative_to(self.folder)): path.read_bytes()
                for path in sorted(self.folder.rglob("*"))
                if path.is_file() and path != self.program}


def profile_value(path, section, key):
    """The value of a key in a section of a profile file; None if there is none."""
    if not path.exists():
        return None
    inside = False
    for line in path.read_bytes().decode("latin-1").splitlines():
        if line.startswith("["):
            inside = line.strip().lower() == f"[{section.lower()}]"
        elif inside and "=" in line and line.split("=")[0].strip().lower() == key.lower():
            return line.split("=", 1)[1]
    return None


def key_line(key, product="", caption="", back=WHITE, font=BUTTON_TEXT):
    """One key as a line of a layout file."""
    return f"{key},{product},{caption},{back},{font}\r\n"


def layout(keys, count=63, back=WHITE, font=BUTTON_TEXT):
    """A layout file: `keys` maps a key's index to its differences from a blank key."""
    lines = (key_line(key, **{"back": back, "font": font, **keys.get(key, {})})
             for key in range(count))
    return "".join(lines).encode("cp1252")
