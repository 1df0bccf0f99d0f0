#!/usr/bin/env python3
"""Lists the tests that can go without any mutant losing its last killer.

    redundant-tests.py [--suite S ...] [--witnesses] KILLS.json ...

Reads reports of ../shared/tools/mutants.py run with --all-failures, plain
or gzipped (each mutant with every test that failed on it; a mutant in
several reports counts once, from the first). Then, largest test first,
takes a test away when every mutant it kills is still killed by a test
left, and prints what it took: its non-blank, non-comment lines, its file
and name, and how many mutants it kills. A test the reports name that the
tree no longer holds kills nothing. Each --suite names a GoogleTest suite
to take candidates from; a test outside the reports' runs was never asked,
so name only suites they ran. The answer holds for the mutants in the
reports and no others: run every mutant of the files the candidates test
before cutting, and make by hand the faults no mutant makes.

With --witnesses it then prints, for each candidate left, a mutant only it
kills: the kill that cutting it would lose.
"""
import argparse
import collections
import gzip
import json
import os
import re
import subprocess

TEST = re.compile(r"TEST(?:_F|_P)?\((\w+),\s*(\w*)")


def test_sizes(checkout):
    """Each TEST's name, its file and its code lines, from the opening line to the first "}" in column 0."""
    sizes = {}
    # The work tree as it stands: new files counted, deleted ones not.
    listed = subprocess.run(["git", "-C", checkout, "ls-files", "--cached", "--others", "--exclude-standard",
                             "tests"], capture_output=True, text=True, check=True).stdout.split()
    for path in (p for p in listed if p.endswith(".cpp") and os.path.isfile(os.path.join(checkout, p))):
        with open(os.path.join(checkout, path), encoding="utf-8") as source:
            lines = source.read().split("\n")
        for start, line in enumerate(lines):
            match = TEST.match(line)
            if not match:
                continue
            # clang-format puts a long name on the next line.
            name = match.group(2) or lines[start + 1].strip().split(")")[0].rstrip(",")
            end = start
            while not lines[end].startswith("}"):
                end += 1
            stripped = (text.strip() for text in lines[start:end + 1])
            code = [text for text in stripped if text and not text.startswith("//")]
            sizes[match.group(1) + "." + name] = (len(code), path)
    return sizes


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n")[0])
    parser.add_argument("reports", nargs="+")
    parser.add_argument("--suite", action="append", default=[], dest="suites")
    parser.add_argument("--witnesses", action="store_true")
    parser.add_argument("--checkout", default=os.path.join(os.path.dirname(__file__), ".."))
    args = parser.parse_args()

    mutants = {}
    for report in args.reports:
        with (gzip.open if report.endswith(".gz") else open)(report, "rt", encoding="utf-8") as f:
            for mutant in json.load(f)["mutants"]:
                mutants.setdefault(mutant["id"], mutant)
    sizes = test_sizes(args.checkout)
    # A test the reports name that is gone from the tree kills nothing now.
    killers = {key: {t for t in m.get("failed_tests") or [] if "." not in t or t in sizes}
               for key, m in mutants.items()}
    kills = collections.defaultdict(set)
    for key, tests in killers.items():
        for test in tests:
            kills[test].add(key)

    candidates = [t for t in sizes if not args.suites or t.split(".")[0] in args.suites]
    taken = 0
    for test in sorted(candidates, key=lambda t: (-sizes[t][0], t)):
        if all(killers[key] - {test} for key in kills[test]):
            for key in kills[test]:
                killers[key].discard(test)
            taken += sizes[test][0]
            print(f"{sizes[test][0]:4d} {sizes[test][1]} {test} (kills {len(kills[test])})")
    print(f"{len(mutants)} mutants, {sum(m['result'] == 'killed' for m in mutants.values())} killed; "
          f"{taken} test lines can go")
    if args.witnesses:
        # Whatever the loop left kills something no other test left kills.
        for test in sorted(candidates, key=lambda t: (sizes[t][1], t)):
            alone = sorted(key for key in kills[test] if killers[key] == {test})
            if alone:
                more = f" (and {len(alone) - 1} more)" if len(alone) > 1 else ""
                print(f"{sizes[test][0]:4d} {test}: {alone[0]}{more}")


if __name__ == "__main__":
    main()
