// What is still to be done about a gauge, in words.
#include <gtest/gtest.h>

#include "instruments/setup/GaugeWork.h"

namespace tvx::gaugeworktest {

TEST(GaugeWork, SaysWhatAGaugeStillLacks) {
  const struct {
    const char* what;
    Byte type;
    int function1, function2, plate1, plate2;  // a Plate of 99 is not there
    float low, high;                           // of Function 51; its Plate goes from 0 to 100
    const char* words;
  } rows[] = {
      {"no gauge", 0, 51, 0, 0, 0, 0, 100, ""},
      {"nothing is assigned", 1, 0, 0, 0, 0, 0, 100, "needs a Function"},
      {"a Function that is not defined", 1, 53, 0, 0, 0, 0, 100, "needs a Function"},
      {"a Plate that is not there", 1, 51, 0, 99, 0, 0, 100, "needs a Plate"},
      {"the Plate covers all", 1, 51, 0, 0, 99, 0, 100, ""},
      {"it ends early", 1, 51, 0, 0, 0, 0, 120.5f,
       "Plate 000 goes from 0 to 100, its Function from 0 to 120.5"},
      {"it begins late", 1, 51, 0, 0, 0, -20, 100,
       "Plate 000 goes from 0 to 100, its Function from -20 to 100"},
      {"a Function without a range", 1, 51, 0, 0, 0, 150, 150, ""},
      {"the second needle has none", 3, 51, 0, 0, 0, 0, 100, "needs a Function"},
      {"nor a Plate", 3, 51, 52, 0, 99, 0, 100, "needs a Plate"},
      {"both have", 3, 51, 52, 0, 0, 0, 100, ""},
      {"a clock", 104, 0, 0, 99, 99, 0, 100, "its own values"},
      {"a radio as it comes", 110, 0, 0, 99, 99, 0, 100, "its own values"},
      {"a radio with its Function", 110, 51, 0, 99, 99, 0, 100, ""},
      {"a second Function alone", 101, 0, 52, 99, 99, 0, 100, ""},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.what);
    ConfigModel model;
    model.Plates.resize(1);
    model.Plates[0].Value[3] = 100;
    for (const std::size_t function : {51u, 52u}) model.Functions[function].ShortName = "value";
    model.Functions[51].boxMinimumValue = row.low;
    model.Functions[51].boxMaximumValue = row.high;
    GaugeRecord& gauge = model.Gauges[12];
    gauge.GaugeType = row.type;
    gauge.GaugeFunction1 = static_cast<std::int16_t>(row.function1);
    gauge.GaugeFunction2 = static_cast<std::int16_t>(row.function2);
    gauge.GaugeSetting3 = static_cast<Byte>(row.plate1);
    gauge.GaugeSetting4 = static_cast<Byte>(row.plate2);
    EXPECT_EQ(GaugeWorkWords(model, 12), row.words);
    const std::string words = row.words;
    EXPECT_EQ(NeedsWork(model, 12), !words.empty() && words != "its own values");
  }
}

}  // namespace tvx::gaugeworktest
