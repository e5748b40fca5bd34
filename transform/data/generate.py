#!/usr/bin/env python3
"""Writes the Unicode 7.0.0 table fillers of zelvo_private::unicode.

Run from the repository root:

  python3 transform/data/generate.py ../shared/ucd/7.0.0
      writes the filler sources, Fillers.h and Sources.cmake into transform/data/
  python3 transform/data/generate.py --out DIR ../shared/ucd/7.0.0
      writes them into DIR instead
  python3 transform/data/generate.py --check ../shared/ucd/7.0.0
      regenerates into a temporary folder and fails on any difference from
      the files in transform/data/

Every input line goes through one parser of `code[..code]; field; ... # comment`
lines. The run stops with a message on any line it does not understand, on a key
that occurs twice, on any row count, first key or last key that differs from
the numbers of the 7.0.0 data written below, and on an input file whose SHA-256
is not that of the published 7.0.0 file, so that wrong input files can never
give a quietly wrong library. The output is deterministic: rows in ascending
order of code point, one a line, in fixed-width hex, with no dates.
"""

import argparse
import difflib
import hashlib
import os
import re
import sys
import tempfile
from collections import Counter, namedtuple

VERSION = "7.0.0"
SCRIPT = "transform/data/generate.py"
FIX_COMMAND = "python3 transform/data/generate.py ../shared/ucd/7.0.0"
DATA_DIR = os.path.dirname(os.path.abspath(__file__))

# A generated file larger than this is a sign that a table has grown and
# should be cut over more files.
MAX_FILE_BYTES = 64 * 1024

# The property index is one constant array, not a function of insertions: it
# costs the compiler little however long it is, and is not cut.
MAX_INDEX_BYTES = 512 * 1024

# The two large mapping tables are cut by count into this many pieces, and
# what is left over at the end forms one more piece.
PIECES = 10

# The SHA-256 of every published 7.0.0 file the generator reads. A file that
# differs is refused even where every other check would pass it.
INPUT_SHA256 = {
    "CaseFolding.txt":
        "82f3cc8217455f22d294d7df767a62906baf31456ea8902336ae7fee943a2538",
    "CompositionExclusions.txt":
        "8be553529f7dd22e3e0ffa25eb3f1743f5243bbfe868559be73bf3a163c21913",
    "DerivedCoreProperties.txt":
        "f2ff892add5e6624cee8300c297373216df7f1a596c6e74510afe5e8b96c8d91",
    "DerivedNormalizationProps.txt":
        "656aa2c6996a049e84c6d38676bc73c3245c808869d64073b812690ae475d534",
    "PropList.txt":
        "0df343d93293f14e9ff0b0a721d8b8e6c23c86dbad7be18d362d6bf1281590d9",
    "SpecialCasing.txt":
        "35496d45fc8babd8deb866491ea82ff7b3d2d49ad4c9c656685cd14833101e25",
    "UnicodeData.txt":
        "bfa3da58ea982199829e1107ac5a9a544b83100470a2d0cc28fb50ec234cb840",
}

# The licence of the Unicode data, which goes with every copy of the tables.
DATA_LICENSE = "LICENSE-UNICODE"


class DataError(Exception):
    """Input that does not match the data the library is built against."""


# ---------------------------------------------------------------------------
# The one parser.

Record = namedtuple("Record", "first last fields where")

CODE_RE = re.compile(r"[0-9A-F]{4,6}\Z")


def parse_code(text, where):
    if not CODE_RE.match(text):
        raise DataError(f"{where}: not a code point: {text!r}")
    value = int(text, 16)
    if value > 0x10FFFF:
        raise DataError(f"{where}: code point above U+10FFFF: {text!r}")
    return value


def parse_sequence(text, where):
    """A field of code points separated by blanks; empty gives ()."""
    return tuple(parse_code(part, where) for part in text.split())


def read_records(ucd_dir, name):
    """Yields one Record per data line of `code[..code]; field; ... # comment`.

    Comment-only and blank lines are skipped. The fields after the code are
    returned stripped, empty ones included, so that every reader can insist
    on its own exact field count.
    """
    path = os.path.join(ucd_dir, name)
    try:
        with open(path, encoding="utf-8") as f:
            lines = f.read().splitlines()
    except OSError as e:
        raise DataError(f"cannot read {path}: {e.strerror}") from e
    for number, line in enumerate(lines, 1):
        where = f"{name}:{number}"
        data = line.split("#", 1)[0].strip()
        if not data:
            continue
        fields = [field.strip() for field in data.split(";")]
        first_text, dots, last_text = fields[0].partition("..")
        first = parse_code(first_text, where)
        last = parse_code(last_text, where) if dots else first
        if last < first:
            raise DataError(f"{where}: range runs backwards: {fields[0]}")
        yield Record(first, last, fields[1:], where)


def expect_fields(record, count, trailing_empty=False):
    """Insists on `count` fields after the code; a line closed by ';' has one
    more, empty field, which is checked and dropped."""
    fields = record.fields
    if trailing_empty:
        if len(fields) != count + 1 or fields[-1] != "":
            raise DataError(
                f"{record.where}: expected {count} fields and a closing ';', "
                f"found {len(fields)} fields")
        fields = fields[:-1]
    elif len(fields) != count:
        raise DataError(f"{record.where}: expected {count} fields after the "
                        f"code point, found {len(fields)}")
    return fields


def single_code(record):
    if record.first != record.last:
        raise DataError(f"{record.where}: a range where one code point is "
                        f"expected")
    return record.first


def add_unique(table, key, value, record, what):
    if key in table:
        raise DataError(f"{record.where}: duplicate key {fmt_key(key)} in "
                        f"{what}")
    table[key] = value


def fmt_key(key):
    if isinstance(key, tuple):
        return " ".join(fmt_key(k) for k in key)
    if isinstance(key, int):
        return f"U+{key:04X}"
    return repr(key)


def merge_ranges(spans, what):
    """Turns (first, last) spans into ascending ranges of which no two touch.

    A published run may span several lines of a file; it becomes one range.
    Overlapping spans mean a code point listed twice, which is an error.
    """
    merged = []
    for first, last in sorted(spans):
        if merged and first <= merged[-1][1]:
            raise DataError(f"{what}: U+{first:04X} is listed twice")
        if merged and first == merged[-1][1] + 1:
            merged[-1] = (merged[-1][0], last)
        else:
            merged.append((first, last))
    return merged


# ---------------------------------------------------------------------------
# Readers, one per file.

UnicodeDataRow = namedtuple(
    "UnicodeDataRow",
    "code name category ccc decomposition upper lower title where")


def read_unicode_data(ucd_dir):
    """Rows of UnicodeData.txt, and the spans of every listed code point with
    its General_Category (the First/Last pairs give one span)."""
    rows = []
    spans = []
    open_range = None
    previous = -1
    for record in read_records(ucd_dir, "UnicodeData.txt"):
        code = single_code(record)
        fields = expect_fields(record, 14)
        if code <= previous:
            raise DataError(f"{record.where}: U+{code:04X} is not above the "
                            f"row before it (duplicate or out of order)")
        previous = code
        name, category = fields[0], fields[1]
        if not re.match(r"[A-Z][a-z]\Z", category):
            raise DataError(f"{record.where}: bad General_Category "
                            f"{category!r}")
        if not re.match(r"\d{1,3}\Z", fields[2]) or int(fields[2]) > 254:
            raise DataError(f"{record.where}: bad combining class "
                            f"{fields[2]!r}")
        if name.endswith(", First>"):
            if open_range is not None:
                raise DataError(f"{record.where}: First row inside a range")
            open_range = (code, name[:-len(", First>")], category)
        elif name.endswith(", Last>"):
            if open_range is None or open_range[1] != name[:-len(", Last>")] \
                    or open_range[2] != category:
                raise DataError(f"{record.where}: Last row without its First")
            spans.append((open_range[0], code, category))
            open_range = None
        else:
            if open_range is not None:
                raise DataError(f"{record.where}: range left open")
            spans.append((code, code, category))
        rows.append(UnicodeDataRow(
            code, name, category, int(fields[2]), fields[4],
            optional_code(fields[11], record), optional_code(fields[12], record),
            optional_code(fields[13], record), record.where))
    if open_range is not None:
        raise DataError("UnicodeData.txt: range left open at the end")
    return rows, spans


