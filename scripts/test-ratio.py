#!/usr/bin/env python3
"""Prints the lines of tests against the lines of the product.

    test-ratio.py [CHECKOUT]

Counts the work tree's files (tracked and new, not ignored): their non-blank
lines that are not wholly comment, of C, C++ and Objective-C++ (// and /* */
comments) and scripts (# comments)
under tests/, against the same under core/, icu/, linux/ and macos/. Tests
are meant to stay at a third of the product or below; whoever changes them
sees the ratio at the end of scripts/test.sh.
"""
import os
import subprocess
import sys

PRODUCT = ("core/", "icu/", "linux/", "macos/")
C_LIKE = (".h", ".hpp", ".c", ".cc", ".cpp", ".mm", ".js")
SCRIPTS = (".py", ".sh")


def code_lines(path):
    """Non-blank lines with something besides comment on them."""
    count, in_block = 0, False
    c_like = path.endswith(C_LIKE)
    with open(path, encoding="utf-8", errors="replace") as text:
        for line in text:
            line = line.strip()
            if not c_like:
                count += bool(line) and not line.startswith("#")
                continue
            code = ""
            while line:
                if in_block:
                    end = line.find("*/")
                    if end < 0:
                        line = ""
                    else:
                        in_block, line = False, line[end + 2:]
                elif line.startswith("//"):
                    line = ""
                elif line.startswith("/*"):
                    in_block, line = True, line[2:]
                else:
                    code += line[0]
                    line = line[1:]
            count += bool(code.strip())
    return count


def main():
    checkout = sys.argv[1] if len(sys.argv) > 1 else os.path.join(os.path.dirname(__file__), "..")
    # The work tree as it stands: new files counted, deleted ones not.
    files = [f for f in subprocess.run(["git", "-C", checkout, "ls-files", "--cached", "--others",
                                        "--exclude-standard"], capture_output=True, text=True,
                                       check=True).stdout.split()
             if os.path.isfile(os.path.join(checkout, f))]
    tests = sum(code_lines(os.path.join(checkout, f)) for f in files
                if f.startswith("tests/") and f.endswith(C_LIKE + SCRIPTS))
    product = sum(code_lines(os.path.join(checkout, f)) for f in files
                  if f.startswith(PRODUCT) and f.endswith(C_LIKE))
    print("tests: %d lines, product: %d lines, ratio %.2f (non-blank, non-comment lines; see CONTRIBUTING.md)"
          % (tests, product, tests / product if product else 0.0))


if __name__ == "__main__":
    main()
