"""Runs the tests of a script and tells of them: on the screen, in a last line of counts, and in a report of one entry a test.

Each script is called as: SCRIPT PROGRAM [REPORT.xml] [name of a test ...]
"""
import pathlib
import sys
import time
import unittest
import xml.etree.ElementTree as ElementTree


class _Result(unittest.TestResult):
    def __init__(self):
        super().__init__()
        self.entries = []  # (group, name, seconds, what went wrong or None)

    def startTest(self, test):
        super().startTest(test)
        self._began = time.monotonic()

    def _note(self, test, wrong):
        group, name = type(test).__name__, getattr(test, "_testMethodName", str(test))
        self.entries.append((group, name.removeprefix("test_"), time.monotonic() - getattr(self, "_began", time.monotonic()), wrong))
        print(f"[{'  FAILED  ' if wrong else '       OK '}] {group}.{name.removeprefix('test_')} ({self.entries[-1][2]:.1f} s)",
              flush=True)
        if wrong:
            print(wrong, flush=True)

    def addSkip(self, test, reason):
        super().addSkip(test, reason)
        print(f"[  SKIPPED ] {test.id()}: {reason}", flush=True)

    def addSuccess(self, test):
        self._note(test, None)

    def addSubTest(self, test, subtest, err):
        super().addSubTest(test, subtest, err)
        if err is not None:
            wrongs = self.failures if issubclass(err[0], test.failureException) else self.errors
            self._note(test, subtest._subDescription() + "\n" + wrongs[-1][1])

    def addFailure(self, test, err):
        super().addFailure(test, err)
        self._note(test, self.failures[-1][1])

    def addError(self, test, err):
        super().addError(test, err)
        self._note(test, self.errors[-1][1])


def program():
    """The program under test, as the command line names it."""
    return pathlib.Path(sys.argv[1]).resolve()


def main():
    if len(sys.argv) < 2:
        sys.exit(__doc__)
    reports = [word for word in sys.argv[2:] if word.endswith(".xml")]
    names = [word for word in sys.argv[2:] if not word.endswith(".xml")]
    loader = unittest.TestLoader()
    loader.testNamePatterns = [f"*{name}*" for name in names] or None
    result = _Result()
    loader.loadTestsFromModule(sys.modules["__main__"]).run(result)
    failed = sum(wrong is not None for *_, wrong in result.entries)
    for report in reports:
        _write(pathlib.Path(report), result.entries)
    print(f"{len(result.entries) - failed} passed, {failed} failed")
    sys.exit(1 if failed or not result.entries else 0)


def _write(path, entries):
    root = ElementTree.Element("testsuites")
    suite = ElementTree.SubElement(root, "testsuite", name=path.stem)
    for group, name, seconds, wrong in entries:
        case = ElementTree.SubElement(suite, "testcase", name=name, classname=f"{path.stem}.{group}", status="run",
                                      time=f"{seconds:.3f}")
        if wrong:
            ElementTree.SubElement(case, "failure", message=wrong.strip().splitlines()[-1]).text = wrong
    path.parent.mkdir(parents=True, exist_ok=True)
    ElementTree.ElementTree(root).write(path, encoding="utf-8", xml_declaration=True)