def optional_code(text, record):
    return parse_code(text, record.where) if text else None


SpecialCasingRow = namedtuple("SpecialCasingRow",
                              "code lower title upper condition")


def read_special_casing(ucd_dir):
    rows = {}
    for record in read_records(ucd_dir, "SpecialCasing.txt"):
        code = single_code(record)
        if len(record.fields) == 4:
            lower, title, upper = expect_fields(record, 3, trailing_empty=True)
            condition = ""
        else:
            lower, title, upper, condition = expect_fields(
                record, 4, trailing_empty=True)
            if not condition or not re.match(r"[A-Za-z_]+( [A-Za-z_]+)?\Z",
                                             condition):
                raise DataError(f"{record.where}: bad condition "
                                f"{condition!r}")
        row = SpecialCasingRow(code, parse_sequence(lower, record.where),
                               parse_sequence(title, record.where),
                               parse_sequence(upper, record.where), condition)
        add_unique(rows, (code, condition), row, record, "SpecialCasing.txt")
    return list(rows.values())


def read_case_folding(ucd_dir):
    """{status: {code: mapping}} for the statuses C, S, T and F."""
    tables = {"C": {}, "S": {}, "T": {}, "F": {}}
    for record in read_records(ucd_dir, "CaseFolding.txt"):
        code = single_code(record)
        status, mapping = expect_fields(record, 2, trailing_empty=True)
        if status not in tables:
            raise DataError(f"{record.where}: unknown status {status!r}")
        value = parse_sequence(mapping, record.where)
        allowed = (2, 3) if status == "F" else (1,)
        if len(value) not in allowed:
            raise DataError(f"{record.where}: a status {status} mapping of "
                            f"{len(value)} code points")
        add_unique(tables[status], code, value, record,
                   f"CaseFolding.txt status {status}")
    return tables


def read_property_spans(ucd_dir, name, wanted, value_field=False):
    """{(property[, value]): [spans]} for the properties in `wanted`.

    Other properties are parsed, so their syntax is checked, and left out.
    """
    spans = {key: [] for key in wanted}
    for record in read_records(ucd_dir, name):
        if not record.fields or not record.fields[0]:
            raise DataError(f"{record.where}: no property name")
        if value_field and record.fields[0] in {k[0] for k in wanted}:
            prop, value = expect_fields(record, 2)
            key = (prop, value)
            if key not in spans:
                raise DataError(f"{record.where}: unknown value {value!r} of "
                                f"{prop}")
        elif not value_field and record.fields[0] in wanted:
            key = expect_fields(record, 1)[0]
        else:
            continue
        spans[key].append((record.first, record.last))
    return spans


def read_composition_exclusions(ucd_dir):
    codes = {}
    for record in read_records(ucd_dir, "CompositionExclusions.txt"):
        expect_fields(record, 0)
        add_unique(codes, single_code(record), True, record,
                   "CompositionExclusions.txt")
    return sorted(codes)


def digest_mismatches(ucd_dir):
    """The input files whose SHA-256 is not that of the 7.0.0 file, with a
    line each that says so. A file that cannot be read is left to the reader
    of that file, which says so in its own words."""
    problems = []
    for name, expected in sorted(INPUT_SHA256.items()):
        try:
            with open(os.path.join(ucd_dir, name), "rb") as f:
                actual = hashlib.sha256(f.read()).hexdigest()
        except OSError:
            continue
        if actual != expected:
            problems.append(f"{name}: SHA-256 {actual}, expected {expected} "
                            f"(the published Unicode {VERSION} file)")
    return problems


# ---------------------------------------------------------------------------
# Checks against the 7.0.0 numbers.

def check(condition, message):
    if not condition:
        raise DataError(message)


def check_rows(name, keys, rows, first=None, last=None):
    keys = sorted(keys)
    check(len(keys) == rows,
          f"{name}: {len(keys)} rows, expected {rows}")
    if first is not None:
        check(keys[0] == first, f"{name}: first key {fmt_key(keys[0])}, "
                                f"expected {fmt_key(first)}")
    if last is not None:
        check(keys[-1] == last, f"{name}: last key {fmt_key(keys[-1])}, "
                                f"expected {fmt_key(last)}")


def check_ranges(name, ranges, count, code_points, first, last):
    check(len(ranges) == count,
          f"{name}: {len(ranges)} ranges, expected {count}")
    points = sum(b - a + 1 for a, b in ranges)
    check(points == code_points,
          f"{name}: {points} code points, expected {code_points}")
    check(ranges[0] == first, f"{name}: first range "
                              f"{fmt_range(ranges[0])}, expected {fmt_range(first)}")
    check(ranges[-1] == last, f"{name}: last range "
                              f"{fmt_range(ranges[-1])}, expected {fmt_range(last)}")


def fmt_range(r):
    return f"U+{r[0]:04X}" if r[0] == r[1] else f"U+{r[0]:04X}..U+{r[1]:04X}"


def contains(ranges, c):
    return any(a <= c <= b for a, b in ranges)


# ---------------------------------------------------------------------------
# The tables.

Table = namedtuple("Table", "name kind rows")
# kind: "char" (code -> code), "string" (code -> tuple), "compat"
# (code -> (tuple, tag)), "condition" ((condition, code) -> tuple),
# "ranges" ([(first, last)]), "int" (code -> int), "set" ([code]).

TAG_COUNTS = {
    "<font>": 1184, "<compat>": 720, "<square>": 284, "<final>": 240,
    "<circle>": 240, "<isolated>": 238, "<initial>": 171, "<fraction>": 20,
    "<super>": 152, "<narrow>": 122, "<wide>": 104, "<medial>": 82,
    "<sub>": 38, "<vertical>": 35, "<small>": 26, "<noBreak>": 5,
}

CONDITION_KEYS = {
    "Final_Sigma": [0x03A3],
    "az": [0x0069, 0x0130],
    "az After_I": [0x0307],
    "az Not_Before_Dot": [0x0049],
    "lt": [0x00CC, 0x00CD, 0x0128],
    "lt After_Soft_Dotted": [0x0307],
    "lt More_Above": [0x0049, 0x004A, 0x012E],
    "tr": [0x0069, 0x0130],
    "tr After_I": [0x0307],
    "tr Not_Before_Dot": [0x0049],
}


