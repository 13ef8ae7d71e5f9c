"""Six pieces whose composers died long ago, set for the demo disc; the longer ones are shortened."""
from score import Piece, Voice


def prelude():
    """J. S. Bach: Prelude in C, BWV 846, the first nineteen bars. Each harmony is struck twice; bars here are half bars."""
    harmonies = """
        C4 E4 G4 C5 E5,   C4 D4 A4 D5 F5,   B3 D4 G4 D5 F5,   C4 E4 G4 C5 E5,   C4 E4 A4 E5 A5,   C4 D4 F#4 A4 D5,
        B3 D4 G4 D5 G5,   B3 C4 E4 G4 C5,   A3 C4 E4 G4 C5,   D3 A3 D4 F#4 C5,  G3 B3 D4 G4 B4,   G3 Bb3 E4 G4 C#5,
        F3 A3 D4 A4 D5,   F3 Ab3 D4 F4 B4,  E3 G3 C4 G4 C5,   E3 F3 A3 C4 F4,   D3 F3 A3 C4 F4,   G2 D3 G3 B3 F4,
        C3 E3 G3 C4 E4"""
    bars = []
    for harmony in harmonies.split(","):
        a, b, c, d, e = harmony.split()
        bars += [f"{a}:16_ {b}_ {c} {d} {e}^ {c} {d} {e}"] * 2
    text = " | ".join(bars) + " | C3+E3+G3+C4+E4:2"
    return Piece("Prelude in C, BWV 846", "Johann Sebastian Bach", bar=2, voices=[Voice(text)], pedal=2, reverb=0.55,
                 tempo=[(1, 66), (3, 70), (30, 72), (35, 68), (38, 54), (39, 44), (40, 40)],
                 dynamics=[(1, 52), (9, 64), (19, 74), (23, 62), (27, 76), (33, 66), (39, 44), (40, 42)], last_hold=2.5)


def minuet():
    """Christian Petzold: Minuet in G, long taken for Bach's; the first half is repeated."""
    right_a = """
        D5:4^ G4:8 A4 B4 C5 | D5:4 G4' G4' | E5 C5:8 D5 E5 F#5 | G5:4 G4' G4' | C5 D5:8 C5 B4 A4 | B4:4 C5:8 B4 A4 G4 |
        F#4:4 G4:8 A4 B4 G4 | A4:2. |
        D5:4^ G4:8 A4 B4 C5 | D5:4 G4' G4' | E5 C5:8 D5 E5 F#5 | G5:4 G4' G4' | C5 D5:8 C5 B4 A4 | B4:4 C5:8 B4 A4 G4 |
        A4:4 B4:8 A4 G4 F#4 | G4:2. |"""
    right_b = """
        B5:4^ G5:8 A5 B5 G5 | A5:4 D5:8 E5 F#5 D5 | G5:4 E5:8 F#5 G5 D5 | C#5:4 B4:8 C#5 A4:4 | A4:8 B4 C#5 D5 E5 F#5 |
        G5:4' F#5' E5' | F#5 A4 C#5 | D5:2. |
        D5:4^ G4:8 F#4 G4:4 | E5 G4:8 F#4 G4:4 | D5' C5' B4' | A4:8 G4 F#4 G4 A4:4 | D4:8 E4 F#4 G4 A4 B4 | C5:4' B4' A4' |
        B4:8 D5 G4:4 F#4 | G4+D4+B3:2."""
    left_a = """
        G3+B3+D4:2 A3:4 | B3:2. | C4 | B3 | A3 | G3 | D4:4' B3' G3' | D4 D3:8 C4 B3 A3 |
        B3:2 A3:4 | G3' B3' G3' | C4:2. | B3:4 C4:8 B3 A3 G3 | A3:2 F#3:4 | G3:2 B3:4 | C4' D4' D3' | G3:2 G2:4 |"""
    left_b = """
        G3:2. | F#3 | E3:4 G3 E3 | A3:2 A2:4 | A3:2. | B3:4' D4' C#4' | D4 F#3 A3 | D4 D3 C4 |
        B3+D4:2. | C4+E4 | B3:4' A3' G3' | D4:2 r:4 | D3 r F#3 | E3' G3' F#3' | G3 B2 D3 | G3 D3 G2"""
    return Piece("Minuet in G", "Christian Petzold", bar=3, reverb=0.35, last_hold=1.6,
                 voices=[Voice(right_a * 2 + right_b, program=6, pan=72), Voice(left_a * 2 + left_b, program=6, pan=56, level=-8)],
                 tempo=[(1, 134), (15, 134), (16, 124), (17, 136), (31, 136), (32, 122), (33, 136), (40, 128), (41, 136), (46, 132), (48, 96)],
                 dynamics=[(1, 84), (9, 88), (16, 80), (17, 72), (25, 80), (33, 92), (37, 84), (41, 78), (48, 90)])


