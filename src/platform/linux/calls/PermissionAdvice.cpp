#include "platform/SerialDevices.h"

namespace tvx {

PermissionAdvice AdviceOnPermission(std::string_view group) {
  const std::string name(group);
  return {
      "install the rule 70-torvex-cockpit.rules, or type: sudo adduser $USER " + name + ", and log in again",
      "Install the rule 70-torvex-cockpit.rules, or add yourself to the group " + name +
          " (sudo adduser $USER " + name + ") and log in again"};
}

}  // namespace tvx
