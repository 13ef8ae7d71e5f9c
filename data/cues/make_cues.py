#!/usr/bin/env python3
"""Makes the program's six short sounds: make_cues.py OUTDIR. 44100 Hz, 16 bit, mono; the same bytes every time."""
import array
import math
import pathlib
import random
import sys
import wave

RATE = 44100


def tone(seconds, pitch, decay, level=0.5, partials=((1, 1.0),)):
    """A struck tone. `pitch` is in Hz, or a function of the fraction of the time gone by; `decay` is its half life."""
    phase, out = 0.0, []
    for i in range(int(seconds * RATE)):
        t = i / RATE
        frequency = pitch(t / seconds) if callable(pitch) else pitch
        phase += 2 * math.pi * frequency / RATE
        strength = level * 0.5 ** (t / decay) * min(1, t / 0.002)
        out.append(strength * sum(part * math.sin(phase * multiple) for multiple, part in partials))
    return out


def breath(seconds, dark, level, shape, seed):
    """Soft noise. `dark` (0 to 1, or a function of the time's fraction) is how far it is filtered; `shape` its loudness."""
    noise, held, out = random.Random(seed), 0.0, []
    count = int(seconds * RATE)
    for i in range(count):
        at = i / count
        keep = dark(at) if callable(dark) else dark
        held = keep * held + (1 - keep) * noise.uniform(-1, 1)
        out.append(level * shape(at) * held)
    return out


def mix(*parts):
    """Parts are (start in seconds, samples)."""
    out = [0.0] * max(int(start * RATE) + len(samples) for start, samples in parts)
    for start, samples in parts:
        first = int(start * RATE)
        for i, sample in enumerate(samples):
            out[first + i] += sample
    return out


def swell(at):
    return math.sin(math.pi * at) ** 2


def fade(at):
    return (1 - at) ** 3


WOOD = ((1, 1.0), (2.76, 0.35), (5.4, 0.12))
BELL = ((1, 1.0), (2, 0.4), (3.01, 0.18))


def cues():
    return {
        "click.wav": mix((0, tone(0.07, 1150, 0.009, 0.42, WOOD)), (0, breath(0.012, 0.3, 0.22, fade, 1))),
        "minimize.wav": mix((0, tone(0.26, lambda at: 880 * 2 ** (-1.1 * at), 0.08, 0.3, BELL)),
                            (0, breath(0.24, lambda at: 0.7 + 0.25 * at, 0.5, swell, 2))),
        "XXXXXXXX.wav": tone(0.09, 520, 0.018, 0.3),
        "click1.wav": mix((0, tone(0.12, 430, 0.02, 0.5, WOOD)), (0.055, tone(0.16, 310, 0.028, 0.4, WOOD)),
                          (0, breath(0.02, 0.5, 0.25, fade, 3))),
        "mixer.wav": mix((0, tone(0.3, 523.25, 0.07, 0.26, BELL)), (0.08, tone(0.3, 659.26, 0.08, 0.26, BELL))),
        "opendraw.wav": mix((0, breath(0.34, lambda at: 0.93 - 0.12 * at, 1.3, swell, 4)),
                            (0, tone(0.34, lambda at: 95 + 60 * at, 0.3, 0.12, ((1, 1.0), (2, 0.5), (3, 0.3)))),
                            (0.32, tone(0.08, 240, 0.014, 0.45, WOOD))),
    }


def settle(samples):
    """Samples with their last hundredth of a second brought to nothing, so that no cue ends in a snap."""
    tail = RATE // 100
    return [sample * min(1, (len(samples) - i - 1) / tail) for i, sample in enumerate(samples)]


def write(path, samples):
    with wave.open(str(path), "wb") as out:
        out.setnchannels(1)
        out.setsampwidth(2)
        out.setframerate(RATE)
        values = array.array("h", (max(-32767, min(32767, round(32767 * sample))) for sample in settle(samples)))
        if sys.byteorder == "big":
            values.byteswap()
        out.writeframes(values.tobytes())


def main():
    if len(sys.argv) != 2:
        sys.exit("usage: make_cues.py OUTDIR")
    out = pathlib.Path(sys.argv[1])
    out.mkdir(parents=True, exist_ok=True)
    for name, samples in cues().items():
        write(out / name, samples)


main()