def build_unicode_data_tables(ucd_dir):
    rows, spans = read_unicode_data(ucd_dir)
    tables = {}

    for name, field, count in (("initToUpper", "upper", 1100),
                               ("initToLower", "lower", 1092),
                               ("initToTitle", "title", 1104)):
        table = {r.code: getattr(r, field) for r in rows
                 if getattr(r, field) is not None}
        check_rows(name, table, count)
        identities = sorted(k for k, v in table.items() if k == v)
        expected = [0x01C5, 0x01C8, 0x01CB, 0x01F2] if field == "title" else []
        check(identities == expected,
              f"{name}: identity rows {[fmt_key(k) for k in identities]}, "
              f"expected {[fmt_key(k) for k in expected]}")
        tables[name] = Table(name, "char", table)
    check(0x13A0 not in tables["initToLower"].rows and
          0x10D0 not in tables["initToUpper"].rows and
          not any(c in tables["initToUpper"].rows
                  for c in (0x019B, 0x0264, 0x026A, 0x0282, 0x029D)),
          "simple case mappings: rows of a later Unicode version are present")

    canonical, compat = {}, {}
    for r in rows:
        if not r.decomposition:
            continue
        match = re.match(r"(<[A-Za-z]+>) (.*)\Z", r.decomposition)
        if match:
            value = parse_sequence(match.group(2), r.where)
            check(1 <= len(value) <= 18,
                  f"{r.where}: compatibility mapping of {len(value)} code points")
            compat[r.code] = (value, match.group(1))
        elif r.decomposition.startswith("<"):
            raise DataError(f"{r.where}: bad decomposition tag")
        else:
            canonical[r.code] = parse_sequence(r.decomposition, r.where)
    check_rows("initDecomposition", canonical, 2060, 0x00C0, 0x2FA1D)
    lengths = Counter(len(v) for v in canonical.values())
    check(lengths == Counter({1: 1035, 2: 1025}),
          f"initDecomposition: mapping lengths {dict(lengths)}, expected "
          f"1035 of one code point and 1025 of two")
    check(canonical[0x212B] == (0x00C5,),
          "initDecomposition: U+212B does not map to U+00C5 alone")
    check_rows("initCompatibiltyDecomposition", compat, 3661, 0x00A0, 0x1F251)
    tags = Counter(tag for _, tag in compat.values())
    check(tags == Counter(TAG_COUNTS),
          f"initCompatibiltyDecomposition: tag counts {dict(tags)}, expected "
          f"{TAG_COUNTS}")
    check(max(len(v) for v, _ in compat.values()) == 18,
          "initCompatibiltyDecomposition: longest mapping is not 18")
    tables["initDecomposition"] = Table("initDecomposition", "string",
                                        canonical)
    tables["initCompatibiltyDecomposition"] = Table(
        "initCompatibiltyDecomposition", "compat", compat)

    weights = {r.code: r.ccc for r in rows if r.ccc != 0}
    check_rows("initWeightMap", weights, 745, 0x0300)
    classes = set(weights.values())
    check(len(classes) == 54 and min(classes) == 1 and max(classes) == 240,
          f"initWeightMap: {len(classes)} classes from {min(classes)} to "
          f"{max(classes)}, expected 54 from 1 to 240")
    check(weights.get(0x0345) == 240, "initWeightMap: U+0345 is not 240")
    tables["initWeightMap"] = Table("initWeightMap", "int", weights)

    # Assigned code points: everything UnicodeData.txt lists, less surrogates
    # and private use. Unlisted code points (Cn, noncharacters among them)
    # are not in the list to begin with.
    valid = merge_ranges([(a, b) for a, b, gc in spans
                          if gc not in ("Cs", "Co", "Cn")],
                         "initValidRanges")
    check_ranges("initValidRanges", valid, 598, 113021, (0x0000, 0x0377),
                 (0xE0100, 0xE01EF))
    tables["initValidRanges"] = Table("initValidRanges", "ranges", valid)
    return tables


def build_special_casing_tables(ucd_dir):
    rows = read_special_casing(ucd_dir)
    tables = {}
    plain = sorted((r for r in rows if not r.condition), key=lambda r: r.code)
    conditional = [r for r in rows if r.condition]
    for name, field, identities, condition_name in (
            ("initToUpperSpecial", "upper", 1, "initToUpperSpecialCondition"),
            ("initToLowerSpecial", "lower", 75, "initToLowerSpecialCondition"),
            ("initToTitleSpecial", "title", 28, "initToTitleSpecialCondition")):
        table = {r.code: getattr(r, field) for r in plain}
        check_rows(name, table, 103)
        check(all(1 <= len(v) <= 3 for v in table.values()),
              f"{name}: a value is not of one to three code points")
        found = sum(1 for k, v in table.items() if v == (k,))
        check(found == identities,
              f"{name}: {found} identity rows, expected {identities}")
        tables[name] = Table(name, "string", table)

        condition_table = {(r.condition, r.code): getattr(r, field)
                           for r in conditional}
        check_rows(condition_name, condition_table, 16)
        outer = {}
        for condition, code in condition_table:
            outer.setdefault(condition, []).append(code)
        check({k: sorted(v) for k, v in outer.items()} == CONDITION_KEYS,
              f"{condition_name}: outer and inner keys differ from the "
              f"ten conditions of 7.0.0")
        empty = sorted(k for k, v in condition_table.items() if not v)
        expected_empty = {
            "upper": [("lt After_Soft_Dotted", 0x0307)],
            "title": [("lt After_Soft_Dotted", 0x0307)],
            "lower": [("az After_I", 0x0307), ("tr After_I", 0x0307)],
        }[field]
        check(empty == expected_empty,
              f"{condition_name}: empty values at {empty}, expected "
              f"{expected_empty}")
        tables[condition_name] = Table(condition_name, "condition",
                                       condition_table)
    check(tables["initToUpperSpecial"].rows[0x00DF] == (0x0053, 0x0053) and
          tables["initToLowerSpecial"].rows[0x00DF] == (0x00DF,),
          "SpecialCasing.txt: U+00DF is not mapped as in 7.0.0")
    return tables


def build_case_folding_tables(ucd_dir):
    folding = read_case_folding(ucd_dir)
    tables = {}
    for status, name, kind, count in (("C", "initCCaseFolding", "char", 1076),
                                      ("S", "initSCaseFolding", "char", 28),
                                      ("T", "initTCaseFolding", "char", 2),
                                      ("F", "initFCaseFolding", "string", 104)):
        rows = folding[status]
        if kind == "char":
            rows = {k: v[0] for k, v in rows.items()}
        check_rows(name, sorted(rows), count)
        tables[name] = Table(name, kind, rows)
    check(tables["initTCaseFolding"].rows == {0x0049: 0x0131, 0x0130: 0x0069},
          "initTCaseFolding: rows are not U+0049 to U+0131 and U+0130 to U+0069")
    for c in (0x1FD3, 0x1FE3, 0xFB05):
        check(c not in tables["initCCaseFolding"].rows and
              c not in tables["initSCaseFolding"].rows and
              c in tables["initFCaseFolding"].rows,
              f"CaseFolding.txt: U+{c:04X} is not folded as in 7.0.0")
    return tables


def build_property_tables(ucd_dir):
    tables = {}
    core = read_property_spans(ucd_dir, "DerivedCoreProperties.txt",
                               ["Cased", "Case_Ignorable"])
    cased = merge_ranges(core["Cased"], "initCased")
    check_ranges("initCased", cased, 127, 3671, (0x0041, 0x005A),
                 (0x1F170, 0x1F189))
    check(not contains(cased, 0x10D0) and not contains(cased, 0x13A0),
          "initCased: rows of a later Unicode version are present")
    ignorable = merge_ranges(core["Case_Ignorable"], "initCaseIgnorable")
    check_ranges("initCaseIgnorable", ignorable, 335, 1961, (0x0027, 0x0027),
                 (0xE0100, 0xE01EF))
    check(contains(ignorable, 0x1734) and
          not any(contains(ignorable, c)
                  for c in (0x055F, 0x1885, 0x1886, 0xA9BD)),
          "initCaseIgnorable: the rows are not those of 7.0.0")
    tables["initCased"] = Table("initCased", "ranges", cased)
    tables["initCaseIgnorable"] = Table("initCaseIgnorable", "ranges",
                                        ignorable)

    wanted = [("NFD_QC", "N"), ("NFC_QC", "N"), ("NFC_QC", "M"),
              ("NFKD_QC", "N"), ("NFKC_QC", "N"), ("NFKC_QC", "M")]
    quick = read_property_spans(ucd_dir, "DerivedNormalizationProps.txt",
                                wanted, value_field=True)
    last = (0x2F800, 0x2FA1D)
    for (prop, value), name, count, points, first, last_range in (
            (("NFD_QC", "N"), "initNFD_QC_NoRanges", 231, 13232,
             (0x00C0, 0x00C5), last),
            (("NFC_QC", "N"), "initNFC_QC_NoRanges", 73, 1120,
             (0x0340, 0x0341), last),
            (("NFC_QC", "M"), "initNFC_QC_MaybeRanges", 41, 110,
             (0x0300, 0x0304), (0x115AF, 0x115AF)),
            (("NFKD_QC", "N"), "initNFKD_QC_NoRanges", 390, 16893,
             (0x00A0, 0x00A0), last),
            (("NFKC_QC", "N"), "initNFKC_QC_NoRanges", 249, 4793,
             (0x00A0, 0x00A0), last),
            (("NFKC_QC", "M"), "initNFKC_QC_MaybeRanges", 41, 110,
             (0x0300, 0x0304), (0x115AF, 0x115AF))):
        ranges = merge_ranges(quick[(prop, value)], name)
        check_ranges(name, ranges, count, points, first, last_range)
        tables[name] = Table(name, "ranges", ranges)
    hangul = (0xAC00, 0xD7A3)
    check(hangul in tables["initNFD_QC_NoRanges"].rows and
          hangul in tables["initNFKD_QC_NoRanges"].rows and
          not contains(tables["initNFC_QC_NoRanges"].rows, 0xAC00) and
          not contains(tables["initNFKC_QC_NoRanges"].rows, 0xAC00),
          "quick checks: the Hangul syllables are not where 7.0.0 has them")
    maybe = tables["initNFC_QC_MaybeRanges"].rows
    check(maybe == tables["initNFKC_QC_MaybeRanges"].rows and
          (0x1161, 0x1175) in maybe and (0x11A8, 0x11C2) in maybe and
          not contains(maybe, 0x11A7),
          "quick checks: the Maybe lists are not those of 7.0.0")
    # No Maybe list is published for NFD or NFKD: both fillers are empty.
    tables["initNFD_QC_MaybeRanges"] = Table("initNFD_QC_MaybeRanges",
                                             "ranges", [])
    tables["initNFKD_QC_MaybeRanges"] = Table("initNFKD_QC_MaybeRanges",
                                              "ranges", [])

    exclusions = read_composition_exclusions(ucd_dir)
    check_rows("initCompositionExclusions", exclusions, 81, 0x0958, 0x1D1C0)
    tables["initCompositionExclusions"] = Table("initCompositionExclusions",
                                                "set", exclusions)

    props = read_property_spans(ucd_dir, "PropList.txt", ["Soft_Dotted"])
    soft = merge_ranges(props["Soft_Dotted"], "initSoftDotted")
    check_ranges("initSoftDotted", soft, 31, 46, (0x0069, 0x006A),
                 (0x1D692, 0x1D693))
    tables["initSoftDotted"] = Table("initSoftDotted", "ranges", soft)
    return tables


