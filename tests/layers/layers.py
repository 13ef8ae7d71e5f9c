"""The order of the floors, and what breaks it: includes in the sources, symbols in the built libraries."""
import pathlib
import re
import subprocess

# Each part of the house with the parts that it may use besides itself. A name with a slash is one library of the adapters;
# "host" alone is what those share.
USES = {
    "base": set(),
    "platform": {"base"},
    "forms": {"platform", "base"},
    "shell": {"forms", "platform", "base"},
    "library": {"shell", "forms", "platform", "base"},
    "volume": {"shell", "forms", "platform", "base"},
    "audio": {"library", "volume", "shell", "forms", "platform", "base"},
    "apps": {"audio", "library", "volume", "shell", "forms", "platform", "base"},
    "host": {"platform", "base"},
    "host/image": {"host", "platform", "base"},
    "host/cd": {"host", "platform", "base"},
    "host/files": {"host", "host/image", "platform", "base"},
    "host/desktop": {"host", "host/image", "host/cd", "host/files", "forms", "platform", "base"},
}
CORE = {"base", "platform", "forms", "shell", "library", "volume", "audio", "apps"}
USES["ui"] = CORE | {"host", "host/image", "host/cd", "host/files", "host/desktop"}
USES["app"] = USES["ui"] | {"ui"}

QT_HEADER = re.compile(r"^Q(t|[A-Z]\w*|t[A-Z]\w*)(/|$)|\.moc$|^(moc|ui)_")
DEVICE_HEADER = re.compile(r"^(cdio|pulse|xcb|X11|mpv|libcue)/|^(libcue|sndfile|sndfile\.hh|fluidsynth)(\.h)?$")
MAY_USE_QT = {"host/desktop", "ui", "app"}
MAY_USE_DEVICES = {"host", "host/image", "host/cd", "host/files", "host/desktop", "ui", "app"}
FOREIGN_SYMBOL = re.compile(r"\bQ[A-Z]\w*::|\bqt_|\b(cdio|pa|sf|xcb|cue|cd|track|iso9660|mpv|fluid)_[a-z]\w*$")

INCLUDE = re.compile(r'^\s*#\s*include\s*([<"])([^>"]+)[>"]', re.MULTILINE)


def part_of(relative):
    """The part that a path below src belongs to; None for one in no part."""
    parts = pathlib.PurePosixPath(relative).parts
    if len(parts) > 2 and parts[0] == "host":
        return f"host/{parts[1]}"
    return parts[0] if len(parts) > 1 else None


def include_faults(source_root):
    """What is wrong with the includes below a src folder, one sentence each."""
    faults, seen = [], 0
    for path in sorted(p for p in source_root.rglob("*") if p.suffix in (".cpp", ".h")):
        seen += 1
        relative = path.relative_to(source_root).as_posix()
        part = part_of(relative)
        if part not in USES:
            faults.append(f"{relative} lies in no known part.")
            continue
        for bracket, name in INCLUDE.findall(path.read_text(encoding="utf-8")):
            faults += include_fault(relative, part, bracket, name)
    return faults, seen


def include_fault(relative, part, bracket, name):
    if QT_HEADER.match(name) and part not in MAY_USE_QT:
        return [f"{relative} includes {name} of Qt."]
    if DEVICE_HEADER.match(name) and part not in MAY_USE_DEVICES:
        return [f"{relative} includes {name} of a device library."]
    if bracket == "<" or QT_HEADER.match(name):
        return []
    other = part_of(name)
    if other not in USES:
        return [f"{relative} includes {name}, which is no path from src on."]
    if other != part and other not in USES[part]:
        return [f"{relative} includes {name}: {part} may not use {other}."]
    return []


def nm(archive, *options):
    done = subprocess.run(["nm", "--quiet", *options, str(archive)], check=True, capture_output=True, text=True)
    return [line.split() for line in done.stdout.splitlines()]


def defined_in(archive):
    """Symbols with a definition of their own; what any user of a header may carry too is left out."""
    return {fields[2] for fields in nm(archive, "--defined-only") if len(fields) == 3 and fields[1] in "TDBR"}


def undefined_in(archive):
    return {fields[1] for fields in nm(archive, "--undefined-only") if len(fields) == 2 and fields[0] == "U"}


def demangled(symbol):
    return subprocess.run(["c++filt", symbol], check=True, capture_output=True, text=True).stdout.strip()


def symbol_faults(archives):
    """What is wrong with the symbols of libraries, given as {part: archive}, one sentence each."""
    owner = {symbol: part for part, archive in archives.items() for symbol in defined_in(archive)}
    faults = []
    for part, archive in sorted(archives.items()):
        for symbol in sorted(undefined_in(archive)):
            other = owner.get(symbol)
            if other is not None and other != part and other not in USES[part]:
                faults.append(f"{archive.name} needs {demangled(symbol)}: {part} may not use {other}.")
            elif part in CORE and other is None and FOREIGN_SYMBOL.search(demangled(symbol)):
                faults.append(f"{archive.name} needs {demangled(symbol)} of a library that it must not know.")
    return faults


def library_name(part):
    return f"libtessarel_{part.rpartition('/')[2]}.a"


def archives_below(build_root, source_root):
    """{part: archive} of all parts that have a source; raises FileNotFoundError when one was not built."""
    archives = {}
    for part in USES:
        if part in ("app", "host") or not any((source_root / part).glob("*.cpp")):
            continue
        archive = build_root / "src" / part / library_name(part)
        if not archive.is_file():
            raise FileNotFoundError(f"{archive} has not been built")
        archives[part] = archive
    return archives
