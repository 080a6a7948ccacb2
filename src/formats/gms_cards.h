#pragma once

/// Binary GMS dataset files: cards, an int32 each before what it announces, and sizes in bytes.
namespace plx {

/// What a binary file begins with: its version, or the length of its first record.
inline constexpr int kBinaryVersion = 3000, kFirstRecord = 28;

namespace gms_card {

inline constexpr int kObjectType = 100;
inline constexpr int kFloatSize = 110;
inline constexpr int kFlagSize = 120;
inline constexpr int kScalarSet = 130;
inline constexpr int kVectorSet = 140;
inline constexpr int kVectorType = 150;
inline constexpr int kObjectId = 160;
inline constexpr int kValueCount = 170;
inline constexpr int kCellCount = 180;
inline constexpr int kName = 190;
inline constexpr int kReferenceTime = 195;
inline constexpr int kReferenceText = 197;
inline constexpr int kTimeStep = 200;
inline constexpr int kEndOfSet = 210;
inline constexpr int kActivity = 220;  ///< ACTTS
inline constexpr int kMapping = 230;   ///< MAPTS
/// Of newer programs only.
inline constexpr int kJulianTime = 240, kTimeUnits = 250;

inline constexpr int kNameBytes = 40;
inline constexpr int kReferenceTimeBytes = 40, kReferenceTextBytes = 36;
inline constexpr int kJulianBytes = 8, kTimeUnitBytes = 4;

}  // namespace gms_card

/// Size code of a file's float size: a size of 4 bytes is that of a 32-bit float, whose code is 6.
inline constexpr int float_code(int float_size) { return float_size == 4 ? 6 : float_size; }

}  // namespace plx