def cut_into_pieces(keys, name, pieces, piece_rows, last_piece_rows, first,
                    last):
    """Rows in ascending order, cut by count: rows // PIECES a piece, and the
    remainder as one more piece."""
    size = len(keys) // PIECES
    cut = [keys[i * size:(i + 1) * size] for i in range(PIECES)]
    if len(keys) % PIECES:
        cut.append(keys[PIECES * size:])
    check(len(cut) == pieces,
          f"{name}: {len(cut)} pieces, expected {pieces}")
    check(len(cut[0]) == piece_rows and len(cut[-1]) == last_piece_rows,
          f"{name}: pieces of {len(cut[0])} rows and a last one of "
          f"{len(cut[-1])}, expected {piece_rows} and {last_piece_rows}")
    check(cut[0][0] == first and cut[-1][-1] == last,
          f"{name}: pieces run from {fmt_key(cut[0][0])} to "
          f"{fmt_key(cut[-1][-1])}, expected {fmt_key(first)} to "
          f"{fmt_key(last)}")
    return cut


# ---------------------------------------------------------------------------
# The property index: for every code point, one 32-bit record of what the
# tables hold for it, in a two-stage table (a block number for every 128 code
# points, and the distinct blocks of records). transform/PropertyIndex.h
# declares it and says what each bit means; the two must agree.

CODE_POINTS = 0x110000
BLOCK_SHIFT = 7
BLOCK_SIZE = 1 << BLOCK_SHIFT

# Bits 0-7: the combining class. Bits 8-15: the row of the case distances.
CASE_SHIFT = 8
# Bits 16-31, in the order of the enumeration of transform/PropertyIndex.h.
INDEX_FLAGS = [
    "kCanonicalDecomposition", "kCompatDecomposition",
    "kNfdNo", "kNfcNo", "kNfcMaybe", "kNfkdNo", "kNfkcNo", "kNfkcMaybe",
    "kComposesFirst", "kComposesSecond", "kAssigned",
    "kSpecialCasing", "kConditionalCasing",
    "kCased", "kCaseIgnorable", "kSoftDotted",
]
FLAG_BIT = {name: 1 << (16 + i) for i, name in enumerate(INDEX_FLAGS)}


def composition_pairs(tables):
    """The pairs of compositionMap, as the constructor builds them from the
    one-level canonical mappings: two elements, a starter composite with a
    starter first element, and no exclusion."""
    weights = tables["initWeightMap"].rows
    excluded = set(tables["initCompositionExclusions"].rows)
    return {key: value for key, value
            in tables["initDecomposition"].rows.items()
            if len(value) == 2 and key not in weights and
            value[0] not in weights and key not in excluded}


def case_distances(tables, c):
    """(upper, lower, title, fold) distances of the simple mappings of c; 0
    where the table has no row, or a row to c itself."""
    upper = tables["initToUpper"].rows.get(c, c)
    lower = tables["initToLower"].rows.get(c, c)
    title = tables["initToTitle"].rows.get(c, c)
    fold = tables["initCCaseFolding"].rows.get(
        c, tables["initSCaseFolding"].rows.get(c, c))
    return (upper - c, lower - c, title - c, fold - c)


def build_property_index(tables):
    """Returns (records, distance rows), a record for every code point up to
    U+10FFFF and the distinct distance rows, row 0 being no mapping."""
    records = [0] * CODE_POINTS

    def flag_ranges(ranges, flag):
        for first, last in ranges:
            for c in range(first, last + 1):
                records[c] |= FLAG_BIT[flag]

    def flag_codes(codes, flag):
        for c in codes:
            records[c] |= FLAG_BIT[flag]

    for c, weight in tables["initWeightMap"].rows.items():
        check(0 < weight < 256, f"U+{c:04X}: class {weight} needs more than "
                                f"eight bits")
        records[c] |= weight

    distances = {(0, 0, 0, 0): 0}
    mapped = set()
    for name in ("initToUpper", "initToLower", "initToTitle",
                 "initCCaseFolding", "initSCaseFolding"):
        mapped.update(tables[name].rows)
    for c in sorted(mapped):
        row = distances.setdefault(case_distances(tables, c), len(distances))
        records[c] |= row << CASE_SHIFT
    check(len(distances) <= 256, f"{len(distances)} rows of case distances "
                                 f"need more than eight bits")

    flag_codes(tables["initDecomposition"].rows, "kCanonicalDecomposition")
    flag_codes(tables["initCompatibiltyDecomposition"].rows,
               "kCompatDecomposition")
    for table, flag in (("initNFD_QC_NoRanges", "kNfdNo"),
                        ("initNFC_QC_NoRanges", "kNfcNo"),
                        ("initNFC_QC_MaybeRanges", "kNfcMaybe"),
                        ("initNFKD_QC_NoRanges", "kNfkdNo"),
                        ("initNFKC_QC_NoRanges", "kNfkcNo"),
                        ("initNFKC_QC_MaybeRanges", "kNfkcMaybe"),
                        ("initValidRanges", "kAssigned"),
                        ("initCased", "kCased"),
                        ("initCaseIgnorable", "kCaseIgnorable"),
                        ("initSoftDotted", "kSoftDotted")):
        flag_ranges(tables[table].rows, flag)
    pairs = composition_pairs(tables)
    check(len(pairs) == 940,
          f"compositionMap: {len(pairs)} pairs, expected 940")
    flag_codes({first for first, _ in pairs.values()}, "kComposesFirst")
    flag_codes({second for _, second in pairs.values()}, "kComposesSecond")
    flag_codes(tables["initToUpperSpecial"].rows, "kSpecialCasing")
    flag_codes({code for _, code in tables["initToUpperSpecialCondition"].rows},
               "kConditionalCasing")
    rows = sorted(distances, key=distances.get)
    return records, rows


def two_stage(records, what):
    """(block of every BLOCK_SIZE code points, distinct blocks in order of
    first use): the first stage fits a byte, or the run stops."""
    block_of, blocks, numbers = [], [], {}
    for start in range(0, len(records), BLOCK_SIZE):
        block = tuple(records[start:start + BLOCK_SIZE])
        if block not in numbers:
            numbers[block] = len(blocks)
            blocks.append((start, block))
        block_of.append(numbers[block])
    check(len(blocks) <= 256, f"{what}: {len(blocks)} distinct blocks do not "
                              f"fit the byte of the first stage")
    return block_of, blocks


