"""Holds the direction of the house: the toolkit stays behind platform/forms, and an include that a
library's links do not allow does not build.

    layering.py SOURCE-FOLDER BUILD-FOLDER
"""

import json
import pathlib
import re
import shlex
import subprocess
import sys
import tempfile
import unittest

SOURCE, BUILD = (pathlib.Path(argument) for argument in sys.argv[1:3])

QT_INCLUDE = re.compile(r'^\s*#\s*include\s*[<"](Q[A-Za-z]+|Qt[A-Za-z]*/.*)[>"]', re.M)


def toolkit_may_be_included(path):
    place = path.relative_to(SOURCE).as_posix()
    return (re.fullmatch(r"src/platform/forms/[^/]+\.cpp", place) is not None or
            place.startswith("src/platform/forms/qt/"))


class Layering(unittest.TestCase):
    def test_toolkit_headers_stand_in_forms_alone(self):
        for folder in ("src", "tools"):
            for path in (SOURCE / folder).rglob("*"):
                if path.suffix in (".h", ".cpp") and not toolkit_may_be_included(path):
                    self.assertNotRegex(path.read_text(), QT_INCLUDE, path)

    def test_no_circle_of_includes(self):
        includes = {}
        for path in (SOURCE / "src").rglob("*.h"):
            found = re.findall(r'^#include "([^"]+)"', path.read_text(), re.M)
            includes[path.relative_to(SOURCE / "src").as_posix()] = found
        done = set()

        def visit(header, way):
            self.assertNotIn(header, way, " -> ".join(way + [header]))
            if header in done:
                return
            for included in includes[header]:
                visit(included, way + [header])
            done.add(header)

        for header in includes:
            visit(header, [])

    def compiles(self, beside, include):
        """Whether a file beside this one, built as it is built, may include the header."""
        path = str(SOURCE / beside)
        commands = json.loads((BUILD / "compile_commands.json").read_text())
        command = next(entry for entry in commands if entry["file"] == path)
        words = shlex.split(command["command"])
        words = words[:words.index("-o")] + ["-fsyntax-only", "-x", "c++"]
        if include.startswith('"'):
            self.assertTrue((SOURCE / "src" / include.strip('"')).exists(), include)
        with tempfile.NamedTemporaryFile("w", suffix=".cpp") as probe:
            probe.write(f"#include {include}\n")
            probe.flush()
            done = subprocess.run(words + [probe.name], cwd=command["directory"],
                                  capture_output=True, text=True)
        if done.returncode != 0:
            self.assertIn("No such file or directory", done.stderr)
        return done.returncode == 0

    def test_an_include_against_the_arrows_does_not_build(self):
        screen = "src/editor/frmMain.cpp"
        self.assertTrue(self.compiles(screen, '"platform/forms/Form.h"'))
        self.assertFalse(self.compiles(screen, "<QWidget>"))
        self.assertFalse(self.compiles(screen, "<QtWidgets/QWidget>"))
        private = next((SOURCE / "src/platform/forms/qt").glob("*.h"))
        self.assertFalse(self.compiles(screen, f'"platform/forms/qt/{private.name}"'))
        self.assertFalse(self.compiles(screen, '"largeeditor/frmMainBig.h"'))
        self.assertTrue(self.compiles(screen, '"platform/adodb/Recordset.h"'))
        self.assertFalse(self.compiles(screen, '"platform/jetsql/Session.h"'))
        self.assertFalse(self.compiles(screen, '"platform/jet/engine/Database.h"'))
        window = "src/platform/forms/qt/Window.cpp"
        self.assertTrue(self.compiles(window, f'"platform/forms/qt/{private.name}"'))
        self.assertFalse(self.compiles(window, '"keyeditor/KeyEditor.h"'))
        store = "src/platform/adodb/Connection.cpp"
        self.assertTrue(self.compiles(store, '"platform/runtime/Variant.h"'))
        self.assertFalse(self.compiles(store, "<QString>"))
        self.assertFalse(self.compiles(store, '"platform/forms/Form.h"'))
        self.assertFalse(self.compiles(store, '"shared/mdMain.h"'))


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
