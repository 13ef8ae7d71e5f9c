"""Scores as compact text, and the MIDI files made of them.

A voice is a text of bars between "|". A token is a note, a chord of notes joined by "+", a rest "r", or "-" for the note
before going on (over a bar line, say), then an optional length that holds until the next one: "E5:8" is an eighth, "4." a dotted quarter, "2&8" a half and an eighth tied.
Marks at the end: "'" short, "^" accented, "_" held through to the end of its bar (as with the pedal).
Every bar is checked against the metre, so that a slip of the pen is an error and not a limp in the music.
"""
import dataclasses
import re
import struct
import zlib

TICKS = 480  # to a quarter
STEPS = {"C": 0, "D": 2, "E": 4, "F": 5, "G": 7, "A": 9, "B": 11}
NOTE = re.compile(r"^([A-G])([#b]?)(\d)$")
TOKEN = re.compile(r"^(?P<what>r|-|[A-G0-9#b+]+)(?::(?P<length>[0-9.&]+))?(?P<marks>['^_]*)$")


@dataclasses.dataclass
class Voice:
    """One line of music. `program` counts General MIDI instruments from 0; `level` is added to the piece's dynamics."""
    text: str
    program: int = 0
    pan: int = 64
    level: int = 0
    first_bar: int = 1


@dataclasses.dataclass
class Piece:
    """`bar` is in quarters, `pickup` the quarters before bar 1. `tempo` (quarters a minute), `dynamics` (velocity) are
    (bar, value) points with straight lines between. `pedal` is how often, in quarters, the pedal is changed; 0 is none."""
    title: str
    composer: str
    bar: float
    voices: list
    tempo: list
    dynamics: list
    pickup: float = 0
    pedal: float = 0
    reverb: float = 0.5
    last_hold: float = 1.0  # seconds of sound kept for the last note to die away in


@dataclasses.dataclass
class Note:
    start: int
    length: int
    pitch: int
    velocity: int
    channel: int


def pitch(name):
    match = NOTE.match(name)
    if not match:
        raise ValueError(f"no note: {name!r}")
    step, accidental, octave = match.groups()
    return 12 * (int(octave) + 1) + STEPS[step] + {"#": 1, "b": -1, "": 0}[accidental]


def ticks(length):
    total = 0
    for part in length.split("&"):
        plain = part.rstrip(".")
        base = 4 * TICKS // int(plain)
        total += base * 3 // 2 if part.endswith(".") else base
    return total


def at(points, position):
    """The value at a position (in bars) of a line through points."""
    if position <= points[0][0]:
        return points[0][1]
    for (x0, y0), (x1, y1) in zip(points, points[1:]):
        if position < x1:
            return y0 + (y1 - y0) * (position - x0) / (x1 - x0)
    return points[-1][1]


def wobble(*key):
    """A small number in -1 to 1 that is always the same for the same key: the hand of a player."""
    return zlib.crc32(repr(key).encode()) / 0x7FFFFFFF - 1


def bars_of(piece, voice):
    """(start tick, bar number, ticks, tokens) of each bar of a voice."""
    bar_ticks = round(piece.bar * TICKS)
    pickup = round(piece.pickup * TICKS)
    for index, text in enumerate(voice.text.strip().strip("|").split("|")):
        number = voice.first_bar + index - (1 if pickup and voice.first_bar == 1 else 0)
        start = pickup + (number - 1) * bar_ticks if number >= 1 else 0
        yield start, number, pickup if number < 1 else bar_ticks, text.split()


def notes_of(piece, voice, channel):
    """The notes of one voice; raises ValueError for a bar that is not full."""
    notes, last, length = [], [], TICKS
    bar_ticks = round(piece.bar * TICKS)
    for bar_start, number, room, tokens in bars_of(piece, voice):
        now = bar_start
        for token in tokens:
            match = TOKEN.match(token)
            if not match:
                raise ValueError(f"{piece.title}, bar {number}: no token: {token!r}")
            length = ticks(match["length"]) if match["length"] else length
            if match["what"] == "-":
                for note in last:
                    note.length += length
            elif match["what"] != "r":
                marks = match["marks"]
                place = number + (now - bar_start) / bar_ticks
                loud = at(piece.dynamics, place) + voice.level + (5 if now == bar_start else 0) + (12 if "^" in marks else 0)
                sound = bar_start + room - now if "_" in marks else length * (0.5 if "'" in marks else 0.96)
                last = [Note(max(0, now + round(4 * wobble(now, name))), round(sound), pitch(name),
                             max(1, min(127, round(loud + 3 * wobble(name, now)))), channel)
                        for name in match["what"].split("+")]
                notes += last
            now += length
        if now - bar_start != room:
            raise ValueError(f"{piece.title}, channel {channel}, bar {number}: {(now - bar_start) / TICKS} quarters for {room / TICKS}")
    return notes


def variable(number):
    out = bytes([number & 0x7F])
    while number := number >> 7:
        out = bytes([number & 0x7F | 0x80]) + out
    return out


def events_of(piece):
    """(tick, order, bytes) of all that happens in a piece."""
    events, notes = [], []
    for channel, voice in enumerate(piece.voices):
        channel += channel >= 9  # 9 is the drums
        events += [(0, 0, bytes([0xC0 | channel, voice.program])), (0, 0, bytes([0xB0 | channel, 10, voice.pan])),
                   (0, 0, bytes([0xB0 | channel, 91, round(127 * piece.reverb)]))]
        notes += notes_of(piece, voice, channel)
    end = max(n.start + n.length for n in notes)
    for n in notes:
        events += [(n.start, 3, bytes([0x90 | n.channel, n.pitch, n.velocity])),
                   (n.start + n.length, 2, bytes([0x80 | n.channel, n.pitch, 40]))]
    events += tempo_events(piece, end)
    if piece.pedal:
        events += pedal_events(piece, end, {n.channel for n in notes})
    return sorted(events), end


def tempo_events(piece, end):
    pickup = piece.pickup * TICKS
    for tick in range(0, end, TICKS // 2):
        bpm = at(piece.tempo, 1 + (tick - pickup) / (piece.bar * TICKS))
        yield tick, 1, b"\xff\x51\x03" + struct.pack(">I", round(60e6 / bpm))[1:]


def pedal_events(piece, end, channels):
    for channel in sorted(channels):
        tick = round(piece.pickup * TICKS)
        while tick < end:
            yield tick, 1, bytes([0xB0 | channel, 64, 0])
            yield tick + 24, 4, bytes([0xB0 | channel, 64, 127])
            tick += round(piece.pedal * TICKS)


def midi(piece):
    """The bytes of a standard MIDI file of one track."""
    events, end = events_of(piece)
    track, last = bytearray(), 0
    for tick, _, data in events:
        track += variable(tick - last) + data
        last = tick
    track += variable(max(0, end + TICKS - last)) + b"\xff\x2f\x00"
    return b"MThd" + struct.pack(">IHHH", 6, 0, 1, TICKS) + b"MTrk" + struct.pack(">I", len(track)) + bytes(track)