def canon():
    """Johann Pachelbel: Canon in D: the ground, and six of the variations for three voices that follow one another."""
    variations = [
        "F#5:4 E5 D5 C#5 | B4 A4 B4 C#5",
        "D5:4 C#5 B4 A4 | G4 F#4 G4 E4",
        "D4:8 F#4 A4 G4 F#4 D4 F#4 E4 | D4 B3 D4 A4 G4 B4 A4 G4",
        "F#4:8 D4 E4 C#5 D5 F#5 A5 A4 | B4 G4 A4 F#4 D4 D5 D5:8. C#5:16",
        "D5:16 C#5 D5 D4 C#4 A4 E4 F#4 D4 D5 C#5 B4 C#5 F#5 A5 B5 | G5 F#5 E5 G5 F#5 E5 D5 C#5 B4 A4 G4 F#4 E4 G4 F#4 E4",
        "A5:16^ F#5:32 G5 A5:16 F#5:32 G5 A5 A4 B4 C#5 D5 E5 F#5 G5 F#5:16^ D5:32 E5 F#5:16 F#4:32 G4 A4 B4 A4 G4 A4 F#4 G4 A4 |"
        "G4:16^ B4:32 A4 G4:16 F#4:32 E4 F#4 E4 D4 E4 F#4 G4 A4 B4 G4:16^ B4:32 A4 B4:16 C#5:32 D5 A4 B4 C#5 D5 E5 F#5 G5 A5",
    ]
    rounds = 1 + len(variations)

    def follower(delay, last, **how):
        text = " | ".join(variations[:len(variations) - delay] + [f"{last}:1"])
        return Voice(text, first_bar=3 + 2 * delay, **how)

    ground = " | ".join(["D3:4 A2 B2 F#2 | G2 D2 G2 A2"] * rounds + ["D2+D3:1"])
    chords = " | ".join(["F#3+A3+D4:4 E3+A3+C#4 D3+F#3+B3 C#3+F#3+A3 | D3+G3+B3 D3+F#3+A3 D3+G3+B3 C#3+E3+A3"] * rounds
                        + ["D3+F#3+A3+D4:1"])
    voices = [follower(0, "A5", program=48, pan=30), follower(1, "F#5", program=48, pan=98, level=-2),
              follower(2, "D5", program=48, pan=64, level=-6), Voice(ground, program=42, pan=76, level=6),
              Voice(chords, program=6, pan=48, level=-26)]
    return Piece("Canon in D", "Johann Pachelbel", bar=4, voices=voices, reverb=0.7, last_hold=2.2,
                 tempo=[(1, 54), (13, 56), (14, 54), (14.9, 40), (15, 54)],
                 dynamics=[(1, 68), (3, 72), (9, 84), (13, 94), (15, 96)])


def fuer_elise():
    """Ludwig van Beethoven: the theme of the Bagatelle in A minor, WoO 59."""
    right = {"turn": "E5:16 D#5 E5 B4 D5 C5", "rise": "A4:8^ r:16 C4 E4 A4", "dominant": "B4:8^ r:16 E4 G#4 B4",
             "back": "C5:8^ r:16 E4 E5 D#5", "close": "B4:8^ r:16 E4 C5 B4", "again": "A4:8 r E5:16 D#5",
             "on": "A4:8 r:16 B4 C5 D5", "end": "A4:4."}
    left = {"turn": "r:4.", "rise": "A2:16 E3 A3 r:8.", "dominant": "E2:16 E3 G#3 r:8.", "back": "A2:16 E3 A3 r:8.",
            "close": "E2:16 E3 G#3 r:8.", "again": "A2:16 E3 A3 r:8.", "on": "A2:16 E3 A3 r:8.", "end": "A2:16 E3 A3 - r:8"}
    middle_right = "E5:8.^ G4:16 F5 E5 | D5:8. F4:16 E5 D5 | C5:8. E4:16 D5 C5 | B4:8 r:16 E4 E5 r | r E5 E6^ r r D#5 | E5 r r D#5 E5 D#5"
    middle_left = "C3:16 G3 C4 r:8. | G2:16 G3 B3 r:8. | A2:16 E3 A3 r:8. | E2:16 E3 E4 r:8. | r:4. | r:4."

    def theme(hand, ending):
        return " | ".join(hand[bar] for bar in ["turn", "rise", "dominant", "back", "turn", "rise", "close", ending])

    def whole(hand, middle, pickup):
        return " | ".join([pickup, theme(hand, "again"), theme(hand, "on"), middle, theme(hand, "on"), middle, theme(hand, "end")])

    return Piece("Für Elise", "Ludwig van Beethoven", bar=1.5, pickup=0.5, pedal=1.5, reverb=0.5, last_hold=2.0,
                 voices=[Voice(whole(right, middle_right, "E5:16 D#5")), Voice(whole(left, middle_left, "r:8"), level=-10)],
                 tempo=[(0, 60), (1, 68), (7, 68), (8, 62), (9, 68), (16, 66), (18, 72), (20, 66), (22, 52), (23, 66), (30, 66),
                        (32, 72), (34, 64), (36, 50), (37, 66), (42, 62), (44, 40)],
                 dynamics=[(1, 50), (4, 58), (8, 50), (12, 60), (16, 52), (17, 66), (19, 76), (21, 58), (23, 50), (26, 62), (30, 52),
                           (31, 70), (33, 80), (35, 60), (37, 48), (40, 56), (44, 36)])


