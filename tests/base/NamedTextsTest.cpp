#include <gtest/gtest.h>

#include "base/NamedTexts.h"

namespace tvx {
namespace {

TEST(NamedTexts, FindsTheWholeNameOnly) {
  const char* all = "an old note;follow=SIM-PC;followers=2;x=a=b;empty=";
  EXPECT_EQ(NamedText(all, "follow"), "SIM-PC");
  EXPECT_EQ(NamedText(all, "followers"), "2");
  EXPECT_EQ(NamedText(all, "low"), "");
  EXPECT_EQ(NamedText(all, "x"), "a=b");
  EXPECT_EQ(NamedText(all, "empty"), "");
  EXPECT_EQ(NamedText(all, "an old note"), "");
}

TEST(NamedTexts, ChangesOneAndLeavesTheOthersAlone) {
  const struct {
    const char *before, *name, *value, *after;
  } rows[] = {{"", "a", "1", "a=1"},
              {"", "a", "", ""},
              {"an old note", "a", "1", "an old note;a=1"},
              {"a=1;b=2;c=3", "b", "22", "a=1;b=22;c=3"},
              {"a=1;b=2;c=3", "a", "", "b=2;c=3"},
              {"a=1;b=2;c=3", "b", "", "a=1;c=3"},
              {"a=1;b=2;c=3", "c", "", "a=1;b=2"},
              {"a=1", "a", "", ""},
              {"ab=1", "a", "", "ab=1"},
              {"a=1", "a", "x;y\"z", "a=x y z"}};
  for (const auto& row : rows) {
    std::string all = row.before;
    SetNamedText(all, row.name, row.value);
    EXPECT_EQ(all, row.after) << row.before << " with " << row.name << '=' << row.value;
  }
}

}  // namespace
}  // namespace tvx
