"""Disc images for the system tests, of noise: no two samples' surroundings are alike, so that each tells its own place."""
import dataclasses
import pathlib
import random
import subprocess
import wave

from harness import FRAME, FRAMES_PER_SECOND


def noise(frames, seed):
    """Sound of a number of CD frames. The same seed gives the same noise."""
    return random.Random(seed).randbytes(frames * FRAME)


def msf(frames):
    return f"{frames // 4500:02}:{frames // FRAMES_PER_SECOND % 60:02}:{frames % FRAMES_PER_SECOND:02}"


@dataclasses.dataclass
class Disc:
    cue: pathlib.Path
    sound: bytes  # from the first track's start to the last audio track's end
    starts: list  # offset of each track in `sound`


def gapped_disc(folder, seconds=(6, 7, 6, 8), gap_seconds=2, seed=1):
    """One BIN whose tracks, but the first, are preceded by a gap that sounds too."""
    gap = gap_seconds * FRAMES_PER_SECOND
    lines, sound, starts = ['FILE "gapped.bin" BINARY'], b"", []
    for number, length in enumerate(seconds, 1):
        lines.append(f"  TRACK {number:02} AUDIO")
        if number > 1 and gap:
            lines.append(f"    INDEX 00 {msf(len(sound) // FRAME)}")
            sound += noise(gap, (seed, number, "gap").__repr__())
        starts.append(len(sound))
        lines.append(f"    INDEX 01 {msf(len(sound) // FRAME)}")
        sound += noise(length * FRAMES_PER_SECOND + number, (seed, number).__repr__())
    return _write(folder, "gapped", lines, {"gapped.bin": sound}, sound, starts)


def steady_disc(folder, seconds=60, value=28672):
    """One track of one loud value, in which every change of the level shows."""
    frames = seconds * FRAMES_PER_SECOND
    sound = value.to_bytes(2, "little") * (frames * FRAME // 2)
    lines = ['FILE "steady.bin" BINARY', "  TRACK 01 AUDIO", "    INDEX 01 00:00:00"]
    return _write(folder, "steady", lines, {"steady.bin": sound}, sound, [0])


def disc_of_files(folder, seconds=(6, 7, 6), pregap_seconds=2):
    """A file for each track, WAV and FLAC in turn; from the second track on each has a pregap that no file holds."""
    pregap = pregap_seconds * FRAMES_PER_SECOND
    lines, sound, starts = [], b"", []
    for number, length in enumerate(seconds, 1):
        track = noise(length * FRAMES_PER_SECOND + number, f"file {number}")
        name = f"track{number}.wav"
        with wave.open(str(folder / name), "wb") as out:
            out.setparams((2, 2, 44100, 0, "NONE", ""))
            out.writeframes(track)
        if number % 2 == 0:
            subprocess.run(["flac", "--silent", "--delete-input-file", str(folder / name)], check=True, timeout=60)
            name = f"track{number}.flac"
        lines += [f'FILE "{name}" WAVE', f"  TRACK {number:02} AUDIO"]
        if number > 1:
            lines.append(f"    PREGAP {msf(pregap)}")
            sound += bytes(pregap * FRAME)
        starts.append(len(sound))
        lines.append("    INDEX 01 00:00:00")
        sound += track
    return _write(folder, "files", lines, {}, sound, starts)


def disc_with_data_at_its_end(folder, seconds=(6, 6, 7), data_seconds=8):
    """Audio tracks, and a data track behind them whose bytes would be heard as noise."""
    lines, sound, starts = ['FILE "mixed.bin" BINARY'], b"", []
    for number, length in enumerate(seconds, 1):
        starts.append(len(sound))
        lines += [f"  TRACK {number:02} AUDIO", f"    INDEX 01 {msf(len(sound) // FRAME)}"]
        sound += noise(length * FRAMES_PER_SECOND + number, f"mixed {number}")
    frames = len(sound) // FRAME
    lines += [f"  TRACK {len(seconds) + 1:02} MODE1/2352", f"    INDEX 01 {msf(frames)}"]
    data = b"".join(_data_sector(frames + i) for i in range(data_seconds * FRAMES_PER_SECOND))
    return _write(folder, "mixed", lines, {"mixed.bin": sound + data}, sound, starts)


def _data_sector(address):
    """A raw sector with its sync pattern and address; what it holds is noise."""
    def bcd(number):
        return number // 10 << 4 | number % 10
    at = address + 2 * FRAMES_PER_SECOND
    head = bytes([bcd(at // 4500), bcd(at // FRAMES_PER_SECOND % 60), bcd(at % FRAMES_PER_SECOND), 1])
    return b"\0" + b"\xff" * 10 + b"\0" + head + random.Random(f"data {address}").randbytes(FRAME - 16)


def _write(folder, name, lines, files, sound, starts):
    for file, content in files.items():
        (folder / file).write_bytes(content)
    cue = folder / f"{name}.cue"
    cue.write_text("\r\n".join(lines) + "\r\n", encoding="utf-8", newline="")
    return Disc(cue, sound, starts)
