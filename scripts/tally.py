"""Reads the report of one suite, or what unittest said: shows what failed, prints how many passed and failed.

tally.py REPORT-PATH-WITHOUT-SUFFIX EXIT-CODE
"""

import pathlib
import re
import sys
import xml.etree.ElementTree as ElementTree


def read(report):
    """The names of the passed tests, and (name, output) of the failed ones."""
    passed, failed = [], []
    for case in ElementTree.parse(report).getroot().iter("testcase"):
        name = f"{case.get('classname')}.{case.get('name')}"
        problems = [e.text or e.get("message", "") for e in case if e.tag in ("failure", "error")]
        if problems:
            failed.append((name, "\n".join(problems)))
        elif case.get("status") == "run" and case.get("result") == "completed":
            passed.append(name)
    return passed, failed


def read_words(said):
    """The same of what Python's unittest has said; None when that did not come to its end."""
    if not re.search(r"^Ran \d+ test", said, re.MULTILINE):
        return None
    blocks = re.split(r"^={70}\n", said, flags=re.MULTILINE)[1:]
    return re.findall(r"^(?:.* \.\.\. )?ok$", said, re.MULTILINE), [tuple(b.split("\n", 1)) for b in blocks]


def main():
    base, exit_code = pathlib.Path(sys.argv[1]), int(sys.argv[2])
    said = base.with_suffix(".log").read_text("utf-8", "replace")
    try:
        passed, failed = read_words(said) or read(base.with_suffix(".xml"))
    except (OSError, ElementTree.ParseError) as problem:
        passed, failed = [], []
        end = f"no usable report ({problem})"
    else:
        end = "every test passed, yet it failed" if exit_code and not failed else ""
    if end:
        lines = said.splitlines()
        begun = [line for line in lines if line.startswith("[ RUN")]
        last_words = "\n".join(begun[-1:] + lines[-60:])
        failed.append((base.name, f"{end}, exit code {exit_code}; its last words:\n{last_words}"))
    for name, output in failed:
        print(f"FAILED {name}\n{output.strip()}\n", file=sys.stderr)
    print(f"{base.name}: {len(passed)} of {len(passed) + len(failed)}", file=sys.stderr)
    print(len(passed), len(failed))


if __name__ == "__main__":
    main()
