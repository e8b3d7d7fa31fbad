#include "base/NamedTexts.h"
#include "tests/Test.h"

namespace tvx::namedtextstest {

TEST(NamedTexts, FindsTheWholeNameOnly) {
  const char* all = "an old note;follow=SIM-PC;followers=2;x=a=b;empty=";
  for (const auto& [name, text] : {std::pair{"follow", "SIM-PC"},
                                   {"followers", "2"},
                                   {"low", ""},
                                   {"x", "a=b"},
                                   {"empty", ""},
                                   {"an old note", ""}})
    EXPECT_EQ(NamedText(all, name), text) << name;
}

TEST(NamedTexts, ChangesOneAndLeavesTheOthersAlone) {
  const std::array<const char*, 4> rows[] = {{"", "a", "1", "a=1"},
                                             {"", "a", "", ""},
                                             {"an old note", "a", "1", "an old note;a=1"},
                                             {"a=1;b=2;c=3", "b", "22", "a=1;b=22;c=3"},
                                             {"a=1;b=2;c=3", "a", "", "b=2;c=3"},
                                             {"a=1;b=2;c=3", "b", "", "a=1;c=3"},
                                             {"a=1;b=2;c=3", "c", "", "a=1;b=2"},
                                             {"a=1", "a", "", ""},
                                             {"ab=1", "a", "", "ab=1"},
                                             {"a=1", "a", "x;y\"z", "a=x y z"}};
  for (const auto& [before, name, value, after] : rows) {
    std::string all = before;
    SetNamedText(all, name, value);
    EXPECT_EQ(all, after) << before << " with " << name << '=' << value;
  }
}

}  // namespace tvx::namedtextstest
