"""Keys by which an index sorts and finds texts, in the General sort order."""

import struct

# One token for each character: "-" adds nothing to the key; "4a51" adds these bytes; "4a/0f" adds the bytes before
# the slash and an accent of the weight after it; "~80" adds only an entry with this weight at the key's end (for
# characters that are otherwise ignored). Each "+" (Jet 3) is a position in the list of accents without an accent.
JET4_0000 = """
- ~03 ~04 ~05 ~06 ~07 ~08 ~09 ~0a 0803 0804 0805 0806 0807 ~0b ~0c
~0d ~0e ~0f ~10 ~11 ~12 ~13 ~14 ~15 ~16 ~17 ~18 ~19 ~1a ~1b ~1c
07 09 0a 0c 0e 10 12 ~80 14 16 18 2c 1a ~82 1c 1e
36 38 3a 3c 3e 40 42 44 46 48 20 22 2e 30 32 24
26 4a 4c 4d 4f 51 53 55 57 59 5b 5c 5e 60 62 64
66 68 69 6b 6d 6f 71 73 75 76 78 27 29 2a 2b02 2b03
2b07 4a 4c 4d 4f 51 53 55 57 59 5b 5c 5e 60 62 64
66 68 69 6b 6d 6f 71 73 75 76 78 2b09 2b0b 2b0d 2b0f ~1d
~1e ~1f ~20 ~21 ~22 ~23 ~24 ~25 ~26 ~27 ~28 ~29 ~2a ~2b ~2c ~2d
~2e ~2f ~30 ~31 ~32 ~33 ~34 ~35 ~36 ~37 ~38 ~39 ~3a ~3b ~3c ~3d
0802 2b10 34a6 34a7 34a8 34a9 2b11 34aa 2b12 34ab 4a/03 3305 34ac ~83 34ad 2b13
34ae 3304 3a 3c 2b14 34af 34b0 34b1 2b15 38 64/03 3307 3712 3716 371a 2b16
4a/0f 4a/0e 4a/12 4a/19 4a/13 4a/1a 4a51 4d/1c 51/0f 51/0e 51/12 51/13 59/0f 59/0e 59/12 59/13
4f/68 62/19 64/0f 64/0e 64/12 64/19 64/13 3309 64/21 6f/0f 6f/0e 6f/12 6f/13 76/0e 6d57 6b6b
4a/0f 4a/0e 4a/12 4a/19 4a/13 4a/1a 4a51 4d/1c 51/0f 51/0e 51/12 51/13 59/0f 59/0e 59/12 59/13
4f/68 62/19 64/0f 64/0e 64/12 64/19 64/13 330a 64/21 6f/0f 6f/0e 6f/12 6f/13 76/0e 6d57 76/13
"""
JET4_0100 = """
4a/17 4a/17 4a/15 4a/15 4a/1b 4a/1b 4d/0e 4d/0e 4d/12 4d/12 4d/10 4d/10 4d/14 4d/14 4f/14 4f/14
4f/1e 4f/1e 51/17 51/17 51/15 51/15 51/10 51/10 51/1b 51/1b 51/14 51/14 55/12 55/12 55/15 55/15
55/10 55/10 55/1c 55/1c 57/12 57/12 57/1e 57/1e 59/19 59/19 59/17 59/17 59/15 59/15 59/1b 59/1b
59/10 59/03 595b 595b 5b/12 5b/12 5c/1c 5c/1c 5c/03 5e/0e 5e/0e 5e/1c 5e/1c 5e/14 5e/14 5e/11
5e/11 5e/1f 5e/1f 62/0e 62/0e 62/1c 62/1c 62/14 62/14 62/48 6305 6305 64/17 64/17 64/15 64/15
64/1d 64/1d 6451 6451 69/0e 69/0e 69/1c 69/1c 69/14 69/14 6b/0e 6b/0e 6b/12 6b/12 6b/1c 6b/1c
6b/14 6b/14 6d/1c 6d/1c 6d/14 6d/14 6e06/1e 6e06/1e 6f/19 6f/19 6f/17 6f/17 6f/15 6f/15 6f/1a 6f/1a
6f/1d 6f/1d 6f/1b 6f/1b 73/12 73/12 76/12 76/12 76/13 78/0e 78/0e 78/10 78/10 78/14 78/14 6c06
"""
JET4_2000 = """
0808 0809 080a 080b 080c 080d 080e 080f 0810 0811 0812 0813 0814 - - -
~84 ~85 ~88 ~89 ~8b ~8c 2b35 2b36 2b37 2b38 2b39 2b3a 2b3b 2b3c 2b3d 2b3e
34b3 34b4 34b5 34b6 34b7 34b8 34b9 ~86 0815 0816 - - - - - -
34ba 34bb 2b3f 2b40 2b41 2b42 2b43 2b44 2b45 2b46 2b47 34bc 2b48 2b49 2b4a 2b4b
"""
JET4_MORE = {0x192: "53/7b", 0x2c6: "2b02/03", 0x2dc: "2b1c",
             0x20ac: "35a1", 0x2122: "6e04"}
