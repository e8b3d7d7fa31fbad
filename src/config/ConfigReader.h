// The configuration file's sections, read in file order into the model.
#pragma once

#include <string_view>

#include "config/ConfigFile.h"
#include "config/RecordReader.h"

namespace tvx {

// One reading of one file. Every value goes into the model as soon as it is read, so that an error leaves
// what was read before it.
class ConfigReader {
 public:
  ConfigReader(std::string_view text, ConfigModel& model, MessageBoxes& boxes,
               ConfigReadExtent extent = ConfigReadExtent::Whole)
      : in_(text), model_(model), boxes_(boxes), extent_(extent) {}

  // Reads the file as far as it is to be read, or to the question that was answered No. Throws
  // ConfigReadError.
  ConfigReadResult Read();
  // What has been read so far.
  const ConfigSections& Sections() const { return sections_; }

 private:
  bool TitleAccepted();
  bool VersionAccepted();
  bool Ask(std::string_view question);
  void ReadTables();
  void ReadPlates();
  void ReadForceFeedback();
  void ReadYoke1Tail(YokeRecord& yoke);
  void ReadYoke2Tail(YokeRecord& yoke);

  RecordReader in_;
  ConfigModel& model_;
  MessageBoxes& boxes_;
  ConfigReadExtent extent_;
  ConfigSections sections_;
};

}  // namespace tvx
