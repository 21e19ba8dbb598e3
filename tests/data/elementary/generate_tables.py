#!/usr/bin/python3
"""Writes src/elementary/core/tables.h, tables.cpp and erfc_cells.cpp: the cells and polynomials of the functions.

Run in the root of the sources. Polynomials are interpolated at Chebyshev's points; what each leaves of its function
is printed as a power of 2.
"""
import struct
import subprocess
import textwrap

import mpmath as mp

mp.mp.prec = 400
constants, tables = [], {}


def from_bits(bits):
    return struct.unpack("<d", struct.pack("<Q", bits))[0]


def to_bits(x):
    return struct.unpack("<Q", struct.pack("<d", x))[0]


def text(value):
    mantissa, exponent = float(value).hex().split("p")
    if "." in mantissa:
        mantissa = mantissa.rstrip("0").rstrip(".")
    return mantissa + "p" + exponent


def rounded(value, bits):
    """To a whole multiple of 2^-bits."""
    return mp.nint(mp.ldexp(value, bits)) / mp.mpf(2) ** bits


def leading(value, bits):
    """To so many bits."""
    return rounded(value, bits - 1 - int(mp.floor(mp.log(abs(value), 2))))


def split(value):
    high = mp.mpf(float(value))
    return high, value - high


def wrapped(numbers):
    return textwrap.fill(numbers, 110, initial_indent="    ", subsequent_indent="    ")


def constant(comment, **values):
    if comment:
        constants.append("// " + comment)
    for name, value in values.items():
        if isinstance(value, list):
            numbers = ", ".join(text(v) for v in value)
            constants.append(f"constexpr double {name}[{len(value)}] = {{{numbers}}};")
        else:
            constants.append(f"constexpr double {name} = {text(value)};")
    constants.append("")


def table(comment, name, rows):
    stride, cells = len(rows[0]), len(rows)
    size = f"{cells} * {name.replace('Cells', 'Stride')}"
    constants.append(f"// {comment}")
    constants.append(f"constexpr int {name.replace('Cells', 'Stride')} = {stride};")
    constants.append(f"alignas(64) extern const double {name}[{size}];\n")
    numbers = ", ".join(text(v) for row in rows for v in row)
    tables[name] = f"alignas(64) const double {name}[{size}] = {{\n{wrapped(numbers)}}};\n"


def fit(name, f, at_zero, low, high, count):
    """count coefficients of f on [low, high], the lowest power first."""
    safe = lambda x: f(x) if abs(x) > mp.mpf(2) ** -90 else at_zero
    coefficients = list(reversed(mp.chebyfit(safe, [low, high], count)))
    coefficients = [mp.mpf(float(c)) for c in coefficients]
    points = [low + (high - low) * mp.mpf(j) / 200 for j in range(201)]
    worst = max(abs(sum(c * x**k for k, c in enumerate(coefficients)) - safe(x)) for x in points)
    print(f"{name}: 2^{float(mp.log(worst, 2)):.1f}")
    return coefficients


# exp: 2^(i / 128) without the bits that i gets from a shift of 45, and its rounding error relative to it.
CELLS = 128
rows = []
for i in range(CELLS):
    high, low = split(mp.mpf(2) ** (mp.mpf(i) / CELLS))
    rows.append((low / high, from_bits(to_bits(float(high)) - (i << 45))))
table("2^(i / 128): its rounding error relative to it, and its bits less i 2^45.", "kExpCells", rows)
step = mp.log(2) / CELLS
high = rounded(step, 42)
constant(
    "log(2) / 128: its reciprocal, the 34 bits down to 2^-42, so that a multiple by 18 bits is exact, and the rest.",
    kExpCellsPerUnit=1 / step, kExpStepHigh=high, kExpStepLow=step - high)
