#!/usr/bin/env python3
"""Counts the test cases of one ctest run for scripts/test.sh.

    count_results.py JUNIT [--cases TEST=GTEST_XML]... [--setup TEST]...

JUNIT is the file of `ctest --output-junit`. A test named with --cases is one GoogleTest program
run as a whole; its cases are counted from the program's own XML report (--gtest_output=xml,
removed by the caller before the run) instead of as one test. A program that failed without
failing cases (a crash, a time-out, no report) counts as one failure more. A --setup test (a
fixture) is counted only when it fails.

Prints each failed case, then a last line "PASSED FAILED SKIPPED". Exit status 2 when the JUnit
file is missing or unreadable.
"""
import argparse
import os
import sys
import xml.etree.ElementTree as ET


def gtest_cases(path):
    """(passed, failed names, skipped) of a GoogleTest XML report."""
    passed, failed, skipped = 0, [], 0
    for case in ET.parse(path).getroot().iter("testcase"):
        name = f"{case.get('classname')}.{case.get('name')}"
        if case.find("failure") is not None or case.find("error") is not None:
            failed.append(name)
        elif (case.get("status") == "notrun" or case.get("result") in ("skipped", "suppressed")
              or case.find("skipped") is not None):
            skipped += 1
        else:
            passed += 1
    return passed, failed, skipped


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("junit")
    parser.add_argument("--cases", action="append", default=[], metavar="TEST=GTEST_XML")
    parser.add_argument("--setup", action="append", default=[], metavar="TEST")
    args = parser.parse_args()
    expand = dict(item.split("=", 1) for item in args.cases)

    try:
        root = ET.parse(args.junit).getroot()
    except (OSError, ET.ParseError) as error:
        print(f"no ctest results: {error}")
        return 2

    passed, failed, skipped = 0, [], 0
    for test in root.iter("testcase"):
        name = test.get("name")
        # ctest marks a test that failed or could not start (missing program, failed fixture)
        # with <failure>; a disabled one with <skipped>.
        test_failed = test.find("failure") is not None or test.get("status") in ("fail", "notrun")
        test_skipped = not test_failed and test.find("skipped") is not None
        if name in expand:
            report = expand[name]
            cases = None
            if os.path.exists(report):
                try:
                    cases = gtest_cases(report)
                except ET.ParseError:
                    cases = None
            if cases is not None:
                passed += cases[0]
                failed += [f"{name}: {case}" for case in cases[1]]
                skipped += cases[2]
                if test_failed and not cases[1]:
                    failed.append(f"{name}: the program failed outside its test cases")
                continue
            if test_failed or test_skipped:
                failed.append(f"{name}: no report of its cases")
            else:
                failed.append(f"{name}: passed but wrote no report {report}")
            continue
        if test_failed:
            failed.append(name)
        elif test_skipped:
            skipped += 1
        elif name not in args.setup:
            passed += 1

    for name in failed:
        print(f"FAILED {name}")
    print(passed, len(failed), skipped)
    return 0


if __name__ == "__main__":
    sys.exit(main())
