#!/usr/bin/python3
"""Counts the results of a test run and prints them as the last line: "N passed, N failed, N
skipped".

    tally.py PROGRAMS.xml CASES-FOLDER WINDOWS.xml

PROGRAMS.xml is CTest's report. A test program that wrote its own report into the folder counts by
its cases. A program without a report counts as one case. A program that failed although its report
has no failure counts as a failed case. WINDOWS.xml is the report of the tests with real windows. A
report that is missing or can't be read is a failure. The status is 0 only if something passed,
nothing failed and nothing was skipped.
"""

import pathlib
import sys
import xml.etree.ElementTree as xml


class Tally:
    def __init__(self):
        self.passed = self.failed = self.skipped = 0
        self.failures = []

    def fail(self, name):
        self.failed += 1
        self.failures.append(name)

    def count(self, report, prefix):
        """Counts the cases of one report; true if one of them failed."""
        before = self.failed
        for case in report.iter("testcase"):
            name = f"{prefix}{case.get('classname', '')}.{case.get('name')}"
            if case.get("status") in ("notrun", "disabled"):
                continue
            if case.find("failure") is not None or case.find("error") is not None:
                self.fail(name)
            elif case.find("skipped") is not None:
                self.skipped += 1
            else:
                self.passed += 1
        return self.failed > before


def read(path):
    try:
        return xml.parse(path).getroot()
    except (OSError, xml.ParseError):
        return None


def main(programs, cases, windows):
    tally = Tally()
    listed = read(programs)
    if listed is None:
        tally.fail(f"no report: {programs}")
    for program in listed.iter("testcase") if listed is not None else ():
        name = program.get("name")
        skipped = program.find("skipped")
        # CTest reports a program that it can't find as skipped, too; only the message tells the two apart.
        bad = (program.get("status") not in ("run", "notrun", "disabled") or
               (skipped is not None and "Unable to find" in skipped.get("message", "")))
        own = read(pathlib.Path(cases) / f"{name}.xml")
        if own is not None:
            if not tally.count(own, f"{name}: ") and bad:
                tally.fail(f"{name} (the program)")
        elif bad:
            tally.fail(name)
        elif skipped is not None:
            tally.skipped += 1
        else:
            tally.passed += 1
    window_report = read(windows)
    if window_report is None:
        tally.fail(f"no report: {windows}")
    else:
        tally.count(window_report, "real windows: ")
    for name in tally.failures:
        print(f"failed: {name}")
    print(f"{tally.passed} passed, {tally.failed} failed, {tally.skipped} skipped")
    return 0 if tally.passed and not tally.failed and not tally.skipped else 1


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:4]))
