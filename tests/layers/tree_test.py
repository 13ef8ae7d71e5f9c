#!/usr/bin/env python3
"""The tree is in order: fixtures are listed, nothing knows the machine it was written on. Usage: tree_test.py SOURCE_DIR"""
import pathlib
import re
import subprocess
import sys
import tempfile
import unittest

SOURCE = pathlib.Path()
TEXTS = {".cpp", ".h", ".py", ".md", ".txt", ".TXT", ".cmake", ".json", ".xml", ".desktop", ".yml", ".cue", ""}
# Only paths that some machine really has: a made-up one in a test is none.
TEMPORARY = re.compile(r"(?<![\w$}.])/(?:var/)?tmp/\w")


def unlisted(data):
    """Files of a fixture folder that no README above them (up to that folder) names."""
    missing = []
    for file in sorted(p for p in data.rglob("*") if p.is_file() and p.name not in ("README.md", ".gitattributes")):
        folders = [folder for folder in file.parents if folder == data or data in folder.parents]
        readmes = [folder / "README.md" for folder in folders if (folder / "README.md").is_file()]
        if not any(re.search(rf"(?<![\w.-]){re.escape(file.name)}(?![\w-])", readme.read_text(encoding="utf-8")) for readme in readmes):
            missing.append(file.relative_to(data).as_posix())
    return missing


def tracked(root):
    """The files of the tree that are, or are about to be, under version control."""
    listed = subprocess.run(["git", "-C", str(root), "ls-files", "-z", "--cached", "--others", "--exclude-standard"],
                            check=True, capture_output=True).stdout
    return [root / name.decode() for name in listed.split(b"\0") if name]


def machine_paths(files, root):
    """Lines that name the tree's own place, the user's home, or, outside of tests, a fixed temporary file."""
    own = [str(root.resolve()) + "/", str(pathlib.Path.home()) + "/"]
    found = []
    for file in files:
        if not file.is_file() or file.suffix not in TEXTS:
            continue
        shown = file.relative_to(root).as_posix()
        for number, line in enumerate(file.read_text(encoding="utf-8", errors="replace").splitlines(), 1):
            if any(path in line for path in own) or (not shown.startswith("tests/") and TEMPORARY.search(line)):
                found.append(f"{shown}:{number}: {line.strip()}")
    return found


class TheTree(unittest.TestCase):
    def test_lists_every_fixture_in_a_readme(self):
        self.assertTrue((SOURCE / "tests/data").is_dir())
        self.assertEqual(unlisted(SOURCE / "tests/data"), [])

    def test_names_no_path_of_a_machine(self):
        files = tracked(SOURCE) if (SOURCE / ".git").exists() else []
        if not files:
            self.skipTest("not a checkout")
        self.assertEqual(machine_paths(files, SOURCE), [])

    def test_has_a_readme_in_each_part(self):
        for part in [p for p in (SOURCE / "src").iterdir() if p.is_dir()] + [p for p in (SOURCE / "src/host").iterdir() if p.is_dir()]:
            self.assertTrue((part / "README.md").is_file(), f"{part.relative_to(SOURCE)} has no README.md")


class APlantedFault(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = pathlib.Path(folder.name)

    def write(self, name, text):
        path = self.root / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(text)
        return path

    def test_of_a_fixture_without_a_line_is_found(self):
        self.write("a/known.bin", "")
        self.write("a/unknown.bin", "")
        self.write("a/README.md", "- `known.bin`: made by hand; `xunknown.bin` is another.")
        self.assertEqual(unlisted(self.root), ["a/unknown.bin"])

    def test_of_a_machine_path_is_found(self):
        files = [self.write("docs/a.md", f"see {self.root.resolve()}/docs\n"), self.write("src/b.cpp", '"/tmp/output"\n'),
                 self.write("src/c.cpp", '"$TMP/tmp/output" tests/tmp/x\n')]
        self.assertEqual([line.split(":")[0] for line in machine_paths(files, self.root)], ["docs/a.md", "src/b.cpp"])


if __name__ == "__main__":
    SOURCE = pathlib.Path(sys.argv[1])
    unittest.main(argv=sys.argv[:1])
