#include "base/NumberFormat.h"
#include "base/NumberText.h"
#include "base/Rounding.h"
#include "tests/Test.h"

namespace tvx::numberstest {

TEST(Rounding, GoesToTheNearestWithHalvesToEven) {
  for (const auto& [value, rounded] :
       {std::pair{0.5, 0}, {1.5, 2}, {-0.5, 0}, {-2.5, -2}, {2.4999, 2}, {32767.4, 32767}})
    EXPECT_EQ(RoundTo<std::int16_t>(value), rounded) << value;
}

TEST(Rounding, RefusesWhatDoesNotFit) {
  EXPECT_FALSE(RoundTo<std::int16_t>(32767.5));
  EXPECT_FALSE(RoundTo<std::int16_t>(-32769.0));
  EXPECT_FALSE(RoundTo<std::uint8_t>(-0.6));
  EXPECT_FALSE(RoundTo<std::uint8_t>(std::numeric_limits<double>::quiet_NaN()));
  EXPECT_FALSE(RoundTo<std::int32_t>(std::numeric_limits<double>::infinity()));
  EXPECT_EQ(RoundTo<std::int32_t>(-2147483648.0), std::numeric_limits<std::int32_t>::min());
  EXPECT_THROW(RoundToOrThrow<std::uint8_t>(256), RangeError);
}

TEST(TypedNumber, TakesCommaAndPointAndNoGroups) {
  constexpr std::nullopt_t none = std::nullopt;
  const std::pair<const char*, std::optional<double>> cases[] = {
      {"29,92", 29.92},  {"29.92", 29.92},  {" -,5\t", -0.5}, {"2,992", 2.992}, {"1e3", 1000.0}, {"+7", 7.0},
      {"1.000,5", none}, {"1,000.5", none}, {"1 000", none},  {"1'000", none},  {"7,5 %", none}, {"", none},
      {" ", none},       {",", none},       {"0x10", none},   {"nan", none},    {"1e999", none}};
  for (const auto& [text, value] : cases) EXPECT_EQ(TypedReal<double>(text), value) << text;
}

TEST(TypedNumber, WholeOnesHaveNoFraction) {
  for (const auto& [text, value] : {std::pair{"1079", 1079}, {"0", 0}, {"-0", 0}, {"12,0", 12}})
    EXPECT_EQ(TypedWhole(text, 0, 1079), value) << text;
  for (const char* text : {"7,5", "-1", "1080", "99999999999"})
    EXPECT_EQ(TypedWhole(text, 0, 1079), std::nullopt) << text;
}

TEST(NumberFormat, FollowsThePattern) {
  const std::tuple<double, const char*, const char*> cases[] = {
      {-7.5, "000.00", "-007.50"},   {1234.5, "000.00", "1234.50"},
      {-0.2, "####0", "0"},          {0.04, "###.0", ".0"},
      {-1.25, "###.0", "-1.3"},      {12.5, "###.#0", "12.50"},
      {0.5, "##0.00", "0.50"},       {7, "000", "007"},
      {1.25, "#####0.0#", "1.25"},   {2, "#####0.0#", "2.0"},
      {-99.99, "#####.0", "-100.0"}, {1e300, "0", "---"},
      {std::nan(""), "0.0", "---"},
  };
  for (const auto& [value, pattern, text] : cases)
    EXPECT_EQ(FormatNumberText(value, pattern), text) << value << " " << pattern;
}

}  // namespace tvx::numberstest
