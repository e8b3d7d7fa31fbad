// Whoever shows the configuration and has to follow when a form has changed it.
#pragma once

namespace tvx {

class ModelWatcher {
 public:
  virtual ~ModelWatcher() = default;
  // The model is another one now: a field was edited, or a whole file was loaded.
  virtual void ModelChanged() = 0;
};

}  // namespace tvx