reach = step / 2 * mp.mpf("1.02")
constant(
    "exp(r) = 1 + r + r^2 / 2 + r^3 (e0 + e1 r + e2 r^2).",
    kExpSeries=fit("exp", lambda r: (mp.exp(r) - 1 - r - r * r / 2) / r**3, mp.mpf(1) / 6, -reach, reach, 3))

# log: mantissas from 0.7 on, so that the cell of 1 has it in the middle; reciprocals of 21 bits.
FIRST = 0x3FE6900000000000
rows, reach = [], mp.mpf(0)
for i in range(CELLS):
    low, high = (mp.mpf(from_bits(FIRST + (j << 45))) for j in (i, i + 1))
    inverse = mp.mpf(1) if low <= 1 < high else rounded(2 / (low + high), 20)
    reach = max(reach, abs(low * inverse - 1), abs(high * inverse - 1))
    part = rounded(-mp.log(inverse), 42)
    rows.append((inverse, inverse, part, -mp.log(inverse) - part))
table("1 / c of 21 bits, twice, as the factor of two numbers; log(c) down to 2^-42 and the rest of it.", "kLogCells", rows)
constants.append("// The bits of the least mantissa, those of which the first cell begins.")
constants.append(f"constexpr unsigned long long kLogFirst = {FIRST:#x};\n")
high = rounded(mp.log(2), 42)
constant("log(2) down to 2^-42 and the rest of it.", kLogTwoHigh=high, kLogTwoLow=mp.log(2) - high)
left = lambda r: (mp.log1p(r) - r + r * r / 2) / r**3
constant(
    "log(1 + r) = r - r^2 / 2 + r^3 (l0 + l1 r + ...), for a logarithm in one double and in two.",
    kLogSeries=fit("log", left, mp.mpf(1) / 3, -reach, reach, 5),
    kLogSeriesOfTwo=fit("log in two doubles", left, mp.mpf(1) / 3, -reach, reach, 6))

# sin: multiples of pi / 64 from -pi / 2 to pi / 2, as the lower six bits of their numbers say.
step = mp.pi / 64
rows = []
for i in range(64):
    angle = (i if i < 32 else i - 64) * step
    rows.append((*split(mp.sin(angle)), mp.cos(angle) - 1, 0))
table("sin(i pi / 64) and the rest of it, cos(i pi / 64) - 1; i from 32 to 63 stand for -32 to -1.", "kSineCells", rows)
rows = [split(mp.tan((i if i < 16 else i - 32) * step)) for i in range(32)]
table("tan(i pi / 64) and the rest of it; i from 16 to 31 stand for -16 to -1.", "kTangentCells", rows)
parts, rest = [], step
for _ in range(3):
    parts.append(leading(rest, 28))
    rest -= parts[-1]
constant(
    "pi / 64: its reciprocal, three parts of 28 bits, so that multiples by 25 bits are exact, and the rest.",
    kSineCellsPerUnit=1 / step, kSineStep=parts + [rest])
high, low = split(step)
constant("pi / 64 in two doubles.", kSineStepHigh=high, kSineStepLow=low)
reach = (step / 2 * mp.mpf("1.001")) ** 2
root = lambda z: mp.sqrt(z)
constant(
    "sin(r) = r + r^3 (s0 + s1 r^2 + s2 r^4), cos(r) = 1 - r^2 / 2 + r^4 (c0 + c1 r^2).",
    kSineSeries=fit("sin", lambda z: (mp.sin(root(z)) / root(z) - 1) / z, -mp.mpf(1) / 6, mp.mpf(0), reach, 3),
    kCosineSeries=fit("cos", lambda z: (mp.cos(root(z)) - 1 + z / 2) / z**2, mp.mpf(1) / 24, mp.mpf(0), reach, 2))
constant(
    "tan(r) = r + r^3 (t0 + t1 r^2 + ...).",
    kTangentSeries=fit("tan", lambda z: (mp.tan(root(z)) / root(z) - 1) / z, mp.mpf(1) / 3, mp.mpf(0), reach, 4))

