#!/usr/bin/env python3
"""The order of the floors holds, and breaking it is noticed. Usage: layers_test.py SOURCE_DIR BUILD_DIR"""
import pathlib
import subprocess
import sys
import tempfile
import unittest

sys.dont_write_bytecode = True
sys.path.insert(0, str(pathlib.Path(__file__).parent))
import layers  # noqa: E402

SOURCE, BUILD = pathlib.Path(), pathlib.Path()


class TheHouse(unittest.TestCase):
    def test_no_include_breaks_the_order(self):
        faults, seen = layers.include_faults(SOURCE / "src")
        self.assertGreater(seen, 20)
        self.assertEqual(faults, [])

    def test_no_symbol_breaks_the_order(self):
        archives = layers.archives_below(BUILD, SOURCE / "src")
        self.assertLess({"base", "shell", "audio"}, set(archives))
        self.assertEqual(layers.symbol_faults(archives), [])

    def test_there_is_no_way_back_down(self):
        for part, others in layers.USES.items():
            for other in others:
                self.assertNotIn(part, layers.USES[other], f"{part} and {other} use each other")


class APlantedInclude(unittest.TestCase):
    def faults(self, path, line):
        with tempfile.TemporaryDirectory() as folder:
            file = pathlib.Path(folder) / path
            file.parent.mkdir(parents=True)
            file.write_text(f"#pragma once\n{line}\n")
            return layers.include_faults(pathlib.Path(folder))[0]

    def test_of_a_higher_floor_is_found(self):
        self.assertEqual(self.faults("base/x.h", '#include "audio/player_state.h"'),
                         ["base/x.h includes audio/player_state.h: base may not use audio."])

    def test_of_a_neighbour_is_found(self):
        self.assertEqual(len(self.faults("library/x.cpp", '#include "volume/levels.h"')), 1)
        self.assertEqual(len(self.faults("host/image/x.cpp", '#include "host/cd/player.h"')), 1)

    def test_of_qt_is_found_in_every_spelling(self):
        for name in ("QString", "QtCore/QString", "QtWidgets", "Qt"):
            self.assertEqual(len(self.faults("shell/x.h", f"#include <{name}>")), 1, name)
        self.assertEqual(len(self.faults("host/files/x.h", "#include <QString>")), 1)
        self.assertEqual(len(self.faults("forms/x.h", '#  include "QObject"')), 1)

    def test_of_a_device_library_is_found_below_the_adapters(self):
        for name in ("cdio/cdio.h", "libcue.h", "libcue/libcue.h", "sndfile.h", "pulse/pulseaudio.h", "xcb/xcb.h", "mpv/client.h",
                     "fluidsynth.h"):
            self.assertEqual(len(self.faults("audio/device/x.cpp", f"#include <{name}>")), 1, name)

    def test_that_is_relative_or_unknown_is_found(self):
        self.assertEqual(len(self.faults("shell/x.h", '#include "x.h"')), 1)
        self.assertEqual(len(self.faults("shell/x.h", '#include "../audio/x.h"')), 1)
        self.assertEqual(len(self.faults("cellar/x.h", "#include <string>")), 1)

    def test_that_is_in_order_passes(self):
        self.assertEqual(self.faults("audio/x.h", '#include "library/disc_record.h"'), [])
        self.assertEqual(self.faults("ui/x.h", "#include <QWidget>"), [])
        self.assertEqual(self.faults("host/image/x.h", "#include <cdio/cdio.h>"), [])
        self.assertEqual(self.faults("base/x.h", "#include <queue>"), [])


class APlantedSymbol(unittest.TestCase):
    def library(self, folder, part, source):
        unit, code = folder / "unit.o", folder / "unit.cpp"
        code.write_text(source)
        archive = folder / layers.library_name(part)
        subprocess.run(["c++", "-c", code, "-o", unit], check=True)
        subprocess.run(["ar", "rcs", archive, unit], check=True)
        return archive

    def faults(self, **sources):
        with tempfile.TemporaryDirectory() as folder:
            return layers.symbol_faults({part: self.library(pathlib.Path(folder), part, code) for part, code in sources.items()})

    def test_of_a_higher_floor_is_found(self):
        faults = self.faults(base="void play(); void tick() { play(); }", audio="void play() {}")
        self.assertEqual(faults, ["libtessarel_base.a needs play(): base may not use audio."])

    def test_of_qt_or_a_device_library_is_found(self):
        self.assertEqual(len(self.faults(shell="class QObject { public: void go(); }; void f(QObject& o) { o.go(); }")), 1)
        for name in ("cdio_open", "pa_stream_new", "sf_open", "xcb_connect", "cue_parse_string", "mpv_create"):
            self.assertEqual(len(self.faults(apps=f'extern "C" void {name}(); void f() {{ {name}(); }}')), 1, name)

    def test_that_is_in_order_passes(self):
        self.assertEqual(self.faults(base="void tick() {}", audio='void tick(); extern "C" void abort(); void f() { tick(); abort(); }'), [])


if __name__ == "__main__":
    SOURCE, BUILD = (pathlib.Path(argument) for argument in sys.argv[1:3])
    unittest.main(argv=sys.argv[:1])
