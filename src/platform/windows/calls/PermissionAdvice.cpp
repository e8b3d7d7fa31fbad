#include "platform/SerialDevices.h"

namespace tvx {

// A port that is refused here is one that another program has; this is for whatever else may come.
PermissionAdvice AdviceOnPermission(std::string_view) {
  return {"start the program as the user who is logged in",
          "Start the program as the user who is logged in, or ask whoever administers this computer"};
}

}  // namespace tvx