JET3_0000 = """
10 10 10 10 10 10 10 10 10 11 10 10 10 10 10 10
10 10 10 10 10 10 10 10 10 10 10 10 10 10 10 10
11 12 13 14 15 16 17 18 19 1a 1b 1c 1d 1e 1f 20
56 57 58 59 5a 5b 5c 5d 5e 5f 21 22 23 24 25 26
27 60+ 61 62+ 64 66+ 67 68 69 6a+ 6b 6c 6d 6f 70+ 72+
73 74 75 76+ 77 78+ 7a 7b 7c 7d+ 7e 28 29 2a 2b 2c
2d 60+ 61 62+ 64 66+ 67 68 69 6a+ 6b 6c 6d 6f 70+ 72+
73 74 75 76+ 77 78+ 7a 7b 7c 7d+ 7e 2e 2f 30 31 10
10 10 18 32 13 33 34 35 36 37 76/0a 18 7266++ 10 10 10
10 18 18 13 13 38 1e 1e 39 3a 76/0a 18 7266++ 10 10 7d/06
11 3b 3c 3d 3e 3f 40 41 42 43 44 13 45 1e 46 47
48 49 58 59 4a 4b 4c 4d 4e 57 4f 13 50 51 52 53
60/03 60/04 60/05 60/07 60/06 60/08 6066++ 62/09 66/03 66/04 66/05 66/06 6a/03 6a/04 6a/05 6a/06
65 70/07 72/03 72/04 72/05 72/07 72/06 54 81 78/03 78/04 78/05 78/06 7d/04 7f 7676++
60/03 60/04 60/05 60/07 60/06 60/08 6066++ 62/09 66/03 66/04 66/05 66/06 6a/03 6a/04 6a/05 6a/06
65 70/07 72/03 72/04 72/05 72/07 72/06 55 81 78/03 78/04 78/05 78/06 7d/04 7f 7d/06
"""

LONGEST_TEXT = 255  # characters of a text that contribute to its key


class NotCovered(Exception):
    """The key of this value can't be computed here, which is no fault of the file."""


class Weight:
    """The contribution of one character to a key."""

    def __init__(self, token):
        self.inline, self.accent, self.ignorable = b"", None, None
        self.accent_positions = token.count("+")
        token = token.rstrip("+")
        if token.startswith("~"):
            self.ignorable = int(token[1:], 16)
        elif token != "-":
            inline, _, accent = token.partition("/")
            self.inline = bytes.fromhex(inline)
            if accent:
                self.accent = int(accent, 16)


def weights(start, tokens):
    return {start + i: Weight(token) for i, token in enumerate(tokens.split())}


JET4_WEIGHTS = {**weights(0, JET4_0000), **weights(0x100, JET4_0100), **weights(0x2000, JET4_2000),
                **{code: Weight(token) for code, token in JET4_MORE.items()}}
JET3_WEIGHTS = weights(0, JET3_0000)


def inverted(data):
    """The bytes inverted, as in descending keys."""
    return bytes(byte ^ 0xFF for byte in data)


def clipped(text):
    units = text.encode("utf-16-le", "surrogatepass")[:2 * LONGEST_TEXT]
    return units.decode("utf-16-le", "surrogatepass").rstrip(" ")


def jet4_text_key(text, ascending):
    inline, accents, ignorables = bytearray(), bytearray(), bytearray()
    letters = 0           # characters with inline bytes so far
    accented_letters = 0  # how many of them the list of accents covers
    for character in clipped(text):
        weight = JET4_WEIGHTS.get(ord(character))
        if weight is None:
            raise NotCovered("U+%04X" % ord(character))
        before = letters
        if weight.inline:
            inline += weight.inline
            letters += 1
        if weight.accent is not None:
            accents += b"\x02" * (before - accented_letters)
            accents.append(weight.accent)
            accented_letters = before + 1
        if weight.ignorable is not None:
            ignorables += struct.pack(">H", (7 + 4 * before) | 0x8000)
            ignorables += bytes((0x06, weight.ignorable))
    key = inline + b"\x01" + accents.rstrip(b"\x00\x01\x02")
    if ignorables:
        key += b"\x01\x01\x01" + ignorables
    return bytes(key) + b"\x00" if ascending else inverted(key + b"\x00") + b"\x00"


def jet3_text_key(raw, ascending):
    key, nibbles, unaccented = bytearray(), [], 0
    for byte in raw[:LONGEST_TEXT].rstrip(b" "):
        weight = JET3_WEIGHTS[byte]
        key += weight.inline
        if weight.accent_positions:
            unaccented += weight.accent_positions
        elif weight.accent is not None:
            nibbles += [2] * unaccented + [weight.accent & 15]
            unaccented = 0
    if nibbles:
        nibbles = [0] + nibbles + [0]
        if len(nibbles) % 2:
            nibbles.append(0)
        key += bytes(high << 4 | low for high, low in zip(nibbles[::2], nibbles[1::2]))
    else:
        key.append(0)
    return bytes(key) if ascending else inverted(key)
