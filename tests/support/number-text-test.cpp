// The number reader and the number writer against string streams.
#include "support/number-text.hpp"

#include <bit>
#include <cmath>
#include <iomanip>
#include <random>
#include <sstream>

#include <gtest/gtest.h>

namespace {

using VX::Dialog::detail::NumberReader;

// Glued without white space they give what streams read in their own way: "4x", "1e+", "--1".
const char* const kPieces[] = {
    "0", "7", "12",  "007", "-12.25", "2147483647", "-2147483649", "1e999",  "1e-400", "4.9e-324",
    "-", "+", ".",   ",",   "e",      "E",          "x",           "0x1f",   "inf",    "nan",
    " ", " ", " 3 ", "\n",  "\t",     "\v",         "\f\r",        "-1e999", "\xff",   "1"};

template <typename Number>
void expect_same_read(std::istream& stream, NumberReader& reader, Number value) {
  Number expected = value;
  const bool extracted = static_cast<bool>(stream >> expected);
  EXPECT_EQ(reader.read(value), extracted);
  EXPECT_EQ(value, expected);
  EXPECT_EQ(std::signbit(value), std::signbit(expected));
}

TEST(NumberReader, ReadsWhatAStreamReads) {
  std::mt19937 random(1);
  for (int round = 0; round != 50'000 && !testing::Test::HasFailure(); ++round) {
    std::string text;
    for (auto count = random() % 12; count != 0; --count) {
      text += kPieces[random() % std::size(kPieces)];
    }
    SCOPED_TRACE("round " + std::to_string(round) + ", text \"" + text + "\"");
    std::istringstream stream(text);
    NumberReader reader(text);
    // The start values show which failed reads leave the variable alone.
    for (int read = 0; read != 8; ++read) {
      random() % 2 == 0 ? expect_same_read(stream, reader, 42)
                        : expect_same_read(stream, reader, -4.5);
    }
  }
}

void expect_same_text(double value) {
  for (const int digits : {6, 15}) {
    std::ostringstream stream;
    stream << "-" << std::setprecision(digits) << value;
    std::string text = "-";
    VX::Dialog::detail::append_number(text, value, digits);
    EXPECT_EQ(text, stream.str());
  }
}

TEST(AppendNumber, WritesWhatAStreamWrites) {
  for (const double value :
       {0.0, 999999.5, 1e15, 0.0001, 0.00001, 5e-324, HUGE_VAL, std::nan("")}) {
    expect_same_text(value);
    expect_same_text(-value);
  }
  std::mt19937_64 random(1);
  for (int round = 0; round != 50'000 && !testing::Test::HasFailure(); ++round) {
    expect_same_text(std::bit_cast<double>(random()));
    expect_same_text(static_cast<double>(random() % 100'000'000) / 1e4);  // many ties
  }
}

}  // namespace