def two_stage_source(block_of, blocks, block_of_name, blocks_name, about):
    """The two arrays of a table from two_stage, as C++, up to the brace that
    closes the second: the block of every 128 code points, then the distinct
    blocks of 32-bit records with the first code point of each."""
    parts = ["// The block of every 128 code points, 16 a line.\n"
             f"const std::uint8_t {block_of_name}[{len(block_of)}] = {{\n"]
    for start in range(0, len(block_of), 16):
        line = ", ".join(f"{b:3d}" for b in block_of[start:start + 16])
        parts.append(f"    {line},  // U+{start * BLOCK_SIZE:04X}\n")
    parts.append(f"}};\n\n// {about}.\n"
                 f"const std::uint32_t {blocks_name}[][{BLOCK_SIZE}] = {{\n")
    for number, (start, block) in enumerate(blocks):
        parts.append(f"    // {number}: first at U+{start:04X}\n    {{\n")
        for i in range(0, BLOCK_SIZE, 8):
            line = ", ".join(f"0x{r:08X}" for r in block[i:i + 8])
            parts.append(f"        {line},\n")
        parts.append("    },\n")
    return "".join(parts)


def property_index_source(tables):
    records, rows = build_property_index(tables)
    block_of, blocks = two_stage(records, "the property index")
    size = len(block_of) + len(blocks) * BLOCK_SIZE * 4 + len(rows) * 16
    parts = [stamp(ALL_INPUTS),
             "// The property index of transform/PropertyIndex.h: "
             f"{len(blocks)} distinct blocks of\n// {BLOCK_SIZE} records, "
             f"{len(rows)} rows of case distances, {size} bytes in all.\n\n",
             '#include "transform/PropertyIndex.h"\n\n',
             "namespace zelvo {\nnamespace unicode {\n"
             "namespace propertyindex {\n\n",
             "// Upper, lower, title and folding distance of each row; the "
             "first code point\n// that has the row.\n",
             "const CaseDistances kCaseDistances[] = {\n"]
    first_of_row = {}
    for c in range(CODE_POINTS):
        first_of_row.setdefault((records[c] >> CASE_SHIFT) & 0xFF, c)
    for number, row in enumerate(rows):
        parts.append(f"    {{{row[0]}, {row[1]}, {row[2]}, {row[3]}}},"
                     f"  // {number}: U+{first_of_row[number]:04X}\n")
    parts.append("};\n\n")
    parts.append(two_stage_source(block_of, blocks, "kBlockOf", "kBlocks",
                                  "The distinct blocks, 8 records a line"))
    parts.append("};\n\n}  // namespace propertyindex\n"
                 "}  // namespace unicode\n}  // namespace zelvo\n")
    return "".join(parts)


# ---------------------------------------------------------------------------
# The normalization data: the full decompositions of every code point that has
# one, in one pool, and the primary composites in a hash table, so that the
# normal forms of the finished tables look nothing up in a tree.
# transform/NormalizationData.h declares it and says what each bit means; the
# two must agree.

# The Hangul constants of the tables' constructor.
S_BASE, L_BASE, V_BASE, T_BASE = 0xAC00, 0x1100, 0x1161, 0x11A7
L_COUNT, V_COUNT, T_COUNT = 19, 21, 28
N_COUNT = V_COUNT * T_COUNT
S_COUNT = L_COUNT * N_COUNT

# Thresholds of the written algorithms, below which they look nothing up.
NFD_THRESHOLD, NFKD_THRESHOLD = 0x00C0, 0x00A0

# Record bits: the pool offset, the two lengths, and the flags.
OFFSET_BITS = 14
CANONICAL_LENGTH_SHIFT, CANONICAL_LENGTH_BITS = 14, 3
NFKD_LENGTH_SHIFT, NFKD_LENGTH_BITS = 17, 5
NORMALIZATION_FLAGS = ["kNfkdAfterCanonical", "kNfcBoundary", "kNfcQuick",
                       "kNfkcBoundary", "kNfkcQuick"]
NORMALIZATION_BIT = {name: 1 << (22 + i)
                     for i, name in enumerate(NORMALIZATION_FLAGS)}

COMPOSITION_SLOTS = 2048
COMPOSITION_MAX_PROBES = 8


