"""Runs the Python tests in one folder beside this file and writes a JUnit report: run.py FOLDER REPORT.xml [FILTER]

./test starts it; for end_to_end with a screen and a Wine prefix in its environment.
"""

import pathlib
import re
import sys
import time
import unittest
import xml.etree.ElementTree as ElementTree


class Report(unittest.TextTestResult):
    def __init__(self, *arguments, **named):
        super().__init__(*arguments, **named)
        self.suite = ElementTree.Element("testsuite", name="python")

    def startTest(self, test):
        super().startTest(test)
        self._begin()

    def _begin(self):
        self.began = time.monotonic()
        self.outcome = "completed"
        self.problems = []

    def addError(self, test, error):
        super().addError(test, error)
        if isinstance(test, unittest.TestCase):
            self.problems.append(self._exc_info_to_string(error, test))
        else:  # what comes before a class has failed: none of its tests is even started
            self._begin()
            self.problems.append(self._exc_info_to_string(error, test))
            self._write(test)

    def addFailure(self, test, error):
        super().addFailure(test, error)
        self.problems.append(self._exc_info_to_string(error, test))

    def addSubTest(self, test, subtest, error):
        super().addSubTest(test, subtest, error)
        if error:
            self.problems.append(f"{subtest}\n{self._exc_info_to_string(error, test)}")

    def addSkip(self, test, reason):
        super().addSkip(test, reason)
        self.outcome = "skipped"

    def stopTest(self, test):
        super().stopTest(test)
        self._write(test)

    def _write(self, test):
        class_name, _, name = test.id().rpartition(".")
        case = ElementTree.SubElement(self.suite, "testcase", classname=class_name, name=name, status="run",
                                      result=self.outcome, time=f"{time.monotonic() - self.began:.2f}")
        for problem in self.problems:
            ElementTree.SubElement(case, "failure").text = re.sub(r"[^\t\n\x20-\uD7FF\uE000-\U0010FFFF]", "?", problem)


def main():
    folder, report, pattern = (*sys.argv[1:], "")[:3]
    loader = unittest.TestLoader()
    if pattern:
        loader.testNamePatterns = [f"*{pattern}*"]
    tests = loader.discover(str(pathlib.Path(__file__).parent / folder))
    runner = unittest.TextTestRunner(resultclass=Report, verbosity=2)
    result = runner.run(tests)
    ElementTree.ElementTree(result.suite).write(report, "utf-8", xml_declaration=True)
    return 0 if result.wasSuccessful() else 1


if __name__ == "__main__":
    sys.exit(main())
