#!/usr/bin/env python3
"""Writes the seed corpus of every fuzz target into OUT/<target>/.

The seeds are the tests' examples (written out below in each target's input
format), lines of NormalizationTest.txt and pieces of the shared corpus, both
read at run time from the shared folder. Nothing here is kept in the
repository; .ci/fuzz.sh runs this before each fuzzing run.

Usage: make_seeds.py SHARED_DIR OUT_DIR
"""
import hashlib
import os
import random
import struct
import sys

# Decoder examples: bytes in, as the UTF-8 tests feed them.
UTF8_EXAMPLES = [
    "", "00 41", "C3 A9", "E2 82 AC", "F0 9F 98 80", "F4 8F BF BF", "C1 BF",
    "ED B0 80", "80 41", "41 BF 42", "FF FE 41", "F8 88 80 80 80", "C3 00",
    "C3 C3 A9", "E2 41 42", "F0 41 42 43", "E2 82", "41 C3", "41 E2 41",
    "41 F0 9F 98", "EF BB BF 41", "EF BF BD", "EF BF BE", "C0 80", "C0 AF",
    "E0 80 AF", "F0 80 80 AF", "ED A0 80", "ED A0 BD ED B8 80", "F4 90 80 80",
    "F7 BF BF BF",
]

# UTF-16 examples, as units.
UTF16_EXAMPLES = [
    [], [0x0041], [0x0000, 0x0041], [0xD83D, 0xDE00], [0xD800, 0xDC00],
    [0xDBFF, 0xDC00], [0xDBFF, 0xDFFF], [0xD800], [0x0041, 0xDC00],
    [0xD800, 0x0041], [0xDC00, 0x0041], [0xD800, 0xD800], [0xDC00, 0xDC00],
    [0xD800, 0xB400], [0xDFFF, 0xDFFF], [0xDFFF, 0xFFFF], [0xFEFF, 0x0041],
    [0xFFFE, 0x0041], [0xDBF6, 0xDC00], [0xDBF7, 0xDFFF],
]

# Code point sequences from the examples of the String, normalization and
# case tests.
TEXT_EXAMPLES = [
    [0x41, 0xD800, 0x42, 0x110000], [0xD800], [0xDFFF], [0x110000],
    [0xFFFFFFFF], [0xFFFD], [0xFFFE, 0xFFFF], [0x0378], [0x10FFFF],
    # normalization
    [0x212B], [0x0344], [0x0F73], [0x1D160], [0xAC00], [0xAC01], [0xD7A3],
    [0xD7A4], [0xABFF], [0x41, 0x30A, 0x323], [0x1E0B, 0x323], [0xFDFA],
    [0xA0], [0xBD], [0x1E9B], [0x2126], [0x61, 0x301], [0x61, 0x323, 0x307],
    [0x61, 0x307, 0x323], [0x301, 0x301], [0x301, 0x61], [0x1100, 0x1161],
    [0x1112, 0x1175], [0x1100, 0x1161, 0x11A8], [0x1100, 0x1161, 0x11C2],
    [0x1100, 0x1161, 0x11A7], [0xAC00, 0x11A7], [0x1100, 0x1161, 0x11C3],
    [0xAC00, 0x11A8], [0x1113, 0x1161], [0x1100, 0x1176],
    [0x1100, 0x301, 0x1161], [0xB47, 0xB3E], [0x958], [0x61, 0xFFFFFFFF],
    [0xFFFFFFFF, 0x301], [0x345, 0x61, 0x315], [0x315, 0x4E00, 0x300],
    [0x301, 0xAC00, 0x11A7], [0x301, 0x323], [0x307, 0x61, 0x323],
    # case
    [0xDF], [0xFB03], [0x149], [0x130], [0x49], [0x49, 0x307], [0x130, 0x307],
    [0x69], [0x131], [0xCC], [0xFB00], [0x1C6], [0x3A3], [0x307],
    [0x391, 0x3A3], [0x2E, 0x3A3], [0x31, 0x3A3], [0x391, 0x2E, 0x3A3],
    [0x391, 0x3A3, 0x392], [0x391, 0x3A3, 0x20, 0x392], [0x391, 0x3A3, 0x31],
    [0x391, 0x3A3, 0x2E], [0x391, 0x3A3, 0x2E, 0x20], [0x391, 0x3A3, 0x2E, 0x392],
    [0x2B0, 0x3A3], [0x391, 0x3A3, 0x2B0, 0x20], [0x49, 0x301],
    [0x49, 0x323, 0x301], [0x49, 0x301, 0x323], [0x49, 0x301, 0x301],
    [0x49, 0x301, 0x323, 0x301], [0x49, 0x323], [0x4A, 0x301], [0x12E, 0x301],
    [0x49, 0x41], [0x49, 0x323, 0x307], [0x49, 0x323, 0x41], [0x49, 0x301, 0x307],
    [0x41, 0x307], [0x69, 0x307], [0x6A, 0x307], [0x1E9E], [0x1F88], [0x10400],
]


def hex_bytes(text):
    return bytes(int(b, 16) for b in text.split())


