// The program's forms, as the logic calls for them.
#pragma once

namespace tvx {

class Shell {
 public:
  virtual ~Shell() = default;
  virtual void ShowStartForm() = 0;  // its showing activates StartPresenter
  virtual void UnloadStartForm() = 0;
  virtual void ShowStatusForm() = 0;  // loads it when it is not loaded
  virtual void UnloadStatusForm() = 0;
  virtual void ShowMainConfiguration() = 0;
  virtual void UnloadConfigurationForms() = 0;
  virtual void OpenWebPage() = 0;
  virtual void EndProgram() = 0;
};

}  // namespace tvx
