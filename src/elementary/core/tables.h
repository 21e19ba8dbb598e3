// The tables and polynomials of the elementary functions. Written by tests/data/elementary/generate_tables.py.
// The constants are not inline: each source keeps its own, as it does its code.
#pragma once

namespace zul::elementary {

// 2^(i / 128): its rounding error relative to it, and its bits less i 2^45.
constexpr int kExpStride = 2;
alignas(64) extern const double kExpCells[128 * kExpStride];

// log(2) / 128: its reciprocal, the 34 bits down to 2^-42, so that a multiple by 18 bits is exact, and the rest.
constexpr double kExpCellsPerUnit = 0x1.71547652b82fep+7;
constexpr double kExpStepHigh = 0x1.62e42fefcp-8;
constexpr double kExpStepLow = -0x1.c610ca86c3899p-44;

// exp(r) = 1 + r + r^2 / 2 + r^3 (e0 + e1 r + e2 r^2).
constexpr double kExpSeries[3] = {0x1.5555555555555p-3, 0x1.555559994d307p-5, 0x1.111113810c68cp-7};

// 1 / c of 21 bits, twice, as the factor of two numbers; log(c) down to 2^-42 and the rest of it.
constexpr int kLogStride = 4;
alignas(64) extern const double kLogCells[128 * kLogStride];

// The bits of the least mantissa, those of which the first cell begins.
constexpr unsigned long long kLogFirst = 0x3fe6900000000000;

// log(2) down to 2^-42 and the rest of it.
constexpr double kLogTwoHigh = 0x1.62e42fefa38p-1;
constexpr double kLogTwoLow = 0x1.ef35793c7673p-45;

// log(1 + r) = r - r^2 / 2 + r^3 (l0 + l1 r + ...), for a logarithm in one double and in two.
constexpr double kLogSeries[5] = {0x1.5555555555555p-2, -0x1.ffffffffafffbp-3, 0x1.99999999527cep-3,
                                  -0x1.5556955655562p-3, 0x1.2493659742208p-3};
constexpr double kLogSeriesOfTwo[6] = {0x1.5555555555556p-2, -0x1p-2,
                                       0x1.999999991999p-3,  -0x1.55555554e2219p-3,
                                       0x1.24939e7b21ce1p-3, -0x1.0001333453343p-3};

// sin(i pi / 64) and the rest of it, cos(i pi / 64) - 1; i from 32 to 63 stand for -32 to -1.
constexpr int kSineStride = 4;
alignas(64) extern const double kSineCells[64 * kSineStride];

// tan(i pi / 64) and the rest of it; i from 16 to 31 stand for -16 to -1.
constexpr int kTangentStride = 2;
alignas(64) extern const double kTangentCells[32 * kTangentStride];

// pi / 64: its reciprocal, three parts of 28 bits, so that multiples by 25 bits are exact, and the rest.
constexpr double kSineCellsPerUnit = 0x1.45f306dc9c883p+4;
constexpr double kSineStep[4] = {0x1.921fb54p-5, 0x1.10b4612p-35, -0x1.676733ap-65, -0x1.d1fc8f8cbb5bfp-94};

// pi / 64 in two doubles.
constexpr double kSineStepHigh = 0x1.921fb54442d18p-5;
constexpr double kSineStepLow = 0x1.1a62633145c07p-59;

// sin(r) = r + r^3 (s0 + s1 r^2 + s2 r^4), cos(r) = 1 - r^2 / 2 + r^4 (c0 + c1 r^2).
constexpr double kSineSeries[3] = {-0x1.5555555555555p-3, 0x1.11111110c196p-7, -0x1.a018aab67ee38p-13};
constexpr double kCosineSeries[2] = {0x1.555555552d97dp-5, -0x1.6c15c03cdd477p-10};

// tan(r) = r + r^3 (t0 + t1 r^2 + ...).
constexpr double kTangentSeries[4] = {0x1.5555555555555p-2, 0x1.11111111155aep-3, 0x1.ba1b9f8f198f3p-5,
                                      0x1.667c2d0e4b431p-6};

// 64 zeros and the bits of 2 / pi after the point.
extern const unsigned long long kTwoOverPi[20];

// a, b and atan(b / a) in two doubles: atan(x) is that and atan((a x - b) / (a + b x)).
constexpr int kArcStride = 4;
alignas(64) extern const double kArcCells[74 * kArcStride];

// atan(u) = u + u^3 (a0 + a1 u^2 + ...).
constexpr double kArcSeries[6] = {-0x1.5555555555555p-2, 0x1.999999999994dp-3,  -0x1.249249245a9f8p-3,
                                  0x1.c71c6fec5ab77p-4,  -0x1.745983b02a76bp-4, 0x1.37e4f32d0fd67p-4};

// erfc(x), from 1 on exp(x^2) erfc(x), is c0 + rest of c0 + c1 t + ..., t from the middle of the cell.
constexpr int kErfcStride = 12;
alignas(64) extern const double kErfcCells[79 * kErfcStride];

}  // namespace zul::elementary
