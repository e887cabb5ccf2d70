#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// Register words as text of "0" and "1", most significant bit first: the contract that scripts and
/// clients rely on. Strings of different lengths line up at the right end.
namespace zentrel {

class BitWord;

/// The text of `d` in the number system whose digit characters are `digits` ("01": a bit string).
/// No leading zeros; 0 gives "0"; fractions are dropped, so a number between 0 and 1 gives empty
/// text, as does a negative one. Fewer than two digit characters give empty text too.
std::string ConvertBase10(double d, std::string_view digits);

/// Upper-case hexadecimal without a prefix. `binary` is filled with "0" on the left to a multiple
/// of four characters, in place.
std::string ConvertBinaryToHex(std::string& binary);

/// The number of a bit string; any character but "1" counts as 0.
double BinaryToDecimal(std::string_view binary);
inline double BitStringToNumber(std::string_view binary) {
    return BinaryToDecimal(binary);
}

/// As long as the shorter string; the longer one's high bits are dropped.
std::string BinaryStringAnd(std::string_view one, std::string_view two);
/// As long as the longer string, whose high part passes.
std::string BinaryStringOr(std::string_view one, std::string_view two);
/// The complement on `length` characters, the length of `one` when it isn't given.
std::string BinaryStringNot(std::string_view one, std::optional<int> length = {});

/// Combine two bit strings and give the number. Both arguments are filled to one length in place.
double BitStringXor(std::string& a, std::string& b);
double BitStringAndValue(std::string& a, std::string& b);

/// Hexadecimal text of a word at the full width of `registerLength` bits, more if it is longer.
std::string ValueToHexString(double value, int registerLength);

/// Hexadecimal text with a blank between groups of `group` digits, counted from the right.
/// `digits` is the least number of digits and comes back as the number used.
std::string FormatHexGrouped(double value, std::int16_t& digits, std::int16_t group);
/// The same for a word of any width, exact where a double no longer is.
std::string FormatHexGrouped(const BitWord& word, std::int16_t& digits, std::int16_t group);

/// The mirror of `bits` low bits that `ReadQVX4100Register` applies: bit i becomes bit
/// `dataBits` - i, bits at `dataBits` and above are dropped.
std::int32_t ReverseDataBits(std::int32_t value, int dataBits);

} // namespace zentrel
