#!/usr/bin/python3
"""Makes the two bank files beside this script.

voices.syx   one bulk dump of 32 six-operator voices: F0 43 00 09 20 00, 4096 bytes, checksum, F7
patches.syx  64 data sets of one patch each: F0 41 10 16 12, address, 8 bytes, checksum, F7

Run it after a change of the recipes; the files are the same every time.
"""

import pathlib

HERE = pathlib.Path(__file__).resolve().parent


def checksum(data):
    """The 7-bit two's complement of the sum, used by both formats."""
    return -sum(data) & 0x7F


# --- 32 voices -------------------------------------------------------------------------------

# name, algorithm, feedback, (attack, decay, sustain level, release), modulator levels, ratios
FAMILIES = [  # four variants of each
    ("BRASS", 21, 7, (72, 76, 99, 71), (82, 77, 70), (1, 1, 1)),
    ("STRINGS", 1, 7, (45, 24, 97, 44), (78, 72, 66), (2, 1, 1)),
    ("E.PIANO", 4, 6, (96, 25, 0, 67), (58, 79, 89), (14, 1, 1)),
    ("BASS", 15, 7, (95, 62, 71, 70), (85, 80, 75), (0, 1, 5)),
    ("BELLS", 4, 3, (95, 33, 0, 26), (77, 75, 70), (3, 2, 7)),
    ("ORGAN", 31, 0, (99, 80, 99, 80), (90, 86, 82), (1, 2, 3)),
    ("FLUTE", 15, 5, (61, 67, 99, 62), (60, 55, 48), (1, 2, 1)),
    ("LEAD", 17, 7, (94, 67, 95, 60), (88, 83, 73), (1, 3, 1)),
]


def operator(family, number, variant):
    _, _, _, (attack, decay, sustain, release), levels, ratios = family
    carrier = number % 2 == 0
    level = 99 - 2 * variant if carrier else max(0, levels[number // 2] - 5 * variant)
    ratio = 1 if carrier else ratios[number // 2]
    detune = 7 + (number % 3 - 1) * (1 + variant % 2)
    return bytes([
        attack - variant, decay, 50, release,          # rates
        99, 95 - 3 * variant, sustain, 0,              # levels
        39, 0, 8 * (number % 2), 0b0100,               # break point, depths, curves
        detune << 3 | (2 if carrier else 1),           # detune, rate scaling
        (2 + variant) << 2,                            # velocity, amplitude modulation
        level,
        ratio << 1,                                    # coarse ratio, ratio mode
        0,
    ])


def voice(index):
    family = FAMILIES[index // 4]
    variant = index % 4
    body = b"".join(operator(family, number, variant) for number in range(5, -1, -1))
    body += bytes([99, 99, 99, 99, 50, 50, 50, 50])    # pitch envelope at rest
    body += bytes([family[1], 1 << 3 | family[2]])     # algorithm, key sync and feedback
    body += bytes([34 + variant, 12, 4 * variant, 0])  # vibrato
    body += bytes([3 << 4 | 4 << 1, 24])               # modulation sensitivity, transpose
    name = f"{family[0]:<8}{variant + 1} "
    return body + name.encode("ascii")


def voice_bank():
    data = b"".join(voice(index) for index in range(32))
    assert len(data) == 4096 and max(data) < 0x80
    return b"\xF0\x43\x00\x09\x20\x00" + data + bytes([checksum(data), 0xF7])


# --- 64 patches ------------------------------------------------------------------------------

def patch(index):
    """Timbre group and number, key shift, fine tune, bender range, assign mode, reverb, unused."""
    octave = (index // 16 % 3 - 1) * 12
    return bytes([index // 64, index, 24 + octave, 50 + index % 5 - 2, 2 + index % 11,
                  index % 4, 1 if index % 8 else 0, 0])


def patch_message(index):
    offset = index * 8
    addressed = bytes([0x05, offset >> 7, offset & 0x7F]) + patch(index)
    return b"\xF0\x41\x10\x16\x12" + addressed + bytes([checksum(addressed), 0xF7])


def patch_bank():
    return b"".join(patch_message(index) for index in range(64))


if __name__ == "__main__":
    (HERE / "voices.syx").write_bytes(voice_bank())
    (HERE / "patches.syx").write_bytes(patch_bank())
