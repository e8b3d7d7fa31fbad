// The roads of an IO module: from a hand to X-Plane, and from X-Plane to a lamp.
#include "follow/FollowWords.h"
#include "follow/Follower.h"
#include "hwbus/iomodule/IOModuleActions.h"

namespace tvx {
namespace {

void AddReport(RoadMaker& road, const IOModule& module, const IOModuleInput& input) {
  const auto index = static_cast<std::size_t>(input.Index);
  Station& report = road.Add("Report");
  const bool known = module.SwitchesKnown();
  if (known && input.Kind == IOModuleKind::Switch) report.Value = module.SwitchState()[index] ? "On" : "Off";
  if (known && input.Kind == IOModuleKind::Analogue)
    report.Value = "raw " + std::to_string(module.AnalogueValue()[index]);
  road.TheRoad().Needle = report.Value;
  road.TheRoad().LastAnswer = module.Answering() ? "answers" : "silent";
  const std::string name = "IO module " + std::to_string(input.Module);
  if (!module.Answering()) return road.StopInFlight("No answer from " + name);
  if (!known) road.StopInFlight(name + " has not reported yet");
}

}  // namespace

// Its number too, from 1.
const IOModuleRecord* Follower::DefinitionOf(int input, int& number) const {
  for (int i = 0; i < parts_.Model.IOMCount(); ++i) {
    const IOModuleRecord& record = parts_.Model.IOModuleInputs[static_cast<std::size_t>(i)];
    if (record.Input != input) continue;
    number = i + 1;
    return &record;
  }
  return nullptr;
}

Road Follower::InputRoad(const Subject& subject) const {
  RoadMaker road(parts_, TitleOf(subject));
  const auto input = IOModuleInputOf(subject.number);
  int number = 0;
  const IOModuleRecord* definition = DefinitionOf(subject.number, number);
  if (!input || definition == nullptr) {
    road.Add("Definition");
    road.Stop("Nothing is defined for this input");
    return road.Finish();
  }
  const IOModule& module = *parts_.Modules[input->Module == 2 ? 1 : 0];
  if (input->Kind == IOModuleKind::Lamp) {
    AddLamp(road, module, *definition, number);
  } else {
    AddHand(road, module, *definition, number);
  }
  return road.Finish();
}

void Follower::AddLamp(RoadMaker& road, const IOModule& module, const IOModuleRecord& definition,
                       int number) const {
  const IOModuleInput input = *IOModuleInputOf(definition.Input);
  const Port port = module.PortOf(number);
  const auto value = road.AddReading(definition.FunctionNr, definition.SequenceNr,
                                     port < parts_.Sim.PortCount() ? port : kNoPort);
  const FunctionRecord* function = parts_.Model.FunctionOf(definition.FunctionNr);
  Station& condition = road.Add("Definition");
  if ((definition.IncrementFlags &
       (kIOModuleLitAtMinimum | kIOModuleLitAtMaximum | kIOModuleLitAbove | kIOModuleLitAtValue)) == 0) {
    road.Stop("The lamp has no condition at which it is lit");
  } else if (value && function != nullptr) {
    condition.Value = LampLit(definition, *function, *value) ? "lit" : "dark";
    condition.Note = "at this value";
  }
  const bool lit = (module.Lamps() >> input.Index & 1u) != 0;
  road.Add("Frame", lit ? "lit" : "dark").Note = "as the module was told last";
  road.TheRoad().Needle = lit ? "lit" : "dark";
  const bool second = input.Module == 2;
  const std::string name = "IO module " + std::to_string(input.Module);
  road.AddLine(second ? HardwareGroup::IOModule2 : HardwareGroup::IOModule1, name);
  road.Add("Instrument", name).Note = module.Answering() ? "it answers" : "";
  road.TheRoad().LastAnswer = module.Answering() ? "answers" : "silent";
  if (!module.Answering()) road.StopInFlight("No answer from " + name);
}

void Follower::AddHand(RoadMaker& road, const IOModule& module, const IOModuleRecord& definition,
                       int number) const {
  const IOModuleInput input = *IOModuleInputOf(definition.Input);
  road.AddLine(input.Module == 2 ? HardwareGroup::IOModule2 : HardwareGroup::IOModule1,
               "IO module " + std::to_string(input.Module));
  AddReport(road, module, input);
  const FunctionRecord* function =
      definition.FunctionNr < 1 ? nullptr : parts_.Model.FunctionOf(definition.FunctionNr);
  Station& station = road.Add("Definition", "number " + std::to_string(number));
  if (input.Kind == IOModuleKind::Switch) {
    station.Note = ActionName(definition, function);
    AddAction(road, module, definition, number);
    return;
  }
  const int raw = module.AnalogueValue()[static_cast<std::size_t>(input.Index)];
  station.Note = "raw " + NumberWords(static_cast<double>(definition.OffOnValue)) + " to " +
                 NumberWords(static_cast<double>(definition.RawMaximum)) + ", dead band " +
                 std::to_string(definition.DeadBand);
  if (definition.OffOnValue >= definition.RawMaximum) road.Stop("The axis has no range: its raw limits meet");
  if (function != nullptr) road.Add("Value").Note = AnaloguePreview(definition, function, raw);
  road.AddWriting(definition.FunctionNr, definition.SequenceNr, module.PortOf(number));
}

void Follower::AddAction(RoadMaker& road, const IOModule& module, const IOModuleRecord& definition,
                         int number) const {
  const FunctionRecord* function =
      definition.FunctionNr < 1 ? nullptr : parts_.Model.FunctionOf(definition.FunctionNr);
  const IOModuleAction action = ActionOf(definition);
  if (action == IOModuleAction::NoAction || action == IOModuleAction::NotUsed)
    return road.Stop("The definition says that the switch does nothing");
  const auto known = module.KnownValue(number);
  Station& value = road.Add("Value or command");
  value.Value = SwitchPreview(definition, function, true, known);
  value.Note = SwitchPreview(definition, function, false, known);
  road.TheRoad().Value = value.Value;
  if (IsRelative(definition) && function != nullptr && !function->ShortName.empty()) {
    if (!IsRead(*function, definition.SequenceNr)) {
      road.Stop("It steps a value that is not read: no step can start");
    } else if (!known) {
      road.StopInFlight("It steps a value that has not come yet: no step can start");
    }
  }
  if (action == IOModuleAction::Keystroke) return;
  if (action == IOModuleAction::WriteValue)
    return road.AddWriting(definition.FunctionNr, definition.SequenceNr, module.PortOf(number));
  road.Add("To X-Plane", "a command").Note = "commands are not answered";
  if (function == nullptr) return road.Stop("No Function is assigned");
  if (function->FullName.empty())
    road.Stop(FunctionWords(definition.FunctionNr) + " has no source: it holds no command");
}

}  // namespace tvx