# Payne and Hanek's reduction: 64 zeros, then the bits of 2 / pi.
WORDS = 20
with mp.workprec(64 * WORDS + 100):
    bits = int(mp.floor(mp.ldexp(2 / mp.pi, 64 * (WORDS - 1))))
words = [(bits >> (64 * (WORDS - 1 - i))) & (2**64 - 1) for i in range(WORDS)]
constants.append("// 64 zeros and the bits of 2 / pi after the point.")
constants.append(f"extern const unsigned long long kTwoOverPi[{WORDS}];\n")
numbers = wrapped(", ".join(f"{word:#x}" for word in words))
tables["kTwoOverPi"] = f"const unsigned long long kTwoOverPi[{WORDS}] = {{\n{numbers}}};\n"

# atan: eight cells of each power of 2 from 1/16 to 32, one before them around 0 and one behind them, of 1 / x.
rows = [(1, 0, 0, 0)]
for octave in range(-4, 5):
    for j in range(8):
        middle = mp.ldexp(1 + (2 * j + 1) / mp.mpf(16), octave)
        rows.append((1, middle, *split(mp.atan(middle))))
rows.append((0, 1, *split(mp.pi / 2)))
table("a, b and atan(b / a) in two doubles: atan(x) is that and atan((a x - b) / (a + b x)).", "kArcCells", rows)
reach = mp.mpf(1) / 256 * mp.mpf("1.001")
constant(
    "atan(u) = u + u^3 (a0 + a1 u^2 + ...).",
    kArcSeries=fit("atan", lambda z: (mp.atan(root(z)) / root(z) - 1) / z, -mp.mpf(1) / 3, mp.mpf(0), reach, 6))

# erfc up to 1, from there on exp(x^2) erfc(x), in cells of 1 + x, sixteen of each power of 2.
ERFC_CELLS, DEGREE = 79, 10
rows, worst = [], mp.mpf(0)
for i in range(ERFC_CELLS):
    octave, j = divmod(i, 16)
    middle = mp.ldexp(1 + (2 * j + 1) / mp.mpf(32), octave) - 1
    half = mp.ldexp(1, octave - 5)
    scale = lambda x: mp.exp(x * x) if octave else 1
    f = lambda t: scale(middle + t) * mp.erfc(middle + t)
    c = list(reversed(mp.chebyfit(f, [-half, half], DEGREE + 1)))
    kept = [*split(c[0]), *(mp.mpf(float(v)) for v in c[1:])]
    for k in range(41):
        t = half * mp.mpf(k - 20) / 20
        value = kept[0] + kept[1] + sum(v * t ** (n + 1) for n, v in enumerate(kept[2:]))
        worst = max(worst, abs(value / f(t) - 1))
    rows.append(kept)
print(f"erfc, {DEGREE}: 2^{float(mp.log(worst, 2)):.1f}")
table(
    "erfc(x), from 1 on exp(x^2) erfc(x), is c0 + rest of c0 + c1 t + ..., t from the middle of the cell.", "kErfcCells",
    rows)

MARK = "Written by tests/data/elementary/generate_tables.py."
FOLDER = "src/elementary/core/"


def write(name, opening, blocks):
    with open(FOLDER + name, "w") as file:
        file.write(opening + "namespace zul::elementary {\n\n" + "\n".join(blocks) + "\n}  // namespace zul::elementary\n")


write("tables.h", f"// The tables and polynomials of the elementary functions. {MARK}\n// The constants are not inline: each source keeps its own, as it does its code.\n#pragma once\n\n", constants)
subprocess.run(["clang-format", "-i", FOLDER + "tables.h"], check=True)
OPENING = f'#include "elementary/core/tables.h"\n\n// {MARK}\n// clang-format off\n'
write("erfc_cells.cpp", OPENING, [tables.pop("kErfcCells")])
write("tables.cpp", OPENING, tables.values())
