#include "config/setup/GaugeBulk.h"
#include "tests/Test.h"

namespace tvx::gaugebulktest {

// Types 1 have a needle, 3 two; 101 shows its own values.
class Advice final : public GaugeAdvice {
 public:
  explicit Advice(const ConfigModel& model) : model_(model) {}
  std::string WorkWords(int) const override { return {}; }
  bool NeedsWork(int id) const override { return wanting.count(id) > 0; }
  int NeedlesOf(int id) const override {
    const int type = model_.Gauges[static_cast<std::size_t>(id)].GaugeType;
    return type == 3 ? 2 : type == 1 ? 1 : 0;
  }
  bool HasFunction(int id, int needle) const override { return NeedlesOf(id) >= needle; }
  std::set<int> wanting;

 private:
  const ConfigModel& model_;
};

struct GaugeBulkTest : testing::Test {
  GaugeBulkTest() {
    model.Gauges[10].GaugeType = 1;
    model.Gauges[11].GaugeType = 3;
    model.Gauges[12].GaugeType = 101;
    model.Gauges[14].GaugeType = 1;
    model.Plates.resize(3);
  }
  ConfigModel model;
  Advice advice{model};
  GaugeBulk bulk{model, advice};
  const std::vector<int> all{10, 11, 12, 13, 14, -1, 256};
};

TEST_F(GaugeBulkTest, SetsWhatEachGaugeHas) {
  EXPECT_EQ(bulk.SetPlate(all, 1, 2), 3);
  EXPECT_EQ(bulk.SetPlate(all, 2, 1), 1) << "one has a second needle";
  EXPECT_EQ(bulk.SetPlate(all, 1, 3), 0) << "no such Plate";
  EXPECT_EQ(bulk.SetFunctionsInSequence(all, 298), 2) << "300 is the last";
  EXPECT_EQ(model.Gauges[11], (GaugeRecord{.GaugeType = 3,
                                           .GaugeSetting3 = 2,
                                           .GaugeFunction1 = 299,
                                           .GaugeSetting4 = 1,
                                           .GaugeFunction2 = 300}));
  EXPECT_EQ(std::tuple(model.Gauges[10].GaugeFunction1, model.Gauges[14].GaugeFunction1), std::tuple(298, 0));
  EXPECT_EQ(bulk.SetLighting(all, false), 4);
  model.Gauges[12].GaugeSetting5 |= 2;
  EXPECT_EQ(bulk.SetLighting(all, true), 4);
  EXPECT_EQ(model.Gauges[12].GaugeSetting5, 2) << "other options stay";
  EXPECT_EQ(model.Gauges[13], GaugeRecord{}) << "no gauge there";
  EXPECT_TRUE(model.ConfigChanged);
}

TEST_F(GaugeBulkTest, CopiesSettingsToTheSameKind) {
  EXPECT_FALSE(bulk.Copy(13));
  model.Gauges[10] = {1, 4, 5, 2, 70, 3, 0, 0, 0, 64, 9};
  model.Gauges[14].GaugeSetting1 = 7;
  model.Gauges[14].GaugeSetting6 = 8;
  ASSERT_TRUE(bulk.Copy(10));
  model.Gauges[10].GaugeFunction1 = 1;  // the copy stays as it was
  EXPECT_EQ(bulk.Paste({11, 12, 14}), 1);
  EXPECT_EQ(model.Gauges[14], (GaugeRecord{1, 7, 0, 2, 70, 3, 0, 0, 0, 64, 8}));
}

TEST_F(GaugeBulkTest, FindsTheNextThatNeedsWork) {
  EXPECT_EQ(bulk.NextThatNeedsWork(-1), -1);
  advice.wanting = {11, 14};
  EXPECT_EQ(bulk.NextThatNeedsWork(-1), 11);
  EXPECT_EQ(bulk.NextThatNeedsWork(11), 14);
  EXPECT_EQ(bulk.NextThatNeedsWork(14), 11);
}

}  // namespace tvx::gaugebulktest
