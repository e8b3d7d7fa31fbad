#include "config/StandardFunctions.h"
#include "config/faces/FaceFile.h"
#include "platform/AtomicFile.h"
#include "tests/Test.h"
#include "tests/fakes/ScratchFolder.h"

namespace tvx::facestest {

TEST(ReadyFaces, EachHasAFunctionAndAPlateThatCoverEachOther) {
  ConfigModel model;
  FillStandardFunctions(model);
  std::set<std::string> names;
  for (const ReadyFace& face : BuiltInFaces()) {
    EXPECT_TRUE(names.insert(face.name).second) << face.name;
    const int function = FunctionForFace(model, face);
    ASSERT_EQ(function, face.function) << face.name;
    const PlateRecord plate = PlateOfFace(face);
    EXPECT_EQ(MarksOf(plate), face.marks) << face.name;
    EXPECT_EQ(ReadFaces(FaceLine(face)), std::vector{face}) << "and the file holds it";
    EXPECT_LT(plate.Value[2], plate.Value[3]) << face.name;
  }
  EXPECT_FALSE(model.ConfigChanged) << "the standard Functions were there";
}

TEST(ReadyFaces, FindTheirFunctionWhereverItStands) {
  const ReadyFace face = BuiltInFaces()[0];  // Function 1
  const auto numberIn = [&](auto&& change) {
    ConfigModel model;
    FillStandardFunctions(model);
    change(model.Functions);
    const int number = FunctionForFace(model, face);
    EXPECT_TRUE(number == 0 || model.Functions[static_cast<std::size_t>(number)].FunctionNr == number);
    return number;
  };
  EXPECT_EQ(numberIn([](FunctionTable& f) { f[1] = {}; }), 1) << "defined again";
  EXPECT_EQ(numberIn([](FunctionTable& f) { f[1].ShortName = "My speed"; }), 1) << "it reads the same";
  EXPECT_EQ(numberIn([](FunctionTable& f) {
              f[200] = f[1];
              f[200].FunctionNr = 200;
              f[1] = f[2];
            }),
            200);
  EXPECT_EQ(numberIn([](FunctionTable& f) { f[1] = f[2]; }), 72) << "the first number that is free";
}

TEST(ReadyFaces, NeverChangeAPlate) {
  ConfigModel model;
  const ReadyFace face = BuiltInFaces()[1];
  EXPECT_EQ(PlateForFace(model, face), 0);
  EXPECT_EQ(PlateForFace(model, face), 0) << "the same points are the same Plate";
  model.Plates[0].Position[5] += 7;  // tuned by the user
  const PlateRecord tuned = model.Plates[0];
  EXPECT_EQ(PlateForFace(model, face), 1);
  EXPECT_EQ(model.Plates[0], tuned);
  while (model.PlateCount() < 256) model.Plates.push_back(tuned);
  EXPECT_EQ(PlateForFace(model, BuiltInFaces()[2]), -1) << "no gauge could have it";
}

TEST(FaceFile, KeepsWhatItCannotRead) {
  const ScratchFolder folder;
  const std::string path(kFaceFileName);
  std::string error;
  const std::string before = "# mine\r\nno face\nTorque\t90\tTorque\t0:100\t100:1080\n";
  ASSERT_TRUE(ReplaceFile(path, before, error));
  const ReadyFace face{"Torque 0-100 %", 90, "Torque", {{0, 10}, {100.5, 900}}};
  EXPECT_EQ(SaveFace(face), "");
  EXPECT_EQ(ReadWholeFile(path, error), before + "Torque 0-100 %\t90\tTorque\t0:10\t100.5:900\n");
  EXPECT_EQ(AllFaces().back(), face);
  std::vector<int> unread;
  ReadFaces(*ReadWholeFile(path, error), &unread);
  EXPECT_EQ(unread, (std::vector{2, 3}));
  const std::pair<ReadyFace, const char*> refused[] = {
      {face, "There is a ready face of this name already: Torque 0-100 %."},
      {{" ", 1, "", face.marks}, "The face needs another name."},
      {{"a\tb", 1, "", face.marks}, "The face needs another name."},
      {{"Flat", 1, "", {{0, 1}, {0, 2}}}, "The Plate is not calibrated: its values must rise."},
  };
  for (const auto& [bad, why] : refused) EXPECT_EQ(SaveFace(bad), why);
}

}  // namespace tvx::facestest