def fuzz_text(code_points):
    """The fuzz text format: UTF-8 for code points the lax decoder can give,
    and the escape byte 0xF8 with four raw bytes for everything else."""
    out = bytearray()
    for c in code_points:
        if c < 0x80:
            out.append(c)
        elif c < 0x800:
            out += bytes([0xC0 | c >> 6, 0x80 | c & 0x3F])
        elif c < 0x10000:
            out += bytes([0xE0 | c >> 12, 0x80 | c >> 6 & 0x3F, 0x80 | c & 0x3F])
        elif c < 0x200000:
            out += bytes([0xF0 | c >> 18, 0x80 | c >> 12 & 0x3F,
                          0x80 | c >> 6 & 0x3F, 0x80 | c & 0x3F])
        else:
            out += b"\xF8" + struct.pack("<I", c)
    return bytes(out)


def corpus_pieces(corpus_dir, suffix, size, count):
    """Pieces of each corpus file, taken at evenly spread offsets."""
    if not os.path.isdir(corpus_dir):
        return []
    pieces = []
    for name in sorted(os.listdir(corpus_dir)):
        if not name.endswith(suffix):
            continue
        with open(os.path.join(corpus_dir, name), "rb") as f:
            data = f.read()
        for k in range(count):
            start = (len(data) * k) // count
            pieces.append((name, data[start:start + size]))
    return pieces


def utf8_text(piece):
    """A piece of UTF-8 cut at arbitrary bytes, trimmed to whole characters."""
    return piece.decode("utf-8", errors="ignore")


def normalization_test_sources(ucd_dir, step):
    path = os.path.join(ucd_dir, "NormalizationTest.txt")
    if not os.path.isfile(path):
        return []
    sources = []
    with open(path, encoding="utf-8") as f:
        for number, line in enumerate(f):
            line = line.split("#", 1)[0].strip()
            if not line or line.startswith("@") or number % step:
                continue
            sources.append([int(c, 16) for c in line.split(";")[0].split()])
    return sources


def write(out_dir, target, seeds):
    folder = os.path.join(out_dir, target)
    os.makedirs(folder, exist_ok=True)
    for seed in seeds:
        name = hashlib.sha1(seed).hexdigest()
        with open(os.path.join(folder, name), "wb") as f:
            f.write(seed)
    return len(set(seeds))


def main():
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    shared, out_dir = sys.argv[1], sys.argv[2]
    corpus = os.path.join(shared, "corpus")
    ucd = os.path.join(shared, "ucd", "7.0.0")

    utf8_pieces = [p for _, p in corpus_pieces(corpus, ".utf8.txt", 384, 4)]
    latin1_pieces = [p for _, p in corpus_pieces(corpus, ".latin1.txt", 384, 4)]
    texts = [utf8_text(p) for p in utf8_pieces]
    example_texts = [fuzz_text(t) for t in TEXT_EXAMPLES]
    rng = random.Random(7)
    counts = {}

    counts["Utf8DecoderFuzz"] = write(out_dir, "Utf8DecoderFuzz",
        [hex_bytes(e) for e in UTF8_EXAMPLES] + utf8_pieces + latin1_pieces
        + example_texts)

    counts["Utf16DecoderFuzz"] = write(out_dir, "Utf16DecoderFuzz",
        [struct.pack("<%dH" % len(u), *u) for u in UTF16_EXAMPLES]
        + [t.encode("utf-16-le") for t in texts])

    counts["WideDecoderFuzz"] = write(out_dir, "WideDecoderFuzz",
        [struct.pack("<%dI" % len(t), *t) for t in TEXT_EXAMPLES]
        + [t.encode("utf-32-le") for t in texts[::4]])

    thai = [t.encode("cp874", errors="ignore") for t in texts if
            any("\u0e01" <= ch <= "\u0e5b" for ch in t)]
    counts["CodePageDecoderFuzz"] = write(out_dir, "CodePageDecoderFuzz",
        [bytes(range(256)), bytes(range(0x80, 0x100))] + latin1_pieces + thai
        + [t.encode("cp1252", errors="ignore") for t in texts[::3]])

    counts["CodePageEncoderFuzz"] = write(out_dir, "CodePageEncoderFuzz",
        [struct.pack("<Q", rng.getrandbits(64)) + e for e in example_texts]
        + [struct.pack("<Q", rng.getrandbits(64)) + t.encode("utf-8")
           for t in texts])

    normalization = normalization_test_sources(ucd, 25)
    counts["NormalizationFuzz"] = write(out_dir, "NormalizationFuzz",
        example_texts + [fuzz_text(s) for s in normalization]
        + [t.encode("utf-8")[:200] for t in texts])

    case_seeds = []
    for choice in range(8):
        header = bytes([choice, rng.randrange(16), 2, ord("t"), ord("r")]) + bytes(5)
        case_seeds += [header + e for e in example_texts]
        case_seeds += [header + t.encode("utf-8")[:200] for t in texts[::4]]
    counts["FullCaseMappingFuzz"] = write(out_dir, "FullCaseMappingFuzz",
                                          case_seeds)

    counts["StringOperationsFuzz"] = write(out_dir, "StringOperationsFuzz",
        [bytes(rng.getrandbits(8) for _ in range(rng.randrange(8, 400)))
         for _ in range(64)])

    for target, count in counts.items():
        print("%-22s %5d seeds" % (target, count))


if __name__ == "__main__":
    main()
