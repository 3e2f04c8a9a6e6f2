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
import unittest

SOURCE, BUILD = (pathlib.Path(argument) for argument in sys.argv[1:3])
SRC = SOURCE / "src"

QT_INCLUDE = re.compile(r'^\s*#\s*include\s*[<"](Q[A-Za-z]+|Qt[A-Za-z]*/.*)[>"]', re.M)
TOOLKIT_PROBES = ("<QWidget>", "<QtWidgets/QWidget>", "<QString>")
TOOLKIT_OWNER = "platform/forms"


def read_table():
    """The rows of the table by folder: the folders in its headers, and those in its sources only."""
    table = {}
    for line in (SOURCE / "docs/architecture.md").read_text().splitlines():
        cells = [cell.strip() for cell in line.split("|")]
        if len(cells) == 6 and re.fullmatch(r"`[^`]+`", cells[1]):
            shows, uses = (re.findall(r"`([^`]+)`", cell) for cell in cells[3:5])
            table[cells[1].strip("`")] = (set(shows), set(uses))
    return table


TABLE = read_table()


def read_links():
    """What the build's file says of each library, in the same form as the table."""
    text = re.sub(r"#.*", "", (SRC / "CMakeLists.txt").read_text())
    links, folders = {}, {}
    for call in re.findall(r"keystrand_library\(([^)]*)\)", text):
        name, *words = call.split()
        row = {"FOLDER": [], "SHOWS": [], "USES": [], "INNER": [], "HEADERS": []}
        for word in words:
            if word in row:
                part = row[word]
            else:
                part.append(word)
        folders[name] = row["FOLDER"][0]
        links[name] = (row["SHOWS"], row["USES"])
    main = re.search(r"target_link_libraries\(keystrand PRIVATE ([^)]*)\)", text)[1].split()
    folders["keystrand"], links["keystrand"] = "main.cpp", ([], main)
    return {folders[name]: tuple({folders[each] for each in part if "::" not in each}
                                 for part in parts)
            for name, parts in links.items()}


def owner(path):
    """The folder of the table that a file below src/ belongs to: the longest prefix of its path."""
    return max((folder for folder in TABLE if path == folder or path.startswith(folder + "/")),
               key=len, default=None)


def files(suffixes):
    return sorted(path.relative_to(SRC).as_posix() for path in SRC.rglob("*")
                  if path.suffix in suffixes)


def includes(path):
    """The project's own headers that a file includes."""
    included = re.findall(r'^\s*#\s*include\s*["<]([^">]+)[">]', (SRC / path).read_text(), re.M)
    return [header for header in included if (SRC / header).exists()]


def is_public(header):
    """Whether a header is in its library's own folder, not in a folder inside it."""
    return pathlib.PurePath(header).parent.as_posix() == owner(header)


def reachable(folder):
    """The folders whose public headers the folder may include."""
    found = {folder}
    queue = list(TABLE[folder][0] | TABLE[folder][1])
    while queue:
        library = queue.pop()
        if library not in found:
            found.add(library)
            queue += TABLE[library][0]
    return found


class Layering(unittest.TestCase):
    def test_every_file_belongs_to_a_row_of_the_table(self):
        self.assertGreater(len(TABLE), 10)
        for path in files({".h", ".cpp"}):
            self.assertIsNotNone(owner(path), path)
        for folder, (shows, uses) in TABLE.items():
            self.assertTrue((SRC / folder).exists(), folder)
            self.assertLessEqual(shows | uses, set(TABLE), folder)

    def test_the_table_lists_what_the_sources_include(self):
        included = {folder: set() for folder in TABLE}
        shown = {folder: set() for folder in TABLE}
        for path in files({".h", ".cpp"}):
            others = {owner(header) for header in includes(path)} - {owner(path)}
            included[owner(path)] |= others
            if path.endswith(".h"):
                shown[owner(path)] |= others
        for folder, (shows, uses) in TABLE.items():
            self.assertEqual(shows | uses, included[folder], folder)
            self.assertLessEqual(shows, shown[folder], folder)

    def test_the_build_links_what_the_table_lists(self):
        self.assertEqual(read_links(), TABLE)

    def test_no_circle_of_includes(self):
        done = set()

        def visit(header, way):
            self.assertNotIn(header, way, " -> ".join(way + [header]))
            if header in done:
                return
            for included in includes(header):
                visit(included, way + [header])
            done.add(header)

        for header in files({".h"}):
            visit(header, [])

    def test_toolkit_headers_stand_in_forms_alone(self):
        for top in ("src", "tools"):
            for path in (SOURCE / top).rglob("*"):
                name = path.relative_to(SOURCE).as_posix()
                allowed = (re.fullmatch(r"src/platform/forms/[^/]+\.cpp", name) or
                           name.startswith("src/platform/forms/qt/"))
                if path.suffix in (".h", ".cpp") and not allowed:
                    self.assertNotRegex(path.read_text(), QT_INCLUDE, path)

    def test_each_library_reaches_the_headers_of_its_row_and_no_other(self):
        commands = {}
        for entry in json.loads((BUILD / "compile_commands.json").read_text()):
            path = pathlib.Path(entry["file"])
            if path.is_relative_to(SRC):
                commands.setdefault(owner(path.relative_to(SRC).as_posix()), entry)
        for folder in TABLE:
            with self.subTest(folder):
                self.assertIn(folder, commands)
                self.assertEqual(self.mistakes(folder, commands[folder]), [])

    def mistakes(self, folder, command):
        """Compiles a probe as the folder's own sources are compiled, which looks for every header of
        the project, and returns the compiler's complaints."""
        allowed = reachable(folder)
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
