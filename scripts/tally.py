"""Reads one test program's report: shows what failed, and prints the numbers of passed and failed tests.

tally.py REPORT-PATH-WITHOUT-SUFFIX EXIT-CODE
"""

import pathlib
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


def main():
    base, exit_code = pathlib.Path(sys.argv[1]), int(sys.argv[2])
    log = base.with_suffix(".log")
    try:
        passed, failed = read(base.with_suffix(".xml"))
    except (OSError, ElementTree.ParseError) as problem:
        passed, failed = [], []
        end = f"no usable report ({problem})"
    else:
        end = "every test passed, yet it failed" if exit_code and not failed else ""
    if end:
        lines = log.read_text("utf-8", "replace").splitlines()
        begun = [line for line in lines if line.startswith("[ RUN")]
        last_words = "\n".join(begun[-1:] + lines[-60:])
        failed.append((base.name, f"{end}, exit code {exit_code}; its last words:\n{last_words}"))
    for name, output in failed:
        print(f"FAILED {name}\n{output.strip()}\n", file=sys.stderr)
    print(f"{base.name}: {len(passed)} of {len(passed) + len(failed)}", file=sys.stderr)
    print(len(passed), len(failed))


if __name__ == "__main__":
    main()