def gymnopedie():
    """Erik Satie: Gymnopédie No. 1, the first sixteen bars, and the accompaniment alone to take leave with."""
    phrase = "r:4 F#5 A5 | G5 F#5 C#5 | B4 C#5 D5 | A4:2. |"
    melody = phrase + "F#4:2. | - | - | - |" + phrase + "- | r:2. | r:2. | D4+F#4+A4:2."
    chords = " | ".join(["r:4 B3+D4+F#4:2", "r:4 A3+C#4+F#4:2"] * 9 + ["r:4 B3+D4+F#4:2", "r:2."])
    bass = " | ".join(["G2:2.", "D2:2."] * 10)
    return Piece("Gymnopédie No. 1", "Erik Satie", bar=3, pedal=3, reverb=0.75, last_hold=3.0,
                 voices=[Voice(melody, first_bar=5, level=14), Voice(chords, level=-12), Voice(bass)],
                 tempo=[(1, 66), (4, 68), (8, 64), (9, 68), (12, 66), (13, 69), (16, 64), (18, 60), (20, 42)],
                 dynamics=[(1, 50), (5, 56), (6, 62), (8, 52), (12, 48), (13, 58), (14, 64), (16, 52), (20, 38)])


def entertainer():
    """Scott Joplin: The Entertainer: introduction and first strain, twice."""
    opening = "E4:16 C5:8^ E4:16 C5:8^ E4:16 C5^"
    climb = "-:4&16 C5+C6:16 D5+D6 D#5+D#6"
    answer = "E5+E6:16 C5+C6 D5+D6 E5+E6:8^ B4+B5:16 D5+D6:8"
    swing = "E5+E6:16 C5+C6 D5+D6 E5+E6:8^ C5+C6:16 D5+D6 C5+C6"
    intro_right = ["D5+D6:16 E5+E6 C5+C6 A4+A5:8^ B4+B5:16 G4+G5:8", "D4+D5:16 E4+E5 C4+C5 A3+A4:8^ B3+B4:16 G3+G4:8",
                   "D4:16 E4 C4 A3:8^ B3:16 A3 Ab3", "G3:8 r G4+B4+D5+G5:8'^ D4:16 D#4"]
    intro_left = ["r:2", "r:2", "D3:16 E3 C3 A2:8^ B2:16 A2 Ab2", "G2:8 r G1+G2:8'^ r"]
    tonic, dominant = "C2+C3:8 E3+G3+C4' E2+E3 G3+Bb3+C4'", "G2:8 E3+G3+C4' G2 F3+G3+B3'"
    subdominant = "F2+F3:8 A3+C4' E2+E3 G3+C4'"

    def strain_right(end):
        return [opening, climb, answer, "C5+E5+C6:4 r:8 D4:16 D#4", opening, "-:4&8 A4+A5:16 G4+G5",
                "F#4+F#5:16 A4+A5 C5+C6 E5+E6:8^ D5+D6:16 C5+C6 A4+A5", "D5+G5+D6:4. D4:16 D#4", opening, climb, answer,
                "C5+E5+C6:4. C5+C6:16 D5+D6", swing, swing, answer, end]

    def strain_left(end):
        return [tonic, subdominant, dominant, "C2+C3:8 E3+G3+C4' G2' r", tonic, subdominant, "D2+D3:8 F#3+A3+C4' D2+D3 F#3+A3+C4'",
                "G1+G2:8 F3+G3+B3' A1+A2' B1+B2'", tonic, subdominant, dominant, "C2+C3:8 E3+G3+C4' C2+C3 E3+G3+C4'",
                "C2+C3:8 E3+G3+C4' Bb1+Bb2 E3+G3+C4'", "A1+A2:8 F3+A3+C4' Ab1+Ab2 F3+Ab3+C4'", dominant, end]

    right = intro_right + strain_right("C5+E5+C6:4 r:8 D4:16 D#4") + strain_right("C5+E5+C6:4 C5+E5+G5+C6:4'")
    left = intro_left + strain_left("C2+C3:8 G2' C2+C3' r") + strain_left("C2+C3:8 G2' C2+C3:4'")
    return Piece("The Entertainer", "Scott Joplin", bar=2, reverb=0.4, last_hold=1.2,
                 voices=[Voice(" | ".join(right), program=1, pan=70), Voice(" | ".join(left), program=1, pan=58, level=-12)],
                 tempo=[(1, 74), (4, 70), (5, 74), (20, 74), (21, 76), (34, 76), (36, 64)],
                 dynamics=[(1, 92), (4, 88), (5, 78), (12, 84), (17, 92), (21, 74), (28, 82), (33, 94), (35, 92), (36, 78)])


PIECES = [prelude(), minuet(), canon(), fuer_elise(), gymnopedie(), entertainer()]
