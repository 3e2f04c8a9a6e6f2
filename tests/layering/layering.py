"""Checks the layers of the libraries: the table of docs/architecture.md, the includes of the sources
and the headers that each library's build can reach must agree.

    layering.py SOURCE-FOLDER BUILD-FOLDER
"""

import json
import os
import pathlib
import re
import shlex
import subprocess
import sys
import tempfile
import typing
import unittest

SOURCE, BUILD = (pathlib.Path(argument) for argument in sys.argv[1:3])
ROOTS = (SOURCE / "src", SOURCE / "tools")

TOOLKIT_PROBES = ("<QWidget>", "<QtWidgets/QWidget>", "<QString>")
TOOLKIT_OWNER = "platform/forms"


class Row(typing.NamedTuple):
    """A row of the table: the folders that its public headers include, those that only its other
    files include, and those that it reaches through the headers of both but doesn't include."""
    shows: set
    uses: set
    reaches: set


def read_table():
    """The rows of the table by folder."""
    table = {}
    for line in (SOURCE / "docs/architecture.md").read_text().splitlines():
        cells = [cell.strip() for cell in line.split("|")]
        if len(cells) == 7 and re.fullmatch(r"`[^`]+`", cells[1]):
            table[cells[1].strip("`")] = Row(*(set(re.findall(r"`([^`]+)`", cell))
                                               for cell in cells[3:6]))
    return table


TABLE = read_table()


def owner(path):
    """The folder of the table that a file below a root belongs to: the longest prefix of its path."""
    return max((folder for folder in TABLE if path == folder or path.startswith(folder + "/")),
               key=len, default=None)


def files(suffixes):
    """The names of the files below the roots, as they are included."""
    return sorted(path.relative_to(root).as_posix() for root in ROOTS for path in root.rglob("*")
                  if path.suffix in suffixes)


def text_of(name):
    return next(root / name for root in ROOTS if (root / name).exists()).read_text()


def includes(path):
    """The project's own headers that a file includes."""
    included = re.findall(r'^\s*#\s*include\s*["<]([^">]+)[">]', text_of(path), re.M)
    return [header for header in included if any((root / header).exists() for root in ROOTS)]


def is_public(header):
    """Whether a header is in its library's own folder, not in a folder inside it."""
    return pathlib.PurePath(header).parent.as_posix() == owner(header)


def reachable(folder):
    """The folders whose public headers a compiler finds for the folder's files."""
    found = {folder}
    queue = list(TABLE[folder].shows | TABLE[folder].uses)
    while queue:
        library = queue.pop()
        if library not in found:
            found.add(library)
            queue += TABLE[library].shows
    return found


class Layering(unittest.TestCase):
    def test_every_file_belongs_to_a_row_of_the_table(self):
        self.assertGreater(len(TABLE), 10)
        for path in files({".h", ".cpp"}):
            self.assertIsNotNone(owner(path), path)
        for folder, row in TABLE.items():
            self.assertTrue(any((root / folder).exists() for root in ROOTS), folder)
            self.assertLessEqual(row.shows | row.uses | row.reaches, set(TABLE), folder)

    def test_quoted_includes_are_paths_from_a_root(self):
        """The other tests would not recognise an include by a path from the including file's own folder."""
        for path in files({".h", ".cpp"}):
            for header in re.findall(r'^\s*#\s*include\s*"([^"]+)"', text_of(path), re.M):
                self.assertNotIn("..", header, path)
                self.assertTrue(any((root / header).exists() for root in ROOTS), f"{path}: {header}")

    def test_the_table_lists_what_the_sources_include(self):
        included = {folder: set() for folder in TABLE}
        shown = {folder: set() for folder in TABLE}
        for path in files({".h", ".cpp"}):
            others = {owner(header) for header in includes(path)} - {owner(path)}
            included[owner(path)] |= others
            if path.endswith(".h") and is_public(path):
                shown[owner(path)] |= others
        for folder, row in TABLE.items():
            with self.subTest(folder):
                self.assertEqual(row.shows, shown[folder])
                self.assertEqual(row.uses, included[folder] - shown[folder])
                self.assertEqual(row.reaches, reachable(folder) - included[folder] - {folder})

    def test_no_include_cycles(self):
        done = set()

        def visit(header, path):
            self.assertNotIn(header, path, " -> ".join(path + [header]))
            if header in done:
                return
            for included in includes(header):
                visit(included, path + [header])
            done.add(header)

        for header in files({".h"}):
            visit(header, [])

    def test_each_library_reaches_the_headers_of_its_row_and_no_other(self):
        commands = {}
        for entry in json.loads((BUILD / "compile_commands.json").read_text()):
            path = pathlib.Path(entry["file"])
            for root in ROOTS:
                if path.is_relative_to(root):
                    commands.setdefault(owner(path.relative_to(root).as_posix()), entry)
        for folder in TABLE:
            with self.subTest(folder):
                self.assertIn(folder, commands)
                self.assertEqual(self.mistakes(folder, commands[folder]), [])

    def mistakes(self, folder, command):
        """Compiles a probe with the options of the folder's own sources. The probe tests for every header
        of the project whether it can be included. Returns the compiler's error messages."""
        allowed = set.union(*TABLE[folder])
        lines = []
        for header in files({".h"}):
            mine = owner(header) == folder
            if mine or (is_public(header) and owner(header) in allowed):
                lines += [f'#if !__has_include("{header}")', f"#error does not reach {header}"]
            else:
                lines += [f'#if __has_include("{header}")', f"#error reaches {header}"]
            lines.append("#endif")
        for header in TOOLKIT_PROBES:
            negation = "!" if folder == TOOLKIT_OWNER else ""
            lines += [f"#if {negation}__has_include({header})", f"#error toolkit: {header}", "#endif"]
        words = shlex.split(command["command"])
        words = words[:words.index("-o")] + ["-fsyntax-only", "-x", "c++"]
        while "-include" in words:  # precompiled headers
            at = words.index("-include")
            del words[at:at + 2]
        with tempfile.NamedTemporaryFile("w", suffix=".cpp") as probe:
            probe.write("\n".join(lines) + "\n")
            probe.flush()
            done = subprocess.run(words + [probe.name], cwd=command["directory"],
                                  env=os.environ | {"LC_ALL": "C"}, capture_output=True, text=True)
        found = re.findall(r"error: (?:#error )?(.*)", done.stderr)
        return found or ([] if done.returncode == 0 else [done.stderr])


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