def hangul_decomposition(c):
    index = c - S_BASE
    parts = [L_BASE + index // N_COUNT, V_BASE + (index % N_COUNT) // T_COUNT]
    if index % T_COUNT:
        parts.append(T_BASE + index % T_COUNT)
    return parts


def full_canonical_decompositions(tables):
    """decompositionMap as the constructor builds it: the chain of first
    elements followed to its end, the second elements gathered on the way."""
    raw = tables["initDecomposition"].rows
    full = {}
    for key, value in raw.items():
        first, seconds = value[0], []
        while first in raw:
            entry = raw[first]
            first = entry[0]
            seconds.append(entry[1:2])
        parts = [first]
        for second in reversed(seconds):
            parts.extend(second)
        parts.extend(value[1:2])
        full[key] = tuple(parts)
    return full


def canonical_pass(codes, canonical):
    """The decomposition step of toNFD without its sort."""
    out = []
    for c in codes:
        if c < NFD_THRESHOLD:
            out.append(c)
        elif c in canonical:
            out.extend(canonical[c])
        elif 0 <= c - S_BASE < S_COUNT:
            out.extend(hangul_decomposition(c))
        else:
            out.append(c)
    return out


def full_compat_decompositions(tables, canonical):
    """compatDecompositionMap as the constructor builds it: the mappings
    expanded through compatibility mappings, then through canonical ones,
    with nothing sorted (the combining classes are not loaded yet)."""
    raw = tables["initCompatibiltyDecomposition"].rows

    def expand(c):
        if c not in raw:
            return [c]
        return [x for element in raw[c][0] for x in expand(element)]

    return {key: tuple(canonical_pass(
                [x for element in value for x in expand(element)], canonical))
            for key, (value, _) in raw.items()}


class CompositionKinds:
    """What a code point is to composed text, by the rule of the fast paths
    of toNFC and toNFKC: a boundary starts a piece of text that composes
    apart from what stands before it, and a quick code point is a boundary
    that a piece of its own leaves as it stands."""

    def __init__(self, tables, canonical, nfkd):
        self.weights = tables["initWeightMap"].rows
        self.canonical = canonical
        self.nfkd = nfkd
        self.seconds = {second for _, second
                        in composition_pairs(tables).values()}
        self.lists = {name: set(c for first, last in tables[name].rows
                                for c in range(first, last + 1))
                      for name in ("initNFC_QC_NoRanges",
                                   "initNFC_QC_MaybeRanges",
                                   "initNFKC_QC_NoRanges",
                                   "initNFKC_QC_MaybeRanges")}

    def composition_boundary(self, c):
        # No composition reaches back over c: a starter that is no second
        # element of a pair and no vowel or trailing consonant of Hangul.
        return (c not in self.weights and c not in self.seconds and
                not V_BASE <= c < T_BASE + T_COUNT)

    def kinds(self, c, compatibility):
        """(boundary, quick) of c for toNFKC, or for toNFC."""
        if compatibility:
            first = self.nfkd[c][0] if c in self.nfkd else c
            no, maybe = "initNFKC_QC_NoRanges", "initNFKC_QC_MaybeRanges"
        else:
            first = self.canonical[c][0] if c in self.canonical else c
            no, maybe = "initNFC_QC_NoRanges", "initNFC_QC_MaybeRanges"
        boundary = c not in self.weights and self.composition_boundary(first)
        quick = boundary and c not in self.lists[no] and \
            c not in self.lists[maybe]
        return boundary, quick


def nfkd_expansions(canonical, compat):
    """What toNFKD makes of each code point with a decomposition: the
    canonical one with each element replaced by its compatibility one, or the
    compatibility one."""
    nfkd = dict(compat)
    for c, canon in canonical.items():
        nfkd[c] = tuple(x for e in canon for x in
                        (compat[e] if e >= NFKD_THRESHOLD and e in compat
                         else (e,)))
    return nfkd


def normalization_records(tables, canonical, compat, nfkd, kinds):
    """(record of every code point with a decomposition, pool)."""
    weights = tables["initWeightMap"].rows
    pool, offsets, records = [], {}, {}
    for c in sorted(nfkd):
        check(c not in weights or c not in compat,
              f"U+{c:04X}: a non-starter with a compatibility decomposition")
        canon = canonical.get(c, ())
        stored = canon + (nfkd[c] if nfkd[c] != canon else ())
        if stored not in offsets:
            offsets[stored] = len(pool)
            pool.extend(stored)
        record = offsets[stored]
        check(len(canon) < 1 << CANONICAL_LENGTH_BITS and
              len(nfkd[c]) < 1 << NFKD_LENGTH_BITS,
              f"U+{c:04X}: an expansion too long for its record")
        record |= len(canon) << CANONICAL_LENGTH_SHIFT
        record |= len(nfkd[c]) << NFKD_LENGTH_SHIFT
        if canon and nfkd[c] != canon:
            record |= NORMALIZATION_BIT["kNfkdAfterCanonical"]
        for compatibility, boundary_flag, quick_flag in (
                (False, "kNfcBoundary", "kNfcQuick"),
                (True, "kNfkcBoundary", "kNfkcQuick")):
            boundary, quick = kinds.kinds(c, compatibility)
            record |= boundary * NORMALIZATION_BIT[boundary_flag]
            record |= quick * NORMALIZATION_BIT[quick_flag]
        records[c] = record
    check(len(pool) <= 1 << OFFSET_BITS,
          f"the expansion pool of {len(pool)} code points needs more than "
          f"{OFFSET_BITS} bits of offset")
    return records, pool


def composition_slot(first, second):
    """The home slot of a pair; transform/NormalizationData.h has the same."""
    return (((first ^ second << 11) * 0x9E3779B1) & 0xFFFFFFFF) >> 21


def composition_slots(tables):
    """The pairs of compositionMap in open addressing: each entry holds
    first << 42 | second << 21 | composite, and 0 marks an empty slot."""
    slots = [0] * COMPOSITION_SLOTS
    for composite, (first, second) in sorted(composition_pairs(tables).items()):
        slot = composition_slot(first, second)
        for probe in range(COMPOSITION_MAX_PROBES + 1):
            check(probe < COMPOSITION_MAX_PROBES,
                  f"U+{first:04X} U+{second:04X}: no slot within "
                  f"{COMPOSITION_MAX_PROBES} probes")
            if slots[slot] == 0:
                break
            slot = (slot + 1) % COMPOSITION_SLOTS
        slots[slot] = first << 42 | second << 21 | composite
    return slots


def normalization_thresholds(tables, canonical, nfkd, kinds):
    """(name, what lies below, value): the lowest code point at which each
    fast path of the normal forms has to look into the data."""
    weights = tables["initWeightMap"].rows

    def first_where(test):
        return next(c for c in range(CODE_POINTS) if test(c))

    def listed(name, c):
        return c in kinds.lists[name]

    def syllable(c):
        return 0 <= c - S_BASE < S_COUNT

    return [
        ("kNfdCopiedBelow",
         "Below: no combining class and nothing for toNFD to decompose",
         first_where(lambda c: c in weights or c in canonical or
                     syllable(c))),
        ("kNfkdCopiedBelow",
         "Below: no combining class and nothing for toNFKD to decompose",
         first_where(lambda c: c in weights or c in nfkd or syllable(c))),
        ("kNfcCopiedBelow",
         "Below: quick for toNFC, and nothing for it to decompose",
         first_where(lambda c: not kinds.kinds(c, False)[1] or
                     c in canonical)),
        ("kNfkcCopiedBelow",
         "Below: quick for toNFKC, and nothing for it to decompose",
         first_where(lambda c: not kinds.kinds(c, True)[1] or c in nfkd)),
        ("kNfcCheckedBelow",
         "Below: no combining class and in no list of isNFC",
         first_where(lambda c: c in weights or
                     listed("initNFC_QC_NoRanges", c) or
                     listed("initNFC_QC_MaybeRanges", c))),
        ("kNfkcCheckedBelow",
         "Below: no combining class and in no list of isNFKC",
         first_where(lambda c: c in weights or
                     listed("initNFKC_QC_NoRanges", c) or
                     listed("initNFKC_QC_MaybeRanges", c))),
    ]


def normalization_data_source(tables):
    canonical = full_canonical_decompositions(tables)
    compat = full_compat_decompositions(tables, canonical)
    nfkd = nfkd_expansions(canonical, compat)
    kinds = CompositionKinds(tables, canonical, nfkd)
    records, pool = normalization_records(tables, canonical, compat, nfkd,
                                          kinds)
    full = [records.get(c, 0) for c in range(CODE_POINTS)]
    block_of, blocks = two_stage(full, "the decomposition records")
    slots = composition_slots(tables)
    thresholds = normalization_thresholds(tables, canonical, nfkd, kinds)
    size = (len(block_of) + len(blocks) * BLOCK_SIZE * 4 + len(pool) * 4 +
            len(slots) * 8 + len(thresholds) * 4)
    parts = [stamp(["UnicodeData.txt", "DerivedNormalizationProps.txt",
                    "CompositionExclusions.txt"]),
             "// The normalization data of transform/NormalizationData.h: "
             f"{len(records)} records in\n// {len(blocks)} distinct blocks of "
             f"{BLOCK_SIZE}, {len(pool)} code points of expansions, "
             f"{sum(1 for s in slots if s)} pairs in\n// {len(slots)} "
             f"slots, {size} bytes in all.\n\n",
             '#include "transform/NormalizationData.h"\n\n',
             "namespace zelvo {\nnamespace unicode {\n"
             "namespace normalizationdata {\n\n"]
    for name, about, value in thresholds:
        parts.append(f"// {about}.\nconst char32_t {name} = {hexcode(value)};\n")
    parts.append("\n")
    parts.append(two_stage_source(block_of, blocks, "kRecordBlockOf",
                                  "kRecordBlocks",
                                  "The distinct blocks of records, 8 a line"))
    parts.append("};\n\n// The expansions, 8 code points a line.\n"
                 f"const char32_t kExpansions[{len(pool)}] = {{\n")
    for i in range(0, len(pool), 8):
        line = ", ".join(f"0x{c:05X}" for c in pool[i:i + 8])
        parts.append(f"    {line},  // {i}\n")
    parts.append("};\n\n// The pairs, 4 slots a line.\n"
                 "const std::uint64_t kCompositionSlots[kCompositionSlotCount]"
                 " = {\n")
    for i in range(0, len(slots), 4):
        line = ", ".join(f"0x{s:016X}" for s in slots[i:i + 4])
        parts.append(f"    {line},  // {i}\n")
    parts.append("};\n\n}  // namespace normalizationdata\n"
                 "}  // namespace unicode\n}  // namespace zelvo\n")
    return "".join(parts)


# ---------------------------------------------------------------------------
# The C++ text.

MAP_CHAR = "std::map<char32_t, char32_t>& m"
MAP_STRING = "std::map<char32_t, String>& m"
MAP_COMPAT = "std::map<char32_t, std::pair<String, std::string>>& m"
CONDITION = "std::map<std::string, std::map<char32_t, String>>& m"
RANGES = "std::vector<std::pair<char32_t, char32_t>>& v"

# Filler name -> (parameter, what it holds). In the order of Fillers.h.
FILLERS = [
    ("initToUpper", MAP_CHAR, "Simple_Uppercase_Mapping, field 12 of UnicodeData.txt"),
    ("initToLower", MAP_CHAR, "Simple_Lowercase_Mapping, field 13 of UnicodeData.txt"),
    ("initToTitle", MAP_CHAR, "Simple_Titlecase_Mapping, field 14 of UnicodeData.txt"),
    ("initToUpperSpecial", MAP_STRING, "upper field of the unconditional rows of SpecialCasing.txt"),
    ("initToLowerSpecial", MAP_STRING, "lower field of the unconditional rows of SpecialCasing.txt"),
    ("initToTitleSpecial", MAP_STRING, "title field of the unconditional rows of SpecialCasing.txt"),
    ("initToUpperSpecialCondition", CONDITION, "upper field of the conditional rows of SpecialCasing.txt"),
    ("initToLowerSpecialCondition", CONDITION, "lower field of the conditional rows of SpecialCasing.txt"),
    ("initToTitleSpecialCondition", CONDITION, "title field of the conditional rows of SpecialCasing.txt"),
    ("initCCaseFolding", MAP_CHAR, "status C of CaseFolding.txt"),
    ("initSCaseFolding", MAP_CHAR, "status S of CaseFolding.txt"),
    ("initTCaseFolding", MAP_CHAR, "status T of CaseFolding.txt"),
    ("initFCaseFolding", MAP_STRING, "status F of CaseFolding.txt"),
    ("initDecomposition", MAP_STRING, "canonical mappings, field 5 of UnicodeData.txt without a tag"),
    ("initCompatibiltyDecomposition", MAP_COMPAT, "compatibility mappings and their tags, field 5 of UnicodeData.txt"),
    ("initCased", RANGES, "Cased of DerivedCoreProperties.txt"),
    ("initCaseIgnorable", RANGES, "Case_Ignorable of DerivedCoreProperties.txt"),
    ("initValidRanges", RANGES, "assigned code points, less surrogates, private use and noncharacters"),
    ("initNFD_QC_NoRanges", RANGES, "NFD_QC=N of DerivedNormalizationProps.txt"),
    ("initNFD_QC_MaybeRanges", RANGES, "nothing: no NFD_QC=M is published"),
    ("initNFC_QC_NoRanges", RANGES, "NFC_QC=N of DerivedNormalizationProps.txt"),
    ("initNFC_QC_MaybeRanges", RANGES, "NFC_QC=M of DerivedNormalizationProps.txt"),
    ("initNFKD_QC_NoRanges", RANGES, "NFKD_QC=N of DerivedNormalizationProps.txt"),
    ("initNFKD_QC_MaybeRanges", RANGES, "nothing: no NFKD_QC=M is published"),
    ("initNFKC_QC_NoRanges", RANGES, "NFKC_QC=N of DerivedNormalizationProps.txt"),
    ("initNFKC_QC_MaybeRanges", RANGES, "NFKC_QC=M of DerivedNormalizationProps.txt"),
]
PARAMETERS = {name: parameter for name, parameter, _ in FILLERS}
COMMENTS = {name: comment for name, _, comment in FILLERS}


def hexcode(c):
    return f"0x{c:06X}"


def string_literal(codes):
    return "String{" + ", ".join(hexcode(c) for c in codes) + "}"


def row_lines(table, keys=None):
    """One C++ statement per row, in ascending order."""
    rows = table.rows
    kind = table.kind
    if kind == "char":
        return [f"  m[{hexcode(k)}] = {hexcode(rows[k])};"
                for k in (keys or sorted(rows))]
    if kind == "string":
        return [f"  m[{hexcode(k)}] = {string_literal(rows[k])};"
                for k in (keys or sorted(rows))]
    if kind == "compat":
        return [f"  m[{hexcode(k)}] = {{{string_literal(rows[k][0])}, "
                f"\"{rows[k][1]}\"}};" for k in (keys or sorted(rows))]
    if kind == "condition":
        return [f"  m[\"{c}\"][{hexcode(k)}] = {string_literal(rows[(c, k)])};"
                for c, k in sorted(rows)]
    if kind == "ranges":
        return [f"  v.push_back({{{hexcode(a)}, {hexcode(b)}}});"
                for a, b in rows]
    raise AssertionError(kind)


def stamp(inputs, comment_mark="//"):
    return (f"{comment_mark} Generated by {SCRIPT} from "
            f"{', '.join(inputs)} of Unicode {VERSION}. Do not edit.\n"
            f"{comment_mark} Unicode data, under the Unicode License v3: see "
            f"{DATA_LICENSE}.\n")


class Output:
    """The generated files, by name, in the order they are made."""

    def __init__(self):
        self.files = {}

    def add(self, name, text, limit=MAX_FILE_BYTES):
        if name in self.files:
            raise AssertionError(f"{name} written twice")
        if len(text.encode()) > limit:
            raise DataError(f"{name} would be {len(text.encode())} bytes, "
                            f"above {limit}: cut its table over more files")
        self.files[name] = text


def filler_source(inputs, about, functions):
    """A .cpp of fillers. `functions` is a list of (name, parameter, lines)."""
    parts = [stamp(inputs), f"// {about}\n\n",
             '#include "transform/data/Fillers.h"\n\n',
             "namespace zelvo_private {\nnamespace unicode {\n"]
    for name, parameter, lines in functions:
        body = "".join(line + "\n" for line in lines)
        if not lines:
            parameter = parameter.rsplit(" ", 1)[0]  # an unnamed parameter
        parts.append(f"\nvoid {name}({parameter}) {{\n{body}}}\n")
    parts.append("\n}  // namespace unicode\n}  // namespace zelvo_private\n")
    return "".join(parts)


def method_source(inputs, about, method, lines):
    body = "".join(line + "\n" for line in lines)
    return (stamp(inputs) + f"// {about}\n\n"
            '#include "transform/UnicodeTransformationTables.h"\n\n'
            "namespace zelvo {\nnamespace unicode {\n\n"
            f"void UnicodeTransformationTables::{method}() {{\n{body}}}\n\n"
            "}  // namespace unicode\n}  // namespace zelvo\n")


def simple_filler(out, file_name, inputs, about, tables, names):
    functions = [(n, PARAMETERS[n], row_lines(tables[n])) for n in names]
    out.add(file_name, filler_source(inputs, about, functions))


def pieced_filler(out, tables, name, file_stem, inputs, about, pieces,
                  piece_rows, last_piece_rows, first, last):
    table = tables[name]
    cut = cut_into_pieces(sorted(table.rows), name, pieces, piece_rows,
                          last_piece_rows, first, last)
    calls = [f"  {name}Part{i}(m);" for i in range(1, len(cut) + 1)]
    out.add(f"{file_stem}.cpp", filler_source(
        inputs, about + ", called piece by piece.",
        [(name, PARAMETERS[name], calls)]))
    for i, keys in enumerate(cut, 1):
        out.add(f"{file_stem}Piece{i}.cpp", filler_source(
            inputs, f"{about}: piece {i} of {len(cut)}, U+{keys[0]:04X} to "
                    f"U+{keys[-1]:04X}.",
            [(f"{name}Part{i}", PARAMETERS[name], row_lines(table, keys))]))
    return len(cut)


def fillers_header(piece_counts):
    lines = [stamp(ALL_INPUTS),
             "// The table fillers of zelvo_private::unicode. Each one only adds "
             "its rows, in\n// ascending order, to the container it is given, "
             "and assumes it is empty.\n",
             "#pragma once\n\n#include <map>\n#include <string>\n"
             "#include <utility>\n#include <vector>\n\n"
             '#include "string/String.h"\n\n',
             "namespace zelvo_private {\nnamespace unicode {\n\n",
             "using zelvo::unicode::String;\n"]
    for name, parameter, comment in FILLERS:
        lines.append(f"\n// {comment}.\nvoid {name}({parameter});\n")
        for i in range(1, piece_counts.get(name, 0) + 1):
            lines.append(f"void {name}Part{i}({parameter});\n")
    lines.append("\n}  // namespace unicode\n}  // namespace zelvo_private\n")
    return "".join(lines)


def sources_cmake(names):
    listed = "".join(f"  ${{CMAKE_CURRENT_LIST_DIR}}/{n}\n"
                     for n in names if n.endswith(".cpp"))
    return (stamp(ALL_INPUTS, "#") +
            "# The filler sources, for the library target of the root "
            "CMakeLists.txt.\n"
            f"set(ZELVO_UNICODE_DATA_SOURCES\n{listed})\n"
            "# The fillers run once, at load. Optimised for size, they build "
            "faster and into\n# far less code than at -O3, and fill the "
            "tables as fast.\n# Their debug information, one huge function "
            "of insertions each, is of no use\n# and costs most of their "
            "build time in debug and sanitizer builds.\n"
            'if(CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang")\n'
            "  set_source_files_properties(${ZELVO_UNICODE_DATA_SOURCES}\n"
            "    PROPERTIES COMPILE_OPTIONS \"-Os;-g0\")\n"
            "endif()\n")


ALL_INPUTS = ["UnicodeData.txt", "SpecialCasing.txt", "CaseFolding.txt",
              "DerivedCoreProperties.txt", "DerivedNormalizationProps.txt",
              "CompositionExclusions.txt", "PropList.txt"]
UD = ["UnicodeData.txt"]
SC = ["SpecialCasing.txt"]
CF = ["CaseFolding.txt"]


def generate(ucd_dir):
    """Reads the files, checks them, and returns {file name: text}."""
    tables = {}
    tables.update(build_unicode_data_tables(ucd_dir))
    tables.update(build_special_casing_tables(ucd_dir))
    tables.update(build_case_folding_tables(ucd_dir))
    tables.update(build_property_tables(ucd_dir))

    out = Output()
    simple_filler(out, "ToUpper.cpp", UD, "Simple uppercase mappings.",
                  tables, ["initToUpper"])
    simple_filler(out, "ToLower.cpp", UD, "Simple lowercase mappings.",
                  tables, ["initToLower"])
    simple_filler(out, "ToTitle.cpp", UD, "Simple titlecase mappings.",
                  tables, ["initToTitle"])
    simple_filler(out, "SpecialCasing.cpp", SC,
                  "Full case mappings without a condition; identity rows are "
                  "kept.", tables,
                  ["initToUpperSpecial", "initToLowerSpecial",
                   "initToTitleSpecial"])
    simple_filler(out, "SpecialCasingConditions.cpp", SC,
                  "Full case mappings under their condition text; an empty "
                  "value deletes.", tables,
                  ["initToUpperSpecialCondition", "initToLowerSpecialCondition",
                   "initToTitleSpecialCondition"])
    simple_filler(out, "CaseFolding.cpp", CF,
                  "Case folding, one table per status: C, S, T and F.",
                  tables, ["initCCaseFolding", "initSCaseFolding",
                           "initTCaseFolding", "initFCaseFolding"])
    pieces = {
        "initDecomposition": pieced_filler(
            out, tables, "initDecomposition", "Decomposition", UD,
            "Canonical mappings, one level as published", 10, 206, 206,
            0x00C0, 0x2FA1D),
        "initCompatibiltyDecomposition": pieced_filler(
            out, tables, "initCompatibiltyDecomposition",
            "CompatibilityDecomposition", UD,
            "Compatibility mappings with their tags, one level as published",
            11, 366, 1, 0x00A0, 0x1F251),
    }
    simple_filler(out, "CaseProperties.cpp", ["DerivedCoreProperties.txt"],
                  "The Cased and Case_Ignorable code points, as ranges.",
                  tables, ["initCased", "initCaseIgnorable"])
    simple_filler(out, "ValidRanges.cpp", UD,
                  "Assigned code points less surrogates, private use and "
                  "noncharacters, as ranges.", tables, ["initValidRanges"])
    simple_filler(out, "QuickCheckRanges.cpp",
                  ["DerivedNormalizationProps.txt"],
                  "Normalization quick check ranges; NFD and NFKD publish no "
                  "Maybe values.", tables,
                  ["initNFD_QC_NoRanges", "initNFD_QC_MaybeRanges",
                   "initNFC_QC_NoRanges", "initNFC_QC_MaybeRanges",
                   "initNFKD_QC_NoRanges", "initNFKD_QC_MaybeRanges",
                   "initNFKC_QC_NoRanges", "initNFKC_QC_MaybeRanges"])

    out.add("WeightMap.cpp", method_source(
        UD, "The canonical combining class of every code point whose class "
            "is not 0.", "initWeightMap",
        [f"  weightMap[{hexcode(k)}] = {v};"
         for k, v in sorted(tables["initWeightMap"].rows.items())]))
    out.add("CompositionExclusions.cpp", method_source(
        ["CompositionExclusions.txt"],
        "The code points listed in CompositionExclusions.txt, and no others.",
        "initCompositionExclusions",
        [f"  compositionExclusions.insert({hexcode(c)});"
         for c in tables["initCompositionExclusions"].rows]))
    out.add("SoftDotted.cpp", method_source(
        ["PropList.txt"], "The Soft_Dotted code points, as ranges.",
        "initSoftDotted",
        [f"  softDottedRanges.push_back({{{hexcode(a)}, {hexcode(b)}}});"
         for a, b in tables["initSoftDotted"].rows]))

    out.add("PropertyIndex.cpp", property_index_source(tables),
            MAX_INDEX_BYTES)
    out.add("NormalizationData.cpp", normalization_data_source(tables),
            MAX_INDEX_BYTES)
    out.add("Fillers.h", fillers_header(pieces))
    out.add("Sources.cmake", sources_cmake(out.files))
    return out.files


# ---------------------------------------------------------------------------
# Writing and checking.

def is_generated(path):
    try:
        with open(path, encoding="utf-8") as f:
            return f"Generated by {SCRIPT}" in f.readline()
    except (OSError, UnicodeDecodeError):
        return False


def write(files, out_dir):
    os.makedirs(out_dir, exist_ok=True)
    for name, text in files.items():
        path = os.path.join(out_dir, name)
        try:
            with open(path, encoding="utf-8", newline="") as f:
                if f.read() == text:
                    continue  # leave the time stamp alone: no rebuild
        except OSError:
            pass
        with open(path, "w", encoding="utf-8", newline="") as f:
            f.write(text)
    # A generated file that is no longer made is removed.
    for name in sorted(os.listdir(out_dir)):
        path = os.path.join(out_dir, name)
        if name not in files and os.path.isfile(path) and is_generated(path):
            os.remove(path)


def check_committed(files, data_dir, ucd_dir):
    """Regenerates into a temporary folder and compares it with data_dir."""
    with tempfile.TemporaryDirectory() as tmp:
        write(files, tmp)
        problems = []
        for name in sorted(files):
            fresh_path = os.path.join(tmp, name)
            committed = os.path.join(data_dir, name)
            with open(fresh_path, encoding="utf-8", newline="") as f:
                fresh = f.read()
            try:
                with open(committed, encoding="utf-8", newline="") as f:
                    old = f.read()
            except OSError:
                problems.append(f"missing: transform/data/{name}")
                continue
            if old != fresh:
                diff = list(difflib.unified_diff(
                    old.splitlines(), fresh.splitlines(),
                    f"committed/{name}", f"generated/{name}", lineterm=""))
                shown = "\n".join(diff[:20])
                more = f"\n... {len(diff) - 20} more diff lines" \
                    if len(diff) > 20 else ""
                problems.append(f"differs: transform/data/{name}\n{shown}{more}")
        for name in sorted(os.listdir(data_dir)):
            path = os.path.join(data_dir, name)
            if name not in files and is_generated(path):
                problems.append(f"no longer generated: transform/data/{name}")
    if problems:
        print("\n".join(problems), file=sys.stderr)
        print(f"\nThe generated tables in transform/data/ are out of date with "
              f"{ucd_dir} or with the generator.\nFix: run "
              f"`{FIX_COMMAND}` from the repository root, and commit the "
              f"result.", file=sys.stderr)
        return 1
    print(f"transform/data/: all {len(files)} generated files are up to date.")
    return 0


def main(argv=None):
    parser = argparse.ArgumentParser(
        description="Generate the Unicode 7.0.0 table fillers of the library.")
    parser.add_argument("ucd_dir", nargs="?", metavar="UCD_DIR",
                        help="folder of the Unicode 7.0.0 data files")
    parser.add_argument("--out", metavar="DIR", default=DATA_DIR,
                        help="where to write (default: transform/data/)")
    parser.add_argument("--check", metavar="UCD_DIR",
                        help="regenerate into a temporary folder and fail on "
                             "any difference from transform/data/")
    args = parser.parse_args(argv)
    if (args.ucd_dir is None) == (args.check is None):
        parser.error("give the data folder either as UCD_DIR or after --check")
    ucd_dir = args.check or args.ucd_dir
    # The digests are compared first but reported last, so that a file that
    # the parser or the row checks refuse is refused in their words.
    mismatches = digest_mismatches(ucd_dir)
    problems = []
    try:
        files = generate(ucd_dir)
    except DataError as e:
        problems.append(str(e))
    if mismatches:
        problems.append("input files differ from the published ones:\n  " +
                        "\n  ".join(mismatches))
    if problems:
        for problem in problems:
            print(f"generate.py: {problem}", file=sys.stderr)
        print("generate.py: nothing was written.", file=sys.stderr)
        return 1
    if args.check:
        return check_committed(files, DATA_DIR, ucd_dir)
    write(files, args.out)
    print(f"wrote {len(files)} files into {args.out}")
    return 0


if __name__ == "__main__":
    sys.exit(main())
